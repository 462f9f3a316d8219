// The yarn screen in the operator's hands.
#include "yarn/operator_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

const Box kTooMuch = {"Selecione os consumos", "Quantidade baixada ultrapassou 10% do peso original. Deseja continuar?",
                      host::Icon::kQuestion};

TEST_F(Operator, TakesLotByLotAndTheScreenClosesByItself) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_EQ(yarn.Caption(), "Selecione os consumos");
              EXPECT_EQ(Wanted(yarn).RecordCount(), 2u);
              EXPECT_EQ(Wanted(yarn)["Codigo"].AsText(), "Y1");
              Take(yarn, "L2", "D1");
              EXPECT_FALSE(yarn.CloseRequested());
              EXPECT_EQ(Wanted(yarn)["Codigo"].AsText(), "Y2");
              EXPECT_EQ(Offered(yarn), (std::vector<std::string>{"Y2 D1 L1", "Y2 D2 L3"}));
              Take(yarn, "L3", "D2");
              EXPECT_TRUE(yarn.CloseRequested());
            }),
            ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Stock("Y1", "D1", "L2"), 44);
  EXPECT_EQ(Stock("Y2", "D2", "L3"), 36);
  EXPECT_EQ(Rolls().size(), 1u);
  EXPECT_EQ(mill_.Desk().Find("fmMovBaiFio"), nullptr);
  ExpectBooksBalance();
}

TEST_F(Operator, IsOneDurableWrite) {
  FreeOrder();
  Load();
  Type("EdtQtde", "10");
  AtYarnScreen([this](host::Screen& yarn) { TakeAll(yarn); });
  const auto before = mill_.Db().Stats().commits;
  ASSERT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(mill_.Db().Stats().commits, before + 1);
}

TEST_F(Operator, SeesWhatEachLotHolds) {
  mill_.SetParameter("COM", 80, "F");
  FreeOrder();
  Order("000002", {{}});
  Reserve("Y3", "D1", "F0001-9", 20, "000002");
  Reserve("Y3", "D1", "F0001-9", 2, "000002", "F");
  mill_.Exec("UPDATE {COMP_MATERIAL} SET CODIGO = 'Y3' WHERE MATERIAL = 'F1' AND CODIGO = 'Y1'");
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              host::Dataset& lots = Lots(yarn);
              ASSERT_EQ(Wanted(yarn)["Codigo"].AsText(), "Y2");
              ASSERT_EQ(mill_.Desk().SelectRow(mill_.GridOf(yarn, "TbBaixa"), 2), ActResult::kDone);
              ASSERT_TRUE(lots.Locate("Lote", {"F0001-9"}));
              EXPECT_EQ(lots["Descricao"].AsText(), "Fio 20/1 viscose");
              EXPECT_EQ(lots["Qtde"].AsFloat(), 25);
              EXPECT_EQ(lots["Qtde_B"].AsFloat(), 0);
              EXPECT_EQ(lots["Reservadas"].AsFloat(), 22);  // of every kind
              EXPECT_EQ(lots["Preco"].AsFloat(), 16);
              EXPECT_EQ(lots["DescDep"].AsText(), "Depósito de fios");
              EXPECT_EQ(lots["Local"].AsText(), "A1");
              EXPECT_EQ(lots["Fornecedor"].AsText(), "Fiação Serra");
              EXPECT_GE(mill_.GridOf(yarn, "TbEst").ColumnOf("Fornecedor"), 0);
            }),
            ActResult::kRefused);
  Boxes();
}

TEST_F(Operator, WithoutSupplierParameterThereIsNoSupplierColumn) {
  FreeOrder();
  Load();
  EXPECT_EQ(
      RollOfTen([this](host::Screen& yarn) { EXPECT_EQ(mill_.GridOf(yarn, "TbEst").ColumnOf("Fornecedor"), -1); }),
      ActResult::kRefused);
}

TEST_F(Operator, MayTakeOnlyAfterEnteringAStockWithLots) {
  FreeOrder();
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_FALSE(CanTake(yarn));
              EXPECT_THROW(mill_.Click(yarn, "BitBtn1"), host::ActError);
              ASSERT_EQ(Enter(yarn), ActResult::kDone);
              EXPECT_TRUE(CanTake(yarn));
              ASSERT_EQ(mill_.Type(yarn, "EdtLote", "NO"), ActResult::kDone);
              ASSERT_EQ(Enter(yarn), ActResult::kDone);
              EXPECT_FALSE(CanTake(yarn));
              ASSERT_EQ(mill_.Type(yarn, "EdtLote", ""), ActResult::kDone);
              ASSERT_EQ(Enter(yarn), ActResult::kDone);
              ASSERT_EQ(mill_.Click(yarn, "BitBtn1"), ActResult::kDone);
              EXPECT_FALSE(CanTake(yarn));  // each take wants its lot chosen
            }),
            ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa Cancelada.")});
  ExpectBooksBalance();
}

TEST_F(Operator, TakesWhatIsFreeOfALot) {
  FreeOrder();
  Order("000002", {{}});
  Reserve("Y1", "D1", "L1", 96, "000002");
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              Take(yarn, "L1", "D1");
              EXPECT_EQ(Wanted(yarn)["Codigo"].AsText(), "Y1");
              EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 2);
              EXPECT_EQ(Wanted(yarn)["Qt_Orig"].AsFloat(), 2);
              ASSERT_TRUE(Lots(yarn).Locate("Lote;Deposito", {"L1", "D1"}));
              EXPECT_EQ(Lots(yarn)["Qtde"].AsFloat(), 96);
              EXPECT_EQ(Lots(yarn)["Qtde_B"].AsFloat(), 4);
              Take(yarn, "L1", "D1");  // nothing free any more
              EXPECT_EQ(Boxes(), BoxList{YarnNotice("Quantidade reservada. Impossível continuar.")});
              EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 2);
              TakeAll(yarn);
            }),
            ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 96);
  EXPECT_EQ(Rolls().size(), 1u);
  ExpectBooksBalance();
}

TEST_F(Operator, ForgivesARemainderOfOneHundredth) {
  FreeOrder();
  Order("000002", {{}});
  Reserve("Y1", "D1", "L1", 94.01, "000002");  // 5.99 of 6 are free
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              Take(yarn, "L1", "D1");
              EXPECT_EQ(Wanted(yarn)["Codigo"].AsText(), "Y2");
              TakeAll(yarn);
            }),
            ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 94.01);
  ExpectBooksBalance();
}

TEST_F(Operator, MissesWhatIsAboveThat) {
  FreeOrder();
  Order("000002", {{}});
  Reserve("Y1", "D1", "L1", 94.011, "000002");
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              Take(yarn, "L1", "D1");
              EXPECT_EQ(Wanted(yarn)["Codigo"].AsText(), "Y1");
              EXPECT_DOUBLE_EQ(Wanted(yarn)["Qtde"].AsFloat(), 0.011);
            }),
            ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa Cancelada.")});
  ExpectBooksBalance();
}

TEST_F(Operator, TakingFromTheOwnReservationReducesIt) {
  mill_.SetParameter("MAL", 70, "N");
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 4);  // 6 are needed, so the operator is asked for the rest
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 2);
              Take(yarn, "L1", "D1");
              TakeAll(yarn);
            }),
            ActResult::kDone);
  // Overdrawn: nothing is left, all six count as consumed.
  EXPECT_EQ(Left("Y1", "D1", "L1"), 0);
  EXPECT_EQ(Consumed("Y1", "D1", "L1"), 6);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 94);
  ExpectBooksBalance();
}

TEST_F(Operator, PartlyReservedLeavesNoChoiceForAllRolls) {
  mill_.SetParameter("MAL", 70, "N");
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 4);
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_FALSE(ForAll(yarn).Enabled());
              EXPECT_FALSE(ForAll(yarn).Checked());
            }),
            ActResult::kRefused);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 4);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa Cancelada.")});
  ExpectBooksBalance();
}

TEST_F(Operator, CancelGivesUpAndForgetsTheLots) {
  FreeOrder();
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              ASSERT_EQ(mill_.Desk().Check(ForAll(yarn), true), ActResult::kDone);
              Take(yarn, "L1", "D1");
              EXPECT_EQ(Remembered().RecordCount(), 1u);
              ASSERT_EQ(mill_.Click(yarn, "BitBtn2"), ActResult::kDone);
            }),
            ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa Cancelada.")});
  EXPECT_EQ(Remembered().RecordCount(), 0u);
  EXPECT_EQ(Text("EdtQtde"), " 10,000");
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(mill_.Desk().Find("fmMovBaiFio"), nullptr);
  ExpectBooksBalance();
}

TEST_F(Operator, ClosingTheWindowGivesUpToo) {
  FreeOrder();
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              ASSERT_EQ(mill_.Desk().Check(ForAll(yarn), true), ActResult::kDone);
              Take(yarn, "L1", "D1");
              ASSERT_EQ(mill_.Desk().CloseScreen(yarn), ActResult::kDone);
            }),
            ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa Cancelada.")});
  EXPECT_EQ(Remembered().RecordCount(), 1u);
  ExpectBooksBalance();
}

TEST_F(Operator, MayGoOnAfterGivingUp) {
  FreeOrder();
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) { mill_.Click(yarn, "BitBtn2"); }), ActResult::kRefused);
  AtYarnScreen([this](host::Screen& yarn) { TakeAll(yarn); });
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(Rolls().size(), 1u);
}

// --- filters -----------------------------------------------------------------------------------------------------

TEST_F(Operator, FiltersTheLotsByDepositAndLot) {
  FreeOrder();
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_EQ(Offered(yarn), (std::vector<std::string>{"Y1 D1 L1", "Y1 D2 L1", "Y1 D1 L2"}));
              ASSERT_EQ(mill_.Type(yarn, "EdtDeposito", "D1"), ActResult::kDone);
              EXPECT_EQ(mill_.Text(yarn, "LblDeposito"), "Depósito de fios");
              EXPECT_EQ(Offered(yarn), (std::vector<std::string>{"Y1 D1 L1", "Y1 D1 L2"}));
              ASSERT_EQ(mill_.Type(yarn, "EdtLote", "L2"), ActResult::kDone);
              EXPECT_EQ(Offered(yarn), std::vector<std::string>{"Y1 D1 L2"});
              ASSERT_EQ(mill_.Desk().SelectRow(mill_.GridOf(yarn, "TbBaixa"), 2), ActResult::kDone);
              EXPECT_EQ(Offered(yarn), std::vector<std::string>());
              ASSERT_EQ(mill_.Type(yarn, "EdtLote", ""), ActResult::kDone);
              EXPECT_EQ(Offered(yarn), std::vector<std::string>{"Y2 D1 L1"});
              ASSERT_EQ(mill_.Type(yarn, "EdtDeposito", ""), ActResult::kDone);
              EXPECT_EQ(mill_.Text(yarn, "LblDeposito"), "");
              EXPECT_EQ(Offered(yarn), (std::vector<std::string>{"Y2 D1 L1", "Y2 D2 L3"}));
            }),
            ActResult::kRefused);
}

TEST_F(Operator, LooksLotsAndDepositsUp) {
  FreeOrder();
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              const auto lookup = [&](const char* name) -> host::TPesquisa& {
                return dynamic_cast<host::TPesquisa&>(*yarn.FindComponent(name));
              };
              mill_.Person().Pick("PqDeposito", "D2");
              ASSERT_EQ(mill_.Desk().OpenLookup(lookup("PqDeposito")), ActResult::kDone);
              EXPECT_EQ(mill_.Text(yarn, "EdtDeposito"), "D2");
              EXPECT_EQ(Offered(yarn), std::vector<std::string>{"Y1 D2 L1"});
              EXPECT_EQ(lookup("PqLote").FilterText(),
                        "CODIGO = 'Y1' AND COR = 'CR' AND QTDE > 0  AND DEPOSITO = 'D2'");
              mill_.Person().Pick("PqLote", "L1");
              ASSERT_EQ(mill_.Desk().OpenLookup(lookup("PqLote")), ActResult::kDone);
              EXPECT_EQ(mill_.Text(yarn, "EdtLote"), "L1");
            }),
            ActResult::kRefused);
}

// --- what the operator types -------------------------------------------------------------------------------------

TEST_F(Operator, MayRaiseALineToTenPercentMore) {
  FreeOrder();
  Load();
  ASSERT_EQ(Roll("0"), ActResult::kDone);
  AtYarnScreen([this](host::Screen& yarn) {
    // 0.66 x 100 / 0.6 is above 110 in binary arithmetic.
    ASSERT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 0.6);
    EXPECT_EQ(TypeWanted(yarn, "0,66"), ActResult::kDone);
    EXPECT_EQ(Boxes(), BoxList());
    TakeAll(yarn);
  });
  EXPECT_EQ(Roll("1"), ActResult::kDone);
  EXPECT_EQ(Consumption().front().at("QTDE"), host::Value(0.66));
  ExpectBooksBalance();
}

TEST_F(Operator, IsAskedAboveTenPercent) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              mill_.Person().Answer("10%", "no");
              EXPECT_EQ(TypeWanted(yarn, "6,6006"), ActResult::kRefused);  // 110.01 %
              EXPECT_EQ(Boxes(), BoxList{kTooMuch});
              EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 6);
              EXPECT_EQ(Wanted(yarn).State(), host::DatasetState::kBrowse);
              mill_.Person().Answer("10%", "yes");
              EXPECT_EQ(TypeWanted(yarn, "9"), ActResult::kDone);
              EXPECT_EQ(Boxes(), BoxList{kTooMuch});
              Take(yarn, "L1", "D1");
              TakeAll(yarn);
            }),
            ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 91);
  ExpectBooksBalance();
}

TEST_F(Operator, LoweringALineIsNeverAskedAbout) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_EQ(TypeWanted(yarn, "1"), ActResult::kDone);
              Take(yarn, "L1", "D1");
              TakeAll(yarn);
            }),
            ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 99);
}

TEST_F(Operator, LineTypedToNothingIsNotConsumed) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_EQ(TypeWanted(yarn, "0"), ActResult::kDone);
              EXPECT_EQ(Wanted(yarn).RecordCount(), 1u);
              TakeAll(yarn);
            }),
            ActResult::kDone);
  EXPECT_EQ(Consumption().size(), 1u);
  ExpectBooksBalance();
}

TEST_F(Operator, RefusedQuestionOfATakeGivesTheLotBack) {
  FreeOrder();
  Order("000002", {{}});
  Reserve("Y1", "D1", "L1", 95, "000002");  // 5 are free
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              ASSERT_EQ(TypeWanted(yarn, "6,5"), ActResult::kDone);
              mill_.Person().Answer("10%", "no");
              Take(yarn, "L1", "D1");  // leaves 1.5 of an original 1
              EXPECT_EQ(Boxes(), BoxList{kTooMuch});
              EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 6.5);
              ASSERT_TRUE(Lots(yarn).Locate("Lote;Deposito", {"L1", "D1"}));
              EXPECT_EQ(Lots(yarn)["Qtde"].AsFloat(), 100);
              EXPECT_EQ(Lots(yarn)["Qtde_B"].AsFloat(), 0);
              mill_.Person().Answer("10%", "yes");
              Take(yarn, "L1", "D1");
              EXPECT_EQ(Wanted(yarn)["Qtde"].AsFloat(), 1.5);
              EXPECT_EQ(Boxes(), BoxList{kTooMuch});
            }),
            ActResult::kRefused);
  ExpectBooksBalance();
}

TEST_F(Operator, LinesAreNeitherAddedNorDeleted) {
  FreeOrder();
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              host::Grid& lines = mill_.GridOf(yarn, "TbBaixa");
              EXPECT_EQ(mill_.Desk().DeleteRow(lines), ActResult::kRefused);
              EXPECT_EQ(Wanted(yarn).RecordCount(), 2u);
              ASSERT_EQ(mill_.Desk().SelectRow(lines, 2), ActResult::kDone);
              mill_.Desk().GridKey(lines, host::Key::kDown);
              ASSERT_EQ(mill_.Desk().SelectRow(lines, 1), ActResult::kDone);
              EXPECT_EQ(Wanted(yarn).RecordCount(), 2u);
              EXPECT_EQ(Offered(yarn).size(), 3u);
            }),
            ActResult::kRefused);
}

TEST_F(Operator, LeavesTheScreenToTheNextRollClean) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              mill_.Type(yarn, "EdtDeposito", "D1");
              TakeAll(yarn);
            }),
            ActResult::kDone);
  AtYarnScreen([this](host::Screen& yarn) {
    EXPECT_EQ(mill_.Text(yarn, "EdtDeposito"), "");
    EXPECT_EQ(Offered(yarn).size(), 3u);
    TakeAll(yarn);
  });
  EXPECT_EQ(Roll("11"), ActResult::kDone);
  EXPECT_EQ(Rolls().size(), 2u);
}

}  // namespace
}  // namespace test
