#include "app/firebird/statement_cache.h"

#include <utility>

namespace app::firebird {

std::shared_ptr<Statement> StatementCache::Find(std::string_view sql) {
  const auto found = by_text_.find(sql);
  if (found == by_text_.end()) return nullptr;
  entries_.splice(entries_.begin(), entries_, found->second);
  return found->second->statement;
}

void StatementCache::Keep(std::string_view sql, std::shared_ptr<Statement> statement) {
  if (const auto found = by_text_.find(sql); found != by_text_.end()) {
    found->second->statement = std::move(statement);
    return;
  }
  if (entries_.size() >= capacity_) {
    by_text_.erase(entries_.back().sql);
    entries_.pop_back();
  }
  entries_.push_front({std::string(sql), std::move(statement)});
  by_text_.emplace(entries_.front().sql, entries_.begin());
}

void StatementCache::Clear() {
  by_text_.clear();
  entries_.clear();
}

}  // namespace app::firebird
