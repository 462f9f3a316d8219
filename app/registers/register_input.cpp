#include "app/registers/register_input.h"

#include <algorithm>

#include "host/decimal.h"
#include "host/text.h"

namespace app::registers {
namespace {

constexpr std::size_t kLongestMemo = 4000;

host::EditKind KindOf(tables::ColumnKind kind) {
  switch (kind) {
    case tables::ColumnKind::kMemo:
      return host::EditKind::kMemo;
    case tables::ColumnKind::kInteger:
      return host::EditKind::kInteger;
    case tables::ColumnKind::kNumber:
      return host::EditKind::kNumber;
    case tables::ColumnKind::kDate:
      return host::EditKind::kDate;
    default:
      return host::EditKind::kText;
  }
}

std::size_t WidthOf(const tables::Column& column) {
  if (column.kind == tables::ColumnKind::kMemo) return kLongestMemo;
  return column.kind == tables::ColumnKind::kText ? static_cast<std::size_t>(column.width) : 0;
}

}  // namespace

std::string ComponentName(std::string_view prefix, std::string_view column) {
  std::string name(prefix);
  bool capital = true;
  for (const char c : column) {
    if (c == '_') {
      capital = true;
      continue;
    }
    const bool letter = c >= 'A' && c <= 'Z';
    name += letter && !capital ? static_cast<char>(c - 'A' + 'a') : c;
    capital = false;
  }
  return name;
}

RegisterInput::RegisterInput(host::Screen& screen, const RegisterStore& store,
                             const tables::ColumnDescription& description)
    : store_(store),
      description_(description),
      column_(store.ColumnOf(description)),
      reference_(ReferenceOf(store.Shape().table, description.name)) {
  if (tables::IsFlag(description.name)) {
    box_ = std::make_unique<host::CheckBox>(screen, ComponentName("Chk", description.name), Caption());
    return;
  }
  edit_ = std::make_unique<host::Edit>(screen, ComponentName("Edt", description.name), Caption(), KindOf(column_.kind),
                                       WidthOf(column_), std::string(description.format));
  if (reference_ == nullptr) return;
  label_ = std::make_unique<host::Label>(screen, ComponentName("Lbl", description.name));
  lookup_ =
      std::make_unique<host::TPesquisa>(screen, ComponentName("Pq", description.name), std::string(reference_->target),
                                        std::string(reference_->target_columns.front()));
  edit_->Lookup = lookup_.get();
  edit_->OnExit = [this] { ShowText(); };
  lookup_->OnFechaPesquisa = [this] {
    edit_->SetText(lookup_->RetornoPesquisa(lookup_->KeyColumn()).AsText());
    ShowText();
  };
}

host::Control& RegisterInput::Control() const {
  if (box_ != nullptr) return *box_;
  return *edit_;
}

void RegisterInput::SetReadOnly(bool read_only) {
  if (edit_ != nullptr) edit_->SetReadOnly(read_only);
}

// --- showing --------------------------------------------------------------------------------------------------------

void RegisterInput::Show(const host::Value& value) {
  Put(value);
  described_.clear();
  ShowText();
}

void RegisterInput::Stored(const host::Value& value) { Put(value); }

void RegisterInput::Put(const host::Value& value) {
  if (box_ != nullptr) {
    // A flag that nobody ever stored means what a new record begins with.
    box_->SetChecked((value.AsText().empty() ? description_.initial : value.AsText()) == "S");
  } else if (edit_->Kind() == host::EditKind::kNumber) {
    edit_->SetNumber(value.AsFloat());
  } else {
    edit_->SetText(value.AsText());
  }
  stored_ = value;
  new_ = false;
  shown_ = Typed();
}

void RegisterInput::ShowInitial() {
  const std::string initial =
      description_.initial.empty() ? column_.fills.value_or("") : std::string(description_.initial);
  if (edit_ != nullptr && edit_->Kind() == host::EditKind::kNumber && !initial.empty()) {
    Put(host::ParseTyped(initial).value_or(0.0));
  } else {
    Put(initial);
  }
  new_ = true;
  ShowText();
}

void RegisterInput::ShowText() {
  if (label_ == nullptr) return;
  const std::string code = Typed();
  if (code.empty()) {
    label_->SetText("");
  } else if (code != described_) {
    label_->SetText(store_.TextOf(*reference_, code).value_or("não cadastrado"));
  }
  described_ = code;
}

// --- what the person put in -----------------------------------------------------------------------------------------

// A number to its full precision, not as its format shows it.
std::string RegisterInput::Typed() const {
  if (box_ != nullptr) return box_->Checked() ? "S" : "N";
  if (edit_->Kind() == host::EditKind::kMemo) return edit_->Text();
  std::string text = host::Trim(edit_->Text());
  if (edit_->Kind() != host::EditKind::kNumber || text.empty()) return text;
  text = host::PointText(edit_->Number());
  std::replace(text.begin(), text.end(), '.', ',');
  return text;
}

bool RegisterInput::Changed() const { return Typed() != shown_; }

mill::Cell RegisterInput::Read() const {
  if (!new_ && !Changed()) return {stored_};
  const std::string text = Typed();
  if (text.empty() && description_.required) return {{}, "o valor é obrigatório."};
  mill::Cell cell = mill::ReadCell(store_.Shape(), column_, text, mill::CheckRuleFormula);
  if (!cell.objection && reference_ != nullptr && !text.empty() && !tables::IsExempt(*reference_, text) &&
      !store_.TextOf(*reference_, text)) {
    cell.objection = "\"" + text + "\" não está cadastrado.";
  }
  return cell;
}

}  // namespace app::registers
