// A station without windows: scripts and commands print into files.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/equipment.h"

namespace app::printing {

/// The program must have a QGuiApplication. Nobody is shown a preview or asked for a printer.
class FileEquipment : public Equipment {
 public:
  /// Everything goes to `to`: a file (the last print replaces those before), a folder that gets a file for each print
  /// ("REPORT-1.txt"), or another destination as ParseDestination reads it. With `in_text` a report that a screen asks
  /// for in pages is printed as text where the destination decides that, see host::ReportLayouts.
  explicit FileEquipment(std::string to, bool in_text = false);

  std::unique_ptr<host::SerialPort> NewSerialPort(PortUse use) override;
  std::optional<PrintJob> Print(const PrintRequest& request) override;

 private:
  std::string to_;
  bool in_text_;
};

}  // namespace app::printing
