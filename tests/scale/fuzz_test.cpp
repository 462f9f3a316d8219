// A million receptions, most of them damaged: no weight that the bytes do not state.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "app/scale/frame.h"
#include "host/errors.h"
#include "host/raw_bytes.h"

namespace {

using namespace std::string_literals;

constexpr char kStx = '\x02';
constexpr char kEtx = '\x03';

// The same numbers on every machine and at every run.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed) {}
  std::size_t Below(std::size_t limit) {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 7;
    state_ ^= state_ << 17;
    return static_cast<std::size_t>(state_ % limit);
  }

 private:
  std::uint64_t state_;
};

const std::vector<std::string>& RealFrames() {
  static const std::vector<std::string> frames = {
      "0020.50\r\n",
      "   20,50\r\n",
      "002050\r",
      "20.50 kg\r\n",
      "20500 g\r",
      "0.0205 t\r",
      "\n   20.50 kgGR\r\x03",
      "\x02"s + "0020.50\x03",
      "\x02"s + "02050\x03",
      "\x02"s + "IIIII\x03",
      "ST,GS,+  12.345kg\r\n",
      "ST,NT,+00012,34kg\r\n",
      "US,GS,+  12.345kg\r\n",
      "OL,GS,+      kg\r\n",
      "ST,TR,+  00.350kg\r\n",
      "ST,GS,-   0.500kg\r\n",
      "ST,GS,   20.50,kg\r\n",
      "ST,GS,+001.2345 t\r\n",
      "ST,GS,1\xC4,00020.50 kg\r\n"s,
      "\x02"s + ",0 002050000000\r\x4B",
      "\x02"s + "40   2050     0\r",
      "\x02"s + ",8 002050000000\r",
      "\x02"s + ",2 002050000000\r",
      "\x02"s + "-0!002050\r",
      "\x02"s + "   20.50KG \r\n",
      "\x02"s + "   20.50KGM\r\n",
      "\x02"s + "  0.0205TN \r",
      "\r+0020.5  kg g  \x03",
      "\r+0020.5m kg g  \x03",
      "S S     20.500 kg\r\n",
      "S D     20.500 kg\r\n",
      "+   20.500 kg \r\n",
      "+   20.500    \r\n",
      "    20.50 kg    ?   \r\n",
      "    18.25 kg     NET\r\n",
  };
  return frames;
}

char AnyByte(Dice& dice) {
  static constexpr std::string_view kTelling = "0123456789.,,+-  kgtKGTNMSUOLEH?^\x02\x03\r\n";
  if (dice.Below(8) == 0) return static_cast<char>(dice.Below(256));
  return kTelling[dice.Below(kTelling.size())];
}

std::string Reception(Dice& dice) {
  const auto& real = RealFrames();
  std::string bytes;
  if (dice.Below(8) == 0) {
    for (std::size_t left = dice.Below(50); left > 0; --left) bytes += AnyByte(dice);
    return bytes;
  }
  for (std::size_t left = 1 + dice.Below(3); left > 0; --left) bytes += real[dice.Below(real.size())];
  for (std::size_t damage = dice.Below(4); damage > 0 && !bytes.empty(); --damage) {
    const std::size_t at = dice.Below(bytes.size());
    switch (dice.Below(5)) {
      case 0:
        bytes[at] = AnyByte(dice);
        break;
      case 1:
        bytes.erase(at, 1 + dice.Below(3));
        break;
      case 2:
        bytes.insert(at, 1, AnyByte(dice));
        break;
      case 3:
        bytes.erase(at);  // it broke off
        break;
      default:
        bytes.erase(0, at);  // its beginning was not heard
    }
  }
  return bytes;
}

// --- what the bytes state, worked out in another way ----------------------------------------------------------------

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string FirstWord(std::string_view text) {
  std::string word;
  for (const char c : text) {
    const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    if (!letter && !word.empty()) break;
    if (letter) word += c;
  }
  return word;
}

// Of ten, for what stands behind a number: a unit, or only whether the weight is gross or net.
std::string PowerOf(const std::string& word) {
  for (const char* kind : {"", "N", "n", "NT", "NET", "GR", "GS", "Z"}) {
    if (word == kind) return "e0";
  }
  if (word[0] == 'k' || word[0] == 'K') return "e0";
  if (word[0] == 'g' || word[0] == 'G') return "e-3";
  if (word[0] == 't' || word[0] == 'T') return "e3";
  return "e99";  // no unit of weight
}

// A number that stands in the text, in its unit.
bool SaysInText(std::string text, double weight) {
  const bool named = text.size() == 20 && text[2] == ',' && text[5] == ',' && text[8] == ',';
  if (named) text.erase(6, 2);  // which scale, and its lamps
  for (const std::string_view told : {"-", "?", "^", "US", "OL", "LO", "TR", "PT", "HD", "Err"}) {
    if (text.find(told) != std::string_view::npos) return false;
  }
  for (std::size_t start = 0; start < text.size(); ++start) {
    if (!IsDigit(text[start]) || (start > 0 && IsDigit(text[start - 1]))) continue;
    std::string number;
    std::size_t end = start;
    while (end < text.size() && IsDigit(text[end])) number += text[end++];
    if (end + 1 < text.size() && (text[end] == '.' || text[end] == ',') && IsDigit(text[end + 1])) {
      number += '.';
      for (++end; end < text.size() && IsDigit(text[end]); ++end) number += text[end];
    }
    if (std::strtod((number + PowerOf(FirstWord(std::string_view(text).substr(end)))).c_str(), nullptr) == weight)
      return true;
  }
  return false;
}

// Three bytes of bits and six digits.
bool SaysInBits(std::string_view text, double weight) {
  if (text.size() != 9 && text.size() != 15) return false;
  const auto a = static_cast<unsigned char>(text[0]);
  const auto b = static_cast<unsigned char>(text[1]);
  const auto c = static_cast<unsigned char>(text[2]);
  if ((b & 0x4E) != 0) return false;  // negative, out of range, in motion, not zeroed
  std::string number(text.substr(3, 6));
  static constexpr std::array<int, 8> kPower = {2, 1, 0, -1, -2, -3, -4, -5};
  const int unit = (c & 7) == 1 ? -3 : (c & 7) == 2 ? 3 : 0;
  if (unit == 0 && (b & 0x10) == 0) return false;
  number += 'e' + std::to_string(kPower[a & 7] + unit);
  return std::strtod(number.c_str(), nullptr) == weight;
}

bool States(const std::string& received, double weight) {
  std::size_t start = 0;
  bool after_stx = false;
  for (std::size_t at = 0; at < received.size(); ++at) {
    const char c = received[at];
    if (c == kStx) {
      start = at + 1;
      after_stx = true;
    } else if (c == '\r' || c == kEtx) {
      const std::string_view text = std::string_view(received).substr(start, at - start);
      if (SaysInText(std::string(text), weight) || (after_stx && SaysInBits(text, weight))) return true;
      start = at + 1;
      after_stx = false;
    }
  }
  return false;
}

TEST(FrameFuzz, AMillionReceptions) {
  constexpr int kReceptions = 1000000;
  Dice dice(20260309);
  int weights = 0;
  int wrong = 0;
  for (int i = 0; i < kReceptions && wrong < 10; ++i) {
    const std::string received = Reception(dice);
    try {
      const double weight = app::scale::WeightOfFrame(received, '\r');
      ++weights;
      if (!(weight >= 0 && weight < 1e14) || !States(received, weight)) {
        ++wrong;
        ADD_FAILURE() << host::RawBytes(received) << " was read as " << weight;
      }
    } catch (const host::InputError& error) {
      if (std::string_view(error.what()).empty()) {
        ++wrong;
        ADD_FAILURE() << host::RawBytes(received) << " was refused without a word";
      }
    }
  }
  // Neither is everything refused nor everything taken.
  EXPECT_GT(weights, kReceptions / 20);
  EXPECT_LT(weights, kReceptions / 2);
}

// The frames that the fuzzing starts from are understood: each gives its weight or a reason of its own.
TEST(FrameFuzz, TheOracleKnowsTheRealFrames) {
  int weights = 0;
  for (const std::string& frame : RealFrames()) {
    try {
      EXPECT_TRUE(States(frame, app::scale::WeightOfFrame(frame, '\r'))) << host::RawBytes(frame);
      ++weights;
    } catch (const host::InputError& error) {
      EXPECT_EQ(std::string_view(error.what()).find("não foi entendida"), std::string_view::npos)
          << host::RawBytes(frame);
    }
  }
  EXPECT_EQ(weights, 23);
  EXPECT_FALSE(States("20.5\r", 20.6));
  EXPECT_FALSE(States("20.5", 20.5));
  EXPECT_FALSE(States("20.5 g\r", 20500));
  EXPECT_FALSE(States("US,GS,20.5kg\r", 20.5));
  EXPECT_FALSE(States("\x02"s + ",8 002050000000\r", 20.5));
}

}  // namespace
