#include "writeoff/defect_store.h"

namespace writeoff {
namespace {

constexpr int kEntryWidth = 10;

}  // namespace

DefectStore::DefectStore(host::Host& host) : host_(host), statements_(host) {}

// "FROM" and the conditions that name the scope's rows.
weaving::Sql DefectStore::RowsOf(const DefectScope& scope) const {
  weaving::Sql of_lot;
  if (scope.kind == kDefectOfLot) {
    of_lot = statements_.Write(" AND LOTE = :lot AND COR = :colour", {{"lot", scope.lot}, {"colour", scope.colour}});
  }
  return statements_.Write(
      "FROM {DEF_MOV} WHERE NUMERO = :order AND ARTIGO = :fabric AND TIPO = :kind:of_lot",
      {{"order", scope.order}, {"fabric", scope.fabric}, {"kind", scope.kind}, {"of_lot", of_lot}});
}

std::unique_ptr<host::TTIQuery> DefectStore::Load(const DefectScope& scope) {
  return statements_.Open(R"(
SELECT *
:rows
ORDER BY DT_LAN, MOV)",
                          {{"rows", RowsOf(scope)}});
}

std::string DefectStore::Version(host::TTIQuery& rows) {
  std::string version;
  for (; !rows.Eof(); rows.Next()) version += rows.FieldByName("MOV").AsText() + ";";
  rows.First();
  return version;
}

bool DefectStore::HasRoll(const DefectScope& scope, int roll) {
  return !statements_
              .Open(R"(
SELECT ORDEM FROM {TECELB}
WHERE NUMERO = :order AND ORDEM = :number AND CODIGO = :fabric)",
                    {{"order", scope.order}, {"number", roll}, {"fabric", scope.fabric}})
              ->IsEmpty();
}

void DefectStore::Save(const DefectScope& scope, const std::vector<Defect>& defects) {
  statements_.Execute("DELETE :rows", {{"rows", RowsOf(scope)}});
  for (const Defect& defect : defects) {
    if (defect.quantity > 0) statements_.Execute(Insertion(scope, defect));
  }
  // Not left to the action's end: by then the screen would have taken its rows for stored.
  host_.GetTabela().IBDatabase().MakeDurable();
}

weaving::Sql DefectStore::Insertion(const DefectScope& scope, const Defect& defect) const {
  const weaving::Sql date =
      defect.date.IsZero() ? weaving::Sql("NULL") : statements_.Write(":date", {{"date", defect.date}});
  const std::string entry = host_.GetFuncoes().Proximo("DEF_MOV", "LANCAMENTO", kEntryWidth, true);
  return statements_.Write(R"(
INSERT INTO {DEF_MOV} (CODIGO, ARTIGO, QUANT, NUMERO, REVISOR, DT_LAN, QUALIDADE, TIPO, TURNO, ROLO, LOTE, COR, LANCAMENTO)
VALUES (:code, :fabric, :quantity, :order, :employee, :date, :quality, :kind, :shift, :roll, :lot, :colour, :entry))",
                           {{"code", defect.code},
                            {"fabric", scope.fabric},
                            {"quantity", defect.quantity},
                            {"order", scope.order},
                            {"employee", defect.employee},
                            {"date", date},
                            {"quality", defect.quality},
                            {"kind", scope.kind},
                            {"shift", defect.shift},
                            {"roll", defect.roll},
                            {"lot", scope.lot},
                            {"colour", scope.colour},
                            {"entry", entry}});
}

}  // namespace writeoff
