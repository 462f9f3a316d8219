// Where the operator goes on when the attempt without them did not cover the roll.
#include "yarn/operator_mill.h"

namespace test {
namespace {

using host::ActResult;

class AfterAttempt : public Operator {};

TEST_F(AfterAttempt, GoesOnAtTheLotWhereLookingForReservationsEnded) {
  mill_.SetParameter("MAL", 70, "N");
  mill_.Exec("UPDATE {COMP_MATERIAL} SET PERC = 100 WHERE MATERIAL = 'F1' AND CODIGO = 'Y1'");
  mill_.Exec("DELETE FROM {COMP_MATERIAL} WHERE MATERIAL = 'F1' AND CODIGO = 'Y2'");
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 4);
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 6);
              EXPECT_EQ(Lots(yarn)["Lote"].AsText(), "L2");
              ASSERT_EQ(mill_.Desk().PressKey(yarn, host::Key::kF6), ActResult::kDone);
              ASSERT_EQ(mill_.Desk().PressKey(yarn, host::Key::kF8), ActResult::kDone);
            }),
            ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 96);
  EXPECT_EQ(Stock("Y1", "D1", "L2"), 44);
  ExpectBooksBalance();
}

TEST_F(AfterAttempt, BeginsAtTheFirstLotWhereTheLastYarnHasNone) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET COR_I = 'XX' WHERE MATERIAL = 'F1' AND CODIGO = 'Y2'");
  FreeOrder();
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_EQ(Wanted(yarn)["Codigo"].AsText(), "Y1");
              EXPECT_EQ(Lots(yarn).RecordCount(), 3u);
              EXPECT_EQ(Lots(yarn).RecNo(), 1u);
            }),
            ActResult::kRefused);
}

}  // namespace
}  // namespace test
