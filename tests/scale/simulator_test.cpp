// The simulated scale itself: its frames, its port, its link.
#include "app/scale/simulator.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "app/scale/frame.h"
#include "simulated_scale.h"

namespace {

namespace fs = std::filesystem;
using app::scale::Behaviour;
using app::scale::SimulatedFrame;
using app::scale::Simulator;
using app::scale::SimulatorOptions;
using test::WhatWasTold;

SimulatorOptions Options(int protocol, double weight, int decimals = 2) {
  SimulatorOptions options;
  options.protocol = static_cast<host::ScaleProtocol>(protocol);
  options.weight = weight;
  options.decimals = decimals;
  return options;
}

std::string Link(const char* name) { return (fs::temp_directory_path() / name).string(); }

TEST(Simulator, FramesOfEachProtocol) {
  EXPECT_EQ(SimulatedFrame(Options(0, 20.5), 0), "ST,GS,+  20.500kg\r\n");
  EXPECT_EQ(SimulatedFrame(Options(1, 1234.5), 0), "ST,GS,+1234.500kg\r\n");
  EXPECT_EQ(SimulatedFrame(Options(2, 20.5), 0),
            "\x02"
            "020500\r");
  EXPECT_EQ(SimulatedFrame(Options(2, 20.5, 0), 0),
            "\x02"
            "000205\r");
  EXPECT_EQ(SimulatedFrame(Options(2, 12345.678), 0),
            "\x02"
            "12345678\r");
}

TEST(Simulator, AWeightThatTheDigitsCannotHold) {
  EXPECT_NE(WhatWasTold([] { SimulatedFrame(Options(2, 123456.789), 0); }).find("algarismos"), std::string::npos);
  EXPECT_NE(WhatWasTold([] { const Simulator scale(Options(2, 123456.789)); }).find("algarismos"), std::string::npos);
}

// Every frame of a scale that cannot weigh is refused.
TEST(Simulator, FramesWithoutWeight) {
  for (const Behaviour behaviour :
       {Behaviour::kGarbage, Behaviour::kCut, Behaviour::kUnstable, Behaviour::kNegative, Behaviour::kOverload}) {
    for (const int protocol : {0, 1, 2}) {
      SimulatorOptions options = Options(protocol, 20.5);
      options.behaviour = behaviour;
      for (unsigned count = 0; count < 100; ++count) {
        EXPECT_NE(WhatWasTold([&] { app::scale::WeightOfFrame(SimulatedFrame(options, count), '\r'); }), "")
            << static_cast<int>(behaviour) << " " << count;
      }
    }
  }
}

TEST(Simulator, LinkIsMadeAndRemoved) {
  SimulatorOptions options = Options(0, 20.5);
  options.link = Link("tecelagem-test-link");
  {
    const Simulator scale(options);
    EXPECT_EQ(scale.PortName(), options.link);
    EXPECT_TRUE(fs::is_symlink(options.link));
    EXPECT_TRUE(fs::exists(options.link));
  }
  EXPECT_FALSE(fs::is_symlink(options.link));
}

TEST(Simulator, LinkLeftByAnotherIsReplaced) {
  SimulatorOptions options = Options(0, 20.5);
  options.link = Link("tecelagem-test-left");
  fs::remove(options.link);
  fs::create_symlink("/dev/pts/no-such-port", options.link);
  const Simulator scale(options);
  EXPECT_TRUE(fs::exists(options.link));
}

TEST(Simulator, FileInTheWayOfTheLinkStays) {
  SimulatorOptions options = Options(0, 20.5);
  options.link = Link("tecelagem-test-letter");
  std::ofstream(options.link) << "querida malharia";
  const std::string told = WhatWasTold([&] { const Simulator scale(options); });
  EXPECT_NE(told.find(options.link), std::string::npos) << told;
  EXPECT_FALSE(fs::is_symlink(options.link));
  EXPECT_EQ(fs::file_size(options.link), 16U);
  fs::remove(options.link);
}

TEST(Simulator, ServesForItsTimeAndStops) {
  using std::chrono::milliseconds;
  using std::chrono::steady_clock;
  Simulator scale(Options(0, 20.5));
  const auto start = steady_clock::now();
  scale.Serve(milliseconds(120));
  EXPECT_GE(steady_clock::now() - start, milliseconds(115));
  EXPECT_GE(scale.Frames(), 1);
  std::thread stopper([&scale] { scale.Stop(); });
  scale.Serve(std::chrono::hours(1));
  stopper.join();
}

// Nobody listens: the line fills and the scale goes on.
TEST(Simulator, AFullLineDoesNotStopIt) {
  SimulatorOptions options = Options(0, 20.5);
  options.interval = std::chrono::milliseconds(0);
  Simulator scale(options);
  scale.Serve(std::chrono::milliseconds(200));
  EXPECT_GT(scale.Frames(), 100);
}

}  // namespace
