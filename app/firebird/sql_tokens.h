// The words of a statement, as far as its literals and parameters need telling apart.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace app::firebird {

struct Token {
  enum class Kind {
    kWord,      // identifier or keyword
    kQuoted,    // "identifier"
    kText,      // 'text'
    kInteger,   // 12
    kDecimal,   // 12.5
    kFloat,     // 1.5e3
    kOperator,  // = <> + || ( ) , ; ...
    kName,      // :NAME
  };
  Kind kind;
  std::size_t begin;
  std::size_t end;
};

/// The tokens of `sql`, comments left out. An unfinished text or comment runs to the end.
std::vector<Token> Tokens(std::string_view sql);

struct NamedText {
  std::string sql;                 // every ":NAME" as "?"
  std::vector<std::string> names;  // in capitals, in order, repeated where they repeat
};

NamedText ReplaceNamedParameters(std::string_view sql);

}  // namespace app::firebird
