#include "host/kit/filter.h"

#include <optional>
#include <utility>
#include <vector>

#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"

namespace host {

struct Filter::Node {
  enum class Kind { kAnd, kOr, kNot, kEqual, kNotEqual, kLess, kLessEqual, kGreater, kGreaterEqual, kLike };
  Kind kind;
  std::shared_ptr<const Node> left = {};  // of and, or, not
  std::shared_ptr<const Node> right = {};
  std::size_t field = 0;  // of a comparison
  Value constant = {};
};

namespace {

using Node = Filter::Node;
using NodePtr = std::shared_ptr<const Node>;

struct Token {
  enum class Kind { kWord, kText, kNumber, kSymbol, kEnd };
  Kind kind;
  std::string text;
};

[[noreturn]] void Wrong(std::string_view text) { throw InputError("Filtro inválido: " + std::string(text)); }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsWordCharacter(char c) {
  return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         (static_cast<unsigned char>(c) & 0x80U) != 0;
}

class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  Token Next() {
    while (at_ < text_.size() &&
           (text_[at_] == ' ' || text_[at_] == '\t' || text_[at_] == '\r' || text_[at_] == '\n')) {
      ++at_;
    }
    if (at_ == text_.size()) return {Token::Kind::kEnd, {}};
    const char first = text_[at_];
    if (first == '\'') return Quoted();
    if (IsDigit(first) || first == '-' || first == '.') return Number();
    if (IsWordCharacter(first)) return Run(Token::Kind::kWord, IsWordCharacter);
    return Symbol();
  }

 private:
  template <typename Belongs>
  Token Run(Token::Kind kind, Belongs belongs) {
    const std::size_t start = at_;
    while (at_ < text_.size() && belongs(text_[at_])) ++at_;
    return {kind, std::string(text_.substr(start, at_ - start))};
  }

  Token Quoted() {
    std::string inside;
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] != '\'') {
        inside += text_[at_];
        continue;
      }
      ++at_;
      if (at_ == text_.size() || text_[at_] != '\'') return {Token::Kind::kText, inside};
      inside += '\'';
    }
    Wrong(text_);
  }

  Token Number() {
    const bool negative = text_[at_] == '-';
    if (negative) ++at_;
    Token number = Run(Token::Kind::kNumber, [](char c) { return IsDigit(c) || c == '.'; });
    if (number.text.empty() || !ParseTyped(number.text)) Wrong(text_);
    if (negative) number.text.insert(0, "-");
    return number;
  }

  Token Symbol() {
    for (const std::string_view symbol : {"<>", "<=", ">=", "=", "<", ">", "(", ")"}) {
      if (text_.substr(at_, symbol.size()) != symbol) continue;
      at_ += symbol.size();
      return {Token::Kind::kSymbol, std::string(symbol)};
    }
    Wrong(text_);
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

std::optional<Node::Kind> Comparison(const Token& token) {
  if (token.kind == Token::Kind::kWord && SameName(token.text, "like")) return Node::Kind::kLike;
  if (token.kind != Token::Kind::kSymbol) return std::nullopt;
  if (token.text == "=") return Node::Kind::kEqual;
  if (token.text == "<>") return Node::Kind::kNotEqual;
  if (token.text == "<") return Node::Kind::kLess;
  if (token.text == "<=") return Node::Kind::kLessEqual;
  if (token.text == ">") return Node::Kind::kGreater;
  if (token.text == ">=") return Node::Kind::kGreaterEqual;
  return std::nullopt;
}

// or  := and { "or" and };  and := not { "and" not };  not := [ "not" ] ( "(" or ")" | field comparison constant )
class Parser {
 public:
  Parser(std::string_view text, const std::function<int(std::string_view)>& field_index)
      : text_(text), field_index_(field_index), scanner_(text) {
    Advance();
  }

  NodePtr Whole() {
    NodePtr root = Or();
    if (token_.kind != Token::Kind::kEnd) Wrong(text_);
    return root;
  }

 private:
  void Advance() { token_ = scanner_.Next(); }
  bool IsWord(std::string_view word) const { return token_.kind == Token::Kind::kWord && SameName(token_.text, word); }
  bool IsSymbol(std::string_view symbol) const { return token_.kind == Token::Kind::kSymbol && token_.text == symbol; }

  NodePtr Or() {
    NodePtr left = And();
    while (IsWord("or")) {
      Advance();
      left = std::make_shared<Node>(Node{Node::Kind::kOr, left, And()});
    }
    return left;
  }

  NodePtr And() {
    NodePtr left = Not();
    while (IsWord("and")) {
      Advance();
      left = std::make_shared<Node>(Node{Node::Kind::kAnd, left, Not()});
    }
    return left;
  }

  NodePtr Not() {
    if (IsWord("not")) {
      Advance();
      return std::make_shared<Node>(Node{Node::Kind::kNot, Not()});
    }
    if (!IsSymbol("(")) return Compare();
    Advance();
    NodePtr inside = Or();
    if (!IsSymbol(")")) Wrong(text_);
    Advance();
    return inside;
  }

  NodePtr Compare() {
    if (token_.kind != Token::Kind::kWord) Wrong(text_);
    const int field = field_index_(token_.text);
    if (field < 0) Wrong(text_);
    Advance();
    const auto kind = Comparison(token_);
    if (!kind) Wrong(text_);
    Advance();
    Value constant;
    if (token_.kind == Token::Kind::kText) {
      constant = token_.text;
    } else if (token_.kind == Token::Kind::kNumber && *kind != Node::Kind::kLike) {
      constant = ParseTyped(token_.text).value_or(0.0);
    } else {
      Wrong(text_);
    }
    Advance();
    return std::make_shared<Node>(Node{*kind, nullptr, nullptr, static_cast<std::size_t>(field), constant});
  }

  std::string_view text_;
  const std::function<int(std::string_view)>& field_index_;
  Scanner scanner_;
  Token token_{Token::Kind::kEnd, {}};
};

// Bytes of the character that starts here.
std::size_t CharacterSize(std::string_view text) {
  std::size_t size = 1;
  while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U) ++size;
  return size;
}

bool Like(std::string_view text, std::string_view pattern) {
  // On a mismatch the last "%" takes one character more and matching goes on behind it.
  std::string_view text_retry;
  std::string_view pattern_retry;
  bool can_retry = false;
  while (!text.empty()) {
    if (!pattern.empty() && pattern.front() == '%') {
      pattern.remove_prefix(1);
      text_retry = text;
      pattern_retry = pattern;
      can_retry = true;
    } else if (!pattern.empty() && pattern.front() == '_') {
      pattern.remove_prefix(1);
      text.remove_prefix(CharacterSize(text));
    } else if (!pattern.empty() && pattern.front() == text.front()) {
      pattern.remove_prefix(1);
      text.remove_prefix(1);
    } else if (can_retry) {
      text_retry.remove_prefix(CharacterSize(text_retry));
      text = text_retry;
      pattern = pattern_retry;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('%') == std::string_view::npos;
}

template <typename T>
int Order(const T& left, const T& right) {
  if (left < right) return -1;
  return right < left ? 1 : 0;
}

int Order(const Value& value, const Value& constant) {
  if (constant.IsNumber()) return Order(value.AsFloat(), constant.AsFloat());
  const std::string text = constant.AsText();
  if (value.IsNumber() && !text.empty()) {
    if (const auto number = ParseTyped(text)) return Order(value.AsFloat(), *number);
  }
  if (value.IsDate() && !constant.AsDate().IsZero()) return Order(value.AsDate(), constant.AsDate());
  return Order(value.AsText(), text);
}

bool Holds(const Node& node, const Filter::Lookup& value) {
  switch (node.kind) {
    case Node::Kind::kAnd:
      return Holds(*node.left, value) && Holds(*node.right, value);
    case Node::Kind::kOr:
      return Holds(*node.left, value) || Holds(*node.right, value);
    case Node::Kind::kNot:
      return !Holds(*node.left, value);
    case Node::Kind::kEqual:
      return Order(value(node.field), node.constant) == 0;
    case Node::Kind::kNotEqual:
      return Order(value(node.field), node.constant) != 0;
    case Node::Kind::kLess:
      return Order(value(node.field), node.constant) < 0;
    case Node::Kind::kLessEqual:
      return Order(value(node.field), node.constant) <= 0;
    case Node::Kind::kGreater:
      return Order(value(node.field), node.constant) > 0;
    case Node::Kind::kGreaterEqual:
      return Order(value(node.field), node.constant) >= 0;
    case Node::Kind::kLike:
      return Like(value(node.field).AsText(), node.constant.AsText());
  }
  return false;
}

}  // namespace

Filter Filter::Parse(std::string_view text, const std::function<int(std::string_view)>& field_index) {
  return Filter(Parser(text, field_index).Whole());
}

bool Filter::Matches(const Lookup& value) const { return Holds(*root_, value); }

}  // namespace host
