// Running what a screen hung on an event.
#pragma once

#include <functional>

namespace host {

/// Runs the handler, if there is one. It may replace itself while it runs, so a copy is what runs.
inline void Fire(const std::function<void()>& handler) {
  const auto running = handler;
  if (running) running();
}

}  // namespace host
