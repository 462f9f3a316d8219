// The focus, and what a person does with inputs, boxes, buttons and menus.
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/decimal.h"
#include "host/errors.h"
#include "host/kit/desk.h"
#include "host/kit/desk_impl.h"
#include "host/kit/typed.h"
#include "host/text.h"

namespace host {
namespace {

constexpr std::size_t kDigitsOfLot = 9;       // of a label that was made before its roll
constexpr std::size_t kDigitsOfArticle = 13;  // the shortest number of an article

// A scanner types into whatever has the cursor. No quantity is written so, and one taken from a code would be believed.
bool LooksScanned(std::string_view text) {
  if (text.find_first_not_of("0123456789") != std::string_view::npos) return false;
  return text.size() >= kDigitsOfArticle || (text.size() >= kDigitsOfLot && text.front() == '0');
}

}  // namespace

// --- the focus ---------------------------------------------------------------------------------------------------

// Leaves the control that has the focus. What its OnExit asks for decides: its own focus again is a refusal; another
// control's is where the focus goes when the event has ended.
ActResult Desk::LeaveFocused() {
  if (focused_ == nullptr) return ActResult::kDone;
  Control& leaving = *focused_;
  if (!CanAct(leaving)) {
    focused_ = nullptr;
    return ActResult::kDone;
  }
  bool stays = false;
  const auto settle_request = [&] {
    stays = requested_ == &leaving;
    if (stays) requested_ = nullptr;
  };
  const ActResult left = Run(leaving.Owner().Caption(), [&] {
    try {
      if (auto* grid = dynamic_cast<Grid*>(&leaving)) LeaveCell(*grid, Key::kNone);
      Fire(leaving.OnExit);
    } catch (const Abort&) {
      settle_request();
      // It was left and refused already; the move to the control that it asked for must not ask it again.
      if (requested_ != nullptr) focused_ = nullptr;
      throw;
    }
    settle_request();
    if (!stays) focused_ = nullptr;
  });
  // The program may have turned the page meanwhile; what was refused must be seen.
  if (focused_ == &leaving) leaving.Reveal();
  return left == ActResult::kDone && stays ? ActResult::kRefused : left;
}

ActResult Desk::Focus(Control& control) {
  focused_ = &control;
  return Run(control.Owner().Caption(), [this, &control] {
    control.Reveal();
    Fire(control.OnEnter);
    if (auto* grid = dynamic_cast<Grid*>(&control)) EnterCell(*grid);
  });
}

// Moves the focus to the control that the program asked for last; true when it had something to do.
bool Desk::SettleFocus() {
  if (requested_ == nullptr) return false;
  Control& to = *std::exchange(requested_, nullptr);
  if (&to == focused_ || !CanFocus(to) || !IsOpen(&to.Owner()) || IsDoomed(&to.Owner())) return true;
  if (Modal() != nullptr && Modal() != &to.Owner()) return true;
  const Screen* screen = &to.Owner();
  if (LeaveFocused() != ActResult::kDone || requested_ != nullptr || !IsOpen(screen)) return true;
  if (CanFocus(to)) Focus(to);
  return true;
}

ActResult Desk::Enter(Control& control) {
  MustAllow(control);
  if (!control.Focusable()) throw ActError(control.Name() + " não recebe o foco");
  if (focused_ == &control) return ActResult::kDone;
  const Screen* screen = &control.Owner();
  const ActResult left = LeaveFocused();
  if (left != ActResult::kDone) return left;
  if (!IsOpen(screen) || !CanFocus(control)) return ActResult::kRefused;
  if (focused_ == &control) return ActResult::kDone;
  if (focused_ != nullptr) return ActResult::kRefused;  // the exit sent the person elsewhere
  return Focus(control);
}

ActResult Desk::Leave() {
  if (focused_ == nullptr) return ActResult::kDone;
  MustAllow(focused_->Owner());
  return LeaveFocused();
}

ActResult Desk::Leave(Control& control) { return focused_ == &control ? Leave() : ActResult::kDone; }

Control* Desk::NextFocus(Screen& screen, bool back) const {
  if (!back && focused_ != nullptr && &focused_->Owner() == &screen) {
    Control* const sent_to = focused_->GoesOnTo;
    if (sent_to != nullptr && &sent_to->Owner() == &screen && IsTabStop(*sent_to)) return sent_to;
  }
  std::vector<Control*> order;
  std::size_t here = 0;
  bool inside = false;
  for (Component* component : screen.Components()) {
    auto* control = dynamic_cast<Control*>(component);
    if (control == nullptr) continue;
    if (control == focused_) {
      here = order.size();
      inside = true;
      order.push_back(control);
    } else if (IsTabStop(*control)) {
      order.push_back(control);
    }
  }
  if (order.empty()) return nullptr;
  if (!inside) return back ? order.back() : order.front();
  return order[(here + (back ? order.size() - 1 : 1)) % order.size()];
}

ActResult Desk::MoveFocus(Screen& screen, bool back) {
  Control* next = NextFocus(screen, back);
  if (next == nullptr) return ActResult::kDone;
  if (depth_ > 0 && !impl_->waiting) {
    RequestFocus(*next);
    return ActResult::kDone;
  }
  MustAllow(screen);
  return Enter(*next);
}

Button* Desk::ShortcutOf(const Screen& screen, Key key) {
  if (key == Key::kNone) return nullptr;
  for (Component* component : screen.Components()) {
    auto* button = dynamic_cast<Button*>(component);
    if (button != nullptr && button->Shortcut == key && IsTabStop(*button)) return button;
  }
  return nullptr;
}

ActResult Desk::PressKey(Screen& screen, Key key) {
  MustAllow(screen);
  Control* control = focused_ != nullptr && &focused_->Owner() == &screen ? focused_ : nullptr;
  if (auto* grid = dynamic_cast<Grid*>(control)) return GridKey(*grid, key);
  bool used = false;
  const ActResult pressed = Run(screen.Caption(), [&] {
    if (control != nullptr) Fire(control->OnKeyDown, key);
    used = screen.FormKeyDown(key);
  });
  if (pressed != ActResult::kDone || used || !IsOpen(&screen) || focused_ != control) return pressed;
  const auto* input = dynamic_cast<Edit*>(control);
  if (key == Key::kF4 && input != nullptr && input->Lookup != nullptr && CanAct(*input) && !input->ReadOnly()) {
    return OpenLookup(*input->Lookup);
  }
  if (Button* button = ShortcutOf(screen, key)) return Click(*button);
  if (key == Key::kTab) return MoveFocus(screen, false);
  if (key != Key::kEnter) return pressed;
  if (auto* button = dynamic_cast<Button*>(control)) return Click(*button);
  const bool new_line = input != nullptr && input->Kind() == EditKind::kMemo;
  return new_line ? pressed : MoveFocus(screen, false);
}

// --- inputs ------------------------------------------------------------------------------------------------------

ActResult Desk::Type(Edit& edit, std::string_view text) {
  ActResult result = Enter(edit);
  if (result == ActResult::kDone) result = TypeInto(edit, text);
  if (result == ActResult::kDone) result = Leave(edit);
  return result;
}

ActResult Desk::TypeInto(Edit& edit, std::string_view text) {
  MustAllow(edit);
  if (edit.ReadOnly()) throw ActError(edit.Name() + " não pode ser digitado");
  if (focused_ != &edit) throw ActError(edit.Name() + " não tem o foco");
  return Run(edit.Owner().Caption(), [&] {
    std::optional<std::string> objection =
        TypedObjection(edit.Kind(), edit.MaxLength(), PlainCaption(edit.Caption(), edit.Name()), text);
    if (!objection) objection = environment_.CheckStorable(text);
    const std::string trimmed = Trim(text);
    if (!objection && edit.Kind() == EditKind::kNumber && LooksScanned(trimmed)) {
      objection = "O campo \"" + PlainCaption(edit.Caption(), edit.Name()) +
                  "\" aceita somente números; isto parece um código de barras.";
    }
    if (objection) edit.Owner().Refuse(*objection);
    if (edit.Kind() == EditKind::kNumber && !trimmed.empty()) {
      edit.SetNumber(ParseTyped(trimmed).value_or(0.0));
    } else if (edit.Kind() == EditKind::kInteger && !trimmed.empty()) {
      edit.SetText(std::to_string(ParseTypedInteger(trimmed).value_or(0)));
    } else if (edit.Kind() == EditKind::kDate) {
      edit.SetDate(Date::FromDisplay(trimmed).value_or(Date()));
    } else if (edit.Kind() == EditKind::kText || edit.Kind() == EditKind::kMemo) {
      edit.SetText(text);
    } else {
      edit.SetText("");
    }
  });
}

ActResult Desk::Check(CheckBox& box, bool checked) {
  const Screen* screen = &box.Owner();
  const ActResult entered = Enter(box);
  if (entered != ActResult::kDone) return entered;
  if (!IsOpen(screen) || !CanAct(box)) return ActResult::kRefused;
  return Run(box.Owner().Caption(), [&] { box.SetChecked(checked); });
}

ActResult Desk::Choose(Choice& choice, std::string_view caption) {
  const auto& items = choice.Items();
  const auto chosen = std::find_if(items.begin(), items.end(), [caption](const std::string& item) {
    return item == caption || PlainCaption(item, "") == caption;
  });
  if (chosen == items.end()) throw ActError(choice.Name() + " não tem a opção \"" + std::string(caption) + "\"");
  const Screen* screen = &choice.Owner();
  const ActResult entered = Enter(choice);
  if (entered != ActResult::kDone) return entered;
  if (!IsOpen(screen) || !CanAct(choice)) return ActResult::kRefused;
  return Run(choice.Owner().Caption(), [&] { choice.SetSelected(static_cast<int>(chosen - items.begin())); });
}

ActResult Desk::ChoosePage(PageControl& pages, std::string_view caption) {
  MustAllow(pages);
  const auto& captions = pages.Pages();
  const auto chosen = std::find(captions.begin(), captions.end(), caption);
  if (chosen == captions.end()) throw ActError(pages.Name() + " não tem a aba \"" + std::string(caption) + "\"");
  const Screen* screen = &pages.Owner();
  const ActResult left = LeaveFocused();  // an input of the page that goes out of sight
  if (left != ActResult::kDone) return left;
  if (!IsOpen(screen)) return ActResult::kRefused;
  return Run(pages.Owner().Caption(), [&] {
    pages.SetActivePage(static_cast<int>(chosen - captions.begin()));
    Fire(pages.OnClick);
  });
}

ActResult Desk::Click(Button& button) {
  const Screen* screen = &button.Owner();
  const ActResult entered = Enter(button);
  if (entered != ActResult::kDone) return entered;
  if (!IsOpen(screen) || !CanAct(button)) return ActResult::kRefused;
  return Run(button.Owner().Caption(), [&] { Fire(button.OnClick); });
}

ActResult Desk::OpenMenu(Control& control) {
  MustAllow(control);
  if (control.Popup == nullptr) throw ActError(control.Name() + " não tem menu");
  return Run(control.Owner().Caption(), [&control] { Fire(control.Popup->OnPopup); });
}

ActResult Desk::PickMenu(Screen& screen, std::string_view caption) {
  MustAllow(screen);
  PopupMenu* menu = nullptr;
  const auto offer = [&](Component* component) {
    if (menu != nullptr) return;
    const auto* control = dynamic_cast<Control*>(component);
    auto* found = control != nullptr ? control->Popup : dynamic_cast<PopupMenu*>(component);
    if (found != nullptr && found->Find(caption) != nullptr) menu = found;
  };
  if (focused_ != nullptr && &focused_->Owner() == &screen) offer(focused_);
  for (Component* component : screen.Components()) offer(component);
  if (menu == nullptr) throw ActError("não há menu com \"" + std::string(caption) + "\"");
  const ActResult opened = Run(screen.Caption(), [&] { Fire(menu->OnPopup); });
  if (opened != ActResult::kDone || !IsOpen(&screen)) return opened;
  const MenuItem* item = menu->Find(caption);
  if (item == nullptr || !item->visible) throw ActError("\"" + std::string(caption) + "\" não está visível no menu");
  return Run(screen.Caption(), [&] { Fire(item->on_click); });
}

ActResult Desk::OpenLookup(TPesquisa& lookup) {
  MustAllow(lookup.Owner());
  return Run(lookup.Owner().Caption(), [&] { lookup.Open(); });
}

}  // namespace host
