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

class Scales : public WeighingMill {
 protected:
  void ExpectNothingTaken() {
    EXPECT_EQ(Text("EdtQtde"), "");
    EXPECT_TRUE(Rolls().empty());
    EXPECT_FALSE(Scale().Connected());
    EXPECT_EQ(Log(), Lines());
  }
  void TypeQuantity(const char* text) {
    Enter("EdtQtde");
    ASSERT_EQ(mill_.Desk().TypeInto(dynamic_cast<host::Edit&>(*mill_.Desk().Focused()), text), ActResult::kDone);
  }
};

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

// --- protocol 2: the scale sends continuously -----------------------------------------------------------------------

class Continuous : public Scales {
 protected:
  void Ready(int decimals = 2) {
    Protocol(2, decimals);
    Scales::Ready();
  }
};

TEST_F(Continuous, ThePortIsOpenAsLongAsTheScreen) {
  Protocol(2);
  host::Screen& screen = mill_.Open("TfmMovBaiTec");
  EXPECT_EQ(Scale().TakeCalls(), Calls({"load Venda/Parametros", "open"}));
  EXPECT_TRUE(Scale().Connected());
  EXPECT_EQ(mill_.Desk().CloseScreen(screen), ActResult::kDone);
  EXPECT_FALSE(Scale().Connected());
  EXPECT_FALSE(Scale().Send("012345\r"));
}

TEST_F(Continuous, EveryReceptionIsARoll) {
  Ready();
  EXPECT_TRUE(Scale().Send("012345\r"));
  EXPECT_EQ(Scale().TakeCalls(), Calls({"wait 1000", "read 65536", "discard"}));
  EXPECT_TRUE(Scale().Send("0", {{"10500\r", milliseconds(10)}}));
  EXPECT_EQ(Weights(), std::vector<double>({12.345, 10.5}));
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Focused(), "EdtBarra");
  EXPECT_TRUE(Scale().Connected());
  ExpectBooksBalance();
}

TEST_F(Continuous, OneMoreDigitFollowsTheCommaThanIsSet) {
  Ready(0);
  EXPECT_TRUE(Scale().Send("000234"));
  EXPECT_EQ(Weights(), std::vector<double>({23.4}));
}

TEST_F(Continuous, TheDecimalsAreTakenAtEveryReading) {
  Ready(0);
  Protocol(2, 2);
  EXPECT_TRUE(Scale().Send("012345"));
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
}

TEST_F(Continuous, OfSeveralFramesTheNewestWholeOneCounts) {
  Ready();
  EXPECT_TRUE(Scale().Send("345\r", {{"010000\r", milliseconds(300)},
                                     {"011000\r", milliseconds(600)},
                                     {"0120", milliseconds(990)},
                                     {"00\r", milliseconds(1010)}}));
  EXPECT_EQ(Weights(), std::vector<double>({11}));
}

TEST_F(Continuous, WhatWasSentMeanwhileIsNotForTheNextRoll) {
  Ready();
  EXPECT_TRUE(Scale().Send("010000\r011000\r"));
  EXPECT_TRUE(Scale().Send("012000\r"));
  EXPECT_EQ(Weights(), std::vector<double>({11, 12}));
}

TEST_F(Continuous, WithoutMoreDigitsThanDecimalsNothingHappens) {
  Ready();
  TypeQuantity("7,5");
  for (const char* bytes : {"12\r", "kg\r", "\r\n", "\x02\x03",
                            "\x02"
                            "01234"}) {
    EXPECT_TRUE(Scale().Send(bytes)) << bytes;
  }
  EXPECT_EQ(Text("EdtQtde"), " 7,500");
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Log(), Lines());
  EXPECT_EQ(mill_.TakeStatements(), Lines());
}

TEST_F(Continuous, AnEmptyScaleDisturbsNobody) {
  Ready();
  mill_.SetParameter("MAL", 60, "S");
  Type("EdtPecas", "2");
  EXPECT_TRUE(Scale().Send("000000\r"));
  EXPECT_EQ(Text("EdtPecas"), "2");
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Log(), Lines());
}

TEST_F(Continuous, TheSameWeightAgainIsRefusedByTheConfirmation) {
  Ready();
  EXPECT_TRUE(Scale().Send("012345\r"));
  EXPECT_TRUE(Scale().Send("012345\r"));
  EXPECT_EQ(Boxes(), BoxList({Notice("Baixa já Realizada.")}));
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
}

TEST_F(Continuous, WhatArrivesBehindABoxIsWeighedForNobody) {
  Ready();
  EXPECT_TRUE(Scale().Send("012345\r"));
  bool heard = true;
  mill_.Person().OnShown = [&](const app::ScriptedPerson::Shown&) { heard = Scale().Send("099999\r"); };
  EXPECT_TRUE(Scale().Send("012345\r"));
  mill_.Person().OnShown = {};
  EXPECT_FALSE(heard);
  EXPECT_EQ(Boxes(), BoxList({Notice("Baixa já Realizada.")}));
  EXPECT_EQ(Weights(), std::vector<double>({12.345}));
  EXPECT_TRUE(Scale().Send("011000\r"));
  EXPECT_EQ(Weights(), std::vector<double>({12.345, 11}));
}

TEST_F(Continuous, WhatArrivesWhileTheYarnIsChosenIsWeighedForNobody) {
  FreeOrder();
  Protocol(2, 2);
  Load();
  bool heard = true;
  AtYarnScreen([&](host::Screen& yarn) {
    heard = Scale().Send("020000\r");
    Take(yarn, "L1", "D1");
    Take(yarn, "L1", "D1");
  });
  EXPECT_TRUE(Scale().Send("010000\r"));
  EXPECT_FALSE(heard);
  EXPECT_EQ(Weights(), std::vector<double>({10}));
  ExpectBooksBalance();
}

TEST_F(Continuous, F5HasNothingToDo) {
  Ready();
  EXPECT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Scale().TakeCalls(), Calls());
  EXPECT_FALSE(dynamic_cast<host::Label&>(*Screen().FindComponent("LblCaptura")).Enabled());
}

TEST_F(Continuous, WithoutOrderTheConfirmationSaysSo) {
  Protocol(2, 2);
  mill_.Open("TfmMovBaiTec");
  EXPECT_TRUE(Scale().Send("012345\r"));
  EXPECT_EQ(Boxes(), BoxList({Refusal("Lote Inválido.")}));
}

TEST_F(Continuous, APortThatDoesNotOpenLeavesAScreenToTypeOn) {
  Protocol(2, 2);
  Scale().fail_open = "A porta COM1 está em uso.";
  ReservedOrder();
  Load();
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_FALSE(Scale().Connected());
  EXPECT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({10}));
}

TEST_F(Continuous, AStationWithoutPortLeavesAScreenToTypeOn) {
  Protocol(2, 2);
  Scale().fail_port = "Esta estação não tem balança.";
  ReservedOrder();
  Load();
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Roll("10"), ActResult::kDone);
}

// --- F10 ------------------------------------------------------------------------------------------------------------

class StationPerson : public app::ScriptedPerson {
 public:
  bool SetUpScale(app::scale::ScaleSettings& settings) override {
    if (!set_up) return false;
    set_up(settings);
    return true;
  }
  std::function<void(app::scale::ScaleSettings&)> set_up;
};

class SetUp : public ::testing::Test {
 protected:
  SetUp() : mill_(Options()) {}
  Mill::Options Options() {
    Mill::Options options;
    options.person = &person_;
    return options;
  }
  FakeScale& Scale() { return mill_.Equipment().Scale(); }
  std::string Stored(const char* name) {
    return mill_.App().GetUserSettings().Read("Venda", "Parametros", name).value_or("never");
  }
  std::vector<std::string> Texts() {
    std::vector<std::string> texts;
    for (const auto& shown : person_.TakeMessages()) texts.push_back(shown.text);
    return texts;
  }
  ActResult F10() { return mill_.Desk().PressKey(mill_.Open("TfmMovBaiTec"), host::Key::kF10); }

  StationPerson person_;
  Mill mill_;
};

TEST_F(SetUp, StoresWhatThePersonChose) {
  person_.set_up = [](app::scale::ScaleSettings& settings) {
    EXPECT_EQ(settings, app::scale::ScaleSettings());
    settings.port.port = "/dev/ttyUSB0";
    settings.port.baud_rate = 4800;
  };
  EXPECT_EQ(F10(), ActResult::kDone);
  EXPECT_EQ(Scale().TakeCalls(), Calls({"load Venda/Parametros", "setup", "store Venda/Parametros"}));
  EXPECT_EQ(Stored("Port"), "/dev/ttyUSB0");
  EXPECT_EQ(Stored("BaudRate"), "4800");
  EXPECT_EQ(Texts(), Lines());
  EXPECT_FALSE(Scale().Connected());
}

TEST_F(SetUp, GivenUpLeavesEverything) {
  EXPECT_EQ(F10(), ActResult::kDone);
  EXPECT_EQ(Scale().TakeCalls(), Calls({"load Venda/Parametros", "setup"}));
  EXPECT_EQ(Stored("Port"), "never");
}

TEST_F(SetUp, AnotherProtocolHoldsForTheNextScreen) {
  person_.set_up = [](app::scale::ScaleSettings& settings) { settings.protocol = 1; };
  EXPECT_EQ(F10(), ActResult::kDone);
  EXPECT_EQ(Texts(), Lines({"O protocolo escolhido vale a partir da próxima abertura desta tela."}));
  EXPECT_EQ(Stored("ProtocoloBal"), "1");
}

TEST_F(SetUp, AContinuousScaleIsListenedToOnTheNewPort) {
  mill_.App().GetUserSettings().Write("Venda", "Parametros", "ProtocoloBal", "2");
  person_.set_up = [](app::scale::ScaleSettings& settings) { settings.port.baud_rate = 4800; };
  mill_.Open("TfmMovBaiTec");
  Scale().TakeCalls();
  EXPECT_EQ(F10(), ActResult::kDone);
  EXPECT_EQ(Scale().TakeCalls(), Calls({"load Venda/Parametros", "setup", "store Venda/Parametros",
                                        "load Venda/Parametros", "close", "open"}));
  EXPECT_TRUE(Scale().Connected());
}

TEST_F(SetUp, WhatCannotBeStoredOrOpenedIsTold) {
  mill_.App().GetUserSettings().Write("Venda", "Parametros", "ProtocoloBal", "2");
  person_.set_up = [](app::scale::ScaleSettings&) {};
  mill_.Open("TfmMovBaiTec");
  Scale().fail_store = "As configurações não puderam ser gravadas.";
  EXPECT_EQ(F10(), ActResult::kRefused);
  EXPECT_TRUE(Scale().Connected());
  Scale().fail_open = "A porta COM1 está em uso.";
  EXPECT_EQ(F10(), ActResult::kRefused);
  EXPECT_FALSE(Scale().Connected());
  EXPECT_EQ(Texts(), Lines({"As configurações não puderam ser gravadas.", "A porta COM1 está em uso."}));
}

// --- the log --------------------------------------------------------------------------------------------------------

class WeighingLog : public Scales {
 protected:
  static constexpr const char* kWeighed = "PESO DA BALANCA: 12.345 RECEBIDO: <02>12.345 kg<03><0D>";
  ActResult Weigh() {
    Scale().AfterOpening(
        {{"\x02"
          "12.345 kg\x03\r"}});
    return F5();
  }
};

TEST_F(WeighingLog, TellsWeightAndBytesOfEveryRoll) {
  Ready();
  EXPECT_EQ(Weigh(), ActResult::kDone);
  EXPECT_EQ(Log(), Lines({kWeighed, "BAIXA DE LOTE NR.: 000001 CODIGO: F1 QUANT: 12.345"}));
  EXPECT_EQ(Value("SELECT CHAVE FROM TEC_LOG WHERE TEXTO STARTING WITH 'PESO'").AsText(), kOrder);
}

TEST_F(WeighingLog, IsOneStatementMore) {
  Ready();
  Type("EdtQtde", "10");
  mill_.TakeStatements();
  ASSERT_EQ(Confirm(), ActResult::kDone);
  const std::size_t typed = mill_.TakeStatements().size();
  Enter("EdtQtde");
  mill_.TakeStatements();
  ASSERT_EQ(Weigh(), ActResult::kDone);
  EXPECT_EQ(mill_.TakeStatements().size(), typed + 1);
}

TEST_F(WeighingLog, OfAContinuousScaleHoldsTheFrameThatWasRead) {
  Protocol(2, 2);
  Ready();
  ASSERT_TRUE(
      Scale().Send("99\r\x02"
                   "A012345<\x03\x02"
                   "0"));
  EXPECT_EQ(Log().at(0), "PESO DA BALANCA: 12.345 RECEBIDO: <02>A012345<3C>");
}

TEST_F(WeighingLog, IsCutToItsWidth) {
  Ready();
  Scale().AfterOpening({{"\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n12.345 kg\r"}});
  ASSERT_EQ(F5(), ActResult::kDone);
  EXPECT_EQ(Log().at(0).size(), 150u);
  EXPECT_EQ(Log().at(0).substr(0, 42), "PESO DA BALANCA: 12.345 RECEBIDO: <0A><0A>");
}

TEST_F(WeighingLog, StaysWhenTheRollIsRefused) {
  Ready();
  Type("EdtData", "11/03/2026");
  Enter("EdtBarra");
  EXPECT_EQ(Weigh(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Refusal("Data da Baixa Inválida.")}));
  EXPECT_EQ(Log(), Lines({kWeighed}));
  EXPECT_EQ(Text("EdtQtde"), " 12,345");
  EXPECT_FALSE(Scale().Connected());
}

TEST_F(WeighingLog, StaysWhenThePeriodIsClosed) {
  Ready();
  mill_.Insert("TEC_PERIODO",
               {{"AREA", "IV"}, {"DT_INICIO", "2026-03-01"}, {"DT_FIM", "2026-03-31"}, {"CONCILIADO", "S"}});
  EXPECT_EQ(Weigh(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Log(), Lines({kWeighed}));
  EXPECT_TRUE(Rolls().empty());
}

TEST_F(WeighingLog, StaysWhenTheYarnIsNotThere) {
  Order(kOrder, {{}});
  Load();
  TickBarCode();
  Enter("EdtBarra");
  EXPECT_EQ(Weigh(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList({Notice("Lote sem reserva."), Notice("Baixa Cancelada.")}));
  EXPECT_EQ(Log(), Lines({kWeighed}));
}

// Whichever statement fails: the roll is there whole or not at all, the port is closed, and the frame is in the log
// unless its own row or the durable write of everything was what failed.
TEST_F(WeighingLog, StaysWhereverTheRollFails) {
  Ready();
  const auto frames = [this] { return Number("SELECT COUNT(*) FROM TEC_LOG WHERE TEXTO STARTING WITH 'PESO'"); };
  int failed = 0;
  int lost = 0;
  for (int n = 1;; ++n) {
    const std::size_t rolls = Rolls().size();
    const double before = frames();
    mill_.FailStatement(n);
    Scale().AfterOpening({{"10." + std::to_string(100 + n) + "\r"}});
    F5();
    if (!mill_.StopFailing()) break;
    ++failed;
    if (frames() == before) ++lost;
    EXPECT_LE(frames(), before + 1) << n;
    EXPECT_LE(Rolls().size(), rolls + 1) << n;
    EXPECT_FALSE(Scale().Connected());
    EXPECT_EQ(Boxes().size(), 1u) << n;
    ExpectBooksBalance();
    Enter("EdtBarra");
  }
  EXPECT_GT(failed, 40);
  EXPECT_EQ(lost, 3);  // what the action begins with, the row itself, the commit
  mill_.Person().TakeErrors();
}

}  // namespace
}  // namespace test
