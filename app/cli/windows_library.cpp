#include "app/cli/windows_library.h"

#include <utility>

#include "app/windows/windows.h"
#include "host/errors.h"

namespace app::cli {
namespace {

// A computer on which the toolkit's libraries were left out: the other work of a script goes on.
class NoLibrary : public Equipment {
 public:
  explicit NoLibrary(std::string why) : why_(std::move(why)) {}

  std::unique_ptr<host::SerialPort> NewSerialPort(PortUse /*use*/) override { throw host::InputError(why_); }
  std::optional<PrintJob> Print(const PrintRequest& /*request*/) override { throw host::InputError(why_); }

 private:
  std::string why_;
};

}  // namespace

const Library& WindowsLibrary() {
  static const auto* const kLibrary =
      new Library(Library::Open("A biblioteca das janelas", Library::BesideProgram("tecelagem-windows")));
  return *kLibrary;
}

std::unique_ptr<Equipment> NewCommandEquipment(const std::string& to, bool in_text) {
  try {
    const auto lend = reinterpret_cast<windows::EquipmentEntry>(WindowsLibrary().Find(windows::kEquipmentEntry));
    return std::unique_ptr<Equipment>(lend(&to, in_text));
  } catch (const host::InputError& error) {
    return std::make_unique<NoLibrary>(error.what());
  }
}

}  // namespace app::cli
