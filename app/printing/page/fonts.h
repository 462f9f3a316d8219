// The fonts that text is measured and drawn with.
#pragma once

#include <QFont>

#include "app/printing/page/printout.h"

namespace app::printing {

/// Text is laid out in these dots, and drawn in them by a scaled painter: the glyphs are as wide on the screen as on
/// any printer, so that lines break alike everywhere.
inline constexpr int kTextDpi = 1200;
inline constexpr double kMillimetresPerInch = 25.4;
inline constexpr double kPointsPerInch = 72;

/// The style's font, in dots of kTextDpi on a device of `device_dpi`.
QFont FontOf(const TextStyle& style, double device_dpi);

/// Height of a line of this many points in millimetres, and where its baseline is below its top. The fonts' own line
/// spacing has room for the accents of all languages and would waste a quarter of every page.
constexpr double LineHeight(double points) { return points * 1.24 / kPointsPerInch * kMillimetresPerInch; }
constexpr double BaselineBelowTop(double points) { return points * 0.95 / kPointsPerInch * kMillimetresPerInch; }

}  // namespace app::printing
