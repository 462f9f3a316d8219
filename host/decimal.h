// Numbers as text: rounding by format, decimal signs, and what a person may type.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host {

/// Formats with a pattern: "0" digits that always show, "#" digits that show when not zero, one "." for the
/// decimals ("0", "0.00", "0.######", " 0.000" keeps the leading blank). Rounds the shortest decimal text of the
/// number, halves away from zero (10.5 gives 11, 0.185 gives 0.19). The decimal sign of the result is `sign`.
std::string FormatNumber(std::string_view pattern, double value, char sign = '.');

/// `value` formatted with that many decimals and read back.
double RoundTo(double value, int decimals);

/// Without what binary arithmetic leaves behind: 20.304 - 0.3 gives 20.004. Nine decimals are kept, more than anything
/// that is weighed or priced has.
double WithoutNoise(double value);

/// The shortest text that reads back as the same number, "." as decimal sign, never an exponent. Throws InputError
/// for a value that is not finite: it must never reach a statement.
std::string PointText(double value);

/// What a person may type as a number: an optional sign, digits, one comma or point as decimal sign, points or
/// blanks between thousands when a comma is the decimal sign. Empty text is 0. Nothing for anything else (letters,
/// exponents, "nan", more than 15 digits before the decimal sign).
std::optional<double> ParseTyped(std::string_view text);

/// As ParseTyped for whole numbers that fit 32 bits; nothing when decimals other than zeros were typed.
std::optional<int> ParseTypedInteger(std::string_view text);

}  // namespace host
