#include "app/desktop/printing/preview_dialog.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QShortcut>
#include <QShowEvent>
#include <QStandardPaths>
#include <QToolButton>
#include <QVBoxLayout>
#include <array>
#include <cmath>
#include <utility>

#include "app/desktop/basics/busy_cursor.h"
#include "app/desktop/basics/settings.h"
#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/message_boxes.h"
#include "app/desktop/grid/table_export.h"
#include "app/desktop/printing/data_tables.h"
#include "app/printing/delivery/delivery.h"
#include "app/printing/page/pdf.h"
#include "host/errors.h"

namespace app::desktop {
namespace {

constexpr std::array kZooms = {50, 75, 100, 125, 150, 200, 300};
constexpr QSize kFirstSize(1000, 720);
constexpr const char* kPreviewSection = "Visualizar";
constexpr const char* kFolderName = "Pasta";

// A pressed button of the style is hardly told from the others on a dark ground.
void ShowChosen(QToolButton& button, bool chosen) {
  button.setChecked(chosen);
  const QPalette usual = QApplication::palette();
  QPalette colors = usual;
  if (chosen) {
    colors.setColor(QPalette::Button, usual.color(QPalette::Highlight));
    colors.setColor(QPalette::ButtonText, usual.color(QPalette::HighlightedText));
  }
  button.setPalette(colors);
}

QWidget* Bar(QHBoxLayout*& row) {
  auto* bar = new QWidget;
  row = new QHBoxLayout(bar);
  row->setContentsMargins(10, 8, 10, 8);
  row->setSpacing(6);
  return bar;
}

}  // namespace

PreviewDialog::PreviewDialog(const printing::Printout& printout, Acts acts, host::UserSettings& settings,
                             QWidget* parent)
    : QDialog(parent),
      printout_(printout),
      acts_(std::move(acts)),
      settings_(settings),
      view_(new PageView(printout)),
      page_(new QLineEdit),
      pages_(new QLabel),
      zoom_(new QComboBox),
      note_(new QLabel) {
  setObjectName(QStringLiteral("DlgVisualizar"));
  setWindowTitle(QStringLiteral("Visualizar: %1").arg(ToQt(printout.title.empty() ? printout.report : printout.title)));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  setSizeGripEnabled(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(TopBar());
  layout->addWidget(view_, 1);
  layout->addWidget(BottomBar());
  AddKeys();
  connect(view_, &PageView::PageChanged, this, [this] { ShowPage(); });
  connect(view_, &PageView::ZoomChanged, this, [this] { ShowZoom(); });
  // As large as the window that it was asked for in: a page is large.
  const QSize room = parent != nullptr ? parent->window()->size() * 19 / 20 : kFirstSize;
  resize(room.expandedTo(QSize(640, 480)));
  ShowPage();
  ShowDestination();
}

void PreviewDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  // A label is small: no larger than life at first.
  view_->SetFit(PageView::Fit::kWidth);
  if (view_->Zoom() > 1.5) view_->SetFit(PageView::Fit::kPage);
  if (view_->Zoom() > 2) view_->SetZoom(2);
  view_->setFocus();
}

QToolButton* PreviewDialog::AddTool(QWidget* bar, const char* name, const QString& text, const QString& tip,
                                    const std::function<void()>& act) {
  auto* button = new QToolButton;
  button->setObjectName(QLatin1String(name));
  button->setText(text);
  button->setToolTip(tip);
  button->setFocusPolicy(Qt::NoFocus);
  button->setMinimumWidth(button->fontMetrics().height() * 2);
  connect(button, &QToolButton::clicked, this, act);
  bar->layout()->addWidget(button);
  return button;
}

QWidget* PreviewDialog::TopBar() {
  QHBoxLayout* row = nullptr;
  QWidget* bar = Bar(row);
  first_ = AddTool(bar, "BtnPrimeira", QStringLiteral("«"), QStringLiteral("Primeira página (Home)"),
                   [this] { view_->GoTo(0); });
  previous_ = AddTool(bar, "BtnAnterior", QStringLiteral("‹"), QStringLiteral("Página anterior (PgUp)"),
                      [this] { view_->GoTo(view_->CurrentPage() - 1); });
  auto* caption = new QLabel(QStringLiteral("Pá&gina"));
  caption->setBuddy(page_);
  page_->setObjectName(QStringLiteral("EdtPagina"));
  page_->setValidator(new QIntValidator(1, std::max(1, view_->PageCount()), page_));
  page_->setAlignment(Qt::AlignRight);
  page_->setFixedWidth(page_->fontMetrics().horizontalAdvance(QStringLiteral("0000000")));
  connect(page_, &QLineEdit::editingFinished, this, [this] { TakeTypedPage(); });
  pages_->setObjectName(QStringLiteral("LblPaginas"));
  row->addWidget(caption);
  row->addWidget(page_);
  row->addWidget(pages_);
  next_ = AddTool(bar, "BtnProxima", QStringLiteral("›"), QStringLiteral("Próxima página (PgDn)"),
                  [this] { view_->GoTo(view_->CurrentPage() + 1); });
  last_ = AddTool(bar, "BtnUltima", QStringLiteral("»"), QStringLiteral("Última página (End)"),
                  [this] { view_->GoTo(view_->PageCount() - 1); });
  row->addStretch(1);
  AddTool(bar, "BtnReduzir", QStringLiteral("−"), QStringLiteral("Reduzir (-)"), [this] { view_->ZoomStep(-1); });
  zoom_->setObjectName(QStringLiteral("CbZoom"));
  zoom_->setEditable(true);
  zoom_->setInsertPolicy(QComboBox::NoInsert);
  zoom_->setToolTip(QStringLiteral("Tamanho na tela"));
  for (const int zoom : kZooms) zoom_->addItem(QStringLiteral("%1%").arg(zoom));
  zoom_->setFixedWidth(zoom_->fontMetrics().horizontalAdvance(QStringLiteral("0000%")) * 2);
  connect(zoom_, &QComboBox::activated, this, [this] { TakeTypedZoom(); });
  connect(zoom_->lineEdit(), &QLineEdit::returnPressed, this, [this] { TakeTypedZoom(); });
  row->addWidget(zoom_);
  AddTool(bar, "BtnAmpliar", QStringLiteral("+"), QStringLiteral("Ampliar (+)"), [this] { view_->ZoomStep(1); });
  fit_width_ = AddTool(bar, "BtnLargura", QStringLiteral("Largura"), QStringLiteral("Largura da janela (Ctrl+1)"),
                       [this] { view_->SetFit(PageView::Fit::kWidth); });
  fit_page_ = AddTool(bar, "BtnInteira", QStringLiteral("Inteira"), QStringLiteral("Página inteira (Ctrl+2)"),
                      [this] { view_->SetFit(PageView::Fit::kPage); });
  fit_width_->setCheckable(true);
  fit_page_->setCheckable(true);
  return bar;
}

QPushButton* PreviewDialog::AddButton(QWidget* bar, const char* name, const QString& text,
                                      const std::function<void()>& act) {
  auto* button = new QPushButton(text);
  button->setObjectName(QLatin1String(name));
  // Enter belongs to the inputs above.
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, act);
  bar->layout()->addWidget(button);
  return button;
}

QWidget* PreviewDialog::BottomBar() {
  QHBoxLayout* row = nullptr;
  QWidget* bar = Bar(row);
  AddButton(bar, "BtnImprimir", QStringLiteral("&Imprimir"), [this] {
    Print(false);
  })->setToolTip(QStringLiteral("Ctrl+P"));
  AddButton(bar, "BtnImpressora", QStringLiteral("Im&pressora..."), [this] {
    Print(true);
  })->setToolTip(QStringLiteral("Escolhe a impressora e as cópias, e imprime"));
  AddButton(bar, "BtnPdf", QStringLiteral("P&DF..."), [this] { SavePdf(); });
  AddButton(bar, "BtnPlanilha", QStringLiteral("Pla&nilha..."), [this] {
    SaveSheet();
  })->setEnabled(!printout_.tables.empty());
  note_->setObjectName(QStringLiteral("LblNota"));
  note_->setTextFormat(Qt::PlainText);
  note_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  row->addWidget(note_, 1);
  AddButton(bar, "BtnFechar", QStringLiteral("&Fechar"), [this] { reject(); });
  return bar;
}

void PreviewDialog::AddKeys() {
  const auto add = [this](const QKeySequence& keys, const std::function<void()>& act) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
  };
  add(QKeySequence(Qt::CTRL | Qt::Key_P), [this] { Print(false); });
  add(QKeySequence(Qt::CTRL | Qt::Key_1), [this] { view_->SetFit(PageView::Fit::kWidth); });
  add(QKeySequence(Qt::CTRL | Qt::Key_2), [this] { view_->SetFit(PageView::Fit::kPage); });
  add(QKeySequence(Qt::CTRL | Qt::Key_0), [this] { view_->SetZoom(1); });
  add(QKeySequence(Qt::Key_PageDown), [this] { view_->GoTo(view_->CurrentPage() + 1); });
  add(QKeySequence(Qt::Key_PageUp), [this] { view_->GoTo(view_->CurrentPage() - 1); });
}

void PreviewDialog::ShowPage() {
  const int page = view_->CurrentPage();
  page_->setText(QString::number(page + 1));
  pages_->setText(QStringLiteral("de %1").arg(view_->PageCount()));
  for (QToolButton* button : {first_, previous_}) button->setEnabled(page > 0);
  for (QToolButton* button : {next_, last_}) button->setEnabled(page + 1 < view_->PageCount());
}

void PreviewDialog::ShowZoom() {
  zoom_->setEditText(QStringLiteral("%1%").arg(std::lround(view_->Zoom() * 100)));
  ShowChosen(*fit_width_, view_->GetFit() == PageView::Fit::kWidth);
  ShowChosen(*fit_page_, view_->GetFit() == PageView::Fit::kPage);
}

void PreviewDialog::ShowDestination() {
  const QString where = acts_.destination();
  note_->setText(where.isEmpty() ? QString() : QStringLiteral("Imprime em: %1").arg(where));
}

void PreviewDialog::TakeTypedPage() {
  const int page = page_->text().toInt();
  if (page >= 1) view_->GoTo(page - 1);
  ShowPage();
  view_->setFocus();
}

void PreviewDialog::TakeTypedZoom() {
  bool is_number = false;
  const double percent = zoom_->currentText().remove(u'%').trimmed().replace(u',', u'.').toDouble(&is_number);
  if (is_number && percent > 0) {
    view_->SetZoom(percent / 100);
  } else {
    ShowZoom();
  }
  view_->setFocus();
}

void PreviewDialog::Guarded(const std::function<void()>& work) {
  try {
    work();
  } catch (const host::InputError& error) {
    ShowMessage(this, windowTitle(), QString::fromUtf8(error.what()), host::Icon::kExclamation);
  }
}

void PreviewDialog::Print(bool ask) {
  Guarded([&] {
    const auto job = acts_.print(ask);
    if (!job) return;
    job_ = job;
    accept();
  });
}

QString PreviewDialog::AskFile(const QString& title, const QString& kinds, const QString& ending) {
  QString folder = ToQt(settings_.Read(kSettingsKey, kPreviewSection, kFolderName).value_or(""));
  if (folder.isEmpty() || !QDir(folder).exists()) {
    folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  }
  QFileDialog dialog(this, title, folder, kinds);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(ending);
  dialog.selectFile(ToQt(printout_.report) + u'.' + ending);
  return RunBox(dialog) == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void PreviewDialog::SavePdf() {
  const QString path = AskFile(QStringLiteral("Gravar PDF"), QStringLiteral("PDF (*.pdf)"), QStringLiteral("pdf"));
  if (path.isEmpty()) return;
  Guarded([&] {
    const BusyCursor busy;
    printing::WritePdf(printout_, FromQt(path));
    job_ = PrintJob{printout_.report, printing::KindOf(printout_), FromQt(path), {}};
    note_->setText(QStringLiteral("Gravado: %1").arg(path));
    settings_.Write(kSettingsKey, kPreviewSection, kFolderName, FromQt(QFileInfo(path).absolutePath()));
  });
}

void PreviewDialog::SaveSheet() {
  const QString path =
      AskFile(QStringLiteral("Gravar planilha"), QStringLiteral("Planilha (*.xlsx)"), QStringLiteral("xlsx"));
  if (path.isEmpty()) return;
  Guarded([&] {
    const BusyCursor busy;
    WriteXlsx(DataTables(printout_), FromQt(path));
    note_->setText(QStringLiteral("Gravado: %1").arg(path));
    settings_.Write(kSettingsKey, kPreviewSection, kFolderName, FromQt(QFileInfo(path).absolutePath()));
  });
}

}  // namespace app::desktop
