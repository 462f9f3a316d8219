// Roll labels: the empty stock rows that an order gets for the rolls to come.
#include "roll_label_mill.h"

namespace test {
namespace {

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

}  // namespace
}  // namespace test
