// Who works here?
#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <functional>

#include "app/desktop/boxes/objection.h"

namespace app::desktop {

/// Name and password. `enter` lets the person in or throws why not, one sentence: it stands in the dialog, the name
/// stays, the password is typed again.
class SignInDialog : public QDialog {
  Q_OBJECT

 public:
  using EnterHandler = std::function<void(const QString& user, const QString& password)>;
  /// Besides Accepted and Rejected.
  static constexpr int kOtherDatabase = 2;

  SignInDialog(const QString& database, EnterHandler enter, QWidget* parent = nullptr);

  void Propose(const QString& user, const QString& password);
  /// Says why the person was not let in without being asked.
  void Object(const QString& sentence);

  void accept() override;

 private:
  EnterHandler enter_;
  QLineEdit* user_ = new QLineEdit;
  QLineEdit* password_ = new QLineEdit;
  ObjectionLabel* objection_ = new ObjectionLabel;
};

}  // namespace app::desktop
