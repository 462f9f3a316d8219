#include "app/registers/screens.h"

#include <memory>

#include "app/application.h"
#include "app/registers/register_screen.h"
#include "app/tables/descriptions.h"

namespace app::registers {

std::vector<OwnScreenClass> Screens() {
  std::vector<OwnScreenClass> screens;
  for (const tables::RegisterDescription& description : tables::Registers()) {
    screens.push_back({.class_name = description.class_name,
                       .menu = "Cadastros",
                       .caption = description.caption,
                       .for_administrator = false,
                       .create = [&description](Application& application) -> std::unique_ptr<host::Screen> {
                         return std::make_unique<TfmRegister>(application, description);
                       }});
  }
  return screens;
}

}  // namespace app::registers
