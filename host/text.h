// Small text helpers that several screens and the kit share. All text is UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// Without blanks, tabs and line ends at both ends.
std::string Trim(std::string_view text);
/// Number of characters (code points), the measure of a field's width.
std::size_t Length(std::string_view text);
/// The first `count` characters.
std::string Left(std::string_view text, std::size_t count);
/// Upper case of ASCII letters only; for names of fields and tables.
std::string UpperAscii(std::string_view text);
/// Equal without regard to the case of ASCII letters.
bool SameName(std::string_view left, std::string_view right);
/// Splits at `separator` outside single quotes; a doubled quote inside quotes does not end them. Empty text gives
/// one empty piece.
std::vector<std::string> SplitOutsideQuotes(std::string_view text, char separator);

}  // namespace host
