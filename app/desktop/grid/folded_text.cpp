#include "app/desktop/grid/folded_text.h"

#include <array>
#include <cstddef>

namespace app::desktop {
namespace {

// U+00C0 to U+00FF; empty for what stays as it is (the signs of multiplication and division).
constexpr std::array<const char*, 64> kLatin = {
    "a", "a", "a", "a", "a", "a", "ae", "c", "e", "e", "e", "e", "i", "i", "i", "i",  //
    "d", "n", "o", "o", "o", "o", "o",  "",  "o", "u", "u", "u", "u", "y", "t", "ss",
    "a", "a", "a", "a", "a", "a", "ae", "c", "e", "e", "e", "e", "i", "i", "i", "i",  //
    "d", "n", "o", "o", "o", "o", "o",  "",  "o", "u", "u", "u", "u", "y", "t", "y"};

// The letters of the database's character set that stand outside that block.
const char* OtherLetter(unsigned code) {
  switch (code) {
    case 0x152:
    case 0x153:
      return "oe";
    case 0x160:
    case 0x161:
      return "s";
    case 0x178:
      return "y";
    case 0x17D:
    case 0x17E:
      return "z";
    default:
      return "";
  }
}

}  // namespace

std::string Folded(std::string_view text) {
  std::string folded;
  folded.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x80) {
      folded += byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : text[at];
      continue;
    }
    if (byte < 0xC3 || byte > 0xC5 || at + 1 == text.size()) {
      folded += text[at];
      continue;
    }
    const unsigned code = ((byte & 0x1FU) << 6) | (static_cast<unsigned char>(text[at + 1]) & 0x3FU);
    const char* plain = code >= 0xC0 && code <= 0xFF ? kLatin[code - 0xC0] : OtherLetter(code);
    if (*plain == '\0') {
      folded += text.substr(at, 2);
    } else {
      folded += plain;
    }
    ++at;
  }
  return folded;
}

}  // namespace app::desktop
