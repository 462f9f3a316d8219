// Labels are made by the toolkit's script engine and drawn with its fonts: it needs an application around it.
#include <gtest/gtest.h>

#include <QGuiApplication>

int main(int count, char** values) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(count, values);
  testing::InitGoogleTest(&count, values);
  return RUN_ALL_TESTS();
}
