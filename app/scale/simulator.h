// A scale that is not there: for training, demonstration and tests.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/scale_protocol.h"

namespace app::scale {

enum class Behaviour {
  kSteady,
  kWavering,  // the weight moves and the scale does not say so
  kGarbage,   // as on a line of another speed
  kSilent,
  kSlow,  // sends, and answers, only after three seconds
  kCut,   // stops in the middle of each frame
  kUnstable,
  kNegative,
  kOverload,
};

/// As they are named on the command line.
inline constexpr std::array<std::pair<Behaviour, std::string_view>, 9> kBehaviours = {{
    {Behaviour::kSteady, "steady"},
    {Behaviour::kWavering, "wavering"},
    {Behaviour::kGarbage, "garbage"},
    {Behaviour::kSilent, "silent"},
    {Behaviour::kSlow, "slow"},
    {Behaviour::kCut, "cut"},
    {Behaviour::kUnstable, "unstable"},
    {Behaviour::kNegative, "negative"},
    {Behaviour::kOverload, "overload"},
}};

struct SimulatorOptions {
  host::ScaleProtocol protocol = host::ScaleProtocol::kPrinted;  // all but kAsked send without being asked
  Behaviour behaviour = Behaviour::kSteady;
  double weight = 20.5;  // kilograms
  int decimals = 2;      // what the station has as "Decimal" for protocol 2
  std::chrono::milliseconds interval{100};
  std::string link;  // a name for the port beside its own; empty for none
};

/// The `count`th frame (from 0) of such a scale; empty for one that is silent. Throws host::InputError for a weight
/// that the digits of protocol 2 cannot hold.
std::string SimulatedFrame(const SimulatorOptions& scale, unsigned count);

/// A pseudo-terminal with that scale at its far end. It sends and answers only while Serve runs, on whatever thread;
/// the other functions may be called from any thread meanwhile.
class Simulator {
 public:
  /// Throws host::InputError, one sentence, on a system without pseudo-terminals, for a link that cannot be made, and
  /// as SimulatedFrame does.
  explicit Simulator(SimulatorOptions options);
  /// The port and its link are gone.
  ~Simulator();
  Simulator(const Simulator&) = delete;
  Simulator& operator=(const Simulator&) = delete;

  /// What to open: the link, or the port's own name.
  const std::string& PortName() const { return name_; }
  /// Is a scale for that time, or until Stop or Unplug.
  void Serve(std::chrono::milliseconds time);
  void Stop() { stopped_ = true; }
  /// The cable is pulled out: the port goes away for whoever has it open.
  void Unplug() { unplugged_ = true; }

  void SetWeight(double kilograms) { weight_ = kilograms; }
  void SetBehaviour(Behaviour behaviour) { behaviour_ = behaviour; }
  /// Requests (ENQ) received so far, whatever the protocol.
  int Requests() const { return requests_; }
  /// Frames sent so far, whole or not.
  int Frames() const { return frames_; }

 private:
  using Moment = std::chrono::steady_clock::time_point;

  void OpenPort();
  void MakeLink();
  void ClosePort();
  void Hear();
  void Send();
  SimulatorOptions Now() const;
  std::chrono::milliseconds Delay() const;

  SimulatorOptions options_;
  std::string name_;
  std::string own_name_;
  int far_end_ = -1;
  int near_end_ = -1;  // kept open: a port that nobody has open would hang up
  std::optional<Moment> due_;
  std::atomic<double> weight_;
  std::atomic<Behaviour> behaviour_;
  std::atomic<bool> stopped_ = false;
  std::atomic<bool> unplugged_ = false;
  std::atomic<int> requests_ = 0;
  std::atomic<int> frames_ = 0;
};

}  // namespace app::scale
