// A simulated scale that runs beside the test, and what a port needs around it.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "app/scale/simulator.h"
#include "app/serial/port.h"
#include "host/host.h"

namespace test {

class MemorySettings : public host::UserSettings {
 public:
  std::optional<std::string> Read(std::string_view key, std::string_view section, std::string_view name) override;
  void Write(std::string_view key, std::string_view section, std::string_view name, std::string_view value) override;

  std::map<std::string, std::string> values;
};

class SimulatedScale {
 public:
  explicit SimulatedScale(app::scale::SimulatorOptions options);
  ~SimulatedScale();
  SimulatedScale(const SimulatedScale&) = delete;
  SimulatedScale& operator=(const SimulatedScale&) = delete;

  app::scale::Simulator* operator->() { return &simulator_; }
  /// Until the next frame has left since now.
  void AwaitFrame();
  /// The cable is out when this returns.
  void PullOut();

 private:
  app::scale::Simulator simulator_;
  std::thread thread_;
};

/// A program with one screen that has the port.
struct PortInProgram {
  explicit PortInProgram(const std::string& name);

  /// Lets what is queued and what the devices send happen, until this is true or five seconds are over.
  static bool Until(const std::function<bool()>& happened);

  MemorySettings settings;
  bool busy = false;  // in the middle of another act
  int acts = 0;       // that the port began
  std::function<bool(app::scale::ScaleSettings&)> set_up;
  std::unique_ptr<host::SerialPort> port;
};

/// What went wrong in `act`, told in one sentence; empty when nothing did.
std::string WhatWasTold(const std::function<void()>& act);

}  // namespace test
