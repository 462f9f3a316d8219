#include "writeoff/defect_store.h"

namespace writeoff {
namespace {

constexpr int kEntryWidth = 10;

}  // namespace

DefectStore::DefectStore(host::Host& host) : funcoes_(host.GetFuncoes()), database_(host.GetTabela().IBDatabase()) {}

// "FROM" and the conditions that name the scope's rows.
std::string DefectStore::Rows(const DefectScope& scope) const {
  std::string rows = "FROM " + funcoes_.DBLocal("DEF_MOV", true) + " WHERE NUMERO = " + funcoes_.Aspas(scope.order) +
                     " AND ARTIGO = " + funcoes_.Aspas(scope.fabric) + " AND TIPO = " + funcoes_.Aspas(scope.kind);
  if (scope.kind == kDefectOfLot) {
    rows += " AND LOTE = " + funcoes_.Aspas(scope.lot) + " AND COR = " + funcoes_.Aspas(scope.colour);
  }
  return rows;
}

std::unique_ptr<host::TTIQuery> DefectStore::Load(const DefectScope& scope) {
  auto query = database_.NewQuery();
  query->SQL.Add("SELECT *");
  query->SQL.Add(Rows(scope));
  query->SQL.Add("ORDER BY DT_LAN, MOV");
  query->Open();
  return query;
}

std::string DefectStore::Version(host::TTIQuery& rows) {
  std::string version;
  for (; !rows.Eof(); rows.Next()) version += rows.FieldByName("MOV").AsText() + ";";
  rows.First();
  return version;
}

bool DefectStore::HasRoll(const DefectScope& scope, int roll) {
  const auto query = database_.NewQuery();
  query->SQL.Add("SELECT ORDEM FROM " + funcoes_.DBLocal("TECELB", true));
  query->SQL.Add("WHERE NUMERO = " + funcoes_.Aspas(scope.order) + " AND ORDEM = " + std::to_string(roll) +
                 " AND CODIGO = " + funcoes_.Aspas(scope.fabric));
  query->Open();
  return !query->IsEmpty();
}

void DefectStore::Save(const DefectScope& scope, const std::vector<Defect>& defects) {
  const auto remove = database_.NewQuery();
  remove->SQL.Add("DELETE " + Rows(scope));
  remove->ExecSQL();
  for (const Defect& defect : defects) {
    if (defect.quantity > 0) Insert(scope, defect);
  }
  // Not left to the action's end: by then the screen would have taken its rows for stored.
  database_.MakeDurable();
}

void DefectStore::Insert(const DefectScope& scope, const Defect& defect) {
  const auto quoted = [this](std::string_view text) { return funcoes_.Aspas(text); };
  const std::string date = defect.date.IsZero() ? "NULL" : quoted(defect.date.ToSql());
  const std::string entry = funcoes_.Proximo("DEF_MOV", "LANCAMENTO", kEntryWidth, true);
  const auto query = database_.NewQuery();
  query->SQL.Add("INSERT INTO " + funcoes_.DBLocal("DEF_MOV", true) +
                 " (CODIGO, ARTIGO, QUANT, NUMERO, REVISOR, DT_LAN, QUALIDADE, TIPO, TURNO, ROLO, LOTE, COR, "
                 "LANCAMENTO)");
  query->SQL.Add("VALUES (" + quoted(defect.code) + ", " + quoted(scope.fabric) + ", " +
                 funcoes_.PermanecePonto(defect.quantity) + ", " + quoted(scope.order) + ", " +
                 quoted(defect.employee) + ", " + date + ", " + quoted(defect.quality) + ", " + quoted(scope.kind) +
                 ", " + quoted(defect.shift) + ", " + std::to_string(defect.roll) + ", " + quoted(scope.lot) + ", " +
                 quoted(scope.colour) + ", " + quoted(entry) + ")");
  query->ExecSQL();
}

}  // namespace writeoff
