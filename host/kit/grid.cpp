#include "host/kit/grid.h"

#include <utility>

#include "host/text.h"

namespace host {

Grid::Grid(Screen& owner, std::string name, Dataset& dataset, std::vector<GridColumn> columns)
    : Control(owner, std::move(name), {}), dataset_(dataset) {
  SetColumns(std::move(columns));
}

void Grid::SetColumns(std::vector<GridColumn> columns) {
  columns_ = std::move(columns);
  selected_ = columns_.empty() ? -1 : 0;
  NotifyView();
}

std::string Grid::SelectedField() const {
  return selected_ < 0 ? std::string() : columns_[static_cast<std::size_t>(selected_)].field;
}

void Grid::SelectColumn(int index) {
  if (index < 0 || index >= static_cast<int>(columns_.size()) || index == selected_) return;
  selected_ = index;
  NotifyView();
}

int Grid::ColumnOf(std::string_view field) const {
  for (std::size_t at = 0; at < columns_.size(); ++at) {
    if (SameName(columns_[at].field, field)) return static_cast<int>(at);
  }
  return -1;
}

}  // namespace host
