#include "app/services/audit_log.h"

#include "app/services/storable_text.h"
#include "host/text.h"

namespace app::services {
namespace {

constexpr std::size_t kTextWidth = 150;
constexpr std::size_t kUserWidth = 50;
constexpr std::size_t kSubjectWidth = 40;
constexpr std::size_t kKeyWidth = 40;

std::string Fit(std::string_view text, std::size_t width) { return host::Left(MakeStorable(text), width); }

}  // namespace

void WriteLog(firebird::Database& database, const LogEntry& entry) {
  database.Execute(
      "INSERT INTO TEC_LOG (USUARIO, DATA_HORA, ASSUNTO, TEXTO, OPERACAO, CHAVE) VALUES (?, ?, ?, ?, ?, ?)",
      {Fit(entry.user, kUserWidth), entry.moment.ToIso(), Fit(entry.subject, kSubjectWidth),
       Fit(entry.text, kTextWidth), static_cast<int>(entry.operation), Fit(entry.key, kKeyWidth)});
}

std::optional<host::LogMark> LastLog(firebird::Database& database, std::string_view subject, std::string_view key) {
  const auto rows =
      database.Query("SELECT FIRST 1 USUARIO, DATA_HORA FROM TEC_LOG WHERE ASSUNTO = ? AND CHAVE = ? ORDER BY ID DESC",
                     {Fit(subject, kSubjectWidth), Fit(key, kKeyWidth)});
  if (rows->IsEmpty()) return std::nullopt;
  return host::LogMark{rows->FieldByName("USUARIO").AsText(),
                       host::DateTime::FromIso(rows->FieldByName("DATA_HORA").AsText()).value_or(host::DateTime())};
}

}  // namespace app::services
