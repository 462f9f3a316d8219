// Prepared statements kept by their text, the least used one dropped first.
#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "app/firebird/statement.h"

namespace app::firebird {

class StatementCache {
 public:
  explicit StatementCache(std::size_t capacity) : capacity_(capacity) {}

  /// The kept statement of this text, or nothing.
  std::shared_ptr<Statement> Find(std::string_view sql);
  void Keep(std::string_view sql, std::shared_ptr<Statement> statement);
  /// Frees all: a prepared statement holds the tables that it names against changes of their structure.
  void Clear();

 private:
  struct Entry {
    std::string sql;
    std::shared_ptr<Statement> statement;
  };

  std::size_t capacity_;
  std::list<Entry> entries_;  // most recently used first
  std::unordered_map<std::string_view, std::list<Entry>::iterator> by_text_;
};

}  // namespace app::firebird
