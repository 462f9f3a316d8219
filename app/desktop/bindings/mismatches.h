// What a form and its screen do not agree on.
#pragma once

#include <QStringList>
#include <QWidget>

#include "app/desktop/grid/grid_panel.h"
#include "host/kit/screen.h"

namespace app::desktop {

class ScreenBindings;

/// The widget is a part of one of that kind.
template <typename Kind>
bool IsInside(const QWidget& widget) {
  for (const QWidget* around = widget.parentWidget(); around != nullptr; around = around->parentWidget()) {
    if (qobject_cast<const Kind*>(around) != nullptr) return true;
  }
  return false;
}

/// One line per tab that the form calls otherwise than the screen; asked before the screen's captions are put in.
QStringList PageCaptionsThatDiffer(const host::Screen& screen, const QWidget& form);
/// The rest, see ScreenWindow::Mismatches.
QStringList MismatchesOf(const ScreenBindings& bindings, const QWidget& form);

}  // namespace app::desktop
