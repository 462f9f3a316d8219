#include "app/desktop/shell/desktop_application.h"

#include <exception>

#include "app/desktop/boxes/error_box.h"
#include "app/desktop/boxes/message_boxes.h"
#include "app/desktop/look/theme.h"
#include "host/errors.h"
#include "host/restored.h"

// Resources in a static library are taken along only when somebody asks for them; the macro wants no namespace.
static void TakeResources() { Q_INIT_RESOURCE(desktop); }

namespace app::desktop {

DesktopApplication::DesktopApplication(int& count, char** values) : QApplication(count, values) {
  TakeResources();
  setApplicationName(QStringLiteral("tecelagem"));
  setApplicationDisplayName(QStringLiteral("Tecelagem"));
  PrepareLook();
}

bool DesktopApplication::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const host::Abort&) {
    return true;  // it ends what was going on, silently
  } catch (const std::exception& error) {
    Tell(error);
  }
  return true;
}

void DesktopApplication::Tell(const std::exception& error) {
  // What fails while an error is being told, such as the painting behind the box, would be told without end.
  if (telling_) return;
  const host::Restored<bool> telling(telling_, true);
  ShowError(BoxParent(), QStringLiteral("Tecelagem"), error);
}

}  // namespace app::desktop
