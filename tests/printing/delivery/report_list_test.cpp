// The module's list of reports and the layouts of the program: each has what the other says.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "app/embedded.h"
#include "app/printing/delivery/destination.h"
#include "app/printing/delivery/print_type.h"
#include "app/printing/delivery/printer_choices.h"
#include "app/reports.h"
#include "module/screens.h"
#include "support/kept_settings.h"

namespace {

using app::printing::Choice;
using app::printing::Destination;
using app::printing::KnownReport;
using app::printing::KnownReports;
using app::printing::ReadRoute;
using app::printing::Route;
using app::printing::StoreRoute;
using host::ReportLayouts;
using testing::ElementsAre;
using Kind = Destination::Kind;

std::span<const host::ListedReport> List() { return app::ReportsOf(tecelagem::TheModule()); }

// --- the list and the layouts ----------------------------------------------------------------------------------------

TEST(ReportList, EveryReportHasTheLayoutsThatItDeclaresAndNoOtherIsCompiledIn) {
  std::set<std::string> declared;
  for (const host::ListedReport& report : List()) {
    if (HasDrawn(report.layouts)) declared.insert(std::string(report.name) + ".js");
    if (HasText(report.layouts)) declared.insert(std::string(report.name) + ".text.js");
  }
  std::set<std::string> compiled_in;
  for (const app::EmbeddedFile& file : app::LayoutFiles()) compiled_in.emplace(file.name);
  EXPECT_EQ(declared, compiled_in);
}

TEST(ReportList, EveryReportIsOnceByNameWithWhatPeopleRead) {
  std::vector<std::string> names;
  std::set<std::string> captions;
  for (const host::ListedReport& report : List()) {
    names.emplace_back(report.name);
    captions.emplace(report.caption);
    EXPECT_NE(std::string(report.print_script).find("open("), std::string::npos) << report.name;
    for (const host::ReportArgument& argument : app::ArgumentsOf(report)) {
      EXPECT_STRNE(argument.caption, "") << report.name << " --" << argument.name;
      EXPECT_STRNE(argument.value, "") << report.name << " --" << argument.name;
    }
  }
  ASSERT_FALSE(names.empty());
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
  EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
  EXPECT_EQ(captions.size(), names.size());
  EXPECT_FALSE(captions.contains(""));
}

// --- the rule of printers --------------------------------------------------------------------------------------------

constexpr host::ListedReport Toy(const char* name, ReportLayouts layouts) {
  return {name, "Brinquedo", layouts, nullptr, 0, ""};
}
constexpr host::ListedReport kByDestination = Toy("WLista", ReportLayouts::kBothByDestination);
constexpr host::ListedReport kByScreen = Toy("WEtiqueta", ReportLayouts::kBothByScreen);

const Route kPages{'W', {{Kind::kPrinter, "Laser"}, 2}};
const Route kText{'T', {{Kind::kQueue, "matricial"}, 1}};

class Routes : public testing::Test {
 protected:
  std::optional<Route> Of(const host::ListedReport& report, char kind = 'W') {
    return ReadRoute(settings_, {report.name, kind}, &report);
  }
  void Store(const host::ListedReport& report, const Route& route) {
    StoreRoute(settings_, report.name, route, &report);
  }

  test::KeptSettings settings_;
};

TEST_F(Routes, WithoutAChoiceThereIsNone) {
  EXPECT_EQ(Of(kByDestination), std::nullopt);
  EXPECT_EQ(Of(kByScreen), std::nullopt);
  Store(kByDestination, kPages);
  EXPECT_EQ(Of(kByDestination), kPages);
}

TEST_F(Routes, ATextsPlaceIsWhereAReportGoesWhoseDestinationDecides) {
  Store(kByDestination, kText);
  EXPECT_EQ(Of(kByDestination), kText);
}

TEST_F(Routes, TheLastChoiceOfSuchAReportIsItsOnly) {
  Store(kByDestination, kPages);
  Store(kByDestination, kText);
  EXPECT_EQ(Of(kByDestination), kText);
  EXPECT_EQ(app::printing::ReadChoice(settings_, {"WLista", 'W'}), std::nullopt);
  Store(kByDestination, kPages);
  EXPECT_EQ(Of(kByDestination), kPages);
  EXPECT_EQ(app::printing::ReadChoice(settings_, {"WLista", 'T'}), std::nullopt);
}

TEST_F(Routes, WhereTheScreenAsksEachTypeHasItsOwn) {
  Store(kByScreen, kText);
  EXPECT_EQ(Of(kByScreen, 'W'), std::nullopt);
  EXPECT_EQ(Of(kByScreen, 'T'), kText);
  Store(kByScreen, kPages);
  EXPECT_EQ(Of(kByScreen, 'W'), kPages);
  EXPECT_EQ(Of(kByScreen, 'T'), kText);
}

TEST_F(Routes, AReportOfNoListGoesAsTheScreenSays) {
  StoreRoute(settings_, "WNossa", kText, nullptr);
  EXPECT_EQ(ReadRoute(settings_, {"WNossa", 'W'}, nullptr), std::nullopt);
  EXPECT_EQ(ReadRoute(settings_, {"WNossa", 'T'}, nullptr), kText);
}

TEST(PrintType, ADestinationGetsWhatItTakes) {
  for (const Kind kind : {Kind::kQueue, Kind::kDevice, Kind::kAddress}) {
    EXPECT_EQ(app::printing::KindFor(kind, 'W'), 'T');
    EXPECT_EQ(app::printing::KindFor(kind, 'T'), 'T');
  }
  EXPECT_EQ(app::printing::KindFor(Kind::kPrinter, 'T'), 'W');
  EXPECT_EQ(app::printing::KindFor(Kind::kFile, 'W'), 'W');
  EXPECT_EQ(app::printing::KindFor(Kind::kFile, 'T'), 'T');
}

TEST(PrintersOfTheStation, EveryListedReportIsOfferedInItsTypes) {
  const std::vector<host::ListedReport> toys = {kByScreen, Toy("WFicha", ReportLayouts::kDrawn), kByDestination,
                                                Toy("WMapa", ReportLayouts::kText)};
  EXPECT_THAT(KnownReports(toys, ""),
              ElementsAre(KnownReport{"WEtiqueta", 'W'}, KnownReport{"WEtiqueta", 'T'}, KnownReport{"WFicha", 'W'},
                          KnownReport{"WLista", 'W'}, KnownReport{"WLista", 'T'}, KnownReport{"WMapa", 'T'}));
  EXPECT_TRUE(KnownReports({}, "").empty());
}

TEST(PrintersOfTheStation, PeopleReadTheCaption) {
  EXPECT_EQ(app::printing::ReportCaption("WLista", &kByDestination), "Brinquedo (WLista)");
  EXPECT_EQ(app::printing::ReportCaption("NossaLista", nullptr), "NossaLista");
}

}  // namespace
