#include "app/printing/layout/layout_engine.h"

#include <QStringList>

#include "app/printing/layout/layout_prelude.h"
#include "app/printing/layout/number_text.h"
#include "app/printing/page/mistake.h"

namespace app::printing {
namespace {

QJSValue InfoOf(QJSEngine& engine, const PrintRequest& request) {
  QJSValue info = engine.newObject();
  const auto set = [&info](const char* name, const std::string& text) {
    info.setProperty(QLatin1String(name), QString::fromStdString(text));
  };
  set("user", request.user);
  set("company", request.company);
  set("moment", request.moment.ToIso());
  set("report", request.report);
  return info;
}

// The engine's own errors keep their kind ("TypeError: ..."); those that the program threw are plain sentences.
std::string TextOf(const QJSValue& thrown) {
  if (!thrown.isError()) return thrown.toString().toStdString();
  const QString kind = thrown.property(QStringLiteral("name")).toString();
  const QString message = thrown.property(QStringLiteral("message")).toString();
  if (kind == QLatin1String("SyntaxError")) return "erro de sintaxe: " + message.toStdString();
  if (kind == QLatin1String("Error") || kind == QLatin1String("ReferenceError")) return message.toStdString();
  return (kind + QStringLiteral(": ") + message).toStdString();
}

int LineOf(const QJSValue& thrown) {
  if (!thrown.isError()) return 0;
  return LineOfStack(thrown.property(QStringLiteral("stack")).toString());
}

// Frames of a trace are "function:line:column:file".
int LineOfTrace(const QStringList& trace) {
  for (const QString& frame : trace) {
    const QStringList parts = frame.split(u':');
    if (parts.size() >= 2 && frame.endsWith(QLatin1String(kLayoutName))) return parts[1].toInt();
  }
  return 0;
}

}  // namespace

LayoutEngine::LayoutEngine(const PrintRequest& request, const LayoutFile& file, std::chrono::milliseconds limit)
    : file_(file),
      time_(engine_, limit),
      datasets_(engine_, request.owner),
      bridge_(engine_, datasets_, request.unknown_functions) {
  QJSEngine::setObjectOwnership(&bridge_, QJSEngine::CppOwnership);
  QJSValue prelude = engine_.evaluate(QString::fromUtf8(kPrelude), QLatin1String(kPreludeName));
  const QStringList dataset_names = datasets_.Names();
  QJSValue names = engine_.newArray(static_cast<uint>(dataset_names.size()));
  for (qsizetype at = 0; at < dataset_names.size(); ++at) {
    names.setProperty(static_cast<quint32>(at), dataset_names[at]);
  }
  const QJSValue tools =
      prelude.callWithInstance(engine_.globalObject(), {engine_.newQObject(&bridge_), names, InfoOf(engine_, request)});
  call_ = tools.property(QStringLiteral("call"));
  datasets_.SetRowFactory(tools.property(QStringLiteral("rowFactory")));
}

void LayoutEngine::CheckTime(int line) const {
  if (!time_.IsOver()) return;
  const double seconds = std::chrono::duration<double>(time_.Limit()).count();
  throw Mistake("o leiaute não terminou em " + NumberText(seconds, "0.##") + " s (um laço sem fim?)", line);
}

const Root& LayoutEngine::Run() {
  QStringList trace;
  QJSValue result;
  {
    const TimeLimit::Stay stay(time_);
    result = engine_.evaluate(file_.text, QLatin1String(kLayoutName), 1, &trace);
  }
  CheckTime(0);
  bridge_.RethrowPending();
  if (result.isError() || !trace.isEmpty()) {
    int line = LineOf(result);
    if (line == 0) line = LineOfTrace(trace);
    throw Mistake(TextOf(result), line);
  }
  if (!bridge_.GetRoot()) throw Mistake("o arquivo precisa chamar report(), label() ou text()");
  return *bridge_.GetRoot();
}

QJSValue LayoutEngine::Call(const QJSValue& function, const QJSValueList& arguments, int line) {
  QJSValue result;
  {
    const TimeLimit::Stay stay(time_);
    result = call_.call(QJSValueList{function} + arguments);
  }
  CheckTime(line);
  bridge_.RethrowPending();
  if (!result.isError()) return result;
  const int own = LineOf(result);
  throw Mistake(TextOf(result), own > 0 ? own : line);
}

}  // namespace app::printing
