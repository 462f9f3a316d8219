// The yarn of one roll: which yarns it takes, from which lots, and the roll as it is written once they are found.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/host.h"
#include "weaving/roll.h"
#include "weaving/roll_needs.h"
#include "weaving/statement.h"
#include "weaving/stock_lot.h"

namespace weaving {

/// How a roll's yarn is listed.
struct Listing {
  bool from_reservations = false;  // the installation takes yarn from what the order reserved
  bool merged = false;             // equal lines of a composition in one
  bool name_suppliers = false;     // of the lots
};

/// Why lots of earlier rolls stopped serving this one.
enum class Stopped {
  kCovered,    // they did not: nothing is wanted any more
  kExhausted,  // no remembered lot is left
  kUnusable,   // the roll does not take its yarn, the lot is gone or holds too little
  kOfOthers,   // other orders reserved all of it
};

/// How far lots of earlier rolls served.
struct FromRemembered {
  Stopped stopped = Stopped::kExhausted;
  std::optional<std::size_t> need = {};  // the last one looked at
  std::optional<std::size_t> lot = {};   // the last remembered one that is listed
};

/// What was taken from the order's own reservations.
struct FromReserved {
  bool covered = false;            // nothing is wanted any more
  std::optional<double> reserved;  // of the lot taken from last; nothing when none was
  std::optional<std::size_t> lot;  // looking ended there; nothing when the last need has none
};

/// Needs and lots in memory; nothing is written to the database here. Quantities are compared and kept to three
/// decimals.
class RollConsumption {
 public:
  explicit RollConsumption(host::Host& host) : host_(host), statements_(host) {}

  /// Forgets needs and lots.
  void Clear();
  /// Lists anew what the roll consumes and the lots that hold it, in the order of the lots' codes. Throws NothingOpen,
  /// DatabaseError; nothing is listed then.
  void List(const NewRoll& roll, const Listing& listing);

  const std::vector<YarnNeed>& Needs() const { return needs_; }
  const std::vector<YarnLot>& Lots() const { return lots_; }
  /// Indexes of the lots of a need's yarn, in the order of their codes.
  std::vector<std::size_t> LotsOf(std::size_t need) const;
  /// A person wants another quantity.
  void SetWanted(std::size_t need, double kilograms) { needs_.at(need).wanted = kilograms; }
  /// Nothing is wanted any more.
  bool Covered() const;

  /// What a person may take of the lot for the need: as much as is wanted and no other order reserved. Nothing when
  /// others reserved all of it.
  std::optional<double> Free(std::size_t need, std::size_t lot) const;
  /// Takes the quantity of the lot for the need. A remainder of the need up to 0.01 is forgiven.
  void Take(std::size_t need, std::size_t lot, double quantity);
  /// Gives up a Take: both are as they were before it.
  void PutBack(std::size_t need, const YarnNeed& need_before, std::size_t lot, const YarnLot& lot_before);

  /// Takes from the lots that the order reserved, whatever others did; a lot that holds less than its reservation is
  /// left alone. Throws DatabaseError; what was taken before stays taken.
  FromReserved TakeReserved();
  /// Takes what is left from these lots, in their order, as a person would; stops at the first that will not do.
  FromRemembered TakeRemembered(const std::vector<StockLot>& remembered);

 private:
  FromReserved TakeReservedOf(std::size_t need);
  std::optional<std::size_t> Listed(const StockLot& lot) const;
  Stopped TakeLot(std::size_t need, std::size_t lot);

  host::Host& host_;
  Statements statements_;
  std::string order_;
  std::vector<YarnNeed> needs_;
  std::vector<YarnLot> lots_;  // by the lots' codes, those of one code as the database has them
};

}  // namespace weaving
