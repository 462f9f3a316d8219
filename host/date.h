// Calendar dates and times as the screens type, show and store them.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace host {

/// A day of the Gregorian calendar. The default value is the zero date, 30/12/1899, which stands for "no date" in an
/// input and is what an empty date input writes into a statement.
class Date {
 public:
  Date() = default;

  /// The date, or nothing when there is no such day (31/02, month 13, year outside 1 to 9999).
  static std::optional<Date> FromParts(int year, int month, int day);
  /// Reads "DD/MM/YYYY" (also "D/M/YYYY" and a two-digit year, taken as 20YY); nothing when it is no date.
  static std::optional<Date> FromDisplay(std::string_view text);
  /// Reads "YYYY-MM-DD"; nothing when it is no date.
  static std::optional<Date> FromIso(std::string_view text);

  int Year() const { return year_; }
  int Month() const { return month_; }
  int Day() const { return day_; }
  bool IsZero() const { return *this == Date(); }

  /// "DD/MM/YYYY", as people read it; empty for the zero date.
  std::string ToDisplay() const;
  /// "MM/DD/YYYY", the form of a date inside a statement, not yet quoted. The zero date gives "12/30/1899".
  std::string ToSql() const;
  /// "YYYY-MM-DD".
  std::string ToIso() const;

  Date AddDays(int days) const;
  /// Sunday is 0.
  int Weekday() const;

  auto operator<=>(const Date&) const = default;  // NOLINT(modernize-use-nullptr)

 private:
  int year_ = 1899;
  int month_ = 12;
  int day_ = 30;
};

/// A date with a time of day.
struct DateTime {
  Date date;
  int second_of_day = 0;  // 0 to 86399

  /// Reads "YYYY-MM-DD HH:MM:SS"; nothing when it is no moment.
  static std::optional<DateTime> FromIso(std::string_view text);
  /// "YYYY-MM-DD HH:MM:SS".
  std::string ToIso() const;

  auto operator<=>(const DateTime&) const = default;  // NOLINT(modernize-use-nullptr)
};

}  // namespace host
