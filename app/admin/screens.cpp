#include "app/admin/screens.h"

namespace app::admin {

std::vector<OwnScreenClass> Screens() { return {}; }

}  // namespace app::admin
