// Pages or text: in which of its two layouts a report is printed.
#pragma once

#include "app/equipment.h"

namespace app::printing {

/// True when a report has both layouts and its screen, which asks for pages, leaves it to the destination which of them
/// is printed. `listed` is null for a report that is not of the module's list: a screen's word holds then.
bool DestinationDecides(const host::ListedReport* listed);
/// The same, for a report that was asked for in pages.
bool DestinationDecides(const PrintRequest& request);

/// The request for the report's text.
PrintRequest AsText(PrintRequest request);

}  // namespace app::printing
