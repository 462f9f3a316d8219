// The rows and columns of a grid component, as the table view reads them.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "app/desktop/grid/grid_rows.h"
#include "host/kit/grid.h"

namespace app::desktop {

/// Reads the dataset live; Refresh takes up what changed, once for any number of changes. It never changes anything
/// in the dataset.
class GridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// What a view asks beside the usual roles.
  enum Role {
    kReadOnlyRole = Qt::UserRole,  // nobody types here although the grid is typed into
    kCursorRowRole,                // the dataset stands on this row
    kLookupRole                    // a lookup opens here
  };

  explicit GridModel(host::Grid& grid, QObject* parent = nullptr);

  /// Not once Released.
  host::Grid& GetGrid() const { return grid_; }
  /// The grid goes: from here on it is not touched, the list is empty.
  void Release();
  bool Released() const { return released_; }

  /// Takes up what changed since the last call. Cheap when nothing did. Always ends with Refreshed.
  void Refresh();
  /// How often the rows were read anew.
  int Readings() const { return readings_; }

  void SetOrder(int column, bool descending);
  int SortColumn() const { return order_.column; }
  bool Descending() const { return order_.descending; }
  void SetFilter(const QString& words);

  /// The list is sorted or filtered by the person.
  bool Mapped() const { return rows_.Mapped(); }
  /// Rows that the screen has, shown or not.
  int AllRows() const;
  /// Position in the dataset, 1-based.
  std::size_t RecNoAt(int row) const { return rows_.RecNo(static_cast<std::size_t>(row)); }
  /// Identity of the row; 0 for one being inserted.
  std::size_t IdAt(int row) const;
  /// Position now of a row by IdAt's identity; 0 when it has gone.
  std::size_t RecNoOf(std::size_t id) const;
  /// The row that the dataset stands on; -1 when it is not shown.
  int CursorRow() const;

  const host::GridColumn& ColumnAt(int column) const;
  /// Null when the dataset has no such field.
  const host::Field* FieldAt(int column) const;
  /// Null value outside the rows and fields.
  const host::Value& ValueAt(int row, int column) const;
  bool IsNumber(int column) const;
  /// Typing is possible in this column now.
  bool CanType(int column) const;
  /// The sum of the rows shown, as the field shows numbers.
  QString Sum(int column) const;
  /// A caption in one line: "01 AZUL" for "01|AZUL".
  QString Caption(int column) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 signals:
  /// The columns are others than before.
  void ColumnsChanged();
  /// Rows or values changed since the last Refreshed.
  void RowsChanged();
  /// What changed is shown; the cursor may be elsewhere.
  void Refreshed();

 private:
  class Source;

  bool TakeColumns();
  void TakeRows();
  QString Shown(int row, int column) const;
  QString Typed(int row, int column) const;
  Qt::Alignment AlignmentOf(int column) const;

  host::Grid& grid_;
  GridRows rows_;
  RowOrder order_;
  std::vector<host::GridColumn> columns_;
  std::vector<std::string> captions_;
  std::vector<int> fields_;  // index of the column's field in the dataset; -1 without one
  int row_count_ = 0;
  bool ordered_ = false;  // the rows stand as order_ says
  std::optional<std::size_t> seen_;
  int readings_ = 0;
  bool released_ = false;
};

}  // namespace app::desktop
