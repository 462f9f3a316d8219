// A port belongs to an event loop.
#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int count, char** values) {
  const QCoreApplication application(count, values);
  testing::InitGoogleTest(&count, values);
  return RUN_ALL_TESTS();
}
