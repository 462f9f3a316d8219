// Reads what a layout writes between braces.
#pragma once

#include <QJSValue>
#include <QString>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/printing/page/mistake.h"

namespace app::printing {

/// The text that a value of the layout is on paper: a number with a decimal comma, null as nothing. Throws Mistake,
/// with `what` as its subject, for anything else: undefined is mostly a field's name with a slip in it.
QString PrintedText(const QJSValue& value, const std::string& what);

/// The values of a list, lists inside it laid open; undefined, null and false are left out, so that a layout can write
/// `condition && band(...)`. A single value is a list of one.
std::vector<QJSValue> Flattened(const QJSValue& value);

/// True for {...}, but neither for a list nor for a function.
bool IsPlainObject(const QJSValue& value);

/// An object's properties by name and kind. Each reader hands back `otherwise` when the property is not there and
/// throws Mistake, naming object and property, when it is of another kind or out of its bounds.
class Options {
 public:
  /// `what` names the object in messages: "o item 2 de band()". Throws Mistake when the value is no object.
  Options(const QJSValue& object, std::string what);
  /// The same for an object that may be left out.
  static Options OrNone(const QJSValue& object, std::string what);

  bool Has(const char* name) const;
  double Number(const char* name, double otherwise, double least, double most);
  std::optional<double> MaybeNumber(const char* name, double least, double most);
  int Whole(const char* name, int otherwise, int least, int most);
  QString Text(const char* name, const QString& otherwise = {});
  bool Flag(const char* name, bool otherwise);
  /// Undefined when the property is not there.
  QJSValue Function(const char* name);
  QJSValue Value(const char* name);
  /// Numbers in a list, `least` to `most` of them.
  std::vector<double> Numbers(const char* name, std::size_t least, std::size_t most);
  /// "#rrggbb", "#rgb" or an English name as in web pages.
  std::uint32_t Color(const char* name, std::uint32_t otherwise);
  template <typename Choice>
  Choice OneOf(const char* name, Choice otherwise, std::initializer_list<std::pair<const char*, Choice>> choices);

  /// Throws Mistake when the object has a property that nobody asked for.
  void Done() const;
  [[noreturn]] void Refuse(const char* name, const std::string& wanted) const;
  const std::string& What() const { return what_; }

 private:
  Options() = default;
  QJSValue Taken(const char* name);

  QJSValue object_;
  std::string what_;
  std::set<QString> taken_;
};

template <typename Choice>
Choice Options::OneOf(const char* name, Choice otherwise,
                      std::initializer_list<std::pair<const char*, Choice>> choices) {
  const QJSValue value = Taken(name);
  if (value.isUndefined()) return otherwise;
  std::string wanted;
  for (const auto& [text, choice] : choices) {
    if (value.isString() && value.toString() == QLatin1String(text)) return choice;
    wanted += (wanted.empty() ? "" : ", ") + Quoted(text);
  }
  Refuse(name, "um de " + wanted);
}

}  // namespace app::printing
