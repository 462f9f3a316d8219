#include "app/registers/screens.h"

namespace app::registers {

std::vector<OwnScreenClass> Screens() { return {}; }

}  // namespace app::registers
