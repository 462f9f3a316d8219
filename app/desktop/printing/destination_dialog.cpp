#include "app/desktop/printing/destination_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>
#include <vector>

#include "app/desktop/basics/busy_cursor.h"
#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/objection.h"
#include "app/printing/delivery/cups_queue.h"
#include "host/errors.h"

namespace app::desktop {
namespace {

using printing::Destination;
using DestinationKind = Destination::Kind;

constexpr int kPlaceCharacters = 44;

QString NameOf(DestinationKind kind) {
  switch (kind) {
    case DestinationKind::kPrinter:
      return QStringLiteral("Impressora deste computador");
    case DestinationKind::kQueue:
      return QStringLiteral("Fila de impressão, sem tratamento");
    case DestinationKind::kDevice:
      return QStringLiteral("Dispositivo ligado ao computador");
    case DestinationKind::kAddress:
      return QStringLiteral("Impressora na rede");
    case DestinationKind::kFile:
      return QStringLiteral("Arquivo ou pasta");
  }
  return {};
}

QString HintOf(DestinationKind kind) {
  switch (kind) {
    case DestinationKind::kPrinter:
      return QStringLiteral("Nome da impressora");
    case DestinationKind::kQueue:
      return QStringLiteral("Nome da fila");
    case DestinationKind::kDevice:
      return QStringLiteral("/dev/usb/lp0");
    case DestinationKind::kAddress:
      return QStringLiteral("10.0.0.7:9100");
    case DestinationKind::kFile:
      return QStringLiteral("Uma pasta recebe um arquivo por impressão");
  }
  return {};
}

// What this computer has to offer of a kind.
QStringList Offered(DestinationKind kind) {
  const BusyCursor busy;
  QStringList names;
  if (kind == DestinationKind::kPrinter) {
    for (const std::string& name : printing::PrinterNames()) names += ToQt(name);
  } else if (kind == DestinationKind::kQueue) {
    for (const std::string& name : printing::QueueNames()) names += ToQt(name);
  } else if (kind == DestinationKind::kDevice) {
    const QDir devices(QStringLiteral("/dev/usb"));
    for (const QString& name : devices.entryList({QStringLiteral("lp*")}, QDir::System))
      names += devices.filePath(name);
  }
  return names;
}

}  // namespace

DestinationDialog::DestinationDialog(const Question& question, QWidget* parent)
    : QDialog(parent),
      kind_(question.kind),
      both_kinds_(question.both_kinds),
      kinds_(new QComboBox),
      place_(new QComboBox),
      browse_(new QPushButton(QStringLiteral("Pro&curar..."))),
      copies_(new QSpinBox),
      remember_(new QCheckBox(QStringLiteral("&Lembrar para este relatório nesta estação"))),
      objection_(new ObjectionLabel) {
  setObjectName(QStringLiteral("DlgDestino"));
  setWindowTitle(question.title);
  LayOut(question);
  FillKinds();
  Show(question.before);
  connect(kinds_, &QComboBox::currentIndexChanged, this, [this] { FillPlaces(); });
  connect(place_, &QComboBox::editTextChanged, objection_, &ObjectionLabel::Clear);
  connect(browse_, &QPushButton::clicked, this, [this] { Browse(); });
}

void DestinationDialog::LayOut(const Question& question) {
  kinds_->setObjectName(QStringLiteral("CbTipo"));
  place_->setObjectName(QStringLiteral("CbLugar"));
  browse_->setObjectName(QStringLiteral("BtnProcurar"));
  browse_->setAutoDefault(false);
  copies_->setObjectName(QStringLiteral("EdtCopias"));
  copies_->setRange(1, printing::kMostCopies);
  remember_->setObjectName(QStringLiteral("CbLembrar"));
  remember_->setChecked(true);
  remember_->setVisible(question.offer_remembering);
  place_->setEditable(true);
  place_->setInsertPolicy(QComboBox::NoInsert);
  place_->setMinimumWidth(kPlaceCharacters * place_->fontMetrics().averageCharWidth());

  const bool only_text = question.kind == 'T' && !both_kinds_;
  auto* what = new QLabel(only_text ? QStringLiteral("%1 (texto)").arg(question.report) : question.report);
  what->setTextFormat(Qt::PlainText);
  QFont bold = what->font();
  bold.setBold(true);
  what->setFont(bold);
  auto* place = new QHBoxLayout;
  place->addWidget(place_, 1);
  place->addWidget(browse_);
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("Relatório"), what);
  form->addRow(QStringLiteral("I&mprimir em"), kinds_);
  auto* place_caption = new QLabel(QStringLiteral("&Destino"));
  place_caption->setBuddy(place_);
  form->addRow(place_caption, place);
  form->addRow(QStringLiteral("Có&pias"), copies_);
  auto* buttons = new QDialogButtonBox;
  auto* take = buttons->addButton(question.accept, QDialogButtonBox::AcceptRole);
  take->setObjectName(QStringLiteral("BtnOk"));
  take->setDefault(true);
  auto* give_up = buttons->addButton(QStringLiteral("Ca&ncelar"), QDialogButtonBox::RejectRole);
  give_up->setObjectName(QStringLiteral("BtnCancelar"));
  connect(buttons, &QDialogButtonBox::accepted, this, &DestinationDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(remember_);
  layout->addWidget(objection_);
  layout->addWidget(buttons);
}

void DestinationDialog::FillKinds() {
  for (const DestinationKind kind : {DestinationKind::kPrinter, DestinationKind::kAddress, DestinationKind::kDevice,
                                     DestinationKind::kQueue, DestinationKind::kFile}) {
    if (!both_kinds_ && !printing::Takes(kind, kind_)) continue;
    const bool told = both_kinds_ && KindOf(kind) == 'T';
    kinds_->addItem(told ? QStringLiteral("%1 (texto)").arg(NameOf(kind)) : NameOf(kind), static_cast<int>(kind));
  }
}

char DestinationDialog::KindOf(DestinationKind destination) const {
  return both_kinds_ ? printing::KindFor(destination, kind_) : kind_;
}

DestinationKind DestinationDialog::Kind() const { return static_cast<DestinationKind>(kinds_->currentData().toInt()); }

void DestinationDialog::FillPlaces() {
  const DestinationKind kind = Kind();
  place_->clear();
  place_->addItems(Offered(kind));
  place_->lineEdit()->setPlaceholderText(HintOf(kind));
  browse_->setVisible(kind == DestinationKind::kFile);
  copies_->setEnabled(kind != DestinationKind::kFile);
  objection_->Clear();
}

void DestinationDialog::Show(const std::optional<printing::Choice>& choice) {
  if (choice) kinds_->setCurrentIndex(kinds_->findData(static_cast<int>(choice->destination.kind)));
  FillPlaces();
  if (!choice) return;
  place_->setEditText(ToQt(choice->destination.place));
  copies_->setValue(choice->copies);
}

void DestinationDialog::Browse() {
  const QString kinds = kind_ == 'T' ? QStringLiteral("Texto (*.txt)") : QStringLiteral("PDF (*.pdf)");
  QFileDialog dialog(this, QStringLiteral("Imprimir em arquivo"), place_->currentText(), kinds);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);  // what stands there is replaced at every print anyway
  dialog.setDefaultSuffix(kind_ == 'T' ? QStringLiteral("txt") : QStringLiteral("pdf"));
  if (dialog.exec() == QDialog::Accepted) place_->setEditText(dialog.selectedFiles().value(0));
}

bool DestinationDialog::Remember() const { return remember_->isHidden() || remember_->isChecked(); }

void DestinationDialog::accept() {
  try {
    const Destination typed{Kind(), FromQt(place_->currentText().trimmed())};
    chosen_ = {printing::ParseDestination(printing::ToText(typed), KindOf(typed.kind)), copies_->value()};
  } catch (const host::InputError& error) {
    objection_->Show(QString::fromUtf8(error.what()), *place_->lineEdit());
    return;
  }
  QDialog::accept();
}

}  // namespace app::desktop
