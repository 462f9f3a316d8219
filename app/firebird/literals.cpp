#include "app/firebird/literals.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "app/firebird/sql_tokens.h"
#include "host/text.h"

namespace app::firebird {
namespace {

// What part of a statement a token stands in.
enum class Area { kOther, kCondition, kValues, kSet };

struct Frame {
  Area area = Area::kOther;
  int open_cases = 0;          // CASE lists stay as they are
  bool between = false;        // the next AND belongs to BETWEEN
  bool values_follow = false;  // VALUES was read, its list comes
};

const std::unordered_map<std::string, Area> kAreas = {
    {"SELECT", Area::kOther},    {"FROM", Area::kOther},       {"JOIN", Area::kOther},  {"ON", Area::kCondition},
    {"WHERE", Area::kCondition}, {"HAVING", Area::kCondition}, {"GROUP", Area::kOther}, {"ORDER", Area::kOther},
    {"SET", Area::kSet},         {"UNION", Area::kOther},      {"ROWS", Area::kOther},  {"PLAN", Area::kOther},
    {"RETURNING", Area::kOther}, {"MATCHING", Area::kOther}};

// Words before a parenthesis that only groups; before any other word it holds arguments.
const std::unordered_set<std::string> kGroupingWords = {"AND", "OR", "NOT", "WHERE", "ON", "HAVING", "IN", "BETWEEN"};

// Words that may follow a literal that becomes a parameter.
const std::unordered_set<std::string> kFollowing = {"AND",   "OR",    "ORDER", "GROUP", "WHERE", "HAVING",
                                                    "UNION", "ROWS",  "FOR",   "WITH",  "JOIN",  "LEFT",
                                                    "RIGHT", "INNER", "FULL",  "CROSS", "PLAN",  "RETURNING"};

// Words behind which a sign belongs to the number.
const std::unordered_set<std::string> kNoOperands = {"AND",     "OR",  "NOT",    "WHERE", "ON",   "HAVING", "IN",
                                                     "BETWEEN", "SET", "VALUES", "WHEN",  "THEN", "ELSE",   "LIKE"};

const std::unordered_set<std::string> kStatements = {"SELECT", "INSERT", "UPDATE", "DELETE"};

constexpr std::size_t kOperandDigits = 15;  // longer ones are left alone

bool OneOf(std::string_view text, std::string_view characters) {
  return text.size() == 1 && characters.find(text[0]) != std::string_view::npos;
}

class Finder {
 public:
  explicit Finder(std::string_view sql) : sql_(sql), tokens_(Tokens(sql)) {}

  std::vector<Literal> Find() {
    if (tokens_.empty() || !kStatements.contains(Word(0)) || !Rewritable()) return {};
    frames_.emplace_back();
    for (at_ = 0; at_ < tokens_.size(); ++at_) Step();
    return std::move(found_);
  }

 private:
  std::string_view Text(std::size_t i) const {
    return sql_.substr(tokens_[i].begin, tokens_[i].end - tokens_[i].begin);
  }
  bool Is(std::size_t i, Token::Kind kind) const { return i < tokens_.size() && tokens_[i].kind == kind; }
  bool IsOperator(std::size_t i, std::string_view text) const {
    return Is(i, Token::Kind::kOperator) && Text(i) == text;
  }
  std::string Word(std::size_t i) const {
    return Is(i, Token::Kind::kWord) ? host::UpperAscii(Text(i)) : std::string();
  }
  bool IsNumber(std::size_t i) const { return Is(i, Token::Kind::kInteger) || Is(i, Token::Kind::kDecimal); }

  // A text joined to the word before it (a character set, hexadecimal, alternative quotes) is read differently.
  bool Rewritable() const {
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
      if (Is(i, Token::Kind::kName) || IsOperator(i, "?")) return false;
      const bool joined = i > 0 && Is(i - 1, Token::Kind::kWord) && tokens_[i - 1].end == tokens_[i].begin;
      if (Is(i, Token::Kind::kText) && joined) return false;
    }
    return true;
  }

  void Step() {
    if (Is(at_, Token::Kind::kWord)) {
      ReadWord(Word(at_));
    } else if (IsOperator(at_, "(")) {
      OpenParenthesis();
    } else if (IsOperator(at_, ")")) {
      if (frames_.size() > 1) frames_.pop_back();
    } else if (Is(at_, Token::Kind::kText) || IsNumber(at_)) {
      Consider();
    }
  }

  void ReadWord(const std::string& word) {
    Frame& frame = frames_.back();
    if (word == "CASE") ++frame.open_cases;
    if (word == "END" && frame.open_cases > 0) --frame.open_cases;
    if (word == "BETWEEN") frame.between = true;
    if (word == "VALUES") frame.values_follow = true;
    if (const auto area = kAreas.find(word); area != kAreas.end()) frame.area = area->second;
    // An AND that does not end a BETWEEN joins conditions.
    last_and_is_between_ = word == "AND" && frame.between;
    if (word == "AND") frame.between = false;
  }

  void OpenParenthesis() {
    Frame inner;
    Frame& outer = frames_.back();
    if (outer.values_follow) {
      inner.area = Area::kValues;
      outer.values_follow = false;
    } else if (at_ > 0 && (!Is(at_ - 1, Token::Kind::kWord) || kGroupingWords.contains(Word(at_ - 1)))) {
      const bool grouping = Is(at_ - 1, Token::Kind::kOperator) && !IsOperator(at_ - 1, ")");
      if (grouping || Is(at_ - 1, Token::Kind::kWord)) {
        inner.area = outer.open_cases > 0 ? Area::kOther : outer.area;
        inner.between = false;
      }
    }
    frames_.push_back(inner);
  }

  bool IsArithmetic(std::size_t i) const { return Is(i, Token::Kind::kOperator) && OneOf(Text(i), "+-*/"); }

  // True when a literal may follow token `i`.
  bool MayPrecede(std::size_t i, bool operand) const {
    if (Is(i, Token::Kind::kWord)) {
      const std::string word = Word(i);
      return word == "BETWEEN" || (word == "AND" && last_and_is_between_);
    }
    if (!Is(i, Token::Kind::kOperator)) return false;
    const std::string_view text = Text(i);
    if (IsArithmetic(i)) return true;
    if (OneOf(text, "=<>") || (text.size() == 2 && text != "||")) return true;
    if (!OneOf(text, "(,")) return false;
    return operand || frames_.back().area == Area::kValues || InList();
  }

  // True when token `i` can be the left side of an arithmetic operator.
  bool EndsOperand(std::size_t i) const {
    if (Is(i, Token::Kind::kWord)) return !kNoOperands.contains(Word(i));
    return Is(i, Token::Kind::kQuoted) || IsOperator(i, ")");
  }

  // True within the list of an IN, all of whose members so far are literals.
  bool InList() const {
    std::size_t i = at_;
    while (i > 0 && !IsOperator(i, "(")) {
      const bool member = IsNumber(i) || Is(i, Token::Kind::kText) || IsOperator(i, ",") || IsOperator(i, "-");
      if (!member) return false;
      --i;
    }
    return i > 0 && Word(i - 1) == "IN";
  }

  bool MayFollow(std::size_t i) const {
    if (i >= tokens_.size()) return true;
    if (Is(i, Token::Kind::kWord)) return kFollowing.contains(Word(i));
    return Is(i, Token::Kind::kOperator) && (OneOf(Text(i), "),;") || IsArithmetic(i));
  }

  // The sign at `at_` - 1 belongs to the number when nothing stands before it that it could connect.
  bool HasSign() const {
    if (!IsNumber(at_) || at_ < 2 || !(IsOperator(at_ - 1, "-") || IsOperator(at_ - 1, "+"))) return false;
    return !EndsOperand(at_ - 2) && !IsNumber(at_ - 2) && !Is(at_ - 2, Token::Kind::kText);
  }

  void Consider() {
    const Frame& frame = frames_.back();
    if (frame.area == Area::kOther || frame.open_cases > 0 || at_ == 0) return;
    const bool sign = HasSign();
    const std::size_t first = sign ? at_ - 1 : at_;
    const bool operand = IsArithmetic(first - 1) || IsArithmetic(at_ + 1);
    if (!MayPrecede(first - 1, operand) || !MayFollow(at_ + 1)) return;
    if (operand && (!IsNumber(at_) || tokens_[at_].end - tokens_[at_].begin > kOperandDigits)) return;
    Literal literal;
    literal.kind = IsNumber(at_) ? Literal::Kind::kNumber : Literal::Kind::kText;
    literal.begin = tokens_[first].begin;
    literal.end = tokens_[at_].end;
    literal.text = Unquoted(Text(at_));
    if (sign && IsOperator(first, "-")) literal.text.insert(0, "-");
    literal.operand = operand;
    const std::size_t point = literal.text.find('.');
    literal.decimals =
        IsNumber(at_) && point != std::string::npos ? static_cast<int>(literal.text.size() - point - 1) : 0;
    found_.push_back(std::move(literal));
  }

  static std::string Unquoted(std::string_view quoted) {
    if (quoted[0] != '\'') return std::string(quoted);
    std::string text;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
      text += quoted[i];
      if (quoted[i] == '\'') ++i;
    }
    return text;
  }

  std::string_view sql_;
  std::vector<Token> tokens_;
  std::vector<Frame> frames_;
  std::vector<Literal> found_;
  std::size_t at_ = 0;
  bool last_and_is_between_ = false;
};

}  // namespace

std::vector<Literal> FindLiterals(std::string_view sql) { return Finder(sql).Find(); }

}  // namespace app::firebird
