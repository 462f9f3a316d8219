#include "app/printing/layout/number_text.h"

#include <algorithm>
#include <cmath>

#include "app/printing/page/mistake.h"
#include "host/date.h"
#include "host/decimal.h"
#include "host/text.h"

namespace app::printing {
namespace {

constexpr std::size_t kDateLength = 10;  // of "2026-03-10"
constexpr std::size_t kTimeLength = 8;   // of "22:15:00"

std::string WithThousands(std::string text) {
  const std::size_t first = text.find_first_of("0123456789");
  if (first == std::string::npos) return text;
  std::size_t end = text.find_first_not_of("0123456789", first);
  if (end == std::string::npos) end = text.size();
  for (std::size_t at = end; at > first + 3; at -= 3) text.insert(at - 3, 1, '.');
  return text;
}

bool IsClock(std::string_view text) {
  if (text.size() != kTimeLength || text[2] != ':' || text[5] != ':') return false;
  return host::DateTime::FromIso("2000-01-01 " + std::string(text)).has_value();
}

}  // namespace

std::string NumberText(double value, std::string_view pattern) {
  if (!std::isfinite(value)) throw Mistake("o cálculo não resultou em um número válido");
  if (pattern.empty()) {
    std::string text = host::PointText(host::WithoutNoise(value));
    std::replace(text.begin(), text.end(), '.', ',');
    return text;
  }
  if (pattern.find_first_of("0#") == std::string_view::npos) {
    throw Mistake("o formato de número " + Quoted(pattern) + " não tem \"0\" nem \"#\"");
  }
  std::string plain(pattern);
  const bool thousands = plain.find(',') != std::string::npos;
  std::erase(plain, ',');
  const std::string text = host::FormatNumber(plain, value, ',');
  return thousands ? WithThousands(text) : text;
}

std::string DateText(std::string_view iso) {
  const auto date = host::Date::FromIso(iso.substr(0, std::min(iso.size(), kDateLength)));
  return date ? date->ToDisplay() : std::string(iso);
}

std::string TimeText(std::string_view iso) {
  if (const auto moment = host::DateTime::FromIso(iso)) return std::string(iso.substr(kDateLength + 1, 5));
  if (IsClock(iso)) return std::string(iso.substr(0, 5));
  return std::string(iso);
}

std::string ShownText(const host::Value& value, std::string_view format) {
  if (value.IsNull()) return {};
  if (format == "date") return value.IsDate() ? value.AsDate().ToDisplay() : DateText(value.AsText());
  if (format == "time") return TimeText(value.AsText());
  if (value.IsNumber()) return NumberText(value.AsFloat(), format);
  return value.AsText();
}

}  // namespace app::printing
