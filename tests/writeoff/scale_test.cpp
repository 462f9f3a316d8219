// Rolls whose weight comes from the scale.
#include "host/errors.h"
#include "weighing_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;
using Lines = std::vector<std::string>;
using std::chrono::milliseconds;

constexpr const char* kSilent =
    "A balança não respondeu. Verifique se ela está ligada, se o cabo está conectado e se a porta e a velocidade "
    "conferem (F10).";

using Scales = WeighingMill;

// --- protocol 0: the scale has sent when the port is read -----------------------------------------------------------

TEST_F(Scales, F5ReadsOnceAndConfirms) {
  Ready();
  Scale().AfterOpening({{"\x02  12.340 kg\r", milliseconds(200)}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Weights(), std::vector<double>({12.34}));
  EXPECT_EQ(Scale().TakeCalls(), Calls({"load Venda/Parametros", "open", "wait 500", "read 50", "close"}));
  EXPECT_EQ(Text("EdtQtde"), " 0,000");
  EXPECT_EQ(Focused(), "EdtBarra");
  ExpectBooksBalance();
}

TEST_F(Scales, RollAfterRollWithOneKey) {
  Ready();
  for (const char* weight : {"10.000", "11.500", "9.250"}) {
    Scale().AfterOpening({{std::string(weight) + "\r"}});
    EXPECT_EQ(F5(), ActResult::kDone);
  }
  EXPECT_EQ(Weights(), std::vector<double>({10, 11.5, 9.25}));
  EXPECT_EQ(Boxes(), BoxList());
  ExpectBooksBalance();
}

TEST_F(Scales, TheSameWeightTwiceIsRefusedOnce) {
  Ready();
  Scale().AfterOpening({{"12.345\r"}});
  EXPECT_EQ(F5(), ActResult::kDone);
  Scale().AfterOpening({{"12.345\r"}});
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Notice("Baixa já Realizada.")}));
  EXPECT_FALSE(Scale().Connected());
  Scale().AfterOpening({{"12.345\r"}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({12.345, 12.345}));
}

TEST_F(Scales, ASilentScaleIsToldOnceAndChangesNothing) {
  Ready();
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Refusal(kSilent)}));
  EXPECT_EQ(Scale().TakeCalls(), Calls({"load Venda/Parametros", "open", "wait 500", "read 50", "close"}));
  ExpectNothingTaken();
  EXPECT_EQ(mill_.TakeStatements(), Lines());
}

TEST_F(Scales, AQuantityThatWasTypedStaysWhenTheScaleIsSilent) {
  Ready();
  TypeQuantity("7,5");
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_EQ(Text("EdtQtde"), " 7,500");
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(Boxes().size(), 1u);
}

TEST_F(Scales, RefusedFramesPressNothing) {
  Ready();
  for (const char* frame : {"12.3", "ST,NT,-  1.250kg\r", "US,GS,+ 12.340kg\r", "OL,GS,        kg\r", "lixo\r", "\r",
                            "\xFF\xFE\x80 12\x81\r", "ST,GS,+ 12.340kg\rST,GS,+ 12.360kg\r"}) {
    Scale().AfterOpening({{frame}});
    EXPECT_EQ(F5(), ActResult::kRefused) << frame;
    EXPECT_EQ(Boxes().size(), 1u) << frame;
    ExpectNothingTaken();
  }
}

TEST_F(Scales, AnEmptyScaleIsNoRoll) {
  Ready();
  TypeQuantity("7,5");
  Scale().AfterOpening({{"00.000\r"}});
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Refusal("A balança indica peso zero.")}));
  EXPECT_EQ(Text("EdtQtde"), " 7,500");
  EXPECT_EQ(Log(), Lines());
  EXPECT_FALSE(Scale().Connected());
}

TEST_F(Scales, WhatComesAfterTheReadingIsNeverHeard) {
  Ready();
  Scale().AfterOpening({{"12.345\r", milliseconds(100)}, {"99.999\r", milliseconds(501)}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_FALSE(Scale().Send("88.888\r"));
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Refusal(kSilent)}));
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
}

TEST_F(Scales, AtMostFiftyCharactersAreRead) {
  Ready();
  Scale().AfterOpening({{std::string(48, ' ') + "12.345\r"}});
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_EQ(Boxes().size(), 1u);
  ExpectNothingTaken();
}

TEST_F(Scales, APortThatDoesNotOpenIsTold) {
  Ready();
  Scale().fail_open = "A porta COM1 não existe.";
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Refusal("A porta COM1 não existe.")}));
  ExpectNothingTaken();
  Scale().AfterOpening({{"12.345\r"}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
}

TEST_F(Scales, AStationWithoutPortIsTold) {
  Ready();
  Scale().fail_port = "Esta estação não tem balança.";
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_EQ(Press(host::Key::kF10), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Refusal("Esta estação não tem balança."), Refusal("Esta estação não tem balança.")}));
}

// --- when F5 acts ---------------------------------------------------------------------------------------------------

TEST_F(Scales, F5ActsOnlyWhileBarCodesAreRead) {
  Ready();
  TickBarCode(false);
  Enter("EdtQtde");
  Scale().AfterOpening({{"12.345\r"}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Scale().TakeCalls(), Calls());
  TickBarCode();
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
}

TEST_F(Scales, F5DoesNothingInTheOrder) {
  Ready();
  Enter("EdtLote");
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Scale().TakeCalls(), Calls());
  EXPECT_EQ(Boxes(), BoxList());
}

TEST_F(Scales, F5ActsFromTheItemsAndFromAnyOtherInput) {
  Ready();
  double weight = 10;
  for (const char* place : {"GrdItens", "EdtQtde", "EdtTara", "CbBarra", "BtnConfirma", "GrdRolos"}) {
    Enter(place);
    Scale().AfterOpening({{std::to_string(weight += 1) + "\r"}});
    EXPECT_EQ(F5(), ActResult::kDone) << place;
    EXPECT_EQ(Focused(), "EdtBarra") << place;
  }
  EXPECT_EQ(Weights(), std::vector<double>({11, 12, 13, 14, 15, 16}));
}

TEST_F(Scales, WhatStandsUnderThePanelTellsWhenF5Acts) {
  ReservedOrder();
  Load();
  const auto& label = dynamic_cast<host::Label&>(*Screen().FindComponent("LblCaptura"));
  EXPECT_EQ(label.Text(), "F5 - Captura Peso");
  const auto hints = [this] {
    std::string keys;
    for (const host::KeyHint& hint : Screen().KeyHints()) keys += hint.text + ";";
    return keys;
  };
  EXPECT_FALSE(label.Enabled());
  EXPECT_EQ(hints(), "Itens;Balança;");
  TickBarCode();
  EXPECT_TRUE(label.Enabled());
  EXPECT_EQ(hints(), "Captura Peso;Itens;Balança;");
  TickBarCode(false);
  EXPECT_FALSE(label.Enabled());
}

TEST_F(Scales, ACodeThatWasTypedWithoutEnterStillSaysWhichItemIsWeighed) {
  Order(kOrder, {{}, {"F1", "02", 100, ""}});
  Reserve("Y1", "D1", "L1", 60);
  Reserve("Y2", "D1", "L1", 40);
  mill_.Insert("MAT_ITEN", {{"CODIGO", "F1"}, {"COR", "02"}, {"DEPOSITO", "DF"}, {"LOTE", "000001001"}});
  Load();
  TickBarCode();
  Enter("EdtBarra");
  ASSERT_EQ(mill_.Desk().TypeInto(dynamic_cast<host::Edit&>(*mill_.Desk().Focused()), "000001001"), ActResult::kDone);
  Scale().AfterOpening({{"10.000\r"}});
  EXPECT_EQ(F5(), ActResult::kDone);
  ASSERT_EQ(Rolls().size(), 1u);
  EXPECT_EQ(Rolls()[0].at("COR").AsText(), "02");
}

TEST_F(Scales, ACodeThatHoldsTheWeightIsConfirmedByF5Once) {
  Ready();
  ASSERT_EQ(mill_.Desk().TypeInto(dynamic_cast<host::Edit&>(*mill_.Desk().Focused()), "7891234567895012345"),
            ActResult::kDone);
  Scale().AfterOpening({{"10.000\r"}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
  EXPECT_EQ(Scale().TakeCalls(), Calls());
}

// --- protocol 1: the scale is asked ---------------------------------------------------------------------------------

const Calls kAskedAndAnswered = {
    "load Venda/Parametros", "open", "wait 500", "discard", "write <05>", "wait 500", "read 30", "close"};

TEST_F(Scales, F5AsksAndTheAnswerIsConfirmed) {
  Protocol(1);
  Ready();
  Scale().Answer(
      {{"\x02"
        "12.345\x03\r",
        milliseconds(60)}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
  EXPECT_EQ(Scale().TakeCalls(), kAskedAndAnswered);
  EXPECT_EQ(Focused(), "EdtBarra");
}

TEST_F(Scales, AnAnswerMayComeInPieces) {
  Protocol(1);
  Ready();
  Scale().Answer(
      {{" 1", milliseconds(10)}, {"2.3", milliseconds(20)}, {"45 kg", milliseconds(400)}, {"\r", milliseconds(500)}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
}

TEST_F(Scales, AnAnswerThatBreaksOffIsNoWeight) {
  Protocol(1);
  Ready();
  Scale().Answer({{"12", milliseconds(10)}, {".345\r", milliseconds(501)}});
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Refusal("A leitura da balança veio cortada; pese outra vez.")}));
  ExpectNothingTaken();
}

TEST_F(Scales, NoAnswerIsToldOnce) {
  Protocol(1);
  Ready();
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Refusal(kSilent)}));
  EXPECT_EQ(Scale().TakeCalls(),
            Calls({"load Venda/Parametros", "open", "wait 500", "discard", "write <05>", "wait 500", "close"}));
  ExpectNothingTaken();
}

TEST_F(Scales, AnAnswerTooLateIsNotForTheNextRoll) {
  Protocol(1);
  Ready();
  Scale().Answer({{"55.555\r", milliseconds(700)}});
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_FALSE(Scale().Send("55.555\r"));
  Scale().AfterOpening({{"44.444\r", milliseconds(499)}});
  Scale().Answer({{"12.345\r", milliseconds(30)}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
  EXPECT_EQ(Boxes(), BoxList({Refusal(kSilent)}));
}

TEST_F(Scales, ABeginningBeforeTheRequestIsNoPartOfTheAnswer) {
  Protocol(1);
  Ready();
  Scale().AfterOpening({{"9", milliseconds(500)}});
  Scale().Answer({{"12.345\r"}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
}

TEST_F(Scales, ARequestThatCannotBeSentIsToldAndThePortClosed) {
  Protocol(1);
  Ready();
  Scale().fail_write = "A porta COM1 não aceita dados.";
  EXPECT_EQ(F5(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Refusal("A porta COM1 não aceita dados.")}));
  ExpectNothingTaken();
}

TEST_F(Scales, TheProtocolIsTakenWhenTheScreenOpens) {
  Ready();
  Protocol(1);
  Scale().AfterOpening({{"12.345\r"}});
  Scale().Answer({{"99.999\r"}});
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
}

TEST_F(Scales, AProtocolThatDoesNotExistIsTheFirst) {
  for (const char* stored : {"3", "-1", "x", ""}) {
    mill_.App().GetUserSettings().Write("Venda", "Parametros", "ProtocoloBal", stored);
    host::Screen& screen = mill_.Open("TfmMovBaiTec");
    TickBarCode();
    Enter("EdtQtde");
    EXPECT_EQ(F5(), ActResult::kRefused) << stored;
    EXPECT_EQ(Scale().TakeCalls(), Calls({"load Venda/Parametros", "open", "wait 500", "read 50", "close"})) << stored;
    Boxes();
    mill_.Desk().CloseScreen(screen);
  }
}

}  // namespace
}  // namespace test
