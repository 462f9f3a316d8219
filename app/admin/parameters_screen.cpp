#include "app/admin/parameters_screen.h"

#include "app/admin/parameter_list.h"
#include "host/errors.h"
#include "host/restored.h"
#include "host/text.h"

namespace app::admin {
namespace {

constexpr const char* kLogSubject = "PARAMETROS";
constexpr std::size_t kValueWidth = 100;

// Of a row of the table or of the grid.
template <typename Rows>
std::pair<std::string, int> KeyOf(const Rows& rows) {
  return {rows.FieldByName("GRUPO").AsText(), static_cast<int>(rows.FieldByName("NUMERO").AsInteger())};
}

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace

TfmParametros::TfmParametros(Application& application)
    : AdminScreen(application, "TfmParametros", "fmParametros", "Parâmetros"),
      TbParametros(*this, "TbParametros",
                   {{.name = "GRUPO", .caption = "Grupo"},
                    {.name = "NUMERO", .type = host::FieldType::kInteger, .caption = "Número"},
                    {.name = "VALOR", .width = kValueWidth, .caption = "Valor"},
                    {.name = "SIGNIFICADO", .caption = "Significado"}}),
      GrdParametros(*this, "GrdParametros", TbParametros,
                    {{.field = "GRUPO", .width = 8, .read_only = true},
                     {.field = "NUMERO", .width = 9, .read_only = true, .align = host::Align::kRight},
                     {.field = "VALOR", .width = 12},
                     {.field = "SIGNIFICADO", .width = 50, .read_only = true}}),
      LblValores(*this, "LblValores"),
      TbValores(*this, "TbValores",
                {{.name = "VALOR", .caption = "Valor aceito"}, {.name = "SIGNIFICADO", .caption = "Significado"}}),
      GrdValores(*this, "GrdValores", TbValores,
                 {{.field = "VALOR", .width = 13}, {.field = "SIGNIFICADO", .width = 46}}),
      BtnGravar(*this, "BtnGravar", "&Gravar"),
      BtnCancelar(*this, "BtnCancelar", "&Cancelar"),
      BtnFechar(*this, "BtnFechar", "&Fechar") {
  TbParametros.AfterScroll = [this] {
    if (!filling_) ShowAllowed();
  };
  TbParametros.AfterInsert = [this] {
    if (!filling_) TbParametros.Cancel();
  };
  TbParametros.BeforeDelete = [] { throw host::Abort(); };
  TbParametros["VALOR"].OnValidate = [this](host::Field& value) { CheckValue(value); };
  GrdValores.SetReadOnly(true);
  GrdValores.OnDblClick = [this] { GrdValoresDblClick(); };
  BtnGravar.OnClick = [this] { BtnGravarClick(); };
  BtnCancelar.OnClick = [this] { BtnCancelarClick(); };
  BtnFechar.OnClick = [this] { Close(); };
}

// --- showing --------------------------------------------------------------------------------------------------------

std::map<TfmParametros::Key, std::string> TfmParametros::Stored() const {
  std::map<Key, std::string> values;
  const auto rows = Db().Query("SELECT GRUPO, NUMERO, VALOR FROM TEC_PARAMETRO", {});
  for (; !rows->Eof(); rows->Next()) {
    values[KeyOf(*rows)] = rows->FieldByName("VALOR").AsText();
  }
  for (const ParameterInfo& known : KnownParameters()) values.try_emplace({std::string(known.group), known.number});
  return values;
}

void TfmParametros::Load() {
  loaded_ = Stored();
  const std::size_t row = TbParametros.RecNo();
  {
    const host::Restored<bool> filling(filling_, true);
    TbParametros.Cancel();
    TbParametros.Empty();
    for (const auto& [key, value] : loaded_) AddRow(key, value);
    TbParametros.First();
    TbParametros.GoTo(row);
  }
  ShowAllowed();
}

void TfmParametros::AddRow(const Key& key, const std::string& value) {
  const ParameterInfo* known = FindParameter(key.first, key.second);
  TbParametros.Append();
  TbParametros["GRUPO"].Set(key.first);
  TbParametros["NUMERO"].Set(key.second);
  TbParametros["VALOR"].Set(value);
  TbParametros["SIGNIFICADO"].Set(known == nullptr ? "(de outro programa)" : known->meaning);
  TbParametros.Post();
}

void TfmParametros::ShowAllowed() {
  TbValores.Empty();
  LblValores.SetText("");
  if (TbParametros.IsEmpty()) return;
  const std::string group = TbParametros["GRUPO"].AsText();
  const int number = static_cast<int>(TbParametros["NUMERO"].AsInteger());
  LblValores.SetText("Valores aceitos em " + Quoted(group) + " " + std::to_string(number));
  const ParameterInfo* known = FindParameter(group, number);
  if (known == nullptr) return;
  if (known->allowed.empty()) LblValores.SetText(LblValores.Text() + ": qualquer texto");
  for (const AllowedValue& allowed : known->allowed) {
    TbValores.Append();
    TbValores["VALOR"].Set(allowed.value);
    TbValores["SIGNIFICADO"].Set(allowed.value.empty() ? "vazio: " + std::string(allowed.meaning)
                                                       : std::string(allowed.meaning));
    TbValores.Post();
  }
  TbValores.First();
}

bool TfmParametros::HasUnsavedWork() const {
  if (TbParametros.InEdit()) return true;
  for (host::DatasetCursor rows(TbParametros); !rows.Eof(); rows.Next()) {
    if (loaded_.at(KeyOf(rows)) != rows.FieldByName("VALOR").AsText()) return true;
  }
  return false;
}

// --- changing -------------------------------------------------------------------------------------------------------

// A value that was stored by other means is shown whatever it is; only what a person types must fit.
void TfmParametros::CheckValue(const host::Field& value) const {
  if (filling_) return;
  const ParameterInfo* known =
      FindParameter(TbParametros["GRUPO"].AsText(), static_cast<int>(TbParametros["NUMERO"].AsInteger()));
  if (known == nullptr) return;
  if (const auto objection = ParameterObjection(*known, value.AsText())) Refuse(*objection);
}

void TfmParametros::GrdValoresDblClick() {
  if (TbValores.IsEmpty()) return;
  TbParametros.Edit();
  TbParametros["VALOR"].Set(TbValores["VALOR"].Get());
  TbParametros.Post();
}

void TfmParametros::BtnGravarClick() {
  NeedAdministrator();
  TbParametros.Post();
  TakeTurn(Db(), "TEC_PARAMETRO");
  const std::map<Key, std::string> stored = Stored();
  for (host::DatasetCursor rows(TbParametros); !rows.Eof(); rows.Next()) {
    const Key key = KeyOf(rows);
    const std::string value = rows.FieldByName("VALOR").AsText();
    if (value == loaded_.at(key)) continue;
    const auto now = stored.find(key);
    if (now == stored.end() || now->second != loaded_.at(key)) {
      const std::string name = key.first + " " + std::to_string(key.second);
      throw host::InputError(ChangedElsewhere(Services(), "O parâmetro " + name, kLogSubject, name));
    }
    Store(key, value);
  }
  Db().MakeDurable();
  for (host::DatasetCursor rows(TbParametros); !rows.Eof(); rows.Next()) {
    loaded_[KeyOf(rows)] = rows.FieldByName("VALOR").AsText();
  }
  Load();
}

void TfmParametros::Store(const Key& key, const std::string& value) {
  const std::string name = key.first + " " + std::to_string(key.second);
  App().WriteParameter(key.first, key.second, value);
  Services().GeraLog(kLogSubject, name + ": " + Quoted(loaded_.at(key)) + " -> " + Quoted(value),
                     host::LogOperation::kAlteration, name, nullptr);
}

void TfmParametros::BtnCancelarClick() { Load(); }

}  // namespace app::admin
