// The one transaction and what of it is pending, asked for, or durable.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "app/firebird/attachment.h"
#include "app/firebird/statement_cache.h"

namespace app::firebird {

/// Told a statement before it is sent; may throw.
using Announce = std::function<void(std::string_view sql)>;

/// Statements that only read run in a read-only transaction that stays open: ending and starting one costs two writes,
/// and it holds back no clean-up. The first statement that writes starts the other transaction, in which everything
/// runs until it ends. Both see what other stations made durable at once.
class Work {
 public:
  Work(Attachment& attachment, Announce announce) : attachment_(attachment), announce_(std::move(announce)) {}
  ~Work();
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  /// The transaction for a statement that only reads.
  api::ITransaction* ForReading();
  /// The transaction for a statement that may write; places the mark behind which an aborted action is undone.
  api::ITransaction* ForWriting();
  /// A statement that writes has succeeded.
  void Wrote() { state_.written = true; }
  /// Any transaction that is open already, for preparing.
  api::ITransaction* ForPreparing();

  void Request(bool merge);
  void SetSavepoint(std::string_view name);
  void RollbackTo(std::string_view name);
  /// Commits what is pending; without anything pending nothing is sent that costs a write. When the commit fails,
  /// everything pending is undone and the error thrown.
  void Commit();
  /// Undoes what was done after the last request and commits the rest.
  void CommitRequested();
  /// Undoes what was done after the last request.
  void UndoUnrequested();
  /// Undoes everything since the last durable point; never throws.
  void Undo();
  /// The connection is gone, and with it all that was pending: nothing is open any more. True when something was
  /// pending.
  bool Drop();
  /// Ends the transaction in which reading happens.
  void StopReading();
  void ForgetSavepoints() { savepoints_.clear(); }
  bool Pending() const { return state_.written; }

 private:
  struct State {
    bool written = false;    // something is pending
    bool requested = false;  // part of it was asked to be made durable
    int mark = 0;            // savepoint behind what was asked for; 0 while nothing was written after it
  };
  struct Savepoint {
    bool gone = false;  // it is the last durable point: nothing was pending, or its transaction has ended
    State state;
    int number = 0;
  };

  /// Sends `sql`, announced as `told`.
  void Send(const std::string& told, const std::string& sql);
  void EndWriting();
  /// The engine drops all savepoints behind the one that it went back to.
  void DropSavepointsAfter(int number);

  Attachment& attachment_;
  Announce announce_;
  Ref<api::ITransaction> reading_;
  Ref<api::ITransaction> writing_;
  State state_;
  std::map<std::string, Savepoint, std::less<>> savepoints_;
  int last_number_ = 0;       // of the savepoints of this transaction
  StatementCache marks_{64};  // a roll sets half a dozen; they are prepared once
};

}  // namespace app::firebird
