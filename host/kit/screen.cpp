#include "host/kit/screen.h"

#include <utility>

#include "host/errors.h"
#include "host/text.h"

namespace host {

Screen::Screen(Host& host, std::string class_name, std::string name, std::string caption)
    : host_(host), class_name_(std::move(class_name)), name_(std::move(name)), caption_(std::move(caption)) {}

bool Screen::FormKeyDown(Key /*key*/) { return false; }

Component* Screen::FindComponent(std::string_view name) const {
  for (Component* component : components_) {
    if (SameName(component->Name(), name)) return component;
  }
  return nullptr;
}

void Screen::Inform(std::string_view text) const { host_.GetDialogs().Message(caption_, text, Icon::kInformation); }

void Screen::Warn(std::string_view text) const { host_.GetDialogs().Message(caption_, text, Icon::kExclamation); }

bool Screen::Confirm(std::string_view text) const { return host_.GetDialogs().Question(caption_, text); }

void Screen::Refuse(std::string_view text) const {
  Inform(text);
  throw Abort();
}

void Screen::Refuse(std::string_view text, Control& back_to) const {
  Inform(text);
  back_to.SetFocus();
  throw Abort();
}

}  // namespace host
