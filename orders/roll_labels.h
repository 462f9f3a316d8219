// The roll labels of an order: one empty stock row per roll that is expected, known by its lot. The write-off finds the
// row when the label is scanned and fills it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/host.h"
#include "weaving/statement.h"

namespace orders {

/// An item of a stored order, as the labels need it.
struct LabelledItem {
  std::string order;
  std::string code;
  std::string colour;
  std::string warehouse;   // where the rolls will enter; may be empty
  double written_off = 0;  // in the unit of the fabric
};

/// A label's lot is the order's number in six characters and a sequence in three digits, which runs over all fabrics of
/// the order. Every operation throws DatabaseError when the database refuses a statement; those before it stay pending.
/// Who writes, or trusts what was read, holds the order.
class RollLabels {
 public:
  explicit RollLabels(host::Host& host);

  static constexpr std::int64_t kLastSequence = 999;
  /// Labels of an order whose number is shorter could not be found again.
  static bool FitsLabel(std::string_view order);

  /// The item as it is stored; nothing when it is not.
  std::optional<LabelledItem> StoredItem(std::string_view order, std::string_view code, std::string_view colour) const;
  bool Exist(const LabelledItem& item) const;
  /// The lot of a label of the item whose row holds stock; nothing when they are all empty.
  std::optional<std::string> LotWithStock(const LabelledItem& item) const;
  /// Deletes the labels of the item.
  void Delete(const LabelledItem& item);
  /// The sequence that new labels come after; 0 for the order's first ones.
  std::int64_t LastSequence(std::string_view order) const;
  /// Makes `count` labels, whose sequences come after `last`; at most up to kLastSequence.
  void Insert(const LabelledItem& item, std::int64_t last, int count);

 private:
  weaving::Sql LabelsOf(const LabelledItem& item) const;
  weaving::Sql NewLabel(const LabelledItem& item, std::int64_t sequence) const;

  weaving::Statements statements_;
};

}  // namespace orders
