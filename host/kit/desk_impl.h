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

inline bool CanAct(const Control& control) { return control.Enabled() && control.Visible(); }

inline bool CanFocus(const Control& control) { return CanAct(control) && control.Focusable(); }

/// Where Tab and Enter go: what stands on a page out of sight is passed over.
inline bool IsTabStop(const Control& control) { return CanFocus(control) && control.InSight(); }

/// A caption as a sentence quotes it: without its mnemonic mark.
std::string PlainCaption(std::string_view caption, std::string_view otherwise);

}  // namespace host
