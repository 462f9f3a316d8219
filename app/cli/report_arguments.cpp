#include "app/cli/report_arguments.h"

#include <algorithm>
#include <optional>

#include "app/cli/arguments.h"
#include "app/reports.h"
#include "host/date.h"
#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::cli {
namespace {

using host::ArgumentKind;

[[noreturn]] void Refuse(const std::string& why) { throw UsageError{why + " (veja tecelagem print --help)"}; }

// The value as a script finds it, nothing when it is none of that kind.
std::optional<std::string> Understood(ArgumentKind kind, const std::string& typed) {
  const std::string text = host::Trim(typed);
  switch (kind) {
    case ArgumentKind::kText:
      break;
    case ArgumentKind::kNumber: {
      const std::optional<int> number = host::ParseTypedInteger(text);
      if (!number || *number < 1) return std::nullopt;
      return std::to_string(*number);
    }
    case ArgumentKind::kDate: {
      const std::optional<host::Date> date = host::Date::FromDisplay(text);
      if (!date) return std::nullopt;
      return date->ToDisplay();
    }
  }
  if (text.empty()) return std::nullopt;
  return text;
}

const char* WhatIsWanted(ArgumentKind kind) {
  switch (kind) {
    case ArgumentKind::kNumber:
      return "um número inteiro, a partir de 1";
    case ArgumentKind::kDate:
      return "uma data, como 31/03/2026";
    case ArgumentKind::kText:
      break;
  }
  return "um valor";
}

const char* LayoutsInWords(host::ReportLayouts layouts) {
  if (!HasText(layouts)) return "páginas";
  return HasDrawn(layouts) ? "páginas ou texto" : "texto";
}

std::string Padded(std::string text) {
  constexpr std::size_t kWidth = 26;  // of the other options of the help
  const std::size_t length = host::Length(text);
  return text.append(length < kWidth ? kWidth - length : 1, ' ');
}

}  // namespace

const host::ListedReport& ReportNamed(std::span<const host::ListedReport> reports, const std::string& name) {
  if (const host::ListedReport* report = FindReport(reports, name)) return *report;
  std::string known;
  for (const host::ListedReport& report : reports) known += (known.empty() ? "" : ", ") + std::string(report.name);
  throw host::InputError("o relatório " + name + " não é impresso por este comando; os que são: " + known + ".");
}

void CheckHasLayout(const host::ListedReport& report, char kind) {
  const std::string name = report.name;
  if (kind == 'T' && !HasText(report.layouts)) {
    throw host::InputError("o relatório " + name + " só existe em páginas: deixe --text de fora.");
  }
  if (kind != 'T' && !HasDrawn(report.layouts)) {
    throw host::InputError("o relatório " + name + " só existe em texto: use --text.");
  }
}

GivenArguments CheckedArguments(const host::ListedReport& report, const GivenArguments& given) {
  const auto arguments = ArgumentsOf(report);
  for (const auto& entry : given) {
    const auto is_it = [&entry](const host::ReportArgument& argument) { return entry.first == argument.name; };
    if (std::none_of(arguments.begin(), arguments.end(), is_it)) {
      Refuse("o relatório " + std::string(report.name) + " não tem o argumento --" + entry.first);
    }
  }
  GivenArguments checked;
  for (const host::ReportArgument& argument : arguments) {
    const auto entry = given.find(argument.name);
    if (entry == given.end()) {
      if (argument.required) Refuse("falta o argumento --" + std::string(argument.name));
      continue;
    }
    const std::optional<std::string> value = Understood(argument.kind, entry->second);
    if (!value) {
      Refuse("valor inválido: --" + entry->first + " \"" + entry->second + "\" não é " + WhatIsWanted(argument.kind));
    }
    checked[argument.name] = *value;
  }
  return checked;
}

std::string HelpOnReports(std::span<const host::ListedReport> reports) {
  std::string help = "Relatórios:\n";
  for (const host::ListedReport& report : reports) {
    help += Padded("  " + std::string(report.name)) + report.caption + " (" + LayoutsInWords(report.layouts) + ")\n";
    for (const host::ReportArgument& argument : ArgumentsOf(report)) {
      help += Padded("    --" + std::string(argument.name) + " " + argument.value) + argument.caption +
              (argument.required ? "" : " (opcional)") + "\n";
    }
  }
  return help;
}

}  // namespace app::cli
