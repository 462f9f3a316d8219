// The windows' tests need an application around them.
#include <gtest/gtest.h>

#include "app/desktop/shell/desktop_application.h"

int main(int count, char** values) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const app::desktop::DesktopApplication application(count, values);
  // A closed window must not end the program while the next test runs.
  QApplication::setQuitOnLastWindowClosed(false);
  testing::InitGoogleTest(&count, values);
  return RUN_ALL_TESTS();
}
