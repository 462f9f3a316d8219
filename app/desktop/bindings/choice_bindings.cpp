#include "app/desktop/bindings/choice_bindings.h"

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "app/desktop/basics/text.h"
#include "app/desktop/bindings/screen_bindings.h"

namespace app::desktop {
namespace {

constexpr int kInOneRow = 40;  // characters of all captions together

void ChooseAt(ScreenBindings& window, host::Choice& choice, int index) {
  if (index < 0 || index >= static_cast<int>(choice.Items().size())) return;
  const std::string caption = choice.Items()[static_cast<std::size_t>(index)];
  window.Do([&] { return window.Desk().Choose(choice, caption); });
}

}  // namespace

// --- a box to tick -----------------------------------------------------------------------------------------------

CheckBinding::CheckBinding(ScreenBindings& window, host::CheckBox& box, QCheckBox& tick)
    : Binding(window, box, tick), box_(box), tick_(tick) {
  Watch(tick_);
  tick_.setFocusPolicy(Qt::TabFocus);
  connect(&tick_, &QCheckBox::clicked, this, [this](bool checked) { Check(checked); });
}

void CheckBinding::Show() {
  Binding::Show();
  const QString caption = ToQt(box_.Caption());
  if (tick_.text() != caption) tick_.setText(caption);
  tick_.setChecked(box_.Checked());
}

void CheckBinding::Check(bool checked) {
  if (window_.Gone()) return;
  window_.Do([this, checked] { return window_.Desk().Check(box_, checked); });
  if (!window_.Gone()) Show();
}

void CheckBinding::Mnemonic(QObject* /*part*/) { Check(!box_.Checked()); }

// --- radio buttons -----------------------------------------------------------------------------------------------

RadioBinding::RadioBinding(ScreenBindings& window, host::RadioGroup& radios, QGroupBox& box)
    : Binding(window, radios, box), radios_(radios), box_(box) {
  Watch(box_);
  int characters = 0;
  for (const std::string& item : radios_.Items()) characters += static_cast<int>(ToQt(item).size());
  QHBoxLayout* row = nullptr;
  if (box_.layout() == nullptr) {
    if (characters <= kInOneRow) {
      row = new QHBoxLayout(&box_);
    } else {
      new QVBoxLayout(&box_);
    }
  }
  for (const std::string& item : radios_.Items()) {
    auto* button = new QRadioButton(ToQt(item), &box_);
    button->setFocusPolicy(Qt::TabFocus);
    const int index = static_cast<int>(buttons_.size());
    buttons_.append(button);
    group_.addButton(button, index);
    box_.layout()->addWidget(button);
    Watch(*button);
    connect(button, &QRadioButton::clicked, this, [this, index] { Choose(index); });
  }
  if (row != nullptr) row->addStretch();
}

void RadioBinding::LetGo() {
  for (QRadioButton* button : buttons_) {
    button->disconnect(this);
    button->removeEventFilter(this);
  }
  Binding::LetGo();
}

void RadioBinding::Show() {
  Binding::Show();
  const QString caption = ToQt(radios_.Caption());
  if (box_.title() != caption) box_.setTitle(caption);
  // An exclusive group does not let its last button be released.
  group_.setExclusive(false);
  for (int index = 0; index < buttons_.size(); ++index) buttons_[index]->setChecked(index == radios_.Selected());
  group_.setExclusive(true);
}

void RadioBinding::TakeKeyboard() {
  QAbstractButton* chosen = group_.checkedButton();
  if (chosen == nullptr && !buttons_.isEmpty()) chosen = buttons_.front();
  if (chosen != nullptr) chosen->setFocus();
}

bool RadioBinding::HasKeyboard() const {
  for (const QRadioButton* button : buttons_) {
    if (button->hasFocus()) return true;
  }
  return false;
}

bool RadioBinding::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && !window_.Gone()) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool back = key == Qt::Key_Up || key == Qt::Key_Left;
    if (back || key == Qt::Key_Down || key == Qt::Key_Right) {
      const int last = static_cast<int>(buttons_.size()) - 1;
      const int next = std::clamp(radios_.Selected() + (back ? -1 : 1), 0, last);
      if (next != radios_.Selected()) Choose(next);
      event->accept();
      return true;
    }
  }
  return Binding::eventFilter(watched, event);
}

void RadioBinding::Choose(int index) {
  if (window_.Gone()) return;
  ChooseAt(window_, radios_, index);
  if (window_.Gone()) return;
  Show();
  if (window_.HasFocus(radios_)) TakeKeyboard();
}

void RadioBinding::Mnemonic(QObject* part) {
  for (int index = 0; index < buttons_.size(); ++index) {
    if (buttons_[index] != part) continue;
    Choose(index);
    return;
  }
  window_.Enter(radios_);
}

// --- a drop-down list --------------------------------------------------------------------------------------------

ListBinding::ListBinding(ScreenBindings& window, host::Choice& choice, QComboBox& list)
    : Binding(window, choice, list), choice_(choice), list_(list) {
  Watch(list_);
  list_.setFocusPolicy(Qt::TabFocus);
  list_.setEditable(false);
  list_.clear();
  for (const std::string& item : choice_.Items()) list_.addItem(ToQt(item));
  connect(&list_, &QComboBox::activated, this, [this](int index) { Choose(index); });
}

void ListBinding::Show() {
  Binding::Show();
  list_.setCurrentIndex(choice_.Selected());
}

bool ListBinding::HasKeyboard() const { return list_.hasFocus() || list_.view()->isVisible(); }

void ListBinding::Choose(int index) {
  if (window_.Gone()) return;
  ChooseAt(window_, choice_, index);
  if (!window_.Gone()) Show();
}

}  // namespace app::desktop
