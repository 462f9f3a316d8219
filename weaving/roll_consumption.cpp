#include "weaving/roll_consumption.h"

#include <algorithm>
#include <set>
#include <utility>

#include "host/decimal.h"
#include "weaving/yarn_movements.h"

namespace weaving {
namespace {

// A remainder up to this is forgiven.
constexpr double kForgiven = 0.01;

double Rounded(double kilograms) { return host::RoundTo(kilograms, 3); }

bool IsOf(const YarnLot& lot, const YarnNeed& need) {
  return lot.lot.code == need.yarn && lot.lot.colour == need.colour;
}

bool IsOf(const StockLot& lot, const YarnNeed& need) { return lot.code == need.yarn && lot.colour == need.colour; }

}  // namespace

void RollConsumption::Clear() {
  needs_.clear();
  lots_.clear();
}

void RollConsumption::List(const NewRoll& roll, const Listing& listing) {
  Clear();
  order_ = roll.order;
  RollNeeds database(host_);
  const std::vector<YarnNeed> needs = database.Of(roll, listing.from_reservations, listing.merged);
  std::vector<YarnLot> lots;
  std::set<std::pair<std::string, std::string>> listed;  // a yarn's lots stand once, however many lines want it
  for (const YarnNeed& need : needs) {
    if (!listed.emplace(need.yarn, need.colour).second) continue;
    for (YarnLot& lot : database.LotsOf(order_, need, listing.name_suppliers)) lots.push_back(std::move(lot));
  }
  std::stable_sort(lots.begin(), lots.end(),
                   [](const YarnLot& left, const YarnLot& right) { return left.lot.lot < right.lot.lot; });
  needs_ = needs;
  lots_ = std::move(lots);
}

std::vector<std::size_t> RollConsumption::LotsOf(std::size_t need) const {
  std::vector<std::size_t> found;
  for (std::size_t at = 0; at < lots_.size(); ++at) {
    if (IsOf(lots_[at], needs_.at(need))) found.push_back(at);
  }
  return found;
}

bool RollConsumption::Covered() const {
  return std::none_of(needs_.begin(), needs_.end(), [](const YarnNeed& need) { return need.wanted > 0; });
}

// --- one lot -----------------------------------------------------------------------------------------------------

std::optional<double> RollConsumption::Free(std::size_t need, std::size_t lot) const {
  const double held = Rounded(lots_.at(lot).held);
  const double reserved = Rounded(lots_.at(lot).reserved.value_or(0));
  if (held <= reserved) return std::nullopt;
  return std::min(Rounded(needs_.at(need).wanted), Rounded(held - reserved));
}

void RollConsumption::Take(std::size_t need, std::size_t lot, double quantity) {
  YarnNeed& wanted = needs_.at(need);
  const double left = Rounded(Rounded(wanted.wanted) - quantity);
  const double computed = Rounded(Rounded(wanted.computed) - quantity);
  const bool done = left <= kForgiven;
  wanted.wanted = done ? 0 : left;
  wanted.computed = done ? 0 : computed;

  YarnLot& from = lots_.at(lot);
  from.taken = Rounded(Rounded(from.taken) + quantity);
  from.held = Rounded(Rounded(from.held) - quantity);
}

void RollConsumption::PutBack(std::size_t need, const YarnNeed& need_before, std::size_t lot,
                              const YarnLot& lot_before) {
  needs_.at(need) = need_before;
  lots_.at(lot) = lot_before;
}

// --- without a person ----------------------------------------------------------------------------------------------

FromReserved RollConsumption::TakeReserved() {
  FromReserved taken;
  for (std::size_t need = 0; need < needs_.size(); ++need) {
    const FromReserved of_need = TakeReservedOf(need);
    if (of_need.reserved) taken.reserved = of_need.reserved;
    taken.lot = of_need.lot;
  }
  taken.covered = Covered();
  return taken;
}

FromReserved RollConsumption::TakeReservedOf(std::size_t need) {
  FromReserved taken;
  for (const std::size_t lot : LotsOf(need)) {
    taken.lot = lot;
    if (!(needs_[need].wanted > 0)) break;
    const double reserved = ReservedOfLot(statements_, order_, lots_[lot].lot);
    if (!(reserved > 0) || lots_[lot].held < reserved) continue;
    Take(need, lot, std::min(Rounded(needs_[need].wanted), Rounded(reserved)));
    taken.reserved = reserved;
  }
  return taken;
}

FromRemembered RollConsumption::TakeRemembered(const std::vector<StockLot>& remembered) {
  FromRemembered served;
  for (const StockLot& lot : remembered) {
    const bool known = std::any_of(needs_.begin(), needs_.end(), [&](const YarnNeed& need) { return IsOf(lot, need); });
    if (!known) {
      served.stopped = Stopped::kUnusable;
      return served;
    }
    const auto listed = Listed(lot);
    for (std::size_t need = 0; need < needs_.size(); ++need) {
      if (!IsOf(lot, needs_[need]) || !(needs_[need].wanted > 0)) continue;
      served.need = need;
      if (listed) served.lot = listed;
      served.stopped = listed ? TakeLot(need, *listed) : Stopped::kUnusable;
      if (served.stopped != Stopped::kExhausted) return served;
    }
  }
  return served;
}

std::optional<std::size_t> RollConsumption::Listed(const StockLot& lot) const {
  const auto found = std::find_if(lots_.begin(), lots_.end(), [&](const YarnLot& at) { return at.lot == lot; });
  if (found == lots_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - lots_.begin());
}

// kExhausted: go on with what is next.
Stopped RollConsumption::TakeLot(std::size_t need, std::size_t lot) {
  if (Rounded(lots_[lot].held) < Rounded(needs_[need].wanted)) return Stopped::kUnusable;
  const auto free = Free(need, lot);
  if (!free) return Stopped::kOfOthers;
  Take(need, lot, *free);
  return Covered() ? Stopped::kCovered : Stopped::kExhausted;
}

}  // namespace weaving
