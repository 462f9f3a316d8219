#include "app/desktop/grid/grid_view.h"

#include <QCoreApplication>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

#include "app/desktop/grid/cell_delegate.h"

namespace app::desktop {

GridView::GridView(Station& station, GridModel& model, QWidget* parent)
    : QTableView(parent), model_(model), actor_(station, model), header_(new GridHeader(this)) {
  setObjectName(QStringLiteral("grid_table"));
  setHorizontalHeader(header_);
  header_->setSortIndicatorShown(true);  // the table takes the mark away with its own sorting
  setModel(&model);
  setItemDelegate(new CellDelegate(this));
  setEditTriggers(NoEditTriggers);
  setSelectionMode(ExtendedSelection);
  setAlternatingRowColors(true);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setAutoScroll(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setCornerButtonEnabled(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  FitRowHeight();
  connect(&model, &GridModel::Refreshed, this, &GridView::ShowCursor);
  connect(&model, &GridModel::RowsChanged, this, [this] { rows_changed_ = true; });
  connect(&model, &GridModel::ColumnsChanged, this, [this] {
    if (editor_ != nullptr) actor_.GetStation().GetTyping().GiveUp();
  });
  connect(header_, &QHeaderView::sectionResized, this, &GridView::PlaceEditor);
  connect(header_, &QHeaderView::sectionMoved, this, &GridView::PlaceEditor);
  ShowCursor();
}

GridView::~GridView() { actor_.GetStation().GetTyping().End(this); }

void GridView::FitRowHeight() { verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6); }

void GridView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) FitRowHeight();
}

// --- the cursor --------------------------------------------------------------------------------------------------

QModelIndex GridView::Cursor() const {
  if (model_.Released()) return {};
  const int row = model_.CursorRow();
  const int column = model_.GetGrid().SelectedColumn();
  return row < 0 || column < 0 ? QModelIndex() : model_.index(row, column);
}

void GridView::ShowCursor() {
  if (model_.Released()) return;
  const std::size_t id = model_.GetGrid().GetDataset().CurrentId();
  const int column = model_.GetGrid().SelectedColumn();
  const bool moved = id != shown_id_ || column != shown_column_;
  const bool lost = !currentIndex().isValid() || rows_changed_;
  shown_id_ = id;
  shown_column_ = column;
  rows_changed_ = false;
  Grey(!actor_.Live());
  const QModelIndex cursor = Cursor();
  const bool own_look = !actor_.Live() || head_.isValid();
  const bool collapsed = marked_ && !head_.isValid();
  if (moved || lost || collapsed || (cursor != currentIndex() && !own_look)) {
    head_ = {};
    marked_ = false;
    if (cursor.isValid()) {
      selectionModel()->setCurrentIndex(cursor, QItemSelectionModel::ClearAndSelect);
    } else {
      selectionModel()->clear();
    }
  }
  // Only a cursor that went elsewhere pulls the list along: what a person scrolled to stays.
  if (moved && cursor.isValid()) scrollTo(cursor);
  setAttribute(Qt::WA_InputMethodEnabled, actor_.CanType() && !actor_.IsCheckBox());
  PlaceEditor();
  viewport()->update();
}

// The room below the rows greys with them.
void GridView::Grey(bool greyed) {
  if (property("greyed").toBool() == greyed) return;
  setProperty("greyed", greyed);
  viewport()->setBackgroundRole(greyed ? QPalette::Window : QPalette::Base);
}

void GridView::LookAt(int row, int column) {
  const QModelIndex index = model_.index(row, column);
  if (!index.isValid()) return;
  head_ = {};
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
  scrollTo(index);
}

QRect GridView::CursorRect() const {
  if (model_.Released()) return {};
  const int column = model_.GetGrid().SelectedColumn();
  if (column < 0) return {};
  if (model_.rowCount() > 0) return visualRect(Cursor());
  return {columnViewportPosition(column), 0, columnWidth(column) - 1, verticalHeader()->defaultSectionSize() - 1};
}

void GridView::TakeFocus() {
  if (editor_ != nullptr) {
    editor_->setFocus(Qt::OtherFocusReason);
  } else {
    setFocus(Qt::OtherFocusReason);
  }
}

bool GridView::HasKeyboard() const { return hasFocus() || (editor_ != nullptr && editor_->hasFocus()); }

void GridView::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  const Qt::FocusReason reason = event->reason();
  if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason) {
    emit KeyboardWanted();
  }
  ShowCursor();
}

// --- the marked block --------------------------------------------------------------------------------------------

std::vector<int> GridView::ShownColumns() const {
  std::vector<int> columns;
  columns.reserve(static_cast<std::size_t>(header_->count()));
  for (int place = 0; place < header_->count(); ++place) columns.push_back(header_->logicalIndex(place));
  return columns;
}

Block GridView::Marked() const {
  const QModelIndex from = currentIndex();
  if (!from.isValid()) return {};
  const QModelIndex to = head_.isValid() ? head_ : from;
  Block block{std::min(from.row(), to.row()), std::max(from.row(), to.row()), {}};
  const auto [left, right] = std::minmax({ShownPlace(from.column()), ShownPlace(to.column())});
  for (int place = left; place <= right; ++place) block.columns.push_back(header_->logicalIndex(place));
  return block;
}

void GridView::ExtendTo(int row, int shown_column) {
  if (!currentIndex().isValid() || model_.rowCount() == 0) return;
  const int column = header_->logicalIndex(std::clamp(shown_column, 0, header_->count() - 1));
  head_ = model_.index(std::clamp(row, 0, model_.rowCount() - 1), column);
  const Block block = Marked();
  QItemSelection selection;
  for (const int marked : block.columns) {
    selection.select(model_.index(block.top, marked), model_.index(block.bottom, marked));
  }
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  marked_ = true;
  scrollTo(head_);
}

void GridView::MarkAll() {
  if (model_.rowCount() == 0 || header_->count() == 0) return;
  const QModelIndex from = model_.index(0, header_->logicalIndex(0));
  selectionModel()->setCurrentIndex(from, QItemSelectionModel::ClearAndSelect);
  head_ = model_.index(model_.rowCount() - 1, header_->logicalIndex(header_->count() - 1));
  marked_ = true;
  selectAll();
}

// --- typing into a cell ------------------------------------------------------------------------------------------

void GridView::OpenEditor(const std::optional<QString>& typed) {
  Typing& typing = actor_.GetStation().GetTyping();
  if (editor_ != nullptr || !actor_.CanType() || actor_.IsCheckBox() || !typing.Settle()) return;
  const QPointer<GridView> alive(this);
  if (!actor_.Enter() || !alive || !actor_.CanType()) return;
  const QModelIndex cursor = Cursor();
  if (!cursor.isValid() && model_.rowCount() > 0) return;
  if (cursor.isValid()) scrollTo(cursor);
  const int column = model_.GetGrid().SelectedColumn();
  editor_ = new CellEditor(viewport(), model_, column, [this](QKeyEvent* key) { return HandleKey(key); });
  editor_->setFont(font());
  editor_start_ = cursor.isValid() ? cursor.data(Qt::EditRole).toString() : QString();
  editor_typed_ = typed.has_value();
  editor_->setText(typed.value_or(editor_start_));
  connect(editor_, &CellEditor::LookupWanted, this, [this] { actor_.Key(host::Key::kF4); });
  typing.Begin(
      this, [this] { return HandOver(); }, [this] { CloseEditor(); });
  PlaceEditor();
  editor_->show();
  editor_->setFocus(Qt::OtherFocusReason);
  if (editor_typed_) {
    editor_->end(false);
  } else {
    editor_->selectAll();
  }
}

// Refused or not the editor closes: the cell shows what the screen made of the text, which after a refusal is what
// stood there before.
bool GridView::HandOver() {
  if (editor_ == nullptr) return true;
  const QString text = editor_->text();
  // Looking at the full digits of a number is no reason to round it.
  if (!editor_typed_ && text == editor_start_) {
    CloseEditor();
    return true;
  }
  const QPointer<GridView> alive(this);
  const bool taken = actor_.Type(text.toStdString());
  if (alive) CloseEditor();
  return taken;
}

void GridView::CloseEditor() {
  if (editor_ == nullptr) return;
  CellEditor* closing = editor_;
  // Its window may not be active again yet after a box: what counts is where the keyboard goes then.
  const bool had_keyboard = closing->window()->focusWidget() == closing;
  editor_ = nullptr;
  actor_.GetStation().GetTyping().End(this);
  if (had_keyboard) setFocus(Qt::OtherFocusReason);
  closing->hide();
  closing->deleteLater();
}

void GridView::PlaceEditor() {
  if (editor_ == nullptr) return;
  const QRect cell = CursorRect();
  // A number that outgrows its narrow column is still seen whole while it is typed.
  const int least = fontMetrics().averageCharWidth() * 10;
  editor_->setGeometry(cell.x(), cell.y(), std::max(cell.width(), least), cell.height());
}

void GridView::updateGeometries() {
  QTableView::updateGeometries();
  PlaceEditor();
}

// A dead key or an input method composes a letter: it is composed in the editor.
void GridView::inputMethodEvent(QInputMethodEvent* event) {
  if (event->commitString().isEmpty() && event->preeditString().isEmpty()) return;
  OpenEditor(QString());
  if (editor_ != nullptr) QCoreApplication::sendEvent(editor_, event);
}

// --- painting ----------------------------------------------------------------------------------------------------

void GridView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (model_.rowCount() > 0 || !actor_.Live() || !actor_.CanType()) return;
  // A list without rows shows where the first one begins.
  QPainter painter(viewport());
  QColor colour = palette().color(HasKeyboard() ? QPalette::Active : QPalette::Inactive, QPalette::Highlight);
  painter.setPen(colour);
  colour.setAlpha(HasKeyboard() ? 90 : 40);
  painter.setBrush(colour);
  painter.drawRect(CursorRect().adjusted(0, 0, -1, -1));
}

bool GridView::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const QModelIndex index = indexAt(help->pos());
  const QString text = index.data(Qt::DisplayRole).toString();
  if (index.isValid() && fontMetrics().horizontalAdvance(text) + 8 > columnWidth(index.column())) {
    QToolTip::showText(help->globalPos(), text, viewport(), visualRect(index));
  } else {
    QToolTip::hideText();
  }
  return true;
}

}  // namespace app::desktop
