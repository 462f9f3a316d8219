// The input that opens over a cell.
#pragma once

#include <QKeyEvent>
#include <QLineEdit>
#include <functional>

#include "app/desktop/grid/grid_model.h"

namespace app::desktop {

/// Offers every key to the grid first: those that leave the cell are its, the rest edit the text.
class CellEditor : public QLineEdit {
  Q_OBJECT

 public:
  /// `for_grid` uses a key (true) or leaves it to the input; the editor may be gone when it returns true.
  CellEditor(QWidget* parent, const GridModel& model, int column, std::function<bool(QKeyEvent*)> for_grid);

 signals:
  void LookupWanted();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  std::function<bool(QKeyEvent*)> for_grid_;
};

/// Ctrl+PgUp and Ctrl+PgDn turn the tabs that the grid stands on.
bool TurnsPage(const QKeyEvent& event);
/// Keys that leave a cell or act on the grid while its text is being typed.
bool LeavesCell(const QKeyEvent& event);

}  // namespace app::desktop
