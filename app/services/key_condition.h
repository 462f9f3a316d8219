// Conditions over key columns, from the joined lists in which the screens name them.
#pragma once

#include <string>
#include <string_view>

namespace app::services {

/// The text as an SQL literal in single quotes, quotes inside doubled.
std::string QuoteText(std::string_view text);

/// "A = 'x' AND B = 'y'" from columns "A,B" and quoted values "'x','y'", both joined by `separator`, which does not
/// count inside quotes. Throws std::invalid_argument when the two lists differ in length or a piece is empty: a mistake
/// of whoever calls.
std::string KeyCondition(std::string_view columns, std::string_view quoted, char separator);

}  // namespace app::services
