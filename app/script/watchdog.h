// Ends a script that runs too long.
#pragma once

#include <QJSEngine>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace app::script {

/// Interrupts the engine when it lives longer than `limit`; 0 is no limit. Waits on a thread of its own, because the
/// script keeps the first one busy.
class Watchdog {
 public:
  Watchdog(QJSEngine& engine, std::chrono::milliseconds limit);
  ~Watchdog();
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  bool TimeIsOver() const { return over_; }

 private:
  std::mutex mutex_;
  std::condition_variable done_changed_;
  bool done_ = false;
  std::atomic<bool> over_ = false;
  std::thread thread_;
};

}  // namespace app::script
