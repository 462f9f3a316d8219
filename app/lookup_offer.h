// What a lookup offers to pick from, read as it is asked for: a register of 50,000 rows is never read whole.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/kit/grid.h"
#include "host/kit/lookup.h"

namespace app {

struct OfferColumn {
  std::string name;  // of the row, in capitals
  std::string caption;
  int width = 0;  // characters
  host::Align align = host::Align::kLeft;
  std::string format = {};  // display format of a number; empty for text and dates
};

class LookupOffer {
 public:
  virtual ~LookupOffer() = default;

  /// Key first, then the description, then what helps to choose.
  virtual const std::vector<OfferColumn>& Columns() const = 0;
  /// Rows whose key or description contains the text, without regard to case and accents, in the order of the keys,
  /// which is the same on every page; all rows for an empty text. `skip` rows are passed over, at most `count` handed
  /// back, with the columns above and those that tell rows of one key apart. Throws host::DatabaseError.
  virtual std::vector<host::LookupRow> Search(std::string_view text, std::size_t skip, std::size_t count) = 0;
  /// The whole row of that key, all columns; of several with one key the first in the order of Search. Nothing when the
  /// lookup does not offer it. Throws host::DatabaseError.
  virtual std::optional<host::LookupRow> Find(std::string_view key) = 0;
  /// The whole row whose columns have these values, of several the first in the order of Search; nothing when the
  /// lookup offers none. Texts are equal as they are stored, null is empty text too, and a number or date may be given
  /// as the text that people write. Throws host::InputError when it has no such column, host::DatabaseError.
  virtual std::optional<host::LookupRow> FindRow(const host::LookupRow& wanted) = 0;
  /// The whole row of which Search handed back `shown`: of several with one key, that one. Nothing when the lookup does
  /// not offer it any more. Throws host::DatabaseError.
  virtual std::optional<host::LookupRow> Whole(const host::LookupRow& shown) {
    const auto key = shown.find(Columns().front().name);
    return key == shown.end() ? std::nullopt : Find(key->second.AsText());
  }
};

}  // namespace app
