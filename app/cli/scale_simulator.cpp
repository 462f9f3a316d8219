#include "app/cli/scale_simulator.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "app/scale/simulator.h"

namespace app::cli {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr double kHeaviest = 100000;  // kilograms
constexpr int kMostDecimals = 7;
constexpr int kLongestInterval = 3600000;
constexpr double kLongest = 1e9;  // a longer time is none
constexpr milliseconds kSlice(100);

volatile std::sig_atomic_t interrupted = 0;

extern "C" void Interrupt(int /*signal*/) { interrupted = 1; }

std::optional<scale::Behaviour> BehaviourNamed(std::string_view name) {
  for (const auto& [behaviour, known] : scale::kBehaviours) {
    if (known == name) return behaviour;
  }
  return std::nullopt;
}

std::string BehaviourNames() {
  std::string names;
  for (const auto& [behaviour, name] : scale::kBehaviours) names += (names.empty() ? "" : ", ") + std::string(name);
  return names;
}

void Must(bool right, const std::string& what) {
  if (!right) throw UsageError{"valor inválido: " + what + " (veja tecelagem scale-simulator --help)"};
}

}  // namespace

void CheckSimulator(const Arguments& arguments) {
  Must(arguments.protocol >= 0 && arguments.protocol <= host::kLastScaleProtocol, "--protocol é 0, 1 ou 2");
  Must(BehaviourNamed(arguments.behaviour).has_value(), "--behaviour é um destes: " + BehaviourNames());
  Must(arguments.weight >= 0 && arguments.weight < kHeaviest, "--weight é um peso em kg");
  Must(arguments.decimals >= 0 && arguments.decimals <= kMostDecimals, "--decimals é um número de 0 a 7");
  Must(arguments.interval >= 1 && arguments.interval <= kLongestInterval, "--interval é um tempo em ms");
  Must(arguments.seconds >= 0, "--seconds é um tempo em segundos");
}

int SimulateScale(const Arguments& arguments) {
  scale::SimulatorOptions options;
  options.protocol = static_cast<host::ScaleProtocol>(arguments.protocol);
  options.behaviour = BehaviourNamed(arguments.behaviour).value_or(scale::Behaviour::kSteady);
  options.weight = arguments.weight;
  options.decimals = arguments.decimals;
  options.interval = milliseconds(arguments.interval);
  options.link = arguments.link;
  scale::Simulator simulated(options);
  std::signal(SIGINT, Interrupt);
  std::signal(SIGTERM, Interrupt);
  std::cout << "Balança simulada na porta " << simulated.PortName() << ", protocolo " << arguments.protocol << ", "
            << arguments.behaviour << ". Ctrl+C termina." << std::endl;
  const bool endless = arguments.seconds <= 0;
  const auto time = std::chrono::duration<double>(std::min(arguments.seconds, kLongest));
  const auto end = steady_clock::now() + std::chrono::duration_cast<steady_clock::duration>(time);
  while (interrupted == 0) {
    const auto left = endless ? kSlice : std::chrono::ceil<milliseconds>(end - steady_clock::now());
    if (left.count() <= 0) break;
    simulated.Serve(std::min(kSlice, left));
  }
  std::cout << "Pedidos recebidos: " << simulated.Requests() << ". Quadros enviados: " << simulated.Frames() << "."
            << std::endl;
  return 0;
}

}  // namespace app::cli
