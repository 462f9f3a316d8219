#include <gtest/gtest.h>

#include "tests/firebird/child.h"

int main(int argc, char** argv) {
  const int child = test::RunChildWork(argc, argv);
  if (child >= 0) return child;
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
