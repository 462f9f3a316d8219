// One open screen: its form, with every widget bound to the component of the same name.
#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <memory>

#include "app/desktop/basics/station.h"
#include "host/kit/screen.h"

namespace app::desktop {

class ScreenBindings;

/// The desk owns the screen; this window must be gone before it. What the person does goes through the Station; what
/// the screen changes shows at once, focus and pages when the act has ended.
class ScreenWindow : public QWidget {
  Q_OBJECT

 public:
  ScreenWindow(Station& station, host::Screen& screen, QWidget* parent = nullptr);
  /// The same with that form instead of the one that belongs to the screen's class.
  ScreenWindow(Station& station, host::Screen& screen, std::unique_ptr<QWidget> form, QWidget* parent = nullptr);
  ~ScreenWindow() override;

  host::Screen& GetScreen() const { return screen_; }
  /// One line per component without a widget of its name, or with one that cannot show it; per widget that ought to be
  /// a component's and is none's; and per control that stands on another page than the screen says. Empty when all fit.
  /// Lookups, datasets and pop-up menus have no widget.
  QStringList Mismatches() const;
  /// Gives the keyboard to the widget of the control that the desk has its focus on, when that control is on this
  /// screen; otherwise the desk is asked to enter the control that had it here last, or the first tab stop. When
  /// another screen's input refuses to be left the keyboard stays there. In the middle of an act it is done when the
  /// act has ended.
  void TakeFocus();
  /// The keys that do something where the focus is, for the status bar: "F4 Pesquisa   F5 Captura Peso".
  QString KeysHere() const;
  /// The screen goes now, perhaps while a widget of this window is still in the middle of the click or key that made it
  /// go: from here on nothing in this window refers to the screen or its components. The dead widgets are deleted
  /// later.
  void LetGo();

 signals:
  /// The focus moved within the window: KeysHere has changed.
  void KeysChanged();

 protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  QPointer<Station> station_;
  host::Screen& screen_;
  std::unique_ptr<QWidget> form_;
  std::unique_ptr<ScreenBindings> bindings_;
};

}  // namespace app::desktop
