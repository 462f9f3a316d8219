#include "app/serial/port.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <exception>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

#include "app/scale/scale_settings.h"
#include "app/serial/open_error.h"
#include "host/errors.h"
#include "host/restored.h"

namespace app::serial {
namespace {

// A scale that sends without end while nobody reads must not fill the memory.
constexpr std::size_t kMostUnread = 1 << 16;
// A request is a few bytes; a line that takes longer is stopped.
constexpr int kWriteMilliseconds = 2000;
// Converters hand on what they got a little later.
constexpr int kConverterMilliseconds = 20;
constexpr int kBitsPerByte = 12;
// While a box is open nobody can be told that the device is gone.
constexpr std::chrono::milliseconds kUntilSomebodyHears(300);

// What a person does meanwhile reaches nobody. Painting, timers and devices go on.
class DeafWindows : public QObject {
 public:
  DeafWindows() { QCoreApplication::instance()->installEventFilter(this); }
  ~DeafWindows() override {
    // What is still queued is what was typed during the wait: it is delivered now, to this filter.
    QCoreApplication::processEvents();
    QCoreApplication::instance()->removeEventFilter(this);
  }
  DeafWindows(const DeafWindows&) = delete;
  DeafWindows& operator=(const DeafWindows&) = delete;

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    switch (event->type()) {
      case QEvent::Close:
        event->ignore();
        return true;
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
      case QEvent::ShortcutOverride:
      case QEvent::Shortcut:
      case QEvent::InputMethod:
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::Wheel:
      case QEvent::ContextMenu:
      case QEvent::TouchBegin:
      case QEvent::TouchUpdate:
      case QEvent::TouchEnd:
        return true;
      default:
        return false;
    }
  }
};

class Port : public QObject, public host::SerialPort {
 public:
  explicit Port(PortUse use) : use_(std::move(use)) {
    connect(&device_, &QSerialPort::readyRead, this, [this] { Arrived(); });
    connect(&device_, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError error) { Failed(error); });
    later_.setSingleShot(true);
    connect(&later_, &QTimer::timeout, this, [this] { Later(); });
  }
  ~Port() override { Close(); }
  Port(const Port&) = delete;
  Port& operator=(const Port&) = delete;

  void LoadSettings(std::string_view key, std::string_view section) override {
    settings_ = scale::LoadScaleSettings(use_.settings, key, section);
  }
  void StoreSettings(std::string_view key, std::string_view section) override {
    scale::StoreScaleSettings(use_.settings, key, section, settings_);
  }
  bool ShowSetup() override {
    scale::ScaleSettings changed = settings_;
    if (!use_.set_up || !use_.set_up(changed)) return false;
    settings_ = changed;
    return true;
  }

  void Open() override;
  void Close() override;
  bool Connected() const override { return device_.isOpen() && !lost_; }
  void Write(std::string_view bytes) override;
  std::string Read(std::size_t most) override;
  void Discard() override;
  void Wait(std::chrono::milliseconds time, const std::function<bool()>& enough) override;

 private:
  void Configure();
  bool ClearToSend();
  void Arrived();
  void Failed(QSerialPort::SerialPortError error);
  void Later();
  void TellLoss();
  void TellLossLater(std::chrono::milliseconds time);
  void Listen(const QDeadlineTimer& until);

  PortUse use_;
  scale::ScaleSettings settings_;
  QSerialPort device_;
  QTimer later_;                // to tell of what arrived outside of Wait
  QEventLoop* loop_ = nullptr;  // of the Wait that runs
  std::string unread_;
  bool told_ = true;       // OnRxChar knows of everything that arrived
  bool settling_ = false;  // errors of optional settings are nobody's
  bool lost_ = false;      // the device went away; not told yet
  int waits_ = 0;
};

QSerialPort::Parity ParityOf(scale::Parity parity) {
  switch (parity) {
    case scale::Parity::kNone:
      return QSerialPort::NoParity;
    case scale::Parity::kOdd:
      return QSerialPort::OddParity;
    case scale::Parity::kEven:
      return QSerialPort::EvenParity;
    case scale::Parity::kMark:
      return QSerialPort::MarkParity;
    case scale::Parity::kSpace:
      return QSerialPort::SpaceParity;
  }
  return QSerialPort::NoParity;
}

QSerialPort::FlowControl FlowOf(scale::FlowControl flow) {
  switch (flow) {
    case scale::FlowControl::kNone:
      return QSerialPort::NoFlowControl;
    case scale::FlowControl::kHardware:
      return QSerialPort::HardwareControl;
    case scale::FlowControl::kSoftware:
      return QSerialPort::SoftwareControl;
  }
  return QSerialPort::NoFlowControl;
}

QSerialPort::StopBits StopBitsOf(double stop_bits) {
  if (stop_bits > 1.75) return QSerialPort::TwoStop;
  return stop_bits > 1.25 ? QSerialPort::OneAndHalfStop : QSerialPort::OneStop;
}

void Port::Configure() {
  const scale::PortSettings& port = settings_.port;
  device_.setPortName(QString::fromStdString(port.port));
  device_.setBaudRate(port.baud_rate);
  device_.setParity(ParityOf(port.parity));
  device_.setDataBits(static_cast<QSerialPort::DataBits>(port.data_bits));
  device_.setStopBits(StopBitsOf(port.stop_bits));
  device_.setFlowControl(FlowOf(port.flow));
}

void Port::Open() {
  Close();
  const host::Restored<bool> settling(settling_, true);
  Configure();
  const bool opened = device_.open(QIODevice::ReadWrite);
  const std::string why = opened ? std::string() : OpenErrorText(settings_.port, device_.error());
  if (opened) {
    // A pseudo-terminal has no such lines, and a three-wire cable leads them nowhere.
    device_.setDataTerminalReady(settings_.port.dtr);
    if (settings_.port.flow != scale::FlowControl::kHardware) device_.setRequestToSend(settings_.port.rts);
  }
  device_.clearError();
  Discard();
  if (!opened) throw host::InputError(why);
}

void Port::Close() {
  const host::Restored<bool> settling(settling_, true);  // a device that is gone complains once more
  if (device_.isOpen()) device_.close();
  lost_ = false;
  Discard();
}

void Port::TellLoss() {
  if (!lost_) return;
  Close();
  throw host::InputError("A porta " + settings_.port.port +
                         " foi desligada do computador; confira o cabo da balança e tente outra vez.");
}

// True also where nobody knows: a pseudo-terminal.
bool Port::ClearToSend() {
  if (settings_.port.flow != scale::FlowControl::kHardware) return true;
  const host::Restored<bool> settling(settling_, true);
  device_.clearError();
  const bool ready = device_.pinoutSignals().testFlag(QSerialPort::ClearToSendSignal);
  return ready || device_.error() != QSerialPort::NoError;
}

void Port::Write(std::string_view bytes) {
  TellLoss();
  const std::string& name = settings_.port.port;
  if (!device_.isOpen()) throw host::InputError("A porta " + name + " está fechada.");
  if (!ClearToSend()) {
    throw host::InputError("A balança não está pronta para receber (CTS); confira o cabo e o controle de fluxo.");
  }
  const QDeadlineTimer until(kWriteMilliseconds);
  bool sent = device_.write(bytes.data(), static_cast<qint64>(bytes.size())) == static_cast<qint64>(bytes.size());
  while (sent && device_.bytesToWrite() > 0) {
    sent = !until.hasExpired() && device_.waitForBytesWritten(static_cast<int>(until.remainingTime()));
  }
  TellLoss();
  if (!sent) throw host::InputError("Não foi possível enviar o pedido à balança pela porta " + name + ".");
  // The operating system has them; the line needs its time.
  const std::size_t line = bytes.size() * kBitsPerByte * 1000 / static_cast<std::size_t>(settings_.port.baud_rate);
  QThread::msleep(static_cast<unsigned long>(std::min<std::size_t>(line, kWriteMilliseconds) + kConverterMilliseconds));
}

std::string Port::Read(std::size_t most) {
  if (unread_.empty()) TellLoss();
  std::string taken = unread_.substr(0, most);
  unread_.erase(0, taken.size());
  if (unread_.empty()) told_ = true;
  return taken;
}

void Port::Discard() {
  const host::Restored<bool> settling(settling_, true);
  if (device_.isOpen() && !lost_) device_.clear(QSerialPort::Input);  // what the operating system holds, too
  unread_.clear();
  told_ = true;
  later_.stop();
}

void Port::Arrived() {
  const QByteArray bytes = device_.readAll();
  if (bytes.isEmpty()) return;
  // What a former act did not read was weighed for that act.
  if (waits_ == 0 && OnRxChar && told_) unread_.clear();
  unread_.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  if (unread_.size() > kMostUnread) unread_.erase(0, unread_.size() - kMostUnread);
  told_ = false;
  if (loop_ != nullptr) {
    loop_->quit();
  } else if (waits_ == 0 && OnRxChar) {
    later_.start(0);
  }
}

void Port::Failed(QSerialPort::SerialPortError error) {
  if (settling_ || (error != QSerialPort::ResourceError && error != QSerialPort::ReadError)) return;
  lost_ = true;
  if (loop_ != nullptr) loop_->quit();
  // Its own signal is no place to close it.
  QMetaObject::invokeMethod(
      this,
      [this] {
        const host::Restored<bool> settling(settling_, true);
        if (lost_ && device_.isOpen()) device_.close();
        TellLossLater(std::chrono::milliseconds(0));
      },
      Qt::QueuedConnection);
}

// Whoever only listens would wait for ever: he is called, and his next use of the port says what happened.
void Port::TellLossLater(std::chrono::milliseconds time) {
  if (!lost_ || waits_ > 0 || !OnRxChar) return;
  told_ = false;
  later_.start(time);
}

void Port::Later() {
  if (told_ || waits_ > 0) return;
  told_ = true;
  const std::function<void()> act = OnRxChar;
  // The act may close the screen, and the screen owns this port.
  const auto run = use_.run;
  const QPointer<Port> alive(this);
  try {
    if (act && run) run(act);
  } catch (const std::exception&) {
    // Whoever runs the act tells its errors; this one says that it is not possible now.
  }
  if (!alive) return;
  Discard();  // no act was possible, or what is left arrived while it ran
  TellLossLater(kUntilSomebodyHears);
}

void Port::Listen(const QDeadlineTimer& until) {
  QEventLoop loop;
  const host::Restored<QEventLoop*> listening(loop_, &loop);
  QTimer::singleShot(std::chrono::milliseconds(until.remainingTime()), Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void Port::Wait(std::chrono::milliseconds time, const std::function<bool()>& enough) {
  const host::Restored<int> waiting(waits_, waits_ + 1);
  const DeafWindows deaf;
  const QDeadlineTimer until(time, Qt::PreciseTimer);
  for (;;) {
    while (!told_) {
      told_ = true;
      if (OnRxChar) OnRxChar();
      if (enough && enough()) return;
    }
    if (lost_) break;
    if (until.hasExpired()) return;
    Listen(until);
  }
  TellLoss();
}

}  // namespace

std::unique_ptr<host::SerialPort> NewPort(PortUse use) { return std::make_unique<Port>(std::move(use)); }

std::vector<std::string> KnownPorts() {
  std::vector<std::string> names;
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
#ifdef Q_OS_WIN
    names.push_back(info.portName().toStdString());
#else
    names.push_back(info.systemLocation().toStdString());
#endif
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace app::serial
