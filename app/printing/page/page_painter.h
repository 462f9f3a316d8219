// Draws what was placed.
#pragma once

#include <cstddef>

#include "app/printing/page/printout.h"

class QPainter;

namespace app::printing {

/// Draws a page (from 0) with the paper's corner at the painter's origin, at the resolution of the painter's device:
/// millimetres come out exact. `dpi` other than 0 is used instead of the device's own resolution, for a view that is
/// zoomed. The painter's state is as before afterwards. Throws std::out_of_range when there is no such page.
void PaintPage(QPainter& painter, const Printout& printout, std::size_t page, double dpi = 0);

}  // namespace app::printing
