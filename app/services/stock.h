// Movements of stock: one ledger row each, and the balance of the lot.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"
#include "host/estoque.h"

namespace app::services {

/// A movement is one statement for the database, so that ledger and balance change together or not at all, also when
/// another station moves the same lot at that moment.
class StockMovement : public host::TEstoque {
 public:
  explicit StockMovement(firebird::Database& database) : database_(database) {}

  std::string CodigoTipoMovEstoque(int ordinal) override;
  void MovimentaEstoqueMaterial(bool update_balance, bool write_movement) override;

 private:
  void CheckNumbers();
  [[noreturn]] void Refuse(const std::string& what, double balance) const;
  double Balance() const;

  firebird::Database& database_;
};

/// See host::Funcoes::MovimentosDaPeca. Throws host::DatabaseError.
std::vector<host::LedgerRow> MovementsOfRoll(firebird::Database& database, std::string_view order, int roll);

}  // namespace app::services
