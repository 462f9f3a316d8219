// Ticking lots, what is proposed and checked, and what is stored.
#include <algorithm>

#include "order_mill.h"

namespace test {
namespace {

constexpr const char* kOverStock =
    "Quantidade reservada superior ao saldo.\nA quantidade será ajustada automaticamente.";
constexpr const char* kUnderWrittenOff =
    "Quantidade reservada inferior a quantidade baixada.\nA quantidade será ajustada automaticamente.";
constexpr const char* kOverNeed =
    "Quantidade reservada superior ao consumo requerido.\nA quantidade será ajustada automaticamente.";

class Reservation : public OrderTest {
 protected:
  void Store(std::string_view order, const char* lot, double quantity, double consumed = 0, const char* kind = "T",
             const char* yarn = "Y1") {
    mill_.Insert("MAT_RESERVA", {{"NUMERO", order},
                                 {"CODIGO", yarn},
                                 {"COR", "CR"},
                                 {"DEPOSITO", "D1"},
                                 {"LOTE", lot},
                                 {"QTDE", quantity},
                                 {"QTDE_B", consumed},
                                 {"TIPO", kind}});
  }

  // Fabric FP takes nothing but yarn Y1, so its quantity is the consumption.
  std::string Consuming(const char* quantity) {
    const std::string number = SavedOrder({{"FP", "01", quantity}});
    return number;
  }

  ActResult Edit(const char* lot, const char* deposit, const Cells& cells) {
    Stand("TbEstoque", {{"Lote", lot}, {"Deposito", deposit}});
    return mill_.Set(Screen(), "TbEstoque", cells);
  }

  double Reserved(const char* lot, const char* deposit) {
    Stand("TbEstoque", {{"Lote", lot}, {"Deposito", deposit}});
    return Screen().TbEstoque["Qtde_Res"].AsFloat();
  }

  // The screen as it opens with the parameter set.
  void Checks(const char* value) {
    Click("BtnFechar");
    mill_.SetParameter("MAL", 90, value);
    screen_ = dynamic_cast<orders::TfmCadLoteTec*>(&mill_.Open("TfmCadLoteTec"));
    ASSERT_NE(screen_, nullptr);
  }
};

TEST_F(Reservation, ProposesTheConsumptionOrWhatIsFree) {
  const std::string fifty = Consuming("50");
  const std::string eighty = Consuming("80");
  Store("000099", "L1", 30);
  Load(fifty);
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}}), ActResult::kDone);
  EXPECT_EQ(Reserved("L1", "D1"), 50);
  Load(eighty);
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}}), ActResult::kDone);
  EXPECT_EQ(Reserved("L1", "D1"), 70);
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(Reservation, TheNextLotTakesWhatTheFirstLeft) {
  Load(Consuming("120"));
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}}), ActResult::kDone);
  EXPECT_EQ(Reserved("L1", "D1"), 100);
  EXPECT_EQ(Edit("L2", "D1", {{"Sel", "S"}}), ActResult::kDone);
  EXPECT_EQ(Reserved("L2", "D1"), 20);
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(Reservation, TheFirstYarnsReservationCountsAgainstTheSecond) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});  // Y1 60, Y2 40
  Load(number);
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}}), ActResult::kDone);
  EXPECT_EQ(Reserved("L1", "D1"), 60);
  Stand("TbFios", {{"Codigo", "Y2"}});
  // 40 needed less 60 reserved: -20, which is below the nothing written off.
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}}), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines{kUnderWrittenOff});
  EXPECT_EQ(Shown("TbEstoque", {"Sel", "Lote"}).front(), "N | L1");
  // A typed quantity avoids it.
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}, {"Qtde_Res", "40"}}), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(Reserved("L1", "D1"), 40);
}

TEST_F(Reservation, WithoutChecksTheNegativeProposalIsStored) {
  Checks("N");
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  Edit("L1", "D1", {{"Sel", "S"}});
  Stand("TbFios", {{"Codigo", "Y2"}});
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}}), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number),
            (Lines{"Y1 | CR | D1 | L1 | 60 | 0 | T |  | ", "Y2 | CR | D1 | L1 | -20 | 0 | T |  | "}));
}

TEST_F(Reservation, MoreThanStockIsCutToIt) {
  Load(Consuming("500"));
  EXPECT_EQ(Edit("L2", "D1", {{"Sel", "S"}, {"Qtde_Res", "60"}}), ActResult::kDone);
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, kOverStock);
  EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
  EXPECT_EQ(Reserved("L2", "D1"), 50);
}

TEST_F(Reservation, WhatOthersReservedIsNotFree) {
  Store("000099", "L2", 32.2);  // 50 - 32.2 is a crumb below 17.8
  Load(Consuming("500"));
  EXPECT_EQ(Edit("L2", "D1", {{"Sel", "S"}, {"Qtde_Res", "17,8"}}), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(Edit("L2", "D1", {{"Qtde_Res", "17,81"}}), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{kOverStock});
  EXPECT_EQ(Reserved("L2", "D1"), 17.8);
}

TEST_F(Reservation, MoreThanNeededIsCutToTheNeed) {
  Load(Consuming("40"));
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}, {"Qtde_Res", "41"}}), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{kOverNeed});
  EXPECT_EQ(Reserved("L1", "D1"), 40);
}

TEST_F(Reservation, YarnInMetresMayBeReservedBeyondTheNeed) {
  mill_.Exec("UPDATE {MATERIAL} SET UNIDADE = 'MT' WHERE CODIGO = 'Y1'");
  Load(Consuming("40"));
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}, {"Qtde_Res", "41"}}), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(Reserved("L1", "D1"), 41);
}

TEST_F(Reservation, StockThenNeed) {
  Load(Consuming("40"));
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}, {"Qtde_Res", "1000"}}), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), (Lines{kOverStock, kOverNeed}));
  EXPECT_EQ(Reserved("L1", "D1"), 40);
}

TEST_F(Reservation, LessThanWrittenOffIsRefusedNotAdjusted) {
  const std::string number = Consuming("90");
  Store(number, "L1", 20, 30);
  Load(number);
  EXPECT_EQ(Edit("L1", "D1", {{"Qtde_Res", "29"}}), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines{kUnderWrittenOff});
  EXPECT_EQ(Reserved("L1", "D1"), 20);
  EXPECT_FALSE(Screen().TbEstoque.InEdit());
  // More consumed than left: even unticking is refused.
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "N"}}), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines{kUnderWrittenOff});
  EXPECT_EQ(Edit("L1", "D1", {{"Qtde_Res", "30"}}), ActResult::kDone);
}

TEST_F(Reservation, StockBelowZeroFreeIsThenBelowWhatWasWrittenOff) {
  Store("000099", "L2", 60);  // more than the 50 in stock
  Load(Consuming("40"));
  EXPECT_EQ(Edit("L2", "D1", {{"Sel", "S"}, {"Qtde_Res", "5"}}), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), (Lines{kOverStock, kUnderWrittenOff}));
  EXPECT_EQ(Shown("TbEstoque", {"Sel", "Lote"}).back().substr(0, 1), "N");
}

TEST_F(Reservation, AWhollyConsumedRowIsProposedForWhenEdited) {
  const std::string number = Consuming("90");
  Store(number, "L1", 0, 30);
  Load(number);
  Stand("TbEstoque", {{"Lote", "L1"}, {"Deposito", "D1"}});
  EXPECT_EQ(Screen().TbEstoque["Sel"].AsText(), "S");
  EXPECT_EQ(Edit("L1", "D1", {{"Obs", "resto"}}), ActResult::kDone);
  EXPECT_EQ(Reserved("L1", "D1"), 90);
}

TEST_F(Reservation, UntickingTakesTheQuantityOff) {
  Load(Consuming("40"));
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}}), ActResult::kDone);
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "N"}}), ActResult::kDone);
  EXPECT_EQ(Reserved("L1", "D1"), 0);
}

TEST_F(Reservation, WithoutTheParameterAnyQuantityMayBeReserved) {
  for (const char* value : {"N", "", "s"}) {
    Checks(value);
    const std::string number = Consuming("40");
    Load(number);
    EXPECT_EQ(Edit("L2", "D1", {{"Sel", "S"}, {"Qtde_Res", "5000"}}), ActResult::kDone);
    EXPECT_EQ(mill_.Messages(), Lines());
    EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
    EXPECT_EQ(Reservations(number), Lines{"Y1 | CR | D1 | L2 | 5000 | 0 | T |  | "}) << value;
  }
}

// --- storing -------------------------------------------------------------------------------------------------------

TEST_F(Reservation, TickedLotsAreStoredWithSupplierAndRemark) {
  mill_.Exec("UPDATE {MATERIAL} SET CODCLI = 'F0001' WHERE CODIGO = 'Y1'");
  const std::string number = Consuming("120");
  Load(number);
  Edit("L1", "D1", {{"Sel", "S"}, {"Obs", "primeiro d'eles"}});
  Edit("L2", "D1", {{"Sel", "S"}});
  mill_.TakeStatements();
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  const std::string kind = " AND (TIPO = 'T' OR TIPO <> 'F' OR TIPO IS NULL)";
  Lines sent = mill_.TakeStatements("MAT_RESERVA");
  ASSERT_EQ(sent.size(), 6u);
  // First a look whether they are still what they were when the order was loaded.
  EXPECT_EQ(sent[0],
            "SELECT CODIGO, COR, DEPOSITO, LOTE, QTDE, QTDE_B, NOME, OBS, TIPO FROM MAT_RESERVA WHERE NUMERO = "
            "'000001'" +
                kind);
  sent.erase(sent.begin());
  const bool l1_first = sent[1].find("'L1'") != std::string::npos;
  EXPECT_EQ(sent[0], "DELETE FROM MAT_RESERVA WHERE NUMERO = '000001' AND (QTDE_B <= 0 OR QTDE_B IS NULL)" + kind);
  EXPECT_EQ(sent[l1_first ? 1 : 3],
            "SELECT NUMERO FROM MAT_RESERVA WHERE NUMERO = '000001' AND CODIGO = 'Y1' AND COR = 'CR' AND DEPOSITO = "
            "'D1' AND LOTE = 'L1'" +
                kind);
  EXPECT_EQ(sent[l1_first ? 2 : 4],
            "INSERT INTO MAT_RESERVA (CODIGO, COR, LOTE, DEPOSITO, NUMERO, QTDE, NOME, OBS, QTDE_B, TIPO) VALUES "
            "('Y1', 'CR', 'L1', 'D1', '000001', 100, 'Fiação Serra', 'primeiro d''eles', 0, 'T')");
  EXPECT_EQ(Reservations(number), (Lines{"Y1 | CR | D1 | L1 | 100 | 0 | T | Fiação Serra | primeiro d'eles",
                                         "Y1 | CR | D1 | L2 | 20 | 0 | T | Fiação Serra | "}));
}

TEST_F(Reservation, AReservationWithAWriteOffIsUpdated) {
  const std::string number = Consuming("120");
  Store(number, "L1", 10, 5);
  Load(number);
  Edit("L1", "D1", {{"Qtde_Res", "25"}, {"Obs", "mais"}});
  mill_.TakeStatements();
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.TakeStatements("UPDATE MAT_RESERVA"),
            Lines{"UPDATE MAT_RESERVA SET QTDE = 25 ,NOME = '' ,OBS = 'mais' WHERE CODIGO = 'Y1' AND COR = 'CR' AND "
                  "LOTE = 'L1' AND DEPOSITO = 'D1' AND NUMERO = '000001' AND (TIPO = 'T' OR TIPO <> 'F' OR TIPO IS "
                  "NULL)"});
  EXPECT_EQ(Reservations(number), Lines{"Y1 | CR | D1 | L1 | 25 | 5 | T |  | mais"});
}

TEST_F(Reservation, UntickedAndSavedItIsGone) {
  const std::string number = Consuming("120");
  Store(number, "L1", 10);
  Store(number, "L2", 10, 0, "F");
  Load(number);
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "N"}}), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number), Lines{"Y1 | CR | D1 | L2 | 10 | 0 | F |  | "});
}

TEST_F(Reservation, UntickedWithAWriteOffItStaysAsItWas) {
  Checks("N");
  const std::string number = Consuming("120");
  Store(number, "L1", 10, 5);
  Load(number);
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "N"}}), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number), Lines{"Y1 | CR | D1 | L1 | 10 | 5 | T |  | "});
}

TEST_F(Reservation, ALotThatIsNotListedLosesItsReservation) {
  const std::string number = Consuming("120");
  Store(number, "NENHUM", 10);      // no stock row at all
  Store(number, "NENHUM2", 10, 5);  // but this one was used
  Load(number);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number), Lines{"Y1 | CR | D1 | NENHUM2 | 10 | 5 | T |  | "});
}

TEST_F(Reservation, LotsHiddenByTheFilterAreSaved) {
  mill_.Exec("UPDATE {DEPOSITO} SET CODCLI = 'M00001', PRIORIDADE = '5' WHERE CODIGO = 'D2'");
  const std::string number = Consuming("120");
  Store(number, "L1", 10);
  Load(number);
  EXPECT_EQ(Text("EdtFilDeposito"), "D2");
  EXPECT_EQ(Shown("TbEstoque", {"Lote", "Deposito"}), Lines{"L1 | D2"});
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number), Lines{"Y1 | CR | D1 | L1 | 10 | 0 | T |  | "});
}

TEST_F(Reservation, LotsOfARemovedItemGoAtTheSaveAfterNext) {
  const std::string number = SavedOrder({{"F1", "01", "10"}, {"FP", "01", "20"}});
  Store(number, "L1", 4, 0, "T", "Y2");
  Load(number);
  Stand("TbItens", {{"Codigo", "F1"}});
  EXPECT_EQ(mill_.Desk().DeleteRow(Screen().DBGrid6), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number), Lines{"Y2 | CR | D1 | L1 | 4 | 0 | T |  | "});
  Load(number);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number), Lines());
}

TEST_F(Reservation, TickedZeroIsWritten) {
  Checks("N");
  const std::string number = Consuming("0");
  Load(number);
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}}), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number), Lines{"Y1 | CR | D1 | L1 | 0 | 0 | T |  | "});
}

TEST_F(Reservation, ARowStillBeingTypedIsSettledAndSaved) {
  const std::string number = Consuming("40");
  Load(number);
  Stand("TbEstoque", {{"Lote", "L1"}, {"Deposito", "D1"}});
  mill_.Desk().SelectCell(Screen().GrdEstoque, "Sel");
  EXPECT_EQ(mill_.Desk().TypeCell(Screen().GrdEstoque, "S"), ActResult::kDone);
  EXPECT_TRUE(Screen().TbEstoque.InEdit());
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number), Lines{"Y1 | CR | D1 | L1 | 40 | 0 | T |  | "});
}

TEST_F(Reservation, ALotIsSettledBeforeThePersonGoesToAnotherYarn) {
  Load(SavedOrder({{"F1", "01", "100"}}));  // Y1 60, Y2 40
  Stand("TbEstoque", {{"Lote", "L1"}, {"Deposito", "D1"}});
  mill_.Desk().SelectCell(Screen().GrdEstoque, "Sel");
  EXPECT_EQ(mill_.Desk().TypeCell(Screen().GrdEstoque, "S"), ActResult::kDone);
  EXPECT_EQ(mill_.Desk().SelectRow(Screen().GrdFios, 2), ActResult::kDone);
  EXPECT_EQ(mill_.Desk().SelectRow(Screen().GrdFios, 1), ActResult::kDone);
  EXPECT_EQ(Reserved("L1", "D1"), 60);
}

TEST_F(Reservation, ARefusedRowStopsTheSave) {
  const std::string number = Consuming("90");
  Store(number, "L1", 20, 30);
  Load(number);
  Stand("TbEstoque", {{"Lote", "L1"}, {"Deposito", "D1"}});
  mill_.Desk().SelectCell(Screen().GrdEstoque, "Qtde_Res");
  mill_.Desk().TypeCell(Screen().GrdEstoque, "1");
  const Lines before = Everything();
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines{kUnderWrittenOff});
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
}

TEST_F(Reservation, SixDecimalsAreKept) {
  const std::string number = Consuming("1");
  Load(number);
  EXPECT_EQ(Edit("L1", "D1", {{"Sel", "S"}, {"Qtde_Res", "0,123456"}}), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number), Lines{"Y1 | CR | D1 | L1 | 0.123456 | 0 | T |  | "});
}

}  // namespace
}  // namespace test
