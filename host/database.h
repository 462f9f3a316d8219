// The database as the module sees it: statements, and one transaction that is always open.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/value.h"

namespace host {

/// The text of a statement, put together line by line.
class SqlText {
 public:
  void Clear() { text_.clear(); }
  /// Adds one line; lines are joined by a line break.
  void Add(std::string_view line) {
    if (!text_.empty()) text_ += '\n';
    text_ += line;
  }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

/// The rows of a result.
struct RowSet {
  std::vector<std::string> names;        // of the columns, as TTIQuery::FieldName tells them
  std::vector<std::vector<Value>> rows;  // one value for each column
};

/// One statement and its result. Created per operation by Database::NewQuery and freed by its owner, at once after
/// use. Rows are read whole by Open, so that no cursor stays open on the server.
class TTIQuery {
 public:
  virtual ~TTIQuery() = default;

  SqlText SQL;

  /// Runs a SELECT and stands on its first row. Throws DatabaseError; the query then has no rows.
  virtual void Open() = 0;
  /// Runs a statement without result. Throws DatabaseError; earlier work of the action stays pending.
  virtual void ExecSQL() = 0;
  /// Rows that the last ExecSQL inserted, changed or deleted; what triggers did besides does not count. To be asked at
  /// once: throws std::logic_error when the query did something else last or another statement has run since.
  virtual std::size_t RowsAffected() = 0;

  /// Sets the named parameter (":NAME" in the text) of batch element `element`, counted from 0.
  virtual void SetParam(std::size_t element, std::string_view name, const Value& value) = 0;
  /// Runs the statement once for each of the first `count` elements, in order. Throws DatabaseError at the first
  /// that fails; the elements before it stay done.
  virtual void ExecBatch(std::size_t count) = 0;

  virtual bool Eof() const = 0;
  virtual void Next() = 0;
  virtual void First() = 0;
  bool IsEmpty() const { return RecordCount() == 0; }
  virtual std::size_t RecordCount() const = 0;
  virtual std::size_t FieldCount() const = 0;
  /// The column's name as the engine returns it (capitals unless quoted).
  virtual std::string FieldName(std::size_t index) const = 0;
  virtual bool HasField(std::string_view name) const = 0;
  /// The value of a column in the current row, by name without regard to case (of two columns of one name the first);
  /// null past the last row. Text of fixed width comes without its trailing blanks. Throws std::out_of_range for a
  /// column that the result lacks.
  virtual const Value& FieldByName(std::string_view name) const = 0;
  /// The same by the column's position, counted from 0.
  virtual const Value& Field(std::size_t column) const = 0;

  /// Hands over the columns' names and all rows, whichever the current one is; the query then has no rows. A host that
  /// cannot part with its rows hands over copies (this one does), and they stay until the query goes.
  virtual RowSet TakeRows();
};

/// A record to hold; see Database::LockRow.
struct RecordKey {
  std::string table;  // logical name
  std::string key;
  std::string value;
};

/// The one connection, with the host's single transaction on it. The transaction is open always as far as the module
/// can tell; the host makes what one action of a person did durable in one piece, at the action's end or just before
/// the program waits for the person.
class Database {
 public:
  virtual ~Database() = default;

  virtual std::unique_ptr<TTIQuery> NewQuery() = 0;

  /// Asks for the work done so far to be made durable, keeping the transaction open. Requests inside one action are
  /// merged: they become durable together.
  virtual void CommitRetaining() = 0;
  /// As CommitRetaining, and does not wait for the action's end: when it returns, the work is safe. For a screen that
  /// empties itself once its record is stored. Throws DatabaseError when that fails; everything pending is undone then.
  virtual void MakeDurable() { CommitRetaining(); }

  /// Marks a point that RollbackTo returns to. A second mark of the same name replaces the first.
  virtual void SetSavepoint(std::string_view name) = 0;
  /// Undoes what was done since the mark, durability requests of that stretch included; the mark stays. Where the
  /// work before the mark and some after it have become durable meanwhile (the program waited for a person), undoes
  /// what was done since then.
  virtual void RollbackTo(std::string_view name) = 0;

  /// Holds the record of `table` (logical name) whose `key` column equals `value` for this station until the work of
  /// the action is made durable or undone, so that two stations take turns: whoever stores, deletes or counts on the
  /// record holds it first. Waits for the other one; throws DatabaseError when it does not finish in time. The record
  /// need not exist, and who does not ask to hold it is not held back.
  virtual void LockRow(std::string_view table, std::string_view key, std::string_view value) = 0;
  /// Holds several records as LockRow holds one, with the same errors; those held before an error stay held. None:
  /// nothing happens. Two stations that call it once per action never wait for each other in a circle, whatever the
  /// order of their records. This one takes them by table, key and value, which is right where each record has a lock
  /// of its own; a host whose records share locks takes them in the order of its locks.
  virtual void LockRows(const std::vector<RecordKey>& records);

  /// Runs statements without result in the order given. Throws DatabaseError at the first that fails, whose text is the
  /// error's Sql(): those before it stay done and pending, those after it are not run. Nothing when there are none. As
  /// nobody asks for anything between them, a host may send them all at once where the way to its server is long; this
  /// one runs them one by one.
  virtual void ExecTogether(const std::vector<std::string>& statements);
};

}  // namespace host
