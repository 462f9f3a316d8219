#include "orders/yarn_stock.h"

#include <array>
#include <set>

namespace orders {

YarnStock::YarnStock(host::Host& host, const host::Dataset& yarns, host::Dataset& lots)
    : database_(host.GetTabela().IBDatabase()), words_(host.GetFuncoes()), yarns_(yarns), lots_(lots) {}

void YarnStock::Load(std::string_view order) {
  lots_.SetFiltered(false);
  lots_.Empty();
  suppliers_.clear();
  std::set<std::pair<std::string, std::string>> asked;  // a yarn stands once per LFA and feeders
  std::set<std::array<std::string, 4>> shown;
  for (host::DatasetCursor yarn(yarns_); !yarn.Eof(); yarn.Next()) {
    const std::string code = yarn.FieldByName("Codigo").AsText();
    const std::string colour = yarn.FieldByName("Cor").AsText();
    if (!asked.emplace(code, colour).second) continue;
    const auto rows = LotsOf(order, code, colour);
    for (; !rows->Eof(); rows->Next()) {
      const std::array key = {rows->FieldByName("CODIGO").AsText(), rows->FieldByName("COR").AsText(),
                              rows->FieldByName("LOTE").AsText(), rows->FieldByName("DEPOSITO").AsText()};
      if (shown.insert(key).second) AppendLot(order, *rows);
    }
  }
}

// The kind of reservation is a condition of the join: in the WHERE it would hide a lot on which only a reservation of
// kind "F" stands.
std::unique_ptr<host::TTIQuery> YarnStock::LotsOf(std::string_view order, std::string_view yarn,
                                                  std::string_view colour) const {
  const Words& w = words_;
  return OpenQuery(
      database_,
      {"SELECT MAT_ITEN.CODIGO, MAT_ITEN.COR, MAT_ITEN.LOTE, MAT_ITEN.DEPOSITO, MAT_ITEN.QTDE, ",
       "DEPOSITO.DESCRICAO AS DESC_DEP, MAT_RESERVA.QTDE AS QTDE_RES, FORN.NOME, MAT_RESERVA.OBS, ",
       "MAT_ITEN.LOCAL, MAT_RESERVA.QTDE_B, MAT_RESERVA.QTDE AS SALDO, MAT_LOTE.PARTIDA, MAT_LOTE.SEQUENCIA,",
       "MAT_LOTE.TONALIDADE, MAT_ITEN.LARGURA", "FROM " + w.Named("MAT_ITEN"),
       "LEFT JOIN " + w.Named("DEPOSITO") + " ON (MAT_ITEN.DEPOSITO = DEPOSITO.CODIGO)",
       "LEFT JOIN " + w.Named("MATERIAL") + " ON (MATERIAL.CODIGO = MAT_ITEN.CODIGO)",
       "LEFT JOIN " + w.Table("ENTIDADE") + " FORN ON (MATERIAL.CODCLI = FORN.CODCLI)",
       "LEFT JOIN " + w.Named("MAT_RESERVA") + " ON (MAT_RESERVA.NUMERO = " + w.Text(order),
       "AND MAT_RESERVA.CODIGO = MAT_ITEN.CODIGO AND MAT_RESERVA.COR = MAT_ITEN.COR",
       "AND MAT_RESERVA.DEPOSITO = MAT_ITEN.DEPOSITO AND MAT_RESERVA.LOTE = MAT_ITEN.LOTE)", w.ReservationKind(),
       "LEFT JOIN " + w.Named("MAT_LOTE") +
           " ON (MAT_LOTE.CODIGO = MAT_ITEN.CODIGO AND MAT_LOTE.COR = MAT_ITEN.COR AND MAT_LOTE.LOTE = MAT_ITEN.LOTE)",
       "WHERE MAT_ITEN.CODIGO = " + w.Text(yarn), "AND MAT_ITEN.COR = " + w.Text(colour),
       "AND (MAT_ITEN.QTDE > 0.01 OR (MAT_RESERVA.QTDE + MAT_RESERVA.QTDE_B) > 0)"});
}

void YarnStock::AppendLot(std::string_view order, const host::TTIQuery& row) {
  const std::string yarn = row.FieldByName("CODIGO").AsText();
  const std::string lot = row.FieldByName("LOTE").AsText();
  const double elsewhere =
      ReservedElsewhere(order, yarn, row.FieldByName("COR").AsText(), row.FieldByName("DEPOSITO").AsText(), lot);
  const auto [supplier, asked_now] = suppliers_.try_emplace({yarn, lot});
  if (asked_now) supplier->second = LastSupplier(yarn, lot);
  const double held = row.FieldByName("QTDE_RES").AsFloat() + row.FieldByName("QTDE_B").AsFloat();

  lots_.Append();
  for (const char* name : {"Codigo", "Cor", "Lote", "Deposito", "Desc_Dep", "Qtde", "Qtde_Res", "Qtde_B", "Local",
                           "Obs", "Partida", "Sequencia", "Tonalidade", "Largura"}) {
    lots_[name].Set(row.FieldByName(name));
  }
  lots_["Fornecedor"].Set(row.FieldByName("NOME"));
  lots_["Fornecedor_NF"].Set(supplier->second);
  lots_["Qtde_Reservado"].Set(elsewhere);
  lots_["Saldo_Reserva"].Set(row.FieldByName("SALDO").AsFloat() + row.FieldByName("QTDE_B").AsFloat());
  lots_["Sel"].Set(held > 0 ? "S" : "N");
  lots_.Post();
}

double YarnStock::ReservedElsewhere(std::string_view order, std::string_view yarn, std::string_view colour,
                                    std::string_view warehouse, std::string_view lot) const {
  const Words& w = words_;
  const auto sum = OpenQuery(
      database_, {"SELECT SUM(QTDE) AS QTDE  FROM " + w.Table("MAT_RESERVA"), "WHERE NUMERO <> " + w.Text(order),
                  "AND CODIGO = " + w.Text(yarn), "AND COR = " + w.Text(colour), "AND DEPOSITO = " + w.Text(warehouse),
                  "AND LOTE = " + w.Text(lot), w.ReservationKind()});
  return sum->FieldByName("QTDE").AsFloat();
}

std::string YarnStock::LastSupplier(std::string_view yarn, std::string_view lot) const {
  const Words& w = words_;
  const auto entries =
      OpenQuery(database_,
                {"SELECT ENTIDADE.NOME, NF.DT_ENTRADA", "FROM " + w.Table("NF_ENTRA_ITEN") + " NFI",
                 "LEFT JOIN " + w.Table("NOTA_ENTRA") +
                     " NF ON (NF.NOTAFISCAL = NFI.NUMERO AND NF.CREDOR = NFI.CODCRE AND NF.SERIE = NFI.SERIE)",
                 "LEFT JOIN " + w.Named("ENTIDADE") + " ON (ENTIDADE.CODCLI = NFI.CODCRE)",
                 "WHERE NFI.CODIGO = " + w.Text(yarn), "AND NFI.LOTE = " + w.Text(lot), "ORDER BY NF.DT_ENTRADA DESC"});
  return entries->FieldByName("NOME").AsText();
}

void YarnStock::Show(const LotFilter& filter) {
  if (yarns_.IsEmpty()) {
    lots_.SetFiltered(false);
    return;
  }
  std::string condition = "Codigo = " + words_.Text(yarns_["Codigo"].AsText()) +  //
                          " and Cor = " + words_.Text(yarns_["Cor"].AsText());
  if (!filter.warehouse.empty()) condition += " and Deposito = " + words_.Text(filter.warehouse);
  if (!filter.lot.empty()) condition += " and Lote like " + words_.Text(filter.lot + "%");
  if (!filter.place.empty()) condition += " and Local like " + words_.Text(filter.place + "%");
  lots_.SetFilter(condition);
  lots_.SetFiltered(true);
}

}  // namespace orders
