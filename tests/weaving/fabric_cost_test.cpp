// What a woven roll costs: the yarn that went into it, and its weaving.
#include "weaving/mill_price.h"
#include "writeoff/write_off_mill.h"

namespace test {
namespace {

using host::ActResult;

class FabricCost : public WriteOffMill {
 protected:
  double Price(std::string_view code = "F1") {
    return Number("SELECT PRECO FROM {MATERIAL} WHERE CODIGO = '" + std::string(code) + "'");
  }
  host::Value Movement(std::string_view column) {
    return Value("SELECT " + std::string(column) + " FROM {MAT_MOV} WHERE TIPO_DOC = 'BT' AND SAIDA = 'N'");
  }
};

TEST_F(FabricCost, YarnAndWeavingLessContributions) {
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  // 6 at 20.00 and 4 at 30.00 for 10 kg; 5.00 less 9.25 %, which is 0.4625, as 0.46.
  EXPECT_EQ(Movement("PRECO"), host::Value(24 + 4.54));
  EXPECT_EQ(Movement("CUSTO"), host::Value(24 + 4.54));
  EXPECT_EQ(Price(), 28.54);
  EXPECT_EQ(Number("SELECT PRECO_MED FROM {MAT_ITEN} WHERE CODIGO = 'F1' AND LOTE = '0000011'"), 28.54);
}

TEST_F(FabricCost, OfAClientUnderTheSimplifiedRegimeIsWhole) {
  mill_.Insert("CADCORTI", {{"TIPO", "C"}, {"CODIGO", "F1"}, {"CODCLI", "M00004"}, {"COR", "0"}, {"CUSTO", 5}});
  Order(kOrder, {{}}, "M00004");
  Reserve("Y1", "D1", "L1", 60);
  Reserve("Y2", "D1", "L1", 40);
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Price(), 29);
}

TEST_F(FabricCost, OfAClientWithoutRegimeHasTheContributionsOff) {
  mill_.Exec("UPDATE {ENTIDADE} SET SIMPLES = NULL WHERE CODCLI = 'M00001'");
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Price(), 28.54);
}

TEST_F(FabricCost, WithoutPriceIsTheYarnAlone) {
  mill_.Exec("DELETE FROM {CADCORTI} WHERE CODIGO = 'F1'");
  ReservedOrder();
  Load();
  mill_.TakeStatements();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Price(), 24);
  EXPECT_TRUE(mill_.TakeStatements("SIMPLES").empty());
}

TEST_F(FabricCost, PriceZeroIsNoPrice) {
  mill_.Exec("UPDATE {CADCORTI} SET CUSTO = 0 WHERE CODIGO = 'F1'");
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Price(), 24);
}

TEST_F(FabricCost, OnlyTheRegisterIsRounded) {
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 30);
  Reserve("Y2", "D1", "L1", 70);
  Load();
  ASSERT_EQ(Roll("7,7"), ActResult::kDone);
  // Y1 2.31 at 20, Y2 5.39 at 30.
  const double exact = (2.31 * 20 + 5.39 * 30) / 7.7 + 4.54;
  EXPECT_DOUBLE_EQ(Movement("PRECO").AsFloat(), exact);
  EXPECT_EQ(Price(), 31.54);
}

TEST_F(FabricCost, RegisterHasFourDecimals) {
  Order(kOrder, {{"F1", "01", 3, ""}});
  Reserve("Y1", "D1", "L1", 2);
  Reserve("Y2", "D1", "L1", 1);
  Load();
  ASSERT_EQ(Roll("1"), ActResult::kDone);
  // 0.667 at 20 and 0.333 at 30.
  EXPECT_EQ(Price(), 27.87);
  EXPECT_DOUBLE_EQ(Movement("PRECO").AsFloat(), 0.667 * 20 + 0.333 * 30 + 4.54);
}

TEST_F(FabricCost, LotPricesCountWithFourDecimals) {
  mill_.Exec("UPDATE {MAT_ITEN} SET PRECO_MED = 20.00004 WHERE CODIGO = 'Y1'");
  mill_.Exec("UPDATE {MAT_ITEN} SET PRECO_MED = 30.00006 WHERE CODIGO = 'Y2'");
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_DOUBLE_EQ(Movement("PRECO").AsFloat(), (6 * 20 + 4 * 30.0001) / 10 + 4.54);
  EXPECT_EQ(Value("SELECT FIRST 1 PRECO FROM {MAT_MOV} WHERE TIPO_DOC = 'BT' AND CODIGO = 'Y2'"), host::Value(30.0001));
}

TEST_F(FabricCost, ImportCostSumsEveryListedLot) {
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  // Three lots of Y1 at 2 x 60 %, two of Y2 at 3 x 40 %, taken from or not.
  EXPECT_EQ(Number("SELECT CUSTO_IMP FROM {MATERIAL} WHERE CODIGO = 'F1'"), 6);
}

TEST_F(FabricCost, ImportCostIsLeftAloneWhenNoListedLotHasOne) {
  mill_.Exec("UPDATE {MATERIAL} SET CUSTO_IMP = 0");
  mill_.Exec("UPDATE {MATERIAL} SET CUSTO_IMP = 7.5 WHERE CODIGO = 'F1'");
  ReservedOrder();
  Load();
  mill_.TakeStatements();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(mill_.TakeStatements("UPDATE MATERIAL"),
            std::vector<std::string>{"UPDATE MATERIAL SET PRECO = 28.54 WHERE CODIGO = 'F1'"});
  EXPECT_EQ(Number("SELECT CUSTO_IMP FROM {MATERIAL} WHERE CODIGO = 'F1'"), 7.5);
}

TEST_F(FabricCost, ImportCostTakesTheShareOfTheYarnsFirstLine) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET CODIGO = 'Y1' WHERE MATERIAL = 'F1' AND CODIGO = 'Y2'");
  mill_.SetParameter("MAL", 70, "N");
  Order(kOrder, {{}});
  Load();
  AtYarnScreen([this](host::Screen& yarn) { TakeAll(yarn); });
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  // The lots of Y1 are listed with the line that came first, 60 or 40 %.
  const double cost = Number("SELECT CUSTO_IMP FROM {MATERIAL} WHERE CODIGO = 'F1'");
  EXPECT_TRUE(cost == 3.6 || cost == 2.4) << cost;
}

TEST_F(FabricCost, PerMetreForMeasuredFabric) {
  Order(kOrder, {{"FM", "01", 100, ""}});
  Reserve("Y1", "D1", "L1", 12.5);
  Reserve("Y2", "D1", "L1", 12.5);
  Load();
  ASSERT_EQ(Roll("40"), ActResult::kDone);
  // 10 kg, half of each yarn, for 40 m; 1.20 less 0.11.
  EXPECT_EQ(Price("FM"), 6.25 + 1.09);
  EXPECT_EQ(Movement("QTDE"), host::Value(40.0));
}

struct ServiceCase {
  double price;
  double service;
};

class WeavingPrice : public ::testing::TestWithParam<ServiceCase> {};

// The contributions together are rounded to cents, halves away from zero.
TEST_P(WeavingPrice, LessContributions) {
  EXPECT_EQ(weaving::ServiceCost(GetParam().price, false), GetParam().service);
  EXPECT_EQ(weaving::ServiceCost(GetParam().price, true), GetParam().price);
}

INSTANTIATE_TEST_SUITE_P(Prices, WeavingPrice,
                         ::testing::Values(ServiceCase{2, 1.81}, ServiceCase{5, 4.54}, ServiceCase{0.9, 0.82},
                                           ServiceCase{1.2, 1.09}, ServiceCase{100, 90.75}, ServiceCase{0.2, 0.18},
                                           ServiceCase{10.2, 9.26}, ServiceCase{0.05, 0.05}, ServiceCase{6, 5.44},
                                           ServiceCase{14, 12.7}, ServiceCase{18, 16.33}));

TEST(WeavingService, NothingIsPaidWithoutPrice) {
  EXPECT_EQ(weaving::ServiceCost(0, false), 0);
  EXPECT_EQ(weaving::ServiceCost(-3, true), 0);
}

}  // namespace
}  // namespace test
