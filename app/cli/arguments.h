// The command line, read.
#pragma once

#include <optional>
#include <string>

namespace app::cli {

enum class Command { kInit, kDemo, kImport, kScript, kCheck, kVersion };

struct Arguments {
  Command command = Command::kVersion;
  std::string database;                 // a file or "host/port:path"
  std::string user = "ADMIN";           // who works; at a server also its user
  std::optional<std::string> password;  // nothing when it was neither given nor in the environment
  std::string company = "001";
  bool statement_cache = true;
  std::string table;   // import: logical name
  std::string file;    // import, script
  double timeout = 0;  // script: seconds, 0 for no limit
};

/// The command line could not be understood; what() is one line for standard error.
struct UsageError {
  std::string text;
};

/// Reads the command line. Prints the help and hands back nothing when it was asked for; throws UsageError.
std::optional<Arguments> ReadArguments(int count, const char* const* values);

}  // namespace app::cli
