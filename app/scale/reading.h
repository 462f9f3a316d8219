// What one frame says, before it is told to anybody.
#pragma once

#include <optional>
#include <string_view>

namespace app::scale {

/// Why a frame gives no weight.
enum class Refusal {
  kNothing,        // no byte at all
  kCutOff,         // no frame whose beginning and end are both there
  kUnstable,       // the load still moves, or the scale says that it could not weigh
  kWavering,       // several frames, each sure of itself, that differ
  kNegative,       // below zero
  kOverload,       // above what the scale carries
  kTare,           // the tare, a preset tare: not what lies on the scale
  kHeld,           // a weight held on the display from before
  kScaleError,     // the scale tells an error of its own
  kNoDigits,       // no number
  kTwoNumbers,     // more than one number
  kUnit,           // neither kilogram, gram nor tonne, or not sure which
  kTooLong,        // more characters or digits than any weight has
  kNotUnderstood,  // anything else
};

/// One sentence for the operator.
const char* SentenceOf(Refusal refusal);

/// A weight, or why there is none.
struct Reading {
  double kilograms = 0;
  std::optional<Refusal> refusal;

  static Reading Refused(Refusal refusal) { return {0, refusal}; }
};

enum class Unit { kKilogram, kGram, kTonne };

/// `digits` with the last `decimals` of them behind the decimal sign, in that unit, as kilograms: the nearest double.
/// `decimals` below zero are noughts that the scale left out. No digits: kNoDigits; too many: kTooLong.
Reading WeightOfDigits(std::string_view digits, int decimals, Unit unit);

/// A frame of words, signs and a number: "ST,GS,+  12.345kg".
Reading ReadTextFrame(std::string_view frame);
/// Three status bytes and six digits: what follows STX in the continuous output that Toledo began. Nothing when the
/// frame does not have that form.
std::optional<Reading> ReadStatusFrame(std::string_view after_stx);
/// "ST,GS,", a byte that names the scale, a byte of lamps, ",", eight characters of weight, unit: the 22 bytes of CAS.
/// Nothing when the frame does not have that form.
std::optional<Reading> ReadLampFrame(std::string_view frame);

}  // namespace app::scale
