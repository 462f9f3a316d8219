#include "app/firebird/sql_tokens.h"

#include <algorithm>
#include <cctype>

#include "host/text.h"

namespace app::firebird {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsWord(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$' || (c & 0x80) != 0;
}

class Scanner {
 public:
  explicit Scanner(std::string_view sql) : sql_(sql) {}

  std::vector<Token> All() {
    std::vector<Token> tokens;
    while (SkipBlanks()) {
      const std::size_t begin = at_;
      const Token::Kind kind = One();
      tokens.push_back({kind, begin, at_});
    }
    return tokens;
  }

 private:
  char Peek(std::size_t ahead = 0) const { return at_ + ahead < sql_.size() ? sql_[at_ + ahead] : '\0'; }

  // Past blanks and comments; false at the end.
  bool SkipBlanks() {
    while (at_ < sql_.size()) {
      if (std::isspace(static_cast<unsigned char>(sql_[at_])) != 0) {
        ++at_;
      } else if (Peek() == '-' && Peek(1) == '-') {
        at_ = std::min(sql_.find('\n', at_), sql_.size());
      } else if (Peek() == '/' && Peek(1) == '*') {
        const std::size_t end = sql_.find("*/", at_ + 2);
        at_ = end == std::string_view::npos ? sql_.size() : end + 2;
      } else {
        return true;
      }
    }
    return false;
  }

  Token::Kind One() {
    const char c = Peek();
    if (c == '\'' || c == '"') return Quoted(c);
    if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)))) return Number();
    if (IsWord(c)) {
      while (IsWord(Peek())) ++at_;
      return Token::Kind::kWord;
    }
    if (c == ':' && IsWord(Peek(1)) && !IsDigit(Peek(1))) {
      ++at_;
      while (IsWord(Peek())) ++at_;
      return Token::Kind::kName;
    }
    Operator();
    return Token::Kind::kOperator;
  }

  Token::Kind Quoted(char quote) {
    ++at_;
    while (at_ < sql_.size()) {
      if (sql_[at_++] != quote) continue;
      if (Peek() != quote) break;
      ++at_;
    }
    return quote == '\'' ? Token::Kind::kText : Token::Kind::kQuoted;
  }

  Token::Kind Number() {
    Token::Kind kind = Token::Kind::kInteger;
    while (IsDigit(Peek())) ++at_;
    if (Peek() == '.') {
      kind = Token::Kind::kDecimal;
      ++at_;
      while (IsDigit(Peek())) ++at_;
    }
    if (IsWord(Peek())) {
      kind = Token::Kind::kFloat;  // or hexadecimal: not to be touched
      while (IsWord(Peek())) ++at_;
      if ((Peek() == '+' || Peek() == '-') && (sql_[at_ - 1] == 'e' || sql_[at_ - 1] == 'E')) {
        ++at_;
        while (IsWord(Peek())) ++at_;
      }
    }
    return kind;
  }

  void Operator() {
    static constexpr std::string_view kDouble[] = {"<>", "<=", ">=", "!=", "~=", "^=", "||",
                                                   "!<", "!>", "~<", "~>", "^<", "^>"};
    for (const std::string_view candidate : kDouble) {
      if (sql_.substr(at_, 2) == candidate) {
        at_ += 2;
        return;
      }
    }
    ++at_;
  }

  std::string_view sql_;
  std::size_t at_ = 0;
};

}  // namespace

std::vector<Token> Tokens(std::string_view sql) { return Scanner(sql).All(); }

NamedText ReplaceNamedParameters(std::string_view sql) {
  NamedText result;
  std::size_t copied = 0;
  for (const Token& token : Tokens(sql)) {
    if (token.kind != Token::Kind::kName) continue;
    result.sql += sql.substr(copied, token.begin - copied);
    result.sql += '?';
    result.names.push_back(host::UpperAscii(sql.substr(token.begin + 1, token.end - token.begin - 1)));
    copied = token.end;
  }
  result.sql += sql.substr(copied);
  return result;
}

}  // namespace app::firebird
