// The keyboard in a grid.
#include <QKeyEvent>
#include <algorithm>

#include "app/desktop/grid/grid_view.h"

namespace app::desktop {
namespace {

constexpr Qt::KeyboardModifiers kCommands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

bool IsEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

bool IsMove(int key) {
  switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      return true;
    default:
      return false;
  }
}

bool IsPage(int key) { return key == Qt::Key_PageUp || key == Qt::Key_PageDown; }

bool IsEditKey(int key) {
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
    case Qt::Key_Insert:
    case Qt::Key_F2:
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool IsTypedText(const QKeyEvent& event) {
  const QString text = event.text();
  if (text.isEmpty() || !text.front().isPrint()) return false;
  // The third level of a keyboard may come as Ctrl and Alt together.
  const Qt::KeyboardModifiers commands = event.modifiers() & kCommands;
  return commands == Qt::NoModifier || commands == (Qt::ControlModifier | Qt::AltModifier);
}

bool IsGridKey(const QKeyEvent& event) {
  const int key = event.key();
  const Qt::KeyboardModifiers commands = event.modifiers() & kCommands;
  if (commands == Qt::ControlModifier) {
    const bool letter = key == Qt::Key_C || key == Qt::Key_V || key == Qt::Key_F || key == Qt::Key_A;
    return letter || IsEnter(key) || key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Delete ||
           key == Qt::Key_Insert || (IsMove(key) && !TurnsPage(event));
  }
  if (commands != Qt::NoModifier) return IsTypedText(event);
  return LeavesCell(event) || IsMove(key) || key == Qt::Key_Delete || key == Qt::Key_Insert || key == Qt::Key_F2 ||
         key == Qt::Key_Backspace || IsTypedText(event);
}

bool GridView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsGridKey(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  // Tab would go to the next widget before this class sees it.
  if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) {
      keyPressEvent(key);
      return true;
    }
  }
  return QTableView::event(event);
}

void GridView::keyPressEvent(QKeyEvent* event) { event->setAccepted(HandleKey(event)); }

bool GridView::HandleKey(QKeyEvent* event) {
  // What the key does may end this view.
  const QKeyEvent key(event->type(), event->key(), event->modifiers(), event->text());
  if (CommandKey(key) || FunctionKey(key)) return true;
  if (editor_ == nullptr && MarkKey(key)) return true;
  return MoveKey(key) || EditKey(key) || (editor_ == nullptr && TypedKey(key));
}

// With Ctrl: copying and the like, and the ways out of the grid.
bool GridView::CommandKey(const QKeyEvent& event) {
  if ((event.modifiers() & kCommands) != Qt::ControlModifier) return false;
  const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
  switch (event.key()) {
    case Qt::Key_C:
    case Qt::Key_Insert:
      emit CopyWanted();
      return true;
    case Qt::Key_V:
      emit PasteWanted();
      return true;
    case Qt::Key_F:
      emit FilterWanted();
      return true;
    case Qt::Key_A:
      MarkAll();
      return true;
    case Qt::Key_Delete:
      if (actor_.Live()) actor_.Key(host::Key::kDelete);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
      actor_.MoveOn(shift);
      return true;
    case Qt::Key_Backtab:
      actor_.MoveOn(true);
      return true;
    default:
      return false;
  }
}

bool GridView::FunctionKey(const QKeyEvent& event) {
  const int key = event.key();
  if (key == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier) {
    emit MenuWanted(viewport()->mapToGlobal(CursorRect().bottomLeft()));
    return true;
  }
  if (event.modifiers() != Qt::NoModifier || key < Qt::Key_F3 || key > Qt::Key_F12 || !actor_.Live()) return false;
  if (event.isAutoRepeat()) return true;  // held down it acts once
  actor_.Key(static_cast<host::Key>(static_cast<int>(host::Key::kF1) + key - Qt::Key_F1));
  return true;
}

int GridView::PageRows() const {
  return std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize() - 1);
}

// With Shift the marked block grows; the dataset stays where it is.
bool GridView::MarkKey(const QKeyEvent& event) {
  if (!event.modifiers().testFlag(Qt::ShiftModifier) || !IsMove(event.key())) return false;
  const QModelIndex from = head_.isValid() ? head_ : currentIndex();
  if (!from.isValid()) return true;
  const bool far = event.modifiers().testFlag(Qt::ControlModifier);
  const int place = ShownPlace(from.column());
  switch (event.key()) {
    case Qt::Key_Up:
      ExtendTo(far ? 0 : from.row() - 1, place);
      break;
    case Qt::Key_Down:
      ExtendTo(far ? model_.rowCount() : from.row() + 1, place);
      break;
    case Qt::Key_PageUp:
      ExtendTo(from.row() - PageRows(), place);
      break;
    case Qt::Key_PageDown:
      ExtendTo(from.row() + PageRows(), place);
      break;
    case Qt::Key_Left:
      ExtendTo(from.row(), far ? 0 : place - 1);
      break;
    case Qt::Key_Right:
      ExtendTo(from.row(), far ? header_->count() : place + 1);
      break;
    case Qt::Key_Home:
      ExtendTo(far ? 0 : from.row(), 0);
      break;
    default:
      ExtendTo(far ? model_.rowCount() : from.row(), header_->count());
      break;
  }
  return true;
}

void GridView::ToRow(int row) {
  if (model_.rowCount() > 0) actor_.ToRow(std::clamp(row, 0, model_.rowCount() - 1));
}

void GridView::ToShownColumn(int place) {
  if (place >= 0 && place < header_->count()) actor_.ToColumn(header_->logicalIndex(place));
}

// A list that may only be looked at has a cursor of its own.
void GridView::LookByKey(int key) {
  const QModelIndex from = currentIndex().isValid() ? currentIndex() : model_.index(0, 0);
  const int place = ShownPlace(from.column());
  const auto column = [this](int wanted) { return header_->logicalIndex(std::clamp(wanted, 0, header_->count() - 1)); };
  const auto row = [this](int wanted) { return std::clamp(wanted, 0, std::max(0, model_.rowCount() - 1)); };
  if (key == Qt::Key_Up) LookAt(row(from.row() - 1), from.column());
  if (key == Qt::Key_Down) LookAt(row(from.row() + 1), from.column());
  if (key == Qt::Key_PageUp) LookAt(row(from.row() - PageRows()), from.column());
  if (key == Qt::Key_PageDown) LookAt(row(from.row() + PageRows()), from.column());
  if (key == Qt::Key_Left) LookAt(from.row(), column(place - 1));
  if (key == Qt::Key_Right) LookAt(from.row(), column(place + 1));
  if (key == Qt::Key_Home) LookAt(from.row(), column(0));
  if (key == Qt::Key_End) LookAt(from.row(), column(header_->count()));
}

bool GridView::MoveKey(const QKeyEvent& event) {
  const int key = event.key();
  const bool far = event.modifiers().testFlag(Qt::ControlModifier);
  // With Ctrl the page keys turn the pages of the screen.
  if (!IsMove(key) || event.modifiers().testFlag(Qt::AltModifier) || (far && IsPage(key))) return false;
  if (header_->count() == 0) return true;
  if (!actor_.Live()) {
    LookByKey(key);
    return true;
  }
  // A block that was marked collapses to the cursor even where the cursor cannot go on.
  head_ = {};
  const int row = model_.CursorRow();
  const int place = ShownPlace(std::max(0, model_.GetGrid().SelectedColumn()));
  switch (key) {
    case Qt::Key_Up:
      actor_.Up();
      break;
    case Qt::Key_Down:
      actor_.Down();
      break;
    case Qt::Key_PageUp:
      ToRow(row - PageRows());
      break;
    case Qt::Key_PageDown:
      ToRow(row + PageRows());
      break;
    case Qt::Key_Left:
      ToShownColumn(far ? 0 : place - 1);
      break;
    case Qt::Key_Right:
      ToShownColumn(far ? header_->count() - 1 : place + 1);
      break;
    case Qt::Key_Home:
      far ? ToRow(0) : ToShownColumn(0);
      break;
    default:
      far ? ToRow(model_.rowCount() - 1) : ToShownColumn(header_->count() - 1);
      break;
  }
  return true;
}

void GridView::EnterPressed() {
  const host::Grid& grid = model_.GetGrid();
  // A list to choose from: Enter chooses.
  if (grid.ReadOnly() && grid.OnDblClick) return actor_.DblClick();
  actor_.Key(host::Key::kEnter);
}

void GridView::EscapePressed() {
  if (editor_ != nullptr) return actor_.GetStation().GetTyping().GiveUp();
  actor_.Key(host::Key::kEscape);
}

bool GridView::EditKey(const QKeyEvent& event) {
  const int key = event.key();
  if (!actor_.Live()) {
    const bool tab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
    if (!tab && !IsEnter(key)) return false;
    actor_.MoveOn(key == Qt::Key_Backtab);
    return true;
  }
  if ((event.modifiers() & kCommands) != Qt::NoModifier || !IsEditKey(key)) return false;
  head_ = {};
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      EnterPressed();
      return true;
    case Qt::Key_Tab:
      actor_.Key(host::Key::kTab);
      return true;
    case Qt::Key_Backtab:
      // The way that Tab came, which is the screen's order of entry.
      actor_.ToColumn(model_.GetGrid().SelectedColumn() - 1);
      return true;
    case Qt::Key_Escape:
      EscapePressed();
      return true;
    case Qt::Key_Insert:
      if (editor_ != nullptr) return false;
      actor_.Append();
      return true;
    case Qt::Key_F2:
      // Where no cell opens the key is the screen's.
      if (editor_ == nullptr && (!actor_.CanType() || actor_.IsCheckBox())) {
        actor_.Key(host::Key::kF2);
      } else {
        OpenEditor(std::nullopt);
      }
      return true;
    case Qt::Key_Delete:
      if (editor_ != nullptr) return false;
      actor_.Clear();
      return true;
    case Qt::Key_Backspace:
      if (editor_ != nullptr) return false;
      OpenEditor(QString());
      return true;
    default:
      return false;
  }
}

bool GridView::TypedKey(const QKeyEvent& event) {
  if (!IsTypedText(event) || !actor_.Live()) return false;
  if (actor_.IsCheckBox()) {
    const QModelIndex cursor = Cursor();
    if (event.key() == Qt::Key_Space && cursor.isValid() && actor_.CanType()) {
      actor_.Tick(cursor.data(Qt::CheckStateRole).toInt() != Qt::Checked);
    }
    return true;
  }
  OpenEditor(event.text());
  return true;
}

}  // namespace app::desktop
