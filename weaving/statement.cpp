#include "weaving/statement.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace weaving {
namespace {

bool IsNameStart(char c) { return c >= 'a' && c <= 'z'; }
bool IsName(char c) { return IsNameStart(c) || (c >= '0' && c <= '9') || c == '_'; }

// Where the name that begins at `at` ends.
std::size_t EndOfName(std::string_view text, std::size_t at) {
  while (at < text.size() && IsName(text[at])) ++at;
  return at;
}

template <class... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

}  // namespace

Statements::Statements(host::Host& host) : funcoes_(host.GetFuncoes()), database_(host.GetTabela().IBDatabase()) {}

Sql Statements::Write(std::string_view text, Values values) const {
  if (!text.empty() && text.front() == '\n') text.remove_prefix(1);
  std::vector<bool> used(values.size());
  std::string sql;
  sql.reserve(text.size() * 2);
  bool quoted = false;
  std::size_t at = 0;
  while (at < text.size()) {
    const char c = text[at];
    if (c == '\'') quoted = !quoted;
    const bool named = !quoted && c == ':' && at + 1 < text.size() && IsNameStart(text[at + 1]);
    const std::size_t brace = !quoted && c == '{' ? text.find('}', at) : std::string_view::npos;
    if (named) {
      const std::size_t end = EndOfName(text, at + 1);
      const std::string_view name = text.substr(at + 1, end - at - 1);
      const auto* value = std::find_if(values.begin(), values.end(), [&](const Named& v) { return v.name == name; });
      if (value == values.end()) throw std::logic_error("a statement names :" + std::string(name) + " without value");
      used[static_cast<std::size_t>(value - values.begin())] = true;
      sql += Literal(value->value);
      at = end;
    } else if (brace != std::string_view::npos) {
      sql += funcoes_.DBLocal(text.substr(at + 1, brace - at - 1), true);
      at = brace + 1;
    } else {
      sql += c;
      ++at;
    }
  }
  const auto unused = std::find(used.begin(), used.end(), false);
  if (unused != used.end()) {
    const Named& value = *(values.begin() + (unused - used.begin()));
    throw std::logic_error("no statement asks for the value :" + std::string(value.name));
  }
  return Sql(std::move(sql));
}

std::string Statements::Literal(const Term& value) const {
  return std::visit(Overloaded{[this](std::string_view text) { return funcoes_.Aspas(text); },
                               [this](double number) { return funcoes_.PermanecePonto(number); },
                               [](std::int64_t number) { return std::to_string(number); },
                               [this](host::Date date) { return funcoes_.Aspas(date.ToSql()); },
                               [](const Sql& piece) { return piece.Text(); }},
                    value);
}

std::unique_ptr<host::TTIQuery> Statements::Open(std::string_view text, Values values) const {
  return Open(Write(text, values));
}

std::unique_ptr<host::TTIQuery> Statements::Open(const Sql& statement) const {
  auto query = database_.NewQuery();
  query->SQL.Add(statement.Text());
  query->Open();
  return query;
}

void Statements::Execute(std::string_view text, Values values) const { Execute(Write(text, values)); }

void Statements::Execute(const Sql& statement) const {
  const auto query = database_.NewQuery();
  query->SQL.Add(statement.Text());
  query->ExecSQL();
}

std::unique_ptr<host::TTIQuery> Statements::Batch(std::string_view text, Values values) const {
  auto query = database_.NewQuery();
  query->SQL.Add(Write(text, values).Text());
  return query;
}

void Statements::ExecuteTogether(const std::vector<Sql>& statements) const {
  std::vector<std::string> texts;
  texts.reserve(statements.size());
  for (const Sql& statement : statements) texts.push_back(statement.Text());
  database_.ExecTogether(texts);
}

}  // namespace weaving
