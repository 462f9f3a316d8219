#include "app/printing/delivery/file_equipment.h"

#include <utility>

#include "app/printing/delivery/delivery.h"
#include "app/printing/layout/make_printout.h"
#include "app/printing/page/printout.h"
#include "app/serial/port.h"

namespace app::printing {

FileEquipment::FileEquipment(std::string to) : to_(std::move(to)) {}

std::unique_ptr<host::SerialPort> FileEquipment::NewSerialPort(PortUse use) { return serial::NewPort(std::move(use)); }

std::optional<PrintJob> FileEquipment::Print(const PrintRequest& request) {
  const Printout printout = MakePrintout(request);
  return Deliver(printout, {ParseDestination(to_, KindOf(printout)), 1});
}

}  // namespace app::printing
