#include "app/printing/layout/time_limit.h"

namespace app::printing {

TimeLimit::TimeLimit(QJSEngine& engine, std::chrono::milliseconds limit) : engine_(engine), limit_(limit) {
  thread_ = std::thread([this] { Watch(); });
}

TimeLimit::~TimeLimit() {
  {
    const std::lock_guard lock(mutex_);
    done_ = true;
  }
  done_changed_.notify_one();
  thread_.join();
}

bool TimeLimit::Enter() {
  if (since_ != 0) return false;
  since_ = Clock::now().time_since_epoch().count();
  return true;
}

void TimeLimit::Watch() {
  constexpr std::chrono::milliseconds kLook{50};
  std::unique_lock lock(mutex_);
  while (!done_changed_.wait_for(lock, kLook, [this] { return done_; })) {
    const Clock::rep since = since_;
    if (since == 0 || Clock::now().time_since_epoch() - Clock::duration(since) < limit_) continue;
    over_ = true;
    engine_.setInterrupted(true);
    return;
  }
}

}  // namespace app::printing
