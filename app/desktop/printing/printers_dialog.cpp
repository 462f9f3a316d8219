#include "app/desktop/printing/printers_dialog.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/desktop/basics/busy_cursor.h"
#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/message_boxes.h"
#include "app/desktop/printing/destination_dialog.h"
#include "app/printing/delivery/print_type.h"
#include "app/reports.h"
#include "host/errors.h"

namespace app::desktop {
namespace {

enum Column { kReport, kKind, kDestination, kCopies, kColumns };

QTableWidgetItem* Cell(const QString& text, Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter) {
  auto* item = new QTableWidgetItem(text);
  item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
  item->setTextAlignment(alignment);
  return item;
}

QPushButton* Button(const char* name, const QString& text) {
  auto* button = new QPushButton(text);
  button->setObjectName(QLatin1String(name));
  button->setAutoDefault(false);
  return button;
}

}  // namespace

PrintersDialog::PrintersDialog(Application& application, QWidget* parent)
    : QDialog(parent),
      application_(application),
      reports_(printing::KnownReports(application.Reports(), application.LayoutsFolder())),
      table_(NewTable()),
      change_(Button("BtnAlterar", QStringLiteral("&Alterar..."))),
      forget_(Button("BtnEsquecer", QStringLiteral("&Esquecer"))),
      try_(Button("BtnTestar", QStringLiteral("&Testar"))),
      note_(new QLabel) {
  setObjectName(QStringLiteral("DlgImpressoras"));
  setWindowTitle(QStringLiteral("Impressoras desta estação"));
  auto* close = Button("BtnFechar", QStringLiteral("&Fechar"));
  note_->setObjectName(QStringLiteral("LblNota"));
  note_->setTextFormat(Qt::PlainText);
  note_->setWordWrap(true);
  note_->setText(QStringLiteral("Um relatório sem destino pergunta quando é impresso."));
  auto* buttons = new QHBoxLayout;
  for (QPushButton* button : {change_, forget_, try_}) buttons->addWidget(button);
  buttons->addStretch(1);
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(table_, 1);
  layout->addWidget(note_);
  layout->addLayout(buttons);
  resize(fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 20);
  connect(change_, &QPushButton::clicked, this, [this] { Change(); });
  connect(forget_, &QPushButton::clicked, this, [this] { Forget(); });
  connect(try_, &QPushButton::clicked, this, [this] { Try(); });
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  connect(table_, &QTableWidget::cellActivated, this, [this] { Change(); });
  connect(table_, &QTableWidget::currentCellChanged, this, [this] { ShowButtons(); });
  Fill();
}

QTableWidget* PrintersDialog::NewTable() {
  auto* table = new QTableWidget(0, kColumns);
  table->setObjectName(QStringLiteral("TabImpressoras"));
  table->setHorizontalHeaderLabels(
      {QStringLiteral("Relatório"), QStringLiteral("Tipo"), QStringLiteral("Destino"), QStringLiteral("Cópias")});
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setSelectionMode(QAbstractItemView::SingleSelection);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setAlternatingRowColors(true);
  table->setTabKeyNavigation(false);
  table->verticalHeader()->hide();
  table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 8);
  table->horizontalHeader()->setHighlightSections(false);
  table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  table->horizontalHeader()->setSectionResizeMode(kDestination, QHeaderView::Stretch);
  table->horizontalHeaderItem(kReport)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  table->horizontalHeaderItem(kKind)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  table->horizontalHeaderItem(kDestination)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  table->horizontalHeaderItem(kCopies)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return table;
}

void PrintersDialog::Fill() {
  table_->setRowCount(static_cast<int>(reports_.size()));
  for (int row = 0; row < table_->rowCount(); ++row) ShowRow(row);
  // The header's own measure of itself leaves out the room that captions are given here.
  table_->horizontalHeader()->setSectionResizeMode(kCopies, QHeaderView::Fixed);
  table_->setColumnWidth(kCopies, table_->fontMetrics().horizontalAdvance(QStringLiteral("Cópias")) * 2);
  if (table_->rowCount() > 0) table_->setCurrentCell(0, kReport);
  ShowButtons();
}

const host::ListedReport* PrintersDialog::Listed(const printing::KnownReport& report) const {
  return FindReport(application_.Reports(), report.report);
}

QString PrintersDialog::CaptionOf(const printing::KnownReport& report) const {
  return ToQt(printing::ReportCaption(report.report, Listed(report)));
}

bool PrintersDialog::GoesOtherwise(const printing::KnownReport& report) const {
  if (!printing::DestinationDecides(Listed(report))) return false;
  const auto route = printing::ReadRoute(application_.GetUserSettings(), {report.report, 'W'}, Listed(report));
  return route && route->kind != report.kind;
}

QString PrintersDialog::WithoutPlace(const printing::KnownReport& report) const {
  if (!GoesOtherwise(report)) return QStringLiteral("Pergunta ao imprimir");
  return report.kind == 'T' ? QStringLiteral("Sai em páginas") : QStringLiteral("Sai em texto");
}

void PrintersDialog::ShowRow(int row) {
  const printing::KnownReport& report = reports_[static_cast<std::size_t>(row)];
  const auto choice = printing::ReadChoice(application_.GetUserSettings(), report);
  const bool used = choice && !GoesOtherwise(report);
  table_->setItem(row, kReport, Cell(CaptionOf(report)));
  table_->setItem(row, kKind, Cell(report.kind == 'T' ? QStringLiteral("Texto") : QStringLiteral("Páginas")));
  table_->setItem(row, kDestination, Cell(used ? ToQt(printing::Caption(choice->destination)) : WithoutPlace(report)));
  table_->setItem(row, kCopies,
                  Cell(used ? QString::number(choice->copies) : QString(), Qt::AlignRight | Qt::AlignVCenter));
}

const printing::KnownReport* PrintersDialog::Current() const {
  const int row = table_->currentRow();
  return row < 0 ? nullptr : &reports_[static_cast<std::size_t>(row)];
}

void PrintersDialog::ShowButtons() {
  const printing::KnownReport* report = Current();
  const bool known = report != nullptr && printing::ReadChoice(application_.GetUserSettings(), *report).has_value();
  change_->setEnabled(report != nullptr);
  forget_->setEnabled(known);
  try_->setEnabled(known);
}

void PrintersDialog::Guarded(const std::function<void()>& work) {
  try {
    work();
  } catch (const host::InputError& error) {
    ShowMessage(this, windowTitle(), QString::fromUtf8(error.what()), host::Icon::kExclamation);
  }
  // All of them: a choice for the text of a report may have ended that for its pages.
  for (int row = 0; row < table_->rowCount(); ++row) ShowRow(row);
  ShowButtons();
}

void PrintersDialog::Change() {
  const printing::KnownReport* report = Current();
  if (report == nullptr) return;
  host::UserSettings& settings = application_.GetUserSettings();
  DestinationDialog::Question question;
  question.title = QStringLiteral("Alterar impressora");
  question.report = CaptionOf(*report);
  question.kind = report->kind;
  question.before = printing::ReadChoice(settings, *report);
  question.offer_remembering = false;
  question.accept = QStringLiteral("&Gravar");
  DestinationDialog dialog(question, this);
  if (RunBox(dialog) != QDialog::Accepted) return;
  Guarded([&] { printing::StoreRoute(settings, report->report, {report->kind, dialog.Chosen()}, Listed(*report)); });
}

void PrintersDialog::Forget() {
  if (const printing::KnownReport* report = Current()) {
    Guarded([&] { printing::ForgetChoice(application_.GetUserSettings(), *report); });
  }
}

void PrintersDialog::Try() {
  const printing::KnownReport* report = Current();
  const auto choice = report != nullptr ? printing::ReadChoice(application_.GetUserSettings(), *report) : std::nullopt;
  if (!choice) return;
  Guarded([&] {
    const BusyCursor busy;
    const std::string where = printing::Caption(choice->destination);
    const std::string moment = application_.GetClock().Now().ToIso();
    const PrintJob job =
        printing::Deliver(printing::TestPrintout(report->kind, where, moment), {choice->destination, 1});
    const QString sent = ToQt(job.file.empty() ? where : job.file);
    note_->setText(
        report->kind == 'T'
            ? QStringLiteral("Texto de teste enviado: %1. Uma impressora de etiquetas pode não mostrá-lo.").arg(sent)
            : QStringLiteral("Página de teste enviada: %1.").arg(sent));
  });
}

}  // namespace app::desktop
