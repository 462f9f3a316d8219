#include "app/firebird/statement.h"

#include <algorithm>

#include "app/firebird/sql_tokens.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::firebird {
namespace {

constexpr std::size_t kKept = 16;  // mixes of text and native values

bool IsWord(std::string_view sql, const Token& token, std::string_view word) {
  return token.kind == Token::Kind::kWord && host::SameName(sql.substr(token.begin, token.end - token.begin), word);
}

// The engine calls a block that returns rows a SELECT, whatever it writes.
bool IsBlock(std::string_view sql, const std::vector<Token>& tokens) {
  return !tokens.empty() && IsWord(sql, tokens[0], "EXECUTE");
}

bool AsksToHoldRows(std::string_view sql, const std::vector<Token>& tokens) {
  for (std::size_t i = 1; i < tokens.size(); ++i) {
    if (IsWord(sql, tokens[i], "LOCK") && IsWord(sql, tokens[i - 1], "WITH")) return true;
  }
  return false;
}

}  // namespace

Statement::Statement(Attachment& attachment, api::ITransaction* transaction, std::string_view sql)
    : attachment_(attachment), handle_(attachment.Prepare(transaction, sql)) {
  Status& status = attachment_.GetStatus();
  type_ = handle_->getType(&status);
  const std::vector<Token> tokens = Tokens(sql);
  holds_rows_ = AsksToHoldRows(sql, tokens);
  writes_ = IsBlock(sql, tokens);
  parameters_ = Layout(status, Ref<api::IMessageMetadata>(handle_->getInputMetadata(&status)));
  const Ref<api::IMessageMetadata> offered(handle_->getOutputMetadata(&status));
  if (offered->getCount(&status) > 0) output_ = OutputLayout(status, *offered.Get());
  output_buffer_.resize(output_.Size());
}

bool Statement::IsTransactionControl() const {
  return type_ == isc_info_sql_stmt_start_trans || type_ == isc_info_sql_stmt_commit ||
         type_ == isc_info_sql_stmt_rollback;
}

const Layout& Statement::LayoutFor(const std::vector<host::Value>& values) {
  wanted_.clear();
  for (std::size_t i = 0; i < parameters_.Columns().size(); ++i) {
    wanted_.push_back(TextLengthFor(parameters_.Columns()[i], values[i]));
  }
  const auto known =
      std::find_if(inputs_.begin(), inputs_.end(), [&](const Input& input) { return input.text_lengths == wanted_; });
  if (known != inputs_.end()) return known->layout;
  if (inputs_.size() == kKept) inputs_.erase(inputs_.begin());
  inputs_.push_back({wanted_, InputLayout(attachment_.GetStatus(), *parameters_.Metadata(), wanted_)});
  return inputs_.back().layout;
}

void Statement::Bind(api::ITransaction* transaction, const std::vector<host::Value>& values) {
  const std::size_t count = parameters_.Columns().size();
  if (values.size() != count) {
    throw host::DatabaseError("A instrução tem " + std::to_string(count) + " parâmetros, mas recebeu " +
                                  std::to_string(values.size()) + " valores.",
                              0, "");
  }
  input_metadata_ = nullptr;
  if (count == 0) return;
  const Layout& layout = LayoutFor(values);
  input_buffer_.resize(layout.Size());
  const BlobWriter writer = [&](const std::string& text, const Column& column) {
    return attachment_.WriteBlob(transaction, text, column);
  };
  for (std::size_t i = 0; i < count; ++i) WriteValue(layout.Columns()[i], values[i], input_buffer_.data(), writer);
  input_metadata_ = layout.Metadata();
}

void Statement::Execute(api::ITransaction* transaction, const std::vector<host::Value>& values) {
  if (IsCursor()) {
    Select(transaction, values);
    return;
  }
  Bind(transaction, values);
  ++attachment_.Counters().round_trips;
  handle_->execute(&attachment_.GetStatus(), transaction, input_metadata_, input_buffer_.data(), output_.Metadata(),
                   output_buffer_.data());
}

RowSet Statement::Select(api::ITransaction* transaction, const std::vector<host::Value>& values) {
  RowSet rows;
  for (const Column& column : output_.Columns()) rows.names.push_back(column.name);
  if (!IsCursor()) {
    Execute(transaction, values);
    if (HasRows()) ReadRow(transaction, rows);
    return rows;
  }
  Bind(transaction, values);
  Status& status = attachment_.GetStatus();
  ++attachment_.Counters().round_trips;
  Ref<api::IResultSet> cursor(
      handle_->openCursor(&status, transaction, input_metadata_, input_buffer_.data(), output_.Metadata(), 0));
  while (cursor->fetchNext(&status, output_buffer_.data()) == api::IStatus::RESULT_OK) ReadRow(transaction, rows);
  cursor->close(&status);
  cursor.Forget();
  return rows;
}

void Statement::ReadRow(api::ITransaction* transaction, RowSet& rows) {
  const BlobReader reader = [&](ISC_QUAD id, const Column& column) {
    return attachment_.ReadBlob(transaction, id, column);
  };
  std::vector<host::Value>& row = rows.rows.emplace_back();
  row.reserve(output_.Columns().size());
  for (const Column& column : output_.Columns()) row.push_back(ReadValue(column, output_buffer_.data(), reader));
}

std::size_t Statement::RowsAffected() {
  ++attachment_.Counters().round_trips;
  return static_cast<std::size_t>(handle_->getAffectedRecords(&attachment_.GetStatus()));
}

}  // namespace app::firebird
