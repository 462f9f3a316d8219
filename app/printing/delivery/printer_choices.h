// Where each report goes on this station, remembered among the user's settings.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/printing/delivery/delivery.h"
#include "host/host.h"
#include "host/module.h"

namespace app::printing {

/// A layout that can be printed here: of a report of the module's list, or the installation's.
struct KnownReport {
  std::string report;
  char kind;  // 'W' or 'T'

  bool operator==(const KnownReport&) const = default;
};
/// For people, who do not know layouts by their names: caption and name, "Ordem (WOrdem)"; the name alone of an
/// installation's own report, which no list has (`listed` is null).
std::string ReportCaption(const std::string& report, const host::ListedReport* listed);
/// By name, graphic before text.
std::vector<KnownReport> KnownReports(std::span<const host::ListedReport> reports, const std::string& layouts_folder);

/// Nothing when none was made yet or what is stored cannot be understood.
std::optional<Choice> ReadChoice(host::UserSettings& settings, const KnownReport& report);
/// Throws host::InputError when it cannot be stored; it holds for this run of the program all the same.
void StoreChoice(host::UserSettings& settings, const KnownReport& report, const Choice& choice);
/// The next print asks again.
void ForgetChoice(host::UserSettings& settings, const KnownReport& report);

/// Where a report goes, and as what.
struct Route {
  char kind = 'W';  // 'W' or 'T'
  Choice choice;

  bool operator==(const Route&) const = default;
};
/// How this station prints what a screen asks for: the choice made for that print type. Where the destination decides
/// (see DestinationDecides) and one was chosen for the text, that one. Nothing when none was made.
std::optional<Route> ReadRoute(host::UserSettings& settings, const KnownReport& asked,
                               const host::ListedReport* listed);
/// Stores the choice for its print type. Where the destination decides, the other type's choice is forgotten: such a
/// report goes to one place, the one chosen last. Throws as StoreChoice does.
void StoreRoute(host::UserSettings& settings, const std::string& report, const Route& route,
                const host::ListedReport* listed);

}  // namespace app::printing
