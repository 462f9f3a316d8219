#include "app/windows/windows.h"

#ifdef _WIN32
#define TECELAGEM_EXPORT __declspec(dllexport)
#else
#define TECELAGEM_EXPORT __attribute__((visibility("default")))
#endif

extern "C" TECELAGEM_EXPORT int tecelagem_windows(const app::desktop::DesktopOptions* options,
                                                  const host::Module* module) {
  return app::desktop::RunDesktop(*options, *module);
}
