// Printers and a scale that are not there: what was sent to them is kept, what the scale says is prepared.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/equipment.h"
#include "support/fake_scale.h"

namespace test {

/// A row of a dataset as a layout would read it: field name in capitals to value.
using PrintedRow = std::map<std::string, host::Value>;

class FakeEquipment : public app::Equipment {
 public:
  struct Print {
    std::string report;
    char kind;
    host::ReportFlags flags;
    host::Report* unknown_functions;
    std::map<std::string, std::vector<PrintedRow>> data;  // by dataset name
    std::map<std::string, std::size_t> current;           // 1-based row that the cursor stands on, 0 for none
  };

  std::unique_ptr<host::SerialPort> NewSerialPort(app::PortUse use) override { return scale_.NewPort(std::move(use)); }
  FakeScale& Scale() { return scale_; }
  /// Keeps the datasets of the owner as they are now.
  std::optional<app::PrintJob> Print(const app::PrintRequest& request) override;

  /// Printed since the last call.
  std::vector<struct Print> TakePrints();
  /// The next print fails with this sentence.
  std::string fail_next;

 private:
  FakeScale scale_;
  std::vector<struct Print> prints_;
};

}  // namespace test
