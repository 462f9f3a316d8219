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

/// A number that is only read and summed under the grid.
inline GridColumn QuantityColumn(std::string field, std::string caption, int width) {
  GridColumn column = NumberColumn(std::move(field), std::move(caption), width);
  column.total = true;
  return column;
}

}  // namespace host
