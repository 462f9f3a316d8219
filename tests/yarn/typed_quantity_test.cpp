// A quantity typed on the yarn screen that the operator has not left yet when a lot is taken, by key or by mouse.
#include "yarn/operator_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

class TypedQuantity : public Operator {
 protected:
  // The line stays in edit.
  void TypeAndStay(host::Screen& yarn, std::string_view quantity) {
    host::Grid& lines = mill_.GridOf(yarn, "TbBaixa");
    ASSERT_EQ(mill_.Desk().SelectCell(lines, "Qtde"), ActResult::kDone);
    ASSERT_EQ(mill_.Desk().TypeCell(lines, quantity), ActResult::kDone);
    ASSERT_EQ(Wanted(yarn).State(), host::DatasetState::kEdit);
  }
};

TEST_F(TypedQuantity, LessIsTakenAndTheLineIsDone) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              TypeAndStay(yarn, "5");
              Take(yarn, "L1", "D1");
              EXPECT_EQ(Wanted(yarn).RecordCount(), 1u);
              EXPECT_EQ(Wanted(yarn)["Codigo"].AsText(), "Y2");
              Take(yarn, "L1", "D1");
            }),
            ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 95);
  EXPECT_EQ(Stock("Y2", "D1", "L1"), 76);
  ExpectBooksBalance();
}

TEST_F(TypedQuantity, MoreThatOneLotCoversIsTakenWithoutAsking) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              TypeAndStay(yarn, "9");
              Take(yarn, "L1", "D1");
              TakeAll(yarn);
            }),
            ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 91);
  ExpectBooksBalance();
}

TEST_F(TypedQuantity, IsGivenUpWithTheTakeThatTheOperatorDoesNotWant) {
  FreeOrder();
  Order("000002", {{}});
  Reserve("Y1", "D1", "L1", 95, "000002");  // 5 are free
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              TypeAndStay(yarn, "9");
              mill_.Person().Answer("10%", "no");
              Take(yarn, "L1", "D1");  // would leave 4 of an original 1
              EXPECT_EQ(Boxes().size(), 1u);
              EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 6);
              ASSERT_TRUE(Lots(yarn).Locate("Lote;Deposito", {"L1", "D1"}));
              EXPECT_EQ(Lots(yarn)["Qtde"].AsFloat(), 100);
              EXPECT_EQ(Lots(yarn)["Qtde_B"].AsFloat(), 0);
              Take(yarn, "L2", "D1");
              ASSERT_EQ(mill_.Desk().SelectRow(mill_.GridOf(yarn, "TbBaixa"), 1), ActResult::kDone);
              EXPECT_EQ(Wanted(yarn)["Codigo"].AsText(), "Y2");
            }),
            ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa Cancelada.")});
  ExpectBooksBalance();
}

TEST_F(TypedQuantity, IsKeptWhereALotGivesPartOfIt) {
  FreeOrder();
  Order("000002", {{}});
  Reserve("Y1", "D1", "L1", 96, "000002");  // 4 are free
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              TypeAndStay(yarn, "5");
              Take(yarn, "L1", "D1");
              EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 1);
              EXPECT_EQ(Wanted(yarn)["Qt_Orig"].AsFloat(), 2);
              Take(yarn, "L2", "D1");
              Take(yarn, "L3", "D2");
            }),
            ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 96);
  EXPECT_EQ(Stock("Y1", "D1", "L2"), 49);
  ExpectBooksBalance();
}

TEST_F(TypedQuantity, TypedToNothingTakesNothing) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              TypeAndStay(yarn, "0");
              Take(yarn, "L1", "D1");
              EXPECT_EQ(Wanted(yarn).RecordCount(), 1u);
              EXPECT_EQ(Wanted(yarn)["Codigo"].AsText(), "Y2");
              TakeAll(yarn);
            }),
            ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Consumption().size(), 1u);
  ExpectBooksBalance();
}

TEST_F(TypedQuantity, OfAReservedLotIsRefusedAndStays) {
  FreeOrder();
  Order("000002", {{}});
  Reserve("Y1", "D1", "L1", 100, "000002");
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              TypeAndStay(yarn, "5");
              Take(yarn, "L1", "D1");
              EXPECT_EQ(Boxes(), BoxList{YarnNotice("Quantidade reservada. Impossível continuar.")});
              EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 5);
              Take(yarn, "L2", "D1");
              TakeAll(yarn);
            }),
            ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L2"), 45);
  ExpectBooksBalance();
}

}  // namespace
}  // namespace test
