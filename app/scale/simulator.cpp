#include "app/scale/simulator.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "host/errors.h"

#ifndef _WIN32
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>
#endif

namespace app::scale {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kSlowness(3000);

#ifdef _WIN32
constexpr const char* kNoTerminals =
    "Este sistema não tem pseudo-terminais; use aqui um par de portas seriais virtuais e uma balança de verdade.";
#else
constexpr char kRequest = '\x05';  // ENQ
// How soon Stop and Unplug are noticed.
constexpr milliseconds kGlance(20);
#endif

}  // namespace

Simulator::Simulator(SimulatorOptions options)
    : options_(std::move(options)), weight_(options_.weight), behaviour_(options_.behaviour) {
  SimulatedFrame(options_, 0);  // a weight that cannot be said is refused here
  OpenPort();
  try {
    MakeLink();
  } catch (...) {
    ClosePort();
    throw;
  }
}

Simulator::~Simulator() { ClosePort(); }

void Simulator::MakeLink() {
  if (options_.link.empty()) return;
  const fs::path link(options_.link);
  std::error_code error;
  // One that another simulator left when it was killed.
  if (fs::is_symlink(fs::symlink_status(link, error))) fs::remove(link, error);
  fs::create_symlink(own_name_, link, error);
  if (error) throw host::InputError("Não foi possível criar o nome " + options_.link + " para a porta.");
  name_ = options_.link;
}

SimulatorOptions Simulator::Now() const {
  SimulatorOptions now = options_;
  now.weight = weight_;
  now.behaviour = behaviour_;
  return now;
}

milliseconds Simulator::Delay() const {
  if (behaviour_ == Behaviour::kSlow) return kSlowness;
  return options_.protocol == host::ScaleProtocol::kAsked ? milliseconds(0) : options_.interval;
}

#ifdef _WIN32

void Simulator::OpenPort() { throw host::InputError(kNoTerminals); }
void Simulator::ClosePort() {}
void Simulator::Hear() {}
void Simulator::Send() {}
void Simulator::Serve(milliseconds /*time*/) {}

#else

void Simulator::OpenPort() {
  far_end_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  const char* name = far_end_ >= 0 && grantpt(far_end_) == 0 && unlockpt(far_end_) == 0 ? ptsname(far_end_) : nullptr;
  if (name != nullptr) near_end_ = open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (near_end_ < 0) {
    ClosePort();
    throw host::InputError("Não foi possível abrir um pseudo-terminal para a balança simulada.");
  }
  own_name_ = name;
  name_ = own_name_;
  // Bytes as they are, and none sent back to whoever wrote them.
  termios line{};
  tcgetattr(near_end_, &line);
  cfmakeraw(&line);
  tcsetattr(near_end_, TCSANOW, &line);
}

void Simulator::ClosePort() {
  for (int* end : {&near_end_, &far_end_}) {
    if (*end >= 0) close(*end);
    *end = -1;
  }
  std::error_code ignored;
  if (name_ != own_name_ && fs::is_symlink(fs::symlink_status(name_, ignored))) fs::remove(name_, ignored);
}

void Simulator::Hear() {
  char bytes[256];
  for (ssize_t count = read(far_end_, bytes, sizeof bytes); count > 0; count = read(far_end_, bytes, sizeof bytes)) {
    const auto asked = static_cast<int>(std::count(bytes, bytes + count, kRequest));
    requests_ += asked;
    if (asked > 0 && options_.protocol == host::ScaleProtocol::kAsked) due_ = steady_clock::now() + Delay();
  }
}

void Simulator::Send() {
  const std::string frame = SimulatedFrame(Now(), static_cast<unsigned>(frames_.load()));
  if (frame.empty()) return;
  // What a full line does not take is lost, as on a cable.
  const ssize_t sent = write(far_end_, frame.data(), frame.size());
  if (sent > 0) ++frames_;
}

void Simulator::Serve(milliseconds time) {
  const Moment end = steady_clock::now() + time;
  while (!stopped_ && far_end_ >= 0) {
    if (unplugged_) {
      ClosePort();
      return;
    }
    const Moment now = steady_clock::now();
    if (now >= end) return;
    if (options_.protocol != host::ScaleProtocol::kAsked && !due_) due_ = now + Delay();
    if (due_ && *due_ <= now) {
      due_.reset();
      Send();
      continue;
    }
    auto glance = std::min<steady_clock::duration>(kGlance, end - now);
    if (due_) glance = std::min<steady_clock::duration>(glance, *due_ - now);
    pollfd ready{far_end_, POLLIN, 0};
    const auto rounded = std::chrono::ceil<milliseconds>(glance);
    if (poll(&ready, 1, static_cast<int>(rounded.count())) > 0) Hear();
  }
}

#endif

}  // namespace app::scale
