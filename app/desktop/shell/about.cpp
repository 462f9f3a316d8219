#include "app/desktop/shell/about.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "app/desktop/boxes/message_boxes.h"

namespace app::desktop {
namespace {

constexpr int kIconSize = 64;

constexpr std::pair<const char*, const char*> kKeys[] = {
    {"Enter", "vai ao campo seguinte; num botão, aperta-o"},
    {"Tab, Shift+Tab", "campo seguinte, campo anterior"},
    {"Esc", "desiste do que está sendo digitado; numa lista, da linha"},
    {"F4", "abre a pesquisa do campo, quando há uma"},
    {"Seta para baixo", "numa lista: linha seguinte; na última, uma nova"},
    {"F2", "numa lista: abre a célula, com o que está nela"},
    {"Ctrl+Enter", "numa lista: sai dela, para o campo seguinte"},
    {"Ctrl+Del", "numa lista: exclui a linha"},
    {"Ctrl+F", "numa lista: filtra as linhas"},
    {"Ctrl+C, Ctrl+V", "copia e cola, numa lista como tabela"},
    {"Alt+letra", "o campo, botão ou menu com a letra sublinhada"},
    {"Alt", "vai ao menu; as setas escolhem"},
    {"Ctrl+Tab", "próxima janela"},
    {"Ctrl+W", "fecha a janela"},
    {"Ctrl+Q", "sai do programa"},
};

void RunWithOk(QDialog& box, QVBoxLayout& layout) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
  layout.addWidget(buttons);
  RunBox(box);
}

QLabel* Line(const QString& text) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  return label;
}

}  // namespace

void ShowAbout(QWidget* parent, const QString& database) {
  QDialog box(parent);
  box.setObjectName(QStringLiteral("AboutBox"));
  box.setWindowTitle(QStringLiteral("Sobre o Tecelagem"));
  auto* icon = new QLabel;
  icon->setPixmap(QApplication::windowIcon().pixmap(kIconSize));
  auto* name = Line(QStringLiteral("Tecelagem"));
  QFont large = name->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  name->setFont(large);
  auto* texts = new QVBoxLayout;
  texts->addWidget(name);
  const QString version = QApplication::applicationVersion();
  if (!version.isEmpty()) texts->addWidget(Line(QStringLiteral("Versão %1").arg(version)));
  texts->addWidget(Line(QStringLiteral("Ordens, reservas de fio, baixas e estoque de malha de uma tecelagem.")));
  texts->addWidget(Line(QStringLiteral("Banco de dados: %1").arg(database)));
  texts->addWidget(Line(QStringLiteral("Qt %1").arg(QLatin1String(qVersion()))));
  texts->addStretch();
  auto* top = new QHBoxLayout;
  top->setSpacing(16);
  top->addWidget(icon, 0, Qt::AlignTop);
  top->addLayout(texts);
  auto* layout = new QVBoxLayout(&box);
  layout->addLayout(top);
  RunWithOk(box, *layout);
}

void ShowKeysOfAllScreens(QWidget* parent) {
  QDialog box(parent);
  box.setObjectName(QStringLiteral("KeysBox"));
  box.setWindowTitle(QStringLiteral("Teclas"));
  auto* table = new QGridLayout;
  table->setHorizontalSpacing(24);
  int row = 0;
  for (const auto& [keys, meaning] : kKeys) {
    auto* label = Line(QString::fromUtf8(keys));
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    table->addWidget(label, row, 0);
    table->addWidget(Line(QString::fromUtf8(meaning)), row, 1);
    ++row;
  }
  auto* layout = new QVBoxLayout(&box);
  layout->addLayout(table);
  layout->addSpacing(8);
  layout->addWidget(Line(QStringLiteral("As teclas próprias de cada tela aparecem na barra de baixo.")));
  RunWithOk(box, *layout);
}

}  // namespace app::desktop
