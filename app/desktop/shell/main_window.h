// The main window: the menu of the screens, their windows, the status bar.
#pragma once

#include <QMainWindow>
#include <memory>

#include "app/application.h"
#include "app/desktop/basics/station.h"
#include "app/desktop/shell/window_person.h"

namespace app::desktop {

class ScreenWindow;

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// `person` is the one that the application was started with.
  MainWindow(Application& application, WindowPerson& person);
  ~MainWindow() override;

  Station& GetStation() { return station_; }
  /// The window of an open screen, by component or class name; null when it is not open.
  ScreenWindow* WindowOf(std::string_view name) const;
  /// The window was closed so that somebody else can sign in.
  bool ChangeUserWanted() const { return change_user_; }

 protected:
  /// Asks when a screen has unsaved work; closes every screen.
  void closeEvent(QCloseEvent* event) override;

 private:
  class Parts;
  Station station_;
  bool change_user_ = false;
  std::unique_ptr<Parts> parts_;
};

}  // namespace app::desktop
