#include "orders/yarn_stock.h"

#include <array>
#include <set>

#include "weaving/reservations.h"

namespace orders {

YarnStock::YarnStock(host::Host& host, const host::Dataset& yarns, host::Dataset& lots)
    : statements_(host), yarns_(yarns), lots_(lots) {}

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
  return statements_.Open(
      R"(
SELECT MAT_ITEN.CODIGO, MAT_ITEN.COR, MAT_ITEN.LOTE, MAT_ITEN.DEPOSITO, MAT_ITEN.QTDE, 
DEPOSITO.DESCRICAO AS DESC_DEP, MAT_RESERVA.QTDE AS QTDE_RES, FORN.NOME, MAT_RESERVA.OBS, 
MAT_ITEN.LOCAL, MAT_RESERVA.QTDE_B, MAT_RESERVA.QTDE AS SALDO, MAT_LOTE.PARTIDA, MAT_LOTE.SEQUENCIA,
MAT_LOTE.TONALIDADE, MAT_ITEN.LARGURA
FROM {MAT_ITEN} MAT_ITEN
LEFT JOIN {DEPOSITO} DEPOSITO ON (MAT_ITEN.DEPOSITO = DEPOSITO.CODIGO)
LEFT JOIN {MATERIAL} MATERIAL ON (MATERIAL.CODIGO = MAT_ITEN.CODIGO)
LEFT JOIN {ENTIDADE} FORN ON (MATERIAL.CODCLI = FORN.CODCLI)
LEFT JOIN {MAT_RESERVA} MAT_RESERVA ON (MAT_RESERVA.NUMERO = :order
AND MAT_RESERVA.CODIGO = MAT_ITEN.CODIGO AND MAT_RESERVA.COR = MAT_ITEN.COR
AND MAT_RESERVA.DEPOSITO = MAT_ITEN.DEPOSITO AND MAT_RESERVA.LOTE = MAT_ITEN.LOTE)
AND :kind
LEFT JOIN {MAT_LOTE} MAT_LOTE ON (MAT_LOTE.CODIGO = MAT_ITEN.CODIGO AND MAT_LOTE.COR = MAT_ITEN.COR AND MAT_LOTE.LOTE = MAT_ITEN.LOTE)
WHERE MAT_ITEN.CODIGO = :yarn
AND MAT_ITEN.COR = :colour
AND (MAT_ITEN.QTDE > 0.01 OR (MAT_RESERVA.QTDE + MAT_RESERVA.QTDE_B) > 0))",
      {{"order", order}, {"kind", weaving::YarnReservations()}, {"yarn", yarn}, {"colour", colour}});
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
  const auto sum = statements_.Open(R"(
SELECT SUM(QTDE) AS QTDE  FROM {MAT_RESERVA}
WHERE NUMERO <> :order
AND CODIGO = :yarn
AND COR = :colour
AND DEPOSITO = :warehouse
AND LOTE = :lot
AND :kind)",
                                    {{"order", order},
                                     {"yarn", yarn},
                                     {"colour", colour},
                                     {"warehouse", warehouse},
                                     {"lot", lot},
                                     {"kind", weaving::YarnReservations()}});
  return sum->FieldByName("QTDE").AsFloat();
}

std::string YarnStock::LastSupplier(std::string_view yarn, std::string_view lot) const {
  const auto entries = statements_.Open(R"(
SELECT ENTIDADE.NOME, NF.DT_ENTRADA
FROM {NF_ENTRA_ITEN} NFI
LEFT JOIN {NOTA_ENTRA} NF ON (NF.NOTAFISCAL = NFI.NUMERO AND NF.CREDOR = NFI.CODCRE AND NF.SERIE = NFI.SERIE)
LEFT JOIN {ENTIDADE} ENTIDADE ON (ENTIDADE.CODCLI = NFI.CODCRE)
WHERE NFI.CODIGO = :yarn
AND NFI.LOTE = :lot
ORDER BY NF.DT_ENTRADA DESC)",
                                        {{"yarn", yarn}, {"lot", lot}});
  return entries->FieldByName("NOME").AsText();
}

void YarnStock::Show(const LotFilter& filter) {
  if (yarns_.IsEmpty()) {
    lots_.SetFiltered(false);
    return;
  }
  const auto equals = [this](std::string_view field, std::string_view text) {
    return std::string(field) + " = " + statements_.Quoted(text);
  };
  const auto begins = [this](std::string_view field, const std::string& text) {
    return std::string(field) + " like " + statements_.Quoted(text + "%");
  };
  std::string condition = equals("Codigo", yarns_["Codigo"].AsText()) + " and " + equals("Cor", yarns_["Cor"].AsText());
  if (!filter.warehouse.empty()) condition += " and " + equals("Deposito", filter.warehouse);
  if (!filter.lot.empty()) condition += " and " + begins("Lote", filter.lot);
  if (!filter.place.empty()) condition += " and " + begins("Local", filter.place);
  lots_.SetFilter(condition);
  lots_.SetFiltered(true);
}

}  // namespace orders
