// Characters as the bytes that a label printer takes.
#pragma once

#include <QString>
#include <optional>
#include <string>
#include <string_view>

namespace app::printing {

enum class Encoding { kUtf8, kWindows1252, kCp850 };

/// "utf-8", "windows-1252", "cp850"; nothing for another name.
std::optional<Encoding> EncodingNamed(std::string_view name);

/// The text's bytes. A character that the encoding lacks becomes the letter without its accent, or else "?". Control
/// characters stay as they are.
std::string Encoded(const QString& text, Encoding encoding);

}  // namespace app::printing
