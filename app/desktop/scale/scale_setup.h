// How the scale is connected and spoken to.
#pragma once

#include <QWidget>

#include "app/scale/scale_settings.h"

namespace app::desktop {

/// Shows the settings, lets the person change them and try the scale with them. False when the person gave up; they are
/// as before then.
bool AskScaleSetup(QWidget* parent, scale::ScaleSettings& settings);

}  // namespace app::desktop
