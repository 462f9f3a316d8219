// What each shared register looks like to a person: captions, which columns stand in its list, what to say about each.
// Types, widths, keys and defaults are the database's own (app/tables/table_shape.h); references, limits and flags are
// app/tables/import_rules.h's.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace app::tables {

struct ColumnDescription {
  std::string_view name;
  std::string_view caption;
  int list_width = 0;             // characters in the register's list and in lookups; 0 for not listed
  std::string_view format = {};   // display format of a number
  std::string_view help = {};     // a sentence beside the input, where the caption does not say it all
  bool required = false;          // although the database would take it empty
  std::string_view initial = {};  // of a new record, and what a flag that was never stored means
  bool set_by_rolls = false;      // the write-off of a roll sets it: no reason to call the record changed elsewhere
};

/// Rows that belong to one record and are edited with it; there is one for each of the values of `key`.
struct DetailDescription {
  std::string_view table;
  std::string_view caption;
  std::string_view owner;  // column that holds the record's key
  ColumnDescription key;   // a whole number, counted from 1
  std::vector<std::string_view> key_texts;
  std::vector<ColumnDescription> columns;  // all given, or none: then there is no row
};

struct RegisterDescription {
  std::string_view class_name;  // "TfmMateriais"
  std::string_view caption;     // "Materiais"
  std::string_view table;       // logical name
  std::string_view noun;        // of one record, within a sentence: "material"
  bool feminine = false;
  std::string_view text_column;            // what a record is called; searched besides the key
  std::vector<ColumnDescription> columns;  // the key first, then in working order
  std::optional<DetailDescription> detail = {};

  std::string_view Key() const { return columns.front().name; }
  /// Null when it has no such column.
  const ColumnDescription* Find(std::string_view column) const;
};

/// In the order of the menu.
std::span<const RegisterDescription> Registers();

/// The register over that logical table; null when there is none.
const RegisterDescription* FindRegister(std::string_view table);

/// What a column of a register is called; empty when the table is no register or lacks the column.
std::string_view CaptionOf(std::string_view table, std::string_view column);

/// "o material M1", "a cor 01"; at the start of a sentence "O material M1".
std::string RecordName(const RegisterDescription& description, std::string_view key, bool starts_sentence = false);
/// A participle that agrees with the record: "excluído", "excluída" for "excluíd".
std::string Agreeing(const RegisterDescription& description, std::string_view stem);

/// What the register's log rows are filed under: "CADASTRO DE MATERIAIS".
std::string LogSubject(const RegisterDescription& description);

}  // namespace app::tables
