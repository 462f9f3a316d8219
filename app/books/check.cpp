#include "app/books/check.h"

#include <algorithm>

#include "app/books/checks.h"
#include "host/decimal.h"

namespace app::books {
namespace {

using SingleCheck = Lines (*)(firebird::Database&);

constexpr SingleCheck kChecks[] = {LotsAgainstMovements, LotsBelowZero,         ItemsAgainstRolls,
                                   PartsWithoutOrder,    RollNumbersTwice,      ReservationsBelowZero,
                                   YarnWithoutRoll,      RollsAgainstMovements, DefectsWithoutRoll};

// A statement over a whole table sees what other stations make durable while it runs, so a roll may be counted on one
// side only. Such a difference does not last: a second look, at other figures, does not find the same again.
Lines FoundTwice(SingleCheck check, firebird::Database& database) {
  Lines first = check(database);
  if (first.empty()) return first;
  const Lines second = check(database);
  std::erase_if(first, [&](const std::string& line) { return std::ranges::find(second, line) == second.end(); });
  return first;
}

}  // namespace

std::string Shown(const host::Value& quantity) { return host::FormatNumber("0.######", quantity.AsFloat(), ','); }

std::string Counted(const host::Value& count, const std::string& one, const std::string& many) {
  return count.AsText() + " " + (count.AsInteger() == 1 ? one : many);
}

std::vector<std::string> CheckBooks(firebird::Database& database) {
  Lines all;
  for (const SingleCheck check : kChecks) {
    const Lines lines = FoundTwice(check, database);
    all.insert(all.end(), lines.begin(), lines.end());
  }
  return all;
}

int Check(firebird::Database& database, std::ostream& out) {
  const Lines lines = CheckBooks(database);
  for (const auto& line : lines) out << line << '\n';
  if (lines.empty()) out << "Os livros conferem.\n";
  out.flush();
  return lines.empty() ? 0 : 1;
}

}  // namespace app::books
