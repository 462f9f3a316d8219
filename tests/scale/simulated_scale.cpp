#include "simulated_scale.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include "app/scale/scale_settings.h"
#include "host/errors.h"

namespace test {

using std::chrono::milliseconds;

std::optional<std::string> MemorySettings::Read(std::string_view key, std::string_view section, std::string_view name) {
  const auto found = values.find(std::string(key) + '/' + std::string(section) + '/' + std::string(name));
  if (found == values.end()) return std::nullopt;
  return found->second;
}

void MemorySettings::Write(std::string_view key, std::string_view section, std::string_view name,
                           std::string_view value) {
  values[std::string(key) + '/' + std::string(section) + '/' + std::string(name)] = value;
}

SimulatedScale::SimulatedScale(app::scale::SimulatorOptions options)
    : simulator_(std::move(options)), thread_([this] { simulator_.Serve(std::chrono::hours(1)); }) {}

SimulatedScale::~SimulatedScale() {
  simulator_.Stop();
  if (thread_.joinable()) thread_.join();
}

void SimulatedScale::AwaitFrame() {
  const int before = simulator_.Frames();
  while (simulator_.Frames() == before) std::this_thread::sleep_for(milliseconds(1));
}

void SimulatedScale::PullOut() {
  simulator_.Unplug();
  thread_.join();
}

PortInProgram::PortInProgram(const std::string& name) {
  app::PortUse use{settings, {}, {}};
  use.set_up = [this](app::scale::ScaleSettings& values) { return set_up && set_up(values); };
  use.run = [this](const std::function<void()>& act) {
    if (busy) return false;
    ++acts;
    busy = true;
    act();
    busy = false;
    return true;
  };
  port = app::serial::NewPort(std::move(use));
  app::scale::ScaleSettings values;
  values.port.port = name;
  app::scale::StoreScaleSettings(settings, "Venda", "Parametros", values);
  port->LoadSettings("Venda", "Parametros");
}

bool PortInProgram::Until(const std::function<bool()>& happened) {
  const QDeadlineTimer end(5000);
  while (!happened()) {
    if (end.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  }
  return true;
}

std::string WhatWasTold(const std::function<void()>& act) {
  try {
    act();
    return {};
  } catch (const host::InputError& error) {
    return error.what();
  }
}

}  // namespace test
