// What the ledger knows of each roll: its movements by number, and which of them take others back.
#include "writeoff/reversal_mill.h"

namespace test {
namespace {

using host::ActResult;

class RollLedger : public ReversalMill {
 protected:
  // "material out/in quantity", "*" behind one that takes another back.
  std::vector<std::string> Of(int roll) {
    std::vector<std::string> rows;
    for (const host::LedgerRow& row : mill_.App().GetFuncoes().MovimentosDaPeca(kOrder, roll)) {
      rows.push_back(row.material + (row.out ? " out " : " in ") + host::Value(row.quantity).AsText() +
                     (row.undoes ? " *" : ""));
    }
    return rows;
  }
};

using Rows = std::vector<std::string>;

TEST_F(RollLedger, EachMovementNamesItsRoll) {
  RollsOf({"10", "20"});
  EXPECT_EQ(Of(1), Rows({"Y1 out 6", "Y2 out 4", "F1 in 10"}));
  EXPECT_EQ(Of(2), Rows({"Y1 out 12", "Y2 out 8", "F1 in 20"}));
  EXPECT_EQ(Of(3), Rows());
  EXPECT_EQ(Of(0), Rows());
}

TEST_F(RollLedger, AReversalSaysThatItTakesBack) {
  RollsOf({"10", "20"});
  ASSERT_EQ(Reverse(2), ActResult::kDone);
  EXPECT_EQ(Of(1), Rows({"Y1 out 6", "Y2 out 4", "F1 in 10"}));
  EXPECT_EQ(Of(2), Rows({"Y1 out 12", "Y2 out 8", "F1 in 20", "Y1 in 12 *", "Y2 in 8 *", "F1 out 20 *"}));
}

// The yarn of a roll whose fabric could not enter comes back by movements of the same roll.
TEST_F(RollLedger, YarnOfARollThatFailedIsTakenBackUnderItsNumber) {
  ReservedOrder();
  Load();
  Type("EdtQtde", "10");
  mill_.Exec("ALTER TABLE {MATERIAL} ADD CONSTRAINT PRECO_ZERO CHECK (CODIGO <> 'F1' OR PRECO IS NULL OR PRECO = 0)");
  EXPECT_NE(Confirm(), ActResult::kDone);
  ASSERT_EQ(Boxes().size(), 1u);
  EXPECT_EQ(Of(1), Rows({"Y1 out 6", "Y2 out 4", "Y1 in 6 *", "Y2 in 4 *"}));
  EXPECT_EQ(Value("SELECT COUNT(*) FROM {TECELB}"), host::Value(0));
}

}  // namespace
}  // namespace test
