#include "app/desktop/bindings/edit_bindings.h"

#include <QFontMetrics>
#include <QIcon>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionFrame>
#include <algorithm>

#include "app/desktop/basics/text.h"
#include "app/desktop/bindings/screen_bindings.h"
#include "host/restored.h"

namespace app::desktop {
namespace {

using host::ActResult;

constexpr int kCodeLength = 15;  // up to here a text is a code, drawn as wide as it can get
constexpr int kNumberWidth = 12;
constexpr int kShortNumber = 7;
constexpr int kDateWidth = 10;
constexpr int kLeastWidth = 3;

// The entries of the widget's own menu (copy, paste) stand below those of the screen.
void Append(QMenu& menu, QMenu* standard) {
  if (standard == nullptr) return;
  standard->setParent(&menu);
  if (!menu.isEmpty()) menu.addSeparator();
  menu.addActions(standard->actions());
}

}  // namespace

// --- what both share ---------------------------------------------------------------------------------------------

EditBinding::EditBinding(ScreenBindings& window, host::Edit& edit, QWidget& widget)
    : Binding(window, edit, widget), edit_(edit) {}

void EditBinding::Show() {
  Binding::Show();
  ActEnded();
  if (!Unsettled()) PutComponentText();
}

void EditBinding::ActEnded() { SetReadOnly(edit_.ReadOnly()); }

void EditBinding::PutComponentText() {
  if (!sending_ && shown_ != edit_.Text()) {
    before_ = edit_.Text();
    typed_ = false;
  }
  shown_ = edit_.Text();
  const QString text = ToQt(shown_);
  if (Shown() != text) Put(text);
}

void EditBinding::Entered() {
  before_ = edit_.Text();
  typed_ = false;
}

void EditBinding::Send() {
  if (window_.Gone()) return;
  const std::string text = FromQt(Shown());
  // The text came from elsewhere than the keyboard (dropped, pasted by the mouse) into an input that was not entered.
  const bool entered = window_.Enter(edit_);
  if (window_.Gone()) return;
  const host::Restored<bool> sending(sending_, true);
  const bool taken = entered && window_.DoTyping([this, &text] { return window_.Desk().TypeInto(edit_, text); });
  if (window_.Gone()) return;
  typed_ = typed_ || taken;
  PutComponentText();
}

bool EditBinding::GiveUp() {
  if (!typed_ || edit_.Text() == before_) return false;
  const std::string before = before_;
  {
    const host::Restored<bool> sending(sending_, true);
    window_.DoTyping([this, &before] { return window_.Desk().TypeInto(edit_, before); });
    if (window_.Gone()) return true;
    PutComponentText();
  }
  typed_ = false;
  Refused();
  return true;
}

bool EditBinding::HasLookup() const { return edit_.Lookup != nullptr && edit_.Enabled() && !edit_.ReadOnly(); }

// --- one line ----------------------------------------------------------------------------------------------------

LineBinding::LineBinding(ScreenBindings& window, host::Edit& edit, QLineEdit& line)
    : EditBinding(window, edit, line), line_(line) {
  Watch(line_);
  line_.setFocusPolicy(Qt::TabFocus);
  if (edit_.Kind() == host::EditKind::kNumber || edit_.Kind() == host::EditKind::kInteger) {
    line_.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  }
  LimitTo({});
  if (edit_.Secret) line_.setEchoMode(QLineEdit::Password);
  connect(&line_, &QLineEdit::textEdited, this, [this] { Edited(); });
}

void LineBinding::Show() {
  EditBinding::Show();
  if (edit_.Lookup != nullptr && lookup_ == nullptr) {
    lookup_ = line_.addAction(QIcon(QStringLiteral(":/icons/lookup.svg")), QLineEdit::TrailingPosition);
    lookup_->setToolTip(QStringLiteral("Pesquisar (F4)"));
    connect(lookup_, &QAction::triggered, this, [this] { OpenLookup(); });
  }
  ActEnded();
}

void LineBinding::ActEnded() {
  EditBinding::ActEnded();
  if (lookup_ != nullptr) lookup_->setEnabled(HasLookup());
}

// A text that the program put in may be longer than what can be typed; it is shown whole.
void LineBinding::LimitTo(const QString& text) {
  if (edit_.MaxLength() == 0) return;
  const int length = std::max(static_cast<int>(edit_.MaxLength()), static_cast<int>(text.size()));
  if (line_.maxLength() != length) line_.setMaxLength(length);
}

void LineBinding::Put(const QString& text) {
  const int cursor = line_.cursorPosition();
  LimitTo(text);
  line_.setText(text);
  if (!line_.hasFocus()) {
    line_.setCursorPosition(0);
  } else if (sending_) {
    line_.setCursorPosition(std::min(cursor, static_cast<int>(text.size())));
  } else {
    line_.selectAll();
  }
}

bool LineBinding::Deferred() const { return edit_.Kind() != host::EditKind::kText; }

bool LineBinding::Unsettled() const { return window_.GetStation().GetTyping().IsIn(&line_); }

void LineBinding::Entered() {
  EditBinding::Entered();
  line_.selectAll();
}

void LineBinding::Refused() { line_.selectAll(); }

void LineBinding::Edited() {
  if (window_.Gone()) return;
  if (Deferred()) {
    BeginTyping();
  } else {
    Send();
  }
}

void LineBinding::BeginTyping() {
  if (Unsettled()) return;
  Typing& typing = window_.GetStation().GetTyping();
  const QString text = line_.text();
  const bool ready = typing.Settle() && !window_.Gone() && window_.Enter(edit_);
  if (window_.Gone()) return;
  if (!ready) {
    PutComponentText();
    return;
  }
  if (line_.text() != text) line_.setText(text);
  typing.Begin(
      &line_, [this] { return HandOver(); }, [this] { PutComponentText(); });
}

// True when nothing is left to be typed here: taken, the same as before, or no longer possible.
bool LineBinding::HandOver() {
  if (window_.Gone()) return true;
  const std::string text = FromQt(line_.text());
  bool possible = true;
  bool taken = text == edit_.Text();
  if (!taken) {
    taken = window_.DoTyping([&] {
      try {
        return window_.Desk().TypeInto(edit_, text);
      } catch (const host::ActError&) {
        possible = false;
        throw;
      }
    });
  }
  if (window_.Gone()) return true;
  if (taken || !possible) {
    PutComponentText();
    return true;
  }
  window_.FollowDesk();
  line_.selectAll();
  return false;
}

bool LineBinding::GiveUp() {
  if (!Unsettled()) return EditBinding::GiveUp();
  window_.GetStation().GetTyping().GiveUp();
  line_.selectAll();
  return true;
}

void LineBinding::OpenLookup() {
  window_.Do([this] {
    const ActResult entered = window_.Desk().Enter(edit_);
    if (entered != ActResult::kDone || window_.Gone() || !window_.HasFocus(edit_)) return entered;
    return window_.Desk().OpenLookup(*edit_.Lookup);
  });
}

int LineBinding::WidthOf(int characters) const {
  const QFontMetrics metrics(line_.font());
  static const QString kCapitals = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
  const QString text = edit_.Kind() == host::EditKind::kText ? kCapitals : QStringLiteral("0123456789");
  const QMargins margins = line_.textMargins();
  int width = metrics.horizontalAdvance(text) * std::max(characters, kLeastWidth) / static_cast<int>(text.size());
  width += metrics.horizontalAdvance(QLatin1Char('0')) + margins.left() + margins.right();
  if (lookup_ != nullptr) {
    width += line_.style()->pixelMetric(QStyle::PM_LineEditIconSize, nullptr, &line_) +
             2 * line_.style()->pixelMetric(QStyle::PM_LineEditIconMargin, nullptr, &line_);
  }
  QStyleOptionFrame frame;
  frame.initFrom(&line_);
  frame.lineWidth = line_.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &frame, &line_);
  return line_.style()->sizeFromContents(QStyle::CT_LineEdit, &frame, QSize(width, metrics.height()), &line_).width();
}

void LineBinding::Fit() {
  int characters = 0;
  const int most = static_cast<int>(edit_.MaxLength());
  switch (edit_.Kind()) {
    case host::EditKind::kText:
      characters = most <= kCodeLength ? most : 0;
      break;
    case host::EditKind::kNumber:
    case host::EditKind::kInteger:
      characters = kNumberWidth;
      break;
    case host::EditKind::kDate:
      characters = kDateWidth;
      break;
    case host::EditKind::kMemo:
      break;
  }
  if (characters == 0) return;
  const int width = WidthOf(characters);
  // Where the form says so a number gives way on a small display, as far as most numbers allow.
  const bool gives_way = line_.sizePolicy().horizontalPolicy() == QSizePolicy::Preferred;
  line_.setMinimumWidth(gives_way ? WidthOf(std::min(characters, kShortNumber)) : width);
  line_.setMaximumWidth(width);
}

void LineBinding::AddStandardEntries(QMenu& menu) { Append(menu, line_.createStandardContextMenu()); }

// --- a memo ------------------------------------------------------------------------------------------------------

MemoBinding::MemoBinding(ScreenBindings& window, host::Edit& edit, QPlainTextEdit& memo)
    : EditBinding(window, edit, memo), memo_(memo) {
  Watch(memo_);
  // The mouse reaches the viewport.
  Watch(*memo_.viewport());
  memo_.setFocusPolicy(Qt::TabFocus);
  connect(&memo_, &QPlainTextEdit::textChanged, this, [this] {
    if (!putting_) Send();
  });
}

void MemoBinding::LetGo() {
  memo_.viewport()->removeEventFilter(this);
  EditBinding::LetGo();
}

void MemoBinding::Put(const QString& text) {
  const host::Restored<bool> putting(putting_, true);
  const int cursor = memo_.textCursor().position();
  memo_.setPlainText(text);
  if (!memo_.hasFocus()) return;
  QTextCursor back = memo_.textCursor();
  back.setPosition(std::min(cursor, static_cast<int>(memo_.toPlainText().size())));
  memo_.setTextCursor(back);
}

void MemoBinding::AddStandardEntries(QMenu& menu) { Append(menu, memo_.createStandardContextMenu()); }

}  // namespace app::desktop
