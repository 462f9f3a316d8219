#include "app/desktop/scale/scale_setup.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QString>
#include <QVBoxLayout>
#include <array>
#include <optional>
#include <utility>

#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/message_boxes.h"
#include "app/desktop/boxes/objection.h"
#include "app/desktop/scale/scale_trial.h"
#include "app/serial/port.h"
#include "host/scale_digits.h"

namespace app::desktop {
namespace {

using scale::FlowControl;
using scale::Parity;
using scale::ScaleSettings;

constexpr int kPortCharacters = 20;
constexpr int kRawLines = 5;
constexpr int kRawCharacters = 64;
constexpr int kSlowest = 50;
constexpr int kFastest = 4000000;
constexpr int kMostDecimals = 9;
constexpr std::array<int, 10> kRates = {300, 600, 1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};
// The digits that the example is made of; more when more are decimals.
constexpr const char* kExampleDigits = "012345";

const std::array<std::pair<Parity, const char*>, 5> kParities = {{{Parity::kNone, "Nenhuma"},
                                                                  {Parity::kOdd, "Ímpar"},
                                                                  {Parity::kEven, "Par"},
                                                                  {Parity::kMark, "Marca"},
                                                                  {Parity::kSpace, "Espaço"}}};
const std::array<std::pair<FlowControl, const char*>, 3> kFlows = {{{FlowControl::kNone, "Nenhum"},
                                                                    {FlowControl::kHardware, "Por fios (RTS/CTS)"},
                                                                    {FlowControl::kSoftware, "XON/XOFF"}}};
const std::array<std::pair<double, const char*>, 3> kStops = {{{1.0, "1"}, {1.5, "1,5"}, {2.0, "2"}}};

struct Protocol {
  const char* name;
  const char* meaning;
};
constexpr std::array<Protocol, 3> kProtocols = {{
    {"0 - Lê o que a balança manda, com F5",
     "Para a balança que manda o peso sem parar, ou ao apertar a tecla dela. F5 abre a porta, espera meio segundo e "
     "lê."},
    {"1 - Pede o peso à balança, com F5",
     "Para a balança que só responde. F5 abre a porta, manda o pedido (ENQ) e lê a resposta."},
    {"2 - Só algarismos, sem parar, sem F5",
     "A porta fica aberta enquanto a tela está aberta, e cada peso que chega confirma a peça sozinho."},
}};

template <typename T, std::size_t kCount>
QComboBox* NewChoice(const std::array<std::pair<T, const char*>, kCount>& entries, T chosen, const char* name) {
  auto* box = new QComboBox;
  box->setObjectName(QLatin1String(name));
  for (const auto& [value, text] : entries) {
    box->addItem(QString::fromUtf8(text));
    if (!(value < chosen) && !(chosen < value)) box->setCurrentIndex(box->count() - 1);
  }
  return box;
}

template <typename T, std::size_t kCount>
T Chosen(const QComboBox& box, const std::array<std::pair<T, const char*>, kCount>& entries) {
  return entries[static_cast<std::size_t>(box.currentIndex())].first;
}

void AddField(QGridLayout& grid, int row, int column, const QString& caption, QWidget* input) {
  auto* label = new QLabel(caption);
  label->setBuddy(input);
  grid.addWidget(label, row, column, Qt::AlignRight | Qt::AlignVCenter);
  grid.addWidget(input, row, column + 1);
}

class ScaleSetup : public QDialog {
 public:
  ScaleSetup(QWidget* parent, const ScaleSettings& settings) : QDialog(parent) {
    setObjectName(QStringLiteral("ScaleSetup"));
    setWindowTitle(QStringLiteral("Configuração da balança"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(NewPortBox(settings));
    layout->addWidget(NewScaleBox(settings));
    layout->addWidget(NewTrialBox());
    layout->addWidget(objection_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    ShowProtocol();
    port_->setFocus();
    port_->lineEdit()->selectAll();
  }

  const ScaleSettings& Settings() const { return accepted_; }

  void accept() override {
    const auto settings = Entered();
    if (!settings) return;
    accepted_ = *settings;
    QDialog::accept();
  }

 private:
  QWidget* NewPortBox(const ScaleSettings& settings);
  QWidget* NewScaleBox(const ScaleSettings& settings);
  QWidget* NewTrialBox();
  void ShowProtocol();
  void Try();
  void Hear(const QString& bytes, const QString& meaning);
  /// Nothing, and the objection shown, when something typed cannot be.
  std::optional<ScaleSettings> Entered();

  QComboBox* port_ = new QComboBox;
  QComboBox* rate_ = new QComboBox;
  QComboBox* parity_ = nullptr;
  QComboBox* data_bits_ = new QComboBox;
  QComboBox* stop_bits_ = nullptr;
  QComboBox* flow_ = nullptr;
  QCheckBox* dtr_ = new QCheckBox(QStringLiteral("Ligar D&TR"));
  QCheckBox* rts_ = new QCheckBox(QStringLiteral("Ligar RT&S"));
  QComboBox* protocol_ = new QComboBox;
  QLabel* meaning_ = new QLabel;
  QSpinBox* decimals_ = new QSpinBox;
  QLabel* decimals_caption_ = new QLabel(QStringLiteral("Deci&mais"));
  QLabel* example_ = new QLabel;
  QPushButton* try_ = new QPushButton(QStringLiteral("T&estar"));
  QPlainTextEdit* raw_ = new QPlainTextEdit;
  QLabel* heard_ = new QLabel;
  ObjectionLabel* objection_ = new ObjectionLabel;
  ScaleTrial* trial_ = new ScaleTrial(this);
  ScaleSettings accepted_;
};

QWidget* ScaleSetup::NewPortBox(const ScaleSettings& settings) {
  const scale::PortSettings& port = settings.port;
  auto* box = new QGroupBox(QStringLiteral("Porta serial"));
  auto* grid = new QGridLayout(box);
  port_->setObjectName(QStringLiteral("Port"));
  port_->setEditable(true);
  port_->setInsertPolicy(QComboBox::NoInsert);
  port_->setCompleter(nullptr);  // it would take the first Enter for itself
  port_->setMinimumWidth(kPortCharacters * fontMetrics().averageCharWidth());
  for (const std::string& name : serial::KnownPorts()) port_->addItem(ToQt(name));
  port_->setCurrentText(ToQt(port.port));
  rate_->setObjectName(QStringLiteral("BaudRate"));
  rate_->setEditable(true);
  rate_->setInsertPolicy(QComboBox::NoInsert);
  rate_->setCompleter(nullptr);
  for (const int rate : kRates) rate_->addItem(QString::number(rate));
  rate_->setCurrentText(QString::number(port.baud_rate));
  parity_ = NewChoice(kParities, port.parity, "Parity");
  data_bits_->setObjectName(QStringLiteral("DataBits"));
  for (int bits = 5; bits <= 8; ++bits) data_bits_->addItem(QString::number(bits));
  data_bits_->setCurrentText(QString::number(port.data_bits));
  stop_bits_ = NewChoice(kStops, port.stop_bits, "StopBits");
  flow_ = NewChoice(kFlows, port.flow, "FlowControl");
  dtr_->setObjectName(QStringLiteral("DTR"));
  dtr_->setChecked(port.dtr);
  rts_->setObjectName(QStringLiteral("RTS"));
  rts_->setChecked(port.rts);

  AddField(*grid, 0, 0, QStringLiteral("&Porta"), port_);
  AddField(*grid, 0, 2, QStringLiteral("&Velocidade"), rate_);
  AddField(*grid, 1, 0, QStringLiteral("Pa&ridade"), parity_);
  AddField(*grid, 1, 2, QStringLiteral("Bits de &dados"), data_bits_);
  AddField(*grid, 2, 0, QStringLiteral("Controle de &fluxo"), flow_);
  AddField(*grid, 2, 2, QStringLiteral("B&its de parada"), stop_bits_);
  auto* lines = new QHBoxLayout;
  lines->addWidget(dtr_);
  lines->addWidget(rts_);
  lines->addStretch();
  grid->addLayout(lines, 3, 1, 1, 3);
  grid->setColumnStretch(1, 2);
  grid->setColumnStretch(3, 1);
  return box;
}

QWidget* ScaleSetup::NewScaleBox(const ScaleSettings& settings) {
  auto* box = new QGroupBox(QStringLiteral("Balança"));
  auto* grid = new QGridLayout(box);
  protocol_->setObjectName(QStringLiteral("Protocol"));
  for (const Protocol& protocol : kProtocols) protocol_->addItem(QString::fromUtf8(protocol.name));
  protocol_->setCurrentIndex(static_cast<int>(settings.protocol));
  meaning_->setObjectName(QStringLiteral("Meaning"));
  meaning_->setWordWrap(true);
  meaning_->setMinimumHeight(2 * fontMetrics().lineSpacing());
  meaning_->setAlignment(Qt::AlignTop);
  decimals_->setObjectName(QStringLiteral("Decimals"));
  decimals_->setRange(0, kMostDecimals);
  decimals_->setValue(settings.decimals);
  decimals_caption_->setBuddy(decimals_);
  example_->setObjectName(QStringLiteral("Example"));

  AddField(*grid, 0, 0, QStringLiteral("Proto&colo"), protocol_);
  grid->addWidget(meaning_, 1, 1);
  grid->addWidget(decimals_caption_, 2, 0, Qt::AlignRight | Qt::AlignVCenter);
  auto* line = new QHBoxLayout;
  line->addWidget(decimals_);
  line->addWidget(example_, 1);
  grid->addLayout(line, 2, 1);
  grid->setColumnStretch(1, 1);
  connect(protocol_, &QComboBox::currentIndexChanged, this, [this] { ShowProtocol(); });
  connect(decimals_, &QSpinBox::valueChanged, this, [this] { ShowProtocol(); });
  return box;
}

QWidget* ScaleSetup::NewTrialBox() {
  auto* box = new QGroupBox(QStringLiteral("Teste"));
  auto* layout = new QGridLayout(box);
  try_->setObjectName(QStringLiteral("Try"));
  try_->setAutoDefault(false);
  heard_->setObjectName(QStringLiteral("Heard"));
  heard_->setTextFormat(Qt::PlainText);
  heard_->setWordWrap(true);
  heard_->setText(QStringLiteral("Ponha um peso conhecido na balança e teste: aqui aparece o que ela manda."));
  raw_->setObjectName(QStringLiteral("Raw"));
  raw_->setReadOnly(true);
  raw_->setLineWrapMode(QPlainTextEdit::NoWrap);
  raw_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  raw_->setTabChangesFocus(true);
  raw_->setFixedHeight(kRawLines * raw_->fontMetrics().lineSpacing() + 2 * raw_->frameWidth() +
                       static_cast<int>(2 * raw_->document()->documentMargin()));
  raw_->setMinimumWidth(kRawCharacters * raw_->fontMetrics().averageCharWidth());
  layout->addWidget(try_, 0, 0, Qt::AlignTop);
  layout->addWidget(heard_, 0, 1);
  layout->addWidget(raw_, 1, 0, 1, 2);
  layout->setColumnStretch(1, 1);
  connect(try_, &QPushButton::clicked, this, [this] { Try(); });
  connect(trial_, &ScaleTrial::Heard, this, [this](const QString& bytes, const QString& text) { Hear(bytes, text); });
  connect(trial_, &ScaleTrial::Ended, this, [this] { try_->setText(QStringLiteral("T&estar")); });
  return box;
}

void ScaleSetup::ShowProtocol() {
  const int protocol = protocol_->currentIndex();
  meaning_->setText(QString::fromUtf8(kProtocols[static_cast<std::size_t>(protocol)].meaning));
  const bool digits = static_cast<host::ScaleProtocol>(protocol) == host::ScaleProtocol::kContinuous;
  for (QWidget* widget :
       {static_cast<QWidget*>(decimals_caption_), static_cast<QWidget*>(decimals_), static_cast<QWidget*>(example_)}) {
    widget->setEnabled(digits);
  }
  std::string example = kExampleDigits;
  while (static_cast<int>(example.size()) <= decimals_->value() + 1) example.insert(0, 1, '0');
  const auto read = host::ScaleDigits(example, decimals_->value());
  example_->setText(QStringLiteral("%1 -> %2").arg(ToQt(example), ToQt(read.value_or(""))));
}

void ScaleSetup::Try() {
  if (trial_->Running()) {
    trial_->Stop();
    return;
  }
  const auto settings = Entered();
  if (!settings) return;
  raw_->clear();
  heard_->setText(QStringLiteral("Escutando a balança..."));
  try_->setText(QStringLiteral("Parar o t&este"));
  trial_->Start(*settings);
}

void ScaleSetup::Hear(const QString& bytes, const QString& meaning) {
  if (!bytes.isEmpty()) raw_->appendPlainText(bytes);
  heard_->setText(meaning);
}

std::optional<ScaleSettings> ScaleSetup::Entered() {
  objection_->Clear();
  ScaleSettings settings;
  scale::PortSettings& port = settings.port;
  port.port = FromQt(port_->currentText().trimmed());
  if (port.port.empty()) {
    objection_->Show(QStringLiteral("Diga qual é a porta da balança."), *port_->lineEdit());
    return std::nullopt;
  }
  bool number = false;
  port.baud_rate = rate_->currentText().trimmed().toInt(&number);
  if (!number || port.baud_rate < kSlowest || port.baud_rate > kFastest) {
    objection_->Show(QStringLiteral("A velocidade é um número entre %1 e %2.").arg(kSlowest).arg(kFastest),
                     *rate_->lineEdit());
    return std::nullopt;
  }
  port.parity = Chosen(*parity_, kParities);
  port.data_bits = data_bits_->currentText().toInt();
  port.stop_bits = Chosen(*stop_bits_, kStops);
  port.flow = Chosen(*flow_, kFlows);
  port.dtr = dtr_->isChecked();
  port.rts = rts_->isChecked();
  settings.protocol = static_cast<host::ScaleProtocol>(protocol_->currentIndex());
  settings.decimals = decimals_->value();
  return settings;
}

}  // namespace

bool AskScaleSetup(QWidget* parent, scale::ScaleSettings& settings) {
  ScaleSetup box(parent, settings);
  if (RunBox(box) != QDialog::Accepted) return false;
  settings = box.Settings();
  return true;
}

}  // namespace app::desktop
