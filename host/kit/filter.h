// The filter texts of in-memory datasets.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/value.h"

namespace host {

/// A condition over the fields of a row: comparisons "=", "<>", "<", "<=", ">", ">=" and "like" between a field and a
/// quoted text or a number, joined by "and", "or", "not" and parentheses ("Codigo = 'x' and Lote like 'abc%'",
/// "qtde > 0"). Words and field names without regard to case; text compares with case; in a like pattern "%" is any
/// text and "_" any character. A null field equals empty text and counts as 0 against a number.
class Filter {
 public:
  using Lookup = std::function<const Value&(std::size_t field)>;
  /// `field_index` turns a field's name into its index, or -1. Throws InputError when the text is not a condition or
  /// names an unknown field.
  static Filter Parse(std::string_view text, const std::function<int(std::string_view)>& field_index);

  bool Matches(const Lookup& value) const;

  struct Node;

 private:
  explicit Filter(std::shared_ptr<const Node> root) : root_(std::move(root)) {}
  std::shared_ptr<const Node> root_;
};

}  // namespace host
