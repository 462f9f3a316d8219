// The busy indicator around what may take a moment.
#pragma once

#include <string_view>

#include "host/kit/screen.h"

namespace host {

/// Shows the busy indicator for as long as it lives.
class Busy {
 public:
  explicit Busy(const Screen& screen, std::string_view text = "Aguarde...") : screen_(screen) {
    screen_.GetHost().GetFuncoes().Ocupado(true, screen_, text);
  }
  ~Busy() { screen_.GetHost().GetFuncoes().Ocupado(false, screen_, ""); }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  const Screen& screen_;
};

}  // namespace host
