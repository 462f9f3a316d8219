// One prepared statement: its parameters, its execution, its rows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/attachment.h"
#include "app/firebird/engine.h"
#include "app/firebird/message.h"
#include "host/database.h"
#include "host/value.h"

namespace app::firebird {

using host::RowSet;

class Statement {
 public:
  /// Prepares the text. Throws EngineError.
  Statement(Attachment& attachment, api::ITransaction* transaction, std::string_view sql);
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  /// True when it can run where nothing is written: a SELECT that neither holds rows nor was found to write.
  bool OnlyReads() const { return type_ == isc_info_sql_stmt_select && !holds_rows_ && !writes_; }
  /// True when running it leaves something that must be made durable; a row that is only held for this station must
  /// not.
  bool Changes() const { return !IsCursor() || writes_; }
  /// A SELECT turned out to write, through a procedure that it calls.
  void FoundToWrite() { writes_ = true; }
  /// True when it changes the database's structure.
  bool IsDefinition() const { return type_ == isc_info_sql_stmt_ddl; }
  /// True when it would end or begin a transaction behind the connection's back.
  bool IsTransactionControl() const;
  bool HasRows() const { return output_.Size() > 0; }
  /// The parameters in the engine's own types.
  const std::vector<Column>& Parameters() const { return parameters_.Columns(); }

  /// Runs it and drops what it returns. Throws EngineError.
  void Execute(api::ITransaction* transaction, const std::vector<host::Value>& values);
  /// Runs it and reads all rows. Throws EngineError.
  RowSet Select(api::ITransaction* transaction, const std::vector<host::Value>& values);
  /// Rows that its last run inserted, changed or deleted; asks the engine. Throws EngineError.
  std::size_t RowsAffected();

 private:
  struct Input {
    std::vector<unsigned> text_lengths;
    Layout layout;
  };

  void Bind(api::ITransaction* transaction, const std::vector<host::Value>& values);
  const Layout& LayoutFor(const std::vector<host::Value>& values);
  void ReadRow(api::ITransaction* transaction, RowSet& rows);
  bool IsCursor() const { return type_ == isc_info_sql_stmt_select || type_ == isc_info_sql_stmt_select_for_upd; }

  Attachment& attachment_;
  Ref<api::IStatement> handle_;
  unsigned type_;
  bool holds_rows_;  // WITH LOCK
  bool writes_;      // though it returns rows
  Layout parameters_;
  Layout output_;
  std::vector<Input> inputs_;  // few: one for each mix of text and native values met so far
  std::vector<unsigned> wanted_;
  std::vector<unsigned char> input_buffer_;
  std::vector<unsigned char> output_buffer_;
  api::IMessageMetadata* input_metadata_ = nullptr;
};

}  // namespace app::firebird
