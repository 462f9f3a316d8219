// What a roll consumes and where it lies, as the database tells it.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/errors.h"
#include "host/host.h"
#include "weaving/roll.h"
#include "weaving/statement.h"
#include "weaving/stock_lot.h"

namespace weaving {

/// A yarn that a roll takes, in kilograms.
struct YarnNeed {
  std::string yarn;
  std::string description;
  std::string colour;
  double wanted = 0;    // still to be taken
  double computed = 0;  // of which the computed part; a person may want more or less
  double share = 0;     // of the fabric, in percent

  bool operator==(const YarnNeed&) const = default;
};

/// A lot that holds such a yarn.
struct YarnLot {
  StockLot lot;
  std::string description;
  std::string deposit_name;
  std::string place;
  std::string supplier = {};            // where the lot's code names it
  double held = 0;                      // in stock, less what was taken
  double taken = 0;                     // for this roll
  std::optional<double> reserved = {};  // by other orders; nothing where none did
  double price = 0;                     // per kilogram, to four decimals
  double import_cost = 0;               // of the yarn, by its share of the fabric

  bool operator==(const YarnLot&) const = default;
};

/// The order's item is written off in full and still holds yarn reserved: no share of it can be told. what() is the
/// sentence for the person.
class NothingOpen : public host::InputError {
 public:
  NothingOpen();
};

/// One look at the database for one roll.
class RollNeeds {
 public:
  explicit RollNeeds(host::Host& host) : funcoes_(host.GetFuncoes()), statements_(host) {}

  /// By the order's reservations, where the installation wants it (`from_reservations`), the order has one item and
  /// yarn is still reserved; else by the fabric's composition, `merged`: equal lines of it in one. Throws NothingOpen,
  /// DatabaseError.
  std::vector<YarnNeed> Of(const NewRoll& roll, bool from_reservations, bool merged) const;

  /// The lots in stock that hold the yarn of this need, as the database has them. `name_suppliers`: by the lots' codes.
  /// Throws DatabaseError.
  std::vector<YarnLot> LotsOf(const std::string& order, const YarnNeed& need, bool name_suppliers);

 private:
  bool HasOneItem(const std::string& order) const;
  bool NothingIsOpen(const std::string& order) const;
  std::unique_ptr<host::TTIQuery> ByReservations(const NewRoll& roll) const;
  std::unique_ptr<host::TTIQuery> ByComposition(const NewRoll& roll, bool merged) const;
  std::unique_ptr<host::TTIQuery> Stock(const std::string& order, const YarnNeed& need) const;
  const std::string& SupplierOf(const std::string& lot);

  host::Funcoes& funcoes_;
  Statements statements_;
  std::map<std::string, std::string> suppliers_;  // names by code: lots of one supplier stand together in a list
};

}  // namespace weaving
