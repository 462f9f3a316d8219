// The form of each screen: what stands where. An object's name in a form is its component's name in the screen.
#pragma once

#include <QWidget>
#include <memory>

#include "host/kit/screen.h"

namespace app::desktop {

/// The form of this screen, by its class name: drawn (forms/*.ui) or, for a register, made of the fields that its
/// description lists. Null when the class has none.
std::unique_ptr<QWidget> NewForm(const host::Screen& screen);

}  // namespace app::desktop
