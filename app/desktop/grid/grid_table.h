// What a grid shows, as a table that leaves the program.
#pragma once

#include <QFontMetrics>
#include <QString>

#include "app/desktop/grid/grid_view.h"
#include "app/desktop/grid/table_export.h"

namespace app::desktop {

/// The cells of the block, with their captions. Check boxes as "S" and "N", as they are typed.
Table TableOf(const GridModel& model, const GridView& view, const Block& block, const QString& title);
/// All rows shown and all columns.
Block WholeList(const GridModel& model, const GridView& view);

}  // namespace app::desktop
