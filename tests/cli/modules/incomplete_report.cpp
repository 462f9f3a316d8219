// A module whose report nobody could print.
#include "host/kit/screen.h"
#include "host/module.h"

namespace {

std::unique_ptr<host::Screen> NoScreen(host::Host&) { return nullptr; }

}  // namespace

extern "C" const host::Module* tecelagem_module(std::uint32_t) {
  static const host::ScreenClass kScreen = {"TfmNada", "", "", &NoScreen};
  static const host::ListedReport kReport = {"WNada", "Nada", host::ReportLayouts::kDrawn, nullptr, 0, nullptr};
  static const host::Module kModule = {host::kContractVersion, &kScreen, 1, &kReport, 1};
  return &kModule;
}
