#include "app/printing/delivery/printer_choices.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>

#include "app/embedded.h"
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

void AddLayout(std::vector<KnownReport>& reports, std::string_view file) {
  for (const auto& [ending, kind] : {std::pair(kTextEnding, 'T'), std::pair(kEnding, 'W')}) {
    if (file.size() <= ending.size() || !file.ends_with(ending)) continue;
    const KnownReport report{std::string(file.substr(0, file.size() - ending.size())), kind};
    if (std::find(reports.begin(), reports.end(), report) == reports.end()) reports.push_back(report);
    return;
  }
}

int CopiesFrom(const std::string& text) {
  int copies = 1;
  std::from_chars(text.data(), text.data() + text.size(), copies);
  return std::clamp(copies, 1, kMostCopies);
}

}  // namespace

std::string ReportCaption(const std::string& report) {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 2> kCaptions = {
      {{"WEtqTecRolo", "Etiqueta do rolo"}, {"WTecLoteCad", "Ordem de tecelagem"}}};
  for (const auto& [name, caption] : kCaptions) {
    if (name == report) return std::string(caption) + " (" + report + ")";
  }
  return report;
}

std::vector<KnownReport> KnownReports(const std::string& layouts_folder) {
  std::vector<KnownReport> reports;
  for (const EmbeddedFile& file : LayoutFiles()) AddLayout(reports, file.name);
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

}  // namespace app::printing
