// Alone in its file, so that a test program's own definition takes its place.
#include "support/module_under_test.h"

#include "module/screens.h"

namespace test {

const host::Module& ModuleUnderTest() { return tecelagem::TheModule(); }

}  // namespace test
