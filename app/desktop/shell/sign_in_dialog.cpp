#include "app/desktop/shell/sign_in_dialog.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QPushButton>
#include <QVBoxLayout>
#include <exception>
#include <utility>

#include "app/desktop/basics/busy_cursor.h"

namespace app::desktop {
namespace {

constexpr int kIconSize = 56;
constexpr int kInputCharacters = 30;
constexpr int kLongestName = 50;

}  // namespace

SignInDialog::SignInDialog(const QString& database, EnterHandler enter, QWidget* parent)
    : QDialog(parent), enter_(std::move(enter)) {
  setObjectName(QStringLiteral("SignInDialog"));
  setWindowTitle(QStringLiteral("Entrar no Tecelagem"));
  user_->setObjectName(QStringLiteral("User"));
  user_->setMaxLength(kLongestName);
  user_->setMinimumWidth(kInputCharacters * fontMetrics().averageCharWidth());
  password_->setObjectName(QStringLiteral("Password"));
  password_->setEchoMode(QLineEdit::Password);
  auto* where = new QLabel(database);
  where->setObjectName(QStringLiteral("Database"));
  where->setTextFormat(Qt::PlainText);
  where->setWordWrap(true);

  auto* icon = new QLabel;
  icon->setPixmap(QApplication::windowIcon().pixmap(kIconSize));
  auto* form = new QFormLayout;
  form->setLabelAlignment(Qt::AlignRight);
  form->addRow(QStringLiteral("&Usuário"), user_);
  form->addRow(QStringLiteral("&Senha"), password_);
  form->addRow(QStringLiteral("Banco de dados"), where);
  form->addRow(QString(), objection_);
  auto* top = new QHBoxLayout;
  top->setSpacing(16);
  top->addWidget(icon, 0, Qt::AlignTop);
  top->addLayout(form, 1);

  auto* other = new QPushButton(QStringLiteral("&Outro banco de dados..."));
  other->setObjectName(QStringLiteral("OtherDatabase"));
  auto* in = new QPushButton(QStringLiteral("&Entrar"));
  auto* leave = new QPushButton(QStringLiteral("&Cancelar"));
  other->setAutoDefault(false);
  leave->setAutoDefault(false);
  in->setDefault(true);
  connect(other, &QPushButton::clicked, this, [this] { done(kOtherDatabase); });
  connect(in, &QPushButton::clicked, this, &QDialog::accept);
  connect(leave, &QPushButton::clicked, this, &QDialog::reject);
  auto* bar = new QHBoxLayout;
  bar->addWidget(other);
  bar->addStretch();
  bar->addWidget(in);
  bar->addWidget(leave);

  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(14);
  layout->addLayout(top);
  layout->addLayout(bar);
}

void SignInDialog::Propose(const QString& user, const QString& password) {
  user_->setText(user);
  password_->setText(password);
  QLineEdit* const first = user.isEmpty() ? user_ : password_;
  first->setFocus();
  first->selectAll();
}

void SignInDialog::Object(const QString& sentence) {
  password_->clear();
  objection_->Show(sentence, *password_);
}

void SignInDialog::accept() {
  if (user_->text().trimmed().isEmpty()) {
    objection_->Show(QStringLiteral("Digite o nome do usuário."), *user_);
    return;
  }
  objection_->Clear();
  try {
    const BusyCursor busy;
    enter_(user_->text().trimmed(), password_->text());
  } catch (const std::exception& error) {
    Object(QString::fromUtf8(error.what()));
    return;
  }
  QDialog::accept();
}

}  // namespace app::desktop
