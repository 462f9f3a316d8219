// A walk through the windows that leaves a picture at each stop: `tour manual FOLDER` takes the pictures of the manual
// while somebody types an order and writes off its rolls by keyboard alone; `tour screens FOLDER [dark]` takes one of
// every screen. Offscreen, on a fresh demonstration mill at a set clock, so that the pictures are the same each time.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QApplication>
#include <QStringList>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>

#include "app/desktop/look/theme.h"
#include "app/mill/mill.h"
#include "desktop/support/desktop_mill.h"
#include "desktop/tour/camera.h"
#include "desktop/tour/devices.h"
#include "desktop/tour/walks.h"

namespace {

constexpr unsigned kMostSeconds = 240;  // the walk is stopped when it got stuck

/// A demonstration mill that goes with the object.
class Demo {
 public:
  Demo() : folder_(std::filesystem::temp_directory_path() / ("tecelagem-tour-" + std::to_string(::getpid()))) {
    std::filesystem::create_directories(folder_);
    app::firebird::ConnectOptions options;
    options.database = Path();
    app::mill::CreateDemo(options, "demo");
  }
  ~Demo() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  Demo(const Demo&) = delete;
  Demo& operator=(const Demo&) = delete;

  std::string Folder() const { return folder_.string(); }
  std::string Path() const { return (folder_ / "demo.fdb").string(); }

 private:
  std::filesystem::path folder_;
};

int Walk(const QStringList& words) {
  const bool screens = words.value(1) == QStringLiteral("screens");
  if (words.size() < 3 || (!screens && words.value(1) != QStringLiteral("manual"))) {
    std::cerr << "usage: tour manual FOLDER | tour screens FOLDER [dark]\n";
    return 2;
  }
  const Demo demo;
  const tour::Camera camera(words.value(2));
  tour::Devices devices(demo.Folder(), camera);
  {
    test::DesktopMill::Options options;
    options.mill.database = demo.Path();
    options.mill.equipment = &devices;
    test::DesktopMill mill(options);
    mill.GetMill().SetClock("2026-03-10 14:20:00");
    // The window came with the theme of the user's settings.
    app::desktop::ApplyTheme(words.value(3) == QStringLiteral("dark") ? app::desktop::Theme::kDark
                                                                      : app::desktop::Theme::kLight);
    // The display stays that of 1280 x 720 when everything on it is drawn larger.
    mill.Window().resize(mill.Window().size() / mill.Window().devicePixelRatio());
    if (screens) {
      tour::EveryScreen(mill, camera);
    } else {
      tour::Manual(mill, camera, devices);
    }
  }
  // A box that nobody expected was told there.
  return testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed() ? 1 : 0;
}

}  // namespace

int main(int count, char** values) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(count, values);
  QApplication::setQuitOnLastWindowClosed(false);
  ::alarm(kMostSeconds);
  app::desktop::PrepareLook();
  try {
    return Walk(QApplication::arguments());
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
