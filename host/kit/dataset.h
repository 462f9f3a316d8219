// Rows held in memory: what a grid shows and a screen works on.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/database.h"
#include "host/kit/component.h"
#include "host/kit/filter.h"
#include "host/value.h"

namespace host {

enum class FieldType { kText, kInteger, kFloat, kDate, kMemo };

struct FieldDef {
  std::string name;
  FieldType type = FieldType::kText;
  std::size_t width = 0;     // of text, in characters; 0 for no limit
  std::string format = {};   // display format of a number
  std::string caption = {};  // the name when empty
};

class Dataset;

/// A column of the dataset, read and written in its current row.
class Field {
 public:
  Field(Dataset& dataset, std::size_t index, FieldDef def);

  const FieldDef& Def() const { return def_; }
  const std::string& Name() const { return def_.name; }
  void SetFormat(std::string_view format) { def_.format = format; }
  void SetCaption(std::string_view caption) { def_.caption = caption; }

  const Value& Get() const;
  std::string AsText() const { return Get().AsText(); }
  std::int64_t AsInteger() const { return Get().AsInteger(); }
  double AsFloat() const { return Get().AsFloat(); }
  Date AsDate() const { return Get().AsDate(); }
  bool IsNull() const { return Get().IsNull(); }
  /// The value as a grid shows it: number in its format with a decimal comma, date "DD/MM/YYYY".
  std::string DisplayText() const;
  /// The same for a value of another row of this column.
  std::string DisplayText(const Value& value) const;

  /// Puts a value in the current row, converted to the field's type (text is cut to the width, text that is no number
  /// becomes null). The dataset must be in edit or insert state (std::logic_error otherwise). Fires OnValidate and
  /// then OnChange; what either throws goes on to the caller, and when OnValidate threw the old value is back.
  void Set(const Value& value);

  std::function<void(Field&)> OnValidate;
  std::function<void(Field&)> OnChange;

  /// The value in the kind that a field of this definition holds; null for what cannot be turned into it.
  static Value Converted(const Value& value, const FieldDef& def);

 private:
  Dataset& dataset_;
  std::size_t index_;
  FieldDef def_;
};

enum class DatasetState { kInactive, kBrowse, kEdit, kInsert };

/// Reads the posted rows of a dataset, unfiltered, in its index order, without moving the dataset's own cursor.
/// Rows appended meanwhile come into view.
class DatasetCursor {
 public:
  explicit DatasetCursor(const Dataset& dataset);
  void First();
  void Next();
  bool Eof() const;
  std::size_t RecordCount() const;
  const Value& FieldByName(std::string_view name) const;

 private:
  const Dataset& dataset_;
  mutable std::vector<std::size_t> order_;  // identities of the rows seen so far
  mutable std::size_t newest_ = 0;          // the highest of them
  mutable std::size_t position_ = 0;
  void Refresh() const;
};

class Dataset : public Component {
 public:
  Dataset(Screen& owner, std::string name, std::vector<FieldDef> fields = {});
  ~Dataset() override;

  // --- structure ---------------------------------------------------------------------------------------------
  /// Rebuilds the fields and drops all rows. Handlers of the old fields are gone.
  void CreateFields(std::vector<FieldDef> fields);
  /// Takes fields and rows from an open query's result, types as the values have them. Of several columns of one name
  /// the first keeps it, the later ones are called NAME_1, NAME_2 and so on. Fires AfterScroll once. The query, which
  /// keeps its rows, ends past the last one.
  void LoadFrom(TTIQuery& query);
  /// The same without a copy of the rows; the query is gone then.
  void LoadFrom(std::unique_ptr<TTIQuery> query);
  bool Active() const { return state_ != DatasetState::kInactive; }
  void Close();
  std::size_t FieldCount() const { return fields_.size(); }
  Field& FieldAt(std::size_t index) { return *fields_.at(index); }
  const Field& FieldAt(std::size_t index) const { return *fields_.at(index); }
  /// Null when there is no such field; names without regard to case.
  Field* FindField(std::string_view name) const;
  /// Throws std::out_of_range for an unknown field.
  Field& FieldByName(std::string_view name) const;
  Field& operator[](std::string_view name) const { return FieldByName(name); }

  // --- cursor ------------------------------------------------------------------------------------------------
  // Moving posts a row in edit first (an Abort from there stays on the row). Every arrival on another row fires
  // AfterScroll.
  void First();
  void Last();
  void Next();
  void Prior();
  bool Eof() const { return eof_; }
  bool Bof() const { return bof_; }
  bool IsEmpty() const { return visible_.empty() && state_ != DatasetState::kInsert; }
  /// Rows that the filter lets through (a row being inserted not counted).
  std::size_t RecordCount() const { return visible_.size(); }
  /// 1-based position of the current row among the visible ones, 0 without one. A row being inserted comes after them.
  std::size_t RecNo() const;
  /// Moves to a visible row by its 1-based position; nothing happens out of range.
  void GoTo(std::size_t rec_no);
  /// Stands on the first visible row whose fields (joined by ";", names without regard to case) equal the values
  /// exactly (text with case, numbers by value, null equals null and empty text); false leaves the cursor alone.
  bool Locate(std::string_view fields, const std::vector<Value>& values);
  /// Identity of the current row, stable while the row lives; 0 without one.
  std::size_t CurrentId() const;
  /// A value of a visible row by 1-based position, for whoever shows the rows: as being edited in the current row, and
  /// a row being inserted is the one after the last. Throws std::out_of_range past these.
  const Value& ValueAt(std::size_t rec_no, std::size_t field) const;
  /// Identity of a visible row by 1-based position; 0 out of range.
  std::size_t IdAt(std::size_t rec_no) const;
  /// Moves to a visible row by its identity; false, and nothing happens, when it is not visible.
  bool GoToId(std::size_t id);
  /// Grows whenever rows, values, fields, filter or order changed; moving the cursor leaves it alone.
  std::size_t Changes() const { return changes_; }

  // --- editing -----------------------------------------------------------------------------------------------
  DatasetState State() const { return state_; }
  bool InEdit() const { return state_ == DatasetState::kEdit || state_ == DatasetState::kInsert; }
  /// A new row at the end, all fields null; fires AfterInsert. Posts a row in edit first.
  void Append();
  /// Appends when there is no current row. Nothing happens when already in edit.
  void Edit();
  /// Fires BeforePost (which may change fields, throw Abort to stay in edit, or Cancel: then nothing is posted),
  /// stores the row at its place in the index and fires AfterPost. Nothing happens in browse state. A row that the
  /// filter no longer lets through leaves the view, and the cursor goes to the row after it.
  void Post();
  /// Gives up the row's changes; an inserted row is gone.
  void Cancel();
  /// Puts a value into the row in edit without firing anything, for a refused input that must vanish again.
  void PutBack(std::size_t field, const Value& value);
  /// Fires BeforeDelete (which may throw Abort) and removes the current row.
  void Delete();
  /// Removes all rows, without BeforeDelete; the structure, filter and index stay.
  void Empty();

  // --- view --------------------------------------------------------------------------------------------------
  /// A condition in the words of Filter; throws InputError when it is wrong, the old one then stays.
  void SetFilter(std::string_view text);
  const std::string& FilterText() const { return filter_text_; }
  void SetFiltered(bool on);
  bool Filtered() const { return filtered_; }
  /// Fields joined by ";", ascending; empty for the order of arrival. Text by bytes, null first. The cursor stays on
  /// its row.
  void SetIndex(std::string_view fields);

  std::function<void()> BeforePost;
  std::function<void()> AfterPost;
  std::function<void()> BeforeDelete;
  std::function<void()> AfterInsert;
  std::function<void()> AfterScroll;

 private:
  friend class Field;
  friend class DatasetCursor;
  struct Row {
    std::size_t id;
    std::vector<Value> values;
  };

  const Value& CurrentValue(std::size_t field) const;
  Value& EditedValue(std::size_t field);
  bool Passes(const Row& row) const;
  bool Before(const Row& left, const Row& right) const;
  /// Place in visible_ that the row of this index has, or would have, by the order.
  std::size_t PlaceOf(std::size_t row_index) const;
  void StoreEdited();
  std::vector<std::size_t> FieldIndexes(std::string_view names) const;
  int FieldIndex(std::string_view name) const;
  void RequireActive() const;
  /// Posts a row in edit; false when it is in edit still, which only happens inside BeforePost.
  bool LeaveRow();
  void Rebuild(std::size_t keep_id);
  /// Stands on a row of the view and tells an arrival on another row than the one stood on last.
  void Arrive(std::size_t position);
  void TellArrival();
  /// Index into rows_, or rows_.size().
  std::size_t RowIndex(std::size_t id) const;
  void Load(RowSet loaded);

  std::vector<std::unique_ptr<Field>> fields_;
  std::vector<Row> rows_;             // in the order of arrival, which is that of their identities
  std::vector<std::size_t> visible_;  // indexes into rows_, filtered and ordered
  std::vector<std::size_t> index_fields_;
  std::string index_text_;
  std::string filter_text_;
  std::optional<Filter> filter_;
  bool filtered_ = false;
  DatasetState state_ = DatasetState::kInactive;
  std::size_t position_ = 0;  // into visible_
  bool eof_ = true;
  bool bof_ = true;
  std::size_t next_id_ = 1;
  std::vector<Value> edited_;  // the row buffer in edit and insert state
  std::size_t edited_id_ = 0;  // identity of the row in edit or insert state
  std::size_t told_id_ = 0;    // the row that AfterScroll was fired for last
  std::size_t changes_ = 0;
  bool posting_ = false;
};

}  // namespace host
