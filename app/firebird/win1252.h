// The database's character set, turned into the program's.
#pragma once

#include <string>
#include <string_view>

namespace app::firebird {

/// The engine's number of the character set.
inline constexpr unsigned kWin1252 = 53;

/// WIN1252 bytes as UTF-8, by Microsoft's table of code page 1252; its five unassigned bytes become the control
/// characters of the same number.
std::string FromWin1252(std::string_view bytes);

}  // namespace app::firebird
