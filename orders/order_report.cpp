#include "orders/order_report.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "weaving/expected_rolls.h"

namespace orders {
namespace {

constexpr std::int64_t kLastRoll = 9999;

// The engine takes 1,500 values in one list.
constexpr std::size_t kValuesPerList = 1000;

// As on a roll label: at least three digits.
std::string RollNumber(std::int64_t number) {
  const std::string digits = std::to_string(number);
  return std::string(digits.size() < 3 ? 3 - digits.size() : 0, '0') + digits;
}

}  // namespace

OrderReport::OrderReport(host::Host& host) : statements_(host) {}

// A composition has one row per yarn; what it says of the fabric stands in each of them. LFA and feeders differ from
// yarn to yarn, and the outer DISTINCT makes one row of those again.
std::unique_ptr<host::TTIQuery> OrderReport::Order(std::string_view number) const {
  return statements_.Open(R"(
SELECT DISTINCT CLIENTE.NOME, TECEL_ITEN.CODIGO, MATERIAL.DESCRICAO, MATERIAL.PESO AS PESO_UNI,
MATERIAL.UNIDADE, TECEL_ITEN.PEDIDO, TECEL_ITEN.QTDE, TECEL_ITEN.QTDE_B, 
COMP.LARGURA, COMP.GRAMATURA, COMP.KG_ROLO, 
(SELECT MAX(FLUXOTIN.DESCRICAO) FROM {FLUXOTIN} FLUXOTIN
WHERE TECEL.FLUXO = FLUXOTIN.CODIGO) AS DESC_FLUXO, 
TECEL_ITEN.COR, CADCOR.DESCRICAO AS DESCCOR, MAQUINA.DESCRICAO AS DESCMAQ, TECEL_ITEN.CUSTO, 
MATERIAL.DESCRICAO2,  
TECEL.NUMERO, TECEL.MALHARIA, TECEL.PERIODO, CAST(TECEL.OBSERVACAO AS VARCHAR(4000)) AS OBSERVACAO, 
TECEL.DT_INICIO, TECEL.FICHA, 
TECEL.MAQUINA, TECEL.FLUXO, TECEL.RPM, TECEL.TPONTO, TECEL.SITUACAO, TECEL.DEPOSITO, 
DEPOSITO.DESCRICAO AS DESC_DEP_ENT, 
MATERIAL.LINHA, TABLIN.DESCRICAO AS DESC_LINHA, COMP.ALIMENTADORES, COMP.DESPERDICIO, COMP.DIAMETRO, 
COMP.FINURA, 
(SELECT MAX(CTI.OBS) AS OBS FROM {CADCORTI} CTI
 WHERE CTI.CODCLI = TECEL.MALHARIA
 AND CTI.CODIGO = TECEL_ITEN.CODIGO
 AND CTI.COR = TECEL_ITEN.COR) AS OBS_CUSTO_MALHA, TECEL_ITEN.CICLOS, COMP.RPM AS RPM_MAT, 
TECEL_ITEN.OBS AS OBS_ITEM
FROM {TECEL} TECEL
LEFT JOIN {TECEL_ITEN} TECEL_ITEN ON (TECEL.NUMERO = TECEL_ITEN.NUMERO)
LEFT JOIN {MATERIAL} MATERIAL ON (TECEL_ITEN.CODIGO = MATERIAL.CODIGO)
LEFT JOIN {ENTIDADE} CLIENTE ON (TECEL.MALHARIA = CLIENTE.CODCLI)
LEFT JOIN {MAQUINA} MAQUINA ON (TECEL.MAQUINA = MAQUINA.MAQUINA)
LEFT JOIN {DEPOSITO} DEPOSITO ON (TECEL.DEPOSITO = DEPOSITO.CODIGO)
LEFT JOIN {CADCOR} CADCOR ON (TECEL_ITEN.COR = CADCOR.COR)
LEFT JOIN {TABLIN} TABLIN ON (MATERIAL.LINHA = TABLIN.CODIGO)
LEFT JOIN (SELECT DISTINCT COMP_MATERIAL.MATERIAL, COMP_MATERIAL.COR, COMP_MATERIAL.LFA,
COMP_MATERIAL.LARGURA, COMP_MATERIAL.GRAMATURA, COMP_MATERIAL.KG_ROLO, COMP_MATERIAL.ROCA,
COMP_MATERIAL.ALIMENTADORES, COMP_MATERIAL.DESPERDICIO, COMP_MATERIAL.RPM, COMP_MATERIAL.DIAMETRO,
COMP_MATERIAL.FINURA
FROM {COMP_MATERIAL} COMP_MATERIAL
) AS COMP ON (COMP.MATERIAL = TECEL_ITEN.CODIGO AND COMP.COR = TECEL_ITEN.COR)
WHERE TECEL.NUMERO = :number)",
                          {{"number", number}});
}

std::vector<PrintedItem> OrderReport::Items(const host::Dataset& order) {
  std::vector<PrintedItem> items;
  std::set<std::pair<std::string, std::string>> seen;
  for (host::DatasetCursor row(order); !row.Eof(); row.Next()) {
    if (row.FieldByName("CODIGO").IsNull()) continue;  // an order without items
    PrintedItem item{.order = row.FieldByName("NUMERO").AsText(),
                     .code = row.FieldByName("CODIGO").AsText(),
                     .colour = row.FieldByName("COR").AsText(),
                     .unit = row.FieldByName("UNIDADE").AsText(),
                     .quantity = row.FieldByName("QTDE").AsFloat(),
                     .weight = row.FieldByName("PESO_UNI").AsFloat(),
                     .per_roll = row.FieldByName("KG_ROLO").AsFloat()};
    if (seen.emplace(item.code, item.colour).second) items.push_back(std::move(item));
  }
  return items;
}

std::unique_ptr<host::TTIQuery> OrderReport::StitchPatterns(const std::vector<PrintedItem>& items) const {
  if (items.empty()) return nullptr;
  std::set<std::string> fabrics;
  std::set<std::string> colours;
  for (const PrintedItem& item : items) {
    fabrics.insert(item.code);
    colours.insert(item.colour);
  }
  return statements_.Open(R"(
SELECT RAPORT.MATERIAL, RAPORT.COR, RAPORT.ORDEM, RAPORT.CODIGO, MATERIAL.DESCRICAO, 
RAPORT.COR_I, CADCOR.DESCRICAO AS DESC_COR, RAPORT.MILIMETROS, CADRAPORT.ALIMENTADORES, RAPORT.OBSERVACAO 
FROM {RAPORT} RAPORT
LEFT JOIN {MATERIAL} MATERIAL ON (RAPORT.CODIGO = MATERIAL.CODIGO)
LEFT JOIN {CADCOR} CADCOR ON (RAPORT.COR_I = CADCOR.COR)
LEFT JOIN {CADRAPORT} CADRAPORT ON (CADRAPORT.CODIGO = RAPORT.CODIGO AND CADRAPORT.MILIMETROS = RAPORT.MILIMETROS)
WHERE :fabrics
AND :colours
ORDER BY RAPORT.MATERIAL, RAPORT.COR, RAPORT.ORDEM ASC)",
                          {{"fabrics", OneOf("RAPORT.MATERIAL", fabrics)}, {"colours", OneOf("RAPORT.COR", colours)}});
}

weaving::Sql OrderReport::OneOf(const char* column, const std::set<std::string>& values) const {
  std::string sql;
  std::size_t at = 0;
  for (const std::string& value : values) {
    const bool starts = at++ % kValuesPerList == 0;
    if (starts) sql += (sql.empty() ? "" : ") OR ") + std::string(column) + " IN (";
    sql += (starts ? "" : ",") + statements_.Quoted(value);
  }
  sql += ")";
  return weaving::Sql(values.size() > kValuesPerList ? "(" + sql + ")" : sql);
}

void OrderReport::ListRolls(const std::vector<PrintedItem>& items, host::Dataset& rolls) {
  rolls.Empty();
  std::int64_t number = 0;
  for (const PrintedItem& item : items) {
    const double room = static_cast<double>(kLastRoll - number);
    const double listed = std::min(weaving::ExpectedRolls(item.quantity, item.per_roll), room);
    for (auto left = static_cast<std::int64_t>(listed); left > 0; --left) {
      rolls.Append();
      rolls["Numero"].Set(item.order);
      rolls["NR"].Set(RollNumber(++number));
      rolls["Codigo"].Set(item.code);
      rolls["Cor"].Set(item.colour);
      rolls.Post();
    }
  }
}

}  // namespace orders
