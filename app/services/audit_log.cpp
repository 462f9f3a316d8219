#include "app/services/audit_log.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "app/firebird/storable_text.h"
#include "host/text.h"

namespace app::services {
namespace {

constexpr std::size_t kTextWidth = 150;
constexpr std::size_t kUserWidth = 50;
constexpr std::size_t kSubjectWidth = 40;
constexpr std::size_t kKeyWidth = 40;

std::string Fit(std::string_view text, std::size_t width) { return host::Left(firebird::MakeStorable(text), width); }

// Rows are numbered as they are written; the moment is the station's, whose clock may be wrong.
std::unique_ptr<host::TTIQuery> NewestFirst(firebird::Database& database, const std::string& what,
                                            std::string_view subject, std::string_view key) {
  return database.Query("SELECT " + what + " FROM TEC_LOG WHERE ASSUNTO = ? AND CHAVE = ? ORDER BY ID DESC",
                        {Fit(subject, kSubjectWidth), Fit(key, kKeyWidth)});
}

host::DateTime MomentOf(const host::TTIQuery& row) {
  return host::DateTime::FromIso(row.FieldByName("DATA_HORA").AsText()).value_or(host::DateTime());
}

}  // namespace

void WriteLog(firebird::Database& database, const LogEntry& entry) {
  database.Execute(
      "INSERT INTO TEC_LOG (USUARIO, DATA_HORA, ASSUNTO, TEXTO, OPERACAO, CHAVE) VALUES (?, ?, ?, ?, ?, ?)",
      {Fit(entry.user, kUserWidth), entry.moment.ToIso(), Fit(entry.subject, kSubjectWidth),
       Fit(entry.text, kTextWidth), static_cast<int>(entry.operation), Fit(entry.key, kKeyWidth)});
}

std::optional<host::LogMark> LastLog(firebird::Database& database, std::string_view subject, std::string_view key) {
  const auto rows = NewestFirst(database, "FIRST 1 USUARIO, DATA_HORA", subject, key);
  if (rows->IsEmpty()) return std::nullopt;
  return host::LogMark{rows->FieldByName("USUARIO").AsText(), MomentOf(*rows)};
}

std::vector<host::LogRow> LatestLogs(firebird::Database& database, std::string_view subject, std::string_view key,
                                     std::size_t count) {
  const std::size_t first = std::min<std::size_t>(count, std::numeric_limits<std::int32_t>::max());
  const auto rows =
      NewestFirst(database, "FIRST " + std::to_string(first) + " USUARIO, DATA_HORA, OPERACAO, TEXTO", subject, key);
  std::vector<host::LogRow> logs;
  for (; !rows->Eof(); rows->Next()) {
    logs.push_back({.user = rows->FieldByName("USUARIO").AsText(),
                    .moment = MomentOf(*rows),
                    .operation = static_cast<host::LogOperation>(rows->FieldByName("OPERACAO").AsInteger()),
                    .text = rows->FieldByName("TEXTO").AsText()});
  }
  return logs;
}

}  // namespace app::services
