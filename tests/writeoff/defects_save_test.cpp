// Storing defects: whole or not at all, and other stations' work.
#include "defects_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;
using Briefs = std::vector<std::string>;

constexpr const char* kChanged =
    "Os defeitos deste artigo foram alterados por outro usuário. Deseja carregá-los novamente?";

class DefectsSave : public DefectsMill {
 protected:
  /// Stores a defect at the other station, where the list stands on this roll.
  void StoreElsewhere(OtherStation& other, int roll, const Cells& cells) {
    Mill& mill = other.Get();
    host::Screen& screen = other.Load(kOrder);
    host::Grid& rolls = mill.GridOf(screen, "TbRolos");
    const auto newest = static_cast<int>(rolls.GetDataset().ValueAt(1, 1).AsInteger());
    ASSERT_EQ(mill.Desk().SelectRow(rolls, static_cast<std::size_t>(newest - roll + 1)), ActResult::kDone);
    mill.Person().OnModal("TfmCadDefTec", [&](host::Screen& defects, host::Desk&) {
      ASSERT_EQ(mill.Append(defects, "TbDef", cells), ActResult::kDone);
      ASSERT_EQ(mill.Click(defects, "BitBtn1"), ActResult::kDone);
    });
    ASSERT_EQ(mill.Click(screen, "BtnDefeitos"), ActResult::kDone);
  }
};

TEST_F(DefectsSave, IsOneDurableWrite) {
  RollsOf({"10"});
  Register(1, [this](host::Screen& screen) {
    Add(screen, {{"Defeito", "FURO"}, {"Peso", "1"}});
    Add(screen, {{"Defeito", "RISCO"}, {"Peso", "2"}});
    const auto before = mill_.Db().Stats().commits;
    ASSERT_EQ(Save(screen), ActResult::kDone);
    EXPECT_EQ(mill_.Db().Stats().commits, before + 1);
  });
  EXPECT_EQ(Stored().size(), 2u);
}

TEST_F(DefectsSave, EveryStatementFailingInTurn) {
  RollsOf({"10"});
  Store(1, {{"Defeito", "RISCO"}, {"Peso", "9"}});
  const std::string before = Books();
  int failures = 0;
  Register(1, [&](host::Screen& screen) {
    ASSERT_EQ(mill_.Set(screen, "TbDef", {{"Peso", "8"}}), ActResult::kDone);
    ASSERT_EQ(Add(screen, {{"Defeito", "FURO"}, {"Peso", "1"}}), ActResult::kDone);
    ASSERT_EQ(Add(screen, {{"Defeito", "MANCHA"}, {"Peso", "2"}}), ActResult::kDone);
    for (int place = 1;; ++place) {
      SCOPED_TRACE("statement " + std::to_string(place));
      mill_.FailStatement(place);
      const ActResult result = Save(screen);
      if (!mill_.StopFailing()) {
        EXPECT_EQ(result, ActResult::kDone);
        return;
      }
      ++failures;
      EXPECT_EQ(result, ActResult::kFailed);
      EXPECT_EQ(mill_.Person().TakeErrors(), Briefs{"falha provocada"});
      Boxes();
      EXPECT_EQ(Books(), before);
      // What was typed is still there, and so is the screen.
      EXPECT_FALSE(screen.CloseRequested());
      EXPECT_EQ(List(screen).RecordCount(), 3u);
      EXPECT_TRUE(screen.HasUnsavedWork());
      ExpectBooksBalance();
      if (HasFailure()) return;
    }
  });
  // Holding the order, looking at the rows, at the roll of each, deleting, a number and a row of each, the commit.
  EXPECT_GE(failures, 11);
  EXPECT_EQ(Brief(), (Briefs{"RISCO 1: 8", "FURO 1: 1", "MANCHA 1: 2"}));
  ExpectBooksBalance();
}

TEST_F(DefectsSave, LoadingThatFailsIsToldAndLeavesNoScreen) {
  RollsOf({"10"});
  const auto heard = mill_.Db().BeforeStatement;
  mill_.Db().BeforeStatement = [heard](std::string_view sql) {
    heard(sql);
    if (sql.find("DEF_MOV") != std::string_view::npos) throw host::DatabaseError("falha provocada", 0, "");
  };
  StandOnRoll(1);
  EXPECT_EQ(mill_.Click(Screen(), "BtnDefeitos"), ActResult::kFailed);
  // After a roll the weighing goes on.
  mill_.SetParameter("MAL", 60, "S");
  EXPECT_EQ(Roll("12"), ActResult::kDone);
  mill_.Db().BeforeStatement = heard;
  EXPECT_EQ(mill_.Desk().Find("TfmCadDefTec"), nullptr);
  EXPECT_EQ(mill_.Desk().Modal(), nullptr);
  EXPECT_EQ(Rolls().size(), 2u);
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_EQ(Boxes(), (BoxList{{"Baixa de Ordem de Tecelagem", "falha provocada", host::Icon::kError},
                              Refusal("O cadastro de defeitos não pôde ser aberto.\nfalha provocada")}));
  mill_.Person().TakeErrors();
}

// --- other stations ----------------------------------------------------------------------------------------------

TEST_F(DefectsSave, WhatAnotherStationStoredMeanwhileIsNotLost) {
  RollsOf({"10", "11"});
  OtherStation other(mill_);
  Register(1, [&](host::Screen& screen) {
    ASSERT_EQ(Add(screen, {{"Defeito", "FURO"}, {"Peso", "1"}}), ActResult::kDone);
    StoreElsewhere(other, 2, {{"Defeito", "RISCO"}, {"Peso", "2"}});
    for (const char* reply : {"no", "yes"}) {
      mill_.Person().Answer(kChanged, reply);
      EXPECT_EQ(Save(screen), ActResult::kRefused);
      EXPECT_EQ(Boxes(), (BoxList{{"Cadastro de Defeitos", kChanged, host::Icon::kQuestion}}));
      EXPECT_EQ(Brief(), Briefs{"RISCO 2: 2"});
      EXPECT_EQ(List(screen)["Defeito"].AsText(), std::string(reply) == "no" ? "FURO" : "RISCO");
    }
    EXPECT_EQ(List(screen).RecordCount(), 1u);
    EXPECT_FALSE(screen.HasUnsavedWork());
    ASSERT_EQ(Add(screen, {{"Defeito", "FURO"}, {"Peso", "1"}}), ActResult::kDone);
    EXPECT_EQ(Save(screen), ActResult::kDone);
  });
  EXPECT_EQ(Brief(), (Briefs{"RISCO 2: 2", "FURO 1: 1"}));
}

TEST_F(DefectsSave, OfARollReversedMeanwhileIsRefused) {
  RollsOf({"10"});
  OtherStation other(mill_);
  Register(1, [&](host::Screen& screen) {
    ASSERT_EQ(Add(screen, {{"Defeito", "FURO"}, {"Peso", "1"}}), ActResult::kDone);
    ASSERT_EQ(other.ReverseNewest(other.Load(kOrder)), ActResult::kDone);
    EXPECT_EQ(Save(screen), ActResult::kRefused);
    EXPECT_EQ(Boxes(), BoxList{DefectNotice("A peça 1 do artigo F1 não está mais na ordem 000001; nada foi gravado.")});
    GiveUp(screen);
  });
  EXPECT_TRUE(Stored().empty());
  ExpectBooksBalance();
}

// The number of the reversed roll is given again: it must not inherit anything.
TEST_F(DefectsSave, OfAReversedRollAreNotThoseOfTheNextOneUnderItsNumber) {
  RollsOf({"10"});
  Store(1, {{"Defeito", "FURO"}, {"Peso", "1"}});
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  ASSERT_EQ(Roll("12"), ActResult::kDone);
  ASSERT_EQ(Rolls().front().at("ORDEM").AsInteger(), 1);
  Register(1, [this](host::Screen& screen) { EXPECT_TRUE(List(screen).IsEmpty()); });
}

TEST_F(DefectsSave, TheOrderIsHeld) {
  RollsOf({"10"});
  Register(1, [this](host::Screen& screen) {
    Add(screen, {{"Defeito", "FURO"}, {"Peso", "1"}});
    mill_.TakeStatements();
    ASSERT_EQ(Save(screen), ActResult::kDone);
  });
  const auto sent = mill_.TakeStatements();
  ASSERT_FALSE(sent.empty());
  EXPECT_NE(sent.front().find("WITH LOCK"), std::string::npos);
}

}  // namespace
}  // namespace test
