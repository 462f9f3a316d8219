// Screens that do one thing each, so that the main window's tests need no others.
#pragma once

#include <functional>
#include <string>

#include "host/kit/screen.h"

namespace test {

/// What the toys' buttons do, set by a test; empty again for each toy program.
struct ToyActs {
  std::function<void(host::Screen&)> first;   // BtnUm
  std::function<void(host::Screen&)> second;  // BtnDois
  std::function<void(host::Screen&)> close;   // FormClose
};
ToyActs& Toys();

/// An input, two buttons and one to close; "TfmToyUm", "TfmToyDois" (opens maximised), "TfmToyTres", and "TfmToyModal",
/// which is in no menu. Text in the input is unsaved work; "x" is refused when it is left.
class ToyScreen : public host::Screen {
 public:
  ToyScreen(host::Host& host, const std::string& name, const std::string& caption, bool maximised);

  void FormClose() override;
  bool HasUnsavedWork() const override { return !EdtNome.Text().empty(); }
  bool Maximised() const override { return maximised_; }

  host::Edit EdtNome;
  host::Button BtnUm;
  host::Button BtnDois;
  host::Button BtnFechar;

 private:
  bool maximised_;
};

}  // namespace test
