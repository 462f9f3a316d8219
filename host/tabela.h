// The data module that all screens share: the connection and the shared datasets.
#pragma once

#include <string_view>
#include <vector>

#include "host/database.h"
#include "host/value.h"

namespace host {

class Screen;

enum class SharedState { kBrowse, kEdit, kInsert };

/// A named dataset over one table, which looks rows up in the database when it is asked to: it is never read whole.
class SharedDataset {
 public:
  virtual ~SharedDataset() = default;

  /// Stands on the first row where the columns (joined by ";") have these values and which passes the filter; false,
  /// and no row, when there is none.
  virtual bool Locate(std::string_view columns, const std::vector<Value>& values) = 0;
  /// A condition in SQL that every row must meet; empty takes it off.
  virtual void SetFilter(std::string_view condition) = 0;
  /// The column's value in the current row, null without one. Throws std::out_of_range for an unknown column.
  virtual Value FieldByName(std::string_view column) const = 0;

  /// True on a stored row: after a Locate that found one or a Post. False after a Delete and while a new row is typed.
  virtual bool HasRow() const = 0;
  /// What Append and Edit began and Post and Cancel end.
  virtual SharedState State() const = 0;
  bool InEdit() const { return State() != SharedState::kBrowse; }

  /// Editing, for the datasets that a screen edits. Append and Edit start (Edit throws std::logic_error without a row),
  /// SetField fills, Post writes the row (throws DatabaseError and stays in edit), Cancel gives up, Delete removes the
  /// current row.
  virtual void Append() = 0;
  virtual void Edit() = 0;
  virtual void SetField(std::string_view column, const Value& value) = 0;
  virtual void Post() = 0;
  virtual void Cancel() = 0;
  virtual void Delete() = 0;
};

/// Each screen that opens a shared dataset has it to itself: row, filter and edit are its own.
class Tabela {
 public:
  virtual ~Tabela() = default;

  virtual Database& IBDatabase() = 0;
  /// Opens a shared dataset by name ("tbMateriais"), counted: each opening needs its closing by the same screen. Throws
  /// InputError for a name that the host does not know.
  virtual void AbreTabela(std::string_view name, const Screen& opener) = 0;
  virtual void FechaTabela(std::string_view name, const Screen& opener) = 0;
  /// The dataset that this screen opened; throws InputError when it has not.
  virtual SharedDataset& Dataset(std::string_view name, const Screen& opener) = 0;
};

}  // namespace host
