// What stands beside the station of the walk: a scale at the far end of a pseudo-terminal, and a folder as printer.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "app/desktop/printing/desktop_equipment.h"
#include "app/scale/simulator.h"
#include "desktop/tour/camera.h"

namespace tour {

/// The station's own printing and port, as on a real one. Of a label that is drawn there is a picture each time.
class Devices : public app::Equipment {
 public:
  /// `folder` is there, and takes the scale's port and what is printed.
  Devices(const std::string& folder, const Camera& camera);
  ~Devices() override;
  Devices(const Devices&) = delete;
  Devices& operator=(const Devices&) = delete;

  std::unique_ptr<host::SerialPort> NewSerialPort(app::PortUse use) override;
  std::optional<app::PrintJob> Print(const app::PrintRequest& request) override;

  const std::string& ScalePort() const { return scale_.PortName(); }
  void LayOnScale(double kilograms) { scale_.SetWeight(kilograms); }
  const std::string& Paper() const { return paper_; }

 private:
  const Camera& camera_;
  std::string paper_;
  app::desktop::DesktopEquipment station_;
  app::scale::Simulator scale_;
  std::jthread scale_at_work_;
};

}  // namespace tour
