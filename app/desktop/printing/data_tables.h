// The rows of a printout as a spreadsheet's.
#pragma once

#include <vector>

#include "app/desktop/grid/table_export.h"
#include "app/printing/page/printout.h"

namespace app::desktop {

/// One table per table of the report, named for it; those of a report without titles are numbered.
std::vector<Table> DataTables(const printing::Printout& printout);

}  // namespace app::desktop
