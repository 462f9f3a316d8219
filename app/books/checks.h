// The single checks. Each reads with one statement over whole tables, so that two million rolls take minutes and not
// days, and hands back one line per row that is off, ordered by key.
#pragma once

#include <string>
#include <vector>

#include "app/firebird/database.h"

namespace app::books {

using Lines = std::vector<std::string>;

// Quantities are kept with six decimals and worked with at three: half of the last one is no difference.
inline constexpr const char* kTolerance = "0.0005";

/// The balance of each lot is the sum of its movements.
Lines LotsAgainstMovements(firebird::Database& database);
/// No lot is short by more than the stock allows.
Lines LotsBelowZero(firebird::Database& database);
/// What an order's item says was woven is the sum of its rolls, and every roll has its item.
Lines ItemsAgainstRolls(firebird::Database& database);
/// Every item and every reservation has its order.
Lines PartsWithoutOrder(firebird::Database& database);
/// No roll number stands twice in an order. Gaps are no fault: a roll that was taken back leaves one.
Lines RollNumbersTwice(firebird::Database& database);
/// Neither what is reserved nor what was consumed of it is negative.
Lines ReservationsBelowZero(firebird::Database& database);
/// Every roll came into stock and every yarn of a roll left it; nothing else came or left in the name of weaving.
Lines RollsAgainstMovements(firebird::Database& database);
/// Every record of consumed yarn has its roll.
Lines YarnWithoutRoll(firebird::Database& database);
/// Every defect of a roll has that roll: the number of one that was taken back is given to another roll.
Lines DefectsWithoutRoll(firebird::Database& database);

/// A quantity as people read it.
std::string Shown(const host::Value& quantity);
/// "1 peça", "2 peças".
std::string Counted(const host::Value& count, const std::string& one, const std::string& many);

}  // namespace app::books
