// Roll labels: the empty stock rows that an order gets for the rolls to come.
#include <memory>
#include <set>
#include <thread>

#include "app/books/check.h"
#include "order_mill.h"

namespace test {
namespace {

constexpr const char* kEntry = "Gerar Etiqueta(s)";
constexpr const char* kAgain = "Etiqueta já gerada para este código e lote.\nDeseja gerar novamente?";
constexpr const char* kDone = "Etiquetas Geradas.";

// Remembers what was asked for and lets something happen before the answer.
class AtTheBox : public app::ScriptedPerson {
 public:
  std::optional<std::string> InputBox(std::string_view title, std::string_view prompt,
                                      std::string_view proposed) override {
    asked = std::string(title) + "|" + std::string(prompt) + "|" + std::string(proposed);
    if (meanwhile) meanwhile();
    return reply;
  }
  std::string asked;
  std::function<void()> meanwhile;
  std::optional<std::string> reply;
};

class RollLabels : public OrderTest {
 protected:
  /// An order of these items for warehouse DF, on the screen, which stands on the first.
  void Order(const std::vector<std::vector<std::string>>& items, const char* warehouse = "DF") {
    NewOrder();
    Type("EdtDeposito", warehouse);
    for (const auto& item : items) ASSERT_EQ(AddItem(item[0], item[1], item[2]), ActResult::kDone);
    number_ = Text("EdtNumero");
    ASSERT_EQ(Click("BtnGravar"), ActResult::kDone);
    Load(number_);
    mill_.TakeStatements();
  }

  ActResult Labels(const char* count) {
    mill_.Person().Answer("Quantidade:", count);
    return mill_.Desk().PickMenu(Screen(), kEntry);
  }

  /// Labels are made, after the question when there are some already; what was shown.
  Lines Made(const char* count, bool again = false) {
    if (again) mill_.Person().Answer("Deseja gerar novamente?", "yes");
    EXPECT_EQ(Labels(count), ActResult::kDone);
    EXPECT_EQ(mill_.Person().Unused(), Lines());
    return mill_.Messages();
  }

  /// That person asks for labels of the order's first item at another station.
  void AskElsewhere(AtTheBox& person) {
    Mill::Options options;
    options.database = mill_.Path();
    options.person = &person;
    Mill station(options);
    host::Screen& screen = station.Open("TfmCadLoteTec");
    ASSERT_EQ(station.Type(screen, "EdtNumero", number_), ActResult::kDone);
    station.Desk().PickMenu(screen, kEntry);
  }

  void StandOnItem(const char* code, const char* colour) { Stand("TbItens", {{"Codigo", code}, {"Cor", colour}}); }

  /// Nothing is written and one box says this, after a count was asked for or before.
  void Refused(const char* count, const std::string& sentence) {
    const Lines before = Books();
    if (count != nullptr) mill_.Person().Answer("Quantidade:", count);
    EXPECT_EQ(mill_.Desk().PickMenu(Screen(), kEntry), ActResult::kRefused);
    EXPECT_EQ(mill_.Person().Unused(), Lines());
    const auto shown = mill_.Person().TakeMessages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown.back().text, sentence);
    EXPECT_EQ(shown.back().title, "Ordens de Tecelagem");
    EXPECT_EQ(shown.back().icon, host::Icon::kInformation);
    EXPECT_EQ(Books(), before);
  }

  Lines Rows() {
    return Stored("SELECT * FROM {MAT_ITEN} WHERE LOTE STARTING WITH '" + number_ + "' ORDER BY LOTE, CODIGO, COR",
                  {"LOTE", "CODIGO", "COR", "DEPOSITO", "QTDE"});
  }
  /// Item and sequence of each label.
  Lines Sequences() {
    return Stored("SELECT M.*, UDF_COPY(LOTE,7,30) AS SEQ FROM {MAT_ITEN} M WHERE LOTE STARTING WITH '" + number_ +
                      "' ORDER BY LOTE, CODIGO, COR",
                  {"SEQ", "CODIGO", "COR"});
  }

  void Lot(const std::string& sequence, const char* code, const char* colour, double quantity = 0) {
    mill_.Insert(
        "MAT_ITEN",
        {{"CODIGO", code}, {"COR", colour}, {"DEPOSITO", "DF"}, {"LOTE", number_ + sequence}, {"QTDE", quantity}});
    if (quantity == 0) return;
    mill_.Insert("MAT_MOV", {{"CODIGO", code},
                             {"COR", colour},
                             {"DEPOSITO", "DF"},
                             {"LOTE", number_ + sequence},
                             {"QTDE", quantity},
                             {"SAIDA", "N"}});
  }

  /// All that could be written.
  Lines Books() {
    Lines all = Everything();
    for (const auto& line : Rows()) all.push_back(line);
    return all;
  }

  std::string number_;
};

TEST_F(RollLabels, AreOneEmptyStockRowEach) {
  Order({{"F1", "01", "100"}});
  mill_.Exec("UPDATE {TECEL} SET NUMERO = '000123'");
  mill_.Exec("UPDATE {TECEL_ITEN} SET NUMERO = '000123'");
  number_ = "000123";
  Load(number_);
  EXPECT_EQ(Made("3"), Lines{kDone});
  EXPECT_EQ(Stored("SELECT * FROM {MAT_ITEN} WHERE LOTE STARTING WITH '000123' ORDER BY LOTE",
                   {"LOTE", "CODIGO", "COR", "DEPOSITO", "QTDE", "QTDE_R", "QTD_MINIMA", "QTD_MAXIMA", "PRECO_MED",
                    "LOCAL", "BARRA", "LARGURA", "QUALIDADE"}),
            (Lines{"000123001 | F1 | 01 | DF | 0 | 0 | 0 | 0 | 0 |  |  | 0 | 1",
                   "000123002 | F1 | 01 | DF | 0 | 0 | 0 | 0 | 0 |  |  | 0 | 1",
                   "000123003 | F1 | 01 | DF | 0 | 0 | 0 | 0 | 0 |  |  | 0 | 1"}));
  EXPECT_EQ(app::books::CheckBooks(mill_.Db()), Lines());
}

TEST_F(RollLabels, GoOnWithTheNextFabric) {
  Order({{"F1", "01", "100"}, {"F2", "01", "40"}});
  Made("3");
  StandOnItem("F2", "01");
  EXPECT_EQ(Made("2"), Lines{kDone});
  EXPECT_EQ(Sequences(), (Lines{"001 | F1 | 01", "002 | F1 | 01", "003 | F1 | 01", "004 | F2 | 01", "005 | F2 | 01"}));
}

TEST_F(RollLabels, AreMadeAgainForTheirItemOnly) {
  Order({{"F1", "01", "100"}, {"F1", "02", "100"}, {"F2", "01", "40"}});
  Made("2");
  StandOnItem("F1", "02");
  Made("2");
  StandOnItem("F2", "01");
  Made("1");
  StandOnItem("F1", "01");
  EXPECT_EQ(Made("3", true), (Lines{kAgain, kDone}));
  EXPECT_EQ(Sequences(), (Lines{"003 | F1 | 02", "004 | F1 | 02", "005 | F2 | 01", "006 | F1 | 01", "007 | F1 | 01",
                                "008 | F1 | 01"}));
  EXPECT_EQ(Log().back(), "ORDEM DE TECELAGEM | ETIQUETAS SUBSTITUIDAS NO LOTE: " + number_ + " | 1 | " + number_);
  // The last ones of the order give their sequence back.
  EXPECT_EQ(Made("1", true), (Lines{kAgain, kDone}));
  EXPECT_EQ(Sequences().back(), "006 | F1 | 01");
}

TEST_F(RollLabels, AreNotLoggedTheFirstTime) {
  Order({{"F1", "01", "100"}});
  const Lines log = Log();
  Made("3");
  EXPECT_EQ(Log(), log);
}

TEST_F(RollLabels, StayWhenThePersonDoesNotWantThemAgain) {
  Order({{"F1", "01", "100"}});
  Made("3");
  const Lines before = Books();
  mill_.TakeStatements();
  EXPECT_EQ(Labels("5"), ActResult::kRefused);  // No is the default
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, kAgain);
  EXPECT_EQ(shown[0].title, "Ordens de Tecelagem");
  EXPECT_EQ(shown[0].icon, host::Icon::kQuestion);
  EXPECT_EQ(Books(), before);
  EXPECT_TRUE(mill_.TakeStatements("DELETE").empty());
}

TEST_F(RollLabels, AreProposedAsTheRollsThatAreExpected) {
  Order({{"F1", "01", "100"}});
  AtTheBox person;
  AskElsewhere(person);
  EXPECT_EQ(person.asked, "Gerar Etiqueta(s)|Quantidade:|5");
  EXPECT_EQ(Rows(), Lines());
}

TEST_F(RollLabels, OfNoPositiveWholeNumberEndThere) {
  Order({{"F1", "01", "100"}});
  const Lines before = Books();
  for (const char* count : {"0", "-3", "", "três", "2,5", "1e3", "99999999999999999999", "3x"}) {
    EXPECT_EQ(Made(count), Lines()) << count;
    EXPECT_EQ(Books(), before) << count;
  }
  EXPECT_EQ(mill_.Desk().PickMenu(Screen(), kEntry), ActResult::kDone);  // given up
  EXPECT_EQ(Books(), before);
}

TEST_F(RollLabels, OfAWrittenOffItemAreRefused) {
  Order({{"F1", "01", "100"}});
  Roll(number_, "F1", "01", 1, 10);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 10");
  Load(number_);
  Refused(nullptr, "Não é possível gerar etiquetas de itens com baixas.");
}

TEST_F(RollLabels, KnowOfARollThatCameAfterTheOrderWasLoaded) {
  Order({{"F1", "01", "100"}});
  Roll(number_, "F1", "01", 1, 10);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 10");
  ASSERT_EQ(Screen().TbItens["Qtde_B"].AsFloat(), 0);
  Refused(nullptr, "Não é possível gerar etiquetas de itens com baixas.");
}

TEST_F(RollLabels, KnowOfARollThatCameWhileTheyWereAskedFor) {
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

TEST_F(RollLabels, OfAReversedRollMayBeMade) {
  Order({{"F1", "01", "100"}});
  Roll(number_, "F1", "01", 1, 10);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 10");
  Load(number_);
  mill_.Exec("DELETE FROM {TECELB}");
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 0");
  EXPECT_EQ(Made("1"), Lines{kDone});
}

// Deleted with its row the stock would be gone, and the ledger would still have it.
TEST_F(RollLabels, ThatHoldStockAreNotMadeAgain) {
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
TEST_F(RollLabels, ThatHoldStockElsewhereAreNotMadeAgain) {
  Order({{"F1", "01", "100"}});
  Made("1");
  mill_.Insert("MAT_ITEN",
               {{"CODIGO", "F1"}, {"COR", "01"}, {"DEPOSITO", "D2"}, {"LOTE", number_ + "001"}, {"QTDE", 5}});
  Refused("1", "A etiqueta " + number_ + "001 já tem saldo em estoque. Impossível gerar novamente.");
}

// --- the sequence ----------------------------------------------------------------------------------------------------

TEST_F(RollLabels, ComeAfterTheHighestText) {
  Order({{"F1", "01", "100"}, {"F2", "01", "40"}});
  // Rolls that came back without labels: order and roll number.
  for (const char* roll : {"1", "9", "10"}) Lot(roll, "F2", "01", 5);
  EXPECT_EQ(Made("2"), Lines{kDone});
  EXPECT_EQ(Sequences(), (Lines{"010 | F1 | 01", "011 | F1 | 01", "1 | F2 | 01", "10 | F2 | 01", "9 | F2 | 01"}));
}

TEST_F(RollLabels, NeverShareALot) {
  Order({{"F1", "01", "100"}, {"F1", "02", "40"}, {"F2", "01", "40"}});
  Lot("9", "F2", "01", 5);
  Made("3");
  StandOnItem("F1", "02");
  Made("2");
  StandOnItem("F1", "01");
  Made("2", true);
  EXPECT_EQ(Sequences(), (Lines{"013 | F1 | 02", "014 | F1 | 02", "015 | F1 | 01", "016 | F1 | 01", "9 | F2 | 01"}));
  EXPECT_EQ(app::books::CheckBooks(mill_.Db()), Lines());
}

TEST_F(RollLabels, LotsThatAreNoSequenceCountAsNone) {
  Order({{"F1", "01", "100"}, {"F2", "01", "40"}});
  Lot("PV0001", "F2", "01", 5);  // order and sales order
  Lot("", "F2", "01", 5);        // the order alone
  Lot("NF1", "F2", "02", 5);     // as long as a label
  Made("2");
  StandOnItem("F2", "01");
  EXPECT_EQ(Made("1"), Lines{kDone});
  EXPECT_EQ(Sequences(), (Lines{" | F2 | 01", "001 | F1 | 01", "002 | F1 | 01", "003 | F2 | 01", "NF1 | F2 | 02",
                                "PV0001 | F2 | 01"}));
}

TEST_F(RollLabels, ReachNineHundredAndNinetyNineAndNoMore) {
  Order({{"F1", "01", "100"}, {"F2", "01", "40"}});
  Lot("996", "F2", "01");
  EXPECT_EQ(Made("3"), Lines{kDone});
  EXPECT_EQ(Sequences().back(), "999 | F1 | 01");
}

TEST_F(RollLabels, BeyondTheLastSequenceAreRefusedAndNothingIsLost) {
  Order({{"F1", "01", "100"}, {"F2", "01", "40"}});
  Lot("997", "F2", "01");
  const std::string ends = ": a última é a 997 e a numeração vai até 999.\nNenhuma etiqueta foi gerada.";
  Refused("3", "A ordem " + number_ + " tem lugar para 2 etiquetas, não para 3" + ends);
  Refused("2147483647", "A ordem " + number_ + " tem lugar para 2 etiquetas, não para 2147483647" + ends);
  EXPECT_EQ(Made("2"), Lines{kDone});
  // Those that were there stay, although they would have been deleted first.
  const Lines before = Books();
  mill_.Person().Answer("Deseja gerar novamente?", "yes");
  EXPECT_EQ(Labels("3"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages().back(), "A ordem " + number_ + " tem lugar para 2 etiquetas, não para 3" + ends);
  EXPECT_EQ(Books(), before);
}

TEST_F(RollLabels, AThousandAreRefused) {
  Order({{"F1", "01", "100"}});
  Refused("1000", "A ordem " + number_ +
                      " tem lugar para 999 etiquetas, não para 1000: a última é a 0 e a numeração vai até 999.\n"
                      "Nenhuma etiqueta foi gerada.");
  EXPECT_EQ(Made("999"), Lines{kDone});
  EXPECT_EQ(Rows().size(), 999u);
  EXPECT_EQ(Sequences().front(), "001 | F1 | 01");
  EXPECT_EQ(Sequences().back(), "999 | F1 | 01");
}

// --- what is no item of a stored order -------------------------------------------------------------------------------

TEST_F(RollLabels, NeedANumber) { Refused(nullptr, "Informe o número da ordem."); }

TEST_F(RollLabels, NeedAnItem) {
  number_ = NewOrder();
  Refused(nullptr, "Escolha o item que terá etiquetas.");
}

TEST_F(RollLabels, NeedAnOrderThatIsStored) {
  number_ = NewOrder();
  ASSERT_EQ(AddItem("F1", "01", "100"), ActResult::kDone);
  Refused(nullptr,
          "O item F1, cor 01, não está gravado na ordem " + number_ + ".\nGrave a ordem antes de gerar etiquetas.");
}

TEST_F(RollLabels, NeedAnItemThatIsStored) {
  Order({{"F1", "01", "100"}});
  ASSERT_EQ(AddItem("F2", "01", "5"), ActResult::kDone);
  StandOnItem("F2", "01");
  Refused(nullptr,
          "O item F2, cor 01, não está gravado na ordem " + number_ + ".\nGrave a ordem antes de gerar etiquetas.");
  StandOnItem("F1", "01");
  EXPECT_EQ(Made("1"), Lines{kDone});
}

TEST_F(RollLabels, NeedAWarehouseThatTheRollsWillEnter) {
  Order({{"F1", "01", "100"}}, "");
  Refused(nullptr, "A ordem " + number_ + " está sem depósito.\nInforme-o e grave a ordem antes de gerar etiquetas.");
  // The one on the screen is not the order's yet.
  Type("EdtDeposito", "DF");
  Refused(nullptr, "A ordem " + number_ + " está sem depósito.\nInforme-o e grave a ordem antes de gerar etiquetas.");
}

TEST_F(RollLabels, NeedANumberOfSixCharacters) {
  ASSERT_EQ(Type("EdtNumero", "12"), ActResult::kDone);
  ASSERT_EQ(Type("EdtMalharia", "M00001"), ActResult::kDone);
  ASSERT_EQ(Type("EdtDeposito", "DF"), ActResult::kDone);
  ASSERT_EQ(AddItem("F1", "01", "100"), ActResult::kDone);
  ASSERT_EQ(Click("BtnGravar"), ActResult::kDone);
  Load("12");
  number_ = "12";
  Refused(nullptr, "A ordem 12 não pode ter etiquetas: o número da ordem na etiqueta tem seis caracteres.");
}

TEST_F(RollLabels, OfANumberWithAccentsAndQuotesAreFoundAgain) {
  mill_.Insert("TECEL", {{"NUMERO", "Ç'Ã%_1"}, {"MALHARIA", "M00001"}, {"DEPOSITO", "DF"}, {"SITUACAO", "A"}});
  mill_.Insert("TECEL_ITEN", {{"NUMERO", "Ç'Ã%_1"}, {"CODIGO", "F1"}, {"COR", "01"}, {"QTDE", 100}});
  Load("Ç'Ã%_1");
  EXPECT_EQ(Made("2"), Lines{kDone});
  EXPECT_EQ(Made("1", true), (Lines{kAgain, kDone}));
  EXPECT_EQ(mill_.Scalar("SELECT MAX(LOTE) FROM {MAT_ITEN} WHERE UDF_LEN(LOTE) = 9").AsText(), "Ç'Ã%_1001");
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {MAT_ITEN} WHERE UDF_LEN(LOTE) = 9").AsInteger(), 1);
}

TEST_F(RollLabels, OfALockedOrderAreOutOfReach) {
  Order({{"F1", "01", "100"}});
  mill_.Exec("UPDATE {TECEL} SET SITUACAO = 'B'");
  Load(number_);
  EXPECT_EQ(mill_.Desk().PickMenu(Screen(), kEntry), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(Rows(), Lines());
}

TEST_F(RollLabels, LeaveWhatWasTypedOnTheScreen) {
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

TEST_F(RollLabels, StatementsAsTheyStand) {
  Order({{"F1", "01", "100"}});
  Made("1");
  mill_.TakeStatements();
  Made("1", true);
  const std::string label = "UDF_COPY(LOTE,1,6) = '000001' AND UDF_LEN(LOTE) = 9";
  const std::string item = label + " AND CODIGO = 'F1' AND COR = '01'";
  // Looked at, asked about, looked at again; then written.
  EXPECT_EQ(
      mill_.TakeStatements("MAT_ITEN"),
      (Lines{"SELECT LOTE FROM MAT_ITEN WHERE " + item + " AND QTDE <> 0", "SELECT CODIGO FROM MAT_ITEN WHERE " + item,
             "SELECT LOTE FROM MAT_ITEN WHERE " + item + " AND QTDE <> 0", "SELECT CODIGO FROM MAT_ITEN WHERE " + item,
             "DELETE FROM MAT_ITEN WHERE " + item,
             "SELECT MAX(UDF_COPY(LOTE,7,3)) AS SEQ FROM MAT_ITEN WHERE LOTE LIKE '000001%'",
             "SELECT UDF_COPY(LOTE,7,3) AS SEQ FROM MAT_ITEN WHERE " + label,
             "INSERT INTO MAT_ITEN (QTDE, QTDE_R, QTD_MINIMA, COR, LOTE, CODIGO, DEPOSITO, PRECO_MED, LOCAL, "
             "BARRA, QTD_MAXIMA, LARGURA, QUALIDADE) VALUES (0, 0, 0, '01', '000001001', 'F1', 'DF', 0, '', '', "
             "0, 0, '1')"}));
}

TEST_F(RollLabels, TakeOneForcedWrite) {
  Order({{"F1", "01", "100"}});
  mill_.Person().Answer("Quantidade:", "5");
  const auto before = mill_.Db().Stats().commits;
  EXPECT_EQ(mill_.Desk().PickMenu(Screen(), kEntry), ActResult::kDone);
  EXPECT_EQ(mill_.Db().Stats().commits, before + 1);
}

TEST_F(RollLabels, FailingAtAnyStatementLeaveAllAsItWas) {
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

TEST_F(RollLabels, OfTwoStationsAtOnceNeverShareALot) {
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
TEST_F(RollLabels, MadeElsewhereMeanwhileAreAskedAbout) {
  Order({{"F1", "01", "100"}});
  AtTheBox person;
  person.reply = "2";
  person.meanwhile = [this] { Lot("001", "F1", "01"); };
  AskElsewhere(person);
  EXPECT_EQ(person.TakeMessages().back().text, kAgain);
  EXPECT_EQ(Sequences(), Lines{"001 | F1 | 01"});
}

// A roll that comes while the question stands there is not deleted with its label.
TEST_F(RollLabels, FilledWhileThePersonIsAskedStay) {
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
