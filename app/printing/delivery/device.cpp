// Bytes to the file of a device, as they are.
#include <algorithm>
#include <chrono>
#include <string>

#include "app/printing/delivery/destination.h"
#include "host/errors.h"

#ifdef _WIN32
#include <QFile>
#else
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#endif

namespace app::printing {
namespace {

[[noreturn]] void Refuse(const std::string& path, const std::string& why) {
  throw host::InputError("O dispositivo \"" + path + "\" " + why + " Nada foi impresso.");
}

[[noreturn]] void TellHalf(const std::string& path, std::size_t taken, std::size_t all) {
  throw host::InputError("A impressora em \"" + path + "\" deixou de receber em " + std::to_string(taken) + " de " +
                         std::to_string(all) +
                         " bytes (sem papel, pausada ou desligada?): confira o que saiu antes de imprimir de novo.");
}

#ifndef _WIN32

using std::chrono::milliseconds;

class OpenDevice {
 public:
  explicit OpenDevice(const std::string& path)
      // What stands in a plain file is kept, as a printer keeps its paper.
      : handle_(open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_APPEND | O_CLOEXEC)) {
    if (handle_ >= 0) return;
    switch (errno) {
      case ENOENT:
      case ENODEV:
        Refuse(path, "não existe: confira se a impressora está ligada a este computador.");
      case EACCES:
      case EPERM:
      case EROFS:
        Refuse(path, "não pode ser escrito por este usuário: peça a permissão ao administrador.");
      case ENXIO:
        Refuse(path, "não tem ninguém que receba: confira se a impressora está ligada.");
      case EBUSY:
        Refuse(path, "está em uso por outro programa: tente de novo em seguida.");
      case EISDIR:
        Refuse(path, "é uma pasta: escolha o arquivo do dispositivo.");
      default:
        Refuse(path, std::string("não pôde ser aberto (") + std::strerror(errno) + ").");
    }
  }
  ~OpenDevice() { close(handle_); }
  OpenDevice(const OpenDevice&) = delete;
  OpenDevice& operator=(const OpenDevice&) = delete;

  /// True when it takes bytes before the time is over.
  bool Ready(milliseconds limit) const {
    pollfd wanted{handle_, POLLOUT, 0};
    const int ready = poll(&wanted, 1, static_cast<int>(limit.count()));
    return ready > 0 && (wanted.revents & POLLOUT) != 0 && (wanted.revents & (POLLERR | POLLNVAL)) == 0;
  }
  /// How many of these it took; 0 for none right now, negative when it failed.
  ssize_t Write(std::string_view bytes) const {
    const ssize_t taken = write(handle_, bytes.data(), bytes.size());
    return taken < 0 && (errno == EAGAIN || errno == EINTR) ? 0 : taken;
  }
  /// A printer's driver drops what is still on its way when it is closed.
  bool Drain(milliseconds limit) const {
    if (isatty(handle_) == 0) return Ready(limit);
    const auto end = std::chrono::steady_clock::now() + limit;
    for (int waiting = 0; ioctl(handle_, TIOCOUTQ, &waiting) == 0 && waiting > 0;) {
      if (std::chrono::steady_clock::now() >= end) return false;
      poll(nullptr, 0, 2);
    }
    return true;
  }

 private:
  int handle_;
};

// A reader that goes away in the middle is an error of this job and not the end of the program.
class NoBrokenPipe {
 public:
  NoBrokenPipe() {
    struct sigaction ignore = {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignore, &before_);
  }
  ~NoBrokenPipe() { sigaction(SIGPIPE, &before_, nullptr); }
  NoBrokenPipe(const NoBrokenPipe&) = delete;
  NoBrokenPipe& operator=(const NoBrokenPipe&) = delete;

 private:
  struct sigaction before_ = {};
};

#endif

}  // namespace

#ifdef _WIN32

void SendToDevice(const std::string& path, std::string_view bytes, const TimeLimits& /*limits*/) {
  QFile device(QString::fromStdString(path));
  if (!device.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) Refuse(path, "não pôde ser aberto.");
  const qint64 taken = device.write(bytes.data(), static_cast<qint64>(bytes.size()));
  if (taken != static_cast<qint64>(bytes.size())) {
    TellHalf(path, static_cast<std::size_t>(std::max<qint64>(taken, 0)), bytes.size());
  }
}

#else

void SendToDevice(const std::string& path, std::string_view bytes, const TimeLimits& limits) {
  const NoBrokenPipe no_broken_pipe;
  const OpenDevice device(path);
  std::size_t taken = 0;
  while (taken < bytes.size()) {
    if (!device.Ready(limits.write)) TellHalf(path, taken, bytes.size());
    const ssize_t more = device.Write(bytes.substr(taken));
    if (more < 0) TellHalf(path, taken, bytes.size());
    taken += static_cast<std::size_t>(more);
  }
  if (!device.Drain(limits.write)) TellHalf(path, taken, bytes.size());
}

#endif

}  // namespace app::printing
