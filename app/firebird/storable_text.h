// Which characters the database can hold: its character set is WIN1252, the program's text is UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace app::firebird {

/// Why this text cannot be stored, as one Portuguese sentence that names the first character concerned; nothing when
/// it can.
std::optional<std::string> WhyNotStorable(std::string_view text);

/// The text with every character that cannot be stored replaced by "?".
std::string MakeStorable(std::string_view text);

}  // namespace app::firebird
