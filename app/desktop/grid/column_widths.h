// How wide the columns of a grid are before a person changes them.
#pragma once

#include <QFontMetrics>
#include <vector>

#include "app/desktop/grid/grid_model.h"

namespace app::desktop {

/// Width of a column in pixels: what the column asks for, else what suits its field and its caption.
int NaturalWidth(const GridModel& model, int column, const QFontMetrics& metrics);
/// The natural widths of all columns; room that is left over goes to the long texts. Where a little is missing these
/// are shortened, so that every column is in sight.
std::vector<int> NaturalWidths(const GridModel& model, const QFontMetrics& metrics, int room);

}  // namespace app::desktop
