#include "support/statement_text.h"

#include <cctype>

namespace test {
namespace {

constexpr std::string_view kSuffix = "_001";

bool IsNamePart(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$'; }
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

}  // namespace

std::string OneLine(std::string_view sql) {
  std::string line;
  bool quoted = false;
  for (std::size_t i = 0; i < sql.size(); ++i) {
    const char c = sql[i];
    if (c == '\'') quoted = !quoted;
    if (quoted) {
      line += c;
    } else if (IsBlank(c)) {
      if (!line.empty() && line.back() != ' ') line += ' ';
    } else if (c == '{' || c == '}') {
      continue;
    } else if (c == '_' && sql.substr(i, kSuffix.size()) == kSuffix && i > 0 && IsNamePart(sql[i - 1]) &&
               (i + kSuffix.size() == sql.size() || !IsNamePart(sql[i + kSuffix.size()]))) {
      i += kSuffix.size() - 1;
    } else {
      line += c;
    }
  }
  while (!line.empty() && line.back() == ' ') line.pop_back();
  return line;
}

bool IsTransactionControl(std::string_view statement) {
  for (const std::string_view word : {"SAVEPOINT ", "ROLLBACK", "COMMIT"}) {
    if (statement.starts_with(word)) return true;
  }
  return false;
}

}  // namespace test
