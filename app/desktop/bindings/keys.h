// Keys between the keyboard and the screens.
#pragma once

#include <QKeyEvent>
#include <QString>

#include "host/kit/component.h"

namespace app::desktop {

/// What the person pressed, as the screens know it; kNone for a key that stays with the widget. Shift+Tab is kTab here,
/// see IsBack.
host::Key ScreenKey(const QKeyEvent& event);
/// Shift+Tab: the input before.
bool IsBack(const QKeyEvent& event);
/// "F4", "Enter", "Esc", as it is pressed; empty for kNone.
QString KeyName(host::Key key);

}  // namespace app::desktop
