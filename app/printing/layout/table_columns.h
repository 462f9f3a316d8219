// The columns of a table: where they stand, what they show of a row, what they add up to.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "app/printing/layout/blocks.h"
#include "app/printing/layout/flow.h"
#include "app/printing/layout/row_source.h"

namespace app::printing {

inline constexpr double kColumnAir = 1;  // millimetres between a column's edge and its text

/// A value with what is printed of it.
struct Cell {
  host::Value value;
  std::string text;
};

class TableColumns {
 public:
  struct Place {
    double x = 0;  // millimetres from the paper's edge, inside the column's air
    double width = 0;
    TextAlign align = TextAlign::kLeft;
    bool wrap = false;
    bool total = false;
  };

  /// Throws Mistake when the columns are wider than the body together, or a field is not there.
  TableColumns(const Table& table, int line, FlowContext& context);

  const std::vector<Place>& Places() const { return places_; }
  std::string Caption(std::size_t column) const { return table_.columns[column].caption.toStdString(); }
  /// Throws Mistake for a value that cannot be printed, and what the layout's function throws.
  Cell CellOf(std::size_t column, std::size_t row) const;
  /// A number as the column shows its own.
  std::string Shown(std::size_t column, const host::Value& value) const;
  /// Format of the column's numbers; empty for none.
  std::string Format(std::size_t column) const;

 private:
  void Spread(double left, double width);
  TextAlign DefaultAlign(std::size_t column) const;

  const Table& table_;
  int line_;
  LayoutEngine& engine_;
  std::vector<RowSource::FieldRef> fields_;
  std::vector<Place> places_;
};

/// Sums of the columns that are totalled.
class Totals {
 public:
  explicit Totals(std::size_t columns) : sums_(columns, 0.0) {}
  /// Throws Mistake for a text: it would be missing in the sum.
  void Add(std::size_t column, const host::Value& value, const std::string& caption);
  /// Without what binary arithmetic leaves behind.
  double Sum(std::size_t column) const;
  void Clear() { sums_.assign(sums_.size(), 0.0); }

 private:
  std::vector<double> sums_;
};

}  // namespace app::printing
