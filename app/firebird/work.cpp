#include "app/firebird/work.h"

#include <memory>
#include <utility>

#include "app/firebird/errors.h"

namespace app::firebird {
namespace {

// Names of our own: what a caller chose could be a word that the engine keeps for itself.
std::string MarkName(int number) { return "TEC_MARCA_" + std::to_string(number); }
std::string PointName(int number) { return "TEC_PONTO_" + std::to_string(number); }

}  // namespace

Work::~Work() {
  Undo();
  StopReading();
}

api::ITransaction* Work::ForReading() {
  // Before anything was written both transactions see the same.
  if (state_.written) return writing_.Get();
  if (!reading_) reading_ = attachment_.Start(true);
  return reading_.Get();
}

api::ITransaction* Work::ForWriting() {
  if (!writing_) writing_ = attachment_.Start(false);
  if (state_.requested && state_.mark == 0) {
    const std::string sql = "SAVEPOINT " + MarkName(last_number_ + 1);
    Send(sql, sql);
    state_.mark = ++last_number_;
  }
  return writing_.Get();
}

api::ITransaction* Work::ForPreparing() { return ForReading(); }

void Work::Send(const std::string& told, const std::string& sql) {
  announce_(told);
  ++attachment_.Counters().statements;
  try {
    auto statement = marks_.Find(sql);
    if (!statement) {
      statement = std::make_shared<Statement>(attachment_, writing_.Get(), sql);
      marks_.Keep(sql, statement);
    }
    statement->Execute(writing_.Get(), {});
  } catch (const EngineError& error) {
    throw ToDatabaseError(error, told);
  }
}

void Work::Request(bool merge) {
  if (!merge) {
    Commit();
    return;
  }
  if (!state_.written) return;
  state_.requested = true;
  state_.mark = 0;
}

void Work::SetSavepoint(std::string_view name) {
  Savepoint savepoint;
  if (!writing_) {
    // Going back to here is going back to the last durable point: nothing need be sent, which saves a forced write
    // where the action then writes nothing.
    announce_("SAVEPOINT " + std::string(name));
    savepoint.gone = true;
    savepoints_.insert_or_assign(std::string(name), savepoint);
    return;
  }
  savepoint.number = ++last_number_;
  savepoint.state = state_;
  Send("SAVEPOINT " + std::string(name), "SAVEPOINT " + PointName(savepoint.number));
  savepoints_.insert_or_assign(std::string(name), savepoint);
}

void Work::RollbackTo(std::string_view name) {
  const auto found = savepoints_.find(name);
  if (found == savepoints_.end()) {
    throw host::DatabaseError("O ponto de retorno \"" + std::string(name) + "\" não foi marcado.", 0, "");
  }
  const Savepoint savepoint = found->second;
  const std::string told = "ROLLBACK TO " + std::string(name);
  if (savepoint.gone) {
    announce_(told);
    Undo();
    return;
  }
  Send(told, "ROLLBACK TO SAVEPOINT " + PointName(savepoint.number));
  state_ = savepoint.state;
  DropSavepointsAfter(savepoint.number);
}

void Work::DropSavepointsAfter(int number) {
  std::erase_if(savepoints_, [&](const auto& entry) { return !entry.second.gone && entry.second.number > number; });
}

void Work::EndWriting() {
  state_ = State();
  last_number_ = 0;
  for (auto& [name, savepoint] : savepoints_) savepoint.gone = true;
}

void Work::Commit() {
  if (!writing_) return;
  if (!state_.written) {
    Undo();
    return;
  }
  try {
    announce_("COMMIT");
    ++attachment_.Counters().round_trips;
    writing_->commit(&attachment_.GetStatus());
    writing_.Forget();
    ++attachment_.Counters().commits;
  } catch (const EngineError& error) {
    Undo();
    throw ToCommitError(error);
  } catch (...) {
    Undo();
    throw;
  }
  EndWriting();
}

void Work::UndoUnrequested() {
  if (!writing_) return;
  if (!state_.requested) {
    Undo();
    return;
  }
  if (state_.mark == 0) return;
  try {
    const std::string sql = "ROLLBACK TO SAVEPOINT " + MarkName(state_.mark);
    Send(sql, sql);
    DropSavepointsAfter(state_.mark);
  } catch (...) {
    Undo();
    throw;
  }
}

void Work::CommitRequested() {
  UndoUnrequested();
  Commit();
}

void Work::Undo() {
  if (writing_) {
    try {
      ++attachment_.Counters().round_trips;
      writing_->rollback(&attachment_.GetStatus());
      writing_.Forget();
    } catch (const EngineError&) {
      // The connection is gone; the server undoes the work by itself.
      writing_.Reset();
    }
  }
  EndWriting();
}

bool Work::Drop() {
  const bool pending = state_.written;
  marks_.Clear();
  writing_.Reset();
  reading_.Reset();
  EndWriting();
  return pending;
}

void Work::StopReading() {
  if (!reading_) return;
  try {
    ++attachment_.Counters().round_trips;
    reading_->commit(&attachment_.GetStatus());
    reading_.Forget();
  } catch (const EngineError&) {
    reading_.Reset();
  }
}

}  // namespace app::firebird
