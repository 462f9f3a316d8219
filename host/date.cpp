#include "host/date.h"

#include <array>
#include <chrono>
#include <cstdio>

#include "host/text.h"

namespace host {
namespace {

namespace chrono = std::chrono;

chrono::sys_days ToDays(const Date& date) {
  return chrono::sys_days(chrono::year(date.Year()) / chrono::month(static_cast<unsigned>(date.Month())) /
                          chrono::day(static_cast<unsigned>(date.Day())));
}

// The number that a run of digits of a permitted length says; nothing for anything else.
std::optional<int> Digits(std::string_view text, std::size_t shortest, std::size_t longest) {
  if (text.size() < shortest || text.size() > longest) return std::nullopt;
  int number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
    number = number * 10 + (c - '0');
  }
  return number;
}

std::string ThreeParts(const char* format, int first, int second, int third) {
  std::array<char, 48> buffer{};
  const int size = std::snprintf(buffer.data(), buffer.size(), format, first, second, third);
  return std::string(buffer.data(), static_cast<std::size_t>(size));
}

}  // namespace

std::optional<Date> Date::FromParts(int year, int month, int day) {
  if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  const chrono::year_month_day parts(chrono::year(year), chrono::month(static_cast<unsigned>(month)),
                                     chrono::day(static_cast<unsigned>(day)));
  if (!parts.ok()) return std::nullopt;
  Date date;
  date.year_ = year;
  date.month_ = month;
  date.day_ = day;
  return date;
}

std::optional<Date> Date::FromDisplay(std::string_view text) {
  const std::string trimmed = Trim(text);
  const std::vector<std::string> parts = SplitOutsideQuotes(trimmed, '/');
  if (parts.size() != 3) return std::nullopt;
  const auto day = Digits(parts[0], 1, 2);
  const auto month = Digits(parts[1], 1, 2);
  auto year = Digits(parts[2], 2, 4);
  if (!day || !month || !year || parts[2].size() == 3) return std::nullopt;
  if (parts[2].size() == 2) *year += 2000;
  return FromParts(*year, *month, *day);
}

std::optional<Date> Date::FromIso(std::string_view text) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  const auto year = Digits(text.substr(0, 4), 4, 4);
  const auto month = Digits(text.substr(5, 2), 2, 2);
  const auto day = Digits(text.substr(8, 2), 2, 2);
  if (!year || !month || !day) return std::nullopt;
  return FromParts(*year, *month, *day);
}

std::string Date::ToDisplay() const { return IsZero() ? "" : ThreeParts("%02d/%02d/%04d", day_, month_, year_); }

std::string Date::ToSql() const { return ThreeParts("%02d/%02d/%04d", month_, day_, year_); }

std::string Date::ToIso() const { return ThreeParts("%04d-%02d-%02d", year_, month_, day_); }

Date Date::AddDays(int days) const {
  const chrono::year_month_day moved(ToDays(*this) + chrono::days(days));
  Date date;
  date.year_ = static_cast<int>(moved.year());
  date.month_ = static_cast<int>(static_cast<unsigned>(moved.month()));
  date.day_ = static_cast<int>(static_cast<unsigned>(moved.day()));
  return date;
}

int Date::Weekday() const { return static_cast<int>(chrono::weekday(ToDays(*this)).c_encoding()); }

std::optional<DateTime> DateTime::FromIso(std::string_view text) {
  if (text.size() != 19 || text[10] != ' ' || text[13] != ':' || text[16] != ':') return std::nullopt;
  const auto day = Date::FromIso(text.substr(0, 10));
  const auto hours = Digits(text.substr(11, 2), 2, 2);
  const auto minutes = Digits(text.substr(14, 2), 2, 2);
  const auto seconds = Digits(text.substr(17, 2), 2, 2);
  if (!day || !hours || !minutes || !seconds) return std::nullopt;
  if (*hours > 23 || *minutes > 59 || *seconds > 59) return std::nullopt;
  return DateTime{*day, *hours * 3600 + *minutes * 60 + *seconds};
}

std::string DateTime::ToIso() const {
  return date.ToIso() +
         ThreeParts(" %02d:%02d:%02d", second_of_day / 3600, second_of_day / 60 % 60, second_of_day % 60);
}

}  // namespace host
