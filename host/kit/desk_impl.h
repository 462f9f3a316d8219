// What the parts of the Desk share and nobody else sees.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/kit/desk.h"
#include "host/restored.h"

namespace host {

struct Desk::Impl {
  /// The cell that the person is in, and what it held on arrival.
  struct Cell {
    Grid* grid = nullptr;
    int column = -1;
    std::size_t row = 0;
    Value before;
  };

  bool waiting = false;   // a modal screen waits for the person inside the running action
  bool settling = false;  // the work after an action is under way
  Cell cell;
};

/// A handler may replace itself while it runs, so a copy is what runs.
inline void Fire(const Handler& handler) {
  const Handler running = handler;
  if (running) running();
}

inline void Fire(const KeyHandler& handler, Key key) {
  const KeyHandler running = handler;
  if (running) running(key);
}

/// What stands on pages is hidden and disabled with them; a page out of sight only has to be turned to.
inline bool CanAct(const Control& control) {
  if (!control.Enabled() || !control.Visible()) return false;
  return control.Pages() == nullptr || CanAct(*control.Pages());
}

inline bool CanFocus(const Control& control) { return CanAct(control) && control.Focusable(); }

/// Where Tab and Enter go: what stands on a page out of sight is passed over, and so is an input that cannot be typed
/// into.
inline bool IsTabStop(const Control& control) {
  const auto* input = dynamic_cast<const Edit*>(&control);
  return CanFocus(control) && control.InSight() && (input == nullptr || !input->ReadOnly());
}

/// A caption as a sentence quotes it: without its mnemonic mark.
std::string PlainCaption(std::string_view caption, std::string_view otherwise);

}  // namespace host
