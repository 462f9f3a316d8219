// Frames that a person could read: words, signs and one number.
#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "app/scale/reading.h"

namespace app::scale {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

/// What the frame is made of, in its order.
struct Parts {
  std::vector<std::string_view> before;  // words before the number, or all words when there is none
  std::vector<std::string_view> after;
  char sign = 0;
  std::string digits;
  int decimals = 0;
  std::size_t gap = 0;  // blanks between the number and the first word after it
  bool any_number = false;
  std::optional<Refusal> refusal;  // the text has no form that is known
};

class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  Parts Scan() {
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (IsLetter(c)) {
        Word();
      } else if (IsDigit(c)) {
        Number();
      } else if (c == '+' || c == '-') {
        Sign();
      } else if (c == ' ' || c == ',' || c == '?' || c == '^') {
        ++at_;  // the marks mean something wherever they stand; see StatusOf
      } else {
        Refuse(Refusal::kNotUnderstood);
        ++at_;
      }
    }
    return std::move(parts_);
  }

 private:
  void Refuse(Refusal refusal) {
    if (!parts_.refusal) parts_.refusal = refusal;
  }

  void Word() {
    const std::size_t start = at_;
    while (at_ < text_.size() && IsLetter(text_[at_])) ++at_;
    if (parts_.any_number && parts_.after.empty()) parts_.gap = start - number_end_;
    (parts_.any_number ? parts_.after : parts_.before).push_back(text_.substr(start, at_ - start));
  }

  void Sign() {
    if (parts_.sign != 0 || parts_.any_number) Refuse(Refusal::kNotUnderstood);
    parts_.sign = text_[at_++];
  }

  void Number() {
    if (parts_.any_number) Refuse(Refusal::kTwoNumbers);
    parts_.any_number = true;
    Digits();
    // A comma is the decimal sign between digits, else it stands between the number and its unit.
    const bool more = at_ + 1 < text_.size() && IsDigit(text_[at_ + 1]);
    if (at_ < text_.size() && (text_[at_] == '.' || (text_[at_] == ',' && more))) {
      ++at_;
      const std::size_t whole = parts_.digits.size();
      Digits();
      parts_.decimals = static_cast<int>(parts_.digits.size() - whole);
    }
    number_end_ = at_;
  }

  void Digits() {
    while (at_ < text_.size() && IsDigit(text_[at_])) parts_.digits += text_[at_++];
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t number_end_ = 0;
  Parts parts_;
};

struct Meaning {
  std::string_view word;
  std::optional<Refusal> refusal;  // nothing: the word is no obstacle
};

// Before the number: the state of the scale and the kind of weight.
constexpr std::array<Meaning, 27> kBefore = {{
    {"ST", {}},
    {"S", {}},  // MT-SICS: the command, and "stable"
    {"GS", {}},
    {"G", {}},
    {"GR", {}},
    {"GROSS", {}},
    {"NT", {}},
    {"N", {}},
    {"NET", {}},
    {"US", Refusal::kUnstable},
    {"D", Refusal::kUnstable},  // MT-SICS: dynamic
    {"I", Refusal::kUnstable},  // MT-SICS: it did not come to rest, or is busy
    {"IIIII", Refusal::kUnstable},
    {"OL", Refusal::kOverload},
    {"LO", Refusal::kOverload},
    {"H", Refusal::kOverload},
    {"High", Refusal::kOverload},
    {"SSSSS", Refusal::kOverload},
    {"L", Refusal::kNegative},
    {"Low", Refusal::kNegative},
    {"NNNNN", Refusal::kNegative},
    {"TR", Refusal::kTare},
    {"T", Refusal::kTare},
    {"PT", Refusal::kTare},
    {"HD", Refusal::kHeld},
    {"Err", Refusal::kScaleError},
    {"ERR", Refusal::kScaleError},
}};

// After the number and its unit: the kind of weight, in a column of its own, and the state of the scale.
constexpr std::array<Meaning, 18> kAfter = {{
    {"G", {}},
    {"g", {}},
    {"GR", {}},
    {"GS", {}},
    {"N", {}},
    {"n", {}},
    {"NT", {}},
    {"NET", {}},
    {"Z", {}},  // Rice Lake: centre of zero
    {"M", Refusal::kUnstable},
    {"m", Refusal::kUnstable},
    {"I", Refusal::kUnstable},
    {"O", Refusal::kOverload},
    {"o", Refusal::kOverload},
    {"e", Refusal::kScaleError},
    {"T", Refusal::kTare},
    {"TR", Refusal::kTare},
    {"PT", Refusal::kTare},
}};

template <std::size_t kCount>
const Meaning* Find(const std::array<Meaning, kCount>& words, std::string_view word) {
  const auto found = std::find_if(words.begin(), words.end(), [word](const Meaning& m) { return m.word == word; });
  return found == words.end() ? nullptr : &*found;
}

/// What the words after the number say.
struct Ending {
  std::optional<Unit> unit;
  std::vector<std::string_view> words;  // all but the unit
};

std::optional<Unit> UnitNamed(std::string_view word) {
  if (word == "kg" || word == "KG" || word == "Kg") return Unit::kKilogram;
  if (word == "g") return Unit::kGram;
  if (word == "t") return Unit::kTonne;
  return std::nullopt;
}

// Condec writes unit, kind and state as one capital each without a blank: "KG", "KNM", "TG".
std::optional<Ending> CondecEnding(std::string_view word) {
  if (word.size() < 2 || word.size() > 3) return std::nullopt;
  constexpr std::string_view kUnits = "KGT";
  constexpr std::string_view kKinds = "GN";
  constexpr std::string_view kStates = "MIOZ";
  const std::size_t unit = kUnits.find(word[0]);
  if (unit == std::string_view::npos || kKinds.find(word[1]) == std::string_view::npos) return std::nullopt;
  if (word.size() == 3 && kStates.find(word[2]) == std::string_view::npos) return std::nullopt;
  constexpr std::array<Unit, 3> kMeant = {Unit::kKilogram, Unit::kGram, Unit::kTonne};
  Ending ending{kMeant[unit], {word.substr(1, 1)}};
  if (word.size() == 3) ending.words.push_back(word.substr(2));
  return ending;
}

// A kind glued behind the unit or a state before it: "kgGR", "kgN", "Mkg". A kind in small letters would be another
// unit
// ("tn" is the short ton), and so would a state before a unit but the kilogram ("mg").
std::optional<Ending> GluedEnding(std::string_view word) {
  for (const std::string_view unit : {"kg", "g", "t"}) {
    if (word.size() <= unit.size() || word.substr(0, unit.size()) != unit) continue;
    const std::string_view kind = word.substr(unit.size());
    const bool capitals = std::all_of(kind.begin(), kind.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    if (capitals && Find(kAfter, kind) != nullptr) return Ending{UnitNamed(unit), {kind}};
  }
  constexpr std::string_view kStates = "MmOoe";
  if (word.size() == 3 && word.substr(1) == "kg" && kStates.find(word[0]) != std::string_view::npos) {
    return Ending{Unit::kKilogram, {word.substr(0, 1)}};
  }
  return std::nullopt;
}

// Nothing when the unit is another one, or not sure.
std::optional<Ending> EndingOf(const Parts& parts) {
  Ending ending;
  std::vector<std::string_view> words = parts.after;
  std::size_t gap = parts.gap;
  // A state in its own column stands between number and unit.
  if (words.size() > 1 &&
      (words[0] == "m" || words[0] == "o" || words[0] == "M" || words[0] == "O" || words[0] == "e")) {
    ending.words.push_back(words[0]);
    words.erase(words.begin());
    gap = 0;
  }
  if (words.empty()) return ending;
  const std::string_view first = words.front();
  // "g" in a column farther off is Cardinal's "gross" after a unit that was left blank, or gram: nobody can tell.
  constexpr std::size_t kUnitColumn = 3;
  if (first == "g" && gap > kUnitColumn) return std::nullopt;
  if (const auto unit = UnitNamed(first)) {
    ending.unit = unit;
    words.erase(words.begin());
  } else if (auto glued = gap == 0 ? CondecEnding(first) : std::nullopt; glued || (glued = GluedEnding(first))) {
    ending.unit = glued->unit;
    ending.words.insert(ending.words.end(), glued->words.begin(), glued->words.end());
    words.erase(words.begin());
  } else if (first == "G" || first == "T" || Find(kAfter, first) == nullptr) {
    return std::nullopt;
  }
  ending.words.insert(ending.words.end(), words.begin(), words.end());
  return ending;
}

template <std::size_t kCount>
void Collect(const std::array<Meaning, kCount>& known, const std::vector<std::string_view>& words,
             std::vector<Refusal>& refusals) {
  for (const std::string_view word : words) {
    const Meaning* meaning = Find(known, word);
    if (meaning == nullptr) {
      refusals.push_back(Refusal::kNotUnderstood);
    } else if (meaning->refusal) {
      refusals.push_back(*meaning->refusal);
    }
  }
}

// What the scale says of itself, the weightiest first; a number beside it is no weight.
std::optional<Refusal> Weightiest(const std::vector<Refusal>& refusals) {
  for (const Refusal refusal : {Refusal::kScaleError, Refusal::kOverload, Refusal::kHeld, Refusal::kTare,
                                Refusal::kUnstable, Refusal::kNegative, Refusal::kUnit}) {
    if (std::find(refusals.begin(), refusals.end(), refusal) != refusals.end()) return refusal;
  }
  return std::nullopt;
}

// Sartorius leaves the unit blank while the weight moves: sign, blank, eight characters of number, blank, three of
// unit; six characters that name the value may stand before.
bool LacksItsUnit(std::string_view frame, const Parts& parts) {
  constexpr std::size_t kSize = 14;
  constexpr std::size_t kName = 6;
  constexpr std::size_t kNumberEnd = 10;
  if (frame.size() == kSize + kName) frame.remove_prefix(kName);
  if (frame.size() != kSize || !parts.any_number || !parts.after.empty()) return false;
  return IsDigit(frame[kNumberEnd - 1]) && frame.find_first_not_of(' ', kNumberEnd) == std::string_view::npos &&
         !IsDigit(frame[0]) && frame[1] == ' ';
}

}  // namespace

Reading ReadTextFrame(std::string_view frame) {
  const Parts parts = Scanner(frame).Scan();
  std::vector<Refusal> refusals;
  Collect(kBefore, parts.before, refusals);
  const auto ending = EndingOf(parts);
  if (!ending) {
    refusals.push_back(Refusal::kUnit);
  } else {
    Collect(kAfter, ending->words, refusals);
  }
  if (frame.find('^') != std::string_view::npos) refusals.push_back(Refusal::kOverload);
  if (frame.find('?') != std::string_view::npos) refusals.push_back(Refusal::kUnstable);
  if (LacksItsUnit(frame, parts)) refusals.push_back(Refusal::kUnstable);
  if (frame.find('-') != std::string_view::npos) refusals.push_back(Refusal::kNegative);
  // "S +" and "S -": the weight is out of range.
  if (!parts.any_number && parts.sign == '+') refusals.push_back(Refusal::kOverload);
  if (const auto refusal = Weightiest(refusals)) return Reading::Refused(*refusal);
  if (parts.refusal) return Reading::Refused(*parts.refusal);
  if (!parts.any_number) return Reading::Refused(Refusal::kNoDigits);
  if (!refusals.empty()) return Reading::Refused(refusals.front());
  return WeightOfDigits(parts.digits, parts.decimals, ending->unit.value_or(Unit::kKilogram));
}

}  // namespace app::scale
