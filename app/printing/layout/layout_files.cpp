#include "app/printing/layout/layout_files.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <algorithm>

#include "app/embedded.h"
#include "app/printing/page/mistake.h"
#include "host/errors.h"

namespace app::printing {
namespace {

constexpr qint64 kLargestLayout = 4'000'000;  // bytes; the largest of ours has some ten thousand

// The line of the first byte that is not UTF-8, from 1.
qsizetype LineOfBadText(const QByteArray& bytes) {
  qsizetype line = 1;
  for (qsizetype from = 0; from < bytes.size(); ++line) {
    qsizetype end = bytes.indexOf('\n', from);
    if (end < 0) end = bytes.size();
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(QByteArrayView(bytes).sliced(from, end - from));
    if (decoder.hasError()) return line;
    from = end + 1;
  }
  return line;
}

QString Decoded(const QByteArray& bytes, const std::string& name) {
  QStringDecoder decoder(QStringDecoder::Utf8);  // skips a byte order mark
  QString text = decoder.decode(bytes);
  if (decoder.hasError()) {
    throw host::InputError(At(name, static_cast<int>(LineOfBadText(bytes))) + "o arquivo não está em UTF-8.");
  }
  return text;
}

bool IsPlainName(const std::string& report) {
  return !report.empty() && std::all_of(report.begin(), report.end(), [](unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
  });
}

}  // namespace

LayoutFile FindLayout(const std::string& report, char kind, const std::string& folder) {
  if (!IsPlainName(report)) throw host::InputError("O nome de relatório \"" + report + "\" não é válido.");
  const std::string name = report + (kind == 'T' ? ".text.js" : ".js");
  if (!folder.empty()) {
    const std::string path = folder + (folder.back() == '/' ? "" : "/") + name;
    QFile file(QString::fromStdString(path));
    if (file.exists()) {
      if (QFileInfo(file).isDir() || !file.open(QIODevice::ReadOnly)) {
        throw host::InputError("Não foi possível ler o leiaute " + path + ": " + file.errorString().toStdString() +
                               ".");
      }
      if (file.size() > kLargestLayout) throw host::InputError("O leiaute " + path + " é grande demais.");
      return {path, Decoded(file.readAll(), path)};
    }
  }
  for (const EmbeddedFile& file : LayoutFiles()) {
    if (file.name != name) continue;
    return {name, Decoded(QByteArray(file.text.data(), static_cast<qsizetype>(file.text.size())), name)};
  }
  throw host::InputError("Não há leiaute " + name + " para o relatório \"" + report + "\".");
}

}  // namespace app::printing
