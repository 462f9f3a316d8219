// What the program says to a person and asks. Each of these waits for the person; the host makes pending work durable
// first.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host {

enum class Icon { kInformation, kExclamation, kQuestion, kError };

class Dialogs {
 public:
  virtual ~Dialogs() = default;

  virtual void Message(std::string_view title, std::string_view text, Icon icon) = 0;
  /// A Yes/No question with No as default; true only for Yes.
  virtual bool Question(std::string_view title, std::string_view text) = 0;
  /// A line of text, `proposed` at first; nothing when the person gave up.
  virtual std::optional<std::string> InputBox(std::string_view title, std::string_view prompt,
                                              std::string_view proposed) = 0;
};

}  // namespace host
