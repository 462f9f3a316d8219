// What an order holds reserved on the stock lots of its yarns.
#pragma once

#include <string_view>

#include "host/host.h"
#include "host/kit/dataset.h"
#include "host/kit/screen.h"
#include "weaving/statement.h"

namespace orders {

class YarnReservation {
 public:
  /// `yarns` has the fields of YarnFields, `lots` those of StockFields; messages go to boxes of `screen`.
  YarnReservation(const host::Screen& screen, const host::Dataset& yarns, host::Dataset& lots);

  /// Quantities are held against stock and consumption only when on.
  void SetChecked(bool on) { checked_ = on; }

  /// Before a lot is posted: proposes a quantity for one just ticked, takes it off one no longer ticked, and holds it
  /// against stock, write-offs and consumption. Throws Abort, the row's changes given up, when less would be reserved
  /// than was already written off.
  void Settle();

  /// Makes the stored reservations of the order those that are ticked: what is not ticked and has no write-off goes.
  /// Takes the filter off the lots. Throws DatabaseError; earlier statements stay pending.
  void Store(std::string_view order);

 private:
  void Propose();
  void Check();
  bool IsStored(std::string_view order, const host::DatasetCursor& lot) const;
  void Insert(std::string_view order, const host::DatasetCursor& lot);
  void Update(std::string_view order, const host::DatasetCursor& lot);

  const host::Screen& screen_;
  weaving::Statements statements_;
  const host::Dataset& yarns_;
  host::Dataset& lots_;
  bool checked_ = false;
};

}  // namespace orders
