// Boxes to tick, radio buttons, drop-down lists.
#pragma once

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QList>
#include <QRadioButton>

#include "app/desktop/bindings/binding.h"

namespace app::desktop {

class CheckBinding : public Binding {
 public:
  CheckBinding(ScreenBindings& window, host::CheckBox& box, QCheckBox& tick);
  void Show() override;

 protected:
  void Mnemonic(QObject* part) override;

 private:
  void Check(bool checked);

  host::CheckBox& box_;
  QCheckBox& tick_;
};

/// The group box of the form gets one radio button per caption, in the layout that it has or in one that suits them.
class RadioBinding : public Binding {
 public:
  RadioBinding(ScreenBindings& window, host::RadioGroup& radios, QGroupBox& box);
  void Show() override;
  void TakeKeyboard() override;
  bool HasKeyboard() const override;
  void LetGo() override;

 protected:
  /// The arrow keys choose, however the buttons are laid out.
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Mnemonic(QObject* part) override;

 private:
  void Choose(int index);

  host::RadioGroup& radios_;
  QGroupBox& box_;
  QButtonGroup group_;
  QList<QRadioButton*> buttons_;
};

class ListBinding : public Binding {
 public:
  ListBinding(ScreenBindings& window, host::Choice& choice, QComboBox& list);
  void Show() override;
  bool HasKeyboard() const override;
  /// F4 opens the list.
  bool Keeps(host::Key key) const override { return key == host::Key::kF4; }

 private:
  void Choose(int index);

  host::Choice& choice_;
  QComboBox& list_;
};

}  // namespace app::desktop
