#include "app/printing/layout/script_options.h"

#include <QColor>
#include <QJSValueIterator>
#include <cmath>

#include "app/printing/layout/number_text.h"

namespace app::printing {
namespace {

constexpr qsizetype kLongestText = 200'000;      // characters in one piece; a page has some 6,000
constexpr std::size_t kLongestList = 1'000'000;  // pieces in one list

std::string Shown(const QJSValue& value) {
  if (value.isUndefined()) return "undefined";
  if (value.isCallable()) return "uma função";
  if (value.isArray()) return "uma lista";
  if (value.isObject()) return "um objeto";
  if (value.isString()) return Quoted(value.toString().toStdString());
  return value.toString().toStdString();
}

void Flatten(const QJSValue& value, std::vector<QJSValue>& flat, int depth) {
  constexpr int kDeepest = 50;  // a list that holds itself has no end
  if (depth > kDeepest) throw Mistake("as listas estão uma dentro da outra sem fim");
  if (value.isUndefined() || value.isNull() || (value.isBool() && !value.toBool())) return;
  if (!value.isArray()) {
    if (flat.size() >= kLongestList) throw Mistake("a lista tem mais de um milhão de partes");
    flat.push_back(value);
    return;
  }
  const quint32 count = value.property(QStringLiteral("length")).toUInt();
  if (count > kLongestList) throw Mistake("a lista tem mais de um milhão de partes");
  for (quint32 at = 0; at < count; ++at) Flatten(value.property(at), flat, depth + 1);
}

std::string Bounds(double least, double most) {
  return "um número de " + NumberText(least, "") + " a " + NumberText(most, "");
}

}  // namespace

QString PrintedText(const QJSValue& value, const std::string& what) {
  if (value.isString()) {
    QString text = value.toString();
    if (text.size() > kLongestText) throw Mistake(what + " é um texto longo demais");
    return text;
  }
  if (value.isNull()) return {};
  if (value.isNumber()) return QString::fromStdString(NumberText(value.toNumber(), ""));
  if (value.isUndefined()) throw Mistake(what + " não tem valor (undefined); o nome do campo está certo?");
  throw Mistake(what + " precisa ser um texto ou um número, e é " + Shown(value));
}

std::vector<QJSValue> Flattened(const QJSValue& value) {
  std::vector<QJSValue> flat;
  Flatten(value, flat, 0);
  return flat;
}

bool IsPlainObject(const QJSValue& value) { return value.isObject() && !value.isArray() && !value.isCallable(); }

Options::Options(const QJSValue& object, std::string what) : object_(object), what_(std::move(what)) {
  if (!IsPlainObject(object)) throw Mistake(what_ + " precisa de um objeto {...}, e tem " + Shown(object));
}

Options Options::OrNone(const QJSValue& object, std::string what) {
  if (!object.isUndefined()) return Options(object, std::move(what));
  Options none;
  none.what_ = std::move(what);
  return none;
}

void Options::Refuse(const char* name, const std::string& wanted) const {
  throw Mistake(what_ + ": " + Quoted(name) + " precisa ser " + wanted + ", e é " +
                Shown(object_.property(QLatin1String(name))));
}

bool Options::Has(const char* name) const { return !object_.property(QLatin1String(name)).isUndefined(); }

QJSValue Options::Taken(const char* name) {
  const QString key = QLatin1String(name);
  taken_.insert(key);
  return object_.property(key);
}

QJSValue Options::Value(const char* name) { return Taken(name); }

std::optional<double> Options::MaybeNumber(const char* name, double least, double most) {
  const QJSValue value = Taken(name);
  if (value.isUndefined()) return std::nullopt;
  const double number = value.toNumber();
  if (!value.isNumber() || !(number >= least && number <= most)) Refuse(name, Bounds(least, most));
  return number;
}

double Options::Number(const char* name, double otherwise, double least, double most) {
  return MaybeNumber(name, least, most).value_or(otherwise);
}

int Options::Whole(const char* name, int otherwise, int least, int most) {
  const double number = Number(name, otherwise, least, most);
  if (number != std::floor(number)) Refuse(name, "um número inteiro");
  return static_cast<int>(number);
}

QString Options::Text(const char* name, const QString& otherwise) {
  const QJSValue value = Taken(name);
  if (value.isUndefined() && !object_.hasProperty(QLatin1String(name))) return otherwise;
  return PrintedText(value, what_ + ": " + Quoted(name));
}

bool Options::Flag(const char* name, bool otherwise) {
  const QJSValue value = Taken(name);
  if (value.isUndefined()) return otherwise;
  if (!value.isBool()) Refuse(name, "true ou false");
  return value.toBool();
}

QJSValue Options::Function(const char* name) {
  QJSValue value = Taken(name);
  if (!value.isUndefined() && !value.isCallable()) Refuse(name, "uma função");
  return value;
}

std::vector<double> Options::Numbers(const char* name, std::size_t least, std::size_t most) {
  const QJSValue value = Taken(name);
  const std::string wanted = "uma lista de " + std::to_string(most) + " números";
  if (!value.isArray()) Refuse(name, wanted);
  const quint32 count = value.property(QStringLiteral("length")).toUInt();
  if (count < least || count > most) Refuse(name, wanted);
  std::vector<double> numbers;
  for (quint32 at = 0; at < count; ++at) {
    const QJSValue number = value.property(at);
    constexpr double kFarthest = 100'000;
    if (!number.isNumber() || !(std::fabs(number.toNumber()) <= kFarthest)) Refuse(name, wanted);
    numbers.push_back(number.toNumber());
  }
  return numbers;
}

std::uint32_t Options::Color(const char* name, std::uint32_t otherwise) {
  const QJSValue value = Taken(name);
  if (value.isUndefined()) return otherwise;
  const QColor color = value.isString() ? QColor(value.toString()) : QColor();
  if (!color.isValid()) Refuse(name, "uma cor como \"#eeeeee\" ou \"black\"");
  return color.rgb() & 0xFFFFFFu;
}

void Options::Done() const {
  if (object_.isUndefined()) return;
  QJSValueIterator property(object_);
  while (property.hasNext()) {
    property.next();
    if (taken_.contains(property.name())) continue;
    throw Mistake(what_ + " não conhece a propriedade " + Quoted(property.name().toStdString()));
  }
}

}  // namespace app::printing
