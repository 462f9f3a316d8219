// The scale's setup on F10, and what the log keeps of every weighing.
#include "weighing_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;
using Lines = std::vector<std::string>;

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
  person_.set_up = [](app::scale::ScaleSettings& settings) { settings.protocol = host::ScaleProtocol::kAsked; };
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

class WeighingLog : public WeighingMill {
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
