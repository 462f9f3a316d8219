#include "app/desktop/bindings/keys.h"

namespace app::desktop {

host::Key ScreenKey(const QKeyEvent& event) {
  using host::Key;
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
  const int key = event.key();
  if (key == Qt::Key_Backtab) return Key::kTab;
  if (key == Qt::Key_Tab && (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier)) return Key::kTab;
  // With Alt or Ctrl they are the window's: Alt+F4 closes it.
  if (modifiers != Qt::NoModifier) return Key::kNone;
  if (key == Qt::Key_Enter || key == Qt::Key_Return) return Key::kEnter;
  if (key == Qt::Key_Escape) return Key::kEscape;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) {
    if (event.isAutoRepeat()) return Key::kNone;  // a key held down weighs, confirms and deletes once
    return static_cast<Key>(static_cast<int>(Key::kF1) + (key - Qt::Key_F1));
  }
  return Key::kNone;
}

bool IsBack(const QKeyEvent& event) {
  return event.key() == Qt::Key_Backtab || (event.key() == Qt::Key_Tab && event.modifiers() == Qt::ShiftModifier);
}

QString KeyName(host::Key key) {
  using host::Key;
  switch (key) {
    case Key::kNone:
      return {};
    case Key::kTab:
      return QStringLiteral("Tab");
    case Key::kEnter:
      return QStringLiteral("Enter");
    case Key::kEscape:
      return QStringLiteral("Esc");
    case Key::kInsert:
      return QStringLiteral("Ins");
    case Key::kDelete:
      // Only grids pass it on, and there Del by itself empties a cell.
      return QStringLiteral("Ctrl+Del");
    case Key::kUp:
      return QStringLiteral("↑");
    case Key::kDown:
      return QStringLiteral("↓");
    default:
      return QStringLiteral("F%1").arg(static_cast<int>(key) - static_cast<int>(Key::kF1) + 1);
  }
}

}  // namespace app::desktop
