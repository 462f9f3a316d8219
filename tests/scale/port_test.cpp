// The real port, on a pseudo-terminal with a simulated scale at its other end.
#include "app/serial/port.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSerialPort>
#include <QTimer>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "app/scale/frame.h"
#include "app/serial/open_error.h"
#include "host/restored.h"
#include "simulated_scale.h"

namespace {

using app::scale::Behaviour;
using app::scale::ScaleSettings;
using app::scale::SimulatorOptions;
using app::scale::WeightOfFrame;
using std::chrono::milliseconds;
using std::chrono::steady_clock;
using test::PortInProgram;
using test::SimulatedScale;
using test::WhatWasTold;

constexpr const char* kRequest = "\x05";

SimulatorOptions Options(int protocol, Behaviour behaviour = Behaviour::kSteady, double weight = 20.5) {
  SimulatorOptions options;
  options.protocol = static_cast<host::ScaleProtocol>(protocol);
  options.behaviour = behaviour;
  options.weight = weight;
  options.interval = milliseconds(40);
  return options;
}

milliseconds Since(steady_clock::time_point start) {
  return std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
}

// --- opening and closing -------------------------------------------------------------------------------------------

TEST(Port, IsClosedAtFirst) {
  PortInProgram program("/dev/none");
  EXPECT_FALSE(program.port->Connected());
  program.port->Close();
  EXPECT_EQ(program.port->Read(10), "");
  EXPECT_NE(WhatWasTold([&] { program.port->Write("x"); }).find("está fechada"), std::string::npos);
}

TEST(Port, OpensAndCloses) {
  SimulatedScale scale(Options(1));
  PortInProgram program(scale->PortName());
  program.port->Open();
  EXPECT_TRUE(program.port->Connected());
  program.port->Open();  // anew
  EXPECT_TRUE(program.port->Connected());
  program.port->Close();
  EXPECT_FALSE(program.port->Connected());
}

TEST(Port, OneThatDoesNotExist) {
  PortInProgram program("COM77");
  const std::string told = WhatWasTold([&] { program.port->Open(); });
  EXPECT_NE(told.find("COM77 não existe"), std::string::npos) << told;
  EXPECT_FALSE(program.port->Connected());
}

TEST(Port, OneThatAnotherScreenHolds) {
  SimulatedScale scale(Options(1));
  PortInProgram first(scale->PortName());
  PortInProgram second(scale->PortName());
  first.port->Open();
  const std::string told = WhatWasTold([&] { second.port->Open(); });
  EXPECT_NE(told.find("está em uso"), std::string::npos) << told;
  EXPECT_FALSE(second.port->Connected());
  EXPECT_TRUE(first.port->Connected());
  first.port->Close();
  second.port->Open();
  EXPECT_TRUE(second.port->Connected());
}

TEST(Port, AFileThatIsNoPort) {
  const auto file = std::filesystem::temp_directory_path() / "tecelagem-no-port";
  std::filesystem::create_directory(file);
  PortInProgram program(file.string());
  const std::string told = WhatWasTold([&] { program.port->Open(); });
  std::filesystem::remove(file);
  EXPECT_NE(told.find(file.string()), std::string::npos) << told;
  EXPECT_EQ(told.back(), '.');
  EXPECT_FALSE(program.port->Connected());
}

TEST(Port, EveryReasonIsOneSentenceWithItsPort) {
  app::scale::PortSettings port;
  port.port = "/dev/ttyNADA";
  for (const auto error : {QSerialPort::DeviceNotFoundError, QSerialPort::PermissionError, QSerialPort::OpenError,
                           QSerialPort::UnsupportedOperationError, QSerialPort::UnknownError}) {
    const std::string told = app::serial::OpenErrorText(port, error);
    EXPECT_NE(told.find("/dev/ttyNADA"), std::string::npos) << told;
    EXPECT_EQ(told.back(), '.') << told;
    EXPECT_EQ(told.find(". "), std::string::npos) << told;
  }
  EXPECT_NE(app::serial::OpenErrorText(port, QSerialPort::PermissionError).find("grupo dialout"), std::string::npos);
}

TEST(Port, KnownPortsHaveNames) {
  for (const std::string& name : app::serial::KnownPorts()) EXPECT_FALSE(name.empty());
}

// --- settings ------------------------------------------------------------------------------------------------------

TEST(Port, SettingsAreLoadedSetUpAndStored) {
  PortInProgram program("COM3");
  ScaleSettings offered;
  program.set_up = [&offered](ScaleSettings& values) {
    offered = values;
    values.port.port = "COM4";
    values.port.baud_rate = 4800;
    values.protocol = host::ScaleProtocol::kContinuous;
    return true;
  };
  EXPECT_TRUE(program.port->ShowSetup());
  EXPECT_EQ(offered.port.port, "COM3");
  EXPECT_EQ(program.settings.values["Venda/Parametros/Port"], "COM3");  // not stored yet
  program.port->StoreSettings("Venda", "Parametros");
  EXPECT_EQ(program.settings.values["Venda/Parametros/Port"], "COM4");
  EXPECT_EQ(program.settings.values["Venda/Parametros/BaudRate"], "4800");
  EXPECT_EQ(program.settings.values["Venda/Parametros/ProtocoloBal"], "2");
}

TEST(Port, SettingsGivenUpAreAsBefore) {
  PortInProgram program("COM3");
  program.set_up = [](ScaleSettings& values) {
    values.port.port = "COM9";
    return false;
  };
  EXPECT_FALSE(program.port->ShowSetup());
  program.port->StoreSettings("Venda", "Parametros");
  EXPECT_EQ(program.settings.values["Venda/Parametros/Port"], "COM3");
}

TEST(Port, EverySettingOpens) {
  SimulatedScale scale(Options(1));
  PortInProgram program(scale->PortName());
  for (const auto parity : {app::scale::Parity::kNone, app::scale::Parity::kOdd, app::scale::Parity::kEven}) {
    for (const auto flow :
         {app::scale::FlowControl::kNone, app::scale::FlowControl::kHardware, app::scale::FlowControl::kSoftware}) {
      ScaleSettings values;
      values.port.port = scale->PortName();
      values.port.parity = parity;
      values.port.flow = flow;
      values.port.stop_bits = 2;
      values.port.dtr = true;
      values.port.rts = true;
      values.port.baud_rate = 4800;
      app::scale::StoreScaleSettings(program.settings, "Venda", "Parametros", values);
      program.port->LoadSettings("Venda", "Parametros");
      EXPECT_EQ(WhatWasTold([&] { program.port->Open(); }), "");
      EXPECT_TRUE(program.port->Connected());
      EXPECT_EQ(WhatWasTold([&] { program.port->Write(kRequest); }), "");
    }
  }
}

// --- waiting -------------------------------------------------------------------------------------------------------

TEST(Port, WaitLetsTheTimePass) {
  SimulatedScale scale(Options(1));
  PortInProgram program(scale->PortName());
  program.port->Open();
  for (const int time : {0, 50, 300}) {
    const auto start = steady_clock::now();
    program.port->Wait(milliseconds(time), {});
    EXPECT_GE(Since(start).count(), time - 5);
    EXPECT_LT(Since(start).count(), time + 2000);
  }
}

TEST(Port, WaitEndsWhenItIsEnough) {
  SimulatedScale scale(Options(1));
  PortInProgram program(scale->PortName());
  std::string received;
  program.port->OnRxChar = [&] { received += program.port->Read(30); };
  program.port->Open();
  program.port->Write(kRequest);
  const auto start = steady_clock::now();
  program.port->Wait(milliseconds(20000), [&] { return received.find('\r') != std::string::npos; });
  EXPECT_LT(Since(start).count(), 5000);
  EXPECT_EQ(WeightOfFrame(received, '\r'), 20.5);
  EXPECT_EQ(program.acts, 0);  // it was told inside Wait
}

TEST(Port, WaitOnAClosedPortOnlyWaits) {
  PortInProgram program("/dev/none");
  const auto start = steady_clock::now();
  program.port->Wait(milliseconds(50), {});
  EXPECT_GE(Since(start).count(), 45);
}

// Windows are painted, clocks go on; nothing of it is an act of a person.
TEST(Port, TimersRunDuringWait) {
  SimulatedScale scale(Options(1));
  PortInProgram program(scale->PortName());
  program.port->Open();
  int ticks = 0;
  QTimer clock;
  QObject::connect(&clock, &QTimer::timeout, [&ticks] { ++ticks; });
  clock.start(10);
  program.port->Wait(milliseconds(300), {});
  EXPECT_GT(ticks, 5);
}

TEST(Port, WhatTheHandlerThrowsGoesToTheCallerOfWait) {
  SimulatedScale scale(Options(0));
  PortInProgram program(scale->PortName());
  program.port->OnRxChar = [] { throw std::runtime_error("of the handler"); };
  program.port->Open();
  EXPECT_THROW(program.port->Wait(milliseconds(5000), {}), std::runtime_error);
  // And the port goes on.
  program.port->OnRxChar = nullptr;
  program.port->Open();
  program.port->Wait(milliseconds(300), {});
  EXPECT_EQ(WeightOfFrame(program.port->Read(50), '\r'), 20.5);
}

TEST(Port, WaitInsideAHandlerOfWait) {
  SimulatedScale scale(Options(2));
  PortInProgram program(scale->PortName());
  bool inside = false;
  std::string received;
  program.port->OnRxChar = [&] {
    if (inside) return;
    inside = true;
    program.port->Wait(milliseconds(100), {});
    received = program.port->Read(1000);
  };
  program.port->Open();
  program.port->Wait(milliseconds(400), [&] { return inside; });
  EXPECT_NE(received.find("020500"), std::string::npos);
}

// --- bytes -------------------------------------------------------------------------------------------------------

TEST(Port, ReadTakesAtMostWhatWasAskedFor) {
  SimulatedScale scale(Options(1));
  PortInProgram program(scale->PortName());
  program.port->Open();
  program.port->Write(kRequest);
  program.port->Wait(milliseconds(300), {});
  EXPECT_EQ(program.port->Read(7), "ST,GS,+");
  EXPECT_EQ(program.port->Read(8), "  20.500");
  EXPECT_EQ(program.port->Read(50), "kg\r\n");
  EXPECT_EQ(program.port->Read(50), "");
}

TEST(Port, NothingFromBeforeIsLeftAtOpening) {
  SimulatedScale scale(Options(0));
  PortInProgram program(scale->PortName());
  program.port->Open();
  program.port->Wait(milliseconds(200), {});
  program.port->Open();
  EXPECT_EQ(program.port->Read(50), "");
  // Nor what was sent while the port was closed.
  program.port->Close();
  scale->SetWeight(33.3);
  scale.AwaitFrame();
  scale.AwaitFrame();
  program.port->Open();
  program.port->Wait(milliseconds(300), {});
  EXPECT_EQ(WeightOfFrame(program.port->Read(50), '\r'), 33.3);
}

TEST(Port, DiscardForgets) {
  SimulatedScale scale(Options(1));
  PortInProgram program(scale->PortName());
  program.port->Open();
  program.port->Write(kRequest);
  program.port->Wait(milliseconds(300), {});
  program.port->Discard();
  EXPECT_EQ(program.port->Read(50), "");
}

TEST(Port, OutsideOfWaitItIsAnActOfItsOwn) {
  SimulatedScale scale(Options(2));
  PortInProgram program(scale->PortName());
  std::string received;
  program.port->OnRxChar = [&] {
    EXPECT_TRUE(program.busy);
    received = program.port->Read(10);
  };
  program.port->Open();
  EXPECT_TRUE(PortInProgram::Until([&] { return program.acts >= 3; }));
  EXPECT_NE(received.find("020500"), std::string::npos);
}

TEST(Port, WhatArrivesWhileTheProgramIsBusyIsForgotten) {
  SimulatedScale scale(Options(2));
  PortInProgram program(scale->PortName());
  std::string received;
  program.port->OnRxChar = [&] { received += program.port->Read(1000); };
  program.busy = true;
  program.port->Open();
  const int before = scale->Frames();
  EXPECT_TRUE(PortInProgram::Until([&] { return scale->Frames() > before + 4; }));
  QCoreApplication::processEvents();
  EXPECT_EQ(program.acts, 0);
  EXPECT_EQ(received, "");
  scale->SetBehaviour(Behaviour::kSilent);
  EXPECT_TRUE(PortInProgram::Until([start = steady_clock::now()] { return Since(start).count() > 200; }));
  program.busy = false;
  EXPECT_EQ(program.port->Read(1000), "");
  scale->SetWeight(44.4);
  scale->SetBehaviour(Behaviour::kSteady);
  EXPECT_TRUE(PortInProgram::Until([&] { return !received.empty(); }));
  EXPECT_EQ(received.find("020500"), std::string::npos);
  EXPECT_NE(received.find("044400"), std::string::npos);
}

// A scale that sends without end: what one act did not read is not the next act's weight.
TEST(Port, WhatAnActLeavesUnreadIsForgotten) {
  SimulatedScale scale(Options(2));
  PortInProgram program(scale->PortName());
  std::string received;
  bool waits = false;
  program.port->OnRxChar = [&] {
    if (waits) return;
    if (program.acts == 1) {
      const host::Restored<bool> waiting(waits, true);
      program.port->Wait(milliseconds(200), {});
      EXPECT_NE(program.port->Read(4), "");
      scale->SetWeight(55.5);
      scale.AwaitFrame();
      return;
    }
    received += program.port->Read(1000);
  };
  program.port->Open();
  EXPECT_TRUE(PortInProgram::Until([&] { return received.size() > 10; }));
  EXPECT_EQ(received.find("020500"), std::string::npos);
  EXPECT_NE(received.find("055500"), std::string::npos);
}

TEST(Port, AnActThatIsNotPossibleDoesNotCrossTheLoop) {
  SimulatedScale scale(Options(2));
  test::MemorySettings settings;
  int tried = 0;
  app::PortUse use{settings, {}, {}};
  use.run = [&tried](const std::function<void()>&) -> bool {
    ++tried;
    throw std::runtime_error("a modal screen is open");
  };
  const auto port = app::serial::NewPort(std::move(use));
  ScaleSettings values;
  values.port.port = scale->PortName();
  app::scale::StoreScaleSettings(settings, "Venda", "Parametros", values);
  port->LoadSettings("Venda", "Parametros");
  port->OnRxChar = [] { ADD_FAILURE() << "not run"; };
  port->Open();
  EXPECT_TRUE(PortInProgram::Until([&] { return tried > 1; }));
}

// The act closes its screen, and the port goes with it.
TEST(Port, MayGoDuringAnActThatItBegan) {
  SimulatedScale scale(Options(2));
  test::MemorySettings settings;
  app::PortUse use{settings, {}, {}};
  std::unique_ptr<host::SerialPort> port;
  bool gone = false;
  use.run = [&port, &gone](const std::function<void()>& act) {
    act();
    port.reset();
    gone = true;
    return true;
  };
  port = app::serial::NewPort(std::move(use));
  app::scale::StoreScaleSettings(settings, "Venda", "Parametros", [&] {
    ScaleSettings values;
    values.port.port = scale->PortName();
    return values;
  }());
  port->LoadSettings("Venda", "Parametros");
  port->OnRxChar = [] {};
  port->Open();
  EXPECT_TRUE(PortInProgram::Until([&] { return gone; }));
}

// --- the cable -----------------------------------------------------------------------------------------------------

TEST(Port, UnpluggedDuringWait) {
  SimulatedScale scale(Options(0, Behaviour::kSilent));
  PortInProgram program(scale->PortName());
  program.port->Open();
  QTimer::singleShot(50, [&scale] { scale->Unplug(); });
  const auto start = steady_clock::now();
  const std::string told = WhatWasTold([&] { program.port->Wait(milliseconds(20000), {}); });
  EXPECT_NE(told.find("foi desligada do computador"), std::string::npos) << told;
  EXPECT_LT(Since(start).count(), 5000);
  EXPECT_FALSE(program.port->Connected());
  // Told once; then it is a port that does not exist.
  EXPECT_EQ(WhatWasTold([&] { program.port->Wait(milliseconds(1), {}); }), "");
  EXPECT_NE(WhatWasTold([&] { program.port->Open(); }).find("não existe"), std::string::npos);
}

TEST(Port, UnpluggedBetweenTwoUses) {
  for (const bool writes : {true, false}) {
    SimulatedScale scale(Options(0, Behaviour::kSilent));
    PortInProgram program(scale->PortName());
    program.port->Open();
    scale.PullOut();
    EXPECT_TRUE(PortInProgram::Until([&] { return !program.port->Connected(); }));
    const std::string told = WhatWasTold([&] {
      if (writes) program.port->Write(kRequest);
      if (!writes) program.port->Read(10);
    });
    EXPECT_NE(told.find("foi desligada do computador"), std::string::npos) << told;
    EXPECT_EQ(WhatWasTold([&] { program.port->Read(10); }), "");
  }
}

// Nobody has noticed yet that the device is gone.
TEST(Port, WritingToADeadPort) {
  SimulatedScale scale(Options(1));
  PortInProgram program(scale->PortName());
  program.port->Open();
  scale.PullOut();
  const auto start = steady_clock::now();
  const std::string told = WhatWasTold([&] { program.port->Write(kRequest); });
  EXPECT_NE(told, "");
  EXPECT_EQ(told.back(), '.');
  EXPECT_LT(Since(start).count(), 5000);
}

TEST(Port, PluggedInAgain) {
  const std::string link = (std::filesystem::temp_directory_path() / "tecelagem-test-scale").string();
  SimulatorOptions options = Options(1);
  options.link = link;
  auto scale = std::make_unique<SimulatedScale>(options);
  PortInProgram program(link);
  program.port->Open();
  scale.reset();
  EXPECT_TRUE(PortInProgram::Until([&] { return !program.port->Connected(); }));
  EXPECT_NE(WhatWasTold([&] { program.port->Write(kRequest); }), "");
  scale = std::make_unique<SimulatedScale>(options);
  program.port->Open();
  program.port->Write(kRequest);
  program.port->Wait(milliseconds(300), {});
  EXPECT_EQ(WeightOfFrame(program.port->Read(30), '\r'), 20.5);
}

}  // namespace
