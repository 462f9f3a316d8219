// All bindings of one window, and the keyboard that goes where the desk's focus is.
#pragma once

#include <QHash>
#include <QKeyEvent>
#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "app/desktop/basics/station.h"
#include "app/desktop/bindings/binding.h"
#include "host/kit/screen.h"

namespace app::desktop {

class ScreenBindings : public QObject {
  Q_OBJECT

 public:
  using Act = std::function<host::ActResult()>;

  /// `window` is around the form and has the keyboard when no widget of the form can have it.
  ScreenBindings(Station& station, host::Screen& screen, QWidget& window, QWidget& form);
  ~ScreenBindings() override;

  Station& GetStation() const { return station_; }
  host::Desk& Desk() const { return station_.Desk(); }
  host::Screen& GetScreen() const { return screen_; }

  /// Nothing here touches the screen from now on.
  void LetGo();
  bool Gone() const { return gone_; }
  /// An event of one of the widgets is being worked on: whoever deletes must do it later.
  bool Inside() const { return inside_ > 0; }

  /// An act of the person, see Station; none when the screen went meanwhile. Afterwards ask Gone.
  bool Do(const Act& act);
  bool DoTyping(const Act& act);
  /// The control is entered unless it has the focus already.
  bool Enter(host::Control& control);
  bool HasFocus(const host::Control& control) const;
  /// A key of the person in that widget (null: in none of them); true when it was used.
  bool PressKey(Binding* where, const QKeyEvent& event);
  /// The person could not get away: what stands in the input can be typed anew.
  void Refused();
  /// The person turned to another page.
  bool ChoosePage(host::PageControl& pages, int page);
  /// The page after the one in sight, or the one before; the innermost page control around the focus.
  void TurnPage(bool back);
  /// How often this window was blocked by a box so far.
  int Interruptions() const { return interruptions_; }
  void Interrupted() { ++interruptions_; }

  /// The keyboard goes to the widget of the control that has the desk's focus.
  void FollowDesk();
  /// Qt gave the keyboard to a widget without anybody asking the desk.
  void KeyboardCame(Binding& binding);
  void TakeFocus();
  void Fit();

  Binding* Of(const host::Control* control) const;
  const std::vector<std::unique_ptr<Binding>>& Bindings() const { return bindings_; }
  const QList<QLabel*>& CaptionsOf(const QWidget& widget) const;
  QString KeysHere() const;
  QStringList Mismatches() const;

 signals:
  void KeysChanged();

 private:
  void Bind();
  void FindCaptions();
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool MayAct() const;
  void MoveOn();
  void TellKeys();

  Station& station_;
  host::Screen& screen_;
  QWidget& window_;
  QWidget& form_;
  std::vector<std::unique_ptr<Binding>> bindings_;
  QHash<const host::Control*, Binding*> by_control_;
  QHash<const QWidget*, QList<QLabel*>> captions_;
  QStringList form_differs_;    // what the form said otherwise before the screen's captions were put in
  Binding* current_ = nullptr;  // had the desk's focus when it was last looked at
  Binding* last_ = nullptr;     // the last of this window that had it
  bool mine_ = false;           // the desk's focus is, or was last, on this screen
  bool wanted_ = false;         // the keyboard was asked for in the middle of an act
  bool following_ = false;
  bool moving_ = false;
  bool gone_ = false;
  int inside_ = 0;
  int interruptions_ = 0;
  QString keys_;
};

}  // namespace app::desktop
