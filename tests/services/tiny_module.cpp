// The screens of these tests: one that lets a test set what its button does, besides those of the module.
#include <vector>

#include "host/kit/screen.h"
#include "module/screens.h"
#include "support/module_under_test.h"

namespace test {
namespace {

/// A screen with what a person's acts need: an input, a button whose work the test sets, a lookup.
class TinyScreen : public host::Screen {
 public:
  explicit TinyScreen(host::Host& the_host) : Screen(the_host, "TfmTiny", "fmTiny", "Pequena") {}

  host::Edit EdtTexto{*this, "EdtTexto", "Texto", host::EditKind::kText, 20};
  host::Edit EdtOutro{*this, "EdtOutro", "Outro"};
  host::Button BtnAgir{*this, "BtnAgir", "Agir"};
  host::TPesquisa PqCor{*this, "PqCor", "CADCOR", "COR"};
};

std::unique_ptr<host::Screen> CreateTiny(host::Host& the_host) { return std::make_unique<TinyScreen>(the_host); }

const std::vector<host::ScreenClass>& Screens() {
  static const std::vector<host::ScreenClass> kScreens = [] {
    std::vector<host::ScreenClass> screens = {{"TfmTiny", "Testes", "Pequena", &CreateTiny}};
    const host::Module& all = tecelagem::TheModule();
    screens.insert(screens.end(), all.screens, all.screens + all.screen_count);
    return screens;
  }();
  return kScreens;
}

}  // namespace

const host::Module& ModuleUnderTest() {
  static const host::Module kModule = {host::kContractVersion, Screens().data(), Screens().size()};
  return kModule;
}

}  // namespace test
