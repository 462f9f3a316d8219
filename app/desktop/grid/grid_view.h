// The table of a grid: keyboard and mouse become acts of the person, the cursor is the dataset's.
#pragma once

#include <QPointer>
#include <QTableView>
#include <optional>
#include <vector>

#include "app/desktop/grid/cell_editor.h"
#include "app/desktop/grid/grid_actor.h"
#include "app/desktop/grid/grid_header.h"
#include "app/desktop/grid/grid_model.h"

namespace app::desktop {

/// The cells that a person marked, at least the one under the cursor.
struct Block {
  int top = 0;
  int bottom = -1;
  std::vector<int> columns;  // as they stand on the screen, from the left

  bool Empty() const { return bottom < top || columns.empty(); }
  bool OneCell() const { return top == bottom && columns.size() == 1; }
};

class GridView : public QTableView {
  Q_OBJECT

 public:
  GridView(Station& station, GridModel& model, QWidget* parent = nullptr);
  ~GridView() override;

  GridActor& Actor() { return actor_; }
  GridHeader& Header() { return *header_; }
  /// The desk follows the person to this grid; false when what he comes from was not left, or the grid is locked.
  bool TurnTo();
  /// The keyboard goes to the cell under the cursor, or to its editor.
  void TakeFocus();
  bool HasKeyboard() const;
  /// Columns as they stand on the screen.
  std::vector<int> ShownColumns() const;
  Block Marked() const;
  void MarkAll();
  CellEditor* Editor() const { return editor_; }
  /// The list alone has the cursor while the screen does not let the person act.
  void LookAt(int row, int column);

 signals:
  /// The person turned to the table; the receiver makes the desk follow before anything else happens.
  void KeyboardWanted();
  void CopyWanted();
  void PasteWanted();
  void FilterWanted();
  void MenuWanted(const QPoint& global);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void updateGeometries() override;

 private:
  void ShowCursor();
  void Grey(bool greyed);
  void FitRowHeight();
  /// The view's own model index of the dataset's cursor; invalid when that row is not shown.
  QModelIndex Cursor() const;
  /// Where the cursor's cell is; in a list without rows where the first row will be.
  QRect CursorRect() const;

  // Keyboard: grid_keys.cpp.
  bool HandleKey(QKeyEvent* event);
  bool CommandKey(const QKeyEvent& event);
  bool FunctionKey(const QKeyEvent& event);
  bool MoveKey(const QKeyEvent& event);
  bool MarkKey(const QKeyEvent& event);
  bool EditKey(const QKeyEvent& event);
  bool TypedKey(const QKeyEvent& event);
  void EnterPressed();
  void EscapePressed();
  void ToRow(int row);
  void ToShownColumn(int place);
  void LookByKey(int key);
  int PageRows() const;

  // Typing into a cell.
  void OpenEditor(const std::optional<QString>& typed);
  bool HandOver();
  void CloseEditor();
  void PlaceEditor();

  // Marking a block.
  void ExtendTo(int row, int shown_column);
  int ShownPlace(int column) const { return header_->visualIndex(column); }

  // Mouse.
  void PressLeft(const QModelIndex& index, const QPoint& at);

  GridModel& model_;
  GridActor actor_;
  GridHeader* header_;
  QPointer<CellEditor> editor_;
  QString editor_start_;  // the text that it opened with, when that was the cell's own
  bool editor_typed_ = false;
  std::size_t shown_id_ = 0;
  int shown_column_ = -1;
  bool rows_changed_ = false;
  QModelIndex head_;     // the other end of the marked block; invalid when a single cell is marked
  bool marked_ = false;  // more than the cursor's cell is shown as marked
  std::optional<QPoint> pressed_;
};

/// Keys that a grid uses itself, so that no shortcut of the window takes them.
bool IsGridKey(const QKeyEvent& event);
/// A character that is typed, not a command.
bool IsTypedText(const QKeyEvent& event);

}  // namespace app::desktop
