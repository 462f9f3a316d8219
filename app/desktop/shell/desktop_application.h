// The Qt application of the windows.
#pragma once

#include <QApplication>

namespace app::desktop {

/// An exception that a window let through is told in a box, and the program goes on: none may cross Qt's event loop.
class DesktopApplication : public QApplication {
  Q_OBJECT

 public:
  DesktopApplication(int& count, char** values);

  bool notify(QObject* receiver, QEvent* event) override;

 private:
  void Tell(const std::exception& error);

  bool telling_ = false;
};

}  // namespace app::desktop
