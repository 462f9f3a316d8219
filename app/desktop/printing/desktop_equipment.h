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
  /// the user's settings, when it arrived there. Where the destination decides, a report that was shown as pages may be
  /// printed as text.
  std::optional<PrintJob> Print(const PrintRequest& request) override;

 private:
  static std::optional<PrintJob> Preview(const PrintRequest& request);
  std::optional<PrintJob> Preview(const printing::Printout& printout, const PrintRequest& request);
  /// `made` goes to its place, or the text instead where that place wants it. Nothing when the person gave up.
  static std::optional<PrintJob> Send(const printing::Printout& made, const PrintRequest& request, bool ask);
};

}  // namespace app::desktop
