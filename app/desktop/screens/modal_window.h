// A screen that waits to be dealt with before anything else.
#pragma once

#include <QWidget>

#include "app/desktop/basics/station.h"
#include "host/kit/screen.h"

namespace app::desktop {

/// Shows the screen as a dialog over `parent` and returns when it asked to be closed. The dialog's own close button
/// closes the screen as a person does; Esc and Enter are the screen's.
void RunModalScreen(Station& station, host::Screen& screen, QWidget* parent);

}  // namespace app::desktop
