// Text functions that the layouts of the roll label may call.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace writeoff {

/// Without ".", "-", "/" and ",".
std::string TiraPontos(std::string_view text);

/// Accented letters become plain ones by the table of the labels in use; all else is kept. In small letters "á" gives
/// "c" and "ç" gives "a".
std::string RemoveAcento(std::string_view text);

/// The character with that code of the system's character set (Windows-1252), for a printer's control language. Throws
/// InputError when `code` is no such number.
std::string Chr1(std::string_view code);

/// The text with "0" put before it until it has `length` characters. Throws InputError when `length` is no whole
/// number, or more than any label is wide.
std::string ZeroE(std::string_view text, std::string_view length);

/// Calls one of these by the name that layouts know it by; nothing for any other name. Throws InputError for arguments
/// that the function does not take, a sentence for whoever writes the layout.
std::optional<std::string> LabelFunction(std::string_view name, const std::vector<std::string>& arguments);

}  // namespace writeoff
