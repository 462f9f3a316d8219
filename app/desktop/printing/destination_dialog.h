// Asks where a report goes on this station.
#pragma once

#include <QDialog>
#include <optional>

#include "app/printing/delivery/delivery.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace app::desktop {

class ObjectionLabel;

class DestinationDialog : public QDialog {
  Q_OBJECT

 public:
  struct Question {
    QString title;    // of the window
    QString report;   // named in the dialog
    char kind = 'W';  // 'W' or 'T': decides which destinations there are
    std::optional<printing::Choice> before;
    bool offer_remembering = true;  // else what is chosen is remembered in any case
    QString accept;                 // on the button
    bool both_kinds = false;        // the destination decides which; `kind` then only where a destination takes both
  };
  DestinationDialog(const Question& question, QWidget* parent);

  /// Valid after it was accepted.
  printing::Choice Chosen() const { return chosen_; }
  /// The print type for what was chosen: the question's, unless it was for both.
  char ChosenKind() const { return KindOf(chosen_.destination.kind); }
  bool Remember() const;

  void accept() override;

 private:
  void LayOut(const Question& question);
  void FillKinds();
  void FillPlaces();
  void Show(const std::optional<printing::Choice>& choice);
  void Browse();
  printing::Destination::Kind Kind() const;
  char KindOf(printing::Destination::Kind destination) const;

  char kind_;
  bool both_kinds_;
  QComboBox* kinds_;
  QComboBox* place_;
  QPushButton* browse_;
  QSpinBox* copies_;
  QCheckBox* remember_;
  ObjectionLabel* objection_;
  printing::Choice chosen_;
};

}  // namespace app::desktop
