#include "writeoff/scale_capture.h"

#include <chrono>

#include "host/decimal.h"
#include "host/errors.h"
#include "host/restored.h"
#include "writeoff/scale_frames.h"

namespace writeoff {
namespace {

using std::chrono::milliseconds;

constexpr const char* kKey = "Venda";
constexpr const char* kSection = "Parametros";

constexpr milliseconds kAfterOpening(500);
constexpr milliseconds kForAnswer(500);
constexpr milliseconds kBetweenWeights(1000);
constexpr std::size_t kPrintedCharacters = 50;
constexpr std::size_t kAnswerCharacters = 30;
constexpr std::size_t kStreamCharacters = 64 * 1024;  // more than any line brings while one waits

constexpr char kRequest = '\x05';  // ENQ
constexpr char kEndOfFrame = '\r';

constexpr const char* kSilent =
    "A balança não respondeu. Verifique se ela está ligada, se o cabo está conectado e se a porta e a velocidade "
    "conferem (F10).";

constexpr const char* kOpenAgain = " Com o cabo no lugar, F10 e Enter abrem a porta de novo.";

class PortCloser {
 public:
  explicit PortCloser(host::SerialPort& port) : port_(port) {}
  ~PortCloser() {
    if (port_.Connected()) port_.Close();
  }
  PortCloser(const PortCloser&) = delete;
  PortCloser& operator=(const PortCloser&) = delete;

 private:
  host::SerialPort& port_;
};

}  // namespace

ScaleCapture::ScaleCapture(host::Screen& owner) : owner_(owner) {}

int ScaleCapture::Setting(std::string_view name, int most) const {
  const auto text = owner_.GetHost().GetUserSettings().Read(kKey, kSection, name);
  const int value = host::ParseTypedInteger(text.value_or("")).value_or(0);
  return value >= 0 && value <= most ? value : 0;
}

host::ScaleProtocol ScaleCapture::StoredProtocol() const {
  return static_cast<host::ScaleProtocol>(Setting("ProtocoloBal", host::kLastScaleProtocol));
}

host::SerialPort& ScaleCapture::Port() {
  if (!port_) {
    port_ = owner_.GetHost().NewSerialPort(owner_);
    port_->OnRxChar = [this] { ComPortRxChar(); };
  }
  return *port_;
}

void ScaleCapture::OpenAnew() {
  host::SerialPort& port = Port();
  port.LoadSettings(kKey, kSection);
  if (port.Connected()) port.Close();
  port.Open();
}

void ScaleCapture::Start() {
  protocol_ = StoredProtocol();
  if (!Continuous()) return;
  try {
    OpenAnew();
  } catch (const host::InputError&) {
    // Rolls can be typed; F10 tells what is wrong with the port.
  }
}

Weighing ScaleCapture::Capture() {
  host::SerialPort& port = Port();
  Weighing weighing;
  {
    const PortCloser closer(port);
    OpenAnew();
    port.Wait(kAfterOpening, {});
    weighing.frame = protocol_ == host::ScaleProtocol::kAsked ? Answer() : port.Read(kPrintedCharacters);
  }
  if (weighing.frame.empty()) throw host::InputError(kSilent);
  weighing.weight = owner_.GetHost().GetFuncoes().PegaPesoBalanca(weighing.frame, kEndOfFrame);
  return weighing;
}

// What came before the request was weighed for somebody else.
std::string ScaleCapture::Answer() {
  host::SerialPort& port = Port();
  port.Discard();
  answer_.clear();
  const host::Restored<bool> awaits(awaits_answer_, true);
  port.Write(std::string_view(&kRequest, 1));
  port.Wait(kForAnswer, [this] { return AnswerEnded(answer_); });
  return answer_;
}

void ScaleCapture::ComPortRxChar() {
  if (awaits_answer_) {
    answer_ += Port().Read(kAnswerCharacters);
  } else if (Continuous() && !listening_) {
    Listen();
  }
}

// A scale that fell silent because its cable is out is told: nobody would know otherwise.
bool ScaleCapture::Await() {
  try {
    Port().Wait(kBetweenWeights, {});
    return true;
  } catch (const host::InputError& error) {
    if (OnTrouble) OnTrouble(std::string(error.what()) + kOpenAgain);
    return false;
  }
}

// Bytes of the next frames arrive while one waits, and are waited for already.
void ScaleCapture::Listen() {
  const host::Restored<bool> listening(listening_, true);
  if (!Await()) return;
  host::SerialPort& port = Port();
  Weighing weighing;
  weighing.frame = NewestFrame(port.Read(kStreamCharacters));
  port.Discard();
  const auto weight = WeightOfDigits(weighing.frame, Setting("Decimal", 9));
  // Zero is the empty scale, which sends as well.
  if (!weight || !(*weight > 0)) return;
  weighing.weight = *weight;
  if (OnWeight) OnWeight(weighing);
}

bool ScaleCapture::SetUp() {
  host::SerialPort& port = Port();
  port.LoadSettings(kKey, kSection);
  if (!port.ShowSetup()) return false;
  port.StoreSettings(kKey, kSection);
  if (Continuous()) OpenAnew();
  return StoredProtocol() != protocol_;
}

}  // namespace writeoff
