// The statements of a register: its list, one record with what belongs to it, and the writing of it.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"
#include "app/tables/descriptions.h"
#include "app/tables/import_rules.h"
#include "app/tables/table_shape.h"
#include "host/value.h"

namespace app::registers {

/// A record as it is stored.
struct Record {
  std::vector<host::Value> values;               // of the description's columns, in their order
  std::vector<std::vector<host::Value>> detail;  // per key of the detail its columns' values; empty where there is none
};

/// All operations throw host::DatabaseError; the work of the running action is then still pending.
class RegisterStore {
 public:
  /// Rows that List hands back at most; a register of 50,000 rows is never read whole.
  static constexpr std::size_t kListed = 200;

  /// Both outlive the store. Reads what the database says of the table.
  RegisterStore(firebird::Database& database, const tables::RegisterDescription& description);

  const tables::TableShape& Shape() const { return shape_; }
  const tables::TableShape& DetailShape() const { return detail_shape_; }
  const tables::Column& ColumnOf(const tables::ColumnDescription& column) const { return *shape_.Find(column.name); }
  const tables::Column& DetailColumnOf(const tables::ColumnDescription& column) const {
    return *detail_shape_.Find(column.name);
  }

  /// The listed columns of the records whose key or text contains this, in the order of the key: one more than kListed
  /// when there are more.
  std::unique_ptr<host::TTIQuery> List(std::string_view containing) const;
  /// The listed columns of one record; empty when there is none.
  std::unique_ptr<host::TTIQuery> ListRow(std::string_view key) const;

  std::optional<Record> Read(std::string_view key) const;
  /// The same, held for this station until the action ends.
  std::optional<Record> ReadHeld(std::string_view key) const;
  bool Exists(std::string_view key) const;
  /// What the record that a reference names is called; nothing when there is none.
  std::optional<std::string> TextOf(const tables::Reference& reference, std::string_view key) const;

  void Insert(const Record& record) const;
  /// Writes the columns that differ, and the detail when it does.
  void Update(std::string_view key, const Record& before, const Record& after) const;
  /// With its detail, and with stock rows that never held anything.
  void Delete(std::string_view key) const;

 private:
  std::string ListSql() const;
  std::vector<std::vector<host::Value>> ReadDetail(std::string_view key) const;
  void InsertDetail(std::string_view key, const Record& record) const;
  void DeleteDetail(std::string_view key) const;

  firebird::Database& database_;
  const tables::RegisterDescription& description_;
  tables::TableShape shape_;
  tables::TableShape detail_shape_;
};

/// The reference of a register's column to another register; null when it has none.
const tables::Reference* ReferenceOf(std::string_view table, std::string_view column);

}  // namespace app::registers
