// What the command line says for a report, against what the report declares.
#include "app/cli/report_arguments.h"

#include <gtest/gtest.h>

#include <string>

#include "app/cli/arguments.h"
#include "host/errors.h"

namespace {

using app::cli::CheckedArguments;
using app::cli::GivenArguments;
using host::ArgumentKind;

constexpr host::ReportArgument kArguments[] = {
    {"from", "DATA", "Primeiro dia", ArgumentKind::kDate, true},
    {"mill", "CODIGO", "Malharia", ArgumentKind::kText, false},
    {"roll", "N", "Rolo", ArgumentKind::kNumber, false},
};
constexpr host::ListedReport kReports[] = {
    {"WBaixas", "Baixas", host::ReportLayouts::kDrawn, kArguments, 3, ""},
    {"WMapa", "Mapa", host::ReportLayouts::kText, nullptr, 0, ""},
};
constexpr const host::ListedReport& kRolls = kReports[0];

std::string WhyRefused(const host::ListedReport& report, const GivenArguments& given) {
  try {
    CheckedArguments(report, given);
  } catch (const app::cli::UsageError& error) {
    return error.text;
  }
  return {};
}
void ExpectRefused(const GivenArguments& given, const std::string& why) {
  EXPECT_EQ(WhyRefused(kRolls, given), why + " (veja tecelagem print --help)");
}

TEST(ReportArguments, ValuesAreMadeWhatAScriptTypes) {
  const GivenArguments typed{{"from", " 1/3/26 "}, {"mill", " 00101 "}, {"roll", "07"}};
  const GivenArguments found{{"from", "01/03/2026"}, {"mill", "00101"}, {"roll", "7"}};
  EXPECT_EQ(CheckedArguments(kRolls, typed), found);
}

TEST(ReportArguments, WhatMayBeLeftOutIsLeftOut) {
  EXPECT_EQ(CheckedArguments(kRolls, {{"from", "01/03/2026"}}), (GivenArguments{{"from", "01/03/2026"}}));
  EXPECT_TRUE(CheckedArguments(kReports[1], {}).empty());
}

TEST(ReportArguments, WhatIsMissingOrOfAnotherReportIsNamed) {
  ExpectRefused({{"mill", "00101"}}, "falta o argumento --from");
  ExpectRefused({{"from", "01/03/2026"}, {"order", "000001"}}, "o relatório WBaixas não tem o argumento --order");
  EXPECT_NE(WhyRefused(kReports[1], {{"mill", "00101"}}).find("WMapa não tem o argumento --mill"), std::string::npos);
}

TEST(ReportArguments, AValueOfAnotherKindIsRefused) {
  for (const char* none : {"31/02/2026", "2026-03-01", "ontem", ""}) {
    ExpectRefused({{"from", none}},
                  "valor inválido: --from \"" + std::string(none) + "\" não é uma data, como 31/03/2026");
  }
  for (const char* none : {"0", "-1", "1,5", "dois", ""}) {
    ExpectRefused({{"from", "01/03/2026"}, {"roll", none}},
                  "valor inválido: --roll \"" + std::string(none) + "\" não é um número inteiro, a partir de 1");
  }
  ExpectRefused({{"from", "01/03/2026"}, {"mill", " "}}, "valor inválido: --mill \" \" não é um valor");
}

TEST(ReportArguments, AReportIsFoundByItsName) {
  EXPECT_EQ(&app::cli::ReportNamed(kReports, "WMapa"), &kReports[1]);
  try {
    app::cli::ReportNamed(kReports, "wmapa");
    ADD_FAILURE() << "found";
  } catch (const host::InputError& error) {
    EXPECT_STREQ(error.what(), "o relatório wmapa não é impresso por este comando; os que são: WBaixas, WMapa.");
  }
}

TEST(ReportArguments, AReportHasOnlyItsLayouts) {
  const auto refused = [](const host::ListedReport& report, char kind) -> std::string {
    try {
      app::cli::CheckHasLayout(report, kind);
    } catch (const host::InputError& error) {
      return error.what();
    }
    return {};
  };
  EXPECT_EQ(refused(kReports[0], 'W'), "");
  EXPECT_EQ(refused(kReports[0], 'T'), "o relatório WBaixas só existe em páginas: deixe --text de fora.");
  EXPECT_EQ(refused(kReports[1], 'T'), "");
  EXPECT_EQ(refused(kReports[1], 'W'), "o relatório WMapa só existe em texto: use --text.");
}

TEST(ReportArguments, TheHelpTellsThemAll) {
  EXPECT_EQ(app::cli::HelpOnReports(kReports),
            "Relatórios:\n"
            "  WBaixas                 Baixas (páginas)\n"
            "    --from DATA           Primeiro dia\n"
            "    --mill CODIGO         Malharia (opcional)\n"
            "    --roll N              Rolo (opcional)\n"
            "  WMapa                   Mapa (texto)\n");
}

}  // namespace
