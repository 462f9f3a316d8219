#include "app/desktop/boxes/code_guard.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <chrono>

#include "host/restored.h"

namespace app::desktop {
namespace {

// Between two characters of a scanner lie a few milliseconds; nobody types as fast.
constexpr std::chrono::milliseconds kBetweenCharacters(60);

bool IsEnd(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab; }

bool IsCharacter(const QKeyEvent& key) {
  const Qt::KeyboardModifiers commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  return (key.modifiers() & commands) == Qt::NoModifier && !key.text().isEmpty() && key.text().front().isPrint();
}

}  // namespace

CodeGuard::CodeGuard(QDialog& box) : box_(box) {
  alone_.setSingleShot(true);
  alone_.setInterval(kBetweenCharacters);
  connect(&alone_, &QTimer::timeout, this, [this] { HandOn(); });
  QApplication::instance()->installEventFilter(this);
}

bool CodeGuard::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || handing_on_) return false;
  const auto* widget = qobject_cast<const QWidget*>(watched);
  if (widget == nullptr || (widget != &box_ && !box_.isAncestorOf(widget))) return false;
  const auto& key = *static_cast<const QKeyEvent*>(event);
  // A blank by itself presses the button.
  if (IsCharacter(key) && (typed_ > 0 || key.key() != Qt::Key_Space)) {
    ++typed_;
    key_ = key.key();
    text_ = key.text();
    if (typed_ == 1) {
      alone_.start();
    } else {
      alone_.stop();
    }
    return true;
  }
  const bool code = typed_ > 0 && IsEnd(key.key());
  typed_ = 0;
  alone_.stop();
  if (code) QApplication::beep();
  return code;
}

void CodeGuard::HandOn() {
  typed_ = 0;
  const host::Restored<bool> handing_on(handing_on_, true);
  QKeyEvent key(QEvent::KeyPress, key_, Qt::NoModifier, text_);
  QApplication::sendEvent(&box_, &key);
}

}  // namespace app::desktop
