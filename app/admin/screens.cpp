#include "app/admin/screens.h"

#include "app/admin/log_screen.h"
#include "app/admin/parameters_screen.h"
#include "app/admin/password_screen.h"
#include "app/admin/periods_screen.h"
#include "app/admin/users_screen.h"

namespace app::admin {
namespace {

constexpr const char* kMenu = "Administração";

template <typename Screen>
std::unique_ptr<host::Screen> Create(Application& application) {
  return std::make_unique<Screen>(application);
}

}  // namespace

std::vector<OwnScreenClass> Screens() {
  return {{"TfmUsuarios", kMenu, "Usuários e direitos", true, &Create<TfmUsuarios>},
          {"TfmParametros", kMenu, "Parâmetros", true, &Create<TfmParametros>},
          {"TfmPeriodos", kMenu, "Períodos contábeis", true, &Create<TfmPeriodos>},
          {"TfmLog", kMenu, "Registro de operações", true, &Create<TfmLog>},
          {"TfmSenha", kMenu, "Alterar senha", false, &Create<TfmSenha>}};
}

}  // namespace app::admin
