#include "app/desktop/basics/station.h"

#include <QString>
#include <utility>

#include "host/restored.h"

namespace app::desktop {

void Typing::Begin(QObject* where, std::function<bool()> hand_over, std::function<void()> give_up) {
  where_ = where;
  hand_over_ = std::move(hand_over);
  give_up_ = std::move(give_up);
}

void Typing::End(QObject* where) {
  if (where_ != where) return;
  where_ = nullptr;
  hand_over_ = nullptr;
  give_up_ = nullptr;
}

bool Typing::Settle() {
  if (where_ == nullptr) return true;
  // Handing over may show a box, and closing that box asks again.
  if (settling_) return false;
  const host::Restored<bool> settling(settling_, true);
  QObject* const where = where_;
  const auto hand_over = hand_over_;
  if (!hand_over()) return false;
  End(where);
  return true;
}

void Typing::GiveUp() {
  if (where_ == nullptr) return;
  QObject* const where = where_;
  const auto give_up = give_up_;
  End(where);
  give_up();
}

Station::Station(Application& application, QObject* parent) : QObject(parent), application_(application) {}

bool Station::Do(const std::function<host::ActResult()>& act) {
  if (Busy()) return false;
  return typing_.Settle() && Run(act);
}

bool Station::DoTyping(const std::function<host::ActResult()>& act) {
  if (Busy()) return false;
  return Run(act);
}

void Station::WhileWaiting(const std::function<void()>& loop) {
  const host::Restored<int> running(running_, 0);
  Typing opener = std::exchange(typing_, Typing());
  loop();
  typing_ = std::move(opener);
}

bool Station::Run(const std::function<host::ActResult()>& act) {
  bool done = false;
  {
    const host::Restored<int> running(running_, running_ + 1);
    try {
      done = act() == host::ActResult::kDone;
    } catch (const host::ActError& error) {
      emit NotPossible(QString::fromUtf8(error.what()));
    }
  }
  emit Settled();
  return done;
}

}  // namespace app::desktop
