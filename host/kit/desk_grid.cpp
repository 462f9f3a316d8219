// What a person does in a grid: from cell to cell and from row to row.
#include <optional>
#include <string>
#include <utility>

#include "host/errors.h"
#include "host/kit/desk.h"
#include "host/kit/desk_impl.h"
#include "host/kit/typed.h"
#include "host/text.h"

namespace host {
namespace {

using Cells = std::vector<std::pair<std::string, std::string>>;

const GridColumn* SelectedColumn(const Grid& grid) {
  if (grid.SelectedColumn() < 0) return nullptr;
  return &grid.Columns()[static_cast<std::size_t>(grid.SelectedColumn())];
}

Field* SelectedField(const Grid& grid) { return grid.GetDataset().FindField(grid.SelectedField()); }

int FieldIndex(const Grid& grid) {
  const Dataset& dataset = grid.GetDataset();
  for (std::size_t at = 0; at < dataset.FieldCount(); ++at) {
    if (SameName(dataset.FieldAt(at).Name(), grid.SelectedField())) return static_cast<int>(at);
  }
  return -1;
}

// Where a person begins to fill in a new row.
int FirstTypedColumn(const Grid& grid) {
  const auto& columns = grid.Columns();
  for (std::size_t at = 0; at < columns.size(); ++at) {
    if (!columns[at].read_only) return static_cast<int>(at);
  }
  return grid.SelectedColumn();
}

EditKind KindOf(FieldType type) {
  switch (type) {
    case FieldType::kInteger:
      return EditKind::kInteger;
    case FieldType::kFloat:
      return EditKind::kNumber;
    case FieldType::kDate:
      return EditKind::kDate;
    case FieldType::kMemo:
      return EditKind::kMemo;
    case FieldType::kText:
      break;
  }
  return EditKind::kText;
}

}  // namespace

void Desk::MustAllowGrid(const Grid& grid, int column, bool writing) const {
  MustAllow(grid);
  if (column < 0) throw ActError(grid.Name() + " não tem essa coluna");
  if (!writing) return;
  const GridColumn& written = grid.Columns()[static_cast<std::size_t>(column)];
  if (grid.ReadOnly() || written.read_only) throw ActError(grid.Name() + "." + written.field + " é somente leitura");
  if (grid.GetDataset().FindField(written.field) == nullptr) {
    throw ActError(grid.GetDataset().Name() + " não tem o campo " + written.field);
  }
}

// --- cells -------------------------------------------------------------------------------------------------------

void Desk::EnterCell(Grid& grid) {
  const Field* field = SelectedField(grid);
  impl_->cell = {&grid, grid.SelectedColumn(), grid.GetDataset().CurrentId(),
                 field == nullptr ? Value() : field->Get()};
}

// The program may have moved the row or the column since the person arrived: then this is another cell.
void Desk::SyncCell(Grid& grid) {
  Impl::Cell& cell = impl_->cell;
  const std::size_t row = grid.GetDataset().CurrentId();
  const bool same_column = cell.grid == &grid && cell.column == grid.SelectedColumn();
  if (same_column && cell.row == 0) cell.row = row;  // the row came about around the person: the cell held nothing
  if (!same_column || cell.row != row) EnterCell(grid);
}

void Desk::LeaveCell(Grid& grid, Key key) {
  SyncCell(grid);
  try {
    if (key != Key::kNone) Fire(grid.OnKeyDown, key);
    // Where the key's handler sent the person is reached only when the cell left for it agrees.
    const int left = impl_->cell.column;
    const int sent = grid.SelectedColumn();
    grid.SelectColumn(left);
    Fire(grid.OnColExit);
    if (grid.SelectedColumn() == left) grid.SelectColumn(sent);
  } catch (const Abort&) {
    grid.SelectColumn(impl_->cell.column);
    Dataset& dataset = grid.GetDataset();
    const int field = FieldIndex(grid);
    if (field >= 0 && dataset.InEdit() && dataset.CurrentId() == impl_->cell.row) {
      dataset.PutBack(static_cast<std::size_t>(field), impl_->cell.before);
    }
    throw;
  }
}

void Desk::LeaveRow(Grid& grid) {
  LeaveCell(grid, Key::kNone);
  grid.GetDataset().Post();
}

void Desk::NextCell(Grid& grid, Key key) {
  const int column = grid.SelectedColumn();
  LeaveCell(grid, key);
  // A handler that selected a column has sent the person there.
  if (grid.SelectedColumn() == column) grid.SelectColumn(column + 1);
  EnterCell(grid);
}

// Gives the grid the focus. kDone with the cell under the cursor as the one that the person is in.
ActResult Desk::FocusGrid(Grid& grid) {
  const Screen* screen = &grid.Owner();
  const ActResult entered = Enter(grid);
  if (entered != ActResult::kDone) return entered;
  return IsOpen(screen) && CanAct(grid) ? ActResult::kDone : ActResult::kRefused;
}

ActResult Desk::SelectCell(Grid& grid, std::string_view field) {
  const int column = grid.ColumnOf(field);
  MustAllowGrid(grid, column, false);
  const bool inside = focused_ == &grid;
  const ActResult focused = FocusGrid(grid);
  if (focused != ActResult::kDone) return focused;
  if (column == grid.SelectedColumn()) return ActResult::kDone;
  return Run(grid.Owner().Caption(), [&] {
    if (inside) LeaveCell(grid, Key::kNone);
    grid.SelectColumn(column);
    EnterCell(grid);
  });
}

ActResult Desk::TypeCell(Grid& grid, std::string_view text) {
  MustAllowGrid(grid, grid.SelectedColumn(), true);
  const bool ticked = text == "S";
  if (SelectedColumn(grid)->check_box && !ticked && text != "N" && !text.empty()) {
    throw ActError(grid.Name() + "." + grid.SelectedField() + " aceita somente \"S\" ou \"N\"");
  }
  if (!grid.GetDataset().Active()) throw ActError(grid.GetDataset().Name() + " não está aberto");
  const ActResult focused = FocusGrid(grid);
  if (focused != ActResult::kDone) return focused;
  return PutIntoCell(grid, SelectedColumn(grid)->check_box ? (ticked ? "S" : "N") : text);
}

ActResult Desk::PutIntoCell(Grid& grid, std::string_view text) {
  return Run(grid.Owner().Caption(), [&] {
    Dataset& dataset = grid.GetDataset();
    Field& field = *SelectedField(grid);
    const FieldDef& def = field.Def();
    const GridColumn& column = *SelectedColumn(grid);
    std::optional<std::string> objection =
        TypedObjection(KindOf(def.type), def.width, column.caption.empty() ? def.caption : column.caption, text);
    if (!objection) objection = environment_.CheckStorable(text);
    if (objection) grid.Owner().Refuse(*objection);

    dataset.Edit();
    SyncCell(grid);
    const Value before = field.Get();
    const std::size_t row = dataset.CurrentId();
    try {
      const bool plain = def.type == FieldType::kText || def.type == FieldType::kMemo;
      field.Set(plain ? Value(text) : Value(Trim(text)));
    } catch (const Abort&) {
      if (dataset.InEdit() && dataset.CurrentId() == row) {
        dataset.PutBack(static_cast<std::size_t>(FieldIndex(grid)), before);
      }
      throw;
    }
  });
}

ActResult Desk::GridKey(Grid& grid, Key key) {
  MustAllow(grid);
  const ActResult focused = FocusGrid(grid);
  if (focused != ActResult::kDone) return focused;
  if (key == Key::kDelete && !grid.ReadOnly() && !grid.GetDataset().IsEmpty()) {
    return Run(grid.Owner().Caption(), [&] {
      Fire(grid.OnKeyDown, key);
      grid.GetDataset().Delete();
      EnterCell(grid);
    });
  }
  const bool goes_on = key == Key::kTab || key == Key::kEnter;
  // There is no cell to fill in.
  if (goes_on && grid.ReadOnly()) return LeaveReadOnly(grid, key);
  const Screen* screen = &grid.Owner();
  bool used = false;
  const ActResult acted = Run(grid.Owner().Caption(), [&] {
    Dataset& dataset = grid.GetDataset();
    switch (key) {
      case Key::kTab:
      case Key::kEnter:
        NextCell(grid, key);
        break;
      case Key::kUp:
        UpRow(grid);
        break;
      case Key::kDown:
        DownRow(grid);
        break;
      case Key::kEscape:
        Fire(grid.OnKeyDown, key);
        dataset.Cancel();
        EnterCell(grid);
        break;
      default:
        Fire(grid.OnKeyDown, key);
        used = grid.Owner().FormKeyDown(key);
        break;
    }
  });
  if (acted != ActResult::kDone || used || !IsOpen(screen) || focused_ != &grid) return acted;
  Button* button = ShortcutOf(*screen, key);
  return button == nullptr ? acted : Click(*button);
}

ActResult Desk::LeaveReadOnly(Grid& grid, Key key) {
  const Screen* screen = &grid.Owner();
  const ActResult acted = Run(grid.Owner().Caption(), [&] { Fire(grid.OnKeyDown, key); });
  if (acted != ActResult::kDone || !IsOpen(screen) || focused_ != &grid) return acted;
  return MoveFocus(grid.Owner(), false);
}

void Desk::UpRow(Grid& grid) {
  Dataset& dataset = grid.GetDataset();
  LeaveCell(grid, Key::kUp);
  const std::size_t row = dataset.CurrentId();
  dataset.Post();
  // A new row that gave itself up has already brought the cursor to the one above it.
  if (dataset.CurrentId() == row) dataset.Prior();
  EnterCell(grid);
}

void Desk::DownRow(Grid& grid) {
  Dataset& dataset = grid.GetDataset();
  LeaveCell(grid, Key::kDown);
  const std::size_t row = dataset.CurrentId();
  dataset.Post();
  // A row that gave itself up in BeforePost has already brought the cursor to another one.
  const bool stands = dataset.CurrentId() == row;
  if (stands && dataset.RecNo() == dataset.RecordCount()) {
    if (!grid.ReadOnly() && dataset.Active()) {
      dataset.Append();
      grid.SelectColumn(FirstTypedColumn(grid));
    }
  } else if (stands) {
    dataset.Next();
  }
  EnterCell(grid);
}

// --- rows --------------------------------------------------------------------------------------------------------

ActResult Desk::SelectRow(Grid& grid, std::size_t rec_no) {
  MustAllow(grid);
  Dataset& dataset = grid.GetDataset();
  const bool inserted = dataset.State() == DatasetState::kInsert && rec_no == dataset.RecNo();
  const std::size_t wanted = dataset.IdAt(rec_no);
  if (wanted == 0 && !inserted) throw ActError(grid.Name() + " não tem a linha " + std::to_string(rec_no));
  const bool inside = focused_ == &grid;
  const ActResult focused = FocusGrid(grid);
  if (focused != ActResult::kDone) return focused;
  if (inserted || wanted == dataset.CurrentId()) return ActResult::kDone;
  return Run(grid.Owner().Caption(), [&] {
    if (inside) LeaveCell(grid, Key::kNone);
    dataset.Post();
    dataset.GoToId(wanted);
    EnterCell(grid);
  });
}

// Each cell typed and left by Tab. Going on to the next cell named passes over those between without stopping there.
ActResult Desk::TypeCells(Grid& grid, const Cells& cells) {
  for (const auto& [name, text] : cells) {
    const int column = grid.ColumnOf(name);
    MustAllowGrid(grid, column, true);
    grid.SelectColumn(column);
    EnterCell(grid);
    ActResult result = TypeCell(grid, text);
    if (result != ActResult::kDone) return result;
    const Screen* screen = &grid.Owner();
    result = Run(grid.Owner().Caption(), [&] { NextCell(grid, Key::kTab); });
    if (result != ActResult::kDone) return result;
    if (!IsOpen(screen)) return ActResult::kDone;
  }
  return Run(grid.Owner().Caption(), [&] {
    grid.GetDataset().Post();
    EnterCell(grid);
  });
}

ActResult Desk::AppendRow(Grid& grid, const Cells& cells) {
  MustAllow(grid);
  for (const auto& cell : cells) MustAllowGrid(grid, grid.ColumnOf(cell.first), true);
  if (grid.ReadOnly()) throw ActError(grid.Name() + " é somente leitura");
  if (!grid.GetDataset().Active()) throw ActError(grid.GetDataset().Name() + " não está aberto");
  const bool inside = focused_ == &grid;
  const ActResult focused = FocusGrid(grid);
  if (focused != ActResult::kDone) return focused;
  const ActResult appended = Run(grid.Owner().Caption(), [&] {
    if (inside) LeaveRow(grid);
    grid.GetDataset().Append();
    EnterCell(grid);
  });
  return appended == ActResult::kDone ? TypeCells(grid, cells) : appended;
}

ActResult Desk::SetRow(Grid& grid, const Cells& cells) {
  MustAllow(grid);
  for (const auto& cell : cells) MustAllowGrid(grid, grid.ColumnOf(cell.first), true);
  if (grid.GetDataset().IsEmpty()) throw ActError(grid.Name() + " não tem linha");
  const bool inside = focused_ == &grid;
  const ActResult focused = FocusGrid(grid);
  if (focused != ActResult::kDone) return focused;
  if (inside && grid.GetDataset().InEdit()) {
    const ActResult left = Run(grid.Owner().Caption(), [&] { LeaveCell(grid, Key::kNone); });
    if (left != ActResult::kDone) return left;
  }
  return TypeCells(grid, cells);
}

ActResult Desk::DeleteRow(Grid& grid) {
  MustAllow(grid);
  if (grid.ReadOnly()) throw ActError(grid.Name() + " é somente leitura");
  if (grid.GetDataset().IsEmpty()) throw ActError(grid.Name() + " não tem linha");
  const ActResult focused = FocusGrid(grid);
  if (focused != ActResult::kDone) return focused;
  return Run(grid.Owner().Caption(), [&] {
    grid.GetDataset().Delete();
    EnterCell(grid);
  });
}

ActResult Desk::CancelRow(Grid& grid) {
  MustAllow(grid);
  const ActResult focused = FocusGrid(grid);
  if (focused != ActResult::kDone) return focused;
  return Run(grid.Owner().Caption(), [&] {
    grid.GetDataset().Cancel();
    EnterCell(grid);
  });
}

ActResult Desk::DblClick(Grid& grid) {
  const Screen* screen = &grid.Owner();
  const ActResult focused = FocusGrid(grid);
  if (focused != ActResult::kDone) return focused;
  if (!IsOpen(screen)) return ActResult::kDone;
  return Run(grid.Owner().Caption(), [&] { Fire(grid.OnDblClick); });
}

ActResult Desk::ClickRow(Grid& grid, std::size_t rec_no) {
  const ActResult selected = SelectRow(grid, rec_no);
  if (selected != ActResult::kDone) return selected;
  return Run(grid.Owner().Caption(), [&] { Fire(grid.OnClick); });
}

ActResult Desk::ClickCell(Grid& grid, std::size_t rec_no, std::string_view field) {
  const int column = grid.ColumnOf(field);
  MustAllowGrid(grid, column, false);
  Dataset& dataset = grid.GetDataset();
  const bool inserted = dataset.State() == DatasetState::kInsert && rec_no == dataset.RecNo();
  const std::size_t wanted = dataset.IdAt(rec_no);
  if (wanted == 0 && !inserted) throw ActError(grid.Name() + " não tem a linha " + std::to_string(rec_no));
  const bool inside = focused_ == &grid;
  const ActResult focused = FocusGrid(grid);
  if (focused != ActResult::kDone) return focused;
  const bool same_row = inserted || wanted == dataset.CurrentId();
  const Screen* screen = &grid.Owner();
  const ActResult moved = Run(grid.Owner().Caption(), [&] {
    if (same_row && column == grid.SelectedColumn()) return;
    if (inside) LeaveCell(grid, Key::kNone);
    if (!same_row) {
      dataset.Post();
      dataset.GoToId(wanted);
    }
    grid.SelectColumn(column);
    EnterCell(grid);
  });
  if (moved != ActResult::kDone || !IsOpen(screen)) return moved;
  return Run(grid.Owner().Caption(), [&] { Fire(grid.OnClick); });
}

ActResult Desk::TickCell(Grid& grid, bool ticked) {
  const Screen* screen = &grid.Owner();
  const ActResult typed = TypeCell(grid, ticked ? "S" : "N");
  if (typed != ActResult::kDone || !IsOpen(screen)) return typed;
  return Run(grid.Owner().Caption(), [&] {
    LeaveCell(grid, Key::kNone);
    if (grid.GetDataset().State() != DatasetState::kInsert) grid.GetDataset().Post();
    EnterCell(grid);
  });
}

}  // namespace host
