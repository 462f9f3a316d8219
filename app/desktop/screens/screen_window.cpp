#include "app/desktop/screens/screen_window.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "app/desktop/basics/text.h"
#include "app/desktop/bindings/keys.h"
#include "app/desktop/bindings/screen_bindings.h"
#include "app/desktop/forms/forms.h"

namespace app::desktop {

ScreenWindow::ScreenWindow(Station& station, host::Screen& screen, QWidget* parent)
    : ScreenWindow(station, screen, NewForm(screen), parent) {}

ScreenWindow::ScreenWindow(Station& station, host::Screen& screen, std::unique_ptr<QWidget> form, QWidget* parent)
    : QWidget(parent), station_(&station), screen_(screen), form_(std::move(form)) {
  if (form_ == nullptr) form_ = std::make_unique<QWidget>();
  setWindowTitle(ToQt(screen_.Caption()));
  // A click beside the inputs must not take the keyboard out of the window.
  setFocusPolicy(Qt::ClickFocus);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(form_.get());
  bindings_ = std::make_unique<ScreenBindings>(station, screen_, *this, *form_);
  connect(bindings_.get(), &ScreenBindings::KeysChanged, this, &ScreenWindow::KeysChanged);
}

ScreenWindow::~ScreenWindow() {
  bindings_->LetGo();
  if (!bindings_->Inside() && (station_ == nullptr || !station_->Busy())) {
    bindings_.reset();
    return;
  }
  // A click or a key of one of the widgets is still being worked on.
  form_->hide();
  form_->setParent(nullptr);
  bindings_.release()->deleteLater();
  form_.release()->deleteLater();
}

void ScreenWindow::LetGo() { bindings_->LetGo(); }

QStringList ScreenWindow::Mismatches() const { return bindings_->Mismatches(); }

void ScreenWindow::TakeFocus() { bindings_->TakeFocus(); }

QString ScreenWindow::KeysHere() const { return bindings_->KeysHere(); }

bool ScreenWindow::event(QEvent* event) {
  // While it is being made or unmade there is nobody to ask.
  if (bindings_ == nullptr) return QWidget::event(event);
  switch (event->type()) {
    case QEvent::WindowBlocked:
      bindings_->Interrupted();
      break;
    case QEvent::ShortcutOverride:
      if (ScreenKey(*static_cast<QKeyEvent*>(event)) == host::Key::kNone) break;
      event->accept();
      return true;
    case QEvent::KeyPress:
      // Tab as well: it must not wander off to another widget.
      if (!bindings_->PressKey(nullptr, *static_cast<QKeyEvent*>(event))) break;
      event->accept();
      return true;
    case QEvent::FontChange:
    case QEvent::StyleChange:
      bindings_->Fit();
      break;
    default:
      break;
  }
  return QWidget::event(event);
}

void ScreenWindow::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  if (event->reason() != Qt::MouseFocusReason) return;
  // Not from within the click: whoever has to be left may show a box.
  QTimer::singleShot(0, this, &ScreenWindow::TakeFocus);
}

}  // namespace app::desktop
