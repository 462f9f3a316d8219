// A label printer in the network that is not there: it takes what is sent to it and keeps it.
#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace test {

/// Listens on this computer, on a thread of its own.
class LabelPrinter {
 public:
  LabelPrinter();
  ~LabelPrinter();
  LabelPrinter(const LabelPrinter&) = delete;
  LabelPrinter& operator=(const LabelPrinter&) = delete;

  /// As a station stores it: "rede:127.0.0.1:PORT".
  std::string Destination() const { return "rede:127.0.0.1:" + std::to_string(port_); }
  /// Refuses connections from now on, or takes them again at the same address.
  void SwitchOff();
  void SwitchOn();

  /// Everything that was sent so far, one text for each connection that has ended, in order.
  std::vector<std::string> Received() const;
  /// The same in one piece.
  std::string Paper() const;
  /// When the last byte arrived.
  std::chrono::steady_clock::time_point LastByte() const { return last_byte_; }

 private:
  void Serve();
  void Take(int connection);

  int port_ = 0;
  std::atomic<int> listener_ = -1;
  std::thread thread_;
  mutable std::mutex guard_;
  std::vector<std::string> received_;
  std::atomic<std::chrono::steady_clock::time_point> last_byte_{};
};

}  // namespace test
