// The person before the windows: boxes, questions, lookups and modal screens are shown and waited for.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "app/person.h"

namespace app::desktop {

class Station;

class WindowPerson : public Person {
 public:
  /// What the main window does for it; set before the first screen opens, empty before.
  struct Shell {
    std::function<void(host::Screen&)> show;       // open its window or bring it forward
    std::function<void(host::Screen&)> let_go;     // its window goes now
    std::function<void(host::Screen&)> run_modal;  // shows it as a dialog and returns when it asked to be closed
    std::function<void(const std::function<void()>&)> device;  // an act that a device began, when one is possible
    std::function<void()> settled;
    std::function<void(bool, QString)> busy;
  };
  void SetShell(Shell shell) { shell_ = std::move(shell); }

  void Message(std::string_view title, std::string_view text, host::Icon icon) override;
  /// "Sim" and "Não", the latter the default and what Esc means.
  bool Question(std::string_view title, std::string_view text) override;
  std::optional<std::string> InputBox(std::string_view title, std::string_view prompt, std::string_view proposed,
                                      std::size_t longest = 0) override;
  std::string AskDate(std::string_view caption, std::string_view prompt) override;
  std::optional<std::string> AskFile(const FileQuestion& question) override;
  bool SetUpScale(scale::ScaleSettings& settings) override;
  /// The sentence, with what a technician wants to know behind a button that also copies it.
  void TellError(std::string_view title, const std::exception& error) override;
  std::optional<host::LookupRow> PickRow(host::TPesquisa& lookup, LookupOffer& offer) override;
  void ActOnModal(host::Screen& screen, host::Desk& desk) override;

  /// As one act of the windows: not while another one runs or a box is open.
  void ActForDevice(const std::function<void()>& act) override;

  void ScreenShown(host::Screen& screen) override;
  void ScreenGone(host::Screen& screen) override;
  /// A screen with unsaved work is asked about.
  bool MayClose(host::Screen& screen) override;
  void Settled() override;
  void ShowBusy(bool on, std::string_view text) override;

 private:
  Shell shell_;
};

}  // namespace app::desktop
