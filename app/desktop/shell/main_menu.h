// The menu bar of the main window.
#pragma once

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QSet>
#include <functional>
#include <string>
#include <vector>

#include "app/application.h"
#include "app/desktop/look/theme.h"
#include "app/desktop/screens/screen_area.h"

namespace app::desktop {

class MainMenu : public QObject {
  Q_OBJECT

 public:
  /// The screens stand by heading, in the order given; those without heading are opened by others only.
  MainMenu(QMenuBar* bar, ScreenArea& area, const std::vector<MenuScreen>& screens);

  /// The boxes ticked, without telling anyone.
  void ShowMode(ScreenArea::Mode mode);
  void ShowTheme(Theme theme);
  /// Letters that the window in front answers to: a menu with the same one gives it up as long as that window is there,
  /// and is reached by Alt and the arrows.
  void Yield(const QSet<QChar>& letters);

 signals:
  void OpenWanted(const QString& screen_class);
  void ChangeUserWanted();
  void ThemeWanted(Theme theme);
  void ModeWanted(ScreenArea::Mode mode);
  void PrintersWanted();
  void QuitWanted();
  void KeysWanted();
  void AboutWanted();

 private:
  QMenu* AddMenu(const QString& title);
  void AddFile();
  void AddScreens(const std::vector<MenuScreen>& screens);
  void AddWindows();
  void AddHelp();
  void ListWindows();

  QMenuBar* bar_;
  ScreenArea& area_;
  QSet<QChar> taken_;
  QMenu* windows_ = nullptr;
  QAction* list_begin_ = nullptr;
  QActionGroup* modes_ = nullptr;
  QActionGroup* themes_ = nullptr;
  std::vector<QAction*> of_a_window_;
};

}  // namespace app::desktop
