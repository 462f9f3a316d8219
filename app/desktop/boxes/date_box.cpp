#include "app/desktop/boxes/date_box.h"

#include <QAction>
#include <QCalendarWidget>
#include <QDate>
#include <QDialog>
#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>
#include <optional>

#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/message_boxes.h"
#include "app/desktop/boxes/objection.h"
#include "host/date.h"

namespace app::desktop {
namespace {

class DateBox : public QDialog {
 public:
  DateBox(QWidget* parent, const QString& title, const QString& prompt) : QDialog(parent) {
    setObjectName(QStringLiteral("DateBox"));
    setWindowTitle(title);
    auto* label = new QLabel(prompt);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    input_->setPlaceholderText(QStringLiteral("DD/MM/AAAA"));
    label->setBuddy(input_);
    QAction* open = input_->addAction(QIcon(QStringLiteral(":/icons/calendar.svg")), QLineEdit::TrailingPosition);
    open->setToolTip(QStringLiteral("Calendário (F4)"));
    calendar_->hide();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);  // grows with the calendar and shrinks again
    layout->addWidget(label);
    layout->addWidget(input_);
    layout->addWidget(objection_);
    layout->addWidget(calendar_);
    layout->addWidget(buttons);

    connect(open, &QAction::triggered, this, [this] { ToggleCalendar(); });
    connect(new QShortcut(QKeySequence(Qt::Key_F4), this), &QShortcut::activated, this, [this] { ToggleCalendar(); });
    connect(calendar_, &QCalendarWidget::activated, this, [this](QDate date) { Take(date); });
    connect(calendar_, &QCalendarWidget::clicked, this, [this](QDate date) { Take(date); });
    connect(input_, &QLineEdit::textEdited, objection_, &ObjectionLabel::Clear);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    input_->setFocus();
  }

  QString Text() const { return input_->text().trimmed(); }

  void accept() override {
    if (Typed()) {
      QDialog::accept();
      return;
    }
    objection_->Show(
        Text().isEmpty() ? QStringLiteral("Digite a data.") : QStringLiteral("\"%1\" não é uma data.").arg(Text()),
        *input_);
  }

 private:
  std::optional<host::Date> Typed() const { return host::Date::FromDisplay(FromQt(Text())); }

  void ToggleCalendar() {
    if (calendar_->isVisible()) {
      calendar_->hide();
      input_->setFocus();
      return;
    }
    if (const auto date = Typed()) calendar_->setSelectedDate(QDate(date->Year(), date->Month(), date->Day()));
    calendar_->show();
    calendar_->setFocus();
  }

  void Take(QDate date) {
    input_->setText(date.toString(QStringLiteral("dd/MM/yyyy")));
    objection_->Clear();
    calendar_->hide();
    input_->setFocus();
  }

  QLineEdit* input_ = new QLineEdit;
  ObjectionLabel* objection_ = new ObjectionLabel;
  QCalendarWidget* calendar_ = new QCalendarWidget;
};

}  // namespace

QString AskDateText(QWidget* parent, const QString& title, const QString& prompt) {
  DateBox box(parent, title, prompt);
  return RunBox(box) == QDialog::Accepted ? box.Text() : QString();
}

}  // namespace app::desktop
