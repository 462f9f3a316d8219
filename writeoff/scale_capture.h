// The scale of the weighing station: three ways of asking it for a weight.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/kit/screen.h"
#include "host/scale_protocol.h"

namespace writeoff {

struct Weighing {
  double weight = 0;  // kilograms
  std::string frame;  // the bytes that stated it
};

/// One per screen, which it must not outlive. The port is open only while it is listened to, whatever goes wrong.
class ScaleCapture {
 public:
  explicit ScaleCapture(host::Screen& owner);

  /// Reads how the scale is spoken to, once for the life of the screen. A scale that sends continuously is listened to
  /// from now on; when its port cannot be opened, the screen works without a scale.
  void Start();
  /// The scale sends by itself, and nobody need ask it.
  bool Continuous() const { return protocol_ == host::ScaleProtocol::kContinuous; }

  /// Asks for the weight: opens the port, waits, reads, closes. Throws host::InputError in one sentence when there is
  /// none.
  Weighing Capture();
  /// A weight that a continuous scale sent, within an action of its own. Frames without one are passed over.
  std::function<void(const Weighing&)> OnWeight;

  /// A continuous scale is heard no more; the sentence says why and what to do. Within an action of its own.
  std::function<void(const std::string&)> OnTrouble;

  /// Shows the port's setup and stores it. True when the way of speaking was changed, which the next screen begins
  /// with. Throws host::InputError when there is no port or it cannot be opened again.
  bool SetUp();

 private:
  host::SerialPort& Port();
  void OpenAnew();
  void ComPortRxChar();
  std::string Answer();
  bool Await();
  void Listen();
  host::ScaleProtocol StoredProtocol() const;
  int Setting(std::string_view name, int most) const;

  host::Screen& owner_;
  host::ScaleProtocol protocol_ = host::ScaleProtocol::kPrinted;
  std::unique_ptr<host::SerialPort> port_;
  std::string answer_;
  bool awaits_answer_ = false;
  bool listening_ = false;
};

}  // namespace writeoff
