// What the program says to a person and asks. Each of these waits for the person; the host makes pending work durable
// first.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace host {

enum class Icon { kInformation, kExclamation, kQuestion, kError };

/// A file as the person chose it.
struct ChosenFile {
  std::string name;  // without its folder
  std::string content;
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;

  virtual void Message(std::string_view title, std::string_view text, Icon icon) = 0;
  /// A Yes/No question with No as default; true only for Yes.
  virtual bool Question(std::string_view title, std::string_view text) = 0;
  /// A line of text, `proposed` at first; nothing when the person gave up. What is longer than `longest` characters (0:
  /// as long as one likes) or has characters that the database cannot hold is refused in the box, in one sentence: the
  /// box stays open with what was typed.
  virtual std::optional<std::string> InputBox(std::string_view title, std::string_view prompt,
                                              std::string_view proposed, std::size_t longest = 0) = 0;
  /// A file that the person chooses, its content as it stands. `kinds` names the files that are meant, as people read
  /// it: "Arquivos CSV (*.csv)". Nothing when the person gave up.
  /// Throws InputError in one sentence for a file that cannot be read or has more than `most_bytes`.
  /// A host without files to choose from hands back nothing.
  virtual std::optional<ChosenFile> ChooseFile(std::string_view /*title*/, std::string_view /*kinds*/,
                                               std::size_t /*most_bytes*/) {
    return std::nullopt;
  }
};

}  // namespace host
