// Where each report goes on this station, remembered among the user's settings.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/printing/delivery/delivery.h"
#include "host/host.h"

namespace app::printing {

/// A layout that can be printed here: the program's own, or the installation's.
struct KnownReport {
  std::string report;
  char kind;  // 'W' or 'T'

  bool operator==(const KnownReport&) const = default;
};
/// For people, who do not know layouts by their names: "Etiqueta do rolo (WEtqTecRolo)"; of an installation's own
/// reports the name alone.
std::string ReportCaption(const std::string& report);
/// By name, graphic before text.
std::vector<KnownReport> KnownReports(const std::string& layouts_folder);

/// Nothing when none was made yet or what is stored cannot be understood.
std::optional<Choice> ReadChoice(host::UserSettings& settings, const KnownReport& report);
/// Throws host::InputError when it cannot be stored; it holds for this run of the program all the same.
void StoreChoice(host::UserSettings& settings, const KnownReport& report, const Choice& choice);
/// The next print asks again.
void ForgetChoice(host::UserSettings& settings, const KnownReport& report);

}  // namespace app::printing
