#include "app/printing/delivery/print_type.h"

#include "app/printing/delivery/destination.h"

namespace app::printing {

bool DestinationDecides(const host::ListedReport* listed) {
  return listed != nullptr && listed->layouts == host::ReportLayouts::kBothByDestination;
}

bool DestinationDecides(const PrintRequest& request) {
  return MakesPages(request.kind) && DestinationDecides(request.listed);
}

PrintRequest AsText(PrintRequest request) {
  request.kind = 'T';
  request.unknown_functions = request.text_functions;
  return request;
}

}  // namespace app::printing
