#include "support/fake_scale.h"

#include <algorithm>
#include <utility>

#include "app/scale/scale_settings.h"
#include "host/errors.h"
#include "host/raw_bytes.h"

namespace test {

using std::chrono::milliseconds;

class FakePort : public host::SerialPort {
 public:
  FakePort(FakeScale& scale, app::PortUse use) : scale_(scale), use_(std::move(use)) { scale_.port_ = this; }
  ~FakePort() override {
    if (scale_.port_ == this) scale_.port_ = nullptr;
  }

  void LoadSettings(std::string_view key, std::string_view section) override {
    Call("load " + Path(key, section));
    settings_ = app::scale::LoadScaleSettings(use_.settings, key, section);
  }
  void StoreSettings(std::string_view key, std::string_view section) override {
    Call("store " + Path(key, section));
    Fail(scale_.fail_store);
    app::scale::StoreScaleSettings(use_.settings, key, section, settings_);
  }
  bool ShowSetup() override {
    Call("setup");
    return use_.set_up(settings_);
  }
  void Open() override {
    Call("open");
    Fail(scale_.fail_open);
    open_ = true;
    Forget();
    Prepare(scale_.openings_);
  }
  void Close() override {
    Call("close");
    open_ = false;
    Forget();
  }
  bool Connected() const override { return open_; }
  void Write(std::string_view bytes) override {
    Call("write " + host::RawBytes(bytes));
    if (!open_) throw host::InputError("a porta está fechada");
    Fail(scale_.fail_write);
    if (bytes == "\x05") Prepare(scale_.answers_);
  }
  std::string Read(std::size_t most) override {
    Call("read " + std::to_string(most));
    std::string bytes = received_.substr(0, most);
    received_.erase(0, bytes.size());
    return bytes;
  }
  void Discard() override {
    Call("discard");
    received_.clear();
  }
  void Wait(milliseconds time, const std::function<bool()>& enough) override {
    Call("wait " + std::to_string(time.count()));
    const milliseconds end = now_ + time;
    while (!due_.empty() && due_.front().after <= end && !(enough && enough())) {
      now_ = due_.front().after;
      Receive();
    }
    if (!(enough && enough())) now_ = end;
  }

  bool Arrive(std::string_view bytes, std::vector<Piece> later) {
    if (!open_) return false;
    received_ += bytes;
    Schedule(std::move(later));
    const bool heard = use_.run([this] { Tell(); });
    if (!heard) Forget();
    return heard;
  }

 private:
  static std::string Path(std::string_view key, std::string_view section) {
    return std::string(key) + "/" + std::string(section);
  }
  void Call(std::string call) { scale_.calls_.push_back(std::move(call)); }
  static void Fail(std::string& sentence) {
    if (!sentence.empty()) throw host::InputError(std::exchange(sentence, {}));
  }
  void Prepare(std::deque<std::vector<Piece>>& prepared) {
    if (prepared.empty()) return;
    Schedule(std::move(prepared.front()));
    prepared.pop_front();
  }
  void Schedule(std::vector<Piece> pieces) {
    for (Piece& piece : pieces) {
      piece.after += now_;
      due_.push_back(std::move(piece));
    }
    std::stable_sort(due_.begin(), due_.end(), [](const Piece& a, const Piece& b) { return a.after < b.after; });
  }
  void Receive() {
    received_ += due_.front().bytes;
    due_.pop_front();
    Tell();
  }
  void Tell() {
    if (OnRxChar) OnRxChar();
  }
  void Forget() {
    received_.clear();
    due_.clear();
  }

  FakeScale& scale_;
  app::PortUse use_;
  app::scale::ScaleSettings settings_;
  bool open_ = false;
  std::string received_;
  std::deque<Piece> due_;
  milliseconds now_{0};
};

bool FakeScale::Send(std::string_view bytes, std::vector<Piece> later) {
  return port_ != nullptr && port_->Arrive(bytes, std::move(later));
}

std::vector<std::string> FakeScale::TakeCalls() { return std::exchange(calls_, {}); }

bool FakeScale::Connected() const { return port_ != nullptr && port_->Connected(); }

std::unique_ptr<host::SerialPort> FakeScale::NewPort(app::PortUse use) {
  if (!fail_port.empty()) throw host::InputError(fail_port);
  return std::make_unique<FakePort>(*this, std::move(use));
}

}  // namespace test
