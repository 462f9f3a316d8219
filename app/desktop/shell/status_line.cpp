#include "app/desktop/shell/status_line.h"

namespace app::desktop {
namespace {

constexpr int kNotPossibleMilliseconds = 6000;

}  // namespace

StatusLine::StatusLine(QWidget* parent) : QStatusBar(parent) {
  keys_ = new QLabel(this);
  keys_->setObjectName(QStringLiteral("StatusKeys"));
  keys_->setTextFormat(Qt::PlainText);
  // A long line of keys must not make the window wider than the screen.
  keys_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  keys_->setContentsMargins(8, 0, 0, 0);
  addWidget(keys_, 1);
  busy_ = NewPart("StatusBusy");
  connection_ = NewPart("StatusConnection");
  company_ = NewPart("StatusCompany");
  user_ = NewPart("StatusUser");
  database_ = NewPart("StatusDatabase");
  connection_->setText(QStringLiteral("sem conexão"));
  busy_->hide();
  connection_->hide();
}

QLabel* StatusLine::NewPart(const char* name) {
  auto* part = new QLabel(this);
  part->setObjectName(QLatin1String(name));
  part->setTextFormat(Qt::PlainText);
  part->setContentsMargins(6, 0, 6, 0);
  addPermanentWidget(part);
  return part;
}

void StatusLine::ShowWhere(const QString& company, const QString& user, const QString& database,
                           const QString& full_path) {
  company_->setText(QStringLiteral("Empresa %1").arg(company));
  user_->setText(user);
  user_->setToolTip(QStringLiteral("Usuário"));
  database_->setText(database);
  database_->setToolTip(QStringLiteral("Banco de dados: %1").arg(full_path));
}

void StatusLine::ShowKeys(const QString& keys) { keys_->setText(keys); }

void StatusLine::ShowNotPossible(const QString& reason) {
  QString sentence = reason;
  if (!sentence.isEmpty()) sentence[0] = sentence[0].toUpper();
  if (!sentence.endsWith(u'.')) sentence += u'.';
  showMessage(sentence, kNotPossibleMilliseconds);
}

void StatusLine::ShowBusy(bool on, const QString& text) {
  if (on) {
    if (!busy_cursor_) busy_cursor_.emplace();
    busy_->setText(text.isEmpty() ? QStringLiteral("Trabalhando...") : text);
  } else {
    busy_cursor_.reset();
  }
  busy_->setVisible(on);
  repaint();
}

void StatusLine::ShowConnected(bool connected) { connection_->setVisible(!connected); }

}  // namespace app::desktop
