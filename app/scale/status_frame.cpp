// Frames whose status is in bits, and whose status bytes may look like digits.
#include <algorithm>
#include <charconv>
#include <string>

#include "app/scale/reading.h"

namespace app::scale {
namespace {

// The widest weight field of any format has eight characters; more digits than this are no weight.
constexpr std::size_t kMostDigits = 10;

unsigned Byte(char c) { return static_cast<unsigned char>(c); }
bool Bit(char c, unsigned bit) { return (Byte(c) >> bit & 1U) != 0; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Blanks, then digits up to the end.
bool IsWeightField(std::string_view field) {
  const std::size_t digits = field.find_first_not_of(' ');
  if (digits == std::string_view::npos) return false;
  return std::all_of(field.begin() + static_cast<std::ptrdiff_t>(digits), field.end(), IsDigit);
}

std::string_view WithoutBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// Status byte A, bits 0 to 2: how many digits stand behind the point; 0 and 1 are noughts left out before it. Bits 3
// and 4 are the step of the display, never both 0; bit 5 is always 1 and bit 6 always 0.
bool IsByteA(char a) { return Bit(a, 5) && !Bit(a, 6) && (Bit(a, 3) || Bit(a, 4)); }
bool IsByteB(char b) { return Bit(b, 5); }
bool IsByteC(char c) { return Bit(c, 5) && !Bit(c, 6); }
bool IsShortByteC(char c) {
  constexpr unsigned kPrintKey = 8;
  const unsigned rest = Byte(c) & ~kPrintKey;
  return rest >= 0x20 && rest <= 0x22;
}

std::optional<Unit> UnitOf(char b, char c) {
  switch (Byte(c) & 7U) {
    case 0:
      if (Bit(b, 4)) return Unit::kKilogram;
      return std::nullopt;  // pounds
    case 1:
      return Unit::kGram;
    case 2:
      return Unit::kTonne;
    default:
      return std::nullopt;
  }
}

}  // namespace

Reading WeightOfDigits(std::string_view digits, int decimals, Unit unit) {
  if (digits.empty()) return Reading::Refused(Refusal::kNoDigits);
  if (digits.size() > kMostDigits) return Reading::Refused(Refusal::kTooLong);
  const int power = (unit == Unit::kGram ? -3 : unit == Unit::kTonne ? 3 : 0) - decimals;
  // Read once from the decimal text, so that 20500 g are the same double as 20.5 kg.
  const std::string text = std::string(digits) + 'e' + std::to_string(power);
  Reading reading;
  std::from_chars(text.data(), text.data() + text.size(), reading.kilograms);
  return reading;
}

std::optional<Reading> ReadStatusFrame(std::string_view after_stx) {
  // Three status bytes and six characters of weight are nine, with the tare fifteen; the status bytes may be digits.
  // Fifteen digits and blanks are no other format. Nine characters may be a plain number as well: a status frame is
  // told from it by byte C, which is no digit and no decimal sign then (a blank, "!" or a quote, or with the bit of the
  // print key "(", ")" or "*"). "+  002050" remains: a positive number, or pounds with one decimal. It is taken for
  // neither.
  const std::size_t size = after_stx.size();
  if (size != 9 && size != 15) return std::nullopt;
  const char a = after_stx[0];
  const char b = after_stx[1];
  const char c = after_stx[2];
  if (!IsByteA(a) || !IsByteB(b) || !IsByteC(c)) return std::nullopt;
  const std::string_view weight = after_stx.substr(3, 6);
  const bool tare = size == 15;
  if (!IsWeightField(weight) || (tare && !IsWeightField(after_stx.substr(9)))) return std::nullopt;
  if (!tare && !IsShortByteC(c)) return std::nullopt;

  if (Bit(b, 2)) return Reading::Refused(Refusal::kOverload);
  if (Bit(b, 6) || Bit(b, 3)) return Reading::Refused(Refusal::kUnstable);  // not yet zeroed since it was switched on
  if (Bit(b, 1)) return Reading::Refused(Refusal::kNegative);
  if (Bit(c, 4)) return Reading::Refused(Refusal::kNotUnderstood);  // magnified: the point is elsewhere
  const auto unit = UnitOf(b, c);
  if (!unit) return Reading::Refused(Refusal::kUnit);
  constexpr int kWithoutPoint = 2;
  return WeightOfDigits(WithoutBlanks(weight), static_cast<int>(Byte(a) & 7U) - kWithoutPoint, *unit);
}

std::optional<Reading> ReadLampFrame(std::string_view frame) {
  // The byte that names the scale is a digit for most of them and the lamps may look like one, so they are recognised
  // by where the commas are, and what they hold is never read as part of the weight.
  constexpr std::size_t kSize = 20;
  if (frame.size() != kSize || frame[2] != ',' || frame[5] != ',' || frame[8] != ',') return std::nullopt;
  const char name = frame[6];  // counted from "1" on: the 13th is "="
  const char lamps = frame[7];
  if (name < '0' || name == 0x7F || lamps == ' ') return std::nullopt;
  const Reading reading = ReadTextFrame(std::string(frame.substr(0, 6)) + std::string(frame.substr(9)));
  if (reading.refusal) return reading;
  constexpr unsigned kHold = 4;
  constexpr unsigned kStable = 6;
  constexpr unsigned kLamps = 7;  // set in every byte of lamps; lost on a line of seven bits
  if (Bit(lamps, kLamps) && Bit(lamps, kHold)) return Reading::Refused(Refusal::kHeld);
  if (Bit(lamps, kLamps) && !Bit(lamps, kStable)) return Reading::Refused(Refusal::kUnstable);
  return reading;
}

}  // namespace app::scale
