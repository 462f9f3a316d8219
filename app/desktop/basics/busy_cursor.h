// The pointer says that the program is working, as long as the object lives.
#pragma once

#include <QApplication>
#include <QCursor>

namespace app::desktop {

class BusyCursor {
 public:
  BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~BusyCursor() { QApplication::restoreOverrideCursor(); }
  BusyCursor(const BusyCursor&) = delete;
  BusyCursor& operator=(const BusyCursor&) = delete;
};

}  // namespace app::desktop
