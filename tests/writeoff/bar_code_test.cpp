// Scanned bar codes: a keyboard that types the code and Enter.
#include <random>

#include "host/text.h"
#include "weighing_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;
using Lines = std::vector<std::string>;

constexpr const char* kEan13 = "7891234567895";

Box Unread(std::string text) { return {"Movimentos Baixas", std::move(text), host::Icon::kInformation}; }

class Scans : public WeighingMill {
 protected:
  // Both colours of F1 are ordered and packed; indicator 1 holds 20 kg, 12 holds 15.
  void Ready() {
    Order(kOrder, {{}, {"F1", "02", 100, ""}});
    Reserve("Y1", "D1", "L1", 60);
    Reserve("Y2", "D1", "L1", 40);
    Packed("01", kEan13);
    Packed("02", "7891234500005");
    mill_.Insert("CADTAG", {{"CODIGO", "1"}, {"QTDE", 20}});
    mill_.Insert("CADTAG", {{"CODIGO", "12"}, {"QTDE", 15}});
    Load();
    TickBarCode();
    Enter("EdtBarra");
    mill_.TakeStatements();
  }
  void Packed(const char* colour, const char* bar) {
    mill_.Exec("UPDATE {MAT_ITEN} SET BARRA = '" + std::string(bar) + "' WHERE CODIGO = 'F1' AND COR = '" + colour +
               "'");
  }
  void Labelled(const char* lot, const char* colour, double quantity = 0, const char* code = "F1") {
    mill_.Insert("MAT_ITEN",
                 {{"CODIGO", code}, {"COR", colour}, {"DEPOSITO", "DF"}, {"LOTE", lot}, {"QTDE", quantity}});
  }
  void ExpectUntouched(const std::string& code) {
    EXPECT_EQ(Text("EdtBarra"), code);
    EXPECT_EQ(Text("EdtQtde"), "");
    EXPECT_EQ(Text("EdtCor"), "01");
    EXPECT_EQ(Focused(), "EdtBarra");
    EXPECT_TRUE(Rolls().empty());
  }
  std::vector<std::string> Colours() {
    std::vector<std::string> colours;
    for (const Row& roll : Rolls()) colours.push_back(roll.at("COR").AsText());
    return colours;
  }
};

TEST_F(Scans, TheFieldIsThereWhileItIsTicked) {
  ReservedOrder();
  Load();
  const auto& field = dynamic_cast<host::Edit&>(*Screen().FindComponent("EdtBarra"));
  EXPECT_FALSE(field.Visible());
  TickBarCode();
  EXPECT_TRUE(field.Visible());
  Type("EdtBarra", "123");
  TickBarCode(false);
  EXPECT_FALSE(field.Visible());
  EXPECT_EQ(field.Text(), "");
}

TEST_F(Scans, AWeighedCodeIsARollAtOnce) {
  Ready();
  EXPECT_EQ(mill_.Desk().TypeInto(dynamic_cast<host::Edit&>(*mill_.Desk().Focused()), "7891234567895012345"),
            ActResult::kDone);
  EXPECT_EQ(Press(host::Key::kEnter), ActResult::kRefused);  // the cursor stays where the next code is scanned
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
  EXPECT_EQ(Focused(), "EdtBarra");
  EXPECT_EQ(Text("EdtBarra"), "");
  EXPECT_EQ(Text("EdtQtde"), " 0,000");
}

TEST_F(Scans, ScanAfterScan) {
  Ready();
  for (const char* code : {"7891234567895012345", "7891234567895010500", "17891234567899", "7891234567895011000"}) {
    Scan(code);
  }
  EXPECT_EQ(Weights(), std::vector<double>({12.345, 10.5, 20, 11}));
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Focused(), "EdtBarra");
  ExpectBooksBalance();
}

TEST_F(Scans, AWeighedCodeNeitherChecksNorSelectsTheItem) {
  Ready();
  mill_.Desk().SelectRow(mill_.GridOf(Screen(), "TbItens"), 2);
  Type("EdtTara", "0");
  Enter("EdtBarra");
  Scan("7891234567895012345");
  EXPECT_EQ(Colours(), Lines({"02"}));
}

TEST_F(Scans, AWeighedCodeWhoseRollIsRefusedKeepsWhatItFilled) {
  Ready();
  Type("EdtData", "11/03/2026");
  Enter("EdtBarra");
  Scan("7891234567895012345");
  EXPECT_EQ(Boxes(), BoxList({Refusal("Data da Baixa Inválida.")}));
  EXPECT_EQ(Text("EdtBarra"), kEan13);
  EXPECT_EQ(Text("EdtQtde"), " 12,345");
  EXPECT_EQ(Focused(), "EdtData");
}

TEST_F(Scans, TheSameCodeTwiceIsRefusedOnce) {
  Ready();
  Scan("7891234567895012345");
  Scan("7891234567895012345");
  EXPECT_EQ(Boxes(), BoxList({Notice("Baixa já Realizada.")}));
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_EQ(Press(host::Key::kF8), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({12.345, 12.345}));
}

TEST_F(Scans, AClosedPeriodSaysNothingAndTheQuantityWaits) {
  Ready();
  mill_.Insert("TEC_PERIODO",
               {{"AREA", "IV"}, {"DT_INICIO", "2026-03-01"}, {"DT_FIM", "2026-03-31"}, {"CONCILIADO", "S"}});
  Scan("7891234567895012345");
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(Text("EdtQtde"), " 12,345");
  EXPECT_EQ(Focused(), "EdtQtde");
}

TEST_F(Scans, AWeightOfZeroLeavesTheQuantityToBeTyped) {
  Ready();
  Scan("7891234567895000000");
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Text("EdtBarra"), kEan13);
  EXPECT_EQ(Focused(), "EdtQtde");
}

TEST_F(Scans, APackageSelectsItsItemAndHoldsItsQuantity) {
  Ready();
  Scan("17891234500002");
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Weights(), std::vector<double>({19.7}));  // less the tare of the item that was selected
  EXPECT_EQ(Colours(), Lines({"02"}));
  EXPECT_EQ(Text("EdtTara"), "0,30");
  EXPECT_EQ(Focused(), "EdtBarra");
}

TEST_F(Scans, APackageOfTwoDigits) {
  Ready();
  Scan("127891234500002");
  EXPECT_EQ(Weights(), std::vector<double>({14.7}));
  EXPECT_EQ(Colours(), Lines({"02"}));
}

TEST_F(Scans, AnyCheckDigitWillDo) {
  Ready();
  for (const char* code : {"17891234567890", "17891234567897"}) {
    Scan(code);
    Type("EdtQtde", "0");
    mill_.Desk().DblClick(mill_.GridOf(Screen(), "TbItens"));  // forgets the roll's weight
    Type("EdtQtde", "0");
    Enter("EdtBarra");
  }
  EXPECT_EQ(Weights(), std::vector<double>({20, 20}));
}

TEST_F(Scans, TheStatementOfAPackage) {
  Ready();
  Scan("17891234567899");
  const Lines statements = mill_.TakeStatements("BARRA LIKE");
  ASSERT_EQ(statements.size(), 1u);
  EXPECT_EQ(statements[0], "SELECT BARRA, CODIGO, COR FROM MAT_ITEN WHERE BARRA LIKE '789123456789%'");
}

TEST_F(Scans, AnUnknownIndicatorLeavesTheQuantityToBeTyped) {
  Ready();
  Scan("97891234500002");
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(Text("EdtBarra"), "7891234500005");  // the item's own
  EXPECT_EQ(Text("EdtCor"), "02");
  EXPECT_EQ(Text("EdtQtde"), " 0,000");
  EXPECT_EQ(Focused(), "EdtQtde");
}

TEST_F(Scans, APackageThatNobodyKnowsIsLeftAsTyped) {
  Ready();
  EXPECT_EQ(Scan("10000000000000"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Text("EdtBarra"), "10000000000000");
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_TRUE(Rolls().empty());
}

TEST_F(Scans, APackageThatNobodyKnowsConfirmsNothing) {
  Ready();
  Type("EdtQtde", "10");
  Enter("EdtBarra");
  Scan("10000000000000");
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(Text("EdtQtde"), " 10,000");
}

TEST_F(Scans, APackageOfAnotherOrdersItemIsRefused) {
  Ready();
  mill_.Exec("UPDATE {MAT_ITEN} SET BARRA = '7890000000017' WHERE CODIGO = 'F2' AND COR = '01'");
  EXPECT_EQ(Scan("17890000000014"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Unread("Item não encontrado.")}));
  ExpectUntouched("17890000000014");
}

TEST_F(Scans, ARefusedCodeIsScannedOver) {
  Ready();
  Scan("000009999");
  EXPECT_EQ(Boxes(), BoxList({Unread("Lote inválido.")}));
  Scan("7891234567895012345");
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
}

TEST_F(Scans, ALabelSelectsItsItemAndWaitsForTheWeight) {
  Ready();
  Labelled("000001002", "02");
  EXPECT_EQ(Scan("000001002"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Text("EdtCor"), "02");
  EXPECT_EQ(Text("EdtBarra"), "000001002");
  EXPECT_EQ(Text("EdtQtde"), "");
  EXPECT_EQ(Focused(), "EdtQtde");
  Scale().AfterOpening({{"10.300\r"}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({10}));
  EXPECT_EQ(Colours(), Lines({"02"}));
  EXPECT_EQ(Focused(), "EdtBarra");
}

TEST_F(Scans, ALabelScannedAfterTheWeightIsARollAtOnce) {
  Ready();
  Labelled("000001002", "02");
  Type("EdtQtde", "10,3");
  Enter("EdtBarra");
  Scan("000001002");
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Weights(), std::vector<double>({10}));
  EXPECT_EQ(Colours(), Lines({"02"}));
}

TEST_F(Scans, ALabelThatIsARollAlreadyIsRefused) {
  Ready();
  Labelled("000001002", "02", 10);
  EXPECT_EQ(Scan("000001002"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Unread("Etiqueta já lida")}));
  ExpectUntouched("000001002");
}

TEST_F(Scans, ALabelOfAnotherOrderIsRefused) {
  Ready();
  Labelled("000002001", "01", 0, "F2");
  EXPECT_EQ(Scan("000002001"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Unread("Item não encontrado.")}));
  ExpectUntouched("000002001");
}

TEST_F(Scans, ALabelThatNobodyMadeIsRefused) {
  Ready();
  for (const char* lot : {"000001009", "%%%%%%%%%", "_________", "' OR 1=1'", "çççççççç1"}) {
    EXPECT_EQ(Scan(lot), ActResult::kRefused) << lot;
    EXPECT_EQ(Boxes(), BoxList({Unread("Lote inválido.")})) << lot;
    ExpectUntouched(lot);
  }
}

// The lot of a roll is what its label says: who scans it again has a roll that is there.
TEST_F(Scans, WithTheSchemeOfLabelsALabelIsReadOnce) {
  mill_.SetParameter("MAL", 40, "4");
  Ready();
  Labelled("000001002", "02");
  Scan("000001002");
  Type("EdtQtde", "10,3");
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(Rolls().at(0).at("LOTE").AsText(), "000001002");
  EXPECT_EQ(Focused(), "EdtBarra");
  EXPECT_EQ(Scan("000001002"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Unread("Etiqueta já lida")}));
  ExpectBooksBalance();
}

TEST_F(Scans, AnyOtherTextIsLeftAsTyped) {
  Ready();
  Type("EdtQtde", "10");
  for (const char* text : {"1", "12345678", "1234567890", "1234567890123", "1234567890123456", "%", "ABC-123",
                           "1789123456789%", "______________"}) {
    Enter("EdtBarra");
    mill_.TakeStatements();
    EXPECT_EQ(Scan(text), ActResult::kDone) << text;
    EXPECT_EQ(Text("EdtBarra"), text);
    EXPECT_EQ(mill_.TakeStatements(), Lines()) << text;
  }
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_TRUE(Rolls().empty());
}

TEST_F(Scans, BlanksAreNoCode) {
  Ready();
  EXPECT_EQ(Scan("         "), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  Enter("EdtBarra");
  Scan(" 7891234567895012345 ");
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
}

TEST_F(Scans, ACodeIsReadOnceWhicheverWayTheFieldIsLeft) {
  Ready();
  mill_.Type(Screen(), "EdtBarra", "7891234567895012345");
  EXPECT_EQ(Weights().size(), 1u);
  Enter("EdtBarra");
  mill_.Desk().TypeInto(dynamic_cast<host::Edit&>(*mill_.Desk().Focused()), "7891234567895010000");
  EXPECT_EQ(Press(host::Key::kF8), ActResult::kRefused);  // leaving for the button has confirmed it
  EXPECT_EQ(Weights(), std::vector<double>({12.345, 10}));
  EXPECT_EQ(Boxes(), BoxList());
}

TEST_F(Scans, WhenTheDatabaseFailsTheFieldsStayAndTheErrorIsTold) {
  Ready();
  Labelled("000001002", "02");
  const std::vector<std::pair<const char*, int>> failures = {
      {"17891234500002", 1}, {"17891234500002", 2}, {"000001002", 1}};
  for (const auto& [code, statement] : failures) {
    mill_.FailStatement(statement);
    EXPECT_EQ(Scan(code), ActResult::kFailed) << code;
    EXPECT_TRUE(mill_.StopFailing());
    EXPECT_EQ(Text("EdtBarra"), code);
    EXPECT_EQ(Text("EdtQtde"), "");
    EXPECT_EQ(Focused(), "EdtBarra");
  }
  EXPECT_EQ(mill_.Person().TakeErrors().size(), 3u);
  Boxes();
}

// Codes of real and of wrong items, clean and dirty: a roll is only ever of the item that its code names.
TEST_F(Scans, WhateverIsScannedNoRollIsOfAWrongItem) {
  Ready();
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE = 100000");
  mill_.SetParameter("MAL", 70, "N");
  Labelled("000001001", "01");
  Labelled("000001002", "02");
  std::mt19937 random(7);
  const auto below = [&random](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(random); };
  // No yarn is asked of anybody: what is scanned ends with the item it selects.
  Type("EdtDeposito", "NO");
  mill_.Person().TakeMessages();
  const std::vector<std::string> bodies = {"789123456789", "789123450000", "789123456788", "000000000000"};
  for (int round = 0; round < 3000; ++round) {
    // A code that was refused stands there still, and is scanned over.
    if (Focused() == "EdtBarra") mill_.Desk().TypeInto(dynamic_cast<host::Edit&>(*mill_.Desk().Focused()), "");
    Type("EdtQtde", "0");
    Enter("EdtBarra");
    std::string code;
    switch (below(4)) {
      case 0:
        code = std::to_string(below(10)) + bodies[below(bodies.size())] + std::to_string(below(10));
        break;
      case 1:
        code = std::to_string(10 + below(90)) + bodies[below(bodies.size())] + std::to_string(below(10));
        break;
      case 2:
        code = "00000" + std::to_string(below(3)) + "00" + std::to_string(below(4));
        break;
      default:
        for (std::size_t i = below(20); i > 0; --i) code += "0123456789%_'"[below(13)];
    }
    const std::string before = Text("EdtCor");
    Scan(code);
    const std::string body = code.size() == 14 ? code.substr(1, 12) : code.size() == 15 ? code.substr(2, 12) : "";
    std::string expected = before;
    if (body == bodies[0] || code == "000001001") expected = "01";
    if (body == bodies[1] || code == "000001002") expected = "02";
    ASSERT_EQ(Text("EdtCor"), expected) << code;
    ASSERT_EQ(Text("EdtCodigo"), "F1");
    Boxes();
  }
  EXPECT_TRUE(Rolls().empty());
  mill_.Person().TakeUnexpected();
}

}  // namespace
}  // namespace test
