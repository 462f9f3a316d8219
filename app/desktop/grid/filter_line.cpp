#include "app/desktop/grid/filter_line.h"

#include <QHBoxLayout>
#include <QKeyEvent>

namespace app::desktop {
namespace {

constexpr int kPauseMs = 120;

}  // namespace

FilterLine::FilterLine(QWidget* parent) : QWidget(parent) {
  caption_.setText(QStringLiteral("Filtrar"));
  input_.setObjectName(QStringLiteral("grid_filter"));
  input_.setClearButtonEnabled(true);
  input_.setPlaceholderText(QStringLiteral("palavras que a linha contém"));
  input_.installEventFilter(this);
  pause_.setSingleShot(true);
  pause_.setInterval(kPauseMs);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 4);
  row->addWidget(&caption_);
  row->addWidget(&input_, 1);
  row->addWidget(&count_);
  connect(&input_, &QLineEdit::textChanged, &pause_, qOverload<>(&QTimer::start));
  connect(&pause_, &QTimer::timeout, this, &FilterLine::Tell);
}

void FilterLine::Tell() {
  pause_.stop();
  emit WordsChanged(Words());
}

void FilterLine::Clear() {
  input_.clear();
  Tell();
}

void FilterLine::TakeFocus() {
  input_.setFocus(Qt::ShortcutFocusReason);
  input_.selectAll();
}

// The keys are this line's own: Enter does not go on to the next input of the screen from here.
bool FilterLine::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &input_ && event->type() == QEvent::MouseButtonPress) emit Entered();
  if (watched == &input_ && (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride)) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool done = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down || key == Qt::Key_Tab;
    if (done || key == Qt::Key_Escape) {
      event->accept();
      if (event->type() == QEvent::ShortcutOverride) return true;
      if (done) {
        Tell();
        emit Done();
      } else {
        Clear();
        emit GivenUp();
      }
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace app::desktop
