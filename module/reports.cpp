#include "module/reports.h"

#include "module/print_scripts.h"

namespace tecelagem {
namespace {

using host::ArgumentKind;
using host::ListedReport;
using host::ReportArgument;
using host::ReportLayouts;

template <std::size_t count>
constexpr ListedReport Report(const char* name, const char* caption, ReportLayouts layouts,
                              const ReportArgument (&arguments)[count], const char* print_script) {
  return {name, caption, layouts, arguments, count, print_script};
}

constexpr ReportArgument kOrder = {"order", "NUMERO", "Número da ordem de tecelagem", ArgumentKind::kText, true};

constexpr ReportArgument kOfOrder[] = {kOrder};
constexpr ReportArgument kOfRoll[] = {kOrder, {"roll", "N", "Rolo da ordem", ArgumentKind::kNumber, true}};

// The print script of each stands in module/print/. Its arguments may not be called as the options that the command has
// for every report: --to and --text are taken.
constexpr ListedReport kReports[] = {
    Report("WEtqTecRolo", "Etiqueta do rolo", ReportLayouts::kBothByScreen, kOfRoll, print_script::WEtqTecRolo),
    Report("WTecLoteCad", "Ordem de tecelagem", ReportLayouts::kBothByDestination, kOfOrder, print_script::WTecLoteCad),
};

}  // namespace

std::span<const ListedReport> ReportList() { return kReports; }

}  // namespace tecelagem
