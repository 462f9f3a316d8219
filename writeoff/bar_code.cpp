#include "writeoff/bar_code.h"

#include <algorithm>

#include "host/decimal.h"
#include "host/text.h"

namespace writeoff {
namespace {

constexpr std::size_t kEan13 = 13;
constexpr std::size_t kBody = 12;
constexpr std::size_t kKilogramDigits = 3;  // the other three are grams

bool OnlyDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

BarCode Weighed(std::string_view digits) {
  BarCode code;
  code.kind = BarCode::Kind::kWeighed;
  code.ean13 = digits.substr(0, kEan13);
  std::string weight(digits.substr(kEan13));
  weight.insert(kKilogramDigits, ",");
  code.weight = host::ParseTyped(weight).value_or(0);
  return code;
}

BarCode Package(std::string_view digits, std::size_t indicator) {
  BarCode code;
  code.kind = BarCode::Kind::kPackage;
  code.indicator = digits.substr(0, indicator);
  code.body = digits.substr(indicator, kBody);
  return code;
}

}  // namespace

BarCode ReadBarCode(std::string_view text) {
  const std::size_t length = host::Length(text);
  if (length == 9) {
    BarCode code;
    code.kind = BarCode::Kind::kRollLabel;
    code.lot = text;
    return code;
  }
  if (!OnlyDigits(text)) return {};
  if (length == 19) return Weighed(text);
  if (length == 14) return Package(text, 1);
  if (length == 15) return Package(text, 2);
  return {};
}

}  // namespace writeoff
