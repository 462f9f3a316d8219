// A reversal whose statements fail, and one that another station was faster with: all of it or nothing.
#include <algorithm>

#include "host/errors.h"
#include "reversal_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

class FailingReversal : public ReversalMill {
 protected:
  // Reverses the roll with the statement failing that holds this text.
  ActResult ReverseWithout(std::string_view text) {
    const auto heard = mill_.Db().BeforeStatement;
    mill_.Db().BeforeStatement = [&, heard](std::string_view sql) {
      heard(sql);
      if (sql.find(text) != std::string_view::npos) throw host::DatabaseError("falha provocada", 0, std::string(sql));
    };
    const ActResult result = Reverse(1);
    mill_.Db().BeforeStatement = heard;
    return result;
  }
};

TEST_F(FailingReversal, EveryStatementInTurn) {
  RollsOf({"10", "12"});
  mill_.Insert("DEF_MOV", {{"NUMERO", kOrder}, {"ARTIGO", "F1"}, {"ROLO", 1}, {"TIPO", "T"}, {"QUANT", 1}});
  const std::string before = Books();
  const std::size_t log = Log().size();
  const std::size_t moves = Movements().size();
  int named = 0;
  int place = 1;
  for (;; ++place) {
    SCOPED_TRACE("statement " + std::to_string(place));
    StandOnRoll(1);
    mill_.Person().Answer(kReversalQuestion, "yes");
    mill_.FailStatement(place);
    const ActResult result = Press();
    if (!mill_.StopFailing()) {
      EXPECT_EQ(result, ActResult::kDone);
      break;
    }
    // The first statements come before the question.
    while (!mill_.Person().Unused().empty()) mill_.App().GetDialogs().Question("", kReversalQuestion);
    const bool gone = Rolls().size() == 1;
    if (gone) {  // what came after the durable write only read
      const auto told = Told();
      ASSERT_EQ(told.size(), 1u);
      EXPECT_EQ(told.front(),
                Refusal("O estorno foi gravado, mas a ordem não pôde ser carregada novamente.\nfalha provocada"));
      break;
    }
    EXPECT_NE(result, ActResult::kDone);
    EXPECT_EQ(Books(), before);
    EXPECT_EQ(Log().size(), log);
    EXPECT_EQ(Movements().size(), moves);
    const auto told = Told();
    ASSERT_EQ(told.size(), 1u);
    if (told.front() == Refusal("Erro na Gravação da Baixa\nfalha provocada")) ++named;
    ExpectBooksBalance();
    if (HasFailure()) return;
  }
  // Yarns (the list; place, stock, reservation twice of each), their record, the mark after what they asked to be
  // durable, fabric, item (2), roll, defects, the log, the commit.
  EXPECT_EQ(named, 18);
  EXPECT_EQ(Rolls().size(), 1u);
  EXPECT_EQ(Number("SELECT COUNT(*) FROM {DEF_MOV}"), 0);
  ExpectBooksBalance();
}

TEST_F(FailingReversal, TheCommitUndoesItAndIsTold) {
  RollsOf({"10"});
  const std::string before = Books();
  EXPECT_EQ(ReverseWithout("COMMIT"), ActResult::kRefused);
  EXPECT_EQ(Told(), BoxList{Refusal("Erro na Gravação da Baixa\nfalha provocada")});
  EXPECT_EQ(Books(), before);
  EXPECT_EQ(mill_.Data(Screen(), "TbRolos").RecordCount(), 1u);
  EXPECT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_TRUE(Rolls().empty());
}

TEST_F(FailingReversal, TheUndoingThatFailsToo) {
  RollsOf({"10"});
  const std::string before = Books();
  const auto heard = mill_.Db().BeforeStatement;
  mill_.Db().BeforeStatement = [heard](std::string_view sql) {
    heard(sql);
    for (const char* failing : {"DELETE FROM BAIXA_FIO", "ROLLBACK TO"}) {
      if (sql.find(failing) != std::string_view::npos) throw host::DatabaseError("falha provocada", 0, "");
    }
  };
  EXPECT_EQ(Reverse(1), ActResult::kFailed);
  mill_.Db().BeforeStatement = heard;
  EXPECT_EQ(Told().size(), 1u);
  mill_.Person().TakeErrors();
  EXPECT_EQ(Books(), before);
  ExpectBooksBalance();
}

// Nothing is undone in the reload: the roll is gone, and the list behind it is told apart from it.
TEST_F(FailingReversal, TheReloadLeavesTheReversal) {
  RollsOf({"10"});
  EXPECT_EQ(ReverseWithout("ORDER BY TECELB.NUMERO"), ActResult::kDone);
  EXPECT_EQ(Told(),
            BoxList{Refusal("O estorno foi gravado, mas a ordem não pôde ser carregada novamente.\nfalha provocada")});
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(mill_.Data(Screen(), "TbRolos").RecordCount(), 1u);
  EXPECT_EQ(Reverse(1), ActResult::kRefused);
  EXPECT_EQ(Told(), BoxList{Refusal("A peça 1 já foi estornada por outro usuário; nada foi gravado.")});
  EXPECT_EQ(mill_.Data(Screen(), "TbRolos").RecordCount(), 0u);
  ExpectBooksBalance();
}

// --- another station was faster ----------------------------------------------------------------------------------

TEST_F(FailingReversal, ARollReversedElsewhereIsTold) {
  RollsOf({"10", "12"});
  OtherStation other(mill_);
  ASSERT_EQ(other.ReverseNewest(other.Load(kOrder)), ActResult::kDone);
  const std::string before = Books();
  EXPECT_EQ(Reverse(2), ActResult::kRefused);
  EXPECT_EQ(Told(), BoxList{Refusal("A peça 2 já foi estornada por outro usuário; nada foi gravado.")});
  EXPECT_EQ(Books(), before);
  // The list has been loaded anew and goes on from there.
  EXPECT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_TRUE(Rolls().empty());
  ExpectBooksBalance();
}

TEST_F(FailingReversal, AnotherRollUnderTheSameNumberIsNotReversed) {
  RollsOf({"10", "12"});
  OtherStation other(mill_);
  host::Screen& screen = other.Load(kOrder);
  ASSERT_EQ(other.ReverseNewest(screen), ActResult::kDone);
  other.Get().Type(screen, "EdtTara", "0");
  other.Get().Type(screen, "EdtQtde", "13");
  ASSERT_EQ(other.Get().Click(screen, "BtnConfirma"), ActResult::kDone);
  ASSERT_EQ(Rolls().back().at("ORDEM").AsInteger(), 2);
  const std::string before = Books();
  EXPECT_EQ(Reverse(2), ActResult::kRefused);
  EXPECT_EQ(Told(), BoxList{Refusal("A peça 2 já foi substituída por outra; nada foi gravado.")});
  EXPECT_EQ(Books(), before);
  EXPECT_EQ(Reverse(2), ActResult::kDone);
  EXPECT_EQ(Rolls().size(), 1u);
  ExpectBooksBalance();
}

TEST_F(FailingReversal, TheOrderIsHeldFromTheLookAtTheRollOn) {
  RollsOf({"10"});
  StandOnRoll(1);
  mill_.Person().Answer(kReversalQuestion, "yes");
  mill_.TakeStatements();
  ASSERT_EQ(Press(), ActResult::kDone);
  const auto sent = mill_.TakeStatements();
  const auto place = [&sent](std::string_view text) {
    return std::ranges::find_if(sent, [text](const auto& sql) { return sql.find(text) != std::string::npos; }) -
           sent.begin();
  };
  EXPECT_LT(place("WITH LOCK"), place("SELECT CODIGO, COR, DT_LAN"));
  EXPECT_LT(place("SELECT CODIGO, COR, DT_LAN"), place("SELECT QTDE, PRECO_MED"));
}

}  // namespace
}  // namespace test
