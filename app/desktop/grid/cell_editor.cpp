#include "app/desktop/grid/cell_editor.h"

#include <QAction>
#include <QIcon>
#include <QPainter>

namespace app::desktop {

CellEditor::CellEditor(QWidget* parent, const GridModel& model, int column, std::function<bool(QKeyEvent*)> for_grid)
    : QLineEdit(parent), for_grid_(std::move(for_grid)) {
  setObjectName(QStringLiteral("cell_editor"));
  setFrame(false);
  setAutoFillBackground(true);
  const host::Field* field = model.FieldAt(column);
  if (field != nullptr && field->Def().type == host::FieldType::kText && field->Def().width > 0) {
    setMaxLength(static_cast<int>(field->Def().width));
  }
  if (model.IsNumber(column)) setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  if (model.ColumnAt(column).lookup) {
    QAction* button = addAction(QIcon(QStringLiteral(":/icons/lookup.svg")), QLineEdit::TrailingPosition);
    button->setToolTip(QStringLiteral("Pesquisa (F4)"));
    connect(button, &QAction::triggered, this, &CellEditor::LookupWanted);
  }
}

bool CellEditor::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (LeavesCell(*key)) {
      event->accept();
      // A shortcut of the window must not act before what is typed here was handed over.
      if (event->type() == QEvent::ShortcutOverride || for_grid_(key)) return true;
    }
  }
  return QLineEdit::event(event);
}

bool TurnsPage(const QKeyEvent& event) {
  const bool page = event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown;
  return page && event.modifiers().testFlag(Qt::ControlModifier);
}

// A line around it tells at a glance that the cell is open.
void CellEditor::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Highlight));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

bool LeavesCell(const QKeyEvent& event) {
  if (TurnsPage(event)) return false;
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
    case Qt::Key_Up:
    case Qt::Key_Down:
      return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      // With Ctrl they turn the pages of the screen.
      return !event.modifiers().testFlag(Qt::ControlModifier);
    default:
      return event.key() >= Qt::Key_F3 && event.key() <= Qt::Key_F12 && event.modifiers() == Qt::NoModifier;
  }
}

}  // namespace app::desktop
