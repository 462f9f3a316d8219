#include "app/scale/scale_settings.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

#include "host/decimal.h"

namespace app::scale {
namespace {

template <typename T, std::size_t kCount>
using Names = std::array<std::pair<T, const char*>, kCount>;

constexpr Names<Parity, 5> kParities = {{{Parity::kNone, "None"},
                                         {Parity::kOdd, "Odd"},
                                         {Parity::kEven, "Even"},
                                         {Parity::kMark, "Mark"},
                                         {Parity::kSpace, "Space"}}};
constexpr Names<FlowControl, 3> kFlows = {
    {{FlowControl::kNone, "None"}, {FlowControl::kHardware, "Hardware"}, {FlowControl::kSoftware, "Software"}}};

// One stored text to its value, where it is an allowed one.
class Stored {
 public:
  Stored(host::UserSettings& settings, std::string_view key, std::string_view section)
      : settings_(settings), key_(key), section_(section) {}

  std::optional<std::string> Text(std::string_view name) const { return settings_.Read(key_, section_, name); }

  void Integer(std::string_view name, int least, int most, int& value) const {
    const auto text = Text(name);
    if (!text) return;
    int number = 0;
    const auto read = std::from_chars(text->data(), text->data() + text->size(), number);
    const bool whole = read.ec == std::errc() && read.ptr == text->data() + text->size();
    if (whole && number >= least && number <= most) value = number;
  }

  void Flag(std::string_view name, bool& value) const {
    int number = value ? 1 : 0;
    Integer(name, 0, 1, number);
    value = number == 1;
  }

  template <typename T, std::size_t kCount>
  void OneOf(std::string_view name, const Names<T, kCount>& names, T& value) const {
    const auto text = Text(name);
    for (const auto& [known, word] : names) {
      if (text == word) value = known;
    }
  }

  void Write(std::string_view name, std::string_view value) { settings_.Write(key_, section_, name, value); }
  void Write(std::string_view name, int value) { Write(name, std::to_string(value)); }

 private:
  host::UserSettings& settings_;
  std::string key_;
  std::string section_;
};

template <typename T, std::size_t kCount>
const char* WordOf(const Names<T, kCount>& names, T value) {
  for (const auto& [known, word] : names) {
    if (known == value) return word;
  }
  return names.front().second;
}

}  // namespace

ScaleSettings LoadScaleSettings(host::UserSettings& settings, std::string_view key, std::string_view section) {
  const Stored stored(settings, key, section);
  ScaleSettings values;
  PortSettings& port = values.port;
  if (const auto name = stored.Text("Port"); name && !name->empty()) port.port = *name;
  stored.Integer("BaudRate", 50, 4000000, port.baud_rate);
  stored.OneOf("Parity", kParities, port.parity);
  stored.Integer("DataBits", 5, 8, port.data_bits);
  const auto stop = stored.Text("StopBits");
  for (const double bits : {1.0, 1.5, 2.0}) {
    if (stop == host::PointText(bits)) port.stop_bits = bits;
  }
  stored.OneOf("FlowControl", kFlows, port.flow);
  stored.Flag("DTR", port.dtr);
  stored.Flag("RTS", port.rts);
  int protocol = static_cast<int>(values.protocol);
  stored.Integer("ProtocoloBal", 0, host::kLastScaleProtocol, protocol);
  values.protocol = static_cast<host::ScaleProtocol>(protocol);
  stored.Integer("Decimal", 0, 9, values.decimals);
  return values;
}

void StoreScaleSettings(host::UserSettings& settings, std::string_view key, std::string_view section,
                        const ScaleSettings& values) {
  Stored stored(settings, key, section);
  const PortSettings& port = values.port;
  stored.Write("Port", port.port);
  stored.Write("BaudRate", port.baud_rate);
  stored.Write("Parity", WordOf(kParities, port.parity));
  stored.Write("DataBits", port.data_bits);
  stored.Write("StopBits", host::PointText(port.stop_bits));
  stored.Write("FlowControl", WordOf(kFlows, port.flow));
  stored.Write("DTR", port.dtr ? 1 : 0);
  stored.Write("RTS", port.rts ? 1 : 0);
  stored.Write("ProtocoloBal", static_cast<int>(values.protocol));
  stored.Write("Decimal", values.decimals);
}

}  // namespace app::scale
