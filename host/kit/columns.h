// Columns that most grids have.
#pragma once

#include <string>
#include <utility>

#include "host/kit/grid.h"

namespace host {

/// A column that is only read; `width` in characters.
inline GridColumn ShownColumn(std::string field, std::string caption, int width) {
  return {.field = std::move(field), .caption = std::move(caption), .width = width, .read_only = true};
}

/// A number that is only read, at the right.
inline GridColumn NumberColumn(std::string field, std::string caption, int width) {
  GridColumn column = ShownColumn(std::move(field), std::move(caption), width);
  column.align = Align::kRight;
  return column;
}

/// The same column with its sum under the grid.
inline GridColumn WithTotal(GridColumn column) {
  column.total = true;
  return column;
}

/// A number that is only read and summed under the grid.
inline GridColumn QuantityColumn(std::string field, std::string caption, int width) {
  return WithTotal(NumberColumn(std::move(field), std::move(caption), width));
}

/// A column that is typed into.
inline GridColumn TypedColumn(std::string field, std::string caption, int width) {
  return {.field = std::move(field), .caption = std::move(caption), .width = width};
}

/// A number that is typed, at the right.
inline GridColumn TypedNumberColumn(std::string field, std::string caption, int width) {
  GridColumn column = TypedColumn(std::move(field), std::move(caption), width);
  column.align = Align::kRight;
  return column;
}

/// A box to be ticked, in the middle.
inline GridColumn TickedColumn(std::string field, std::string caption, int width) {
  GridColumn column = TypedColumn(std::move(field), std::move(caption), width);
  column.check_box = true;
  column.align = Align::kCenter;
  return column;
}

/// The same column with a lookup behind F4.
inline GridColumn WithLookup(GridColumn column) {
  column.lookup = true;
  return column;
}

}  // namespace host
