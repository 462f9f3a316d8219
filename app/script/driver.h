// A person's work at the screens, written down as a JavaScript file.
#pragma once

#include <chrono>
#include <iosfwd>
#include <map>
#include <string>
#include <string_view>

#include "app/application.h"
#include "app/operator/scripted_person.h"

namespace app::script {

struct RunOptions {
  std::string name;                               // of the file, for messages
  std::chrono::milliseconds timeout{0};           // a script that runs longer is ended; 0 for no limit
  std::ostream& output;                           // what the script prints
  std::ostream& notes;                            // questions that no answer was prepared for
  std::map<std::string, std::string> given = {};  // what the script finds in its object `given`
};

struct RunResult {
  bool ok = true;
  std::string error;   // one line, "FILE:LINE: text" where a line is known; empty when ok
  std::string thrown;  // the text alone of what the script threw; empty when it ended in another way
};

/// Runs a script on the program's screens. It fails on an exception that the script did not catch, on an assertion
/// that did not hold (even a caught one), on an error of the program that nobody caught, when something prepared
/// (answer, lookup, modal) was never asked for, and when the time is over. What the script's acts made durable stays.
/// `person` must be the one `application` was started with; what it still had prepared is used by the script.
RunResult Run(Application& application, ScriptedPerson& person, std::string_view source, const RunOptions& options);

}  // namespace app::script
