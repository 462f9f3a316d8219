#include "app/registers/usage.h"

#include "app/tables/descriptions.h"

namespace app::registers {
namespace {

constexpr std::string_view kStock = "MAT_ITEN";
constexpr std::string_view kStockHolds = "(QTDE <> 0 OR QTDE_R <> 0)";

struct DocumentColumn {
  std::string_view table;
  std::string_view column;
  std::string_view target;
};

// The documents that are never imported, in the order in which a person would want to hear of them.
constexpr DocumentColumn kDocuments[] = {
    {"TECEL_ITEN", "CODIGO", "MATERIAL"},  {"TECEL_ITEN", "COR", "CADCOR"},
    {"TECEL", "MALHARIA", "ENTIDADE"},     {"TECEL", "MAQUINA", "MAQUINA"},
    {"TECEL", "FLUXO", "FLUXOTIN"},        {"TECEL", "PERIODO", "TABPRZ"},
    {"TECEL", "DEPOSITO", "DEPOSITO"},     {"MAT_RESERVA", "CODIGO", "MATERIAL"},
    {"MAT_RESERVA", "COR", "CADCOR"},      {"MAT_RESERVA", "DEPOSITO", "DEPOSITO"},
    {"TECELB", "CODIGO", "MATERIAL"},      {"TECELB", "COR", "CADCOR"},
    {"TECELB", "DEPOSITO", "DEPOSITO"},    {"TECELB", "MAQUINA", "MAQUINA"},
    {"TECELB", "FUNCIONARIO", "PESSOAL"},  {"TECELB", "TURNO", "TURNO"},
    {"BAIXA_FIO", "CODIGO", "MATERIAL"},   {"BAIXA_FIO", "MATERIAL", "MATERIAL"},
    {"BAIXA_FIO", "COR", "CADCOR"},        {"BAIXA_FIO", "DEPOSITO", "DEPOSITO"},
    {"DEF_MOV", "CODIGO", "DEFEITO"},      {"DEF_MOV", "ARTIGO", "MATERIAL"},
    {"DEF_MOV", "COR", "CADCOR"},          {"DEF_MOV", "REVISOR", "PESSOAL"},
    {"DEF_MOV", "QUALIDADE", "TABQUL"},    {"DEF_MOV", "TURNO", "TURNO"},
    {"PROG_OF", "MAQUINA", "MAQUINA"},     {"MAT_MOV", "CODIGO", "MATERIAL"},
    {"MAT_MOV", "COR", "CADCOR"},          {"MAT_MOV", "DEPOSITO", "DEPOSITO"},
    {"MAT_MOV", "CLIENTE", "ENTIDADE"},    {"MAT_MOV", "MAQUINA", "MAQUINA"},
    {"MAT_MOV", "FUNCIONARIO", "PESSOAL"},
};

// A column of its own stands before the table's general words.
constexpr Place kPlaces[] = {
    {"TECEL", "", "na ordem de tecelagem", "NUMERO"},
    {"TECEL_ITEN", "", "na ordem de tecelagem", "NUMERO"},
    {"MAT_RESERVA", "", "na reserva de fios da ordem de tecelagem", "NUMERO"},
    {"TECELB", "", "numa peça da ordem de tecelagem", "NUMERO"},
    {"BAIXA_FIO", "", "na baixa de fios da ordem de tecelagem", "NUMERO"},
    {"DEF_MOV", "", "nos defeitos da ordem de tecelagem", "NUMERO"},
    {"PROG_OF", "", "na programação da ordem", "NUM_DOC"},
    {"MAT_MOV", "CODIGO", "na movimentação do depósito", "DEPOSITO"},
    {"MAT_MOV", "", "na movimentação do material", "CODIGO"},
    {"MAT_ITEN", "CODIGO", "no estoque do depósito", "DEPOSITO"},
    {"MAT_ITEN", "", "no estoque do material", "CODIGO"},
    {"MAT_LOTE", "", "no lote", "LOTE"},
    {"COMP_MATERIAL", "", "na composição da malha", "MATERIAL"},
    {"RAPORT", "", "no raporte da malha", "MATERIAL"},
    {"CADRAPORT", "", "no raporte do fio", "CODIGO"},
    {"CADCORTI", "CODCLI", "na tabela de preços do material", "CODIGO"},
    {"CADCORTI", "", "na tabela de preços de", "CODCLI"},
    {"NOTA_ENTRA", "", "na nota de entrada", "NOTAFISCAL"},
    {"NF_ENTRA_ITEN", "", "na nota de entrada", "NUMERO"},
    {"PEDIDO", "", "no pedido", "NUMERO"},
    {"CO_ITEN", "", "no pedido de compra", "NUMERO"},
    {"CADMATTI", "CODIGO", "no beneficiamento para", "CODIGO2"},
    {"CADMATTI", "", "no beneficiamento da malha", "CODIGO"},
    {"NOTA_FCI", "", "na ficha de conteúdo de importação de", "NRANO_MES"},
    {"TINTUR_ITEN", "", "no romaneio de tingimento", "NUMERO"},
    {"FACCAO4", "", "no serviço da ordem", "OP"},
    {"MATERIAL", "", "no material", "CODIGO"},
    {"DEPOSITO", "", "no depósito", "CODIGO"},
    {"PESSOAL", "", "no cadastro da pessoa", "CODIGO"},
};

/// A stock row of the record itself: empty, it says no more than that there may be stock one day.
bool IsStockKey(const tables::Reference& reference) {
  return reference.table == kStock && reference.columns.front() != "QUALIDADE";
}

bool IsDetailOf(std::string_view table, std::string_view owner) {
  const tables::RegisterDescription* description = tables::FindRegister(owner);
  return description != nullptr && description->detail && description->detail->table == table;
}

}  // namespace

std::vector<tables::Reference> ReferencesTo(std::string_view table) {
  std::vector<tables::Reference> found;
  const tables::RegisterDescription* description = tables::FindRegister(table);
  for (const DocumentColumn& column : kDocuments) {
    if (column.target == table) found.push_back({column.table, {column.column}, table, {description->Key()}, ""});
  }
  for (const tables::Reference& reference : tables::References()) {
    const bool single = reference.columns.size() == 1;
    if (single && reference.target == table && !IsDetailOf(reference.table, table)) found.push_back(reference);
  }
  return found;
}

const Place* PlaceOf(const tables::Reference& reference) {
  for (const Place& place : kPlaces) {
    const bool fits = place.column.empty() || place.column == reference.columns.front();
    if (place.table == reference.table && fits) return &place;
  }
  return nullptr;
}

std::optional<std::string> WhereUsed(firebird::Database& database, std::string_view table, std::string_view key) {
  for (const tables::Reference& reference : ReferencesTo(table)) {
    if (tables::IsExempt(reference, key)) continue;
    const Place* place = PlaceOf(reference);
    if (place == nullptr) continue;
    std::string sql = "SELECT FIRST 1 " + std::string(place->example) + " FROM {" + std::string(reference.table) +
                      "} WHERE " + std::string(reference.columns.front()) + " = ?";
    if (IsStockKey(reference)) sql += " AND " + std::string(kStockHolds);
    const auto row = database.Query(sql, {key});
    if (row->IsEmpty()) continue;
    const std::string example = row->FieldByName(place->example).AsText();
    return std::string(place->words) + (example.empty() ? "" : " " + example);
  }
  return std::nullopt;
}

void DeleteEmptyStock(firebird::Database& database, std::string_view table, std::string_view key) {
  for (const tables::Reference& reference : ReferencesTo(table)) {
    if (!IsStockKey(reference)) continue;
    database.Execute("DELETE FROM {" + std::string(kStock) + "} WHERE " + std::string(reference.columns.front()) +
                         " = ? AND NOT " + std::string(kStockHolds),
                     {key});
  }
}

}  // namespace app::registers
