#include "app/script/screen_parts.h"

#include <array>
#include <utility>

#include "host/errors.h"
#include "host/text.h"

namespace app::script {
namespace {

using host::Key;

constexpr std::array<std::pair<std::string_view, Key>, 20> kKeys = {
    {{"Tab", Key::kTab}, {"Enter", Key::kEnter},   {"Escape", Key::kEscape}, {"Insert", Key::kInsert},
     {"Up", Key::kUp},   {"Delete", Key::kDelete}, {"Down", Key::kDown},     {"Esc", Key::kEscape},
     {"F1", Key::kF1},   {"F2", Key::kF2},         {"F3", Key::kF3},         {"F4", Key::kF4},
     {"F5", Key::kF5},   {"F6", Key::kF6},         {"F7", Key::kF7},         {"F8", Key::kF8},
     {"F9", Key::kF9},   {"F10", Key::kF10},       {"F11", Key::kF11},       {"F12", Key::kF12}}};

std::string Quoted(std::string_view name) { return '"' + std::string(name) + '"'; }

std::string Of(const host::Screen& screen) { return " na tela " + screen.ClassName(); }

bool InsertedRow(const host::Dataset& dataset) { return dataset.State() == host::DatasetState::kInsert; }

}  // namespace

host::Component& FindAny(const host::Screen& screen, std::string_view name) {
  if (host::Component* found = screen.FindComponent(name)) return *found;
  throw host::InputError("não há componente " + Quoted(name) + Of(screen));
}

void RefuseKind(const host::Component& component, std::string_view kind) {
  throw host::InputError("o componente " + Quoted(component.Name()) + Of(component.Owner()) + " não é " +
                         std::string(kind));
}

host::Grid& FindGrid(const host::Screen& screen, std::string_view dataset) {
  host::Grid* found = nullptr;
  for (host::Component* component : screen.Components()) {
    auto* grid = dynamic_cast<host::Grid*>(component);
    if (grid == nullptr) continue;
    if (!host::SameName(grid->GetDataset().Name(), dataset) && !host::SameName(grid->Name(), dataset)) continue;
    if (grid->Enabled() && grid->Visible()) return *grid;
    if (found == nullptr) found = grid;
  }
  if (found == nullptr) throw host::InputError("nenhuma grade mostra " + Quoted(dataset) + Of(screen));
  return *found;
}

host::Control& FindControl(const host::Screen& screen, std::string_view name) {
  host::Component& found = FindAny(screen, name);
  if (dynamic_cast<host::Dataset*>(&found) != nullptr) return FindGrid(screen, name);
  return Find<host::Control>(screen, name, "um componente que se veja");
}

std::string ShownText(const host::Screen& screen, std::string_view name) {
  host::Component& found = FindAny(screen, name);
  if (auto* edit = dynamic_cast<host::Edit*>(&found)) return edit->Text();
  if (auto* label = dynamic_cast<host::Label*>(&found)) return label->Text();
  if (auto* choice = dynamic_cast<host::Choice*>(&found)) return choice->SelectedText();
  if (auto* pages = dynamic_cast<host::PageControl*>(&found)) {
    const auto page = static_cast<std::size_t>(pages->ActivePage());
    return page < pages->Pages().size() ? pages->Pages()[page] : std::string();
  }
  if (dynamic_cast<host::Grid*>(&found) == nullptr) {
    if (auto* control = dynamic_cast<host::Control*>(&found)) return control->Caption();
  }
  RefuseKind(found, "um componente que mostre texto");
}

const host::Value& CellValue(const host::Grid& grid, std::size_t rec_no, const host::GridColumn& column) {
  host::Dataset& dataset = grid.GetDataset();
  const bool inserted = InsertedRow(dataset) && rec_no > dataset.RecordCount();
  const bool edited = dataset.State() == host::DatasetState::kEdit && rec_no == dataset.RecNo();
  if (inserted || edited) return dataset.FieldByName(column.field).Get();
  for (std::size_t index = 0; index < dataset.FieldCount(); ++index) {
    if (host::SameName(dataset.FieldAt(index).Name(), column.field)) return dataset.ValueAt(rec_no, index);
  }
  throw host::InputError("a grade " + Quoted(grid.Name()) + " mostra um campo que não existe: " + column.field);
}

std::size_t RowCount(const host::Grid& grid) {
  const host::Dataset& dataset = grid.GetDataset();
  return dataset.Active() ? dataset.RecordCount() + (InsertedRow(dataset) ? 1 : 0) : 0;
}

int FindColumn(const host::Grid& grid, std::string_view field) {
  const int index = grid.ColumnOf(field);
  if (index < 0)
    throw host::InputError("a grade de " + Quoted(grid.GetDataset().Name()) + " não mostra " + Quoted(field));
  return index;
}

std::optional<Key> KeyByName(std::string_view name) {
  for (const auto& [text, key] : kKeys) {
    if (host::SameName(text, name)) return key;
  }
  return std::nullopt;
}

}  // namespace app::script
