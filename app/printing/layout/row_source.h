// Rows that a table or a label runs over.
#pragma once

#include <QJSValue>
#include <cstddef>
#include <string>
#include <vector>

#include "app/printing/page/printout.h"
#include "host/kit/dataset.h"
#include "host/value.h"

namespace app::printing {

/// A dataset's rows, or a list that the layout made.
class RowSource {
 public:
  /// A field of the rows, found once for all of them.
  struct FieldRef {
    std::string name;
    std::size_t index = 0;
    const host::Field* field = nullptr;  // tells caption and format; null for a list of the layout's own making
  };

  virtual ~RowSource() = default;
  virtual std::size_t Size() const = 0;
  /// By name, without regard to case where the rows are a dataset's. Throws Mistake when the rows have no such field.
  virtual FieldRef Find(const std::string& field) const = 0;
  /// All fields of the rows, in their order; none for rows that are no objects.
  virtual std::vector<FieldRef> Fields() const = 0;
  /// Throws Mistake when the value is none that can be printed.
  virtual host::Value At(std::size_t row, const FieldRef& field) const = 0;
  /// The row as the layout's functions get it.
  virtual QJSValue ScriptRow(std::size_t row) = 0;
};

/// All fields of all rows as data; empty without fields. Values that cannot be printed are left out.
DataTable DataOf(const RowSource& rows);

/// The value of a field of this type (nothing: any) that a layout's value is: a date is "2026-03-10" there. Throws
/// Mistake, with `what` as its subject, for what is no value.
host::Value ValueFromScript(const QJSValue& value, const host::Field* field, const std::string& what);

}  // namespace app::printing
