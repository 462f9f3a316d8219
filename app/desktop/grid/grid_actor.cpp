#include "app/desktop/grid/grid_actor.h"

namespace app::desktop {

using host::ActResult;

GridActor::GridActor(Station& station, GridModel& model) : station_(station), model_(model), grid_(model.GetGrid()) {}

bool GridActor::Live() const { return !model_.Released() && grid_.Enabled() && grid_.Visible(); }

bool GridActor::CanType() const { return Live() && model_.CanType(grid_.SelectedColumn()); }

bool GridActor::IsCheckBox() const {
  if (model_.Released()) return false;
  const int column = grid_.SelectedColumn();
  return column >= 0 && column < model_.columnCount() && model_.ColumnAt(column).check_box;
}

bool GridActor::Inserting() const { return grid_.GetDataset().State() == host::DatasetState::kInsert; }

ActResult GridActor::SelectRow(std::size_t id) const {
  const std::size_t rec_no = model_.RecNoOf(id);
  return rec_no == 0 ? ActResult::kRefused : Desk().SelectRow(grid_, rec_no);
}

bool GridActor::Enter() {
  if (!Live()) return false;
  if (Desk().Focused() == &grid_) return true;
  return station_.Do([this] { return Desk().Enter(grid_); });
}

void GridActor::ToRow(int row) {
  if (row < 0 || row >= model_.rowCount()) return;
  station_.Do([this, id = model_.IdAt(row)] { return SelectRow(id); });
}

void GridActor::ToColumn(int column) {
  if (column < 0 || column >= model_.columnCount()) return;
  station_.Do([this, field = model_.ColumnAt(column).field] { return Desk().SelectCell(grid_, field); });
}

void GridActor::Click(int row, int column, bool toggle) {
  station_.Do([this, toggle, id = model_.IdAt(row), field = model_.ColumnAt(column).field] {
    const std::size_t rec_no = model_.RecNoOf(id);
    if (rec_no == 0) return ActResult::kRefused;
    host::Grid& grid = grid_;
    host::Desk& desk = Desk();
    const ActResult clicked = desk.ClickCell(grid, rec_no, field);
    // The click may have closed the screen, and with it the grid.
    if (clicked != ActResult::kDone || !toggle || desk.Focused() != &grid || grid.SelectedField() != field) {
      return clicked;
    }
    return desk.TickCell(grid, grid.GetDataset().FieldByName(field).AsText() != "S");
  });
}

void GridActor::Up() {
  const int row = model_.CursorRow();
  if (!model_.Mapped()) return Key(host::Key::kUp);
  ToRow(row > 0 ? row - 1 : 0);
}

void GridActor::Down() {
  const int row = model_.CursorRow();
  if (!model_.Mapped() || Inserting() || model_.rowCount() == 0) return Key(host::Key::kDown);
  if (row + 1 < model_.rowCount()) return ToRow(row + 1);
  Append();
}

// A new row comes after the last one of the dataset, wherever the list shows that one.
void GridActor::Append() {
  if (grid_.ReadOnly()) return;
  station_.Do([this] {
    host::Grid& grid = grid_;
    host::Desk& desk = Desk();
    const host::Dataset& dataset = grid.GetDataset();
    if (!Inserting() && dataset.RecNo() != dataset.RecordCount()) {
      const ActResult stood = desk.SelectRow(grid, dataset.RecordCount());
      if (stood != ActResult::kDone || desk.Focused() != &grid) return stood;
    }
    return desk.GridKey(grid, host::Key::kDown);
  });
}

void GridActor::Key(host::Key key) {
  station_.Do([this, key] { return Desk().GridKey(grid_, key); });
}

void GridActor::Tick(bool ticked) {
  station_.Do([this, ticked] { return Desk().TickCell(grid_, ticked); });
}

bool GridActor::Type(const std::string& text) {
  return station_.DoTyping([this, &text] { return Desk().TypeCell(grid_, text); });
}

void GridActor::Clear() {
  if (!CanType() || grid_.GetDataset().IsEmpty()) return;
  if (IsCheckBox()) {
    if (grid_.GetDataset().FieldByName(grid_.SelectedField()).AsText() == "S") Tick(false);
    return;
  }
  station_.Do([this] { return Desk().TypeCell(grid_, ""); });
}

void GridActor::DblClick() {
  station_.Do([this] { return Desk().DblClick(grid_); });
}

void GridActor::MoveOn(bool back) {
  if (model_.Released()) return;
  station_.Do([this, back] { return Desk().MoveFocus(grid_.Owner(), back); });
}

}  // namespace app::desktop
