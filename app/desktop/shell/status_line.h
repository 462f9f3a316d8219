// The status bar of the main window.
#pragma once

#include <QLabel>
#include <QStatusBar>
#include <optional>

#include "app/desktop/basics/busy_cursor.h"

namespace app::desktop {

/// Left the keys that do something where the focus is; right company, user and database. What was not possible takes
/// the left side for some seconds; what the program is busy with stands beside it.
class StatusLine : public QStatusBar {
  Q_OBJECT

 public:
  explicit StatusLine(QWidget* parent);

  void ShowWhere(const QString& company, const QString& user, const QString& database, const QString& full_path);
  void ShowKeys(const QString& keys);
  void ShowNotPossible(const QString& reason);
  /// Painted at once: the program does not come back to its windows before the work is done.
  void ShowBusy(bool on, const QString& text);
  bool Busy() const { return busy_cursor_.has_value(); }
  void ShowConnected(bool connected);

 private:
  QLabel* NewPart(const char* name);

  QLabel* keys_;
  QLabel* busy_;
  QLabel* connection_;
  QLabel* company_;
  QLabel* user_;
  QLabel* database_;
  std::optional<BusyCursor> busy_cursor_;
};

}  // namespace app::desktop
