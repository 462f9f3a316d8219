#include "app/desktop/shell/database_dialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <exception>

#include "app/desktop/basics/busy_cursor.h"
#include "app/desktop/basics/text.h"
#include "app/firebird/attachment.h"
#include "app/mill/mill.h"
#include "host/errors.h"

namespace app::desktop {
namespace {

constexpr int kInputCharacters = 48;
constexpr int kIndent = 24;
constexpr int kGap = 10;
constexpr int kColumns = 3;
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
  auto* introduction = new QLabel(QStringLiteral("Com que banco de dados o programa vai trabalhar?"));
  layout->addWidget(introduction);
  auto* grid = new QGridLayout;
  grid->setColumnStretch(1, 1);
  layout->addLayout(grid);

  empty_ = AddChoice(*grid, QStringLiteral("&Começar uma tecelagem nova, vazia"), "NewMill");
  empty_file_ = AddInput(*grid, *empty_, QStringLiteral("Arquivo"), "NewFile");
  first_password_ = AddInput(*grid, *empty_, QStringLiteral("Senha do administrador, ADMIN"), "NewPassword");
  second_password_ = AddInput(*grid, *empty_, QStringLiteral("A mesma senha, outra vez"), "NewPasswordAgain");
  first_password_->setEchoMode(QLineEdit::Password);
  second_password_->setEchoMode(QLineEdit::Password);
  demo_ =
      AddChoice(*grid, QStringLiteral("Conhecer a tecelagem de &demonstração (usuário ADMIN, senha demo)"), "DemoMill");
  demo_file_ = AddInput(*grid, *demo_, QStringLiteral("Arquivo"), "DemoFile");
  AddOpening(*grid);
  empty_file_->setText(wanted.isEmpty() ? MillFile(folder) : wanted);
  demo_file_->setText(DemoFile(folder));
  layout->addWidget(objection_);
  layout->addSpacing(kGap);

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

QRadioButton* DatabaseDialog::AddChoice(QGridLayout& grid, const QString& text, const char* name) {
  auto* choice = new QRadioButton(text, this);
  choice->setObjectName(QLatin1String(name));
  const int row = grid.rowCount();
  grid.setRowMinimumHeight(row, choice->sizeHint().height() + kGap);
  grid.addWidget(choice, row, 0, 1, kColumns, Qt::AlignBottom);
  return choice;
}

QLineEdit* DatabaseDialog::AddInput(QGridLayout& grid, QRadioButton& choice, const QString& caption, const char* name) {
  auto* input = new QLineEdit;
  input->setObjectName(QLatin1String(name));
  input->setMinimumWidth(kInputCharacters * fontMetrics().averageCharWidth());
  input->setEnabled(false);
  auto* label = new QLabel(caption);
  label->setIndent(kIndent);
  label->setBuddy(input);
  const int row = grid.rowCount();
  grid.addWidget(label, row, 0, Qt::AlignRight);
  grid.addWidget(input, row, 1);
  connect(&choice, &QRadioButton::toggled, input, &QWidget::setEnabled);
  connect(&choice, &QRadioButton::toggled, label, &QWidget::setEnabled);
  label->setEnabled(false);
  return input;
}

void DatabaseDialog::AddOpening(QGridLayout& grid) {
  existing_ = AddChoice(grid, QStringLiteral("&Abrir um banco de dados que já existe"), "Existing");
  existing_name_ = AddInput(grid, *existing_, QStringLiteral("Arquivo ou servidor/porta:caminho"), "ExistingName");
  auto* browse = new QPushButton(QStringLiteral("&Procurar..."));
  browse->setAutoDefault(false);
  browse->setEnabled(false);
  grid.addWidget(browse, grid.rowCount() - 1, 2);
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
