// The screens of these tests: the services are tried without the module's own.
#include "host/kit/screen.h"
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

constexpr host::ScreenClass kScreens[] = {{"TfmTiny", "Testes", "Pequena", &CreateTiny}};
constexpr host::Module kModule = {host::kContractVersion, kScreens, 1};

}  // namespace

const host::Module& ModuleUnderTest() { return kModule; }

}  // namespace test
