#include "app/desktop/password_dialog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <exception>

#include "app/desktop/message_boxes.h"
#include "app/desktop/objection.h"
#include "app/desktop/text.h"
#include "app/mill/passwords.h"

namespace app::desktop {
namespace {

QLineEdit* PasswordInput(const char* name) {
  auto* input = new QLineEdit;
  input->setObjectName(QLatin1String(name));
  input->setEchoMode(QLineEdit::Password);
  return input;
}

class PasswordDialog : public QDialog {
 public:
  PasswordDialog(QWidget* parent, firebird::Database& database, const std::string& user)
      : QDialog(parent), database_(database), user_(user) {
    setObjectName(QStringLiteral("PasswordDialog"));
    setWindowTitle(QStringLiteral("Alterar senha"));
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Senha &atual"), present_);
    form->addRow(QStringLiteral("Senha &nova"), fresh_);
    form->addRow(QStringLiteral("Senha nova, &outra vez"), again_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(objection_);
    layout->addWidget(buttons);
  }

  void accept() override {
    try {
      if (!mill::CheckPassword(database_, user_, FromQt(present_->text()))) {
        objection_->Show(QStringLiteral("A senha atual não é esta."), *present_);
      } else if (fresh_->text().isEmpty()) {
        objection_->Show(QStringLiteral("Digite a senha nova."), *fresh_);
      } else if (fresh_->text() != again_->text()) {
        objection_->Show(QStringLiteral("As duas senhas novas são diferentes."), *again_);
      } else {
        mill::SetPassword(database_, user_, FromQt(fresh_->text()));
        QDialog::accept();
      }
      database_.MakeDurable();
    } catch (const std::exception& error) {
      objection_->Show(QString::fromUtf8(error.what()), *fresh_);
    }
  }

 private:
  firebird::Database& database_;
  std::string user_;
  QLineEdit* present_ = PasswordInput("Present");
  QLineEdit* fresh_ = PasswordInput("Fresh");
  QLineEdit* again_ = PasswordInput("Again");
  ObjectionLabel* objection_ = new ObjectionLabel;
};

}  // namespace

void ChangePassword(QWidget* parent, firebird::Database& database, const std::string& user) {
  PasswordDialog dialog(parent, database, user);
  if (RunBox(dialog) == QDialog::Accepted) {
    ShowMessage(parent, QStringLiteral("Alterar senha"), QStringLiteral("A senha foi alterada."),
                host::Icon::kInformation);
  }
}

}  // namespace app::desktop
