// Bytes to a printer in the network, as they are (port 9100).
#include <QByteArray>
#include <QDeadlineTimer>
#include <QHostAddress>
#include <QHostInfo>
#include <QNetworkProxy>
#include <QString>
#include <QTcpSocket>
#include <QThread>
#include <future>
#include <memory>
#include <thread>
#include <utility>

#include "app/printing/delivery/destination.h"
#include "host/errors.h"

#ifdef __linux__
#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#endif

namespace app::printing {
namespace {

using std::chrono::milliseconds;

std::string Named(const Address& address) { return address.host + ":" + std::to_string(address.port); }

[[noreturn]] void RefuseConnection(const Address& address, const std::string& why) {
  throw host::InputError("A impressora " + Named(address) + " " + why +
                         ": confira se está ligada, na rede, e se o endereço é este. Nada foi impresso.");
}

[[noreturn]] void TellHalf(const Address& address, std::size_t taken, std::size_t all) {
  throw host::InputError("A impressora " + Named(address) + " deixou de receber em " + std::to_string(taken) + " de " +
                         std::to_string(all) +
                         " bytes (sem papel, pausada ou desligada?): confira o que saiu antes de imprimir de novo.");
}

// A name server that is away keeps whoever asks it for long; it is asked on the side and waited for no longer than the
// limit.
QList<QHostAddress> Resolve(const Address& address, milliseconds limit) {
  const QString host = QString::fromStdString(address.host);
  if (const QHostAddress number(host); !number.isNull()) return {number};
  auto answer = std::make_shared<std::promise<QList<QHostAddress>>>();
  auto waiting = answer->get_future();
  std::thread([host, answer] { answer->set_value(QHostInfo::fromName(host).addresses()); }).detach();
  if (waiting.wait_for(limit) != std::future_status::ready) RefuseConnection(address, "não foi encontrada");
  QList<QHostAddress> found = waiting.get();
  if (found.isEmpty()) RefuseConnection(address, "não foi encontrada");
  return found;
}

void Connect(QTcpSocket& socket, const Address& address, milliseconds limit) {
  const QDeadlineTimer deadline(limit);
  socket.setProxy(QNetworkProxy::NoProxy);
  for (const QHostAddress& number : Resolve(address, limit)) {
    socket.connectToHost(number, static_cast<quint16>(address.port));
    if (socket.waitForConnected(static_cast<int>(deadline.remainingTime()))) return;
    socket.abort();
  }
  RefuseConnection(address,
                   socket.error() == QAbstractSocket::ConnectionRefusedError ? "recusou a conexão" : "não responde");
}

#ifdef __linux__
// Bytes that the printer's side has not confirmed; -1 when the connection broke.
int Unconfirmed(qintptr socket) {
  int error = 0;
  socklen_t size = sizeof error;
  int waiting = 0;
  const auto handle = static_cast<int>(socket);
  if (getsockopt(handle, SOL_SOCKET, SO_ERROR, &error, &size) != 0 || error != 0) return -1;
  if (ioctl(handle, SIOCOUTQ, &waiting) != 0) return -1;
  return waiting;
}

// The system takes the bytes long before the printer does; printed is what arrived there.
void WaitConfirmed(const QTcpSocket& socket, const Address& address, std::size_t all, milliseconds limit) {
  QDeadlineTimer deadline(limit);
  int before = -1;
  for (;;) {
    const int waiting = Unconfirmed(socket.socketDescriptor());
    if (waiting == 0) return;
    if (waiting < 0) TellHalf(address, before < 0 ? 0 : all - static_cast<std::size_t>(before), all);
    if (before < 0 || waiting < before) deadline = QDeadlineTimer(limit);
    before = waiting;
    if (deadline.hasExpired()) TellHalf(address, all - static_cast<std::size_t>(waiting), all);
    QThread::usleep(500);
  }
}
#endif

}  // namespace

void SendToAddress(const Address& address, std::string_view bytes, const TimeLimits& limits) {
  QTcpSocket socket;
  Connect(socket, address, limits.connect);
  socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
  while (socket.bytesToWrite() > 0) {
    if (socket.waitForBytesWritten(static_cast<int>(limits.write.count()))) continue;
    const auto left = static_cast<std::size_t>(socket.bytesToWrite());
    socket.abort();
    TellHalf(address, bytes.size() - left, bytes.size());
  }
#ifdef __linux__
  WaitConfirmed(socket, address, bytes.size(), limits.write);
#endif
  socket.readAll();  // what the printer says of itself; left unread it would turn the farewell into a cut
  socket.disconnectFromHost();
  if (socket.state() != QAbstractSocket::UnconnectedState) {
    socket.waitForDisconnected(static_cast<int>(limits.connect.count()));
  }
}

}  // namespace app::printing
