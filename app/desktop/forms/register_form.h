// The form of a shared register: the list beside the record, whose inputs its description lists.
#pragma once

#include <QWidget>
#include <memory>

#include "host/kit/screen.h"

namespace app::desktop {

/// Null when the screen is no register.
std::unique_ptr<QWidget> NewRegisterForm(const host::Screen& screen);

}  // namespace app::desktop
