#include "weaving/yarn_return.h"

#include <string>

#include "weaving/reservations.h"
#include "weaving/statement.h"
#include "weaving/stock_lot.h"

namespace weaving {
namespace {

class YarnReturn {
 public:
  YarnReturn(host::Host& host, const StoredRoll& roll, const ReversedBy& by)
      : host_(host),
        statements_(host),
        roll_(roll),
        by_(by),
        of_roll_(statements_.Write("WHERE NUMERO = :order AND MATERIAL = :fabric AND ORDEM = :number",
                                   {{"order", roll.order}, {"fabric", roll.code}, {"number", roll.number}})) {}

  void Run() {
    const auto consumed = statements_.Open(R"(
SELECT CODIGO, COR, NUMERO, DEPOSITO, LOTE, QTDE FROM {BAIXA_FIO} M
:of_roll)",
                                           {{"of_roll", of_roll_}});
    for (; !consumed->Eof(); consumed->Next()) {
      const StockLot lot = {consumed->FieldByName("CODIGO").AsText(), consumed->FieldByName("COR").AsText(),
                            consumed->FieldByName("DEPOSITO").AsText(), consumed->FieldByName("LOTE").AsText()};
      const double quantity = consumed->FieldByName("QTDE").AsFloat();
      IntoStock(lot, quantity);
      ToReservation(lot, quantity);
    }
    statements_.Execute(R"(
DELETE FROM {BAIXA_FIO}
:of_roll)",
                        {{"of_roll", of_roll_}});
    host_.GetTabela().IBDatabase().CommitRetaining();
  }

 private:
  Sql OfLot(const StockLot& lot) const {
    return statements_.Write("WHERE CODIGO = :yarn AND COR = :colour AND DEPOSITO = :deposit AND LOTE = :lot",
                             {{"yarn", lot.code}, {"colour", lot.colour}, {"deposit", lot.deposit}, {"lot", lot.lot}});
  }

  std::string PlaceOf(const StockLot& lot) const {
    return statements_
        .Open(R"(
SELECT MAX(MAT_ITEN.LOCAL) AS LOCAL FROM {MAT_ITEN} MAT_ITEN
:of_lot)",
              {{"of_lot", OfLot(lot)}})
        ->FieldByName("LOCAL")
        .AsText();
  }

  // Without a price: the lot's average is what the yarn left at.
  void IntoStock(const StockLot& lot, double quantity) {
    const std::string place = PlaceOf(lot);
    const auto movement = NewReversalMovement(host_, roll_, by_);
    movement->Material = lot.code;
    movement->Cor = lot.colour;
    movement->Lote = lot.lot;
    movement->Deposito = lot.deposit;
    movement->Quantidade = quantity;
    movement->Saida = false;
    movement->Local = place;
    movement->TipoMovimento = movement->CodigoTipoMovEstoque(host::kMovementInbound);
    movement->MovimentaEstoqueMaterial(true, true);
  }

  // A lot reserved only after the roll had taken from it was not reserved for the roll: it gets nothing back.
  void ToReservation(const StockLot& lot, double quantity) {
    const Sql of_order =
        statements_.Write(":of_lot AND NUMERO = :order AND :kind",
                          {{"of_lot", OfLot(lot)}, {"order", roll_.order}, {"kind", YarnReservations()}});
    statements_.ExecuteTogether({statements_.Write(R"(
UPDATE {MAT_RESERVA} SET QTDE = QTDE + :quantity ,QTDE_B = QTDE_B - :quantity
:of_order)",
                                                   {{"quantity", quantity}, {"of_order", of_order}}),
                                 statements_.Write(R"(
UPDATE {MAT_RESERVA} SET QTDE = QTDE + QTDE_B ,QTDE_B = 0
:of_order
AND QTDE_B < 0)",
                                                   {{"of_order", of_order}})});
  }

  host::Host& host_;
  Statements statements_;
  const StoredRoll& roll_;
  const ReversedBy& by_;
  Sql of_roll_;
};

}  // namespace

void EstornaFios(host::Host& host, const StoredRoll& roll, const ReversedBy& by) { YarnReturn(host, roll, by).Run(); }

}  // namespace weaving
