// Whoever sits before the program: a window, a script, a test.
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialogs.h"
#include "host/kit/lookup.h"

namespace host {
class Desk;
class Screen;
}  // namespace host

namespace app {

class Person : public host::Dialogs {
 public:
  /// An error that nobody caught, told as one sentence.
  virtual void TellError(std::string_view title, const std::exception& error) = 0;
  /// Picks one of the rows that the lookup offers, or none.
  virtual std::optional<host::LookupRow> PickRow(host::TPesquisa& lookup,
                                                 const std::vector<host::LookupRow>& offered) = 0;
  /// Acts on a modal screen until it asks to be closed. A person who does nothing must close it.
  virtual void ActOnModal(host::Screen& screen, host::Desk& desk) = 0;
  /// Asks for a date (host::Funcoes::InputBoxData); text as typed, empty when given up.
  virtual std::string AskDate(std::string_view caption, std::string_view prompt) = 0;
};

}  // namespace app
