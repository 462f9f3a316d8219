// Compositions that do not make 100%, and their recalculation.
#include "composition_mill.h"

namespace test {
namespace {

using host::ActResult;
using Lines = std::vector<std::string>;

constexpr const char* kAsk = "Composição incorreta. Deseja recalcular?";
constexpr const char* kNotWhole = "Composição dos Materiais <> 100%. Verifique.";

using Percentages = CompositionTest;

TEST_F(Percentages, RecalculatesOnYes) {
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"LFA", "300"}, {"ROCA", "1"}}), ActResult::kDone);
  ASSERT_EQ(AppendYarn({{"Codigo", "F2"}, {"LFA", "600"}, {"ROCA", "1"}}), ActResult::kDone);
  mill_.Person().Answer(kAsk, "yes");
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{kAsk});
  // 300 / 30 against 600 / 20
  EXPECT_EQ(Composition("M2"), (Lines{"F1 1 01 ***** 25", "F2 2 01 ***** 75"}));
}

TEST_F(Percentages, IsAQuestionWithNoAsDefaultAndNoOnlySkips) {
  Store("M2", {.yarn = "F1", .percentage = 99.96});
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone);
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, kAsk);
  EXPECT_EQ(shown[0].title, "Cadastro de Composição");
  EXPECT_EQ(shown[0].icon, host::Icon::kQuestion);
  EXPECT_EQ(Composition("M2"), Lines{"F1 1 01 CRU 99.96"});
}

TEST_F(Percentages, TheLastRowChoosesBetweenQuestionAndMessage) {
  Store("M2", {.yarn = "F1", .position = 1, .percentage = 10});
  Store("M2", {.yarn = "F0", .position = 2, .percentage = 10});
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone);
  auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, kNotWhole);
  EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
  EXPECT_EQ(Composition("M2").size(), 2u);

  mill_.Exec("UPDATE {COMP_MATERIAL} SET ORDEM = 3 WHERE CODIGO = 'F1'");
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{kAsk});
}

TEST_F(Percentages, AnEmptyGridIsToldAndStoredAsNothing) {
  Store("M2", {.yarn = "F1"});
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  ASSERT_EQ(mill_.Desk().DeleteRow(Screen().GrdComposi), ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{kNotWhole});
  EXPECT_EQ(Composition("M2"), Lines{});
}

TEST_F(Percentages, PercentagesTypedWithDecimalsMakeAHundred) {
  // As doubles these add up to 100.00000000000001.
  const Lines shares = {"9,7", "34,7", "31,7", "13,9", "10"};
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  for (const auto& share : shares) {
    ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"LFA", "1"}, {"ROCA", "1"}, {"Perc", share}}), ActResult::kDone);
  }
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{});
  EXPECT_EQ(Composition("M2").size(), 5u);
}

TEST_F(Percentages, WithoutConsumptionNothingCanBeCalculated) {
  // Whole feeders and courses: 0,4 is none.
  Store("M2", {.yarn = "F1", .lfa = 0.4, .roca = 1, .percentage = 12.5});
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  mill_.Person().Answer(kAsk, "yes");
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), (Lines{kAsk, "Problemas no cálculo, verifique os dados."}));
  EXPECT_EQ(Composition("M2"), Lines{"F1 1 01 CRU 12.5"});
}

TEST_F(Percentages, OppositeConsumptionsCannotBeCalculatedEither) {
  Store("M2", {.yarn = "F1", .position = 1, .lfa = -250, .percentage = 1});
  Store("M2", {.yarn = "F1", .position = 2, .lfa = 250, .percentage = 2});
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  mill_.Person().Answer(kAsk, "yes");
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), (Lines{kAsk, "Problemas no cálculo, verifique os dados."}));
  EXPECT_EQ(Composition("M2"), (Lines{"F1 1 01 CRU 1", "F1 2 01 CRU 2"}));
}

TEST_F(Percentages, ACalculationThatStillMissesAHundredIsTold) {
  // Consumptions that nearly cancel each other: the shares are so large that their sum cannot hold the hundred.
  Store("M2", {.yarn = "F1", .position = 1, .lfa = -999999999999998, .roca = 1, .percentage = 0});
  Store("M2", {.yarn = "F1", .position = 2, .lfa = 999999999999999, .roca = 1, .percentage = 0});
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  mill_.Person().Answer(kAsk, "yes");
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), (Lines{kAsk, "Composição dos Materiais <> 100%."}));
  EXPECT_EQ(Composition("M2").size(), 2u);
}

TEST_F(Percentages, RecalculationTakesWholeNumbersAndACountOfOneForNone) {
  Store("M2", {.yarn = "F0", .position = 1, .lfa = 2.5, .roca = 1.5, .percentage = 0});
  Store("M2", {.yarn = "F2", .position = 2, .lfa = 39.6, .roca = 2.6, .percentage = 0});
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  Screen().Calcula_Comp("M2");
  // 3 x 2 / 1 against 40 x 3 / 20
  EXPECT_EQ(Cell(1, "Consumo"), "0,0354");
  EXPECT_EQ(Cell(2, "Consumo"), "0,0354");
  EXPECT_EQ(Cell(1, "Perc"), "50,0000");
  EXPECT_EQ(Cell(2, "Perc"), "50,0000");
  EXPECT_EQ(mill_.Messages(), Lines{});
}

}  // namespace
}  // namespace test
