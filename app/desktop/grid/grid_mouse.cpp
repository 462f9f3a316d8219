// The mouse in a grid.
#include <QApplication>
#include <QContextMenuEvent>
#include <QMetaMethod>
#include <QMouseEvent>
#include <algorithm>

#include "app/desktop/grid/cell_delegate.h"
#include "app/desktop/grid/grid_view.h"

namespace app::desktop {

bool GridView::TurnTo() {
  if (!actor_.Live()) return false;
  const host::Desk& desk = actor_.GetStation().Desk();
  if (desk.Focused() == &model_.GetGrid()) return true;
  const QPointer<GridView> alive(this);
  emit KeyboardWanted();
  if (!alive || model_.Released()) return false;
  // Where nobody follows, the act itself enters the grid. Where somebody did and the desk still is elsewhere, the
  // input that the person comes from did not let go.
  static const QMetaMethod kSignal = QMetaMethod::fromSignal(&GridView::KeyboardWanted);
  return !isSignalConnected(kSignal) || desk.Focused() == &model_.GetGrid();
}

void GridView::mousePressEvent(QMouseEvent* event) {
  event->accept();
  const QPoint at = event->position().toPoint();
  const QModelIndex index = indexAt(at);
  pressed_.reset();
  if (event->button() == Qt::RightButton) {
    // The menu is for what is marked, when the click is inside it.
    if (index.isValid() && selectionModel()->isSelected(index)) return;
  } else if (event->button() != Qt::LeftButton) {
    return;
  }
  if (!actor_.Live()) {
    LookAt(index.row(), index.column());
    pressed_ = at;
    return;
  }
  const QPointer<GridView> alive(this);
  if (!TurnTo() || !alive) return;
  if (!index.isValid()) {
    actor_.GetStation().GetTyping().Settle();
    return;
  }
  if (event->button() == Qt::LeftButton && event->modifiers().testFlag(Qt::ShiftModifier)) {
    if (actor_.GetStation().GetTyping().Settle()) ExtendTo(index.row(), ShownPlace(index.column()));
    return;
  }
  if (event->button() == Qt::RightButton) {
    actor_.Click(index.row(), index.column(), false);
    return;
  }
  pressed_ = at;
  PressLeft(index, at);
}

void GridView::PressLeft(const QModelIndex& index, const QPoint& at) {
  const QRect cell = visualRect(index);
  if (index == Cursor() && index.data(GridModel::kLookupRole).toBool() &&
      CellDelegate::LookupButtonOf(cell).contains(at)) {
    pressed_.reset();
    actor_.Key(host::Key::kF4);
    return;
  }
  const bool box = index.flags().testFlag(Qt::ItemIsUserCheckable) &&
                   CellDelegate::BoxOf(this, cell).adjusted(-3, -3, 3, 3).contains(at);
  head_ = {};
  actor_.Click(index.row(), index.column(), box);
}

// Dragging marks a block from the cursor to the mouse; the dataset stays where it is.
void GridView::mouseMoveEvent(QMouseEvent* event) {
  if (!pressed_ || !event->buttons().testFlag(Qt::LeftButton)) return;
  const QPoint at = event->position().toPoint();
  if (!head_.isValid() && (at - *pressed_).manhattanLength() < QApplication::startDragDistance()) return;
  const QRect inside = viewport()->rect().adjusted(1, 1, -1, -1);
  const QPoint near(std::clamp(at.x(), inside.left(), inside.right()),
                    std::clamp(at.y(), inside.top(), inside.bottom()));
  int row = rowAt(near.y());
  if (row < 0) row = model_.rowCount() - 1;
  if (at.y() < inside.top()) --row;
  if (at.y() > inside.bottom()) ++row;
  const int column = columnAt(near.x());
  const int place = column < 0 ? header_->count() - 1 : ShownPlace(column);
  const QModelIndex current = currentIndex();
  if (!head_.isValid() && row == current.row() && place == ShownPlace(current.column())) return;
  ExtendTo(row, place);
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
  pressed_.reset();
  event->accept();
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() != Qt::LeftButton || !index.isValid() || !actor_.Live()) return;
  // Two quick clicks on a box are two clicks.
  if (index.flags().testFlag(Qt::ItemIsUserCheckable)) {
    PressLeft(index, event->position().toPoint());
    return;
  }
  // The first click was refused and the cursor is elsewhere: the second must not act there.
  if (index != Cursor()) return;
  if (model_.GetGrid().OnDblClick) {
    actor_.DblClick();
  } else {
    OpenEditor(std::nullopt);
  }
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (event->reason() == QContextMenuEvent::Mouse) {
    emit MenuWanted(event->globalPos());
    return;
  }
  emit MenuWanted(viewport()->mapToGlobal(CursorRect().bottomLeft()));
}

}  // namespace app::desktop
