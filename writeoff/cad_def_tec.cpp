// The defects register: its components, the rows that are loaded and typed, what is stored of them.
#include "writeoff/cad_def_tec.h"

#include <utility>

#include "host/errors.h"
#include "host/kit/columns.h"
#include "host/kit/described_code.h"
#include "host/restored.h"
#include "host/text.h"
#include "weaving/hold.h"
#include "weaving/stock_lot.h"
#include "writeoff/employee.h"

namespace writeoff {
namespace {

using host::EditKind;
using host::FieldDef;
using host::FieldType;
using host::GridColumn;

// No roll weighs or measures more; a number this long is a slip of the hand.
constexpr double kMostQuantity = 99999.999;
constexpr std::string_view kNoRoll = "Nenhuma peça escolhida. Os defeitos são registrados pela baixa da ordem.";

std::vector<FieldDef> DefectFields() {
  return {{"Defeito", FieldType::kText, 6},
          {"Desc_Def", FieldType::kText, 50, {}, "Descrição"},
          {"Peso", FieldType::kFloat, 0, "0.000", "Quantidade"},
          {"Funcionario", FieldType::kText, 5, {}, "Funcionário"},
          {"Desc_Func", FieldType::kText, 50, {}, "Nome"},
          {"Turno", FieldType::kText, 2},
          {"Qualidade", FieldType::kText, 2},
          {"Rolo", FieldType::kInteger, 0, "0", "Peça"},
          {"Data", FieldType::kDate}};
}

std::vector<GridColumn> DefectColumns() {
  return {host::WithLookup(host::TypedColumn("Defeito", "Defeito", 8)),
          host::ShownColumn("Desc_Def", "Descrição", 28),
          host::WithTotal(host::TypedNumberColumn("Peso", "Quantidade", 11)),
          host::WithLookup(host::TypedColumn("Funcionario", "Funcionário", 11)),
          host::ShownColumn("Desc_Func", "Nome", 22),
          host::WithLookup(host::TypedColumn("Turno", "Turno", 6)),
          host::WithLookup(host::TypedColumn("Qualidade", "Qualidade", 9)),
          host::TypedNumberColumn("Rolo", "Peça", 6),
          host::TypedColumn("Data", "Data", 11)};
}

}  // namespace

TfmCadDefTec::TfmCadDefTec(host::Host& host)
    : Screen(host, "TfmCadDefTec", "fmCadDefTec", "Cadastro de Defeitos"),
      TbDef(*this, "TbDef", DefectFields()),
      EdtOF(*this, "EdtOF", "Ordem", EditKind::kText, 6),
      EdtOrdem(*this, "EdtOrdem", "Peça", EditKind::kInteger, 6),
      EdtTipo(*this, "EdtTipo", "Tipo", EditKind::kText, 1),
      EdtArtigo(*this, "EdtArtigo", "Artigo", EditKind::kText, 15),
      LblArtigo(*this, "LblArtigo"),
      EdtCor(*this, "EdtCor", "Cor", EditKind::kText, 6),
      EdtLote(*this, "EdtLote", "Lote", EditKind::kText, weaving::kLotWidth),
      EdtFunc(*this, "EdtFunc", "Funcionário", EditKind::kText, 5),
      LblFunc(*this, "LblFunc"),
      LblTurno(*this, "LblTurno"),
      LblAviso(*this, "LblAviso", std::string(kNoRoll)),
      DBGrid1(*this, "DBGrid1", TbDef, DefectColumns()),
      BitBtn1(*this, "BitBtn1", "&Gravar", [this] { BitBtn1Click(); }),
      BitBtn2(*this, "BitBtn2", "&Fechar", [this] { Close(); }),
      PqDefeito(*this, "PqDefeito", "DEFEITO", "CODIGO"),
      PqFunc(*this, "PqFunc", "PESSOAL", "CODIGO"),
      PqTurno(*this, "PqTurno", "TURNO", "TURNO"),
      PqQualidade(*this, "PqQualidade", "TABQUL", "CODIGO"),
      store_(host) {
  for (host::Edit* shown : {&EdtOF, &EdtOrdem, &EdtTipo, &EdtArtigo, &EdtCor, &EdtLote, &EdtFunc}) {
    shown->SetReadOnly(true);
  }
  DBGrid1.SetCaption("Defeitos");
  // As "Confirmar" and "Baixar" on the screens that whoever stands at the scale comes from.
  BitBtn1.Shortcut = host::Key::kF8;
  WireGrid();
}

void TfmCadDefTec::WireGrid() {
  DBGrid1.OnKeyDown = [this](host::Key key) { DBGrid1KeyDown(key); };
  PqDefeito.OnFechaPesquisa = [this] { PqDefeitoFechaPesquisa(); };
  PqFunc.OnFechaPesquisa = [this] { PqFuncFechaPesquisa(); };
  PqTurno.OnFechaPesquisa = [this] { PqTurnoFechaPesquisa(); };
  PqQualidade.OnFechaPesquisa = [this] { PqQualidadeFechaPesquisa(); };

  const auto unless_loading = [this](auto rule) {
    return [this, rule](host::Field& field) {
      if (!loading_) rule(field);
    };
  };
  TbDef["Defeito"].OnValidate = unless_loading(
      [this](const host::Field& field) { CheckCode(field, "DEFEITO", "CODIGO", "Defeito não cadastrado."); });
  TbDef["Funcionario"].OnValidate = unless_loading(
      [this](const host::Field& field) { CheckCode(field, "PESSOAL", "CODIGO", "Funcionário não cadastrado."); });
  TbDef["Turno"].OnValidate =
      unless_loading([this](const host::Field& field) { CheckCode(field, "TURNO", "TURNO", "Turno não cadastrado."); });
  TbDef["Qualidade"].OnValidate = unless_loading(
      [this](const host::Field& field) { CheckCode(field, "TABQUL", "CODIGO", "Qualidade não cadastrada."); });
  TbDef["Peso"].OnValidate = unless_loading([this](const host::Field&) { CheckQuantity(); });
  TbDef["Rolo"].OnValidate = unless_loading([this](const host::Field&) { CheckRoll(); });
  TbDef["Defeito"].OnChange = unless_loading(
      [this](const host::Field& field) { ShowDescription(field.AsText(), "DEFEITO", "DESCRICAO", "Desc_Def"); });
  TbDef["Funcionario"].OnChange = unless_loading(
      [this](const host::Field& field) { ShowDescription(field.AsText(), "PESSOAL", "NOME", "Desc_Func"); });

  TbDef.AfterInsert = [this] { TbDefAfterInsert(); };
  TbDef.BeforePost = [this] { TbDefBeforePost(); };
  TbDef.AfterPost = [this] { changed_ = changed_ || !loading_; };
  TbDef.BeforeDelete = [this] { changed_ = true; };
}

void TfmCadDefTec::FormShow() {
  BuscaMovDefeitos();
  DBGrid1.SetFocus();
}

std::vector<host::KeyHint> TfmCadDefTec::KeyHints() const {
  if (Site() == nullptr || Site()->Focused() != &DBGrid1 || !HasRoll()) return {};
  return {{host::Key::kDelete, "Exclui o defeito"}};
}

bool TfmCadDefTec::HasUnsavedWork() const { return changed_ || (TbDef.InEdit() && !IsBlank()); }

bool TfmCadDefTec::HasRoll() const { return !EdtOF.Text().empty() && !EdtArtigo.Text().empty(); }

DefectScope TfmCadDefTec::Scope() const {
  return {EdtOF.Text(), EdtArtigo.Text(), EdtTipo.Text(), EdtLote.Text(), EdtCor.Text()};
}

// --- loading -----------------------------------------------------------------------------------------------------

void TfmCadDefTec::BuscaMovDefeitos() {
  ShowHeader();
  const host::Restored<bool> loading(loading_, true);
  TbDef.Empty();
  version_.clear();
  changed_ = false;
  if (!HasRoll()) return;
  // A save deletes the rows and inserts them anew: read just then, some would be missing.
  weaving::HoldOrder(Db(), EdtOF.Text());
  const auto rows = store_.Load(Scope());
  version_ = DefectStore::Version(*rows);
  for (; !rows->Eof(); rows->Next()) {
    TbDef.Append();
    TbDef["Defeito"].Set(rows->FieldByName("CODIGO"));
    TbDef["Peso"].Set(rows->FieldByName("QUANT"));
    TbDef["Funcionario"].Set(rows->FieldByName("REVISOR"));
    TbDef["Turno"].Set(rows->FieldByName("TURNO"));
    TbDef["Qualidade"].Set(rows->FieldByName("QUALIDADE"));
    TbDef["Rolo"].Set(rows->FieldByName("ROLO"));
    TbDef["Data"].Set(rows->FieldByName("DT_LAN"));
    ShowDescription(TbDef["Defeito"].AsText(), "DEFEITO", "DESCRICAO", "Desc_Def");
    ShowDescription(TbDef["Funcionario"].AsText(), "PESSOAL", "NOME", "Desc_Func");
    TbDef.Post();
  }
  TbDef.First();
}

void TfmCadDefTec::ShowHeader() {
  const bool can_register = HasRoll();
  const bool of_lot = EdtTipo.Text() == kDefectOfLot;
  EdtCor.SetVisible(of_lot);
  EdtLote.SetVisible(of_lot);
  DBGrid1.SetReadOnly(!can_register);
  BitBtn1.SetEnabled(can_register);
  LblAviso.SetVisible(!can_register);

  LblFunc.SetText("");
  LblTurno.SetText("");
  LblArtigo.SetText(host::DescriptionOf(Services(), {"MATERIAL", "CODIGO", "DESCRICAO"}, EdtArtigo.Text()));
  if (EdtFunc.Text().empty()) return;
  const auto person = EmployeeOf(GetHost(), EdtFunc.Text());
  if (!person) return;
  LblFunc.SetText(person->name);
  LblTurno.SetText(person->shift.empty() ? std::string() : "Turno " + person->shift);
}

void TfmCadDefTec::ShowDescription(std::string_view code, std::string_view table, std::string_view column,
                                   std::string_view shown_in) {
  const host::Value text = code.empty()
                               ? host::Value()
                               : Services().Busca_Valor(table, "CODIGO", column, Services().Aspas(code), true, true);
  TbDef[shown_in].Set(text);
}

// --- the grid ----------------------------------------------------------------------------------------------------

void TfmCadDefTec::TbDefAfterInsert() {
  if (loading_) return;
  if (TbDef["Data"].IsNull()) TbDef["Data"].Set(GetHost().GetClock().Today());
}

// A row that was reached by going down from the last one and never typed into is no defect.
bool TfmCadDefTec::IsBlank() const {
  for (const char* field : {"Defeito", "Funcionario", "Turno", "Qualidade"}) {
    if (!TbDef[field].AsText().empty()) return false;
  }
  return TbDef["Peso"].AsFloat() == 0 && TbDef["Rolo"].IsNull();
}

void TfmCadDefTec::TbDefBeforePost() {
  if (loading_) return;
  if (IsBlank()) {
    TbDef.Cancel();
    return;
  }
  if (TbDef["Peso"].AsFloat() > 0 && TbDef["Defeito"].AsText().empty()) Refuse("Informe o código do defeito.");
  if (TbDef["Data"].IsNull()) TbDef["Data"].Set(GetHost().GetClock().Today());
}

void TfmCadDefTec::CheckCode(const host::Field& field, std::string_view table, std::string_view key,
                             std::string_view what) const {
  const std::string code = field.AsText();
  if (code.empty() || Services().Existe(table, key, Services().Aspas(code), Db())) return;
  Refuse(what);
}

void TfmCadDefTec::CheckQuantity() const {
  const double quantity = TbDef["Peso"].AsFloat();
  if (quantity < 0) Refuse("A quantidade do defeito não pode ser negativa.");
  if (quantity > kMostQuantity) Refuse("A quantidade do defeito não pode passar de 99.999,999.");
}

void TfmCadDefTec::CheckRoll() {
  const host::Field& roll = TbDef["Rolo"];
  if (roll.IsNull() || EdtTipo.Text() != kDefectOfRoll) return;
  if (!store_.HasRoll(Scope(), static_cast<int>(roll.AsInteger()))) {
    Refuse("A ordem " + EdtOF.Text() + " não tem a peça " + roll.AsText() + " do artigo " + EdtArtigo.Text() + ".");
  }
}

void TfmCadDefTec::DBGrid1KeyDown(host::Key key) {
  if (key != host::Key::kF4 || DBGrid1.ReadOnly()) return;
  const std::string column = DBGrid1.SelectedField();
  if (host::SameName(column, "Defeito")) PqDefeito.Open();
  if (host::SameName(column, "Funcionario")) PqFunc.Open();
  if (host::SameName(column, "Turno")) PqTurno.Open();
  if (host::SameName(column, "Qualidade")) PqQualidade.Open();
}

void TfmCadDefTec::FillIn(std::string_view field, const host::Value& value) {
  TbDef.Edit();
  TbDef[field].Set(value);
}

void TfmCadDefTec::PqDefeitoFechaPesquisa() { FillIn("Defeito", PqDefeito.RetornoPesquisa("CODIGO")); }

void TfmCadDefTec::PqFuncFechaPesquisa() { FillIn("Funcionario", PqFunc.RetornoPesquisa("CODIGO")); }

void TfmCadDefTec::PqTurnoFechaPesquisa() { FillIn("Turno", PqTurno.RetornoPesquisa("TURNO")); }

void TfmCadDefTec::PqQualidadeFechaPesquisa() { FillIn("Qualidade", PqQualidade.RetornoPesquisa("CODIGO")); }

// --- storing -----------------------------------------------------------------------------------------------------

void TfmCadDefTec::BitBtn1Click() {
  if (!HasRoll()) Refuse(kNoRoll);
  TbDef.Post();
  // Stations take turns on an order, so that a roll taken back elsewhere gets no defects afterwards.
  weaving::HoldOrder(Db(), EdtOF.Text());
  CheckUnchanged();
  store_.Save(Scope(), TypedDefects());
  changed_ = false;
  Close();
}

// All rolls of the fabric are stored together: what somebody else registered meanwhile would be lost.
void TfmCadDefTec::CheckUnchanged() {
  const auto rows = store_.Load(Scope());
  if (DefectStore::Version(*rows) == version_) return;
  if (Confirm("Os defeitos deste artigo foram alterados por outro usuário. Deseja carregá-los novamente?")) {
    BuscaMovDefeitos();
  }
  throw host::Abort();
}

std::vector<Defect> TfmCadDefTec::TypedDefects() {
  const bool of_roll = EdtTipo.Text() == kDefectOfRoll;
  std::vector<Defect> defects;
  for (host::DatasetCursor at(TbDef); !at.Eof(); at.Next()) {
    const auto text = [&at](std::string_view field) { return at.FieldByName(field).AsText(); };
    if (!(at.FieldByName("Peso").AsFloat() > 0)) continue;
    const bool own_roll = !at.FieldByName("Rolo").IsNull();
    const int roll = own_roll ? static_cast<int>(at.FieldByName("Rolo").AsInteger()) : EdtOrdem.Integer();
    if (of_roll && !store_.HasRoll(Scope(), roll)) {
      Refuse("A peça " + std::to_string(roll) + " do artigo " + EdtArtigo.Text() + " não está mais na ordem " +
             EdtOF.Text() + "; nada foi gravado.");
    }
    defects.push_back({text("Defeito"), at.FieldByName("Peso").AsFloat(), text("Funcionario"),
                       at.FieldByName("Data").AsDate(), text("Qualidade"), text("Turno"), roll});
  }
  return defects;
}

}  // namespace writeoff
