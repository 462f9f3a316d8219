// Printers and the scale of a station with windows.
#pragma once

#include <memory>
#include <optional>

#include "app/equipment.h"
#include "app/printing/delivery/delivery.h"
#include "app/printing/delivery/printer_choices.h"

namespace app::desktop {

class DesktopEquipment : public Equipment {
 public:
  std::unique_ptr<host::SerialPort> NewSerialPort(PortUse use) override;
  /// Pages are shown first where the request wants that. Where a report goes is asked once and then remembered among
  /// the user's settings, when it arrived there.
  std::optional<PrintJob> Print(const PrintRequest& request) override;

 private:
  std::optional<PrintJob> Preview(const printing::Printout& printout, const PrintRequest& request);
  /// Nothing when the person gave up.
  std::optional<PrintJob> Send(const printing::Printout& printout, host::UserSettings& settings, bool ask);
};

}  // namespace app::desktop
