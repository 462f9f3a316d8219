// A scale that sends continuously.
#include "weighing_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;
using Lines = std::vector<std::string>;
using std::chrono::milliseconds;

class Continuous : public WeighingMill {
 protected:
  void Ready(int decimals = 2) {
    Protocol(2, decimals);
    WeighingMill::Ready();
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
  const char* const kBrokenOff =
      "\x02"
      "01234";
  for (const char* bytes : {"12\r", "kg\r", "\r\n", "\x02\x03", kBrokenOff}) {
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

}  // namespace
}  // namespace test
