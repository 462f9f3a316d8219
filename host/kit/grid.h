// A table on the screen, over an in-memory dataset.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/kit/component.h"
#include "host/kit/dataset.h"

namespace host {

enum class Align { kLeft, kRight, kCenter };

struct GridColumn {
  std::string field;
  std::string caption = {};  // the field's caption when empty
  int width = 0;             // in characters; 0 for a width that suits the field
  bool read_only = false;
  bool check_box = false;  // "S" ticked, anything else not
  Align align = Align::kLeft;
  bool lookup = false;  // F4 in its cells opens a lookup
  bool total = false;   // its sum stands under the grid
};

class Grid : public Control {
 public:
  Grid(Screen& owner, std::string name, Dataset& dataset, std::vector<GridColumn> columns);

  Dataset& GetDataset() const { return dataset_; }
  const std::vector<GridColumn>& Columns() const { return columns_; }
  /// Replaces the columns (a dataset whose fields were rebuilt); the first one is selected.
  void SetColumns(std::vector<GridColumn> columns);
  bool ReadOnly() const { return read_only_; }
  void SetReadOnly(bool read_only) { read_only_ = read_only; }

  /// Index of the column that has the cursor; -1 without columns.
  int SelectedColumn() const { return selected_; }
  /// Field name of the selected column, as written in the column; empty without columns.
  std::string SelectedField() const;
  void SelectColumn(int index);
  /// Column of that field, without regard to case; -1 when there is none.
  int ColumnOf(std::string_view field) const;

  /// A cell is being left (Tab, Enter, another cell, another control). The dataset is in edit or browse state; what
  /// was typed is in the field. Abort: the cell gets its former value back and keeps the cursor.
  Handler OnColExit;
  Handler OnDblClick;
  Handler OnClick;  // a person clicked a row

 private:
  Dataset& dataset_;
  std::vector<GridColumn> columns_;
  bool read_only_ = false;
  int selected_ = -1;
};

}  // namespace host
