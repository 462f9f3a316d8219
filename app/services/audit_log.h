// The audit trail: who did what and when.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"
#include "host/funcoes.h"

namespace app::services {

struct LogEntry {
  std::string user;  // name
  host::DateTime moment;
  std::string_view subject;
  std::string_view text;
  host::LogOperation operation;
  std::string_view key;  // order number or other key
};

/// Writes one row, as part of the running action. Text too long for its column is cut (the text at 150 characters) and
/// characters that the database cannot hold become "?", so that a log of a failure never fails itself for such a
/// reason. Throws host::DatabaseError.
void WriteLog(firebird::Database& database, const LogEntry& entry);

/// The newest row of a subject and key; nothing when there is none. Throws host::DatabaseError.
std::optional<host::LogMark> LastLog(firebird::Database& database, std::string_view subject, std::string_view key);

/// The rows of a subject and key, newest first, `count` at most; empty when there is none. Throws host::DatabaseError.
std::vector<host::LogRow> LatestLogs(firebird::Database& database, std::string_view subject, std::string_view key,
                                     std::size_t count);

}  // namespace app::services
