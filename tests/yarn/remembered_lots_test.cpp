// Lots that the operator chose for all rolls of an order.
#include "yarn/operator_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

TEST_F(Operator, LotsForAllRollsAreUsedAgainWithoutAsking) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              ASSERT_EQ(mill_.Desk().Check(ForAll(yarn), true), ActResult::kDone);
              Take(yarn, "L2", "D1");
              Take(yarn, "L3", "D2");
            }),
            ActResult::kDone);
  ASSERT_EQ(Remembered().RecordCount(), 2u);
  EXPECT_EQ(Remembered().ValueAt(1, 0).AsText(), "Y1");
  EXPECT_EQ(Remembered().ValueAt(1, 1).AsText(), "CR");
  EXPECT_EQ(Remembered().ValueAt(1, 2).AsText(), "L2");
  EXPECT_EQ(Remembered().ValueAt(1, 3).AsText(), "D1");

  ASSERT_EQ(Roll("20"), ActResult::kDone);  // an unexpected yarn screen would fail the test
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Rolls().size(), 2u);
  EXPECT_EQ(Stock("Y1", "D1", "L2"), 32);
  EXPECT_EQ(Stock("Y2", "D2", "L3"), 28);
  EXPECT_EQ(Remembered().RecordCount(), 2u);
  ExpectBooksBalance();
}

TEST_F(Operator, IsAskedAgainWhenARememberedLotHoldsTooLittle) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              mill_.Desk().Check(ForAll(yarn), true);
              Take(yarn, "L1", "D1");
              Take(yarn, "L3", "D2");
            }),
            ActResult::kDone);
  AtYarnScreen([this](host::Screen& yarn) {
    // Y1 is taken already; D2/L3 holds 36 of the 44 wanted.
    EXPECT_EQ(Wanted(yarn).RecordCount(), 1u);
    EXPECT_EQ(Wanted(yarn)["Codigo"].AsText(), "Y2");
    EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 44);
    EXPECT_EQ(Lots(yarn)["Lote"].AsText(), "L3");  // the person sees what was tried
    Take(yarn, "L1", "D1");
  });
  ASSERT_EQ(Roll("110"), ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 28);
  EXPECT_EQ(Stock("Y2", "D1", "L1"), 36);
  EXPECT_EQ(Stock("Y2", "D2", "L3"), 36);
  ExpectBooksBalance();
}

TEST_F(Operator, IsAskedAgainWhenARememberedLotIsGone) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              mill_.Desk().Check(ForAll(yarn), true);
              Take(yarn, "L1", "D1");
              Take(yarn, "L3", "D2");
            }),
            ActResult::kDone);
  const auto issue = mill_.App().NewEstoque();
  issue->Material = "Y1";
  issue->Cor = "CR";
  issue->Deposito = "D1";
  issue->Lote = "L1";
  issue->Quantidade = 94;
  issue->Saida = true;
  issue->Data = host::Date::FromParts(2026, 3, 10).value();
  issue->MovimentaEstoqueMaterial(true, true);
  AtYarnScreen([this](host::Screen& yarn) {
    EXPECT_EQ(Wanted(yarn).RecordCount(), 2u);
    TakeAll(yarn);
  });
  ASSERT_EQ(Roll("12"), ActResult::kDone);
  ExpectBooksBalance();
}

TEST_F(Operator, ARememberedLotThatOthersReservedIsTold) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              mill_.Desk().Check(ForAll(yarn), true);
              Take(yarn, "L1", "D1");
              Take(yarn, "L3", "D2");
            }),
            ActResult::kDone);
  Order("000002", {{}});
  Reserve("Y1", "D1", "L1", 94, "000002");
  AtYarnScreen([this](host::Screen& yarn) { TakeAll(yarn); });
  ASSERT_EQ(Roll("12"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList{YarnNotice("Quantidade reservada. Impossível continuar.")});
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 94);
  ExpectBooksBalance();
}

TEST_F(Operator, RememberedLotsAreForgottenWithTheOrder) {
  FreeOrder();
  Order("000002", {{}});
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              mill_.Desk().Check(ForAll(yarn), true);
              Take(yarn, "L1", "D1");
              Take(yarn, "L3", "D2");
            }),
            ActResult::kDone);
  Load("000001");
  EXPECT_EQ(Remembered().RecordCount(), 2u);
  Load("000002");
  EXPECT_EQ(Remembered().RecordCount(), 0u);
}

TEST_F(Operator, OneRememberedLotServesBothLinesOfItsYarn) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET CODIGO = 'Y1' WHERE MATERIAL = 'F1' AND CODIGO = 'Y2'");
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_EQ(Wanted(yarn).RecordCount(), 2u);
              EXPECT_EQ(Lots(yarn).RecordCount(), 3u);  // listed once
              mill_.Desk().Check(ForAll(yarn), true);
              Take(yarn, "L1", "D1");
              Take(yarn, "L1", "D1");
            }),
            ActResult::kDone);
  EXPECT_EQ(Remembered().RecordCount(), 1u);
  ASSERT_EQ(Roll("20"), ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 70);
  ASSERT_EQ(Consumption().size(), 2u);  // one record per lot and roll
  EXPECT_EQ(Consumption().back().at("QTDE"), host::Value(20.0));
  ExpectBooksBalance();
}

TEST_F(Operator, TickingForAllRollsStartsOverAndMergesEqualLines) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET CODIGO = 'Y1', PERC = 60 WHERE MATERIAL = 'F1' AND CODIGO = 'Y2'");
  FreeOrder();
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_EQ(Wanted(yarn).RecordCount(), 2u);
              Take(yarn, "L1", "D1");
              EXPECT_EQ(Wanted(yarn).RecordCount(), 1u);
              ASSERT_EQ(mill_.Desk().Check(ForAll(yarn), true), ActResult::kDone);
              EXPECT_EQ(Wanted(yarn).RecordCount(), 1u);
              EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 12);
              ASSERT_TRUE(Lots(yarn).Locate("Lote;Deposito", {"L1", "D1"}));
              EXPECT_EQ(Lots(yarn)["Qtde_B"].AsFloat(), 0);
              EXPECT_EQ(Lots(yarn)["Qtde"].AsFloat(), 100);
              ASSERT_EQ(mill_.Desk().Check(ForAll(yarn), false), ActResult::kDone);
              EXPECT_EQ(Wanted(yarn).RecordCount(), 2u);
            }),
            ActResult::kRefused);
  ExpectBooksBalance();
}

}  // namespace
}  // namespace test
