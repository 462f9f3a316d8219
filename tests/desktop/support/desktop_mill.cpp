#include "desktop/support/desktop_mill.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTest>

#include "app/desktop/basics/text.h"

namespace test {

using app::desktop::ScreenWindow;

namespace {

QMenu* MenuOf(const QMainWindow& window, const QAction& action) {
  for (QMenu* menu : window.menuBar()->findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) {
    if (menu->actions().contains(&action)) return menu;
  }
  return nullptr;
}

QAction* ActionOf(const QMainWindow& window, std::string_view screen_class) {
  return window.menuBar()->findChild<QAction*>(app::desktop::ToQt(screen_class));
}

}  // namespace

DesktopMill::DesktopMill(const Options& options) {
  Mill::Options with_person = options.mill;
  with_person.person = &person_;
  mill_ = std::make_unique<Mill>(with_person);
  if (options.prepare) options.prepare(*mill_);
  ShowWindow();
}

DesktopMill::~DesktopMill() {
  window_.reset();
  mill_.reset();
  Settle();
}

void DesktopMill::ShowWindow() {
  window_ = std::make_unique<app::desktop::MainWindow>(mill_->App(), person_);
  window_->resize(1280, 720);
  window_->show();
  window_->activateWindow();
  if (!QTest::qWaitForWindowActive(window_.get())) throw std::runtime_error("the main window does not become active");
}

void DesktopMill::RestartWindow() {
  window_.reset();
  ShowWindow();
}

void DesktopMill::PickFromMenu(std::string_view screen_class) {
  QAction* action = ActionOf(*window_, screen_class);
  QMenu* menu = action != nullptr ? MenuOf(*window_, *action) : nullptr;
  if (menu == nullptr) throw std::runtime_error("not in the menu: " + std::string(screen_class));
  QMenuBar* bar = window_->menuBar();
  QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(menu->menuAction()).center());
  if (!WaitFor([menu] { return menu->isVisible(); })) throw std::runtime_error("the menu does not open");
  // A menu that closes leaves the keyboard with the window below it before its entry acts. Offscreen no window manager
  // sees to that.
  menu->close();
  window_->activateWindow();
  if (!QTest::qWaitForWindowActive(window_.get())) throw std::runtime_error("the main window does not become active");
  action->trigger();
  Settle();
}

bool DesktopMill::IsInMenu(std::string_view screen_class) const { return ActionOf(*window_, screen_class) != nullptr; }

host::Screen& DesktopMill::Open(std::string_view screen_class) {
  PickFromMenu(screen_class);
  host::Screen* screen = Desk().Find(screen_class);
  if (screen == nullptr) throw std::runtime_error("screen did not open: " + std::string(screen_class));
  return *screen;
}

ScreenWindow& DesktopMill::WindowOf(const host::Screen& screen) const {
  if (ScreenWindow* window = window_->WindowOf(screen.ClassName())) return *window;
  for (const QWidget* top : QApplication::topLevelWidgets()) {
    for (ScreenWindow* window : top->findChildren<ScreenWindow*>()) {
      if (top->isVisible() && &window->GetScreen() == &screen) return *window;
    }
  }
  throw std::runtime_error("no window shows " + screen.ClassName());
}

QWidget& DesktopMill::WidgetOf(const host::Screen& screen, std::string_view name) const {
  auto* widget = WindowOf(screen).findChild<QWidget*>(app::desktop::ToQt(name));
  if (widget == nullptr) throw std::runtime_error(screen.ClassName() + " has no widget " + std::string(name));
  return *widget;
}

QString DesktopMill::Status(const char* name) const {
  const auto* label = window_->statusBar()->findChild<QLabel*>(QLatin1String(name));
  if (label == nullptr) throw std::runtime_error(std::string("the status bar has no ") + name);
  return label->isHidden() ? QString() : label->text();
}

QString DesktopMill::StatusMessage() const { return window_->statusBar()->currentMessage(); }

}  // namespace test
