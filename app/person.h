// Whoever sits before the program: a window, a script, a test.
#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "app/lookup_offer.h"
#include "app/scale/scale_settings.h"
#include "host/dialogs.h"
#include "host/kit/lookup.h"

namespace host {
class Desk;
class Screen;
}  // namespace host

namespace app {

/// A file that the person is asked for.
struct FileQuestion {
  bool save = false;  // a place to write to; else a file to read
  std::string title;
  std::string kind;      // of files: "Arquivos CSV (*.csv)"
  std::string proposed;  // name; empty for none
};

/// Why a box cannot take this text (host::Dialogs::InputBox), as one sentence; nothing when it can.
std::optional<std::string> AnswerObjection(std::size_t longest, std::string_view text);

class Person : public host::Dialogs {
 public:
  /// The file that AskFile names.
  std::optional<host::ChosenFile> ChooseFile(std::string_view title, std::string_view kinds,
                                             std::size_t most_bytes) override;
  /// An error that nobody caught, told as one sentence.
  virtual void TellError(std::string_view title, const std::exception& error) = 0;
  /// Picks one of the rows that the lookup offers (whole, as LookupOffer::Find hands it back), or none.
  virtual std::optional<host::LookupRow> PickRow(host::TPesquisa& lookup, LookupOffer& offer) = 0;
  /// Acts on a modal screen until it asks to be closed. A person who does nothing must close it.
  virtual void ActOnModal(host::Screen& screen, host::Desk& desk) = 0;
  /// Asks for a date (host::Funcoes::InputBoxData); text as typed, empty when given up.
  virtual std::string AskDate(std::string_view caption, std::string_view prompt) = 0;
  /// The path chosen (one that exists is to be replaced: the person was asked); nothing when given up.
  virtual std::optional<std::string> AskFile(const FileQuestion& /*question*/) { return std::nullopt; }

  /// Changes how the scale is connected; false when given up, the settings are unchanged then.
  virtual bool SetUpScale(scale::ScaleSettings& /*settings*/) { return false; }
  /// Runs an act that the person did not begin herself: the scale sent something. Not called in the middle of an act.
  /// A person who cannot have it now leaves it out: it is then as if nothing had been sent.
  virtual void ActForDevice(const std::function<void()>& act) { act(); }

  // --- what the program does in sight of the person; see host::DeskEnvironment and host::Funcoes::Ocupado -------
  virtual void ScreenShown(host::Screen& /*screen*/) {}
  virtual void ScreenGone(host::Screen& /*screen*/) {}
  virtual bool MayClose(host::Screen& /*screen*/) { return true; }
  virtual void Settled() {}
  virtual void ShowBusy(bool /*on*/, std::string_view /*text*/) {}
};

}  // namespace app
