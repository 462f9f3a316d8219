#include "app/admin/periods_screen.h"

#include <algorithm>

#include "host/errors.h"
#include "host/text.h"

namespace app::admin {
namespace {

constexpr const char* kLogSubject = "PERIODOS CONTABEIS";
constexpr std::size_t kAreaWidth = 2;

// The area of stock, which the write-off of rolls asks for.
constexpr const char* kUsualArea = "IV";

std::string Flag(bool on) { return on ? "S" : "N"; }

std::string Span(const PeriodRecord& period) {
  return period.area + " " + period.from.ToDisplay() + " a " + period.to.ToDisplay();
}

std::string State(const PeriodRecord& period) { return Span(period) + (period.reconciled ? ", conciliado" : ""); }

// The log knows a period by its first day.
std::string LogKey(const PeriodRecord& period) { return period.area + " " + period.from.ToDisplay(); }

std::optional<PeriodRecord> FirstPeriod(const host::TTIQuery& rows) {
  if (rows.IsEmpty()) return std::nullopt;
  return PeriodRecord{rows.FieldByName("AREA").AsText(), rows.FieldByName("DT_INICIO").AsDate(),
                      rows.FieldByName("DT_FIM").AsDate(), rows.FieldByName("CONCILIADO").AsText() == "S"};
}

std::optional<PeriodRecord> ReadPeriod(firebird::Database& database, std::string_view area, host::Date from) {
  constexpr std::string_view sql = R"(SELECT AREA, DT_INICIO, DT_FIM, CONCILIADO FROM TEC_PERIODO
WHERE AREA = ? AND DT_INICIO = ?)";
  return FirstPeriod(*database.Query(sql, {area, from}));
}

}  // namespace

TfmPeriodos::TfmPeriodos(Application& application)
    : ListScreen(application, "TfmPeriodos", "fmPeriodos", "Períodos contábeis"),
      EdtArea(*this, "EdtArea", "Área", host::EditKind::kText, kAreaWidth),
      EdtDe(*this, "EdtDe", "De", host::EditKind::kDate),
      EdtAte(*this, "EdtAte", "Até", host::EditKind::kDate),
      ChkConciliado(*this, "ChkConciliado", "Conciliado"),
      LblAviso(*this, "LblAviso"),
      TbPeriodos(*this, "TbPeriodos"),
      GrdPeriodos(*this, "GrdPeriodos", TbPeriodos,
                  {{.field = "AREA", .caption = "Área", .width = 6},
                   {.field = "DT_INICIO", .caption = "De", .width = 12},
                   {.field = "DT_FIM", .caption = "Até", .width = 12},
                   {.field = "CONCILIADO", .caption = "Conciliado", .width = 11, .check_box = true}}),
      BtnIncluir(*this, "BtnIncluir", "&Incluir"),
      BtnGravar(*this, "BtnGravar", "&Gravar"),
      BtnExcluir(*this, "BtnExcluir", "E&xcluir"),
      BtnCancelar(*this, "BtnCancelar", "&Cancelar"),
      BtnFechar(*this, "BtnFechar", "&Fechar") {
  for (host::Edit* edit : {&EdtArea, &EdtDe, &EdtAte}) edit->OnChange = [this] { Changed(); };
  ChkConciliado.OnClick = [this] { Changed(); };
  GrdPeriodos.SetReadOnly(true);
  Wire({TbPeriodos, GrdPeriodos, LblAviso, BtnIncluir, BtnGravar, BtnExcluir, BtnCancelar, BtnFechar});
}

// --- showing --------------------------------------------------------------------------------------------------------

std::unique_ptr<host::TTIQuery> TfmPeriodos::ReadList() {
  return Db().Query("SELECT AREA, DT_INICIO, DT_FIM, CONCILIADO FROM TEC_PERIODO ORDER BY AREA, DT_INICIO DESC", {});
}

bool TfmPeriodos::LocateRecord() { return TbPeriodos.Locate("AREA;DT_INICIO", {Typed().area, EdtDe.GetDate()}); }

bool TfmPeriodos::ShowRecord() {
  const auto period = ReadPeriod(Db(), TbPeriodos["AREA"].AsText(), TbPeriodos["DT_INICIO"].AsDate());
  if (!period) return false;
  loaded_ = period;
  ShowPeriod(*period);
  return true;
}

// Periods follow each other: the next one begins where the newest of the area ends.
void TfmPeriodos::ShowNew() {
  PeriodRecord next;
  next.area = TbPeriodos.IsEmpty() ? kUsualArea : TbPeriodos["AREA"].AsText();
  const auto rows = Db().Query("SELECT MAX(DT_FIM) AS DT_FIM FROM TEC_PERIODO WHERE AREA = ?", {next.area});
  if (!rows->FieldByName("DT_FIM").IsNull()) next.from = rows->FieldByName("DT_FIM").AsDate().AddDays(1);
  loaded_.reset();
  ShowPeriod(next);
  EdtArea.SetFocus();
}

void TfmPeriodos::ShowPeriod(const PeriodRecord& period) {
  EdtArea.SetText(period.area);
  EdtDe.SetDate(period.from);
  EdtAte.SetDate(period.to);
  ChkConciliado.SetChecked(period.reconciled);
}

std::string TfmPeriodos::TheRecord() const { return "o período " + Span(*loaded_); }

// --- storing --------------------------------------------------------------------------------------------------------

PeriodRecord TfmPeriodos::Typed() const {
  return {host::UpperAscii(host::Trim(EdtArea.Text())), EdtDe.GetDate(), EdtAte.GetDate(), ChkConciliado.Checked()};
}

void TfmPeriodos::CheckInputs(const PeriodRecord& period) {
  if (period.area.empty()) Refuse("Informe a área.", EdtArea);
  if (period.from.IsZero()) Refuse("Informe o primeiro dia.", EdtDe);
  if (period.to.IsZero()) Refuse("Informe o último dia.", EdtAte);
  if (period.to < period.from) Refuse("O último dia vem antes do primeiro.", EdtAte);
}

void TfmPeriodos::CheckStillThere() const {
  if (ReadPeriod(Db(), loaded_->area, loaded_->from) == loaded_) return;
  throw host::InputError(ChangedElsewhere(Services(), "O período " + Span(*loaded_), kLogSubject, LogKey(*loaded_)));
}

void TfmPeriodos::CheckOverlap(const PeriodRecord& period) const {
  constexpr std::string_view sql = R"(SELECT AREA, DT_INICIO, DT_FIM, CONCILIADO FROM TEC_PERIODO
WHERE AREA = ? AND DT_INICIO <= ? AND DT_FIM >= ? AND (AREA <> ? OR DT_INICIO <> ?)
ORDER BY DT_INICIO)";
  // A new period has no row of its own to leave out.
  const std::string own_area = loaded_ ? loaded_->area : "";
  const host::Date own_from = loaded_ ? loaded_->from : host::Date();
  const auto other = FirstPeriod(*Db().Query(sql, {period.area, period.to, period.from, own_area, own_from}));
  if (other) throw host::InputError("O período coincide em parte com " + Span(*other) + ".");
}

void TfmPeriodos::Save() {
  const PeriodRecord period = Typed();
  CheckInputs(period);
  TakeTurn(Db(), "TEC_PERIODO");
  if (loaded_) CheckStillThere();
  CheckOverlap(period);
  Store(period);
  Db().MakeDurable();
  loaded_ = period;
}

void TfmPeriodos::Store(const PeriodRecord& period) {
  if (!loaded_) {
    Db().Execute("INSERT INTO TEC_PERIODO (AREA, DT_INICIO, DT_FIM, CONCILIADO) VALUES (?, ?, ?, ?)",
                 {period.area, period.from, period.to, Flag(period.reconciled)});
    Services().GeraLog(kLogSubject, State(period), host::LogOperation::kInclusion, LogKey(period), nullptr);
    return;
  }
  constexpr std::string_view sql = R"(UPDATE TEC_PERIODO SET AREA = ?, DT_INICIO = ?, DT_FIM = ?, CONCILIADO = ?
WHERE AREA = ? AND DT_INICIO = ?)";
  Db().Execute(sql, {period.area, period.from, period.to, Flag(period.reconciled), loaded_->area, loaded_->from});
  Services().GeraLog(kLogSubject, State(*loaded_) + " -> " + State(period), host::LogOperation::kAlteration,
                     LogKey(period), nullptr);
}

void TfmPeriodos::Delete() {
  TakeTurn(Db(), "TEC_PERIODO");
  CheckStillThere();
  Db().Execute("DELETE FROM TEC_PERIODO WHERE AREA = ? AND DT_INICIO = ?", {loaded_->area, loaded_->from});
  Services().GeraLog(kLogSubject, State(*loaded_), host::LogOperation::kDeletion, LogKey(*loaded_), nullptr);
  Db().MakeDurable();
}

}  // namespace app::admin
