// Each protocol with each way in which a scale can behave, through the real port, as a weighing station asks.
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cmath>
#include <string>

#include "app/scale/frame.h"
#include "simulated_scale.h"
#include "writeoff/scale_frames.h"

namespace {

using app::scale::Behaviour;
using app::scale::SimulatorOptions;
using app::scale::WeightOfFrame;
using std::chrono::milliseconds;
using test::PortInProgram;
using test::SimulatedScale;
using test::WhatWasTold;

constexpr milliseconds kWait(250);
constexpr milliseconds kInterval(50);

SimulatorOptions Options(int protocol, Behaviour behaviour) {
  SimulatorOptions options;
  options.protocol = static_cast<host::ScaleProtocol>(protocol);
  options.behaviour = behaviour;
  options.interval = kInterval;
  return options;
}

// What a station with that protocol receives after it opened the port.
std::string Received(host::SerialPort& port, int protocol) {
  port.Open();
  if (protocol == 1) port.Write("\x05");
  port.Wait(kWait, {});
  std::string bytes = port.Read(protocol == 0 ? 50 : protocol == 1 ? 30 : 1000);
  port.Close();
  return bytes;
}

std::string WhyNot(int protocol, Behaviour behaviour) {
  SimulatedScale scale(Options(protocol, behaviour));
  PortInProgram program(scale->PortName());
  return WhatWasTold([&] {
    const double weight = WeightOfFrame(Received(*program.port, protocol), '\r');
    ADD_FAILURE() << "a weight: " << weight;
  });
}

TEST(Behaviour, SteadyGivesTheWeight) {
  for (const int protocol : {0, 1}) {
    SimulatedScale scale(Options(protocol, Behaviour::kSteady));
    PortInProgram program(scale->PortName());
    EXPECT_EQ(WeightOfFrame(Received(*program.port, protocol), '\r'), 20.5) << protocol;
    scale->SetWeight(18.255);
    if (protocol == 0) scale.AwaitFrame();
    EXPECT_EQ(WeightOfFrame(Received(*program.port, protocol), '\r'), 18.255) << protocol;
  }
}

// Sent without end and asked for, each in its way.
TEST(Behaviour, EachHasItsReason) {
  struct Case {
    Behaviour behaviour;
    const char* sent;   // protocol 0
    const char* asked;  // protocol 1
  };
  constexpr std::array<Case, 7> kCases = {{
      {Behaviour::kGarbage, "não foi entendida", "não foi entendida"},
      {Behaviour::kSilent, "não respondeu", "não respondeu"},
      {Behaviour::kSlow, "não respondeu", "não respondeu"},
      {Behaviour::kCut, "veio cortada", "veio cortada"},
      {Behaviour::kUnstable, "não está estável", "não está estável"},
      {Behaviour::kNegative, "peso negativo", "peso negativo"},
      {Behaviour::kOverload, "sobrecarga", "sobrecarga"},
  }};
  for (const Case& known : kCases) {
    const std::string sent = WhyNot(0, known.behaviour);
    EXPECT_NE(sent.find(known.sent), std::string::npos) << static_cast<int>(known.behaviour) << ": " << sent;
    const std::string asked = WhyNot(1, known.behaviour);
    EXPECT_NE(asked.find(known.asked), std::string::npos) << static_cast<int>(known.behaviour) << ": " << asked;
  }
}

TEST(Behaviour, WaveringShowsOnlyInSeveralFrames) {
  EXPECT_NE(WhyNot(0, Behaviour::kWavering).find("mudou durante"), std::string::npos);
  // One answer is all there is to judge: it states its own weight.
  SimulatedScale scale(Options(1, Behaviour::kWavering));
  PortInProgram program(scale->PortName());
  const double first = WeightOfFrame(Received(*program.port, 1), '\r');
  const double second = WeightOfFrame(Received(*program.port, 1), '\r');
  EXPECT_NE(first, second);
  EXPECT_LT(std::fabs(first - 20.5), 1);
  EXPECT_LT(std::fabs(second - 20.5), 1);
}

// Digits only: what is no weight has none.
TEST(Behaviour, ContinuousDigits) {
  for (const auto& [behaviour, name] : app::scale::kBehaviours) {
    SimulatedScale scale(Options(2, behaviour));
    PortInProgram program(scale->PortName());
    const std::string frame = writeoff::NewestFrame(Received(*program.port, 2));
    const auto weight = writeoff::WeightOfDigits(frame, 2);
    if (behaviour == Behaviour::kSteady) {
      EXPECT_EQ(weight, 20.5);
    } else if (behaviour == Behaviour::kWavering) {
      ASSERT_TRUE(weight.has_value());
      EXPECT_LT(std::fabs(*weight - 20.5), 1);
    } else {
      EXPECT_FALSE(weight.has_value()) << name << ": " << frame;
    }
  }
}

// A scale that is not asked is not answered; one that is asked says it once.
TEST(Behaviour, RequestsAreCounted) {
  SimulatedScale scale(Options(1, Behaviour::kSteady));
  PortInProgram program(scale->PortName());
  program.port->Open();
  program.port->Wait(kWait, {});
  EXPECT_EQ(program.port->Read(50), "");
  EXPECT_EQ(scale->Requests(), 0);
  Received(*program.port, 1);
  EXPECT_EQ(scale->Requests(), 1);
  EXPECT_EQ(scale->Frames(), 1);
}

// The port is opened and closed for every roll, and each roll gets its own weight.
TEST(Behaviour, TwoHundredRollsAsked) {
  SimulatedScale scale(Options(1, Behaviour::kSteady));
  PortInProgram program(scale->PortName());
  std::string answer;
  program.port->OnRxChar = [&] { answer += program.port->Read(30); };
  for (int roll = 1; roll <= 200; ++roll) {
    scale->SetWeight(roll / 8.0);
    answer.clear();
    program.port->Open();
    program.port->Write("\x05");
    program.port->Wait(milliseconds(5000), [&answer] { return writeoff::AnswerEnded(answer); });
    program.port->Close();
    ASSERT_EQ(WeightOfFrame(answer, '\r'), roll / 8.0);
  }
  EXPECT_EQ(scale->Requests(), 200);
  EXPECT_EQ(program.acts, 0);
}

TEST(Behaviour, FiftyRollsSentWithoutEnd) {
  SimulatorOptions options = Options(0, Behaviour::kSteady);
  options.interval = milliseconds(10);
  SimulatedScale scale(options);
  PortInProgram program(scale->PortName());
  for (int roll = 1; roll <= 50; ++roll) {
    scale->SetWeight(roll / 8.0);
    scale.AwaitFrame();
    program.port->Open();
    program.port->Wait(milliseconds(60), {});
    const std::string received = program.port->Read(50);
    program.port->Close();
    ASSERT_EQ(WeightOfFrame(received, '\r'), roll / 8.0) << received;
  }
}

}  // namespace
