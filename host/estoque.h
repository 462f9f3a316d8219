// One movement of stock.
#pragma once

#include <string>

#include "host/date.h"

namespace host {

/// Ordinals of the movement types that the module uses.
inline constexpr int kMovementInbound = 7;    // yarn or fabric coming into stock
inline constexpr int kMovementOutbound = 15;  // yarn or fabric leaving stock

/// A movement as the ledger keeps it.
struct LedgerRow {
  std::string movement_type;  // from CodigoTipoMovEstoque
  std::string material;
  std::string colour;
  std::string lot;
  std::string deposit;
  double quantity = 0;  // in the material's unit, positive
  bool out = false;     // true took out, false brought in
  double price = 0;     // per unit; 0 for "without price"
  bool undoes = false;  // it took another movement back
  DateTime moment;      // when it was written
};

/// Created by Host::NewEstoque, filled, moved once, freed.
class TEstoque {
 public:
  virtual ~TEstoque() = default;

  std::string Material;
  std::string Cor;
  std::string Lote;
  std::string Deposito;
  std::string Documento;      // the weaving order
  std::string TipoDocumento;  // "BT"
  int Ordem = 0;              // the roll's number within the order; 0 for a movement of no roll
  bool Estorno = false;       // true for one that takes another movement back
  std::string Cliente;
  std::string Maquina;
  std::string Funcionario;
  Date Data;
  double Quantidade = 0;  // in the material's unit, positive
  bool Saida = false;     // true takes out, false brings in
  std::string Usuario;
  double PrecoUnitario = 0;  // per unit; 0 means "without price" and leaves the average price alone
  double Custo = 0;          // per unit
  std::string Local;         // place in the deposit; empty leaves the lot's own
  std::string Baixado = "0";
  std::string Ativo = "1";
  std::string Complemento;
  std::string TipoMovimento;  // from CodigoTipoMovEstoque

  /// The host's code of a movement type ordinal; throws InputError for an ordinal it does not know.
  virtual std::string CodigoTipoMovEstoque(int ordinal) = 0;
  /// Writes the movement and brings the lot's balance up to date, creating its row when there is none. Refuses, with
  /// a DatabaseError (code 0) that names material, colour, lot, deposit, balance and quantity, a quantity that is not
  /// positive and one that would leave the lot below -0.01; nothing is changed then.
  virtual void MovimentaEstoqueMaterial(bool update_balance, bool write_movement) = 0;
};

}  // namespace host
