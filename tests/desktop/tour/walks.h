// The walks that are photographed.
#pragma once

#include "desktop/support/desktop_mill.h"
#include "desktop/tour/camera.h"
#include "desktop/tour/devices.h"

namespace tour {

/// What docs/manual tells: sign-in, an order of two items, its yarn reserved, its rolls, by keyboard alone. Throws
/// std::runtime_error when a step does not lead where it should.
void Manual(test::DesktopMill& mill, const Camera& camera, Devices& devices);

/// One picture of each screen of the menu, with something in it.
void EveryScreen(test::DesktopMill& mill, const Camera& camera);

}  // namespace tour
