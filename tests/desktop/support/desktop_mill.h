// A fresh mill with its main window before it, and the hands of a person.
#pragma once

#include <QMainWindow>
#include <QString>
#include <QWidget>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "app/desktop/grid/grid_panel.h"
#include "app/desktop/screens/screen_window.h"
#include "app/desktop/shell/main_window.h"
#include "app/desktop/shell/window_person.h"
#include "desktop/support/boxes.h"
#include "desktop/support/keys.h"
#include "support/mill.h"

namespace test {

/// The main window is shown at 1280 x 720 and active. Every box must be expected; see Boxes.
class DesktopMill {
 public:
  struct Options {
    Mill::Options mill = {};
    std::function<void(Mill&)> prepare = {};  // fills the database before the window opens; FillSmallMill, say
  };
  DesktopMill() : DesktopMill(Options()) {}
  explicit DesktopMill(const Options& options);
  ~DesktopMill();

  Mill& GetMill() { return *mill_; }
  app::desktop::WindowPerson& Person() { return person_; }
  app::desktop::MainWindow& Window() { return *window_; }
  app::desktop::Station& GetStation() { return window_->GetStation(); }
  host::Desk& Desk() { return mill_->Desk(); }
  Boxes& GetBoxes() { return boxes_; }
  /// The main window goes and comes again on the same program, as after signing in once more.
  void RestartWindow();

  void ExpectBox(const QString& part, Reply reply = Reply::kOk) { boxes_.Expect(part, reply); }

  /// Clicks the entry of the screen in the menu bar. Throws when it is not there; see IsInMenu.
  void PickFromMenu(std::string_view screen_class);
  bool IsInMenu(std::string_view screen_class) const;
  /// PickFromMenu, and the screen that it opened or brought forward. Throws when it did not open.
  host::Screen& Open(std::string_view screen_class);

  /// The window of an open screen, modal ones too. Throws when there is none.
  app::desktop::ScreenWindow& WindowOf(const host::Screen& screen) const;
  /// The widget of a component. Throws when there is none.
  QWidget& WidgetOf(const host::Screen& screen, std::string_view name) const;
  template <typename T>
  T& WidgetOf(const host::Screen& screen, std::string_view name) const {
    auto* widget = qobject_cast<T*>(&WidgetOf(screen, name));
    if (widget == nullptr) throw std::runtime_error("another kind of widget: " + std::string(name));
    return *widget;
  }
  app::desktop::GridPanel& GridOf(const host::Screen& screen, std::string_view name) const {
    return WidgetOf<app::desktop::GridPanel>(screen, name);
  }
  void ClickOn(const host::Screen& screen, std::string_view name) { test::ClickOn(WidgetOf(screen, name)); }
  /// What a label of the status bar shows: "StatusKeys", "StatusUser" ...; empty while it is hidden.
  QString Status(const char* name) const;
  /// What the status bar says for some seconds.
  QString StatusMessage() const;

 private:
  void ShowWindow();

  Boxes boxes_;
  app::desktop::WindowPerson person_;
  std::unique_ptr<Mill> mill_;
  std::unique_ptr<app::desktop::MainWindow> window_;
};

}  // namespace test
