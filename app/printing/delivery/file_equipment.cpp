#include "app/printing/delivery/file_equipment.h"

#include <utility>

#include "app/printing/delivery/delivery.h"
#include "app/printing/delivery/print_type.h"
#include "app/printing/layout/make_printout.h"
#include "app/printing/page/printout.h"
#include "app/serial/port.h"

namespace app::printing {

FileEquipment::FileEquipment(std::string to, bool in_text) : to_(std::move(to)), in_text_(in_text) {}

std::unique_ptr<host::SerialPort> FileEquipment::NewSerialPort(PortUse use) { return serial::NewPort(std::move(use)); }

std::optional<PrintJob> FileEquipment::Print(const PrintRequest& request) {
  const bool as_text = in_text_ && DestinationDecides(request);
  const Printout printout = MakePrintout(as_text ? AsText(request) : request);
  return Deliver(printout, {ParseDestination(to_, KindOf(printout)), 1});
}

}  // namespace app::printing
