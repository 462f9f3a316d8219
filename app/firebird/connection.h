// The database as the rest of the program uses it: statements, retries, durability put together.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/attachment.h"
#include "app/firebird/database.h"
#include "app/firebird/literals.h"
#include "app/firebird/statement.h"
#include "app/firebird/statement_cache.h"
#include "app/firebird/text_plans.h"
#include "app/firebird/work.h"

namespace app::firebird {

class Connection : public Database {
 public:
  Connection(const ConnectOptions& options, bool create);
  ~Connection() override;

  std::unique_ptr<host::TTIQuery> NewQuery() override;
  void CommitRetaining() override;
  void SetSavepoint(std::string_view name) override;
  void RollbackTo(std::string_view name) override;
  void LockRow(std::string_view table, std::string_view key, std::string_view value) override;
  void LockRows(const std::vector<host::RecordKey>& records) override;

  void BeginAction() override;
  void EndAction(Outcome outcome) override;
  void MakeDurable() override;

  void Execute(std::string_view sql, const std::vector<host::Value>& params) override;
  std::unique_ptr<host::TTIQuery> Query(std::string_view sql, const std::vector<host::Value>& params) override;
  std::string PhysicalName(std::string_view table) const override;
  std::string ReplaceNames(std::string_view sql) const override;

  bool Connected() const override { return !attachment_.Lost(); }
  const ConnectOptions& Options() const override { return options_; }
  const Statistics& Stats() const override { return attachment_.Counters(); }

  /// Runs a statement as a screen wrote it, literals and all.
  RowSet RunText(const std::string& sql, bool want_rows);
  /// Runs `engine_sql`, prepared once and kept, with these values; `told` is the statement as its sender wrote it.
  RowSet RunPrepared(std::string_view told, std::string_view engine_sql, const std::vector<host::Value>& values,
                     bool want_rows);
  /// Number of the statement that ran last, failed ones counted.
  std::uint64_t LastRun() const { return last_run_; }
  /// Rows that the statement which ran last inserted, changed or deleted. Throws host::DatabaseError.
  std::size_t RowsAffected();

 private:
  /// Runs the text with its literals as parameters of a kept statement; nothing when that could change its meaning.
  std::optional<RowSet> RunShared(const std::string& sql, const std::vector<Literal>& literals, TextPlan& plan,
                                  bool want_rows);
  RowSet RunAlone(const std::string& sql, bool want_rows);
  std::shared_ptr<Statement> Find(std::string_view sql);
  std::shared_ptr<Statement> PrepareAlone(std::string_view sql);
  RowSet Run(std::string_view told, const std::function<RowSet()>& once);
  RowSet RunOn(const std::shared_ptr<Statement>& statement, const std::vector<host::Value>& values, bool want_rows);
  void Hold(std::int64_t lock);
  /// Frees what is prepared.
  void ForgetStatements();
  void End(Outcome outcome, bool outermost);
  void Announced(std::string_view sql);
  /// Before anything is sent: attaches anew where the connection was lost. Throws host::DatabaseError when that fails
  /// or the running action is the one that lost it.
  void NeedConnection(std::string_view sql);
  /// Lets go of all that was made on a connection that was found gone; `told` is what its user was told.
  void NoticeLoss(std::string_view told);
  /// Runs what sends something, and notices a loss.
  void Noticing(const std::function<void()>& act);

  ConnectOptions options_;
  mutable Attachment attachment_;
  StatementCache statements_;
  TextPlans plans_;
  Work work_;
  std::shared_ptr<Statement> last_;  // that ran, to be asked what it did; nothing after a change of the structure
  std::uint64_t last_run_ = 0;
  int depth_ = 0;
  std::string refusal_;    // why the running action gets nowhere any more; empty while it may
  std::string lost_work_;  // what to say of work of the running action that went with the connection; empty for none
};

}  // namespace app::firebird
