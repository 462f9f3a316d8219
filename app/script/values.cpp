#include "app/script/values.h"

#include <algorithm>
#include <cmath>

#include "host/date.h"
#include "host/decimal.h"
#include "host/errors.h"

namespace app::script {
namespace {

// Whole numbers up to here are exact in a script's number.
constexpr double kLargestExactInteger = 9007199254740992.0;

[[noreturn]] void RefuseKind(const QJSValue& value) {
  if (value.isUndefined()) throw host::InputError("valor não informado (undefined)");
  throw host::InputError("valor que não se pode digitar: " + Utf8(value.toString()));
}

double Finite(const QJSValue& value) {
  const double number = value.toNumber();
  if (!std::isfinite(number)) throw host::InputError("número inválido: " + Utf8(value.toString()));
  return number;
}

}  // namespace

std::string Utf8(const QString& text) { return text.toStdString(); }

QJSValue ToScript(const std::string& text) { return QJSValue(QString::fromStdString(text)); }

QJSValue ToScript(const host::Value& value) {
  if (value.IsNull()) return QJSValue(QJSValue::NullValue);
  if (value.IsNumber()) return QJSValue(value.AsFloat());
  if (value.IsDate()) return ToScript(value.AsDate().ToIso());
  return ToScript(value.AsText());
}

std::string TypedText(const QJSValue& value, bool date_wanted) {
  if (value.isNull()) return {};
  if (value.isBool()) return value.toBool() ? "S" : "N";
  if (value.isNumber()) {
    std::string text = host::PointText(Finite(value));
    std::replace(text.begin(), text.end(), '.', ',');
    return text;
  }
  if (!value.isString()) RefuseKind(value);
  std::string text = Utf8(value.toString());
  if (date_wanted) {
    if (const auto date = host::Date::FromIso(text)) return date->ToDisplay();
  }
  return text;
}

host::Value ToParameter(const QJSValue& value) {
  if (value.isNull()) return {};
  if (value.isBool()) return host::Value(value.toBool() ? "S" : "N");
  if (value.isNumber()) {
    const double number = Finite(value);
    if (number == std::floor(number) && std::fabs(number) <= kLargestExactInteger) {
      return host::Value(static_cast<std::int64_t>(number));
    }
    return host::Value(number);
  }
  if (!value.isString()) RefuseKind(value);
  return host::Value(Utf8(value.toString()));
}

bool SameValue(const host::Value& shown, const QJSValue& wanted) {
  if (wanted.isNull()) return shown.IsNull() || (shown.IsText() && shown.AsText().empty());
  if (wanted.isNumber()) return shown.IsNumber() && shown.AsFloat() == wanted.toNumber();
  if (wanted.isBool()) return shown.AsText() == (wanted.toBool() ? "S" : "N");
  const std::string text = Utf8(wanted.toString());
  if (shown.IsDate()) return shown.AsDate().ToIso() == text;
  return shown.AsText() == text;
}

}  // namespace app::script
