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

}  // namespace app::services
