// Where a reversed roll's fabric is looked for, and what is said when it is not there.
#include "app/books/check.h"
#include "reversal_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

Box Missing(const std::string& code, const std::string& deposit, const std::string& lot) {
  return Refusal("Malha em estoque insuficiente para estorno.\nCódigo: " + code + "\nCor: 01\nDepósito: " + deposit +
                 "\nLote: " + lot);
}

class ReversalStock : public ReversalMill {
 protected:
  void Ship(const char* code, const char* lot, double quantity) {
    const auto issue = mill_.App().NewEstoque();
    issue->Material = code;
    issue->Cor = "01";
    issue->Deposito = "DF";
    issue->Lote = lot;
    issue->Quantidade = quantity;
    issue->Saida = true;
    issue->TipoDocumento = "NF";
    issue->Data = host::Date::FromParts(2026, 3, 10).value();
    issue->MovimentaEstoqueMaterial(true, true);
    mill_.Db().MakeDurable();
  }
};

TEST_F(ReversalStock, OfAShippedRollIsRefused) {
  RollsOf({"10"});
  Ship("F1", "0000011", 0.006);
  const std::string before = Books();
  EXPECT_EQ(Reverse(1), ActResult::kRefused);
  EXPECT_EQ(Told(), BoxList{Missing("F1", "DF", "0000011")});
  EXPECT_EQ(Books(), before);
}

// At two decimals there is enough; what is taken is the roll to the gram.
TEST_F(ReversalStock, MayEndACrumbBelowNothing) {
  RollsOf({"10"});
  Ship("F1", "0000011", 0.004);
  EXPECT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Told(), BoxList());
  EXPECT_NEAR(Stock("F1", "DF", "0000011"), -0.004, 1e-9);
  ExpectBooksBalance();
}

TEST_F(ReversalStock, OfAnotherDepositIsNotTaken) {
  RollsOf({"10"});
  mill_.Exec("UPDATE {TECELB} SET DEPOSITO = 'D2'");
  Load();
  EXPECT_EQ(Reverse(1), ActResult::kRefused);
  EXPECT_EQ(Told(), BoxList{Missing("F1", "D2", "0000011")});
}

// --- the lot -----------------------------------------------------------------------------------------------------

struct Scheme {
  const char* parameter;
  const char* lot;  // of the second roll
};

class BlankLot : public ReversalStock, public ::testing::WithParamInterface<Scheme> {};

// A roll that lost its lot is looked for where the installation's scheme puts it.
TEST_P(BlankLot, IsBuiltAgainByTheScheme) {
  mill_.SetParameter("MAL", 40, GetParam().parameter);
  Order(kOrder, {{"F1", "01", 100, "PV0001"}});
  Reserve("Y1", "D1", "L1", 60);
  Reserve("Y2", "D1", "L1", 40);
  Load();
  Type("EdtNFRet", "777");
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  Type("EdtQtde", "11");
  ASSERT_EQ(Confirm(), ActResult::kDone);
  ASSERT_EQ(Rolls().back().at("LOTE").AsText(), GetParam().lot);
  mill_.Exec("UPDATE {TECELB} SET LOTE = '  '");
  Load();
  Type("EdtNFRet", "");  // the roll's own note counts
  EXPECT_EQ(Reverse(2), ActResult::kDone);
  EXPECT_EQ(Told(), BoxList());
  const bool shared = std::string_view(GetParam().lot) != "0000012";
  EXPECT_NEAR(Stock("F1", "DF", GetParam().lot), shared ? 10 : 0, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Schemes, BlankLot,
                         ::testing::Values(Scheme{"1", "000000"}, Scheme{"2", "000001"}, Scheme{"3", "0000012"},
                                           Scheme{"5", "000001PV0001"}, Scheme{"6", "000001777"}, Scheme{"7x", ""}));

// Every number is drawn once: the one drawn for the reversal cannot be the roll's.
TEST_F(ReversalStock, OfABlankLotBySequenceIsLookedForUnderAFreshNumber) {
  mill_.SetParameter("MAL", 40, "4");
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  ASSERT_EQ(Rolls().front().at("LOTE").AsText(), "0000011");
  mill_.Exec("UPDATE {TECELB} SET LOTE = NULL");
  Load();
  EXPECT_EQ(Reverse(1), ActResult::kRefused);
  EXPECT_EQ(Told(), BoxList{Missing("F1", "DF", "0000012")});
  // A refusal writes nothing, the number drawn for it included.
  EXPECT_EQ(Reverse(1), ActResult::kRefused);
  EXPECT_EQ(Told(), BoxList{Missing("F1", "DF", "0000012")});
  ASSERT_EQ(mill_.Desk().Check(dynamic_cast<host::CheckBox&>(*Screen().FindComponent("CbBarra")), true),
            ActResult::kDone);
  EXPECT_EQ(Reverse(1), ActResult::kRefused);
  EXPECT_EQ(Told(), BoxList{Missing("F1", "DF", "")});
}

TEST_F(ReversalStock, OfALotLongerThanOthersKnowIsRefused) {
  RollsOf({"10", "11"});
  for (const char* table : {"{TECELB}", "{MAT_ITEN}", "{MAT_MOV}"}) {
    mill_.Exec(std::string("UPDATE ") + table + " SET LOTE = '123456789012345' WHERE LOTE = '0000011'");
    mill_.Exec(std::string("UPDATE ") + table + " SET LOTE = '1234567890123456' WHERE LOTE = '0000012'");
  }
  Load();
  const std::string before = Books();
  EXPECT_EQ(Reverse(2), ActResult::kRefused);
  EXPECT_EQ(Told(), BoxList{Refusal("Lote ultrapassou o tamanho. Impossível continuar.")});
  EXPECT_EQ(Books(), before);
  EXPECT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Told(), BoxList());
  ExpectBooksBalance();
}

// --- fabric by metre and piece -----------------------------------------------------------------------------------

class CountedFabric : public ReversalStock {
 protected:
  void RollOf(const char* fabric, double weight, const char* quantity) {
    mill_.Exec("UPDATE {MATERIAL} SET PESO = " + std::to_string(weight) + " WHERE CODIGO = '" + fabric + "'");
    Order(kOrder, {{fabric, "01", 1000, ""}});
    Reserve("Y1", "D1", "L1", 90);
    Reserve("Y2", "D1", "L1", 70);
    Load();
    ASSERT_EQ(Roll(quantity), ActResult::kDone);
    ASSERT_EQ(Boxes(), BoxList());
  }
};

// Rolls are written off in kilograms and lie in stock in metres: the reversal takes the kilograms.
TEST_F(CountedFabric, InMetresLeavesTheDifferenceBehind) {
  RollOf("FM", 0.25, "100");
  ASSERT_EQ(Rolls().front().at("QTDE"), host::Value(25.0));
  ASSERT_EQ(Stock("FM", "DF", "0000011"), 100);
  EXPECT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Stock("FM", "DF", "0000011"), 75);
  EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), 0);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
  ExpectBooksBalance();
}

TEST_F(CountedFabric, OfPiecesHeavierThanAKilogramIsNotThere) {
  RollOf("FP", 1.5, "10");
  ASSERT_EQ(Rolls().front().at("QTDE"), host::Value(15.0));
  EXPECT_EQ(Reverse(1), ActResult::kRefused);
  EXPECT_EQ(Told(), BoxList{Missing("FP", "DF", "0000011")});
  ExpectBooksBalance();
}

// What a reversal leaves is known to the check; anything else still is not.
TEST_F(CountedFabric, IsStillCheckedBeyondTheDifference) {
  RollOf("FM", 0.25, "100");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  ExpectBooksBalance();
  mill_.Exec("UPDATE {MAT_MOV} SET QTDE = QTDE + 1 WHERE CODIGO = 'FM' AND SAIDA = 'N'");
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = QTDE + 1 WHERE LOTE = '0000011'");
  EXPECT_EQ(app::books::CheckBooks(mill_.Db()).size(), 1u);
}

}  // namespace
}  // namespace test
