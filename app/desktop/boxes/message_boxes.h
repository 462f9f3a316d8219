// The boxes that wait for an answer: a message, a question, a line of text, a date, an error.
#pragma once

#include <QDialog>
#include <QString>
#include <QWidget>
#include <functional>
#include <optional>

#include "host/dialogs.h"

namespace app::desktop {

/// Over which window a box comes up: the innermost modal one, else the active one, else the main window; null before
/// there is any.
QWidget* BoxParent();

/// While it lives the busy cursor is away: a person who is asked something is not waiting.
class UsualCursor {
 public:
  UsualCursor();
  ~UsualCursor();
  UsualCursor(const UsualCursor&) = delete;
  UsualCursor& operator=(const UsualCursor&) = delete;

 private:
  int taken_away_ = 0;
};

/// Runs the box with the usual cursor; afterwards the window below it is active again.
int RunBox(QDialog& box);
/// Without a window manager nothing is active after a box, and the next key would go nowhere: this window then is.
void ActivateAgain(QWidget* below);

void ShowMessage(QWidget* parent, const QString& title, const QString& text, host::Icon icon);
/// "Sim" and "Não", the latter the default and what Esc means.
bool AskYesNo(QWidget* parent, const QString& title, const QString& text);
/// Why a text cannot be taken, as one sentence; nothing when it can.
using TextObjection = std::function<std::optional<QString>(const QString& text)>;
/// A line of text, `proposed` and selected at first; nothing when the person gave up. A text that `objection` speaks
/// against is not taken: the box says so and stays.
std::optional<QString> AskText(QWidget* parent, const QString& title, const QString& prompt, const QString& proposed,
                               const TextObjection& objection);

}  // namespace app::desktop
