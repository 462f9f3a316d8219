// How the scale of a weighing station is connected and spoken to; per user of the computer.
#pragma once

#include <string>
#include <string_view>

#include "host/host.h"
#include "host/scale_protocol.h"

namespace app::scale {

enum class Parity { kNone, kOdd, kEven, kMark, kSpace };
enum class FlowControl { kNone, kHardware, kSoftware };

struct PortSettings {
  std::string port = "COM1";  // as the operating system names it: "COM1", "/dev/ttyUSB0"
  int baud_rate = 9600;
  Parity parity = Parity::kNone;
  int data_bits = 8;     // 5 to 8
  double stop_bits = 1;  // 1, 1.5 or 2
  FlowControl flow = FlowControl::kNone;
  bool dtr = false;
  bool rts = false;

  bool operator==(const PortSettings&) const = default;
};

struct ScaleSettings {
  PortSettings port;
  host::ScaleProtocol protocol = host::ScaleProtocol::kPrinted;  // "ProtocoloBal"
  int decimals = 0;                                              // "Decimal": of protocol 2

  bool operator==(const ScaleSettings&) const = default;
};

/// What is stored under that path of the user's settings; a value that was never stored, or that is none of those
/// allowed, has its default.
ScaleSettings LoadScaleSettings(host::UserSettings& settings, std::string_view key, std::string_view section);
/// Throws host::InputError when they cannot be stored.
void StoreScaleSettings(host::UserSettings& settings, std::string_view key, std::string_view section,
                        const ScaleSettings& values);

}  // namespace app::scale
