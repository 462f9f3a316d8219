#include "app/desktop/shell/desktop.h"

#include <QStandardPaths>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "app/desktop/basics/settings.h"
#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/error_box.h"
#include "app/desktop/look/theme.h"
#include "app/desktop/printing/desktop_equipment.h"
#include "app/desktop/shell/desktop_application.h"
#include "app/desktop/shell/entrance.h"
#include "app/desktop/shell/main_window.h"
#include "app/desktop/shell/window_person.h"
#include "app/services/user_settings.h"

namespace app::desktop {
namespace {

constexpr int kFailed = 1;

QString DataFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/tecelagem");
}

QtMessageHandler qt_message = nullptr;
bool starting = true;

// A display that is named and does not answer makes Qt end the program; one sentence is all that should be seen of it.
void TellFatal(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) {
    std::fprintf(stderr, "tecelagem: %s\n", kNoWindows);
    std::_Exit(kFailed);
  }
  if (!starting) qt_message(type, context, text);
}

// Until nobody signs in any more.
void Work(const DesktopOptions& options, const host::Module& module) {
  // Read only: the program, once started, keeps the settings in the same file.
  const auto settings = services::OpenUserSettings(options.settings_file);
  DesktopEquipment equipment;
  Entrance entrance(options, module, *settings, DataFolder(), &equipment);
  for (;;) {
    WindowPerson person;
    const std::unique_ptr<Application> application = entrance.Enter(person);
    if (application == nullptr) return;
    MainWindow window(*application, person);
    window.show();
    window.activateWindow();
    QApplication::exec();
    if (!window.ChangeUserWanted()) return;
    entrance.AskAgain();
  }
}

}  // namespace

int RunDesktop(const DesktopOptions& options, const host::Module& module) {
  qt_message = qInstallMessageHandler(&TellFatal);
  int count = 1;
  char name[] = "tecelagem";
  char* values[] = {name, nullptr};
  DesktopApplication application(count, values);
  starting = false;
  QApplication::setApplicationVersion(ToQt(options.version));
  try {
    const std::string theme =
        services::OpenUserSettings(options.settings_file)->Read(kSettingsKey, kWindowSection, kThemeName).value_or("");
    ApplyTheme(ThemeFromName(theme));
    Work(options, module);
    return 0;
  } catch (const std::exception& error) {
    ShowError(nullptr, QStringLiteral("Tecelagem"), error);
    return kFailed;
  }
}

}  // namespace app::desktop
