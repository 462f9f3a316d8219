// Whether anything takes connections where a database server should be.
#pragma once

#include <chrono>
#include <string_view>

namespace app::firebird {

/// True when the server's computer ("host/port:path", "host:path") does not even say no within the time: switched off,
/// or cut off by the network. The client library would wait for minutes. False when it answers, refuses, or the name
/// is not one of these: then the library's own attempt tells more.
bool ServerIsSilent(std::string_view database, std::chrono::milliseconds patience);

}  // namespace app::firebird
