#include "app/firebird/storable_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

namespace app::firebird {
namespace {

struct Character {
  std::uint32_t code;
  std::size_t size;  // in bytes; of a broken sequence, 1
  bool valid;
};

// The character at the start of `text`, which is not empty.
Character Decode(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return {lead, 1, true};
  const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  const Character broken = {lead, 1, false};
  if (lead < 0xC2 || lead > 0xF4 || text.size() < size) return broken;
  std::uint32_t code = lead & (0x7Fu >> size);
  for (std::size_t i = 1; i < size; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return broken;
    code = (code << 6) | (byte(i) & 0x3Fu);
  }
  static constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (code < smallest[size] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return broken;
  return {code, size, true};
}

// The characters that WIN1252 keeps in its bytes 0x80 to 0x9F, ascending.
constexpr std::array<std::uint32_t, 27> kSpecial = {
    0x0152, 0x0153, 0x0160, 0x0161, 0x0178, 0x017D, 0x017E, 0x0192, 0x02C6, 0x02DC, 0x2013, 0x2014, 0x2018, 0x2019,
    0x201A, 0x201C, 0x201D, 0x201E, 0x2020, 0x2021, 0x2022, 0x2026, 0x2030, 0x2039, 0x203A, 0x20AC, 0x2122};

// Control characters other than tab and line ends have no business in a mill's texts and a zero byte would cut them.
bool InCharacterSet(std::uint32_t code) {
  if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
  if (code < 0x7F || (code >= 0xA0 && code <= 0xFF)) return true;
  return std::binary_search(kSpecial.begin(), kSpecial.end(), code);
}

std::string Hex(const char* format, std::uint32_t code) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), format, static_cast<unsigned>(code));
  return text.data();
}

std::string Reason(std::string_view text, const Character& character) {
  if (!character.valid)
    return "O texto contém um byte inválido (" + Hex("%02X", character.code) + ") e não pode ser gravado.";
  if (character.code < 0x20 || (character.code >= 0x7F && character.code < 0xA0)) {
    return "O texto contém um caractere de controle (" + Hex("U+%04X", character.code) + ") e não pode ser gravado.";
  }
  return "O caractere \"" + std::string(text.substr(0, character.size)) + "\" (" + Hex("U+%04X", character.code) +
         ") não pode ser gravado no banco de dados.";
}

}  // namespace

std::optional<std::string> WhyNotStorable(std::string_view text) {
  while (!text.empty()) {
    const Character character = Decode(text);
    if (!character.valid || !InCharacterSet(character.code)) return Reason(text, character);
    text.remove_prefix(character.size);
  }
  return std::nullopt;
}

std::string MakeStorable(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const Character character = Decode(text);
    if (character.valid && InCharacterSet(character.code)) {
      result += text.substr(0, character.size);
    } else {
      result += '?';
    }
    text.remove_prefix(character.size);
  }
  return result;
}

}  // namespace app::firebird
