#include "app/services/sign_in.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "app/firebird/storable_text.h"
#include "app/services/audit_log.h"
#include "app/services/passwords.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::services {
namespace {

constexpr int kPatience = 5;  // wrong tries
constexpr std::int64_t kFirstWait = 30;
constexpr std::int64_t kLongestWait = std::int64_t{15} * 60;
constexpr std::size_t kNameWidth = 50;

struct Account {
  User user;
  std::string hash;
  bool active = false;
};

// A code goes before a name and the exact writing before one that differs in case.
std::optional<Account> FindAccount(firebird::Database& database, std::string_view name) {
  constexpr std::string_view sql = R"(SELECT FIRST 1 U.CODIGO, U.NOME, U.SENHA, U.ATIVO
FROM (SELECT CAST(? AS VARCHAR(50)) AS NOME FROM RDB$DATABASE) DIGITADO
INNER JOIN TEC_USUARIO U ON UPPER(U.CODIGO) = UPPER(DIGITADO.NOME) OR UPPER(U.NOME) = UPPER(DIGITADO.NOME)
ORDER BY CASE WHEN U.CODIGO = DIGITADO.NOME THEN 1 WHEN UPPER(U.CODIGO) = UPPER(DIGITADO.NOME) THEN 2
  WHEN U.NOME = DIGITADO.NOME THEN 3 ELSE 4 END, U.CODIGO)";
  if (name.empty() || host::Length(name) > kNameWidth || firebird::WhyNotStorable(name)) return std::nullopt;
  const auto rows = database.Query(sql, {name});
  if (rows->IsEmpty()) return std::nullopt;
  Account account;
  account.user = {rows->FieldByName("CODIGO").AsText(), rows->FieldByName("NOME").AsText()};
  account.hash = rows->FieldByName("SENHA").AsText();
  account.active = rows->FieldByName("ATIVO").AsText() != "N";
  return account;
}

// Names of nobody are slowed down as well, without keeping what was typed: a few hundred drawers, longer than any code.
std::string Drawer(std::string_view name) {
  std::uint32_t sum = 2166136261u;
  for (const char letter : host::UpperAscii(name)) sum = (sum ^ static_cast<unsigned char>(letter)) * 16777619u;
  return "desconhecido " + std::to_string(sum % 500);
}

std::int64_t Seconds(const host::DateTime& moment) {
  // Days since the first of March of the year 0, so that a leap day is the last of its year.
  const std::int64_t year = moment.date.Year() - (moment.date.Month() < 3 ? 1 : 0);
  const std::int64_t month = (moment.date.Month() + 9) % 12;
  const std::int64_t days =
      year * 365 + year / 4 - year / 100 + year / 400 + (month * 306 + 5) / 10 + moment.date.Day() - 1;
  return days * 86400 + moment.second_of_day;
}

std::int64_t WaitAfter(std::int64_t tries) {
  if (tries < kPatience) return 0;
  std::int64_t wait = kFirstWait;
  for (std::int64_t more = kPatience; more < tries && wait < kLongestWait; ++more) wait *= 2;
  return std::min(wait, kLongestWait);
}

/// The wrong tries of one user; held from this station until the action ends, so that two stations cannot try at once.
class Tries {
 public:
  Tries(firebird::Database& database, std::string who) : database_(database), who_(std::move(who)) {
    constexpr std::string_view start = R"(EXECUTE BLOCK (P_QUEM VARCHAR(20) = ?) AS
BEGIN
  INSERT INTO TEC_TENTATIVA (QUEM) VALUES (:P_QUEM);
  WHEN GDSCODE unique_key_violation DO BEGIN END
END)";
    database_.Execute(start, {who_});
    database_.Execute("UPDATE TEC_TENTATIVA SET FALHAS = FALHAS WHERE QUEM = ?", {who_});
    const auto rows = database_.Query("SELECT FALHAS, ULTIMA FROM TEC_TENTATIVA WHERE QUEM = ?", {who_});
    wrong_ = rows->FieldByName("FALHAS").AsInteger();
    last_ = host::DateTime::FromIso(rows->FieldByName("ULTIMA").AsText());
  }

  /// Seconds until the next try is heard. The clocks of two stations differ: one that is a little behind must not come
  /// in between, and one that is far behind must not wait for years.
  std::int64_t Wait(const host::DateTime& now) const {
    if (!last_) return 0;
    const std::int64_t wait = WaitAfter(wrong_);
    const std::int64_t past = Seconds(now) - Seconds(*last_);
    if (past >= wait || past <= -wait) return 0;
    return std::min(wait, wait - past);
  }
  void Wrong(const host::DateTime& now) {
    database_.Execute("UPDATE TEC_TENTATIVA SET FALHAS = FALHAS + 1, ULTIMA = ? WHERE QUEM = ?", {now.ToIso(), who_});
  }
  void Right() {
    if (wrong_ > 0) database_.Execute("UPDATE TEC_TENTATIVA SET FALHAS = 0 WHERE QUEM = ?", {who_});
  }

 private:
  firebird::Database& database_;
  std::string who_;
  std::int64_t wrong_ = 0;
  std::optional<host::DateTime> last_;
};

std::string WaitSentence(std::int64_t seconds) {
  std::string sentence = "Muitas tentativas erradas: aguarde ";
  if (seconds >= 120) {
    sentence += std::to_string((seconds + 59) / 60) + " minutos";
  } else {
    sentence += std::to_string(seconds) + (seconds == 1 ? " segundo" : " segundos");
  }
  return sentence + " e tente de novo.";
}

struct Outcome {
  std::string refusal;  // sentence for the person; empty when the password is right
  std::string noted;    // of the refusal, for the log
};

Outcome Judge(firebird::Database& database, const std::optional<Account>& account, std::string_view name,
              std::string_view password, const host::DateTime& now) {
  Tries tries(database, account ? account->user.code : Drawer(name));
  if (const std::int64_t wait = tries.Wait(now); wait > 0) return {WaitSentence(wait), "muitas tentativas erradas"};
  if (!PasswordMatches(account ? account->hash : std::string(), password)) {
    tries.Wrong(now);
    return {"Usuário ou senha incorretos.", account ? "senha incorreta" : "usuário desconhecido"};
  }
  if (!account->active) return {"Usuário inativo.", "usuário inativo"};
  tries.Right();
  return {};
}

void Note(firebird::Database& database, const std::optional<Account>& account, std::string_view text,
          const host::DateTime& now) {
  WriteLog(database, {account ? account->user.name : "", now, "ACESSO", text, host::LogOperation::kOther,
                      account ? account->user.code : ""});
}

// Refused or not, what happened is durable before the person hears of it.
Outcome Try(firebird::Database& database, const std::optional<Account>& account, std::string_view name,
            std::string_view password, const host::DateTime& now, bool note_entry) {
  database.BeginAction();
  try {
    Outcome outcome = Judge(database, account, name, password, now);
    if (!outcome.refusal.empty()) {
      Note(database, account, "Entrada recusada: " + outcome.noted, now);
    } else if (note_entry) {
      Note(database, account, "Entrada no sistema", now);
    }
    database.MakeDurable();
    database.EndAction(firebird::Database::Outcome::kOk);
    return outcome;
  } catch (...) {
    database.EndAction(firebird::Database::Outcome::kFailed);
    throw;
  }
}

}  // namespace

User SignIn(firebird::Database& database, std::string_view name, std::string_view password, host::DateTime now) {
  const std::string typed = host::Trim(name);
  const std::optional<Account> account = FindAccount(database, typed);
  const Outcome outcome = Try(database, account, typed, password, now, true);
  if (!outcome.refusal.empty()) throw host::InputError(outcome.refusal);
  return account->user;
}

void ConfirmPassword(firebird::Database& database, const User& user, std::string_view password, host::DateTime now) {
  const std::optional<Account> account = FindAccount(database, user.code);
  const Outcome outcome = Try(database, account, user.code, password, now, false);
  if (!outcome.refusal.empty()) throw host::InputError(outcome.refusal);
}

}  // namespace app::services
