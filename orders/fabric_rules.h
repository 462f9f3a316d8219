// Which mills, fabrics and colours an order may take.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/database.h"
#include "host/host.h"
#include "weaving/statement.h"

namespace orders {

enum class MillState { kUnknown, kBarred, kFree };

/// Every operation that reads throws DatabaseError when the database refuses.
class FabricRules {
 public:
  explicit FabricRules(host::Host& host);

  /// Condition on ENTIDADE: has a price table, is active and not blocked.
  std::string MillFilter() const;
  /// Condition on MATERIAL: some mill has a price for it, and it is active.
  std::string MaterialFilter() const;
  /// Condition on CADCOR: the fabric has a stock row in that colour.
  std::string ColourFilter(std::string_view fabric) const;

  /// Barred: inactive or blocked. A mill without these marks is free.
  MillState StateOf(std::string_view mill) const;
  /// Description of a colour in which the fabric has a stock row; nothing for any other colour.
  std::optional<std::string> ColourOf(std::string_view fabric, std::string_view colour) const;
  /// False when the fabric has a composition, but none for this colour. Rows whose yarn colour is a placeholder
  /// ("*") do not count as a composition of the colour.
  bool HasComposition(std::string_view fabric, std::string_view colour) const;

 private:
  host::Funcoes& funcoes_;
  host::Database& database_;
  weaving::Statements statements_;
};

}  // namespace orders
