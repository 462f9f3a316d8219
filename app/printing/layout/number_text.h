// Numbers, dates and times as layouts write them.
#pragma once

#include <string>
#include <string_view>

#include "host/value.h"

namespace app::printing {

/// With a decimal comma. `pattern` as host::FormatNumber takes it; with a "," anywhere before its "." ("#,##0.00") the
/// thousands are separated by points. Empty: the decimals that the number has, up to nine. Throws Mistake for a number
/// that is not finite and for a pattern without a digit's place.
std::string NumberText(double value, std::string_view pattern);

/// "10/03/2026" of a date, of "2026-03-10" and of "2026-03-10 22:15:00"; empty for nothing and for the zero date, the
/// text itself for anything else.
std::string DateText(std::string_view iso);
/// "22:15" of "2026-03-10 22:15:00" and of "22:15:00"; empty for nothing, the text itself for anything else.
std::string TimeText(std::string_view iso);

/// A value in a column of this format: "date", "time", a number's pattern, or empty for what suits the value. Null is
/// empty.
std::string ShownText(const host::Value& value, std::string_view format);

}  // namespace app::printing
