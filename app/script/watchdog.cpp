#include "app/script/watchdog.h"

namespace app::script {

Watchdog::Watchdog(QJSEngine& engine, std::chrono::milliseconds limit) {
  if (limit.count() == 0) return;
  thread_ = std::thread([this, &engine, limit] {
    std::unique_lock lock(mutex_);
    if (done_changed_.wait_for(lock, limit, [this] { return done_; })) return;
    over_ = true;
    engine.setInterrupted(true);
  });
}

Watchdog::~Watchdog() {
  {
    const std::lock_guard lock(mutex_);
    done_ = true;
  }
  done_changed_.notify_one();
  if (thread_.joinable()) thread_.join();
}

}  // namespace app::script
