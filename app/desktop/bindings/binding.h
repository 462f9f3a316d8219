// One control of a screen and the widget that shows it.
#pragma once

#include <QContextMenuEvent>
#include <QEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QObject>
#include <QPoint>
#include <QWidget>
#include <memory>

#include "host/kit/component.h"

namespace app::desktop {

class ScreenBindings;

/// Shows the control as it is and passes on what the person does to the widget. The widget never gets the keyboard by a
/// click of itself: the press is looked at first, the desk is asked, and only what it accepts goes through.
class Binding : public QObject {
 public:
  Binding(ScreenBindings& window, host::Control& control, QWidget& widget);

  host::Control& GetControl() const { return control_; }
  QWidget& Widget() const { return widget_; }

  /// The widget shows what the control holds now. Cheap; called for every change, also in the middle of an act.
  virtual void Show();
  /// What the control does not tell of by itself.
  virtual void ActEnded() {}
  /// Sizes that depend on the font.
  virtual void Fit() {}
  virtual void TakeKeyboard();
  virtual bool HasKeyboard() const;
  /// The widget could have the keyboard: enabled, not hidden, on a page in sight.
  bool CanTakeKeyboard() const;
  /// The desk's focus has come here.
  virtual void Entered() {}
  /// The person wanted to leave and may not.
  virtual void Refused() {}
  /// What is being typed is given up; false when nothing is.
  virtual bool GiveUp() { return false; }
  /// The widget uses this key itself.
  virtual bool Keeps(host::Key /*key*/) const { return false; }
  /// F4 opens a lookup here.
  virtual bool HasLookup() const { return false; }
  /// The screen goes: the control is not touched any more.
  virtual void LetGo();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  /// Another widget that is a part of this one (a radio button, the viewport of a memo).
  void Watch(QWidget& part);
  /// A press enters the control; a button's does not, its click does.
  virtual bool EntersByPress() const { return true; }
  /// Alt and the letter that is underlined in `part`.
  virtual void Mnemonic(QObject* part);
  /// Of no use while the control is disabled; a list can still be scrolled and copied from.
  virtual bool Greys() const { return true; }
  /// The entries that a context menu shows below the control's own.
  virtual void AddStandardEntries(QMenu& /*menu*/) {}

  ScreenBindings& window_;

 private:
  bool OnMouse(QEvent& event);
  /// False when the control has no menu of its own.
  bool ShowMenu(QPoint at);

  host::Control& control_;
  QWidget& widget_;
  bool dead_press_ = false;
};

/// The binding for this control; null when the widget cannot show it.
std::unique_ptr<Binding> NewBinding(ScreenBindings& window, host::Control& control, QWidget& widget);

}  // namespace app::desktop
