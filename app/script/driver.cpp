#include "app/script/driver.h"

#include <QCoreApplication>
#include <QJSEngine>
#include <QStringDecoder>
#include <QStringList>
#include <memory>
#include <optional>
#include <ostream>

#include "app/script/bridge.h"
#include "app/script/prelude.h"
#include "app/script/values.h"
#include "app/script/watchdog.h"

namespace app::script {
namespace {

std::string OneLine(std::string text) {
  for (char& character : text) {
    if (character == '\n' || character == '\r') character = ' ';
  }
  return text;
}

// The line in the script's own file, out of a stack that names places of the prelude too; empty when unknown. Frames
// are "function:line:column:file" (of an exception) or "function@file:line" (of an error object).
QString LineOf(const QStringList& frames, bool of_error_object) {
  const QString prelude = QStringLiteral("file:") + kPreludeName;
  for (const QString& frame : frames) {
    if (frame.contains(prelude)) continue;
    const QStringList parts = frame.split(':');
    const qsizetype at = of_error_object ? parts.size() - 1 : 1;
    if (at < 1 || at >= parts.size()) continue;
    bool is_number = false;
    if (parts[at].toInt(&is_number) > 0 && is_number) return parts[at];
  }
  return {};
}

RunResult Describe(const QJSValue& thrown, const QStringList& trace, const std::string& file) {
  QString line;
  if (thrown.isError()) line = LineOf(thrown.property("stack").toString().split('\n'), true);
  if (line.isEmpty()) line = LineOf(trace, false);
  // The programmer's own errors keep their kind ("ReferenceError: x is not defined"); the others are plain text.
  const QString kind = thrown.isError() ? thrown.property("name").toString() : QString();
  const std::string text = OneLine(Utf8(
      thrown.isError() && kind == QStringLiteral("Error") ? thrown.property("message").toString() : thrown.toString()));
  return {false, file + ":" + (line.isEmpty() ? std::string() : Utf8(line) + ":") + " " + text, text};
}

QJSValue Given(QJSEngine& engine, const std::map<std::string, std::string>& given) {
  QJSValue object = engine.newObject();
  for (const auto& [name, value] : given) object.setProperty(QString::fromStdString(name), ToScript(value));
  return object;
}

// The engine wants an application object; a window's program has one already.
std::unique_ptr<QCoreApplication> EnsureQtApplication() {
  static int count = 1;
  static char name[] = "tecelagem";
  static char* arguments[] = {name, nullptr};
  if (QCoreApplication::instance() != nullptr) return nullptr;
  return std::make_unique<QCoreApplication>(count, arguments);
}

std::optional<QString> Decoded(std::string_view source) {
  QStringDecoder decoder(QStringDecoder::Utf8);
  QString text = decoder.decode(QByteArrayView(source.data(), static_cast<qsizetype>(source.size())));
  if (decoder.hasError()) return std::nullopt;
  return text;
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const auto& line : lines) text += (text.empty() ? "" : "; ") + line;
  return OneLine(text);
}

}  // namespace

RunResult Run(Application& application, ScriptedPerson& person, std::string_view source, const RunOptions& options) {
  const auto text = Decoded(source);
  if (!text) return {false, options.name + ": o arquivo não está em UTF-8", {}};
  const auto qt_application = EnsureQtApplication();
  QJSEngine engine;
  Bridge bridge(engine, application, person, options);
  QJSEngine::setObjectOwnership(&bridge, QJSEngine::CppOwnership);
  QJSValue prelude = engine.evaluate(kPrelude, kPreludeName);
  prelude.callWithInstance(engine.globalObject(), {engine.newQObject(&bridge)});
  engine.globalObject().setProperty(QStringLiteral("given"), Given(engine, options.given));

  QStringList trace;
  QJSValue result;
  bool time_is_over = false;
  {
    const Watchdog watchdog(engine, options.timeout);
    result = engine.evaluate(*text, QStringLiteral("script"), 1, &trace);
    time_is_over = watchdog.TimeIsOver();
  }
  bridge.TellUnexpected();

  if (time_is_over) {
    const auto seconds = std::chrono::duration<double>(options.timeout).count();
    return {false, options.name + ": o tempo de " + Utf8(QString::number(seconds)) + " s acabou", {}};
  }
  if (result.isError() || !trace.isEmpty()) return Describe(result, trace, options.name);
  if (!bridge.FailedAssertions().empty()) return {false, options.name + ": " + Joined(bridge.FailedAssertions()), {}};
  const auto unused = person.Unused();
  if (!unused.empty()) return {false, options.name + ": preparado e nunca pedido: " + Joined(unused), {}};
  return {};
}

}  // namespace app::script
