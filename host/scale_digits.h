// What a scale means that sends nothing but digits.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host {

/// The digits of `frame`, everything else dropped, with "," before the digit at (number of digits - `decimals`),
/// counted from 1: one more digit follows the comma than `decimals` says ("012345" with 2 is "012,345"). Nothing when
/// there are not more digits than `decimals`.
std::optional<std::string> ScaleDigits(std::string_view frame, int decimals);

}  // namespace host
