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
#include "app/desktop/boxes/objection.h"

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

class InputBox : public QDialog {
 public:
  InputBox(QWidget* parent, const QString& title, const QString& prompt, const QString& proposed,
           const TextObjection& objection)
      : QDialog(parent), objection_to_(objection), input_(new QLineEdit(proposed)) {
    setObjectName(QStringLiteral("InputBox"));
    setWindowTitle(title);
    auto* label = new QLabel(prompt);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setBuddy(input_);
    input_->setMinimumWidth(kInputCharacters * input_->fontMetrics().averageCharWidth());
    input_->selectAll();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(input_, &QLineEdit::textEdited, objection_, &ObjectionLabel::Clear);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(input_);
    layout->addWidget(objection_);
    layout->addWidget(buttons);
    input_->setFocus();
  }

  QString Text() const { return input_->text(); }

  void accept() override {
    if (const auto objection = objection_to_(Text())) {
      objection_->Show(*objection, *input_);
    } else {
      QDialog::accept();
    }
  }

 private:
  const TextObjection& objection_to_;
  QLineEdit* input_;
  ObjectionLabel* objection_ = new ObjectionLabel;
};

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

std::optional<QString> AskText(QWidget* parent, const QString& title, const QString& prompt, const QString& proposed,
                               const TextObjection& objection) {
  InputBox box(parent, title, prompt, proposed, objection);
  if (RunBox(box) != QDialog::Accepted) return std::nullopt;
  return box.Text();
}

}  // namespace app::desktop
