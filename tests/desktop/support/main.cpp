// The windows' tests need an application around them.
#include <gtest/gtest.h>

#include <QApplication>
#include <QStyleFactory>

int main(int count, char** values) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(count, values);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  // A closed window must not end the program while the next test runs.
  QApplication::setQuitOnLastWindowClosed(false);
  testing::InitGoogleTest(&count, values);
  return RUN_ALL_TESTS();
}
