#include "app/firebird/sql_script.h"

#include "app/firebird/sql_tokens.h"
#include "host/text.h"

namespace app::firebird {
namespace {

bool IsWord(std::string_view script, const Token& token, std::string_view word) {
  return token.kind == Token::Kind::kWord && host::SameName(script.substr(token.begin, token.end - token.begin), word);
}

}  // namespace

std::vector<std::string> SplitScript(std::string_view script) {
  std::vector<std::string> statements;
  std::string terminator = ";";
  std::vector<Token> current;
  std::size_t past = 0;  // where the terminator just met ends
  const auto finish = [&](std::size_t end) {
    if (current.empty()) return;
    const bool set_term =
        current.size() >= 3 && IsWord(script, current[0], "SET") && IsWord(script, current[1], "TERM");
    if (set_term) {
      terminator = host::Trim(script.substr(current[2].begin, end - current[2].begin));
    } else {
      statements.push_back(host::Trim(script.substr(current.front().begin, end - current.front().begin)));
    }
    current.clear();
  };
  for (const Token& token : Tokens(script)) {
    if (token.begin < past) continue;
    if (token.kind != Token::Kind::kText && script.substr(token.begin, terminator.size()) == terminator) {
      past = token.begin + terminator.size();
      finish(token.begin);
    } else {
      current.push_back(token);
    }
  }
  finish(script.size());
  return statements;
}

}  // namespace app::firebird
