// The grid replaces the stored composition.
#include <algorithm>
#include <chrono>
#include <thread>

#include "composition_mill.h"

namespace test {
namespace {

using host::ActResult;
using Lines = std::vector<std::string>;

class Saving : public CompositionTest {
 protected:
  // Two yarns that make 100% of M1.
  void TypeM1() {
    ASSERT_EQ(Load("M1"), ActResult::kDone);
    ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"LFA", "250"}, {"ROCA", "4"}, {"Perc", "70"}, {"01", "CRU"}}),
              ActResult::kDone);
    ASSERT_EQ(AppendYarn({{"Codigo", "F2"}, {"LFA", "125"}, {"ROCA", "2"}, {"Perc", "30"}, {"02", "CRU"}}),
              ActResult::kDone);
    mill_.TakeStatements();
  }
};

TEST_F(Saving, EveryYarnOnceForEveryColour) {
  TypeM1();
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M1"), (Lines{"F1 1 01 CRU 70", "F1 1 02 ***** 70", "F2 2 01 ***** 30", "F2 2 02 CRU 30"}));
  EXPECT_EQ(mill_.Messages(), Lines{});
  EXPECT_EQ(Log(), Lines{"CADASTRO DE COMPOSICAO: INCLUSAO DA COMPOSICAO DO MATERIAL M1 DO CLIENTE  [0, M1]"});
}

TEST_F(Saving, TheHeaderIsRepeatedOnEveryRow) {
  TypeM1();
  for (const auto& [edit, text] :
       {std::pair{"EdtLargura", "1,85"}, std::pair{"EdtGramatura", "160.5"}, std::pair{"EdtDiametro", "30"},
        std::pair{"EdtFinura", "24"}, std::pair{"EdtKgRolo", "20,75"}, std::pair{"EdtAgulhas", "2268"},
        std::pair{"EdtDesperdicio", "2,5"}, std::pair{"EdtRPM", "31,5"}}) {
    ASSERT_EQ(mill_.Type(Screen(), edit, text), ActResult::kDone) << edit;
  }
  ASSERT_EQ(Save(), ActResult::kDone);
  const auto rows = mill_.Rows(
      "SELECT DISTINCT LARGURA, GRAMATURA, DIAMETRO, FINURA, KG_ROLO, ALIMENTADORES, DESPERDICIO, RPM, REGRA, PRODUTO "
      "FROM {COMP_MATERIAL}");
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].at("LARGURA").AsFloat(), 1.85);
  EXPECT_EQ(rows[0].at("GRAMATURA").AsFloat(), 160.5);
  EXPECT_EQ(rows[0].at("DIAMETRO").AsFloat(), 30);
  EXPECT_EQ(rows[0].at("FINURA").AsFloat(), 24);
  EXPECT_EQ(rows[0].at("KG_ROLO").AsFloat(), 20.75);
  EXPECT_EQ(rows[0].at("ALIMENTADORES").AsFloat(), 2268);
  EXPECT_EQ(rows[0].at("DESPERDICIO").AsFloat(), 2.5);
  EXPECT_EQ(rows[0].at("RPM").AsFloat(), 32);  // a whole number
  EXPECT_EQ(rows[0].at("REGRA").AsText(), "");
  EXPECT_TRUE(rows[0].at("PRODUTO").IsNull());
}

TEST_F(Saving, TheRowKeepsItsKnittingData) {
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"},
                        {"Milimetros", "2,75"},
                        {"Tensao", "4,5"},
                        {"LFA", "250,25"},
                        {"ROCA", "3,5"},
                        {"Regra", "R1"},
                        {"Perc", "100"}}),
            ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone);
  const auto rows = mill_.Rows("SELECT * FROM {COMP_MATERIAL}");
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].at("COMP_PONTO").AsFloat(), 2.75);
  EXPECT_EQ(rows[0].at("TENSAO").AsFloat(), 4.5);
  EXPECT_EQ(rows[0].at("LFA").AsFloat(), 250.25);
  EXPECT_EQ(rows[0].at("ROCA").AsFloat(), 3.5);
  EXPECT_EQ(rows[0].at("REGRA").AsText(), "R1");
}

TEST_F(Saving, PositionsAreNumberedAnewAsTheGridStands) {
  Store("M2", {.yarn = "F1", .position = 30, .percentage = 20});
  Store("M2", {.yarn = "F2", .position = 7, .percentage = 30});
  Store("M2", {.yarn = "F0", .position = 12, .percentage = 50});
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M2"), (Lines{"F2 1 01 CRU 30", "F0 2 01 CRU 50", "F1 3 01 CRU 20"}));
  EXPECT_EQ(Log(), Lines{"CADASTRO DE COMPOSICAO: ALTERACAO DA COMPOSICAO DO MATERIAL M2 DO CLIENTE  [1, M2]"});
}

TEST_F(Saving, YarnsTimesColoursWhateverTheirNumber) {
  for (int colours = 0; colours <= 4; ++colours) {
    for (int yarns = 0; yarns <= 4; ++yarns) {
      const std::string fabric = "P" + std::to_string(colours) + std::to_string(yarns);
      mill_.Insert("MATERIAL", {{"CODIGO", fabric}});
      for (int colour = 0; colour < colours; ++colour) {
        const std::vector<std::string> codes = {"01", "02", "CRU", "99"};
        mill_.Insert("MAT_ITEN", {{"CODIGO", fabric},
                                  {"COR", codes[static_cast<std::size_t>(colour)]},
                                  {"DEPOSITO", "GERAL"},
                                  {"LOTE", "000000"}});
      }
      for (int yarn = 0; yarn < yarns; ++yarn) {
        Store(fabric,
              {.yarn = yarn % 2 == 0 ? "F1" : "F2", .position = 100 - yarn * 7, .percentage = yarn == 0 ? 100 : 0.0});
      }
      ASSERT_EQ(Load(fabric), ActResult::kDone);
      ASSERT_EQ(Save(), ActResult::kDone);
      const auto rows = mill_.Rows("SELECT ORDEM, COUNT(*) N FROM {COMP_MATERIAL} WHERE MATERIAL = '" + fabric +
                                   "' GROUP BY ORDEM ORDER BY ORDEM");
      ASSERT_EQ(rows.size(), colours == 0 ? 0u : static_cast<std::size_t>(yarns)) << fabric;
      for (std::size_t at = 0; at < rows.size(); ++at) {
        EXPECT_EQ(rows[at].at("ORDEM").AsInteger(), static_cast<std::int64_t>(at) + 1) << fabric;
        EXPECT_EQ(rows[at].at("N").AsInteger(), colours) << fabric;
      }
    }
  }
}

TEST_F(Saving, AFabricWithoutColoursLosesItsComposition) {
  Store("M0", {.yarn = "F1"});
  ASSERT_EQ(Load("M0"), ActResult::kDone);
  EXPECT_EQ(Rows().RecordCount(), 1u);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M0"), Lines{});
}

TEST_F(Saving, BlanksInAColourCellAreNoColour) {
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"Perc", "100"}, {"01", "   "}}), ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M2"), Lines{"F1 1 01 ***** 100"});
  EXPECT_EQ(mill_.Messages(), Lines{});
}

TEST_F(Saving, ARowStillBeingTypedIsStoredToo) {
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  ASSERT_EQ(TypeCell("Codigo", "F1"), ActResult::kDone);
  ASSERT_EQ(TypeCell("Perc", "100"), ActResult::kDone);
  ASSERT_EQ(mill_.Desk().SelectCell(Screen().GrdComposi, "01"), ActResult::kDone);
  ASSERT_EQ(mill_.Desk().TypeCell(Screen().GrdComposi, "BCO"), ActResult::kDone);
  EXPECT_TRUE(Rows().InEdit());
  EXPECT_TRUE(Screen().HasUnsavedWork());
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M2"), Lines{"F1 1 01 BCO 100"});
}

TEST_F(Saving, RowsNobodyTypedIntoAreNoYarns) {
  TypeM1();
  ASSERT_EQ(mill_.Desk().SelectRow(Screen().GrdComposi, 2), ActResult::kDone);
  // Down on the last row appends one; so does the next Down.
  for (int i = 0; i < 2; ++i) ASSERT_EQ(mill_.Desk().GridKey(Screen().GrdComposi, host::Key::kDown), ActResult::kDone);
  ASSERT_EQ(Rows().RecNo(), 4u);
  // An unknown yarn leaves nothing behind either.
  ASSERT_EQ(TypeCell("Codigo", "NADA"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{"Material não cadastrado."});
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{});
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(DISTINCT ORDEM) FROM {COMP_MATERIAL} WHERE MATERIAL = 'M1'").AsInteger(), 2);
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {COMP_MATERIAL} WHERE CODIGO = ''").AsInteger(), 0);
}

TEST_F(Saving, ALookupOpenedFromElsewhereDoesNotPutTheGridUnderAnotherFabric) {
  Store("M2", {.yarn = "F2"});
  TypeM1();
  ASSERT_EQ(mill_.Desk().SelectRow(Screen().GrdComposi, 1), ActResult::kDone);
  mill_.Person().Pick("PqCodMat", "M2");
  ASSERT_EQ(mill_.Desk().OpenLookup(Screen().PqCodMat), ActResult::kDone);
  EXPECT_EQ(mill_.Desk().Focused(), &Screen().EdtCodMat);
  EXPECT_EQ(Screen().EdtCodMat.Text(), "M2");
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M2"), Lines{"F2 1 01 CRU 100"});
  EXPECT_EQ(Composition("M1"), Lines{});
}

TEST_F(Saving, ACodeThatTheProgramPutsInIsLoadedBeforeItIsStored) {
  Store("M2", {.yarn = "F2"});
  TypeM1();
  Screen().EdtCodMat.SetText("M2");
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M2"), Lines{"F2 1 01 CRU 100"});
}

TEST_F(Saving, LeavesTheScreenReadyForTheNextFabric) {
  Store("M1", {.yarn = "F1"});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  ASSERT_EQ(mill_.Type(Screen(), "EdtAgulhas", "1000"), ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Screen().EdtCodMat.Text(), "M1");
  EXPECT_EQ(mill_.Desk().Focused(), &Screen().EdtCodMat);
  EXPECT_EQ(Rows().RecordCount(), 0u);
  EXPECT_EQ(Rows().FieldCount(), 15u);
  EXPECT_EQ(Screen().EdtAgulhas.Text(), "1000");
  for (const host::Edit* edit :
       {&Screen().EdtLargura, &Screen().EdtGramatura, &Screen().EdtDiametro, &Screen().EdtFinura, &Screen().EdtKgRolo,
        &Screen().EdtDesperdicio, &Screen().EdtRPM}) {
    EXPECT_EQ(edit->Text(), "") << edit->Name();
  }
  EXPECT_FALSE(Screen().HasUnsavedWork());
}

TEST_F(Saving, SavingTwiceErasesNothing) {
  TypeM1();
  ASSERT_EQ(Save(), ActResult::kDone);
  const auto once = Composition("M1");
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M1"), once);
  // Not even when the program presses the button while the grid is empty.
  Screen().btnGravarClick();
  Screen().btnGravarClick();
  EXPECT_EQ(Composition("M1"), once);
}

TEST_F(Saving, ARowTakenOutOfTheGridIsGone) {
  TypeM1();
  ASSERT_EQ(mill_.Desk().SelectRow(Screen().GrdComposi, 2), ActResult::kDone);
  ASSERT_EQ(mill_.Desk().DeleteRow(Screen().GrdComposi), ActResult::kDone);
  ASSERT_EQ(TypeCell("Perc", "100"), ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M1"), (Lines{"F1 1 01 CRU 100", "F1 1 02 ***** 100"}));
}

TEST_F(Saving, NeedsTheRight) {
  Store("M2", {.yarn = "F2"});
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  ASSERT_EQ(TypeCell("Perc", "50"), ActResult::kDone);
  mill_.TakeRight("TFmCadComposi", "A");
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{});
  EXPECT_EQ(Composition("M2"), Lines{"F2 1 01 CRU 100"});
  EXPECT_EQ(Log(), Lines{});
  EXPECT_EQ(Cell(1, "Perc"), "50,0000");
}

TEST_F(Saving, AnUnknownFabricIsNotStored) {
  Store("M1", {.yarn = "F1"});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  ASSERT_EQ(Load("NADA"), ActResult::kDone);
  mill_.Messages();
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{"Material não encontrado."});
  EXPECT_EQ(Composition("NADA"), Lines{});
  ASSERT_EQ(Load(""), ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{"Material não encontrado."});
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {COMP_MATERIAL}").AsInteger(), 1);
}

TEST_F(Saving, TheClientIsNamedInTheLog) {
  ASSERT_EQ(mill_.Type(Screen(), "edtCodCliente", "00002"), ActResult::kDone);
  Store("M1", {.yarn = "F1"});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Log(), Lines{"CADASTRO DE COMPOSICAO: ALTERACAO DA COMPOSICAO DO MATERIAL M1 DO CLIENTE 00002 [1, M1]"});
}

// --- statements, failures, stations -------------------------------------------------------------------------------

TEST_F(Saving, SendsTheseStatementsInThisOrder) {
  Store("M2", {.yarn = "F1"});
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  mill_.TakeStatements();
  ASSERT_EQ(Save(), ActResult::kDone);
  const auto sent = mill_.TakeStatements();
  const Lines expected = {
      "DELETE FROM COMP_MATERIAL WHERE MATERIAL = 'M2' AND (PRODUTO = '' OR PRODUTO IS NULL)",
      "INSERT INTO COMP_MATERIAL(MATERIAL, CODIGO, ORDEM, LFA, ROCA, COMP_PONTO, TENSAO, LARGURA, GRAMATURA, DIAMETRO, "
      "FINURA, KG_ROLO, ALIMENTADORES, PERC, COR, COR_I, DESPERDICIO, RPM, REGRA) VALUES ( :MATERIAL, :CODIGO, :ORDEM, "
      ":LFA, :ROCA, :COMP_PONTO, :TENSAO, :LARGURA, :GRAMATURA, :DIAMETRO, :FINURA, :KG_ROLO, :ALIMENTADORES, :PERC, "
      ":COR, :COR_I, :DESPERDICIO, :RPM, :REGRA )",
  };
  auto at = sent.begin();
  for (const auto& statement : expected) {
    at = std::find(at, sent.end(), statement);
    ASSERT_NE(at, sent.end()) << statement;
  }
}

TEST_F(Saving, BecomesDurableOnce) {
  TypeM1();
  const auto before = mill_.Db().Stats().commits;
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(mill_.Db().Stats().commits - before, 1u);
}

TEST_F(Saving, AFailureAtAnyStatementUndoesAllAndKeepsWhatWasTyped) {
  const auto type_two_yarns = [&] {
    mill_.Exec("DELETE FROM {COMP_MATERIAL} WHERE MATERIAL = 'M1'");
    mill_.Exec("DELETE FROM TEC_LOG");
    Store("M1", {.yarn = "F0"});
    ASSERT_EQ(Load("M1"), ActResult::kDone);
    ASSERT_EQ(TypeCell("Perc", "60"), ActResult::kDone);
    ASSERT_EQ(AppendYarn({{"Codigo", "F2"}, {"Perc", "40"}, {"01", "CRU"}}), ActResult::kDone);
    ASSERT_EQ(mill_.Type(Screen(), "EdtKgRolo", "19,5"), ActResult::kDone);
  };
  const Lines after = {"F0 1 01 CRU 60", "F0 1 02 ***** 60", "F2 2 01 CRU 40", "F2 2 02 ***** 40"};
  type_two_yarns();
  const auto before = Composition("M1");
  int undone = 0;
  int stored = 0;
  for (int nth = 1;; ++nth) {
    ASSERT_LT(nth, 40);
    mill_.Messages();
    mill_.FailStatement(nth);
    const ActResult saved = Save();
    if (!mill_.StopFailing()) {
      EXPECT_EQ(saved, ActResult::kDone);
      break;
    }
    if (Composition("M1") == after) {
      // Stored already; only the reload failed, which is told.
      ++stored;
      EXPECT_EQ(saved, ActResult::kDone) << nth;
      const auto boxes = mill_.Messages();
      ASSERT_FALSE(boxes.empty()) << nth;
      EXPECT_EQ(boxes.back(), "A composição foi gravada, mas não pôde ser carregada novamente.\nfalha provocada");
      EXPECT_EQ(Log().size(), 1u) << nth;
      EXPECT_TRUE(Rows().IsEmpty()) << nth;
      type_two_yarns();
      continue;
    }
    ++undone;
    EXPECT_EQ(stored, 0) << "statement " << nth << " failed after the composition was stored";
    EXPECT_EQ(saved, ActResult::kFailed) << nth;
    EXPECT_NE(Error().find("falha provocada"), std::string::npos) << nth;
    EXPECT_EQ(Composition("M1"), before) << nth;
    EXPECT_EQ(Log(), Lines{}) << nth;
    ASSERT_EQ(Rows().RecordCount(), 2u) << nth;
    EXPECT_EQ(Cell(1, "Perc"), "60,0000");
    EXPECT_EQ(Cell(2, "Codigo"), "F2");
    EXPECT_EQ(Cell(2, "01"), "CRU");
    EXPECT_EQ(Screen().EdtKgRolo.Text(), "19,5");
  }
  EXPECT_GE(undone, 8);
  EXPECT_GE(stored, 1);
  EXPECT_EQ(Composition("M1"), after);
  EXPECT_EQ(Log().size(), 1u);
}

TEST_F(Saving, ALoadWaitsForAnotherPersonsSaveAndSeesItWhole) {
  Store("M1", {.yarn = "F1"});
  Mill::Options options;
  options.database = mill_.Path();
  Mill other(options);
  app::firebird::Database& saving = other.Db();
  saving.BeginAction();
  saving.LockRow("MATERIAL", "CODIGO", "M1");
  saving.Execute("DELETE FROM " + saving.PhysicalName("COMP_MATERIAL") + " WHERE MATERIAL = 'M1'", {});
  std::thread save([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    saving.Execute("INSERT INTO " + saving.PhysicalName("COMP_MATERIAL") +
                       " (MATERIAL, CODIGO, ORDEM, COR, COR_I, PERC) VALUES ('M1', 'F2', 1, '01', 'CRU', 100)",
                   {});
    saving.EndAction(app::firebird::Database::Outcome::kOk);
  });
  const ActResult loaded = Load("M1");
  save.join();
  EXPECT_EQ(loaded, ActResult::kDone);
  ASSERT_EQ(Rows().RecordCount(), 1u);
  EXPECT_EQ(Cell(1, "Codigo"), "F2");
}

TEST_F(Saving, TwoPeopleSavingOneFabricTakeTurns) {
  Store("M1", {.yarn = "F1"});
  Mill::Options options;
  options.database = mill_.Path();
  Mill other(options);
  const auto save_often = [](Mill& mill) {
    host::Screen& screen = mill.Open("TFmCadComposi");
    for (int nth = 0; nth < 15; ++nth) {
      if (mill.Type(screen, "EdtCodMat", "M1") != ActResult::kDone) return false;
      if (mill.Click(screen, "btnGravar") != ActResult::kDone) return false;
    }
    return true;
  };
  bool other_saved = false;
  std::thread station([&] { other_saved = save_often(other); });
  const bool saved = save_often(mill_);
  station.join();
  EXPECT_TRUE(saved) << Error();
  EXPECT_TRUE(other_saved);
  EXPECT_EQ(Composition("M1"), (Lines{"F1 1 01 CRU 100", "F1 1 02 ***** 100"}));
}

}  // namespace
}  // namespace test
