// What the simulated scale says.
#include <array>
#include <cmath>

#include "app/scale/simulator.h"
#include "host/decimal.h"
#include "host/errors.h"

namespace app::scale {
namespace {

// STX and these are nine of the ten characters that a station reads of a frame.
constexpr std::size_t kMostDigits = 8;
constexpr std::size_t kFewestDigits = 6;

// A hand that has not let go of the roll.
double Wavered(double weight, unsigned count) {
  constexpr std::array<double, 5> kSway = {0, 0.35, -0.2, 0.6, -0.45};
  return std::fabs(weight + kSway[count % kSway.size()]);
}

std::string Garbage(unsigned count) {
  std::string bytes;
  unsigned state = count * 2654435761U + 12345U;
  for (int i = 0; i < 12; ++i) {
    state = state * 1664525U + 1013904223U;
    bytes += static_cast<char>(0x80U | (state >> 24));
  }
  return bytes + '\r';
}

// "ST,GS,+  20.500kg": state, kind, sign, eight characters of weight, unit.
std::string WithWords(std::string_view state, char sign, const std::string& weight) {
  std::string field = weight;
  constexpr std::size_t kField = 8;
  if (field.size() < kField) field.insert(0, kField - field.size(), ' ');
  return std::string(state) + ",GS," + sign + field + "kg\r\n";
}

// Digits only, as the station's "Decimal" expects them: one more of them stands behind the comma than it says.
std::string Digits(double weight, int decimals) {
  std::string digits;
  for (const char c : host::FormatNumber("0." + std::string(static_cast<std::size_t>(decimals) + 1, '0'), weight)) {
    if (c >= '0' && c <= '9') digits += c;
  }
  if (digits.size() > kMostDigits) {
    throw host::InputError("O peso não cabe nos " + std::to_string(kMostDigits) + " algarismos do protocolo 2.");
  }
  if (digits.size() < kFewestDigits) digits.insert(0, kFewestDigits - digits.size(), '0');
  return digits;
}

std::string Whole(const SimulatorOptions& scale, double weight) {
  if (scale.protocol != host::ScaleProtocol::kContinuous)
    return WithWords("ST", '+', host::FormatNumber("0.000", weight));
  return '\x02' + Digits(weight, scale.decimals) + '\r';
}

// Digits have no place for a state: letters stand in theirs.
std::string Unwilling(const SimulatorOptions& scale) {
  const bool words = scale.protocol != host::ScaleProtocol::kContinuous;
  switch (scale.behaviour) {
    case Behaviour::kUnstable:
      return words ? WithWords("US", '+', host::FormatNumber("0.000", scale.weight)) : "\x02IIIIII\r";
    case Behaviour::kNegative:
      return words ? WithWords("ST", '-', host::FormatNumber("0.000", scale.weight)) : "\x02NNNNNN\r";
    default:
      return words ? WithWords("OL", '+', "") : "\x02SSSSSS\r";
  }
}

}  // namespace

std::string SimulatedFrame(const SimulatorOptions& scale, unsigned count) {
  switch (scale.behaviour) {
    case Behaviour::kSteady:
    case Behaviour::kSlow:
      return Whole(scale, scale.weight);
    case Behaviour::kWavering:
      return Whole(scale, Wavered(scale.weight, count));
    case Behaviour::kGarbage:
      return Garbage(count);
    case Behaviour::kSilent:
      return {};
    case Behaviour::kCut: {
      const std::string whole = Whole(scale, scale.weight);
      return whole.substr(0, whole.size() / 2);
    }
    case Behaviour::kUnstable:
    case Behaviour::kNegative:
    case Behaviour::kOverload:
      return Unwilling(scale);
  }
  return {};
}

}  // namespace app::scale
