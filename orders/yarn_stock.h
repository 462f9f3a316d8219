// The stock lots of the yarns that an order needs.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/database.h"
#include "host/host.h"
#include "host/kit/dataset.h"
#include "weaving/statement.h"

namespace orders {

/// What the lots on view are narrowed down to; empty for no restriction.
struct LotFilter {
  std::string warehouse;
  std::string lot;    // how the lot begins
  std::string place;  // how the place in the warehouse begins
};

class YarnStock {
 public:
  /// `yarns` has the fields of YarnFields, `lots` those of StockFields.
  YarnStock(host::Host& host, const host::Dataset& yarns, host::Dataset& lots);

  /// Replaces the lots by those of every yarn: lots with more than 0.01 in stock, and lots that the order holds a
  /// reservation on. No filter is on afterwards. Throws DatabaseError; the lots read so far are then there.
  void Load(std::string_view order);
  /// Shows only the lots of the current yarn; without a current yarn every lot.
  void Show(const LotFilter& filter);

  /// What other orders hold reserved on a lot.
  double ReservedElsewhere(std::string_view order, std::string_view yarn, std::string_view colour,
                           std::string_view warehouse, std::string_view lot) const;
  /// Name of the supplier that delivered the lot last; empty when no entry note has it.
  std::string LastSupplier(std::string_view yarn, std::string_view lot) const;

 private:
  std::unique_ptr<host::TTIQuery> LotsOf(std::string_view order, std::string_view yarn, std::string_view colour) const;
  void AppendLot(std::string_view order, const host::TTIQuery& row);

  weaving::Statements statements_;
  const host::Dataset& yarns_;
  host::Dataset& lots_;
  // Last supplier by yarn and lot while lots are loaded: a lot may stand in several warehouses.
  std::map<std::pair<std::string, std::string>, std::string> suppliers_;
};

}  // namespace orders
