#include "app/desktop/boxes/error_box.h"

#if __has_include(<cxxabi.h>)
#include <cxxabi.h>
#endif

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <cstdlib>
#include <memory>
#include <typeinfo>

#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/message_boxes.h"
#include "host/errors.h"

namespace app::desktop {
namespace {

constexpr int kTextCharacters = 60;
constexpr int kDetailLines = 10;

QString KindOf(const std::exception& error) {
  const char* name = typeid(error).name();
#if __has_include(<cxxabi.h>)
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> readable(abi::__cxa_demangle(name, nullptr, nullptr, &status),
                                                        &std::free);
  if (status == 0) return QString::fromUtf8(readable.get());
#endif
  return QString::fromUtf8(name);
}

class ErrorBox : public QDialog {
 public:
  ErrorBox(QWidget* parent, const QString& title, const QString& sentence, const QString& details) : QDialog(parent) {
    setObjectName(QStringLiteral("ErrorBox"));
    setWindowTitle(title);
    auto* icon = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this).pixmap(size));
    auto* text = new QLabel(sentence);
    text->setObjectName(QStringLiteral("Sentence"));
    text->setTextFormat(Qt::PlainText);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text->setWordWrap(true);
    text->setMinimumWidth(kTextCharacters * fontMetrics().averageCharWidth());
    auto* shown = new QPlainTextEdit(details);
    shown->setObjectName(QStringLiteral("Details"));
    shown->setReadOnly(true);
    shown->setTabChangesFocus(true);
    shown->setFixedHeight(kDetailLines * fontMetrics().lineSpacing());
    shown->hide();

    auto* more = new QPushButton(QStringLiteral("&Detalhes"));
    more->setCheckable(true);
    more->setAutoDefault(false);
    auto* copy = new QPushButton(QStringLiteral("&Copiar"));
    copy->setAutoDefault(false);
    auto* ok = new QPushButton(QStringLiteral("&OK"));
    ok->setDefault(true);
    connect(more, &QPushButton::toggled, shown, &QWidget::setVisible);
    connect(copy, &QPushButton::clicked, this,
            [sentence, details] { QApplication::clipboard()->setText(sentence + QStringLiteral("\n\n") + details); });
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addWidget(text, 1);
    auto* bar = new QHBoxLayout;
    bar->addWidget(more);
    bar->addWidget(copy);
    bar->addStretch();
    bar->addWidget(ok);
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addLayout(top);
    layout->addWidget(shown);
    layout->addLayout(bar);
    ok->setFocus();
  }
};

}  // namespace

QString ErrorDetails(const std::exception& error) {
  if (const auto* database = dynamic_cast<const host::DatabaseError*>(&error)) {
    QString details = QStringLiteral("Erro do banco de dados %1").arg(database->Code());
    if (!database->Sql().empty()) details += QStringLiteral("\n\n") + ToQt(database->Sql());
    return details;
  }
  return KindOf(error) + QStringLiteral(": ") + QString::fromUtf8(error.what());
}

void ShowError(QWidget* parent, const QString& title, const std::exception& error) {
  ErrorBox box(parent, title, QString::fromUtf8(error.what()), ErrorDetails(error));
  RunBox(box);
}

}  // namespace app::desktop
