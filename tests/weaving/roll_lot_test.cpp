// The six ways to form a roll's lot: the same code in the roll's row and in the fabric's stock.
#include "weaving/roll_lot.h"

#include "writeoff/write_off_mill.h"

namespace test {
namespace {

using host::ActResult;

class RollLots : public WriteOffMill {
 protected:
  void WithScheme(std::string_view scheme) {
    mill_.SetParameter("MAL", 40, scheme);
    Order(kOrder, {{"F1", "01", 100, "PV0001"}});
    Reserve("Y1", "D1", "L1", 60);
    Reserve("Y2", "D1", "L1", 40);
    Load();
    Type("EdtNFRet", "NR77");
  }
  // The lot of the roll written last, which its stock must have too.
  std::string LotOfRoll(std::string_view quantity) {
    EXPECT_EQ(Roll(quantity), ActResult::kDone);
    const auto rolls = Rolls();
    if (rolls.empty()) return "none";
    const std::string lot = rolls.back().at("LOTE").AsText();
    const auto entries = mill_.Rows("SELECT LOTE FROM {MAT_MOV} WHERE TIPO_DOC = 'BT' AND SAIDA = 'N' ORDER BY ID");
    EXPECT_EQ(entries.back().at("LOTE").AsText(), lot);
    return lot;
  }
};

TEST_F(RollLots, OneIsZeros) {
  WithScheme("1");
  EXPECT_EQ(LotOfRoll("10"), "000000");
  EXPECT_EQ(LotOfRoll("11"), "000000");
  EXPECT_EQ(Stock("F1", "DF", "000000"), 21);
  ExpectBooksBalance();
}

TEST_F(RollLots, TwoIsTheOrder) {
  WithScheme("2");
  EXPECT_EQ(LotOfRoll("10"), "000001");
  EXPECT_EQ(LotOfRoll("11"), "000001");
  ExpectBooksBalance();
}

TEST_F(RollLots, ThreeIsOrderAndRoll) {
  WithScheme("3 ordem e peça");
  EXPECT_EQ(LotOfRoll("10"), "0000011");
  EXPECT_EQ(LotOfRoll("11"), "0000012");
}

TEST_F(RollLots, FourIsOrderAndASequenceAskedOncePerRoll) {
  WithScheme("4");
  EXPECT_EQ(LotOfRoll("10"), "0000011");
  EXPECT_EQ(LotOfRoll("11"), "0000012");
  EXPECT_EQ(LotOfRoll("12"), "0000013");
  ExpectBooksBalance();
}

TEST_F(RollLots, FourIsTheBarCodeWhenThatIsTicked) {
  WithScheme("4");
  auto& box = dynamic_cast<host::CheckBox&>(*Screen().FindComponent("CbBarra"));
  ASSERT_EQ(mill_.Desk().Check(box, true), ActResult::kDone);
  Type("EdtBarra", "7891234567890");
  EXPECT_EQ(LotOfRoll("10"), "7891234567890");
  EXPECT_EQ(LotOfRoll("11"), "");  // ticked and nothing scanned
  ASSERT_EQ(mill_.Desk().Check(box, false), ActResult::kDone);
  EXPECT_EQ(LotOfRoll("12"), "0000013");  // the counter starts behind the rolls there are
  ExpectBooksBalance();
}

TEST_F(RollLots, FourTakesABarCodeOfThirtyCharacters) {
  WithScheme("4");
  auto& box = dynamic_cast<host::CheckBox&>(*Screen().FindComponent("CbBarra"));
  ASSERT_EQ(mill_.Desk().Check(box, true), ActResult::kDone);
  const std::string code(30, '8');
  Type("EdtBarra", code);
  EXPECT_EQ(LotOfRoll("10"), code);
  ExpectBooksBalance();
}

TEST_F(RollLots, FiveIsOrderAndSalesOrder) {
  WithScheme("5");
  EXPECT_EQ(LotOfRoll("10"), "000001PV0001");
}

TEST_F(RollLots, SixIsOrderAndReturnNote) {
  WithScheme("6");
  EXPECT_EQ(LotOfRoll("10"), "000001NR77");
}

TEST_F(RollLots, AnyOtherIsEmpty) {
  WithScheme("7");
  EXPECT_EQ(LotOfRoll("10"), "");
  ExpectBooksBalance();
}

TEST_F(RollLots, BlankIsEmpty) {
  WithScheme("");
  EXPECT_EQ(LotOfRoll("10"), "");
}

TEST_F(RollLots, TheSchemeIsReadWhenTheScreenOpens) {
  WithScheme("2");
  mill_.SetParameter("MAL", 40, "1");
  EXPECT_EQ(LotOfRoll("10"), "000001");
}

TEST(RollLot, AsksForASequenceOnlyWhereItIsPartOfTheLot) {
  int asked = 0;
  const auto next = [&] {
    ++asked;
    return std::string("9");
  };
  weaving::RollLotParts parts{"000001", 3, "PV", "NR", false, "BAR"};
  for (const char* scheme : {"1", "2", "3", "5", "6", "7", ""}) weaving::RollLot(scheme, parts, next);
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(weaving::RollLot("4", parts, next), "0000019");
  EXPECT_EQ(asked, 1);
  parts.bar_code_ticked = true;
  EXPECT_EQ(weaving::RollLot("4", parts, next), "BAR");
  EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace test
