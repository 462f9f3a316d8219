// Roll labels that are not made: of rolls that came already, of what is not stored, when a statement fails, and beside
// a second station.
#include <set>
#include <thread>

#include "roll_label_mill.h"

namespace test {
namespace {

class RollLabelsKept : public RollLabels {};

// --- rolls that came already ---------------------------------------------------------------------------------------

TEST_F(RollLabelsKept, OfAWrittenOffItemAreRefused) {
  Order({{"F1", "01", "100"}});
  Roll(number_, "F1", "01", 1, 10);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 10");
  Load(number_);
  Refused(nullptr, "Não é possível gerar etiquetas de itens com baixas.");
}

TEST_F(RollLabelsKept, KnowOfARollThatCameAfterTheOrderWasLoaded) {
  Order({{"F1", "01", "100"}});
  Roll(number_, "F1", "01", 1, 10);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 10");
  ASSERT_EQ(Screen().TbItens["Qtde_B"].AsFloat(), 0);
  Refused(nullptr, "Não é possível gerar etiquetas de itens com baixas.");
}

TEST_F(RollLabelsKept, KnowOfARollThatCameWhileTheyWereAskedFor) {
  Order({{"F1", "01", "100"}});
  AtTheBox person;
  person.reply = "2";
  person.meanwhile = [this] {
    Roll(number_, "F1", "01", 1, 3);
    mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 3");
  };
  AskElsewhere(person);
  EXPECT_EQ(person.TakeMessages().back().text, "Não é possível gerar etiquetas de itens com baixas.");
  EXPECT_EQ(Rows(), Lines());
}

TEST_F(RollLabelsKept, OfAReversedRollMayBeMade) {
  Order({{"F1", "01", "100"}});
  Roll(number_, "F1", "01", 1, 10);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 10");
  Load(number_);
  mill_.Exec("DELETE FROM {TECELB}");
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 0");
  EXPECT_EQ(Made("1"), Lines{kDone});
}

// Deleted with its row the stock would be gone, and the ledger would still have it.
TEST_F(RollLabelsKept, ThatHoldStockAreNotMadeAgain) {
  Order({{"F1", "01", "100"}});
  Made("2");
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = 21.5 WHERE LOTE = '" + number_ + "002'");
  mill_.Insert(
      "MAT_MOV",
      {{"CODIGO", "F1"}, {"COR", "01"}, {"DEPOSITO", "DF"}, {"LOTE", number_ + "002"}, {"QTDE", 21.5}, {"SAIDA", "N"}});
  Refused("3", "A etiqueta " + number_ + "002 já tem saldo em estoque. Impossível gerar novamente.");
  EXPECT_EQ(app::books::CheckBooks(mill_.Db()), Lines());
}

// In another warehouse, too: a roll may have entered elsewhere than the order says.
TEST_F(RollLabelsKept, ThatHoldStockElsewhereAreNotMadeAgain) {
  Order({{"F1", "01", "100"}});
  Made("1");
  mill_.Insert("MAT_ITEN",
               {{"CODIGO", "F1"}, {"COR", "01"}, {"DEPOSITO", "D2"}, {"LOTE", number_ + "001"}, {"QTDE", 5}});
  Refused("1", "A etiqueta " + number_ + "001 já tem saldo em estoque. Impossível gerar novamente.");
}

// --- what is no item of a stored order -------------------------------------------------------------------------------

TEST_F(RollLabelsKept, NeedANumber) { Refused(nullptr, "Informe o número da ordem."); }

TEST_F(RollLabelsKept, NeedAnItem) {
  number_ = NewOrder();
  Refused(nullptr, "Escolha o item que terá etiquetas.");
}

TEST_F(RollLabelsKept, NeedAnOrderThatIsStored) {
  number_ = NewOrder();
  ASSERT_EQ(AddItem("F1", "01", "100"), ActResult::kDone);
  Refused(nullptr,
          "O item F1, cor 01, não está gravado na ordem " + number_ + ".\nGrave a ordem antes de gerar etiquetas.");
}

TEST_F(RollLabelsKept, NeedAnItemThatIsStored) {
  Order({{"F1", "01", "100"}});
  ASSERT_EQ(AddItem("F2", "01", "5"), ActResult::kDone);
  StandOnItem("F2", "01");
  Refused(nullptr,
          "O item F2, cor 01, não está gravado na ordem " + number_ + ".\nGrave a ordem antes de gerar etiquetas.");
  StandOnItem("F1", "01");
  EXPECT_EQ(Made("1"), Lines{kDone});
}

TEST_F(RollLabelsKept, NeedAWarehouseThatTheRollsWillEnter) {
  Order({{"F1", "01", "100"}}, "");
  Refused(nullptr, "A ordem " + number_ + " está sem depósito.\nInforme-o e grave a ordem antes de gerar etiquetas.");
  // The one on the screen is not the order's yet.
  Type("EdtDeposito", "DF");
  Refused(nullptr, "A ordem " + number_ + " está sem depósito.\nInforme-o e grave a ordem antes de gerar etiquetas.");
}

TEST_F(RollLabelsKept, NeedANumberOfSixCharacters) {
  ASSERT_EQ(Type("EdtNumero", "12"), ActResult::kDone);
  ASSERT_EQ(Type("EdtMalharia", "M00001"), ActResult::kDone);
  ASSERT_EQ(Type("EdtDeposito", "DF"), ActResult::kDone);
  ASSERT_EQ(AddItem("F1", "01", "100"), ActResult::kDone);
  ASSERT_EQ(Click("BtnGravar"), ActResult::kDone);
  Load("12");
  number_ = "12";
  Refused(nullptr, "A ordem 12 não pode ter etiquetas: o número da ordem na etiqueta tem seis caracteres.");
}

TEST_F(RollLabelsKept, OfANumberWithAccentsAndQuotesAreFoundAgain) {
  mill_.Insert("TECEL", {{"NUMERO", "Ç'Ã%_1"}, {"MALHARIA", "M00001"}, {"DEPOSITO", "DF"}, {"SITUACAO", "A"}});
  mill_.Insert("TECEL_ITEN", {{"NUMERO", "Ç'Ã%_1"}, {"CODIGO", "F1"}, {"COR", "01"}, {"QTDE", 100}});
  Load("Ç'Ã%_1");
  EXPECT_EQ(Made("2"), Lines{kDone});
  EXPECT_EQ(Made("1", true), (Lines{kAgain, kDone}));
  EXPECT_EQ(mill_.Scalar("SELECT MAX(LOTE) FROM {MAT_ITEN} WHERE UDF_LEN(LOTE) = 9").AsText(), "Ç'Ã%_1001");
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {MAT_ITEN} WHERE UDF_LEN(LOTE) = 9").AsInteger(), 1);
}

TEST_F(RollLabelsKept, OfALockedOrderAreOutOfReach) {
  Order({{"F1", "01", "100"}});
  mill_.Exec("UPDATE {TECEL} SET SITUACAO = 'B'");
  Load(number_);
  EXPECT_EQ(mill_.Desk().PickMenu(Screen(), kEntry), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(Rows(), Lines());
}

TEST_F(RollLabelsKept, LeaveWhatWasTypedOnTheScreen) {
  Order({{"F1", "01", "100"}});
  ASSERT_EQ(mill_.Set(Screen(), "TbItens", {{"Qtde", "250"}}), ActResult::kDone);
  ASSERT_EQ(Type("EdtFicha", "nova"), ActResult::kDone);
  EXPECT_EQ(Made("1"), Lines{kDone});
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Qtde"}), Lines{"F1 | 250"});
  EXPECT_EQ(Text("EdtFicha"), "nova");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);  // nobody else changed the order
  EXPECT_EQ(mill_.Messages(), Lines());
}

// --- statements, failures, stations ----------------------------------------------------------------------------------

TEST_F(RollLabelsKept, StatementsAsTheyStand) {
  Order({{"F1", "01", "100"}});
  Made("1");
  mill_.TakeStatements();
  Made("1", true);
  const std::string label = "UDF_COPY(LOTE,1,6) = '000001' AND UDF_LEN(LOTE) = 9";
  const std::string item = label + " AND CODIGO = 'F1' AND COR = '01'";
  const std::string insert =
      "INSERT INTO MAT_ITEN (QTDE, QTDE_R, QTD_MINIMA, COR, LOTE, CODIGO, DEPOSITO, PRECO_MED, LOCAL, BARRA, "
      "QTD_MAXIMA, "
      "LARGURA, QUALIDADE) VALUES (0, 0, 0, '01', '000001001', 'F1', 'DF', 0, '', '', 0, 0, '1')";
  // Looked at, asked about, looked at again; then written.
  EXPECT_EQ(
      mill_.TakeStatements("MAT_ITEN"),
      (Lines{"SELECT LOTE FROM MAT_ITEN WHERE " + item + " AND QTDE <> 0", "SELECT CODIGO FROM MAT_ITEN WHERE " + item,
             "SELECT LOTE FROM MAT_ITEN WHERE " + item + " AND QTDE <> 0", "SELECT CODIGO FROM MAT_ITEN WHERE " + item,
             "DELETE FROM MAT_ITEN WHERE " + item,
             "SELECT MAX(UDF_COPY(LOTE,7,3)) AS SEQ FROM MAT_ITEN WHERE LOTE LIKE '000001%'",
             "SELECT UDF_COPY(LOTE,7,3) AS SEQ FROM MAT_ITEN WHERE " + label, insert}));
}

TEST_F(RollLabelsKept, TakeOneForcedWrite) {
  Order({{"F1", "01", "100"}});
  mill_.Person().Answer("Quantidade:", "5");
  const auto before = mill_.Db().Stats().commits;
  EXPECT_EQ(mill_.Desk().PickMenu(Screen(), kEntry), ActResult::kDone);
  EXPECT_EQ(mill_.Db().Stats().commits, before + 1);
}

TEST_F(RollLabelsKept, FailingAtAnyStatementLeaveAllAsItWas) {
  Order({{"F1", "01", "100"}, {"F2", "01", "40"}});
  Made("4");
  const Lines before = Books();
  int failed = 0;
  for (int n = 1;; ++n) {
    ASSERT_LT(n, 60);
    mill_.Person().Answer("Deseja gerar novamente?", "yes");
    mill_.FailStatement(n);
    const ActResult result = Labels("3");
    if (!mill_.StopFailing()) {
      EXPECT_EQ(result, ActResult::kDone);
      break;
    }
    ++failed;
    EXPECT_EQ(result, ActResult::kFailed) << n;
    EXPECT_EQ(Errors(), Lines{"falha provocada"}) << n;
    EXPECT_EQ(Books(), before) << n;
    if (HasFailure()) return;
    mill_.Messages();
    // What was prepared and not asked for any more.
    while (!mill_.Person().Unused().empty()) {
      mill_.Person().InputBox("", "Quantidade:", "");
      mill_.Person().Question("", "Deseja gerar novamente?");
    }
    mill_.Messages();
  }
  EXPECT_GT(failed, 10);
  EXPECT_EQ(Sequences(), (Lines{"001 | F1 | 01", "002 | F1 | 01", "003 | F1 | 01"}));
  EXPECT_EQ(app::books::CheckBooks(mill_.Db()), Lines());
}

TEST_F(RollLabelsKept, OfTwoStationsAtOnceNeverShareALot) {
  Order({{"F1", "01", "100"}, {"F2", "01", "40"}});
  Mill::Options options;
  options.database = mill_.Path();
  Mill other(options);
  host::Screen& elsewhere = other.Open("TfmCadLoteTec");
  ASSERT_EQ(other.Type(elsewhere, "EdtNumero", number_), ActResult::kDone);
  ASSERT_EQ(other.Desk().SelectRow(other.GridOf(elsewhere, "TbItens"), 2), ActResult::kDone);
  constexpr int kTimes = 10;
  const auto work = [](Mill& mill, host::Screen& screen) {
    for (int time = 0; time < kTimes; ++time) {
      mill.Person().Answer("Quantidade:", "7");
      if (time > 0) mill.Person().Answer("Deseja gerar novamente?", "yes");
      EXPECT_EQ(mill.Desk().PickMenu(screen, kEntry), ActResult::kDone);
      EXPECT_EQ(mill.Messages().back(), kDone);
    }
  };
  std::thread station([&] { work(other, elsewhere); });
  work(mill_, Screen());
  station.join();
  const Lines lots = Stored("SELECT LOTE FROM {MAT_ITEN} WHERE LOTE STARTING WITH '" + number_ + "'", {"LOTE"});
  EXPECT_EQ(lots.size(), 14u);
  EXPECT_EQ(std::set<std::string>(lots.begin(), lots.end()).size(), 14u);
  EXPECT_EQ(app::books::CheckBooks(mill_.Db()), Lines());
}

// Nobody's labels are replaced without a question, not even those that were made while the count was typed.
TEST_F(RollLabelsKept, MadeElsewhereMeanwhileAreAskedAbout) {
  Order({{"F1", "01", "100"}});
  AtTheBox person;
  person.reply = "2";
  person.meanwhile = [this] { Lot("001", "F1", "01"); };
  AskElsewhere(person);
  EXPECT_EQ(person.TakeMessages().back().text, kAgain);
  EXPECT_EQ(Sequences(), Lines{"001 | F1 | 01"});
}

// A roll that comes while the question stands there is not deleted with its label.
TEST_F(RollLabelsKept, FilledWhileThePersonIsAskedStay) {
  Order({{"F1", "01", "100"}});
  Made("1");
  mill_.Person().OnShown = [this](const app::ScriptedPerson::Shown& shown) {
    if (shown.text == kAgain) mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = 8 WHERE LOTE = '" + number_ + "001'");
  };
  mill_.Person().Answer("Deseja gerar novamente?", "yes");
  EXPECT_EQ(Labels("1"), ActResult::kRefused);
  mill_.Person().OnShown = nullptr;
  EXPECT_EQ(Rows(), Lines{number_ + "001 | F1 | 01 | DF | 8"});
}

}  // namespace
}  // namespace test
