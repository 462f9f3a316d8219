// The rows of compositions in the database, and the colours of fabrics and yarns that they are made of.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/database.h"
#include "host/host.h"
#include "weaving/statement.h"

namespace composition {

/// Every operation that reads or writes throws DatabaseError when the database refuses a statement; those before it
/// stay pending.
class CompositionStore {
 public:
  explicit CompositionStore(host::Host& host);

  /// Nobody else loads or stores the fabric's composition until the action ends or a person is waited for; waits for
  /// one who does.
  void Hold(std::string_view fabric);

  bool Exists(std::string_view fabric) const;
  /// Colours in which a fabric exists: COR, DESCRICAO.
  std::unique_ptr<host::TTIQuery> Colours(std::string_view fabric) const;
  /// The composition of a fabric with the descriptions that the grid shows, one row per yarn and colour.
  std::unique_ptr<host::TTIQuery> Load(std::string_view fabric) const;

  /// Takes the whole composition of a fabric away.
  void Delete(std::string_view fabric);
  /// A batch, still empty, of rows of a composition; its parameters are named as the columns.
  std::unique_ptr<host::TTIQuery> NewRows() const;

  bool YarnHasColour(std::string_view yarn, std::string_view colour) const;
  /// Registers a colour of a yarn, as an empty lot in a deposit.
  void RegisterYarnColour(std::string_view yarn, std::string_view colour, std::string_view deposit);

  /// Statement of a lookup over the colours in which a yarn exists.
  std::string ColoursOfYarn(std::string_view yarn) const;
  /// Statement of a lookup over the colours for which a fabric's composition is stored.
  std::string ComposedColours(std::string_view fabric) const;

 private:
  host::Funcoes& funcoes_;
  host::Database& database_;
  weaving::Statements statements_;
};

}  // namespace composition
