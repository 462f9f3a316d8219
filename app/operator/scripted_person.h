// A person whose answers were prepared: scripts and tests.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/person.h"

namespace app {

class ScriptedPerson : public Person {
 public:
  /// A box or question that was shown.
  struct Shown {
    std::string title;
    std::string text;
    host::Icon icon;
  };

  /// What the person says to the next question, input box or date box whose text contains `containing`: "yes" or
  /// "no" (also "sim", "não"), or the text to type. Each answer serves once; the first that fits is taken.
  void Answer(std::string_view containing, std::string_view reply);
  /// What the person picks when that lookup opens next: the row whose (first) key column equals `key`, of several the
  /// first in the order of the list.
  void Pick(std::string_view lookup, std::string_view key);
  /// The same by any columns of the row; see LookupOffer::FindRow.
  void PickWhere(std::string_view lookup, const host::LookupRow& wanted);
  /// The file that the person names when next asked for one under a title that contains `title`; nothing: gives up.
  void Choose(std::string_view title, std::optional<std::string> path);
  /// What the person does when that screen (class or component name) opens modally next. A screen still open
  /// afterwards is closed as by its window's close button.
  void OnModal(std::string_view screen, std::function<void(host::Screen&, host::Desk&)> act);

  /// What the person sets the scale up as when asked next.
  void SetScale(const scale::ScaleSettings& settings) { scales_.push_back(settings); }

  /// Boxes and questions shown since the last call.
  std::vector<Shown> TakeMessages();
  /// Errors that nobody caught, shown since the last call; they are among the messages too.
  std::vector<std::string> TakeErrors();
  /// Questions, boxes and lookups that nothing was prepared for, since the last call; they got their default (No, give
  /// up).
  std::vector<std::string> TakeUnexpected();
  /// What was prepared and never asked for, one line each.
  std::vector<std::string> Unused() const;

  /// Told each box as it is shown.
  std::function<void(const Shown&)> OnShown;

  void Message(std::string_view title, std::string_view text, host::Icon icon) override;
  bool Question(std::string_view title, std::string_view text) override;
  /// An answer that the box refuses is given up, and the sentence is among the errors.
  std::optional<std::string> InputBox(std::string_view title, std::string_view prompt, std::string_view proposed,
                                      std::size_t longest = 0) override;
  void TellError(std::string_view title, const std::exception& error) override;
  std::optional<host::LookupRow> PickRow(host::TPesquisa& lookup, LookupOffer& offer) override;
  void ActOnModal(host::Screen& screen, host::Desk& desk) override;
  std::string AskDate(std::string_view caption, std::string_view prompt) override;
  /// Answered by the question's title: by a file chosen, or else by an answer.
  std::optional<std::string> AskFile(const FileQuestion& question) override;
  bool SetUpScale(scale::ScaleSettings& settings) override;

 private:
  struct Prepared {
    std::string what;
    std::string reply;
  };
  struct PreparedPick {
    std::string lookup;
    std::string shown;  // as it is told: "M1", {CODIGO: "M1", COR: "0"}
    std::optional<std::string> key;
    host::LookupRow wanted;
  };
  struct PreparedFile {
    std::string title;
    std::optional<std::string> path;
  };
  struct ModalPlan {
    std::string screen;
    std::function<void(host::Screen&, host::Desk&)> act;
  };
  std::optional<std::string> TakeAnswer(std::string_view text);
  void Show(std::string_view title, std::string_view text, host::Icon icon);

  std::deque<Prepared> answers_;
  std::deque<PreparedPick> picks_;
  std::deque<PreparedFile> files_;
  std::deque<ModalPlan> modals_;
  std::deque<scale::ScaleSettings> scales_;
  std::vector<Shown> messages_;
  std::vector<std::string> errors_;
  std::vector<std::string> unexpected_;
};

}  // namespace app
