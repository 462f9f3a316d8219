#include "app/firebird/connection.h"

#include <chrono>
#include <random>
#include <set>
#include <thread>
#include <utility>

#include "app/firebird/errors.h"
#include "app/firebird/query.h"
#include "app/firebird/record_lock.h"
#include "app/firebird/sql_tokens.h"

namespace app::firebird {
namespace {

constexpr std::size_t kKeptStatements = 200;

// Two stations that met once should not meet again at the same moment.
void PauseBeforeRetry() {
  thread_local std::minstd_rand random(std::random_device{}());
  std::this_thread::sleep_for(std::chrono::milliseconds(std::uniform_int_distribution<int>(1, 12)(random)));
}

}  // namespace

std::unique_ptr<Database> Database::Open(const ConnectOptions& options) {
  return std::make_unique<Connection>(options, false);
}

std::unique_ptr<Database> Database::Create(const ConnectOptions& options) {
  return std::make_unique<Connection>(options, true);
}

Connection::Connection(const ConnectOptions& options, bool create)
    : options_(options),
      attachment_(options, create),
      statements_(kKeptStatements),
      work_(attachment_, [this](std::string_view sql) { Announced(sql); }) {}

Connection::~Connection() {
  work_.Undo();
  work_.StopReading();
  ForgetStatements();
}

void Connection::ForgetStatements() {
  last_.reset();
  statements_.Clear();
  plans_.Clear();
}

void Connection::Announced(std::string_view sql) {
  if (BeforeStatement) BeforeStatement(sql);
}

// --- durability -----------------------------------------------------------------------------------------------------

// An action inside an action begins when the program has waited for the person, who then was told of a loss.
void Connection::BeginAction() {
  ++depth_;
  refusal_.clear();
  lost_work_.clear();
}

void Connection::EndAction(Outcome outcome) {
  if (depth_ > 0) --depth_;
  const bool outermost = depth_ == 0;
  const std::string lost_work = lost_work_;
  if (outermost || outcome == Outcome::kFailed) lost_work_.clear();
  if (outermost) refusal_.clear();
  if (outermost && !lost_work.empty() && outcome != Outcome::kFailed) {
    work_.ForgetSavepoints();
    throw host::DatabaseError(lost_work, 0, "COMMIT");
  }
  Noticing([&] { End(outcome, outermost); });
}

void Connection::End(Outcome outcome, bool outermost) {
  switch (outcome) {
    case Outcome::kOk:
      if (outermost) work_.Commit();
      break;
    case Outcome::kAborted:
      work_.UndoUnrequested();
      if (outermost) work_.Commit();
      break;
    case Outcome::kFailed:
      work_.Undo();
      break;
  }
  if (outermost) work_.ForgetSavepoints();
}

void Connection::MakeDurable() {
  if (!lost_work_.empty()) throw host::DatabaseError(lost_work_, 0, "COMMIT");
  Noticing([&] { work_.Commit(); });
}

void Connection::CommitRetaining() {
  Noticing([&] { work_.Request(depth_ > 0); });
}

void Connection::SetSavepoint(std::string_view name) {
  NeedConnection("SAVEPOINT " + std::string(name));
  Noticing([&] { work_.SetSavepoint(name); });
}

void Connection::RollbackTo(std::string_view name) {
  NeedConnection("ROLLBACK TO " + std::string(name));
  Noticing([&] { work_.RollbackTo(name); });
}

// --- a connection that goes and comes back --------------------------------------------------------------------------

void Connection::Noticing(const std::function<void()>& act) {
  try {
    act();
  } catch (const host::DatabaseError& error) {
    NoticeLoss(error.what());
    throw;
  }
}

void Connection::NoticeLoss(std::string_view told) {
  if (!attachment_.Lost()) return;
  ForgetStatements();
  const bool pending = work_.Drop() || told == kConnectionLostInCommit;
  if (depth_ == 0) return;
  if (pending && lost_work_.empty()) lost_work_ = told;
  if (refusal_.empty()) refusal_ = told;
}

void Connection::NeedConnection(std::string_view sql) {
  if (!attachment_.Lost()) return;
  if (!refusal_.empty()) throw host::DatabaseError(refusal_, 0, std::string(sql));
  NoticeLoss(kConnectionLost);  // it may have been met where nothing is thrown, such as a rollback
  refusal_.clear();
  try {
    attachment_.AttachAgain(options_);
  } catch (const host::DatabaseError& error) {
    // One wait for a server that does not answer is enough for one action.
    if (depth_ > 0) refusal_ = error.what();
    throw host::DatabaseError(error.what(), error.Code(), std::string(sql));
  }
}

// The record's own row is left alone: another station may be replacing it (delete, insert anew), and there would be
// none to hold in between.
void Connection::LockRow(std::string_view table, std::string_view key, std::string_view value) {
  Hold(RecordLock(PhysicalName(table), key, value));
}

// In the order of the locks, which is not that of the records: where two stations held records by their keys, one could
// wait for a lock that the other has for a record before it, and the other for one of the first's.
void Connection::LockRows(const std::vector<host::RecordKey>& records) {
  std::set<std::int64_t> locks;
  for (const host::RecordKey& record : records) {
    locks.insert(RecordLock(PhysicalName(record.table), record.key, record.value));
  }
  for (const std::int64_t lock : locks) Hold(lock);
}

void Connection::Hold(std::int64_t lock) {
  constexpr std::string_view k_lock = "SELECT NUMERO FROM TEC_TRAVA WHERE NUMERO = ? WITH LOCK";
  RunPrepared(k_lock, k_lock, {lock}, true);
}

// --- statements -----------------------------------------------------------------------------------------------------

std::unique_ptr<host::TTIQuery> Connection::NewQuery() { return std::make_unique<TextQuery>(*this); }

void Connection::Execute(std::string_view sql, const std::vector<host::Value>& params) {
  RunPrepared(sql, ReplaceNames(sql), params, false);
}

std::unique_ptr<host::TTIQuery> Connection::Query(std::string_view sql, const std::vector<host::Value>& params) {
  auto query = std::make_unique<TextQuery>(*this);
  query->SQL.Add(sql);
  query->Show(RunPrepared(sql, ReplaceNames(sql), params, true));
  return query;
}

std::string Connection::PhysicalName(std::string_view table) const {
  return std::string(table) + "_" + options_.company;
}

std::string Connection::ReplaceNames(std::string_view sql) const {
  if (sql.find('{') == std::string_view::npos) return std::string(sql);
  std::string text;
  std::size_t copied = 0;
  const std::vector<Token> tokens = Tokens(sql);
  for (std::size_t i = 0; i + 2 < tokens.size(); ++i) {
    if (sql[tokens[i].begin] != '{' || sql[tokens[i + 2].begin] != '}') continue;
    const Token& name = tokens[i + 1];
    text += sql.substr(copied, tokens[i].begin - copied);
    text += PhysicalName(sql.substr(name.begin, name.end - name.begin));
    copied = tokens[i + 2].end;
  }
  text += sql.substr(copied);
  return text;
}

std::shared_ptr<Statement> Connection::PrepareAlone(std::string_view sql) {
  auto statement = std::make_shared<Statement>(attachment_, work_.ForPreparing(), sql);
  if (statement->IsTransactionControl()) {
    throw host::DatabaseError("Uma instrução não pode encerrar a transação.", 0, std::string(sql));
  }
  return statement;
}

std::shared_ptr<Statement> Connection::Find(std::string_view sql) {
  if (auto kept = statements_.Find(sql)) return kept;
  auto statement = PrepareAlone(sql);
  if (!statement->IsDefinition()) statements_.Keep(sql, statement);
  return statement;
}

RowSet Connection::RunOn(const std::shared_ptr<Statement>& statement, const std::vector<host::Value>& values,
                         bool want_rows) {
  last_.reset();
  if (statement->IsDefinition()) {
    ForgetStatements();
  } else {
    last_ = statement;
  }
  const auto run = [&](api::ITransaction* transaction) {
    if (want_rows) return statement->Select(transaction, values);
    statement->Execute(transaction, values);
    return RowSet();
  };
  if (statement->OnlyReads()) {
    try {
      return run(work_.ForReading());
    } catch (const EngineError& error) {
      if (!error.Has(isc_read_only_trans)) throw;
      statement->FoundToWrite();
    }
  }
  RowSet rows = run(work_.ForWriting());
  if (statement->Changes()) work_.Wrote();
  return rows;
}

std::size_t Connection::RowsAffected() {
  if (!last_) return 0;
  try {
    return last_->RowsAffected();
  } catch (const EngineError& error) {
    NoticeLoss(kConnectionLost);
    throw ToDatabaseError(error, {});
  }
}

RowSet Connection::Run(std::string_view told, const std::function<RowSet()>& once) {
  using Clock = std::chrono::steady_clock;
  const auto patience = std::chrono::seconds(options_.lock_timeout_seconds);
  const auto deadline = Clock::now() + patience;
  ++last_run_;
  for (;;) {
    Announced(told);
    ++attachment_.Counters().statements;
    const auto sent = Clock::now();
    try {
      return once();
    } catch (const EngineError& error) {
      // The engine says "deadlock" also when its own waiting has come to its end; that shows in the time it took.
      const bool waited_out = (Clock::now() - sent) * 5 >= patience * 4;
      if (!IsConflict(error) || waited_out || Clock::now() >= deadline) {
        NoticeLoss(kConnectionLost);
        throw ToDatabaseError(error, told);
      }
    } catch (const host::DatabaseError& error) {
      NoticeLoss(error.what());
      throw;
    }
    ++attachment_.Counters().retries;
    PauseBeforeRetry();
  }
}

RowSet Connection::RunPrepared(std::string_view told, std::string_view engine_sql,
                               const std::vector<host::Value>& values, bool want_rows) {
  NeedConnection(told);
  return Run(told, [&] { return RunOn(Find(engine_sql), values, want_rows); });
}

RowSet Connection::RunText(const std::string& sql, bool want_rows) {
  NeedConnection(sql);
  if (!options_.statement_cache) return Run(sql, [&] { return RunAlone(sql, want_rows); });
  const std::vector<Literal> literals = FindLiterals(sql);
  if (literals.empty()) return Run(sql, [&] { return RunOn(Find(sql), {}, want_rows); });
  TextPlan& plan = plans_.Of(WithParameters(sql, literals, {}));
  return Run(sql, [&] {
    if (plan.refused) return RunAlone(sql, want_rows);
    std::optional<RowSet> rows = RunShared(sql, literals, plan, want_rows);
    if (rows) return std::move(*rows);
    RowSet alone = RunAlone(sql, want_rows);
    plan.refused = plan.doubtful;
    return alone;
  });
}

RowSet Connection::RunAlone(const std::string& sql, bool want_rows) { return RunOn(PrepareAlone(sql), {}, want_rows); }

std::optional<RowSet> Connection::RunShared(const std::string& sql, const std::vector<Literal>& literals,
                                            TextPlan& plan, bool want_rows) {
  std::shared_ptr<Statement> statement;
  try {
    statement = Find(WithParameters(sql, literals, plan.kept));
  } catch (const EngineError&) {
    // Whether the text itself is at fault shows when it runs as it stands.
    plan.doubtful = true;
    return std::nullopt;
  }
  const std::vector<Column>& parameters = statement->Parameters();
  std::vector<host::Value> values;
  bool fits = true;
  bool relearnt = false;
  std::vector<bool> learnt = plan.kept;
  for (std::size_t i = 0; i < literals.size(); ++i) {
    if (!plan.kept.empty() && plan.kept[i]) continue;
    if (values.size() >= parameters.size()) return std::nullopt;
    const Column& parameter = parameters[values.size()];
    const Fit fit = FitOf(literals[i], parameter);
    values.push_back(fit == Fit::kYes ? ValueOf(literals[i], parameter) : host::Value());
    fits = fits && fit == Fit::kYes;
    if (fit == Fit::kNever) {
      relearnt = true;
      learnt.resize(literals.size());
      learnt[i] = true;
    }
  }
  if (relearnt) {
    plan.kept = std::move(learnt);
    return RunShared(sql, literals, plan, want_rows);
  }
  if (!fits || values.size() != parameters.size()) return std::nullopt;
  try {
    return RunOn(statement, values, want_rows);
  } catch (const EngineError& error) {
    if (!IsConversion(error)) throw;
    return std::nullopt;
  }
}

}  // namespace app::firebird
