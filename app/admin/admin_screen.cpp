#include "app/admin/admin_screen.h"

#include <optional>
#include <utility>

#include "app/services/users.h"
#include "host/errors.h"

namespace app::admin {

AdminScreen::AdminScreen(Application& application, std::string class_name, std::string name, std::string caption)
    : Screen(application, std::move(class_name), std::move(name), std::move(caption)), application_(application) {}

void AdminScreen::FormCreate() { NeedAdministrator(); }

void AdminScreen::NeedAdministrator() const {
  if (!services::IsAdministrator(Db(), Services().vUsuarioCodigo())) {
    throw host::InputError("Somente um administrador pode usar a tela \"" + Caption() + "\".");
  }
}

void TakeTurn(firebird::Database& database, std::string_view subject) {
  constexpr std::string_view start = R"(EXECUTE BLOCK (P_TABELA VARCHAR(31) = ?) AS
BEGIN
  INSERT INTO TEC_CONTADOR (TABELA, COLUNA, CHAVE) VALUES (:P_TABELA, 'VEZ', '');
  WHEN GDSCODE unique_key_violation DO BEGIN END
END)";
  database.Execute(start, {subject});
  database.Execute("UPDATE TEC_CONTADOR SET ULTIMO = ULTIMO + 1 WHERE TABELA = ? AND COLUNA = 'VEZ' AND CHAVE = ''",
                   {subject});
}

std::string ChangedElsewhere(host::Funcoes& services, std::string_view what, std::string_view log_subject,
                             std::string_view key) {
  std::string sentence(what);
  sentence += " foi alterado em outra estação";
  const std::optional<host::LogMark> mark = services.UltimoLog(log_subject, key);
  if (mark) sentence += " (último a alterar: " + mark->user + ")";
  return sentence + ". Cancele para ver como está agora e altere de novo.";
}

}  // namespace app::admin
