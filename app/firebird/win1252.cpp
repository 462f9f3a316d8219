#include "app/firebird/win1252.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace app::firebird {
namespace {

// Bytes 0x80 to 0x9F; above them code point and byte are the same.
constexpr std::array<std::uint16_t, 32> kHigh = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& text, unsigned code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | (code >> 6));
    text += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    text += static_cast<char>(0xE0 | (code >> 12));
    text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
  }
}

}  // namespace

std::string FromWin1252(std::string_view bytes) {
  const auto plain = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
  if (std::all_of(bytes.begin(), bytes.end(), plain)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 4);
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    AppendUtf8(text, code >= 0x80 && code < 0xA0 ? kHigh[code - 0x80U] : code);
  }
  return text;
}

}  // namespace app::firebird
