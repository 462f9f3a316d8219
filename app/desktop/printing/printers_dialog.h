// Where this station prints what.
#pragma once

#include <QDialog>
#include <QString>
#include <functional>
#include <vector>

#include "app/application.h"
#include "app/printing/delivery/printer_choices.h"

class QLabel;
class QPushButton;
class QTableWidget;

namespace app::desktop {

/// Every report with its destination and copies; they are changed, forgotten and tried out here.
class PrintersDialog : public QDialog {
  Q_OBJECT

 public:
  PrintersDialog(Application& application, QWidget* parent);

 private:
  QTableWidget* NewTable();
  void Fill();
  const host::ListedReport* Listed(const printing::KnownReport& report) const;
  QString CaptionOf(const printing::KnownReport& report) const;
  /// True when the destination decides, and the report goes to one of the other print type.
  bool GoesOtherwise(const printing::KnownReport& report) const;
  QString WithoutPlace(const printing::KnownReport& report) const;
  void ShowRow(int row);
  void ShowButtons();
  const printing::KnownReport* Current() const;
  void Change();
  void Forget();
  void Try();
  void Guarded(const std::function<void()>& work);

  Application& application_;
  std::vector<printing::KnownReport> reports_;
  QTableWidget* table_;
  QPushButton* change_;
  QPushButton* forget_;
  QPushButton* try_;
  QLabel* note_;
};

}  // namespace app::desktop
