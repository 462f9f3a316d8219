#include "app/desktop/scale/scale_trial.h"

#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "app/desktop/basics/text.h"
#include "app/equipment.h"
#include "app/scale/frame.h"
#include "app/serial/port.h"
#include "host/decimal.h"
#include "host/errors.h"
#include "host/raw_bytes.h"
#include "host/scale_digits.h"

namespace app::desktop {
namespace {

// The time that a station waits before it reads, and how often.
constexpr int kTickMilliseconds = 500;
constexpr int kTicks = 12;
constexpr const char* kRequest = "\x05";  // ENQ
constexpr const char* kKey = "Venda";
constexpr const char* kSection = "Parametros";
// More of half a second than a person can read.
constexpr std::size_t kMostShown = 60;

class TrialSettings : public host::UserSettings {
 public:
  std::optional<std::string> Read(std::string_view /*key*/, std::string_view /*section*/,
                                  std::string_view name) override {
    const auto found = values_.find(name);
    if (found == values_.end()) return std::nullopt;
    return found->second;
  }
  void Write(std::string_view /*key*/, std::string_view /*section*/, std::string_view name,
             std::string_view value) override {
    values_[std::string(name)] = value;
  }

 private:
  std::map<std::string, std::string, std::less<>> values_;
};

// The last digits that have a beginning and an end.
std::string_view LastFrame(std::string_view received) {
  constexpr std::string_view kMarks = "\x02\x03\r\n";
  const std::size_t last = received.find_last_of("\x03\r\n");
  if (last == std::string_view::npos) return {};
  const std::size_t end = received.find_last_not_of(kMarks, last);
  if (end == std::string_view::npos) return {};
  const std::size_t before = received.find_last_of(kMarks, end);
  if (before == std::string_view::npos) return {};
  return received.substr(before + 1, end - before);
}

QString DigitsMeaning(std::string_view received, int decimals) {
  const auto digits = host::ScaleDigits(LastFrame(received), decimals);
  const auto weight = digits ? host::ParseTyped(*digits) : std::nullopt;
  if (!weight) return QStringLiteral("Nenhum peso completo nestes bytes.");
  return QStringLiteral("Peso lido: %1 kg (algarismos %2)")
      .arg(ToQt(host::FormatNumber("0.000", *weight, ',')), ToQt(*digits));
}

}  // namespace

ScaleTrial::ScaleTrial(QObject* parent) : QObject(parent) {
  timer_.setInterval(kTickMilliseconds);
  connect(&timer_, &QTimer::timeout, this, &ScaleTrial::Tick);
}

ScaleTrial::~ScaleTrial() = default;

void ScaleTrial::Start(const scale::ScaleSettings& settings) {
  Stop();
  settings_ = settings;
  received_.clear();
  lost_.clear();
  asked_ = false;
  ticks_ = 0;
  kept_ = std::make_unique<TrialSettings>();
  scale::StoreScaleSettings(*kept_, kKey, kSection, settings);
  PortUse use{*kept_, {}, {}};
  use.run = [](const std::function<void()>& act) {
    act();
    return true;
  };
  port_ = serial::NewPort(std::move(use));
  port_->LoadSettings(kKey, kSection);
  port_->OnRxChar = [this] {
    try {
      received_ += port_->Read(1 << 12);
    } catch (const host::InputError& error) {
      lost_ = error.what();  // the port must not go while it is telling this
    }
  };
  try {
    port_->Open();
    timer_.start();
  } catch (const host::InputError& error) {
    emit Heard(QString(), QString::fromUtf8(error.what()));
    Stop();
  }
}

void ScaleTrial::Stop() {
  if (!port_) return;
  timer_.stop();
  port_.reset();
  emit Ended();
}

void ScaleTrial::Tick() {
  try {
    if (!lost_.empty()) throw host::InputError(lost_);
    // The first half second of a scale that is asked is the station's wait after opening.
    const bool listened = settings_.protocol != host::ScaleProtocol::kAsked || asked_;
    if (listened) emit Heard(ToQt(host::RawBytes(received_.substr(0, kMostShown))), MeaningOf(received_));
    received_.clear();
    if (++ticks_ >= kTicks || !port_) {
      Stop();
      return;
    }
    received_ += port_->Read(1);  // a port that went away says so here
    if (settings_.protocol == host::ScaleProtocol::kAsked) {
      port_->Write(kRequest);
      asked_ = true;
    }
  } catch (const host::InputError& error) {
    emit Heard(QString(), QString::fromUtf8(error.what()));
    Stop();
  }
}

QString ScaleTrial::MeaningOf(const std::string& received) const {
  if (settings_.protocol == host::ScaleProtocol::kContinuous && !received.empty())
    return DigitsMeaning(received, settings_.decimals);
  // As much as a station reads of it.
  constexpr std::size_t kSent = 50;
  constexpr std::size_t kAnswered = 30;
  const std::size_t most = settings_.protocol == host::ScaleProtocol::kAsked ? kAnswered : kSent;
  try {
    const double weight = scale::WeightOfFrame(received.substr(0, most), '\r');
    return QStringLiteral("Peso lido: %1 kg").arg(ToQt(host::FormatNumber("0.000", weight, ',')));
  } catch (const host::InputError& error) {
    return QString::fromUtf8(error.what());
  }
}

}  // namespace app::desktop
