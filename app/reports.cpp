#include "app/reports.h"

#include <algorithm>

namespace app {

std::span<const host::ListedReport> ReportsOf(const host::Module& module) {
  return {module.reports, module.report_count};
}

std::span<const host::ReportArgument> ArgumentsOf(const host::ListedReport& report) {
  return {report.arguments, report.argument_count};
}

const host::ListedReport* FindReport(std::span<const host::ListedReport> reports, std::string_view name) {
  const auto found = std::find_if(reports.begin(), reports.end(),
                                  [name](const host::ListedReport& report) { return report.name == name; });
  return found == reports.end() ? nullptr : &*found;
}

}  // namespace app
