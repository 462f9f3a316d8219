// What a device sent, for a person to read.
#pragma once

#include <string>
#include <string_view>

namespace host {

/// Printable ASCII as it is, every other byte as "<02>", "<" itself as "<3C>".
std::string RawBytes(std::string_view bytes);

}  // namespace host
