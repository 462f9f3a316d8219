// A report before it goes to paper.
#pragma once

#include <QDialog>
#include <functional>
#include <optional>

#include "app/desktop/printing/page_view.h"
#include "app/equipment.h"
#include "app/printing/page/printout.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace app::desktop {

class PreviewDialog : public QDialog {
  Q_OBJECT

 public:
  /// What the buttons do. What they throw is told here, and the preview stays.
  struct Acts {
    /// Prints, after asking where when nothing is known of that or `ask`; nothing when the person gave up.
    std::function<std::optional<PrintJob>(bool ask)> print;
    /// Where Imprimir goes to; empty when it will ask.
    std::function<QString()> destination;
  };
  /// `printout` outlives the dialog and has pages. `settings` keeps the folder of the files saved here.
  PreviewDialog(const printing::Printout& printout, Acts acts, host::UserSettings& settings, QWidget* parent);

  /// What was printed or saved last.
  std::optional<PrintJob> Job() const { return job_; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* TopBar();
  QWidget* BottomBar();
  QToolButton* AddTool(QWidget* bar, const char* name, const QString& text, const QString& tip,
                       const std::function<void()>& act);
  QPushButton* AddButton(QWidget* bar, const char* name, const QString& text, const std::function<void()>& act);
  void AddKeys();
  void ShowPage();
  void ShowZoom();
  void ShowDestination();
  void TakeTypedPage();
  void TakeTypedZoom();
  void Print(bool ask);
  void SavePdf();
  void SaveSheet();
  QString AskFile(const QString& title, const QString& kinds, const QString& ending);
  void Guarded(const std::function<void()>& work);

  const printing::Printout& printout_;
  Acts acts_;
  host::UserSettings& settings_;
  std::optional<PrintJob> job_;
  PageView* view_;
  QLineEdit* page_;
  QLabel* pages_;
  QComboBox* zoom_;
  QLabel* note_;
  QToolButton* first_ = nullptr;
  QToolButton* previous_ = nullptr;
  QToolButton* next_ = nullptr;
  QToolButton* last_ = nullptr;
  QToolButton* fit_width_ = nullptr;
  QToolButton* fit_page_ = nullptr;
};

}  // namespace app::desktop
