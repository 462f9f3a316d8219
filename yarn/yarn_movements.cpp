#include "yarn/yarn_movements.h"

#include <utility>
#include <vector>

#include "host/decimal.h"

namespace yarn {
namespace {

// A reservation is not left with less than this.
constexpr double kCrumb = 0.01;

}  // namespace

std::unique_ptr<host::TEstoque> NewRollMovement(host::Host& host, const Roll& roll, const std::string& place) {
  auto movement = host.NewEstoque();
  movement->Documento = roll.order;
  movement->TipoDocumento = "BT";
  movement->Cliente = roll.client;
  movement->Maquina = roll.machine;
  movement->Funcionario = roll.employee;
  movement->Data = roll.date;
  movement->Usuario = host.GetFuncoes().vUsuario();
  movement->Baixado = "0";
  movement->Ativo = "1";
  movement->Complemento.clear();
  movement->Local = place;
  return movement;
}

YarnMovements::YarnMovements(host::Host& host, const Roll& roll, std::string fabric, std::string place, int number)
    : host_(host),
      funcoes_(host.GetFuncoes()),
      database_(host.GetTabela().IBDatabase()),
      roll_(roll),
      fabric_(std::move(fabric)),
      place_(std::move(place)),
      number_(number) {}

void YarnMovements::TakeOut(const LotKey& lot, double quantity, double price) {
  Move(lot, quantity, price, true);
  const double reserved = Reserved(lot);
  const double left = host::WithoutNoise(reserved - quantity);
  const bool crumb = left > 0 && left < kCrumb;
  Record(lot, crumb ? reserved : quantity);
  // A crumb goes with the roll to its last digit; rounding it here would leave the crumb of the crumb.
  ReduceReservation(lot, crumb ? reserved : host::RoundTo(quantity, 3));
}

void YarnMovements::Move(const LotKey& lot, double quantity, double price, bool out) {
  const auto movement = NewRollMovement(host_, roll_, place_);
  movement->Material = lot.code;
  movement->Cor = lot.colour;
  movement->Lote = lot.lot;
  movement->Deposito = lot.deposit;
  movement->Quantidade = quantity;
  movement->Saida = out;
  movement->PrecoUnitario = price;
  movement->Custo = price;
  movement->TipoMovimento = movement->CodigoTipoMovEstoque(host::kMovementOutbound);
  movement->MovimentaEstoqueMaterial(true, true);
}

double YarnMovements::Reserved(const LotKey& lot) {
  const auto query = database_.NewQuery();
  ReservedOfLot(query->SQL, funcoes_, roll_.order, lot);
  query->Open();
  return query->IsEmpty() ? 0 : query->FieldByName("QTDE").AsFloat();
}

void YarnMovements::Record(const LotKey& lot, double quantity) {
  const auto query = database_.NewQuery();
  query->SQL.Add("INSERT INTO " + funcoes_.DBLocal("BAIXA_FIO", true) +
                 " (CODIGO, DOCTO, NUMERO, QTDE, LOTE, COR, DEPOSITO, ORDEM, MATERIAL) VALUES");
  query->SQL.Add("(" + funcoes_.Aspas(lot.code) + ", " + funcoes_.Aspas(roll_.order) + ", " +
                 funcoes_.Aspas(roll_.order) + ", " + funcoes_.PermanecePonto(quantity) + ", " +
                 funcoes_.Aspas(lot.lot) + ", " + funcoes_.Aspas(lot.colour) + ", " + funcoes_.Aspas(lot.deposit) +
                 ", " + std::to_string(number_) + ", " + funcoes_.Aspas(fabric_) + ")");
  query->ExecSQL();
}

void YarnMovements::ReduceReservation(const LotKey& lot, double quantity) {
  const std::string table = funcoes_.DBLocal("MAT_RESERVA", true);
  const std::string q = funcoes_.PermanecePonto(quantity);
  const std::string where = ReservationOfLot(funcoes_, roll_.order, lot);

  const auto reduce = database_.NewQuery();
  reduce->SQL.Add("UPDATE " + table + " SET QTDE = QTDE - " + q + " ,QTDE_B = QTDE_B + " + q);
  reduce->SQL.Add(where);
  reduce->ExecSQL();

  const auto floor = database_.NewQuery();
  floor->SQL.Add("UPDATE " + table + " SET QTDE = 0");
  floor->SQL.Add(where);
  floor->SQL.Add("AND QTDE < 0");
  floor->ExecSQL();
}

void YarnMovements::BringBack() {
  const std::string order = funcoes_.Aspas(roll_.order);
  const std::string number = std::to_string(number_);
  const auto query = database_.NewQuery();
  query->SQL.Add("SELECT TECEL.MALHARIA, TECEL.MAQUINA, BAIXA_FIO.CODIGO, BAIXA_FIO.COR, BAIXA_FIO.NUMERO,");
  query->SQL.Add("BAIXA_FIO.DEPOSITO, BAIXA_FIO.LOTE, BAIXA_FIO.QTDE");
  query->SQL.Add("FROM " + funcoes_.DBLocal("TECEL", true) + " TECEL");
  query->SQL.Add("INNER JOIN " + funcoes_.DBLocal("BAIXA_FIO", true) +
                 " BAIXA_FIO ON (TECEL.NUMERO = BAIXA_FIO.NUMERO)");
  query->SQL.Add("WHERE TECEL.NUMERO = " + order);
  query->SQL.Add("AND BAIXA_FIO.ORDEM = " + number);
  query->Open();
  for (; !query->Eof(); query->Next()) {
    const LotKey lot = {query->FieldByName("CODIGO").AsText(), query->FieldByName("COR").AsText(),
                        query->FieldByName("DEPOSITO").AsText(), query->FieldByName("LOTE").AsText()};
    Move(lot, query->FieldByName("QTDE").AsFloat(), 0, false);
  }
  const auto forget = database_.NewQuery();
  forget->SQL.Add("DELETE FROM " + funcoes_.DBLocal("BAIXA_FIO", true) + " WHERE NUMERO = " + order +
                  " AND ORDEM = " + number);
  forget->ExecSQL();
  database_.CommitRetaining();
}

}  // namespace yarn
