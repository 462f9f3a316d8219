#include "app/scale/frame.h"

#include "host/errors.h"

namespace app::scale {

double WeightOfFrame(std::string_view /*received*/, char /*terminator*/) {
  throw host::InputError("A balança não respondeu.");
}

std::string RawBytes(std::string_view received) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const char c : received) {
    if (c >= ' ' && c <= '~' && c != '<') {
      text += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    text += {'<', kDigits[byte >> 4], kDigits[byte & 15], '>'};
  }
  return text;
}

}  // namespace app::scale
