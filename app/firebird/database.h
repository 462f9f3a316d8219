// One Firebird database as the host offers it to the module.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/database.h"

namespace app::firebird {

struct ConnectOptions {
  std::string database;  // a file (embedded engine) or "host/port:path" (server)
  std::string user;      // of the server; the embedded engine takes any
  std::string password;
  std::string company = "001";    // suffix of the company's tables
  bool statement_cache = true;    // turn literals into parameters and keep prepared statements
  int lock_timeout_seconds = 10;  // how long a statement waits for another station
  // Sets, for good, whether the file waits for the disk at every commit; without it, as the file was. Only a load that
  // can be done again may turn it off, and must turn it on afterwards: a power cut meanwhile can ruin the file.
  std::optional<bool> forced_writes;
};

/// What was sent so far; differences around an action tell its cost.
struct Statistics {
  std::uint64_t statements = 0;  // executed, savepoints included
  std::uint64_t prepares = 0;
  std::uint64_t round_trips = 0;  // calls into the client library that a server would answer
  std::uint64_t commits = 0;      // each is one forced write
  std::uint64_t retries = 0;      // statements run again after an update conflict
};

/// The connection and its one transaction. Outside an action every request for durability is carried out at once.
class Database : public host::Database {
 public:
  enum class Outcome { kOk, kAborted, kFailed };

  /// Opens an existing database. Throws host::DatabaseError with one sentence: missing, not a database, read-only, in
  /// use elsewhere, refused by the server.
  static std::unique_ptr<Database> Open(const ConnectOptions& options);
  /// Creates an empty database file (WIN1252, 8 KiB pages, forced writes) and opens it; throws when the file exists.
  static std::unique_ptr<Database> Create(const ConnectOptions& options);

  // --- durability: the outermost action of a person is the unit ----------------------------------------------
  virtual void BeginAction() = 0;
  /// kOk: everything pending becomes durable. kAborted: what CommitRetaining was asked for becomes durable, work after
  /// the last request is undone. kFailed: everything since the last durable point is undone. Throws
  /// host::DatabaseError when the commit fails; everything pending is undone then.
  virtual void EndAction(Outcome outcome) = 0;
  /// Makes pending work durable now; nothing that holds other stations back is open afterwards until the next
  /// statement that writes.
  void MakeDurable() override = 0;

  // --- for the host's own code --------------------------------------------------------------------------------
  /// Runs a statement with positional parameters ("?"), always prepared once and kept. Table names physical or in
  /// braces.
  virtual void Execute(std::string_view sql, const std::vector<host::Value>& params) = 0;
  virtual std::unique_ptr<host::TTIQuery> Query(std::string_view sql, const std::vector<host::Value>& params) = 0;
  /// Physical name of a logical table of the company: "TECEL" gives "TECEL_001".
  virtual std::string PhysicalName(std::string_view table) const = 0;
  /// The statement with every "{TABLE}" replaced.
  virtual std::string ReplaceNames(std::string_view sql) const = 0;

  /// False from the moment that a statement finds the connection gone until a later one has attached anew. The action
  /// that meets the loss fails whole: each of its statements is refused, and its end too where work of it was lost. The
  /// first statement of the next action, or outside one, attaches anew by itself; while that fails, it says so in one
  /// sentence.
  virtual bool Connected() const { return true; }

  virtual const ConnectOptions& Options() const = 0;
  virtual const Statistics& Stats() const = 0;

  /// Told every statement before it is sent, in the text of whoever sent it (savepoints, commits and retries as
  /// "SAVEPOINT x", "COMMIT"); may throw to stand for a failure.
  std::function<void(std::string_view sql)> BeforeStatement;
};

}  // namespace app::firebird
