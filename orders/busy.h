// The busy indicator around what may take a moment.
#pragma once

#include "host/kit/screen.h"

namespace orders {

/// Shows the busy indicator for as long as it lives.
class Busy {
 public:
  explicit Busy(const host::Screen& screen) : screen_(screen) {
    screen_.GetHost().GetFuncoes().Ocupado(true, screen_, "Aguarde...");
  }
  ~Busy() { screen_.GetHost().GetFuncoes().Ocupado(false, screen_, ""); }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  const host::Screen& screen_;
};

}  // namespace orders
