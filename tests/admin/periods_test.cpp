// Accounting periods: no day belongs to two of one area, and a reconciled one is closed.
#include <gtest/gtest.h>

#include "admin/admin_mill.h"

namespace {

using host::ActResult;
using test::Lines;

class PeriodsScreen : public test::AdminMill {
 protected:
  PeriodsScreen() {
    Add("IV", "2026-01-01", "2026-01-31", "S");
    Add("IV", "2026-02-01", "2026-02-28", "N");
  }
  void Add(const char* area, const char* from, const char* to, const char* reconciled) {
    mill_.Insert("TEC_PERIODO", {{"AREA", area}, {"DT_INICIO", from}, {"DT_FIM", to}, {"CONCILIADO", reconciled}});
  }
  host::Screen& Open() { return mill_.Open("TfmPeriodos"); }
  void Fill(host::Screen& screen, std::string_view area, std::string_view from, std::string_view to) {
    Fill(mill_, screen, area, from, to);
  }
  static void Fill(test::Mill& mill, host::Screen& screen, std::string_view area, std::string_view from,
                   std::string_view to) {
    if (Part<host::Button>(screen, "BtnIncluir").Enabled()) mill.Click(screen, "BtnIncluir");
    mill.Type(screen, "EdtArea", area);
    mill.Type(screen, "EdtDe", from);
    mill.Type(screen, "EdtAte", to);
  }
  Lines Stored() {
    Lines lines;
    for (auto& row : mill_.Rows("SELECT * FROM TEC_PERIODO ORDER BY AREA, DT_INICIO")) {
      lines.push_back(row["AREA"].AsText() + " " + row["DT_INICIO"].AsText() + " " + row["DT_FIM"].AsText() + " " +
                      row["CONCILIADO"].AsText());
    }
    return lines;
  }
  bool Reconciled(std::string_view iso) {
    return mill_.App().GetContabil().PeriodoConciliado(host::Date::FromIso(iso).value(), "IV");
  }
};

const Lines kAtFirst = {"IV 01/01/2026 31/01/2026 S", "IV 01/02/2026 28/02/2026 N"};

TEST_F(PeriodsScreen, ShowsTheNewestFirst) {
  host::Screen& screen = Open();
  EXPECT_EQ(mill_.Data(screen, "TbPeriodos").RecordCount(), 2u);
  EXPECT_EQ(mill_.Text(screen, "EdtDe"), "01/02/2026");
  EXPECT_FALSE(Ticked(screen, "ChkConciliado"));
  mill_.Desk().SelectRow(mill_.GridOf(screen, "TbPeriodos"), 2);
  EXPECT_EQ(mill_.Text(screen, "EdtAte"), "31/01/2026");
  EXPECT_TRUE(Ticked(screen, "ChkConciliado"));
}

TEST_F(PeriodsScreen, ReconcilingClosesTheDaysOfThePeriod) {
  host::Screen& screen = Open();
  EXPECT_FALSE(Reconciled("2026-02-28"));
  Tick(screen, "ChkConciliado", true);
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_TRUE(Reconciled("2026-02-28"));
  EXPECT_FALSE(Reconciled("2026-03-01"));
  EXPECT_EQ(Log("PERIODOS CONTABEIS"),
            Lines{"1|IV 01/02/2026|IV 01/02/2026 a 28/02/2026 -> IV 01/02/2026 a 28/02/2026, conciliado"});
}

TEST_F(PeriodsScreen, ANewPeriodFollowsTheNewestOfItsArea) {
  host::Screen& screen = Open();
  mill_.Click(screen, "BtnIncluir");
  EXPECT_EQ(mill_.Text(screen, "EdtArea"), "IV");
  EXPECT_EQ(mill_.Text(screen, "EdtDe"), "01/03/2026");
  EXPECT_FALSE(screen.HasUnsavedWork());
  mill_.Type(screen, "EdtAte", "31/03/2026");
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored().back(), "IV 01/03/2026 31/03/2026 N");
  EXPECT_EQ(Log("PERIODOS CONTABEIS"), Lines{"0|IV 01/03/2026|IV 01/03/2026 a 31/03/2026"});
  EXPECT_EQ(mill_.Data(screen, "TbPeriodos").RecordCount(), 3u);
}

TEST_F(PeriodsScreen, WithoutPeriodsItBeginsWithANewOne) {
  mill_.Exec("DELETE FROM TEC_PERIODO");
  host::Screen& screen = Open();
  EXPECT_EQ(mill_.Text(screen, "EdtArea"), "IV");
  EXPECT_EQ(mill_.Text(screen, "EdtDe"), "");
  mill_.Type(screen, "EdtDe", "01/03/2026");
  mill_.Type(screen, "EdtAte", "01/03/2026");
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored(), Lines{"IV 01/03/2026 01/03/2026 N"});
}

TEST_F(PeriodsScreen, NoDayBelongsToTwoPeriodsOfAnArea) {
  host::Screen& screen = Open();
  const auto refusal = [&](std::string_view from, std::string_view to) {
    Fill(screen, "iv", from, to);
    EXPECT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kFailed);
    const Lines said = mill_.Messages();
    return said.empty() ? "" : said.back();
  };
  const std::string january = "O período coincide em parte com IV 01/01/2026 a 31/01/2026.";
  const std::string february = "O período coincide em parte com IV 01/02/2026 a 28/02/2026.";
  EXPECT_EQ(refusal("28/02/2026", "31/03/2026"), february);
  EXPECT_EQ(refusal("01/12/2025", "01/01/2026"), january);
  EXPECT_EQ(refusal("10/01/2026", "20/01/2026"), january);
  EXPECT_EQ(refusal("01/12/2025", "31/12/2026"), january);
  EXPECT_EQ(refusal("01/02/2026", "28/02/2026"), february);
  EXPECT_EQ(Stored(), kAtFirst);
  Fill(screen, "xy", "01/02/2026", "28/02/2026");
  EXPECT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone) << "another area is another book";
  EXPECT_EQ(Stored().back(), "XY 01/02/2026 28/02/2026 N");
}

TEST_F(PeriodsScreen, MovingAPeriodDoesNotCollideWithItself) {
  host::Screen& screen = Open();
  mill_.Type(screen, "EdtDe", "05/02/2026");
  mill_.Type(screen, "EdtAte", "10/03/2026");
  ASSERT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored(), (Lines{kAtFirst[0], "IV 05/02/2026 10/03/2026 N"}));
  mill_.Type(screen, "EdtDe", "31/01/2026");
  EXPECT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kFailed);
}

TEST_F(PeriodsScreen, WhatIsMissingOrTheWrongWayRoundIsRefusedAtItsInput) {
  host::Screen& screen = Open();
  const auto refusal = [&](std::string_view area, std::string_view from, std::string_view to) {
    Fill(screen, area, from, to);
    EXPECT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kRefused);
    const Lines said = mill_.Messages();
    return (said.empty() ? "" : said.back()) + "|" + mill_.Desk().Focused()->Name();
  };
  EXPECT_EQ(refusal("", "01/03/2026", "31/03/2026"), "Informe a área.|EdtArea");
  EXPECT_EQ(refusal("IV", "", "31/03/2026"), "Informe o primeiro dia.|EdtDe");
  EXPECT_EQ(refusal("IV", "01/03/2026", ""), "Informe o último dia.|EdtAte");
  EXPECT_EQ(refusal("IV", "02/03/2026", "01/03/2026"), "O último dia vem antes do primeiro.|EdtAte");
  EXPECT_EQ(Stored(), kAtFirst);
}

TEST_F(PeriodsScreen, DeletesAfterAQuestion) {
  host::Screen& screen = Open();
  mill_.Person().Answer("Deseja excluir o período IV 01/02/2026 a 28/02/2026?", "yes");
  ASSERT_EQ(mill_.Click(screen, "BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(Stored(), Lines{kAtFirst[0]});
  EXPECT_EQ(Log("PERIODOS CONTABEIS"), Lines{"2|IV 01/02/2026|IV 01/02/2026 a 28/02/2026"});
  EXPECT_EQ(mill_.Text(screen, "EdtDe"), "01/01/2026");
}

TEST_F(PeriodsScreen, AnotherStationsPeriodIsNeitherOverlappedNorOverwritten) {
  test::Mill::Options there;
  there.database = mill_.Path();
  test::Mill other(there);
  host::Screen& screen = Open();
  host::Screen& others = other.Open("TfmPeriodos");
  Fill(screen, "IV", "01/03/2026", "31/03/2026");
  Fill(other, others, "IV", "15/03/2026", "15/04/2026");
  ASSERT_EQ(other.Click(others, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kFailed);
  EXPECT_EQ(mill_.Messages(), Lines{"O período coincide em parte com IV 15/03/2026 a 15/04/2026."});
  mill_.Click(screen, "BtnCancelar");

  Stand(screen, "TbPeriodos", "DT_INICIO", host::Date::FromIso("2026-02-01").value());
  Tick(screen, "ChkConciliado", true);
  StandAt(other, others, "TbPeriodos", "DT_INICIO", host::Date::FromIso("2026-02-01").value());
  other.Type(others, "EdtAte", "20/02/2026");
  ASSERT_EQ(other.Click(others, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kFailed);
  EXPECT_EQ(mill_.Messages(),
            Lines{"O período IV 01/02/2026 a 28/02/2026 foi alterado em outra estação (último a alterar: ADMIN). "
                  "Cancele para ver como está agora e altere de novo."});
  EXPECT_EQ(Stored()[1], "IV 01/02/2026 20/02/2026 N");
}

TEST_F(PeriodsScreen, ARecordThatIsGoneLeavesTheListToo) {
  host::Screen& screen = Open();
  mill_.Exec("DELETE FROM TEC_PERIODO WHERE DT_INICIO = '2026-01-01'");
  mill_.Desk().SelectRow(mill_.GridOf(screen, "TbPeriodos"), 2);
  EXPECT_EQ(mill_.Messages(), Lines{"O registro foi excluído em outra estação."});
  EXPECT_EQ(mill_.Data(screen, "TbPeriodos").RecordCount(), 1u);
  EXPECT_EQ(mill_.Text(screen, "EdtDe"), "01/02/2026");
  Tick(screen, "ChkConciliado", true);
  EXPECT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kDone);
}

TEST_F(PeriodsScreen, AFailingStatementStoresNothing) {
  host::Screen& screen = Open();
  Fill(screen, "IV", "01/03/2026", "31/03/2026");
  FailOnceAtEach(screen, 6, [&] { return mill_.Click(screen, "BtnGravar"); });
  EXPECT_EQ(Stored().size(), 3u);
  mill_.Desk().CloseScreen(screen);
  host::Screen& again = Open();
  Tick(again, "ChkConciliado", true);
  FailOnceAtEach(again, 7, [&] { return mill_.Click(again, "BtnGravar"); });
  EXPECT_EQ(Stored().back(), "IV 01/03/2026 31/03/2026 S");
}

TEST_F(PeriodsScreen, WithoutTheRightNothingIsStored) {
  host::Screen& screen = Open();
  Tick(screen, "ChkConciliado", true);
  mill_.Exec("UPDATE TEC_USUARIO SET ADMINISTRADOR = 'N' WHERE CODIGO = 'ADMIN'");
  EXPECT_EQ(mill_.Click(screen, "BtnGravar"), ActResult::kFailed);
  EXPECT_EQ(mill_.Messages(), Lines{"Somente um administrador pode usar a tela \"Períodos contábeis\"."});
  EXPECT_EQ(Stored(), kAtFirst);
}

}  // namespace
