#include "app/registers/register_screen.h"

#include <algorithm>
#include <utility>

#include "host/errors.h"
#include "host/restored.h"
#include "host/text.h"

namespace app::registers {
namespace {

host::FieldType TypeOf(tables::ColumnKind kind) {
  switch (kind) {
    case tables::ColumnKind::kInteger:
      return host::FieldType::kInteger;
    case tables::ColumnKind::kNumber:
      return host::FieldType::kFloat;
    case tables::ColumnKind::kDate:
      return host::FieldType::kDate;
    default:
      return host::FieldType::kText;
  }
}

std::vector<host::FieldDef> ListFields(const tables::RegisterDescription& description, const RegisterStore& store) {
  std::vector<host::FieldDef> fields;
  for (const tables::ColumnDescription& column : description.columns) {
    if (column.list_width == 0) continue;
    const tables::Column& stored = store.ColumnOf(column);
    const std::size_t width = stored.kind == tables::ColumnKind::kText ? static_cast<std::size_t>(stored.width) : 0;
    fields.push_back({std::string(column.name), TypeOf(stored.kind), width, std::string(column.format),
                      std::string(column.caption)});
  }
  return fields;
}

std::vector<host::GridColumn> ListColumns(const tables::RegisterDescription& description, const RegisterStore& store) {
  std::vector<host::GridColumn> columns;
  for (const tables::ColumnDescription& column : description.columns) {
    if (column.list_width == 0) continue;
    const tables::ColumnKind kind = store.ColumnOf(column).kind;
    const bool number = kind == tables::ColumnKind::kInteger || kind == tables::ColumnKind::kNumber;
    columns.push_back({.field = std::string(column.name),
                       .width = column.list_width,
                       .read_only = true,
                       .align = number ? host::Align::kRight : host::Align::kLeft});
  }
  return columns;
}

/// "fmMateriais" of "TfmMateriais".
std::string NameOf(const tables::RegisterDescription& description) {
  return std::string(description.class_name.substr(1));
}

std::string CaptionOf(const tables::RegisterDescription& description) {
  return "Cadastro de " + std::string(description.caption);
}

}  // namespace

TfmRegister::TfmRegister(Application& application, const tables::RegisterDescription& description)
    : Screen(application, std::string(description.class_name), NameOf(description), CaptionOf(description)),
      application_(application),
      description_(description),
      store_(application.GetDatabase(), description),
      TbLista(*this, "TbLista", ListFields(description, store_)),
      GrdLista(*this, "GrdLista", TbLista, ListColumns(description, store_)),
      inputs_(MakeInputs()),
      detail_(description.detail ? std::make_unique<RegisterDetail>(*this, store_, *description.detail) : nullptr) {
  EdtBusca.OnExit = [this] { EdtBuscaExit(); };
  GrdLista.SetReadOnly(true);
  GrdLista.OnClick = [this] { GrdListaClick(); };
  TbLista.SetIndex(description_.Key());
  TbLista.AfterScroll = [this] { TbListaAfterScroll(); };
  BtnIncluir.Shortcut = host::Key::kF2;
}

std::vector<std::unique_ptr<RegisterInput>> TfmRegister::MakeInputs() {
  std::vector<std::unique_ptr<RegisterInput>> inputs;
  for (const tables::ColumnDescription& column : description_.columns) {
    inputs.push_back(std::make_unique<RegisterInput>(*this, store_, column));
  }
  return inputs;
}

void TfmRegister::FormCreate() { LimpaTela(); }

void TfmRegister::FormShow() { BuscaLista(); }

std::vector<host::KeyHint> TfmRegister::KeyHints() const { return {{host::Key::kEscape, "Desistir"}}; }

bool TfmRegister::HasUnsavedWork() const { return Changed(); }

void TfmRegister::RequireRight(std::string_view operation) const {
  if (!GetHost().GetFuncoes().Acessa(ClassName(), operation, "0")) throw host::Abort();
}

bool TfmRegister::FormKeyDown(host::Key key) {
  if (key != host::Key::kEscape || (!new_ && !Changed())) return false;
  if (!MayLeaveRecord()) return true;
  if (new_) {
    ShowCurrent();
  } else {
    BuscaDados(stored_.values.front().AsText());
  }
  return true;
}

bool TfmRegister::Changed() const {
  if (detail_ != nullptr && detail_->Changed()) return true;
  return std::any_of(inputs_.begin(), inputs_.end(), [](const auto& input) { return input->Changed(); });
}

bool TfmRegister::MayLeaveRecord() const {
  return !Changed() || Confirm("Há alterações não gravadas. Deseja descartá-las?");
}

// --- the list -------------------------------------------------------------------------------------------------------

void TfmRegister::EdtBuscaExit() {
  if (host::Trim(EdtBusca.Text()) == searched_) return;
  if (MayLeaveRecord()) {
    BuscaLista();
  } else {
    EdtBusca.SetText(searched_);
  }
}

void TfmRegister::BuscaLista() {
  const std::string wanted = host::Trim(EdtBusca.Text());
  const auto rows = store_.List(wanted);
  searched_ = wanted;
  FillList(*rows);
  ShowCurrent();
}

void TfmRegister::FillList(host::TTIQuery& rows) {
  const host::Restored<bool> filling(filling_, true);
  TbLista.Empty();
  for (; !rows.Eof() && TbLista.RecordCount() < RegisterStore::kListed; rows.Next()) {
    TbLista.Append();
    PutRow(rows);
  }
  more_ = !rows.Eof();
  TbLista.First();
  TellCount();
}

void TfmRegister::PutRow(const host::TTIQuery& row) {
  for (std::size_t i = 0; i < TbLista.FieldCount(); ++i) {
    host::Field& field = TbLista.FieldAt(i);
    field.Set(row.FieldByName(field.Name()));
  }
  TbLista.Post();
}

void TfmRegister::TellCount() {
  const std::size_t count = TbLista.RecordCount();
  if (more_) {
    LblBusca.SetText("Os primeiros " + std::to_string(count) + "; há mais...");
  } else if (count == 0) {
    LblBusca.SetText("Nenhum registro");
  } else {
    LblBusca.SetText(std::to_string(count) + (count == 1 ? " registro" : " registros"));
  }
}

void TfmRegister::RefreshRow(std::string_view key, const host::TTIQuery& row) {
  const host::Restored<bool> filling(filling_, true);
  if (TbLista.Locate(description_.Key(), {key})) {
    TbLista.Edit();
  } else {
    TbLista.Append();
  }
  PutRow(row);
  list_row_ = TbLista.CurrentId();
  TellCount();
}

void TfmRegister::DropRow(std::string_view key) {
  const host::Restored<bool> filling(filling_, true);
  if (TbLista.Locate(description_.Key(), {key})) TbLista.Delete();
  TellCount();
}

std::string TfmRegister::ListKey() const { return TbLista[description_.Key()].AsText(); }

void TfmRegister::ShowCurrent() {
  if (TbLista.IsEmpty()) {
    LimpaTela();
  } else {
    BuscaDados(ListKey());
  }
  list_row_ = TbLista.CurrentId();
}

void TfmRegister::TbListaAfterScroll() {
  if (filling_) return;
  if (MayLeaveRecord()) {
    ShowCurrent();
    return;
  }
  const host::Restored<bool> filling(filling_, true);
  TbLista.GoToId(list_row_);
  throw host::Abort();
}

// The row that the list stands on already: the person turns back to it from a new record.
void TfmRegister::GrdListaClick() {
  const bool shown = !new_ && TbLista.CurrentId() == list_row_;
  if (shown || TbLista.IsEmpty()) return;
  if (MayLeaveRecord()) ShowCurrent();
}

// --- the record -----------------------------------------------------------------------------------------------------

void TfmRegister::SetNew(bool is_new) {
  new_ = is_new;
  inputs_.front()->SetReadOnly(!is_new);
}

void TfmRegister::BuscaDados(std::string_view key) {
  std::optional<Record> record = store_.Read(key);
  if (!record) {
    Inform(tables::RecordName(description_, key, true) + " foi " + tables::Agreeing(description_, "excluíd") +
           " por outra estação.");
    LimpaTela();
    return;
  }
  for (std::size_t i = 0; i < inputs_.size(); ++i) inputs_[i]->Show(record->values[i]);
  if (detail_ != nullptr) detail_->Show(record->detail);
  stored_ = std::move(*record);
  read_at_ = GetHost().GetClock().Now();
  SetNew(false);
}

void TfmRegister::LimpaTela() {
  for (const auto& input : inputs_) input->ShowInitial();
  if (detail_ != nullptr) detail_->Show({});
  stored_ = {};
  SetNew(true);
}

void TfmRegister::BtnIncluirClick() {
  RequireRight("A");
  if (!MayLeaveRecord()) throw host::Abort();
  LimpaTela();
  inputs_.front()->Control().SetFocus();
}

}  // namespace app::registers
