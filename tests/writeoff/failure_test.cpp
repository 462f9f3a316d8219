// A statement fails while a roll is being written: each in turn, and each together with one of those that undo it.
// Whatever fails, the person is told, the screen goes on, and the books hold the whole roll or nothing of it.
#include <algorithm>
#include <set>

#include "host/errors.h"
#include "write_off_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

// Fails the statements of an act by their place in it.
class Sabotage {
 public:
  Sabotage(Mill& mill, std::set<int> places) : mill_(mill), heard_(mill.Db().BeforeStatement) {
    mill.Db().BeforeStatement = [this, places = std::move(places)](std::string_view sql) {
      heard_(sql);
      if (!places.contains(++sent_)) return;
      ++hit_;
      throw host::DatabaseError("falha provocada", 0, std::string(sql));
    };
  }
  ~Sabotage() { mill_.Db().BeforeStatement = heard_; }
  Sabotage(const Sabotage&) = delete;
  Sabotage& operator=(const Sabotage&) = delete;

  int Hit() const { return hit_; }

 private:
  Mill& mill_;
  std::function<void(std::string_view)> heard_;
  int sent_ = 0;
  int hit_ = 0;
};

class FailingRoll : public WriteOffMill {
 protected:
  FailingRoll() {
    // Enough for hundreds of orders.
    for (const auto& [yarn, lot] : {std::pair{"Y1", "L1"}, {"Y1", "L2"}, {"Y2", "L1"}}) {
      const auto entry = mill_.App().NewEstoque();
      entry->Material = yarn;
      entry->Cor = "CR";
      entry->Deposito = "D1";
      entry->Lote = lot;
      entry->Quantidade = 100000;
      entry->PrecoUnitario = 20;
      entry->Data = host::Date::FromParts(2026, 1, 2).value();
      entry->MovimentaEstoqueMaterial(true, true);
    }
  }

  // An order of its own for each failure: two lots of Y1 and one of Y2 reserved for a roll of 10 kg.
  std::string NextOrder(bool reserved) {
    std::string number = std::to_string(++orders_);
    number.insert(0, 6 - number.size(), '0');
    Order(number, {{}});
    if (reserved) {
      Reserve("Y1", "D1", "L1", 2, number);
      Reserve("Y1", "D1", "L2", 58, number);
      Reserve("Y2", "D1", "L1", 40, number);
    }
    return number;
  }

  // Confirms a roll of 10 kg with the statements at these places failing; how many of them were reached.
  int ConfirmFailing(const std::string& order, const std::set<int>& places) {
    host::Screen& screen = Load(order);
    // Forgets the weighing before: every roll here weighs the same.
    EXPECT_EQ(mill_.Desk().DblClick(mill_.GridOf(screen, "TbItens")), ActResult::kDone);
    Type("EdtTurno", "3");
    Type("EdtQtde", "10");
    Boxes();
    yarn_before_ = Yarn();
    const Sabotage sabotage(mill_, places);
    result_ = Confirm();
    return sabotage.Hit();
  }

  double Yarn() { return Number("SELECT SUM(QTDE) FROM {MAT_ITEN} WHERE CODIGO IN ('Y1', 'Y2')"); }

  // All or nothing, and nothing that keeps the person from going on.
  void ExpectWholeOrNothing(const std::string& order) {
    const auto boxes = Boxes();
    EXPECT_FALSE(boxes.empty());
    const bool written = !Rolls(order).empty();
    EXPECT_NEAR(yarn_before_ - Yarn(), written ? 10 : 0, 1e-6);
    EXPECT_EQ(Consumption(order).empty(), !written);
    EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN} WHERE NUMERO = '" + order + "'"), written ? 10 : 0);
    EXPECT_EQ(Number("SELECT COALESCE(SUM(QTDE), 0) FROM {MAT_ITEN} WHERE CODIGO = 'F1' AND LOTE STARTING WITH '" +
                     order + "'"),
              written ? 10 : 0);
    ExpectBooksBalance();
    EXPECT_EQ(mill_.Desk().Find("fmMovBaiFio"), nullptr);
    EXPECT_EQ(mill_.Desk().Modal(), nullptr);
    // What a failed roll leaves behind by design: reservations that its yarn had been taken from stay reduced, but
    // nothing of them is lost.
    EXPECT_NEAR(Number("SELECT COALESCE(SUM(QTDE + QTDE_B), 0) FROM {MAT_RESERVA} WHERE NUMERO = '" + order + "'"),
                reserved_, 1e-6);
    for (const Box& box : boxes) CountBox(box);
  }

  void CountBox(const Box& box) {
    const std::string first = box.text.substr(0, box.text.find('\n'));
    ++told_[first];
  }

  // The same weighing again, now that nothing fails. After a roll that was written it is refused once.
  void ExpectNextRollPasses(const std::string& order) {
    const std::size_t before = Rolls(order).size();
    Type("EdtQtde", "10");
    if (before > 0) {
      EXPECT_EQ(Confirm(), ActResult::kRefused);
      EXPECT_EQ(Boxes(), BoxList{Notice("Baixa já Realizada.")});
    }
    EXPECT_EQ(Confirm(), ActResult::kDone);
    EXPECT_EQ(Boxes(), BoxList());
    EXPECT_EQ(Rolls(order).size(), before + 1);
    ExpectBooksBalance();
  }

  void LeaveToOperator() {
    mill_.SetParameter("MAL", 70, "N");
    reserved_ = 0;
  }
  // Takes the first lot of each yarn when the yarn screen opens next.
  void PlanOperator() {
    if (planned_) return;
    planned_ = true;
    AtYarnScreen([this](host::Screen& yarn) {
      planned_ = false;
      host::Grid& stock = mill_.GridOf(yarn, "TbEst");
      for (int take = 0; take < 4 && !yarn.CloseRequested(); ++take) {
        mill_.Desk().Enter(stock);
        if (stock.GetDataset().IsEmpty()) break;
        mill_.Click(yarn, "BitBtn1");
      }
    });
  }
  // Each statement of a roll together with each of the next ones.
  void FailTwice(bool by_operator) {
    int reached = 1;
    for (int place = 1; reached > 0; ++place) {
      for (int later = 1; later <= 12; ++later) {
        SCOPED_TRACE("statements " + std::to_string(place) + " and " + std::to_string(place + later));
        const std::string order = NextOrder(!by_operator);
        if (by_operator) PlanOperator();
        reached = ConfirmFailing(order, {place, place + later});
        if (reached == 0) break;
        ExpectWholeOrNothing(order);
        if (HasFailure()) return;
        if (reached == 1) break;
      }
    }
    EXPECT_GT(orders_, 60);
  }

  bool planned_ = false;
  int orders_ = 0;
  double yarn_before_ = 0;
  double reserved_ = 100;
  ActResult result_ = ActResult::kDone;
  std::map<std::string, int> told_;
};

TEST_F(FailingRoll, EveryStatementInTurn) {
  int place = 1;
  for (;; ++place) {
    SCOPED_TRACE("statement " + std::to_string(place));
    const std::string order = NextOrder(true);
    if (ConfirmFailing(order, {place}) == 0) break;
    ExpectWholeOrNothing(order);
    ExpectNextRollPasses(order);
    if (HasFailure()) return;
  }
  EXPECT_EQ(result_, ActResult::kDone);
  EXPECT_GT(place, 30);
  // Each kind of failure has come up.
  EXPECT_GT(told_["Erro na baixa dos fios"], 0);
  EXPECT_GT(told_["Erro na entrada da malha"], 0);
  EXPECT_GT(told_["Erro na Gravação da Baixa"], 0);
  EXPECT_EQ(told_["A baixa foi gravada, mas a ordem não pôde ser carregada novamente."], 3);
}

TEST_F(FailingRoll, EveryStatementInTheOperatorsHands) {
  LeaveToOperator();
  int place = 1;
  for (;; ++place) {
    SCOPED_TRACE("statement " + std::to_string(place));
    const std::string order = NextOrder(false);
    PlanOperator();
    if (ConfirmFailing(order, {place}) == 0) break;
    ExpectWholeOrNothing(order);
    PlanOperator();
    ExpectNextRollPasses(order);
    if (HasFailure()) return;
  }
  EXPECT_GT(place, 30);
  EXPECT_GT(told_["Baixa Cancelada."], 0);
  EXPECT_GT(told_["Erro na baixa dos fios"], 0);
  EXPECT_GT(told_["Erro na entrada da malha"], 0);
}

// The second failure strikes while the first is being undone, logged or told.
TEST_F(FailingRoll, EveryStatementAndOneOfThoseThatUndoIt) { FailTwice(false); }

TEST_F(FailingRoll, TheSameInTheOperatorsHands) {
  LeaveToOperator();
  FailTwice(true);
}

// --- the single cases --------------------------------------------------------------------------------------------

class FailureOf : public WriteOffMill {
 protected:
  // Confirms a roll of 10 kg; the statement that begins so (after `skip` others that do) fails.
  ActResult RollWithout(std::string_view beginning, int skip = 0) {
    ReservedOrder();
    Load();
    Type("EdtQtde", "10");
    const auto heard = mill_.Db().BeforeStatement;
    mill_.Db().BeforeStatement = [&, heard](std::string_view sql) {
      heard(sql);
      if (sql.find(beginning) != std::string_view::npos && skip-- == 0) {
        throw host::DatabaseError("falha provocada", 0, std::string(sql));
      }
    };
    const ActResult result = Confirm();
    mill_.Db().BeforeStatement = heard;
    return result;
  }
};

TEST_F(FailureOf, YarnGivesBackWhatWentBefore) {
  EXPECT_EQ(RollWithout("INSERT INTO BAIXA_FIO", 1), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{YarnNotice("Erro na baixa dos fios\nfalha provocada")});
  EXPECT_EQ(Log(),
            std::vector<std::string>{"ERRO NA SAIDA DOS FIOS DO LOTE NR.: 000001 CODIGO: Y2 QUANT: 4 falha provocada"});
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
  EXPECT_EQ(Stock("Y2", "D1", "L1"), 80);
  // The first yarn's reservation stays reduced; the second's had not been touched.
  EXPECT_EQ(Left("Y1", "D1", "L1"), 54);
  EXPECT_EQ(Consumed("Y1", "D1", "L1"), 6);
  EXPECT_EQ(Left("Y2", "D1", "L1"), 40);
  EXPECT_EQ(Text("EdtQtde"), " 10,000");
  ExpectBooksBalance();
}

TEST_F(FailureOf, YarnComesBackAsAnEntryWithoutPriceOfTheOutboundKind) {
  EXPECT_EQ(RollWithout("INSERT INTO BAIXA_FIO", 1), ActResult::kRefused);
  const auto moves = mill_.Rows("SELECT * FROM {MAT_MOV} WHERE TIPO_DOC = 'BT' ORDER BY ID");
  ASSERT_EQ(moves.size(), 2u);
  EXPECT_EQ(moves[1].at("CODIGO"), host::Value("Y1"));
  EXPECT_EQ(moves[1].at("SAIDA"), host::Value("N"));
  EXPECT_EQ(moves[1].at("QTDE"), host::Value(6.0));
  EXPECT_EQ(moves[1].at("PRECO"), host::Value(0.0));
  EXPECT_EQ(moves[1].at("TIPO_MOV"), moves[0].at("TIPO_MOV"));
  EXPECT_EQ(Number("SELECT PRECO_MED FROM {MAT_ITEN} WHERE CODIGO = 'Y1' AND DEPOSITO = 'D1' AND LOTE = 'L1'"), 20);
}

TEST_F(FailureOf, YarnIsUndoneByTheseStatements) {
  ReservedOrder();
  Load();
  Type("EdtQtde", "10");
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = 0 WHERE CODIGO = 'F1'");
  const auto heard = mill_.Db().BeforeStatement;
  mill_.Db().BeforeStatement = [heard](std::string_view sql) {
    heard(sql);
    if (sql.find("SELECT CUSTO FROM") != std::string_view::npos) throw host::DatabaseError("falha", 0, "");
  };
  mill_.TakeStatements();
  EXPECT_EQ(Confirm(), ActResult::kRefused);
  mill_.Db().BeforeStatement = heard;
  auto sent = mill_.TakeStatements();
  const auto count = [&](std::string_view text) { return std::count(sent.begin(), sent.end(), text); };
  EXPECT_EQ(count("SELECT TECEL.MALHARIA, TECEL.MAQUINA, BAIXA_FIO.CODIGO, BAIXA_FIO.COR, BAIXA_FIO.NUMERO, "
                  "BAIXA_FIO.DEPOSITO, BAIXA_FIO.LOTE, BAIXA_FIO.QTDE FROM TECEL TECEL INNER JOIN BAIXA_FIO BAIXA_FIO "
                  "ON (TECEL.NUMERO = BAIXA_FIO.NUMERO) WHERE TECEL.NUMERO = '000001' AND BAIXA_FIO.ORDEM = 1"),
            1);
  EXPECT_EQ(count("DELETE FROM BAIXA_FIO WHERE NUMERO = '000001' AND ORDEM = 1"), 1);
  ExpectBooksBalance();
}

TEST_F(FailureOf, FabricAfterItsMovementTakesTheMovementBack) {
  EXPECT_EQ(RollWithout("UPDATE MATERIAL_001"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{YarnNotice("Erro na entrada da malha\nfalha provocada")});
  EXPECT_EQ(Log(), std::vector<std::string>{
                       "ERRO NA ENTRADA DA MALHA DO LOTE NR.: 000001 CODIGO: F1 QUANT: 10 falha provocada"});
  EXPECT_EQ(Number("SELECT COUNT(*) FROM {MAT_MOV} WHERE CODIGO = 'F1'"), 0);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
  EXPECT_TRUE(Consumption().empty());
  EXPECT_EQ(Left("Y1", "D1", "L1"), 54);
  ExpectBooksBalance();
}

TEST_F(FailureOf, TheItemTakesTheWholeRollBack) {
  EXPECT_EQ(RollWithout("UPDATE TECEL_ITEN"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList{Refusal("Erro na Gravação da Baixa\nfalha provocada")});
  EXPECT_EQ(Log(), std::vector<std::string>{
                       "ERRO NA ATUALIZACAO DAS TABELAS DA TECELAGEM DO LOTE NR.: 000001 CODIGO: F1 QUANT: 10"});
  EXPECT_EQ(Number("SELECT COUNT(*) FROM {MAT_MOV} WHERE TIPO_DOC = 'BT'"), 0);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 60);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
  // The screen is ready for the next weighing, which may be the same.
  EXPECT_EQ(Text("EdtQtde"), " 0,000");
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Rolls().size(), 1u);
  ExpectBooksBalance();
}

TEST_F(FailureOf, TheRollsRowOrLogTakesTheWholeRollBack) {
  EXPECT_EQ(RollWithout("INSERT INTO TEC_LOG"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList{Refusal("Erro na Gravação da Baixa\nfalha provocada")});
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(Left("Y1", "D1", "L1"), 60);
  ExpectBooksBalance();
}

TEST_F(FailureOf, TheReloadLeavesTheRoll) {
  EXPECT_EQ(RollWithout("ORDER BY TECELB.NUMERO"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList{Refusal("A baixa foi gravada, mas a ordem não pôde ser carregada novamente.\nfalha "
                                     "provocada")});
  EXPECT_EQ(Rolls().size(), 1u);
  EXPECT_EQ(Text("EdtQtde"), " 0,000");
  ExpectBooksBalance();
}

TEST_F(FailureOf, TheCommitUndoesTheRollAndIsTold) {
  EXPECT_EQ(RollWithout("COMMIT"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList{Refusal("Erro na Gravação da Baixa\nfalha provocada")});
  EXPECT_EQ(Log(), std::vector<std::string>{
                       "ERRO NA ATUALIZACAO DAS TABELAS DA TECELAGEM DO LOTE NR.: 000001 CODIGO: F1 QUANT: 10"});
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 60);
  // The screen knows that there is no roll: neither list shows one, and the same weighing is accepted at once.
  EXPECT_EQ(mill_.Data(Screen(), "TbRolos").RecordCount(), 0u);
  EXPECT_EQ(mill_.Data(Screen(), "TbItens")["Qtde_B"].AsFloat(), 0);
  EXPECT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Rolls().size(), 1u);
  ExpectBooksBalance();
}

TEST_F(FailureOf, LogTextsAreCutTo150Characters) {
  ReservedOrder();
  Load();
  Type("EdtQtde", "10");
  const auto heard = mill_.Db().BeforeStatement;
  mill_.Db().BeforeStatement = [heard](std::string_view sql) {
    heard(sql);
    if (sql.find("INSERT INTO BAIXA_FIO") != std::string_view::npos) {
      throw host::DatabaseError(std::string(300, 'x'), 0, "");
    }
  };
  EXPECT_EQ(Confirm(), ActResult::kRefused);
  mill_.Db().BeforeStatement = heard;
  ASSERT_EQ(Log().size(), 1u);
  EXPECT_EQ(Log().front().size(), 150u);
}

}  // namespace
}  // namespace test
