#include "writeoff/roll_yarn_return.h"

#include <string>

#include "writeoff/reservation_kind.h"

namespace writeoff {
namespace {

// One row of what the roll consumed.
struct Consumed {
  std::string code;
  std::string colour;
  std::string deposit;
  std::string lot;
  double quantity = 0;
};

class YarnReturn {
 public:
  YarnReturn(host::Host& host, const Reversal& reversal)
      : host_(host),
        funcoes_(host.GetFuncoes()),
        database_(host.GetTabela().IBDatabase()),
        reversal_(reversal),
        of_roll_("WHERE NUMERO = " + funcoes_.Aspas(reversal.roll.order) + " AND MATERIAL = " +
                 funcoes_.Aspas(reversal.roll.code) + " AND ORDEM = " + std::to_string(reversal.roll.number)) {}

  void Run() {
    const auto rows = database_.NewQuery();
    rows->SQL.Add("SELECT CODIGO, COR, NUMERO, DEPOSITO, LOTE, QTDE FROM " + Table("BAIXA_FIO") + " M");
    rows->SQL.Add(of_roll_);
    rows->Open();
    for (; !rows->Eof(); rows->Next()) {
      const Consumed yarn = {rows->FieldByName("CODIGO").AsText(), rows->FieldByName("COR").AsText(),
                             rows->FieldByName("DEPOSITO").AsText(), rows->FieldByName("LOTE").AsText(),
                             rows->FieldByName("QTDE").AsFloat()};
      IntoStock(yarn);
      ToReservation(yarn);
    }
    Execute({"DELETE FROM " + Table("BAIXA_FIO"), of_roll_});
    database_.CommitRetaining();
  }

 private:
  std::string Table(std::string_view name) const { return funcoes_.DBLocal(name, true); }

  void Execute(std::initializer_list<std::string> lines) {
    const auto query = database_.NewQuery();
    for (const std::string& line : lines) query->SQL.Add(line);
    query->ExecSQL();
  }

  std::string OfLot(const Consumed& yarn) const {
    return "WHERE CODIGO = " + funcoes_.Aspas(yarn.code) + " AND COR = " + funcoes_.Aspas(yarn.colour) +
           " AND DEPOSITO = " + funcoes_.Aspas(yarn.deposit) + " AND LOTE = " + funcoes_.Aspas(yarn.lot);
  }

  std::string PlaceOf(const Consumed& yarn) {
    const auto query = database_.NewQuery();
    query->SQL.Add("SELECT MAX(MAT_ITEN.LOCAL) AS LOCAL FROM " + Table("MAT_ITEN") + " MAT_ITEN");
    query->SQL.Add(OfLot(yarn));
    query->Open();
    return query->FieldByName("LOCAL").AsText();
  }

  // Without a price: the lot's average is what the yarn left at.
  void IntoStock(const Consumed& yarn) {
    const std::string place = PlaceOf(yarn);
    const auto movement = NewReversalMovement(host_, reversal_);
    movement->Material = yarn.code;
    movement->Cor = yarn.colour;
    movement->Lote = yarn.lot;
    movement->Deposito = yarn.deposit;
    movement->Quantidade = yarn.quantity;
    movement->Saida = false;
    movement->Local = place;
    movement->TipoMovimento = movement->CodigoTipoMovEstoque(host::kMovementInbound);
    movement->MovimentaEstoqueMaterial(true, true);
  }

  void ToReservation(const Consumed& yarn) {
    const std::string q = funcoes_.PermanecePonto(yarn.quantity);
    const std::string of_order =
        OfLot(yarn) + " AND NUMERO = " + funcoes_.Aspas(reversal_.roll.order) + " AND " + std::string(kReservationKind);
    Execute({"UPDATE " + Table("MAT_RESERVA") + " SET QTDE = QTDE + " + q + " ,QTDE_B = QTDE_B - " + q, of_order});
    // A lot reserved only after the roll had taken from it was not reserved for the roll: it gets nothing back.
    Execute({"UPDATE " + Table("MAT_RESERVA") + " SET QTDE = QTDE + QTDE_B ,QTDE_B = 0", of_order, "AND QTDE_B < 0"});
  }

  host::Host& host_;
  host::Funcoes& funcoes_;
  host::Database& database_;
  const Reversal& reversal_;
  std::string of_roll_;
};

}  // namespace

void EstornaFios(host::Host& host, const Reversal& reversal) { YarnReturn(host, reversal).Run(); }

}  // namespace writeoff
