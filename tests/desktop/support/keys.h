// What a person's hands do: keys to where the keyboard is, clicks with the mouse. Each waits until the program has
// dealt with it.
#pragma once

#include <QString>
#include <QWidget>
#include <Qt>
#include <functional>

namespace test {

/// Where a key goes now: an open menu, the widget with the focus, the active window. Throws std::runtime_error when
/// there is nothing.
QWidget& Keyboard();

void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// One key event per character, accents included.
void TypeText(const QString& text);
void ClickOn(QWidget& widget);
void DoubleClickOn(QWidget& widget);

/// Lets everything happen that was put off to the event loop.
void Settle();
/// Waits until the condition holds; false when it did not within the time.
bool WaitFor(const std::function<bool()>& condition, int milliseconds = 3000);

}  // namespace test
