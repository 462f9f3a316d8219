#include "app/desktop/database_dialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <exception>

#include "app/desktop/busy_cursor.h"
#include "app/desktop/text.h"
#include "app/firebird/attachment.h"
#include "app/mill/mill.h"
#include "host/errors.h"

namespace app::desktop {
namespace {

constexpr int kInputCharacters = 48;
constexpr int kIndent = 24;
constexpr const char* kAdministrator = "ADMIN";
// The demonstration mill is for everyone to try.
constexpr const char* kDemoPassword = "demo";

// The folder of a file that is about to be made.
void MakeFolderOf(const QString& file) { QDir().mkpath(QFileInfo(file).absolutePath()); }

firebird::ConnectOptions At(const QString& file) {
  firebird::ConnectOptions options;
  options.database = FromQt(file);
  options.user = kAdministrator;
  return options;
}

}  // namespace

QString DatabaseDialog::MillFile(const QString& folder) {
  return QDir(folder).filePath(QStringLiteral("tecelagem.fdb"));
}

QString DatabaseDialog::DemoFile(const QString& folder) { return QDir(folder).filePath(QStringLiteral("demo.fdb")); }

DatabaseDialog::DatabaseDialog(const QString& folder, const QString& wanted, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("DatabaseDialog"));
  setWindowTitle(QStringLiteral("Banco de dados do Tecelagem"));
  auto* layout = new QVBoxLayout(this);
  objection_ = new ObjectionLabel(this);

  empty_ = AddChoice(*layout, QStringLiteral("&Começar uma tecelagem nova, vazia"), "NewMill");
  empty_file_ = AddInput(*layout, *empty_, QStringLiteral("Arquivo"), "NewFile");
  first_password_ = AddInput(*layout, *empty_, QStringLiteral("Senha do administrador, ADMIN"), "NewPassword");
  second_password_ = AddInput(*layout, *empty_, QStringLiteral("A mesma senha, outra vez"), "NewPasswordAgain");
  first_password_->setEchoMode(QLineEdit::Password);
  second_password_->setEchoMode(QLineEdit::Password);
  demo_ = AddChoice(*layout, QStringLiteral("Conhecer a tecelagem de &demonstração (usuário ADMIN, senha demo)"),
                    "DemoMill");
  demo_file_ = AddInput(*layout, *demo_, QStringLiteral("Arquivo"), "DemoFile");
  AddOpening(*layout);
  empty_file_->setText(wanted.isEmpty() ? MillFile(folder) : wanted);
  demo_file_->setText(DemoFile(folder));
  layout->addWidget(objection_);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  if (wanted.isEmpty()) {
    empty_->setChecked(true);
    first_password_->setFocus();
  } else {
    existing_->setChecked(true);
    objection_->Show(QStringLiteral("O banco de dados %1 não existe.").arg(wanted), *existing_name_);
  }
}

QRadioButton* DatabaseDialog::AddChoice(QVBoxLayout& layout, const QString& text, const char* name) {
  auto* choice = new QRadioButton(text, this);
  choice->setObjectName(QLatin1String(name));
  layout.addSpacing(4);
  layout.addWidget(choice);
  return choice;
}

QLineEdit* DatabaseDialog::AddInput(QVBoxLayout& layout, QRadioButton& choice, const QString& caption,
                                    const char* name) {
  auto* input = new QLineEdit;
  input->setObjectName(QLatin1String(name));
  input->setMinimumWidth(kInputCharacters * fontMetrics().averageCharWidth());
  input->setEnabled(false);
  auto* form = new QFormLayout;
  form->setContentsMargins(kIndent, 0, 0, 0);
  form->addRow(caption, input);
  layout.addLayout(form);
  connect(&choice, &QRadioButton::toggled, input, &QWidget::setEnabled);
  return input;
}

void DatabaseDialog::AddOpening(QVBoxLayout& layout) {
  existing_ = AddChoice(layout, QStringLiteral("&Abrir um banco de dados que já existe"), "Existing");
  existing_name_ = AddInput(layout, *existing_, QStringLiteral("Arquivo, ou servidor/porta:caminho"), "ExistingName");
  auto* browse = new QPushButton(QStringLiteral("&Procurar..."));
  browse->setAutoDefault(false);
  browse->setEnabled(false);
  auto* bar = new QHBoxLayout;
  bar->addStretch();
  bar->addWidget(browse);
  layout.addLayout(bar);
  connect(existing_, &QRadioButton::toggled, browse, &QWidget::setEnabled);
  connect(browse, &QPushButton::clicked, this, [this] {
    const QString file =
        QFileDialog::getOpenFileName(this, QStringLiteral("Abrir banco de dados"), existing_name_->text(),
                                     QStringLiteral("Bancos de dados (*.fdb);;Todos os arquivos (*)"));
    if (!file.isEmpty()) existing_name_->setText(file);
  });
}

void DatabaseDialog::accept() {
  objection_->Clear();
  QLineEdit* const input = empty_->isChecked() ? empty_file_ : demo_->isChecked() ? demo_file_ : existing_name_;
  input->setText(input->text().trimmed());
  if (input->text().isEmpty()) {
    objection_->Show(QStringLiteral("Diga qual é o banco de dados."), *input);
    return;
  }
  try {
    const BusyCursor busy;
    if (empty_->isChecked()) {
      MakeEmpty();
    } else if (demo_->isChecked()) {
      MakeDemo();
    } else {
      OpenExisting();
    }
  } catch (const std::exception& error) {
    objection_->Show(QString::fromUtf8(error.what()), *input);
    return;
  }
  if (!database_.empty()) QDialog::accept();
}

void DatabaseDialog::MakeEmpty() {
  if (first_password_->text().isEmpty()) {
    objection_->Show(QStringLiteral("A senha do administrador não pode ficar vazia."), *first_password_);
    return;
  }
  if (first_password_->text() != second_password_->text()) {
    objection_->Show(QStringLiteral("As duas senhas são diferentes."), *second_password_);
    return;
  }
  MakeFolderOf(empty_file_->text());
  mill::InitDatabase(At(empty_file_->text()), FromQt(first_password_->text()));
  database_ = FromQt(empty_file_->text());
  user_ = kAdministrator;
}

void DatabaseDialog::MakeDemo() {
  if (!QFileInfo::exists(demo_file_->text())) {
    MakeFolderOf(demo_file_->text());
    mill::CreateDemo(At(demo_file_->text()), kDemoPassword);
  }
  database_ = FromQt(demo_file_->text());
  user_ = kAdministrator;
  password_ = kDemoPassword;
}

void DatabaseDialog::OpenExisting() {
  const std::string name = FromQt(existing_name_->text());
  if (!firebird::IsServerPath(name) && !QFileInfo::exists(existing_name_->text())) {
    throw host::InputError("O banco de dados " + name + " não existe.");
  }
  database_ = name;
}

}  // namespace app::desktop
