#include "app/serial/open_error.h"

#include <QFileInfo>
#include <QString>

namespace app::serial {
namespace {

// A port that another program holds and one that this person may not open give the same error.
bool MayBeOpened(const std::string& port) {
#ifdef Q_OS_WIN
  return !port.empty();  // there, refused means held
#else
  const QString name = QString::fromStdString(port);
  const QFileInfo file(name.startsWith(u'/') ? name : QStringLiteral("/dev/") + name);
  return file.isReadable() && file.isWritable();
#endif
}

}  // namespace

std::string OpenErrorText(const scale::PortSettings& port, QSerialPort::SerialPortError error) {
  const std::string the_port = "A porta " + port.port;
  switch (error) {
    case QSerialPort::DeviceNotFoundError:
      return the_port + " não existe neste computador; confira o cabo da balança e a configuração (F10).";
    case QSerialPort::PermissionError:
      if (MayBeOpened(port.port)) return the_port + " está em uso por outro programa ou por outra tela.";
      return "Sem permissão para abrir a porta " + port.port +
             "; o usuário do computador precisa estar no grupo dialout.";
    case QSerialPort::UnsupportedOperationError:
      return the_port +
             " não aceita esta velocidade, paridade, bits ou controle de fluxo; confira a configuração (F10).";
    default:
      return the_port + " não pôde ser aberta; confira o cabo da balança e a configuração (F10).";
  }
}

}  // namespace app::serial
