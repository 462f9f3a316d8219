#include <QGuiApplication>
#include <QtGlobal>
#include <memory>

#include "app/printing/delivery/file_equipment.h"
#include "app/windows/windows.h"

#ifdef _WIN32
#define TECELAGEM_EXPORT __declspec(dllexport)
#else
#define TECELAGEM_EXPORT __attribute__((visibility("default")))
#endif

namespace {

// A command says what it has to say in one line of its own; the toolkit's remarks on its surroundings are nobody's.
void Silence(QtMsgType, const QMessageLogContext&, const QString&) {}

// Type is measured and pages are drawn by the toolkit, which wants an application around it; a command shows nothing.
class ToolkitWithoutDisplay {
 public:
  ToolkitWithoutDisplay() {
    // Whatever the person's desktop asks of programs with windows would look for a display, and end this one without.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    qInstallMessageHandler(&Silence);
    application_ = std::make_unique<QGuiApplication>(count_, values_);
  }

 private:
  int count_ = 1;
  char name_[10] = "tecelagem";
  char* values_[2] = {name_, nullptr};
  std::unique_ptr<QGuiApplication> application_;
};

class CommandEquipment : private ToolkitWithoutDisplay, public app::printing::FileEquipment {
 public:
  using FileEquipment::FileEquipment;
};

}  // namespace

extern "C" TECELAGEM_EXPORT int tecelagem_windows(const app::desktop::DesktopOptions* options,
                                                  const host::Module* module) {
  return app::desktop::RunDesktop(*options, *module);
}

extern "C" TECELAGEM_EXPORT app::Equipment* tecelagem_equipment(const std::string* to, bool in_text) {
  return std::make_unique<CommandEquipment>(*to, in_text).release();
}
