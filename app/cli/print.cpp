#include "app/cli/print.h"

#include <sstream>
#include <utility>

#include "app/reports.h"
#include "app/script/driver.h"
#include "host/errors.h"

namespace app::cli {

ReportToPrint Printable(const host::Module& module, const Arguments& arguments) {
  const host::ListedReport& report = ReportNamed(ReportsOf(module), arguments.report);
  GivenArguments given = CheckedArguments(report, arguments.given);
  const char kind = arguments.text ? 'T' : 'W';
  CheckHasLayout(report, kind);
  if (arguments.text && !arguments.pdf.empty()) {
    throw host::InputError("um relatório em texto não vira PDF: use --output ou --to.");
  }
  return {report, kind, std::move(given)};
}

std::string PrintTo(const Arguments& arguments) {
  const std::string& file = arguments.pdf.empty() ? arguments.output : arguments.pdf;
  return file.empty() ? arguments.to : "arquivo:" + file;
}

std::vector<PrintJob> Print(Application& application, ScriptedPerson& person, const ReportToPrint& wanted) {
  const std::string name = wanted.report.name;
  std::ostringstream output;
  std::ostringstream notes;
  script::RunOptions options{name + ".js", std::chrono::milliseconds(0), output, notes, wanted.given};
  options.given["type"] = std::string(1, wanted.kind);
  const script::RunResult result = script::Run(application, person, wanted.report.print_script, options);
  if (!result.ok) throw host::InputError(result.thrown.empty() ? result.error : result.thrown);
  std::vector<PrintJob> jobs = application.TakeJobs();
  if (jobs.empty()) throw host::InputError("a tela não imprimiu o relatório " + name + ".");
  return jobs;
}

}  // namespace app::cli
