#include "app/desktop/grid/grid_table.h"

namespace app::desktop {
namespace {

Table::Cell CellOf(const GridModel& model, int row, int column) {
  const host::Value& value = model.ValueAt(row, column);
  if (model.ColumnAt(column).check_box) return value.AsText() == "S" ? std::string("S") : std::string("N");
  if (value.IsNumber()) return value.AsFloat();
  if (value.IsDate()) return value.AsDate();
  if (value.IsNull()) return std::monostate();
  return value.AsText();
}

}  // namespace

Table TableOf(const GridModel& model, const GridView& view, const Block& block, const QString& title) {
  Table table;
  table.title = title.toStdString();
  const int character = std::max(1, view.fontMetrics().averageCharWidth());
  for (const int column : block.columns) {
    const host::Field* field = model.FieldAt(column);
    const auto alignment = model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
    const host::Align align = (alignment & Qt::AlignRight) != 0     ? host::Align::kRight
                              : (alignment & Qt::AlignHCenter) != 0 ? host::Align::kCenter
                                                                    : host::Align::kLeft;
    table.columns.push_back({model.Caption(column).toStdString(), align, view.columnWidth(column) / character,
                             model.IsNumber(column) && field != nullptr ? field->Def().format : std::string()});
  }
  for (int row = block.top; row <= block.bottom; ++row) {
    std::vector<Table::Cell> cells;
    cells.reserve(block.columns.size());
    for (const int column : block.columns) cells.push_back(CellOf(model, row, column));
    table.rows.push_back(std::move(cells));
  }
  return table;
}

Block WholeList(const GridModel& model, const GridView& view) { return {0, model.rowCount() - 1, view.ShownColumns()}; }

}  // namespace app::desktop
