#include "app/desktop/bindings/screen_bindings.h"

#include <QApplication>
#include <QShortcut>
#include <QTabWidget>
#include <QTimer>
#include <algorithm>

#include "app/desktop/bindings/keys.h"
#include "app/desktop/bindings/mismatches.h"
#include "host/kit/grid.h"
#include "host/restored.h"

namespace app::desktop {

using host::ActResult;

ScreenBindings::ScreenBindings(Station& station, host::Screen& screen, QWidget& window, QWidget& form)
    : station_(station), screen_(screen), window_(window), form_(form) {
  FindCaptions();
  Bind();
  connect(&station_, &Station::Settled, this, [this] {
    if (gone_) return;
    for (const auto& binding : bindings_) binding->ActEnded();
    FollowDesk();
  });
  const auto turn = [this](const QKeySequence& keys, bool back) {
    auto* shortcut = new QShortcut(keys, &form_);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, back] { TurnPage(back); });
  };
  turn(QKeySequence(Qt::CTRL | Qt::Key_PageDown), false);
  turn(QKeySequence(Qt::CTRL | Qt::Key_PageUp), true);
}

ScreenBindings::~ScreenBindings() { LetGo(); }

void ScreenBindings::LetGo() {
  if (gone_) return;
  gone_ = true;
  station_.disconnect(this);
  for (host::Component* component : screen_.Components()) component->OnViewChange = nullptr;
  for (const auto& binding : bindings_) {
    station_.GetTyping().End(&binding->Widget());
    binding->LetGo();
  }
}

// A caption is a label that stands for an input; the letter underlined in it leads there.
void ScreenBindings::FindCaptions() {
  for (QLabel* label : form_.findChildren<QLabel*>()) {
    if (label->buddy() == nullptr) continue;
    captions_[label->buddy()].append(label);
    label->installEventFilter(this);
  }
}

void ScreenBindings::Bind() {
  form_differs_ = PageCaptionsThatDiffer(screen_, form_);
  // A click on what is no control leaves the keyboard where it is.
  for (QWidget* widget : form_.findChildren<QWidget*>()) {
    if (IsInside<GridPanel>(*widget)) continue;
    if ((widget->focusPolicy() & Qt::ClickFocus) != 0) widget->setFocusPolicy(Qt::TabFocus);
  }
  for (host::Component* component : screen_.Components()) {
    auto* control = dynamic_cast<host::Control*>(component);
    if (control == nullptr) continue;
    auto* widget = form_.findChild<QWidget*>(QString::fromStdString(control->Name()));
    if (widget == nullptr) continue;
    std::unique_ptr<Binding> binding = NewBinding(*this, *control, *widget);
    if (binding == nullptr) continue;
    by_control_[control] = binding.get();
    bindings_.push_back(std::move(binding));
  }
  for (const auto& binding : bindings_) {
    Binding* const shown = binding.get();
    // A grid's view follows its grid by itself; the panel around it is shown or hidden here.
    const host::Handler own = shown->GetControl().OnViewChange;
    shown->GetControl().OnViewChange = [shown, own] {
      if (own) own();
      shown->Show();
    };
    shown->Show();
    shown->Fit();
  }
}

Binding* ScreenBindings::Of(const host::Control* control) const { return by_control_.value(control, nullptr); }

const QList<QLabel*>& ScreenBindings::CaptionsOf(const QWidget& widget) const {
  static const QList<QLabel*> kNone;
  const auto found = captions_.constFind(&widget);
  return found == captions_.constEnd() ? kNone : found.value();
}

void ScreenBindings::Fit() {
  if (gone_) return;
  for (const auto& binding : bindings_) binding->Fit();
}

// --- acts --------------------------------------------------------------------------------------------------------

bool ScreenBindings::Do(const Act& act) {
  if (gone_) return false;
  const host::Restored<int> inside(inside_, inside_ + 1);
  // Settling what was being typed may have closed the screen.
  return station_.Do([this, &act] { return gone_ ? ActResult::kRefused : act(); });
}

bool ScreenBindings::DoTyping(const Act& act) {
  if (gone_) return false;
  const host::Restored<int> inside(inside_, inside_ + 1);
  return station_.DoTyping(act);
}

bool ScreenBindings::HasFocus(const host::Control& control) const { return Desk().Focused() == &control; }

bool ScreenBindings::Enter(host::Control& control) {
  if (gone_) return false;
  if (HasFocus(control)) return !station_.Busy();
  return Do([this, &control] { return Desk().Enter(control); }) && !gone_ && HasFocus(control);
}

bool ScreenBindings::PressKey(Binding* where, const QKeyEvent& event) {
  using host::Key;
  const Key key = ScreenKey(event);
  if (gone_ || key == Key::kNone || (where != nullptr && where->Keeps(key))) return false;
  const host::Restored<int> inside(inside_, inside_ + 1);
  if (key == Key::kEscape && !station_.Busy() && where != nullptr && where->GiveUp()) return true;
  const bool back = IsBack(event);
  const host::Control* before = Desk().Focused();
  const int boxes = interruptions_;
  const bool done =
      Do([this, key, back] { return back ? Desk().MoveFocus(screen_, true) : Desk().PressKey(screen_, key); });
  // Where the key itself was taken and only the way on refused, a box tells.
  if ((!done || interruptions_ != boxes) && !gone_ && Desk().Focused() == before) Refused();
  return true;
}

// After a box the widget has the keyboard again only a moment later.
void ScreenBindings::Refused() {
  if (current_ != nullptr && HasFocus(current_->GetControl())) current_->Refused();
}

bool ScreenBindings::ChoosePage(host::PageControl& pages, int page) {
  if (page < 0 || page >= static_cast<int>(pages.Pages().size())) return false;
  return Do([this, &pages, page] {
    const ActResult chosen = Desk().ChoosePage(pages, pages.Pages()[static_cast<std::size_t>(page)]);
    if (chosen != ActResult::kDone || gone_ || Desk().Focused() != nullptr) return chosen;
    // On to the first input of that page.
    const auto stands = [&pages](const host::Control& control) {
      for (const host::Control* at = &control; at->Pages() != nullptr; at = at->Pages()) {
        if (at->Pages() == &pages) return true;
      }
      return false;
    };
    for (const auto& binding : bindings_) {
      host::Control& control = binding->GetControl();
      const auto* edit = dynamic_cast<const host::Edit*>(&control);
      if (!control.Focusable() || !control.InSight() || !control.Enabled() || !stands(control)) continue;
      if (edit != nullptr && edit->ReadOnly()) continue;
      Desk().Enter(control);
      break;
    }
    return chosen;
  });
}

void ScreenBindings::TurnPage(bool back) {
  if (gone_) return;
  const host::Control* focused = Desk().Focused();
  host::PageControl* pages = nullptr;
  if (focused != nullptr && &focused->Owner() == &screen_) pages = focused->Pages();
  for (const auto& binding : bindings_) {
    auto* candidate = dynamic_cast<host::PageControl*>(&binding->GetControl());
    if (pages == nullptr && candidate != nullptr && candidate->InSight() && candidate->Enabled()) pages = candidate;
  }
  if (pages == nullptr) return;
  const int count = static_cast<int>(pages->Pages().size());
  ChoosePage(*pages, (pages->ActivePage() + (back ? count - 1 : 1)) % count);
}

// --- the keyboard ------------------------------------------------------------------------------------------------

bool ScreenBindings::MayAct() const {
  const host::Screen* modal = Desk().Modal();
  return window_.isVisible() && !station_.Busy() && (modal == nullptr || modal == &screen_);
}

void ScreenBindings::FollowDesk() {
  if (gone_ || following_) return;
  if (wanted_ && !station_.Busy()) {
    wanted_ = false;
    TakeFocus();
    return;
  }
  const host::Control* focused = Desk().Focused();
  if (focused != nullptr && &focused->Owner() != &screen_) {
    mine_ = false;
    current_ = nullptr;
    return;
  }
  if (focused != nullptr) mine_ = true;
  Binding* const binding = focused == nullptr ? nullptr : Of(focused);
  if (binding == nullptr || !binding->CanTakeKeyboard()) {
    current_ = nullptr;
    if (mine_ && MayAct()) MoveOn();
    if (!gone_) TellKeys();
    return;
  }
  const bool came = binding != current_;
  current_ = last_ = binding;
  if (!binding->HasKeyboard()) {
    const host::Restored<bool> following(following_, true);
    // Without a window manager nothing is active after a box has gone.
    if (QApplication::activeWindow() == nullptr && window_.isVisible()) window_.window()->activateWindow();
    binding->TakeKeyboard();
  }
  if (came) binding->Entered();
  TellKeys();
}

// The control that had the focus has been disabled or hidden, or nothing has it: the next one is where a person goes
// on. Once: what comes to nothing leaves the keyboard with the window, so that its keys still work.
void ScreenBindings::MoveOn() {
  if (moving_) return;
  {
    const host::Restored<bool> moving(moving_, true);
    Do([this] { return Desk().MoveFocus(screen_, false); });
  }
  if (gone_) return;
  const host::Control* focused = Desk().Focused();
  const Binding* binding = focused == nullptr ? nullptr : Of(focused);
  if (binding == nullptr && mine_ && QApplication::activeModalWidget() == nullptr) window_.setFocus();
}

void ScreenBindings::KeyboardCame(Binding& binding) {
  if (gone_ || following_ || station_.Busy() || HasFocus(binding.GetControl())) return;
  QTimer::singleShot(0, &binding, [this, &binding] {
    if (gone_ || station_.Busy() || HasFocus(binding.GetControl()) || !binding.HasKeyboard()) return;
    if (!Enter(binding.GetControl())) FollowDesk();
  });
}

void ScreenBindings::TakeFocus() {
  if (gone_) return;
  if (station_.Busy()) {
    wanted_ = true;
    return;
  }
  const host::Control* focused = Desk().Focused();
  if (focused == nullptr || &focused->Owner() != &screen_) {
    const host::Screen* modal = Desk().Modal();
    if (modal != nullptr && modal != &screen_) return;
    Binding* const again = last_ != nullptr && last_->CanTakeKeyboard() ? last_ : nullptr;
    Do([this, again] { return again ? Desk().Enter(again->GetControl()) : Desk().MoveFocus(screen_, false); });
    if (gone_) return;
  }
  FollowDesk();
}

bool ScreenBindings::eventFilter(QObject* watched, QEvent* event) {
  if (gone_ || event->type() != QEvent::Shortcut) return false;
  const auto* label = qobject_cast<QLabel*>(watched);
  if (label == nullptr) return false;
  for (const auto& binding : bindings_) {
    if (&binding->Widget() != label->buddy() || !binding->GetControl().Focusable()) continue;
    Enter(binding->GetControl());
    return true;
  }
  return false;
}

// --- what a person is told ---------------------------------------------------------------------------------------

void ScreenBindings::TellKeys() {
  const QString keys = KeysHere();
  if (keys == keys_) return;
  keys_ = keys;
  emit KeysChanged();
}

QString ScreenBindings::KeysHere() const {
  if (gone_) return {};
  QStringList hints;
  std::vector<host::Key> told;
  const auto tell = [&](host::Key key, const QString& text) {
    if (std::find(told.begin(), told.end(), key) != told.end()) return;
    told.push_back(key);
    hints.append(KeyName(key) + QLatin1Char(' ') + text);
  };
  const std::vector<host::KeyHint> of_screen = screen_.KeyHints();
  // What the screen makes of these two comes before what they usually do.
  const auto tell_usual = [&](host::Key key, const QString& usual) {
    const auto own =
        std::find_if(of_screen.begin(), of_screen.end(), [key](const auto& hint) { return hint.key == key; });
    tell(key, own == of_screen.end() ? usual : QString::fromStdString(own->text));
  };
  tell_usual(host::Key::kEnter, QStringLiteral("Avança"));
  tell_usual(host::Key::kEscape, QStringLiteral("Desfaz"));
  const host::Control* focused = Desk().Focused();
  const Binding* binding = focused == nullptr ? nullptr : Of(focused);
  if (binding != nullptr && binding->HasLookup()) tell(host::Key::kF4, QStringLiteral("Pesquisa"));
  const auto* grid = dynamic_cast<const host::Grid*>(focused);
  if (binding != nullptr && grid != nullptr && !grid->ReadOnly()) {
    // Tab and Enter go from cell to cell there.
    hints.append(QStringLiteral("Ctrl+Enter Sai da grade"));
  }
  for (const host::KeyHint& hint : of_screen) tell(hint.key, QString::fromStdString(hint.text));
  for (const host::Component* component : screen_.Components()) {
    const auto* button = dynamic_cast<const host::Button*>(component);
    if (button == nullptr || button->Shortcut == host::Key::kNone || !button->Enabled() || !button->InSight()) continue;
    tell(button->Shortcut, QString::fromStdString(button->Caption()).remove(QLatin1Char('&')));
  }
  for (const auto& candidate : bindings_) {
    const auto* pages = dynamic_cast<const host::PageControl*>(&candidate->GetControl());
    if (pages == nullptr || !pages->InSight() || pages->Pages().size() < 2) continue;
    hints.append(QStringLiteral("Ctrl+PgDn Próxima aba"));
    break;
  }
  return hints.join(QStringLiteral("   "));
}

QStringList ScreenBindings::Mismatches() const {
  if (gone_) return {};
  return form_differs_ + MismatchesOf(*this, form_);
}

}  // namespace app::desktop
