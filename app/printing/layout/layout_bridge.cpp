#include "app/printing/layout/layout_bridge.h"

#include <QJSEngine>
#include <string>
#include <vector>

#include "app/printing/layout/block_reader.h"
#include "app/printing/layout/layout_prelude.h"
#include "app/printing/layout/number_text.h"
#include "app/printing/layout/root_reader.h"
#include "app/printing/layout/script_options.h"
#include "app/printing/page/mistake.h"
#include "host/errors.h"

namespace app::printing {
namespace {

// What a screen's function is handed: text as it is, a number with a point.
std::string ArgumentText(const QJSValue& value) {
  if (value.isNull() || value.isUndefined()) return {};
  return value.toString().toStdString();
}

std::string IsoText(const QJSValue& value, const std::string& function) {
  if (!value.isString() && !value.isNull()) {
    throw Mistake(function + " precisa de um texto como \"2026-03-10\", e tem " +
                  (value.isUndefined() ? "undefined (nome de campo errado?)" : Quoted(value.toString().toStdString())));
  }
  return value.isNull() ? std::string() : value.toString().toStdString();
}

}  // namespace

int LineOfStack(const QString& stack) {
  const QString mark = QStringLiteral("file:") + QLatin1String(kLayoutName) + ':';
  const qsizetype at = stack.indexOf(mark);
  if (at < 0) return 0;
  const QStringView rest = QStringView(stack).sliced(at + mark.size());
  const qsizetype end = rest.indexOf(u'\n');
  return (end < 0 ? rest : rest.first(end)).toInt();
}

LayoutBridge::LayoutBridge(QJSEngine& engine, DatasetsInScript& datasets, host::Report* unknown_functions)
    : engine_(engine), datasets_(datasets), unknown_functions_(unknown_functions) {}

void LayoutBridge::Guarded(const std::function<void()>& act) {
  try {
    act();
  } catch (const Mistake& mistake) {
    engine_.throwError(QString::fromUtf8(mistake.what()));
  } catch (const host::InputError& error) {
    engine_.throwError(QString::fromUtf8(error.what()));
  } catch (...) {
    pending_ = std::current_exception();
    engine_.throwError(QStringLiteral("a função da tela falhou"));
  }
}

void LayoutBridge::RethrowPending() {
  if (pending_) std::rethrow_exception(std::exchange(pending_, nullptr));
}

QJSValue LayoutBridge::rows(int dataset) {
  QJSValue rows;
  Guarded([&] { rows = datasets_.Rows(dataset); });
  return rows;
}

QJSValue LayoutBridge::current(int dataset) {
  QJSValue row;
  Guarded([&] { row = datasets_.Current(dataset); });
  return row;
}

int LayoutBridge::count(int dataset) { return datasets_.Count(dataset); }

QString LayoutBridge::shown(int dataset, const QJSValue& row, const QString& field) {
  QString text;
  Guarded([&] { text = datasets_.Shown(dataset, row, field); });
  return text;
}

QString LayoutBridge::number(const QJSValue& value, const QJSValue& format) {
  QString text;
  Guarded([&] {
    if (value.isNull()) return;
    if (!value.isNumber()) {
      throw Mistake("number() precisa de um número, e tem " + (value.isUndefined()
                                                                   ? "undefined (nome de campo errado?)"
                                                                   : Quoted(value.toString().toStdString())));
    }
    if (!format.isUndefined() && !format.isString()) throw Mistake("o formato de number() é um texto como \"0.000\"");
    text = QString::fromStdString(
        NumberText(value.toNumber(), format.isString() ? format.toString().toStdString() : std::string()));
  });
  return text;
}

QString LayoutBridge::date(const QJSValue& value) {
  QString text;
  Guarded([&] { text = QString::fromStdString(DateText(IsoText(value, "date()"))); });
  return text;
}

QString LayoutBridge::time(const QJSValue& value) {
  QString text;
  Guarded([&] { text = QString::fromStdString(TimeText(IsoText(value, "time()"))); });
  return text;
}

bool LayoutBridge::encodes(const QString& kind, const QJSValue& value) {
  bool taken = false;
  Guarded([&] { taken = CanEncode(kind.toStdString(), PrintedText(value, "o valor de encodes()").toStdString()); });
  return taken;
}

double LayoutBridge::textWidth(const QString& text, const QJSValue& style) {
  double width = 0;
  Guarded([&] {
    const TextStyle wanted = ReadFullStyle(style);
    if (!measure_) measure_ = std::make_unique<TextMeasure>();
    width = measure_->Width(measure_->StyleIndex(wanted), text);
  });
  return width;
}

QString LayoutBridge::unknown(const QString& name, const QJSValue& values) {
  QString text;
  Guarded([&] {
    std::vector<std::string> arguments;
    const quint32 count = values.property(QStringLiteral("length")).toUInt();
    for (quint32 at = 0; at < count; ++at) arguments.push_back(ArgumentText(values.property(at)));
    std::optional<std::string> answer;
    if (unknown_functions_ != nullptr && unknown_functions_->OnUnknownFunction) {
      answer = unknown_functions_->OnUnknownFunction(name.toStdString(), arguments);
    }
    if (!answer) throw Mistake("a função " + Quoted(name.toStdString()) + " não existe");
    text = QString::fromStdString(*answer);
  });
  return text;
}

QJSValue LayoutBridge::block(const QString& kind, const QJSValue& first, const QJSValue& second, const QString& stack) {
  QJSValue handle;
  Guarded([&] {
    auto block = std::make_shared<Block>(ReadBlock(kind.toStdString(), first, second, datasets_));
    block->line = LineOfStack(stack);
    handle = engine_.newQObject(new BlockHandle(std::move(block)));  // the engine owns it
  });
  return handle;
}

void LayoutBridge::root(const QString& kind, const QJSValue& options, const QString& stack) {
  Guarded([&] {
    if (root_) throw Mistake("só pode haver uma chamada de report(), label() ou text()");
    root_ = ReadRoot(kind.toStdString(), options, datasets_);
    root_->line = LineOfStack(stack);
  });
}

}  // namespace app::printing
