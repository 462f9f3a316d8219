// The command line, read.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/cli/report_arguments.h"
#include "host/module.h"

namespace app::cli {

enum class Command { kDesktop, kInit, kDemo, kImport, kScript, kPrint, kCheck, kScaleSimulator, kVersion };

struct Arguments {
  Command command = Command::kDesktop;
  std::string database;                 // a file or "host/port:path"; desktop: may be empty
  std::string user = "ADMIN";           // who works; at a server also its user
  std::optional<std::string> password;  // nothing when it was neither given nor in the environment
  std::string company = "001";
  bool statement_cache = true;
  std::string table;     // import: logical name
  std::string file;      // import, script
  double timeout = 0;    // script: seconds, 0 for no limit
  std::string jobs;      // script: folder for what is printed; empty for one that goes at the end
  std::string report;    // print: its name
  GivenArguments given;  // print: what the report is told, not checked yet
  bool text = false;     // print: print type text
  std::string pdf;       // print: exactly one of these three is not empty
  std::string output;
  std::string to;
  int protocol = 0;  // scale-simulator, and all below: see scale::SimulatorOptions
  std::string behaviour = "steady";
  double weight = 20.5;
  int decimals = 2;
  int interval = 100;  // milliseconds
  std::string link;
  double seconds = 0;       // 0 until Ctrl+C
  bool user_given = false;  // the user was named on the command line
  bool ask = false;         // desktop: user and password are only proposed
};

/// The command line could not be understood; what() is one line for standard error.
struct UsageError {
  std::string text;
};

/// Reads the command line. Prints the help and hands back nothing when it was asked for; throws UsageError. `module` is
/// called where its list of reports is needed, and what it throws comes out.
std::optional<Arguments> ReadArguments(int count, const char* const* values,
                                       const std::function<const host::Module&()>& module);

}  // namespace app::cli
