#include "host/raw_bytes.h"

namespace host {

std::string RawBytes(std::string_view bytes) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    if (c >= ' ' && c <= '~' && c != '<') {
      text += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    text += {'<', kDigits[byte >> 4], kDigits[byte & 15], '>'};
  }
  return text;
}

}  // namespace host
