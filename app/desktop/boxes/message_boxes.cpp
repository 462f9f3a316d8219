#include "app/desktop/boxes/message_boxes.h"

#include <QApplication>
#include <QCursor>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <optional>

#include "app/desktop/boxes/code_guard.h"

namespace app::desktop {
namespace {

// A line to type is wide enough for a description.
constexpr int kInputCharacters = 40;

QMessageBox::Icon IconOf(host::Icon icon) {
  switch (icon) {
    case host::Icon::kInformation:
      return QMessageBox::Information;
    case host::Icon::kExclamation:
      return QMessageBox::Warning;
    case host::Icon::kQuestion:
      return QMessageBox::Question;
    case host::Icon::kError:
      return QMessageBox::Critical;
  }
  return QMessageBox::NoIcon;
}

// Nothing can be typed in it, so that whatever is typed is not meant for it.
bool OnlyAnswers(const QDialog& box) {
  return qobject_cast<const QMessageBox*>(&box) != nullptr || box.objectName() == QLatin1String("ErrorBox");
}

}  // namespace

QWidget* BoxParent() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* active = QApplication::activeWindow()) return active;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (qobject_cast<QMainWindow*>(window) != nullptr && window->isVisible()) return window;
  }
  return nullptr;
}

UsualCursor::UsualCursor() {
  for (; QApplication::overrideCursor() != nullptr; ++taken_away_) QApplication::restoreOverrideCursor();
}

UsualCursor::~UsualCursor() {
  for (; taken_away_ > 0; --taken_away_) QApplication::setOverrideCursor(Qt::WaitCursor);
}

int RunBox(QDialog& box) {
  const UsualCursor usual;
  std::optional<CodeGuard> guard;
  if (OnlyAnswers(box)) guard.emplace(box);
  const int result = box.exec();
  ActivateAgain(box.parentWidget());
  return result;
}

void ActivateAgain(QWidget* below) {
  const QWidget* active = QApplication::activeWindow();  // for a moment still the box that is gone
  if ((active == nullptr || !active->isVisible()) && below != nullptr) below->window()->activateWindow();
}

void ShowMessage(QWidget* parent, const QString& title, const QString& text, host::Icon icon) {
  QMessageBox box(IconOf(icon), title, text, QMessageBox::Ok, parent);
  box.setTextFormat(Qt::PlainText);
  RunBox(box);
}

bool AskYesNo(QWidget* parent, const QString& title, const QString& text) {
  QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, parent);
  box.setTextFormat(Qt::PlainText);
  box.button(QMessageBox::Yes)->setText(QStringLiteral("&Sim"));
  box.button(QMessageBox::No)->setText(QStringLiteral("&Não"));
  box.setDefaultButton(QMessageBox::No);
  box.setEscapeButton(QMessageBox::No);
  return RunBox(box) == QMessageBox::Yes;
}

std::optional<QString> AskText(QWidget* parent, const QString& title, const QString& prompt, const QString& proposed) {
  QDialog box(parent);
  box.setObjectName(QStringLiteral("InputBox"));
  box.setWindowTitle(title);
  auto* label = new QLabel(prompt);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  auto* input = new QLineEdit(proposed);
  input->setMinimumWidth(kInputCharacters * input->fontMetrics().averageCharWidth());
  input->selectAll();
  label->setBuddy(input);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &box, &QDialog::reject);
  auto* layout = new QVBoxLayout(&box);
  layout->addWidget(label);
  layout->addWidget(input);
  layout->addWidget(buttons);
  input->setFocus();
  if (RunBox(box) != QDialog::Accepted) return std::nullopt;
  return input->text();
}

}  // namespace app::desktop
