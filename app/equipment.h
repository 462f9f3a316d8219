// What stands beside the computer: printers and a scale.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/scale/scale_settings.h"
#include "host/date.h"
#include "host/funcoes.h"
#include "host/host.h"
#include "host/kit/report.h"
#include "host/module.h"
#include "host/serial_port.h"

namespace app {

/// A report that a screen asks for. What is lent here outlives the call.
struct PrintRequest {
  std::string report;                          // name of its layout
  char kind = 'W';                             // 'W' graphic, 'T' text
  host::Report* unknown_functions = nullptr;   // who knows functions that the engine does not; null for nobody
  host::Report* text_functions = nullptr;      // the same when the text is printed instead of the pages asked for
  const host::ListedReport* listed = nullptr;  // in the module's list; null for a report that is not there
  host::Screen& owner;                         // its datasets, by component name
  host::ReportFlags flags;
  std::string user;
  std::string company;
  host::DateTime moment;
  std::string layouts_folder;  // the installation's own layouts; need not exist
  host::UserSettings& settings;
};

/// What was printed.
struct PrintJob {
  std::string report;
  char kind = 'W';
  std::string file;         // that the pages or bytes were written to; empty when they went to a printer
  std::string destination;  // printer, device or address; empty for a file
};

/// What a serial port needs of the program.
struct PortUse {
  host::UserSettings& settings;
  /// Shows the setup dialog; false when the person gave up.
  std::function<bool(scale::ScaleSettings&)> set_up;
  /// Runs this as an action of its own; false, and nothing is run, while the program is in the middle of another one.
  std::function<bool(const std::function<void()>&)> run;
};

class Equipment {
 public:
  virtual ~Equipment() = default;
  virtual std::unique_ptr<host::SerialPort> NewSerialPort(PortUse use) = 0;
  /// Nothing when the person gave up or only looked at the preview. Throws host::InputError, see
  /// host::Funcoes::Chama_Relatorio.
  virtual std::optional<PrintJob> Print(const PrintRequest& request) = 0;
};

}  // namespace app
