#include "app/admin/user_store.h"

#include <algorithm>

#include "app/admin/screens.h"
#include "host/text.h"

namespace app::admin {
namespace {

const char* Flag(bool on) { return on ? "S" : "N"; }

void StoreRights(firebird::Database& database, const std::string& code, const std::set<Right>& before,
                 const std::set<Right>& after) {
  for (const Right& right : before) {
    if (after.contains(right)) continue;
    database.Execute("DELETE FROM TEC_DIREITO WHERE USUARIO = ? AND TELA = ? AND OPERACAO = ?",
                     {code, right.screen_class, right.letter});
  }
  for (const Right& right : after) {
    if (before.contains(right)) continue;
    database.Execute("INSERT INTO TEC_DIREITO (USUARIO, TELA, OPERACAO) VALUES (?, ?, ?)",
                     {code, right.screen_class, right.letter});
  }
}

}  // namespace

std::unique_ptr<host::TTIQuery> ListUsers(firebird::Database& database) {
  return database.Query("SELECT CODIGO, NOME, ADMINISTRADOR, ATIVO FROM TEC_USUARIO ORDER BY UPPER(NOME), CODIGO", {});
}

std::optional<UserRecord> ReadUser(firebird::Database& database, std::string_view code) {
  const auto rows =
      database.Query("SELECT CODIGO, NOME, ADMINISTRADOR, ATIVO FROM TEC_USUARIO WHERE CODIGO = ?", {code});
  if (rows->IsEmpty()) return std::nullopt;
  UserRecord user;
  user.code = rows->FieldByName("CODIGO").AsText();
  user.name = rows->FieldByName("NOME").AsText();
  user.administrator = rows->FieldByName("ADMINISTRADOR").AsText() == "S";
  user.active = rows->FieldByName("ATIVO").AsText() != "N";
  const auto rights = database.Query("SELECT TELA, OPERACAO FROM TEC_DIREITO WHERE USUARIO = ?", {code});
  for (; !rights->Eof(); rights->Next()) {
    user.rights.insert({rights->FieldByName("TELA").AsText(), rights->FieldByName("OPERACAO").AsText()});
  }
  return user;
}

bool NameTaken(firebird::Database& database, std::string_view name, std::string_view own_code) {
  constexpr std::string_view sql = R"(SELECT FIRST 1 1
FROM (SELECT CAST(? AS VARCHAR(50)) AS NOME FROM RDB$DATABASE) NOVO
INNER JOIN TEC_USUARIO U ON UPPER(U.NOME) = UPPER(NOVO.NOME) OR UPPER(U.CODIGO) = UPPER(NOVO.NOME)
WHERE U.CODIGO <> ?)";
  return !database.Query(sql, {name, own_code})->IsEmpty();
}

bool HasOtherAdministrator(firebird::Database& database, std::string_view code) {
  constexpr std::string_view sql = R"(SELECT FIRST 1 1 FROM TEC_USUARIO
WHERE CODIGO <> ? AND ADMINISTRADOR = 'S' AND ATIVO <> 'N')";
  return !database.Query(sql, {code})->IsEmpty();
}

// Signing in is noted under the code, which stays when the name changes.
bool HasDoneSomething(firebird::Database& database, const UserRecord& user) {
  constexpr std::string_view sql = R"(SELECT FIRST 1 1 FROM TEC_LOG
WHERE USUARIO = ? OR (ASSUNTO = 'ACESSO' AND CHAVE = ?))";
  return !database.Query(sql, {user.name, user.code})->IsEmpty();
}

void StoreUser(firebird::Database& database, const std::optional<UserRecord>& before, const UserRecord& user) {
  if (before) {
    database.Execute("UPDATE TEC_USUARIO SET NOME = ?, ADMINISTRADOR = ?, ATIVO = ? WHERE CODIGO = ?",
                     {user.name, Flag(user.administrator), Flag(user.active), user.code});
  } else {
    database.Execute("INSERT INTO TEC_USUARIO (CODIGO, NOME, ADMINISTRADOR, ATIVO) VALUES (?, ?, ?, ?)",
                     {user.code, user.name, Flag(user.administrator), Flag(user.active)});
  }
  StoreRights(database, user.code, before ? before->rights : std::set<Right>(), user.rights);
}

void DeleteUser(firebird::Database& database, std::string_view code) {
  database.Execute("DELETE FROM TEC_TENTATIVA WHERE QUEM = ?", {code});
  database.Execute("DELETE FROM TEC_USUARIO WHERE CODIGO = ?", {code});
}

std::vector<RightsScreen> ScreensWithRights(Application& application) {
  const std::vector<OwnScreenClass> administration = Screens();
  std::vector<RightsScreen> screens;
  for (const MenuScreen& screen : application.MenuScreens()) {
    const bool own = std::any_of(administration.begin(), administration.end(), [&](const OwnScreenClass& known) {
      return host::SameName(known.class_name, screen.class_name);
    });
    if (!own) screens.push_back({screen.class_name, screen.caption});
  }
  return screens;
}

}  // namespace app::admin
