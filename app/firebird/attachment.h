// One connection of the client library: attaching with the house's options, transactions, blobs.
#pragma once

#include <string>
#include <string_view>

#include "app/firebird/database.h"
#include "app/firebird/engine.h"
#include "app/firebird/message.h"

namespace app::firebird {

class FileGuard;

/// True for "host/port:path" and "host:path"; a drive letter is no host.
bool IsServerPath(std::string_view database);

class Attachment {
 public:
  /// Attaches to an existing database, or creates it. Throws host::DatabaseError in one sentence.
  Attachment(const ConnectOptions& options, bool create);
  ~Attachment();
  Attachment(const Attachment&) = delete;
  Attachment& operator=(const Attachment&) = delete;

  /// A call found the connection gone: nothing more can be done on it, and what was pending is undone by the server.
  bool Lost() const { return status_.SawLoss(); }
  /// Attaches anew. Everything that was made on the lost connection must have been let go. Throws host::DatabaseError
  /// in one sentence; the connection is still lost then.
  void AttachAgain(const ConnectOptions& options);

  Ref<api::ITransaction> Start(bool read_only);
  Ref<api::IStatement> Prepare(api::ITransaction* transaction, std::string_view sql);
  std::string ReadBlob(api::ITransaction* transaction, ISC_QUAD id, const Column& column);
  ISC_QUAD WriteBlob(api::ITransaction* transaction, const std::string& text, const Column& column);

  Status& GetStatus() { return status_; }
  Statistics& Counters() { return counters_; }
  /// The database's file, or its name on the server.
  const std::string& Name() const { return name_; }

 private:
  void Attach(const ConnectOptions& options, bool create, int patience);
  void AttachFile(const ConnectOptions& options, bool create);
  void AttachServer(const ConnectOptions& options, bool create, int patience);
  void Detach();

  Status status_;
  Statistics counters_;
  std::string name_;
  int lock_timeout_;
  std::unique_ptr<FileGuard> guard_;  // outlives the handle
  Ref<api::IAttachment> handle_;
};

}  // namespace app::firebird
