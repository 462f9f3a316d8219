#include "desktop/support/keys.h"

#include <QApplication>
#include <QTest>
#include <stdexcept>

namespace test {

QWidget& Keyboard() {
  // After a box has gone the window below it becomes active a moment later.
  WaitFor([] { return QApplication::activePopupWidget() != nullptr || QApplication::activeWindow() != nullptr; });
  if (QWidget* popup = QApplication::activePopupWidget()) return *popup;
  if (QWidget* focus = QApplication::focusWidget()) return *focus;
  if (QWidget* window = QApplication::activeWindow()) return *window;
  throw std::runtime_error("no window has the keyboard");
}

void Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(&Keyboard(), key, modifiers);
  Settle();
}

void TypeText(const QString& text) {
  for (const QChar character : text) {
    const auto key = static_cast<Qt::Key>(character.toUpper().unicode());
    QTest::sendKeyEvent(QTest::Click, &Keyboard(), key, QString(character), Qt::NoModifier);
  }
  Settle();
}

void ClickOn(QWidget& widget) {
  QTest::mouseClick(&widget, Qt::LeftButton);
  Settle();
}

void DoubleClickOn(QWidget& widget) {
  QTest::mouseDClick(&widget, Qt::LeftButton);
  Settle();
}

void Settle() { QTest::qWait(1); }

bool WaitFor(const std::function<bool()>& condition, int milliseconds) {
  return QTest::qWaitFor(condition, milliseconds);
}

}  // namespace test
