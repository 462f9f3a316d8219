#include "app/printing/delivery/printer_choices.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>

#include "app/printing/delivery/print_type.h"
#include "host/errors.h"

namespace app::printing {
namespace {

namespace fs = std::filesystem;

constexpr const char* kKey = "Tecelagem";
constexpr const char* kSection = "Impressoras";
constexpr std::string_view kTextEnding = ".text.js";
constexpr std::string_view kEnding = ".js";

std::string NameOf(const KnownReport& report) { return report.report + "." + report.kind; }
std::string CopiesNameOf(const KnownReport& report) { return NameOf(report) + ".Copias"; }

void Add(std::vector<KnownReport>& reports, const KnownReport& report) {
  if (std::find(reports.begin(), reports.end(), report) == reports.end()) reports.push_back(report);
}

void AddLayout(std::vector<KnownReport>& reports, std::string_view file) {
  for (const auto& [ending, kind] : {std::pair(kTextEnding, 'T'), std::pair(kEnding, 'W')}) {
    if (file.size() <= ending.size() || !file.ends_with(ending)) continue;
    Add(reports, {std::string(file.substr(0, file.size() - ending.size())), kind});
    return;
  }
}

int CopiesFrom(const std::string& text) {
  int copies = 1;
  std::from_chars(text.data(), text.data() + text.size(), copies);
  return std::clamp(copies, 1, kMostCopies);
}

}  // namespace

std::string ReportCaption(const std::string& report, const host::ListedReport* listed) {
  return listed == nullptr ? report : std::string(listed->caption) + " (" + report + ")";
}

std::vector<KnownReport> KnownReports(std::span<const host::ListedReport> listed, const std::string& layouts_folder) {
  std::vector<KnownReport> reports;
  for (const host::ListedReport& report : listed) {
    if (HasDrawn(report.layouts)) Add(reports, {report.name, 'W'});
    if (HasText(report.layouts)) Add(reports, {report.name, 'T'});
  }
  std::error_code none;
  if (!layouts_folder.empty()) {
    for (const auto& entry : fs::directory_iterator(layouts_folder, none)) {
      AddLayout(reports, entry.path().filename().string());
    }
  }
  // 'W' before 'T'.
  std::sort(reports.begin(), reports.end(), [](const KnownReport& left, const KnownReport& right) {
    return std::tuple(left.report, -left.kind) < std::tuple(right.report, -right.kind);
  });
  return reports;
}

std::optional<Choice> ReadChoice(host::UserSettings& settings, const KnownReport& report) {
  const auto stored = settings.Read(kKey, kSection, NameOf(report));
  if (!stored || stored->empty()) return std::nullopt;
  try {
    return Choice{ParseDestination(*stored, report.kind),
                  CopiesFrom(settings.Read(kKey, kSection, CopiesNameOf(report)).value_or(""))};
  } catch (const host::InputError&) {
    return std::nullopt;
  }
}

void StoreChoice(host::UserSettings& settings, const KnownReport& report, const Choice& choice) {
  if (ReadChoice(settings, report) == choice) return;
  settings.Write(kKey, kSection, NameOf(report), ToText(choice.destination));
  settings.Write(kKey, kSection, CopiesNameOf(report), std::to_string(choice.copies));
}

void ForgetChoice(host::UserSettings& settings, const KnownReport& report) {
  settings.Write(kKey, kSection, NameOf(report), "");
}

std::optional<Route> ReadRoute(host::UserSettings& settings, const KnownReport& asked,
                               const host::ListedReport* listed) {
  if (MakesPages(asked.kind) && DestinationDecides(listed)) {
    if (const auto text = ReadChoice(settings, {asked.report, 'T'})) return Route{'T', *text};
  }
  const auto choice = ReadChoice(settings, asked);
  return choice ? std::optional(Route{asked.kind, *choice}) : std::nullopt;
}

void StoreRoute(host::UserSettings& settings, const std::string& report, const Route& route,
                const host::ListedReport* listed) {
  StoreChoice(settings, {report, route.kind}, route.choice);
  if (!DestinationDecides(listed)) return;
  const KnownReport other{report, route.kind == 'T' ? 'W' : 'T'};
  if (ReadChoice(settings, other)) ForgetChoice(settings, other);
}

}  // namespace app::printing
