#include <gtest/gtest.h>

#include "tests/firebird/child.h"

// The client library keeps its converters until the process ends.
extern "C" const char* __lsan_default_suppressions();   // NOLINT(bugprone-reserved-identifier): the sanitizer's name
extern "C" const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
  return "leak:libfbclient\nleak:libEngine12\n";
}

int main(int argc, char** argv) {
  const int child = test::RunChildWork(argc, argv);
  if (child >= 0) return child;
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
