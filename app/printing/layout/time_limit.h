// Ends a layout that keeps the program busy.
#pragma once

#include <QJSEngine>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace app::printing {

/// Interrupts the engine when one stay in the layout's code takes longer than `limit`. A long list calls the layout for
/// each of its rows, so that a limit for all of them together would be one for the length of the list. Watches from a
/// thread of its own, because the layout keeps the first one busy.
class TimeLimit {
 public:
  TimeLimit(QJSEngine& engine, std::chrono::milliseconds limit);
  ~TimeLimit();
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;

  /// A stay in the layout's code: as long as this lives.
  class Stay {
   public:
    explicit Stay(TimeLimit& limit) : limit_(limit), outermost_(limit.Enter()) {}
    ~Stay() {
      if (outermost_) limit_.Leave();
    }
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;

   private:
    TimeLimit& limit_;
    bool outermost_;
  };

  bool IsOver() const { return over_; }
  std::chrono::milliseconds Limit() const { return limit_; }

 private:
  using Clock = std::chrono::steady_clock;
  bool Enter();  // false inside another stay
  void Leave() { since_ = 0; }
  void Watch();

  QJSEngine& engine_;
  std::chrono::milliseconds limit_;
  std::mutex mutex_;
  std::condition_variable done_changed_;
  bool done_ = false;
  std::atomic<bool> over_ = false;
  std::atomic<Clock::rep> since_ = 0;  // when the stay began; 0 outside of one
  std::thread thread_;
};

}  // namespace app::printing
