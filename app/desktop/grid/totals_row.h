// The sums under a grid, each under its column.
#pragma once

#include <QTableView>
#include <QWidget>

#include "app/desktop/grid/grid_model.h"

namespace app::desktop {

/// Follows the columns of the table wherever they are moved, resized or scrolled to.
class TotalsRow : public QWidget {
  Q_OBJECT

 public:
  TotalsRow(const QTableView& table, const GridModel& model, QWidget* parent = nullptr);

  /// Adds up the rows shown again.
  void Refresh();
  bool HasTotals() const;
  /// What stands under a column; empty when nothing does.
  QString TextOf(int column) const { return sums_.value(column); }
  /// "Soma" and the number of rows.
  QString Heading() const { return heading_; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QTableView& table_;
  const GridModel& model_;
  QHash<int, QString> sums_;
  QString heading_;
};

/// "1 linha", "12 linhas"; "3 de 12 linhas" when not all are shown.
QString RowsText(int shown, int all);

}  // namespace app::desktop
