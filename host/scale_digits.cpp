#include "host/scale_digits.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace host {

std::optional<std::string> ScaleDigits(std::string_view frame, int decimals) {
  std::string digits;
  std::copy_if(frame.begin(), frame.end(), std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
  const auto length = static_cast<std::ptrdiff_t>(digits.size());
  if (decimals < 0 || length <= decimals) return std::nullopt;
  digits.insert(static_cast<std::size_t>(length - decimals - 1), ",");
  return digits;
}

}  // namespace host
