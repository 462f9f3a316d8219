#include "app/services/users.h"

#include "host/errors.h"

namespace app::services {

User FindUser(firebird::Database& database, std::string_view code) {
  const auto rows = database.Query("SELECT CODIGO, NOME, ATIVO FROM TEC_USUARIO WHERE CODIGO = ?", {code});
  if (rows->IsEmpty()) throw host::InputError("Usuário \"" + std::string(code) + "\" não cadastrado.");
  if (rows->FieldByName("ATIVO").AsText() == "N")
    throw host::InputError("Usuário \"" + std::string(code) + "\" inativo.");
  return {rows->FieldByName("CODIGO").AsText(), rows->FieldByName("NOME").AsText()};
}

bool IsAdministrator(firebird::Database& database, std::string_view user) {
  constexpr std::string_view sql =
      "SELECT 1 FROM TEC_USUARIO WHERE CODIGO = ? AND ADMINISTRADOR = 'S' AND ATIVO <> 'N'";
  return !database.Query(sql, {user})->IsEmpty();
}

bool HasRight(firebird::Database& database, std::string_view user, std::string_view screen_class,
              std::string_view operation) {
  constexpr std::string_view sql = R"(SELECT FIRST 1 1 FROM TEC_USUARIO U
WHERE U.CODIGO = ? AND U.ATIVO <> 'N' AND (U.ADMINISTRADOR = 'S' OR EXISTS (
  SELECT 1 FROM TEC_DIREITO D WHERE D.USUARIO = U.CODIGO AND D.TELA = ? AND D.OPERACAO = ?)))";
  return !database.Query(sql, {user, screen_class, operation})->IsEmpty();
}

}  // namespace app::services
