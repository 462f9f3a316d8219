#include "app/cli/print.h"

#include <sstream>
#include <string_view>

#include "app/embedded.h"
#include "app/script/driver.h"
#include "host/errors.h"

namespace app::cli {
namespace {

constexpr std::string_view kEnding = ".js";
// The one that is printed for one roll, and in both print types.
constexpr std::string_view kRollLabel = "WEtqTecRolo";

std::string_view ReportOf(const EmbeddedFile& script) {
  return script.name.substr(0, script.name.size() - kEnding.size());
}

const EmbeddedFile& ScriptFor(const std::string& report) {
  std::string known;
  for (const EmbeddedFile& script : PrintScripts()) {
    if (ReportOf(script) == report) return script;
    known += (known.empty() ? "" : ", ") + std::string(ReportOf(script));
  }
  throw host::InputError("o relatório " + report + " não é impresso por este comando; os que são: " + known + ".");
}

}  // namespace

void CheckPrintable(const Arguments& arguments) {
  ScriptFor(arguments.report);
  const bool is_label = arguments.report == kRollLabel;
  if (is_label && arguments.roll == 0) {
    throw host::InputError("falta o rolo: a etiqueta " + arguments.report + " é de um rolo, --roll N.");
  }
  if (!is_label && arguments.roll != 0) {
    throw host::InputError("o relatório " + arguments.report + " é da ordem inteira: deixe --roll de fora.");
  }
  if (!is_label && arguments.text) {
    throw host::InputError("o relatório " + arguments.report + " só existe em páginas: deixe --text de fora.");
  }
  if (arguments.text && !arguments.pdf.empty()) {
    throw host::InputError("um relatório em texto não vira PDF: use --output ou --to.");
  }
}

std::string PrintTo(const Arguments& arguments) {
  const std::string& file = arguments.pdf.empty() ? arguments.output : arguments.pdf;
  return file.empty() ? arguments.to : "arquivo:" + file;
}

std::vector<PrintJob> Print(Application& application, ScriptedPerson& person, const Arguments& arguments) {
  const EmbeddedFile& script = ScriptFor(arguments.report);
  std::ostringstream output;
  std::ostringstream notes;
  script::RunOptions options{std::string(script.name), std::chrono::milliseconds(0), output, notes, {}};
  options.given = {{"order", arguments.order},
                   {"roll", std::to_string(arguments.roll)},
                   {"impression", arguments.text ? "Texto" : "Windows"}};
  const script::RunResult result = script::Run(application, person, script.text, options);
  if (!result.ok) throw host::InputError(result.thrown.empty() ? result.error : result.thrown);
  std::vector<PrintJob> jobs = application.TakeJobs();
  if (jobs.empty()) throw host::InputError("a tela não imprimiu o relatório " + arguments.report + ".");
  return jobs;
}

}  // namespace app::cli
