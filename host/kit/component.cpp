#include "host/kit/component.h"

#include <algorithm>
#include <stdexcept>

#include "host/decimal.h"
#include "host/kit/fire.h"
#include "host/kit/screen.h"
#include "host/text.h"

namespace host {
namespace {

std::string WithoutMnemonic(std::string_view caption) {
  std::string plain(caption);
  std::erase(plain, '&');
  return plain;
}

}  // namespace

Component::Component(Screen& owner, std::string name) : owner_(owner), name_(std::move(name)) {
  if (owner.FindComponent(name_) != nullptr) {
    throw std::logic_error(owner.Name() + " has two components of the name " + name_);
  }
  owner.components_.push_back(this);
}

Control::Control(Screen& owner, std::string name, std::string caption)
    : Component(owner, std::move(name)), caption_(std::move(caption)) {}

void Control::SetCaption(std::string_view caption) {
  caption_ = caption;
  NotifyView();
}

void Control::SetEnabled(bool enabled) {
  enabled_ = enabled;
  NotifyView();
}

void Control::SetVisible(bool visible) {
  visible_ = visible;
  NotifyView();
}

void Control::StandOn(PageControl& pages, int page) {
  pages_ = &pages;
  page_ = page;
}

bool Control::InSight() const {
  if (!visible_) return false;
  return pages_ == nullptr || (pages_->ActivePage() == page_ && pages_->InSight());
}

void Control::Reveal() {
  if (pages_ == nullptr) return;
  pages_->Reveal();
  pages_->SetActivePage(page_);
}

void Control::SetFocus() {
  if (ScreenSite* site = Owner().Site()) site->RequestFocus(*this);
}

Label::Label(Screen& owner, std::string name, std::string text)
    : Control(owner, std::move(name), {}), text_(std::move(text)) {}

void Label::SetText(std::string_view text) {
  text_ = text;
  NotifyView();
}

Edit::Edit(Screen& owner, std::string name, std::string caption, EditKind kind, std::size_t max_length,
           std::string format)
    : Control(owner, std::move(name), std::move(caption)),
      kind_(kind),
      max_length_(max_length),
      format_(std::move(format)) {}

void Edit::SetText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  number_text_.clear();
  NotifyView();
  Fire(OnChange);
}

double Edit::Number() const {
  // The shown text is rounded to the format; calculations use what was typed.
  if (!number_text_.empty() && text_ == number_text_) return number_;
  return ParseTyped(text_).value_or(0.0);
}

int Edit::Integer() const { return static_cast<int>(Value(Number()).AsInteger()); }

void Edit::SetNumber(double number) {
  std::string shown = format_.empty() ? PointText(number) : FormatNumber(format_, number, ',');
  if (format_.empty()) std::replace(shown.begin(), shown.end(), '.', ',');
  // Two numbers may look alike in the format; whoever depends on the value must hear of it all the same.
  const bool differs = shown != text_ || number != Number();
  text_ = shown;
  number_ = number;
  number_text_ = std::move(shown);
  if (!differs) return;
  NotifyView();
  Fire(OnChange);
}

Date Edit::GetDate() const { return Date::FromDisplay(text_).value_or(Date()); }

void Edit::SetDate(Date date) { SetText(date.ToDisplay()); }

CheckBox::CheckBox(Screen& owner, std::string name, std::string caption, bool checked)
    : Control(owner, std::move(name), std::move(caption)), checked_(checked) {}

void CheckBox::SetChecked(bool checked) {
  if (checked_ == checked) return;
  checked_ = checked;
  NotifyView();
  Fire(OnClick);
}

Choice::Choice(Screen& owner, std::string name, std::string caption, std::vector<std::string> items, int selected)
    : Control(owner, std::move(name), std::move(caption)), items_(std::move(items)), selected_(-1) {
  if (selected >= 0 && selected < static_cast<int>(items_.size())) selected_ = selected;
}

std::string Choice::SelectedText() const {
  return selected_ < 0 ? std::string() : items_[static_cast<std::size_t>(selected_)];
}

void Choice::SetSelected(int index) {
  if (index < 0 || index >= static_cast<int>(items_.size())) index = -1;
  if (selected_ == index) return;
  selected_ = index;
  NotifyView();
  Fire(OnClick);
}

Button::Button(Screen& owner, std::string name, std::string caption, Handler on_click)
    : Control(owner, std::move(name), std::move(caption)), OnClick(std::move(on_click)) {}

PageControl::PageControl(Screen& owner, std::string name, std::vector<std::string> pages)
    : Control(owner, std::move(name), {}), pages_(std::move(pages)) {}

void PageControl::Place(int page, std::initializer_list<Control*> controls) {
  for (Control* control : controls) control->StandOn(*this, page);
}

void PageControl::SetActivePage(int index) {
  if (index < 0 || index >= static_cast<int>(pages_.size()) || index == active_) return;
  active_ = index;
  NotifyView();
}

PopupMenu::PopupMenu(Screen& owner, std::string name) : Component(owner, std::move(name)) {}

MenuItem& PopupMenu::Add(std::string name, std::string caption, Handler on_click) {
  items_.push_back({std::move(name), std::move(caption), std::move(on_click)});
  return items_.back();
}

MenuItem* PopupMenu::Find(std::string_view caption_or_name) {
  const std::string wanted = WithoutMnemonic(caption_or_name);
  for (MenuItem& item : items_) {
    if (WithoutMnemonic(item.caption) == wanted || SameName(item.name, caption_or_name)) return &item;
  }
  return nullptr;
}

}  // namespace host
