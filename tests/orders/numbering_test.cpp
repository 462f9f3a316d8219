// Where the number of an order comes from, and what leaving the number input does.
#include "order_mill.h"

namespace test {
namespace {

class Numbering : public OrderTest {};

TEST_F(Numbering, IncluirGivesSixDigitsAndToday) {
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), "000001");
  EXPECT_EQ(Text("EdtData"), "10/03/2026");
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), "000002");
}

TEST_F(Numbering, IncluirClearsTheScreenButNotTheStitchSize) {
  NewOrder();
  Type("EdtFicha", "F-77");
  Type("EdtPrazo", "30");
  Type("EdtMaquina", "MQ1");
  Type("EdtFluxo", "FL1");
  Type("EdtRPM", "25");
  Type("EdtPonto", "2,75");
  Type("EdtDeposito", "DF");
  Type("EdtObs", "urgente");
  Type("EdtFilLote", "L1");
  Type("EdtFilLocal", "A");
  Type("EdtFilDeposito", "D1");
  EXPECT_EQ(AddItem("F1", "01", "10"), ActResult::kDone);
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
  for (const char* input : {"EdtMalharia", "EdtFicha", "EdtPrazo", "EdtMaquina", "EdtFluxo", "EdtRPM", "EdtDeposito",
                            "EdtObs", "EdtFilLote", "EdtFilLocal", "EdtFilDeposito", "LblMalharia", "LblPrazo",
                            "LblMaquina", "LblFluxo", "LblDeposito"}) {
    EXPECT_EQ(Text(input), "") << input;
  }
  EXPECT_EQ(Text("EdtPonto"), "2,750");
  EXPECT_EQ(Screen().TbItens.RecordCount(), 0u);
}

TEST_F(Numbering, LeavingTheEmptyNumberStartsAnOrder) {
  EXPECT_EQ(Type("EdtNumero", ""), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), "000001");
  EXPECT_EQ(Text("EdtData"), "10/03/2026");
}

TEST_F(Numbering, TheEmptyNumberWithoutTheRightClearsNothing) {
  NewOrder();
  Type("EdtFicha", "F-77");
  mill_.TakeRight("TfmCadLoteTec", "A");
  EXPECT_EQ(Type("EdtNumero", ""), ActResult::kRefused);
  EXPECT_EQ(Text("EdtNumero"), "");
  EXPECT_EQ(Text("EdtFicha"), "F-77");
  EXPECT_EQ(FocusedName(), "EdtNumero");
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(Numbering, ATypedUnknownNumberIsTakenAsItIs) {
  NewOrder();
  Type("EdtFicha", "F-77");
  EXPECT_EQ(Type("EdtNumero", "77"), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), "77");
  EXPECT_EQ(Text("EdtFicha"), "");
  EXPECT_EQ(Text("EdtData"), "");
  Type("EdtMalharia", "M00001");
  AddItem("F1", "01", "10");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items("77"), Lines{"F1 | 01 |  | 5 | 10 |  | 0 | 0 | "});
  // The empty date is the zero date.
  EXPECT_EQ(mill_.Scalar("SELECT DT_INICIO FROM {TECEL} WHERE NUMERO = '77'").AsDate(), host::Date());
}

TEST_F(Numbering, ATypedUnknownNumberWithoutTheRightIsEmptied) {
  NewOrder();
  Type("EdtFicha", "F-77");
  mill_.TakeRight("TfmCadLoteTec", "A");
  EXPECT_EQ(Type("EdtNumero", "000777"), ActResult::kRefused);
  EXPECT_EQ(Text("EdtNumero"), "");
  EXPECT_EQ(Text("EdtFicha"), "");
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(Numbering, ATypedNumberNeverComesAgain) {
  Type("EdtNumero", "000003");
  Type("EdtMalharia", "M00001");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  Lines given;
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
    given.push_back(Text("EdtNumero"));
  }
  EXPECT_EQ(given, (Lines{"000004", "000005", "000006", "000007"}));
}

TEST_F(Numbering, ANumberTypedAheadIsSkippedLater) {
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
  Type("EdtNumero", "000003");
  Type("EdtMalharia", "M00001");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  Lines given;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
    given.push_back(Text("EdtNumero"));
  }
  EXPECT_EQ(given, (Lines{"000002", "000004", "000005"}));
}

TEST_F(Numbering, TwoStationsGetDifferentNumbers) {
  Mill::Options second;
  second.database = mill_.Path();
  Mill other(second);
  host::Screen& elsewhere = other.Open("TfmCadLoteTec");
  Lines given;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
    given.push_back(Text("EdtNumero"));
    EXPECT_EQ(other.Click(elsewhere, "BtnIncluir"), ActResult::kDone);
    given.push_back(other.Text(elsewhere, "EdtNumero"));
  }
  EXPECT_EQ(given, (Lines{"000001", "000002", "000003", "000004", "000005", "000006"}));
}

TEST_F(Numbering, IncluirWithoutTheRightIsSilentAndChangesNothing) {
  NewOrder();
  mill_.TakeRight("TfmCadLoteTec", "A");
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kRefused);
  EXPECT_EQ(Text("EdtNumero"), "000001");
  EXPECT_EQ(Text("EdtMalharia"), "M00001");
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(Numbering, WithoutANumberNothingIsSavedDeletedOrDuplicated) {
  for (const char* button : {"BtnGravar", "BtnExcluir", "BtnDuplicar"}) {
    Screen().EdtNumero.Clear();
    // Straight from another input: the number was never entered.
    mill_.Desk().Enter(Screen().EdtFicha);
    EXPECT_EQ(Click(button), ActResult::kRefused) << button;
    EXPECT_EQ(mill_.Messages(), Lines{"Informe o número da ordem."}) << button;
    EXPECT_EQ(FocusedName(), "EdtNumero");
    Type("EdtNumero", "000001");
  }
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {TECEL}").AsInteger(), 0);
}

TEST_F(Numbering, ConsultarPutsTheNumberInAndTheNextActLoadsTheOrder) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  NewOrder();
  AddItem("F2", "01", "1");
  mill_.Person().Pick("PqNumero", number);
  EXPECT_EQ(Click("BtnConsultar"), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), number);
  EXPECT_EQ(FocusedName(), "EdtNumero");
  // The save leaves the number first, so it saves the order that was picked.
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 5 | 100 |  | 0 | 0 | "});
}

}  // namespace
}  // namespace test
