// Values between the script and the screens.
#pragma once

#include <QJSEngine>
#include <QJSValue>
#include <string>

#include "host/value.h"

namespace app::script {

/// Null, a number, a text; a date is the text "YYYY-MM-DD".
QJSValue ToScript(const host::Value& value);
QJSValue ToScript(const std::string& text);

/// UTF-8 text of a script's string.
std::string Utf8(const QString& text);

/// What a person would type for this value: a number with a decimal comma, true and false as "S" and "N", null as
/// nothing; where a date is wanted, "YYYY-MM-DD" as "DD/MM/YYYY". Throws InputError for anything else (undefined, a
/// list, a number that is not finite).
std::string TypedText(const QJSValue& value, bool date_wanted);

/// A value for a statement's parameter: null, whole number, number, text. Throws InputError as TypedText does.
host::Value ToParameter(const QJSValue& value);

/// True when a grid's value is what the script states: texts equal, numbers equal, null and empty text the same, a
/// date as "YYYY-MM-DD".
bool SameValue(const host::Value& shown, const QJSValue& wanted);

}  // namespace app::script
