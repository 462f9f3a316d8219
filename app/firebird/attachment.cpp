#include "app/firebird/attachment.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <vector>

#include "app/firebird/embedded_root.h"
#include "app/firebird/errors.h"
#include "app/firebird/file_guard.h"
#include "app/firebird/rights.h"
#include "app/firebird/server_probe.h"

namespace app::firebird {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kDialect = 3;
// How long a server may take to say anything; the library would wait minutes.
constexpr int kConnectSeconds = 10;
constexpr int kConnectAgainSeconds = 4;  // a person waits at a screen
constexpr unsigned kUtf8 = 4;            // the engine's number of the connection's character set

class Parameters {
 public:
  Parameters(Status& status, unsigned kind)
      : status_(status), builder_(Master().getUtilInterface()->getXpbBuilder(&status, kind, nullptr, 0)) {}
  ~Parameters() { builder_->dispose(); }
  Parameters(const Parameters&) = delete;
  Parameters& operator=(const Parameters&) = delete;

  void Tag(unsigned char tag) { builder_->insertTag(&status_, tag); }
  void Number(unsigned char tag, int value) { builder_->insertInt(&status_, tag, value); }
  void Text(unsigned char tag, const std::string& value) { builder_->insertString(&status_, tag, value.c_str()); }
  unsigned Size() { return builder_->getBufferLength(&status_); }
  const unsigned char* Data() { return builder_->getBuffer(&status_); }

 private:
  Status& status_;
  api::IXpbBuilder* builder_;
};

// The engine's lock directory is one for the whole process at any moment.
std::mutex& AttachMutex() {
  static std::mutex mutex;
  return mutex;
}

// How a blob's text is turned from one character set into another; a blob that is not text is left as it is.
std::vector<unsigned char> BlobParameters(const Column& column, unsigned from, unsigned to) {
  if (column.subtype != isc_blob_text) return {};
  const auto low = [](unsigned value) { return static_cast<unsigned char>(value & 0xff); };
  return {isc_bpb_version1,
          isc_bpb_source_type,
          1,
          isc_blob_text,
          isc_bpb_target_type,
          1,
          isc_blob_text,
          isc_bpb_source_interp,
          2,
          low(from),
          low(from >> 8),
          isc_bpb_target_interp,
          2,
          low(to),
          low(to >> 8)};
}

host::DatabaseError Refusal(const std::string& text) { return {text, 0, ""}; }

void AddCommon(Parameters& parameters, const ConnectOptions& options, bool create) {
  parameters.Text(isc_dpb_lc_ctype, "UTF8");
  parameters.Number(isc_dpb_sql_dialect, kDialect);
  if (options.forced_writes || create) {
    parameters.Number(isc_dpb_force_write, options.forced_writes.value_or(true) ? 1 : 0);
  }
  if (!create) return;
  parameters.Text(isc_dpb_set_db_charset, "WIN1252");
  parameters.Number(isc_dpb_page_size, 8192);
}

void CheckFile(const fs::path& file) {
  std::error_code error;
  const std::string name = "\"" + file.string() + "\"";
  const auto status = fs::status(file, error);
  if (!fs::exists(status)) throw Refusal("O banco de dados " + name + " não existe.");
  constexpr std::uintmax_t kSmallestPage = 1024;
  // An empty or shorter file is a reading error for the engine.
  if (fs::is_directory(status) || fs::file_size(file, error) < kSmallestPage)
    throw Refusal("O arquivo " + name + " não é um banco de dados.");
  if (access(file.c_str(), R_OK) != 0) throw Refusal("O arquivo " + name + " não permite leitura.");
  if (access(file.c_str(), W_OK) != 0) throw Refusal("O arquivo " + name + " não permite gravação.");
}

// All processes must come to the same name, whatever folder they start in.
fs::path RealName(const std::string& database, bool create) {
  const fs::path given = fs::absolute(database);
  std::error_code error;
  if (!create) return fs::canonical(given, error);
  const fs::path folder = fs::canonical(given.parent_path(), error);
  if (error) throw Refusal("A pasta \"" + given.parent_path().string() + "\" não existe.");
  return folder / given.filename();
}

}  // namespace

bool IsServerPath(std::string_view database) {
  const std::size_t colon = database.find(':');
  if (colon == std::string_view::npos || colon == 0) return false;
  if (colon == 1 && std::isalpha(static_cast<unsigned char>(database[0])) != 0) return false;
  const std::size_t slash = database.find('/');
  if (slash == std::string_view::npos || slash > colon) return true;
  // "host/port:path": nothing but the port stands between the slash and the colon.
  const std::string_view port = database.substr(slash + 1, colon - slash - 1);
  return slash > 0 && !port.empty() && port.find_first_not_of("0123456789") == std::string_view::npos;
}

Attachment::Attachment(const ConnectOptions& options, bool create) : lock_timeout_(options.lock_timeout_seconds) {
  const std::lock_guard lock(AttachMutex());
  PrepareLibrary();
  Attach(options, create, kConnectSeconds);
}

Attachment::~Attachment() {
  const std::lock_guard lock(AttachMutex());
  Detach();
}

void Attachment::AttachAgain(const ConnectOptions& options) {
  const std::lock_guard lock(AttachMutex());
  Detach();
  Attach(options, false, kConnectAgainSeconds);
  status_.ForgetLoss();
}

void Attachment::Attach(const ConnectOptions& options, bool create, int patience) {
  try {
    if (IsServerPath(options.database)) {
      AttachServer(options, create, patience);
    } else {
      AttachFile(options, create);
    }
  } catch (const EngineError& error) {
    throw ToConnectError(error, options.database, create);
  }
}

void Attachment::Detach() {
  if (!handle_) return;
  if (guard_) UseLockDirectory(guard_->Directory());
  try {
    handle_->detach(&status_);
    handle_.Forget();
  } catch (const EngineError&) {
    handle_.Reset();
  }
}

void Attachment::AttachFile(const ConnectOptions& options, bool create) {
  if (!create) CheckFile(options.database);
  const fs::path file = RealName(options.database, create);
  if (create && fs::exists(file)) throw Refusal("O arquivo \"" + file.string() + "\" já existe.");
  name_ = file.string();
  guard_ = std::make_unique<FileGuard>(file);
  if (!create) guard_->Mark();
  UseLockDirectory(guard_->Directory());
  Parameters parameters(status_, api::IXpbBuilder::DPB);
  // The embedded engine checks no password, and whoever may write the file may do all; one owner for all stations.
  parameters.Text(isc_dpb_user_name, "SYSDBA");
  parameters.Text(isc_dpb_config, "Providers = Engine12\nDefaultDbCachePages = 2048\n");
  AddCommon(parameters, options, create);
  api::IProvider* provider = Master().getDispatcher();
  handle_.Reset(create ? provider->createDatabase(&status_, name_.c_str(), parameters.Size(), parameters.Data())
                       : provider->attachDatabase(&status_, name_.c_str(), parameters.Size(), parameters.Data()));
  provider->release();
  if (create) guard_->Mark();
}

void Attachment::AttachServer(const ConnectOptions& options, bool create, int patience) {
  name_ = options.database;
  if (ServerIsSilent(name_, std::chrono::seconds(patience))) throw Refusal(SilentServer(name_));
  Parameters parameters(status_, api::IXpbBuilder::DPB);
  if (!options.user.empty()) parameters.Text(isc_dpb_user_name, options.user);
  if (!options.password.empty()) parameters.Text(isc_dpb_password, options.password);
  parameters.Number(isc_dpb_connect_timeout, patience);
  // A user to whom the role was not given works with his own rights.
  if (!create) parameters.Text(isc_dpb_sql_role_name, kStationRole);
  parameters.Text(isc_dpb_config, "Providers = Remote\n");
  AddCommon(parameters, options, create);
  api::IProvider* provider = Master().getDispatcher();
  handle_.Reset(create ? provider->createDatabase(&status_, name_.c_str(), parameters.Size(), parameters.Data())
                       : provider->attachDatabase(&status_, name_.c_str(), parameters.Size(), parameters.Data()));
  provider->release();
}

Ref<api::ITransaction> Attachment::Start(bool read_only) {
  Parameters parameters(status_, api::IXpbBuilder::TPB);
  parameters.Tag(read_only ? isc_tpb_read : isc_tpb_write);
  parameters.Tag(isc_tpb_read_committed);
  parameters.Tag(isc_tpb_rec_version);
  if (lock_timeout_ > 0) {
    parameters.Tag(isc_tpb_wait);
    parameters.Number(isc_tpb_lock_timeout, lock_timeout_);
  } else {
    parameters.Tag(isc_tpb_nowait);
  }
  ++counters_.round_trips;
  return Ref<api::ITransaction>(handle_->startTransaction(&status_, parameters.Size(), parameters.Data()));
}

Ref<api::IStatement> Attachment::Prepare(api::ITransaction* transaction, std::string_view sql) {
  ++counters_.round_trips;
  ++counters_.prepares;
  return Ref<api::IStatement>(handle_->prepare(&status_, transaction, static_cast<unsigned>(sql.size()), sql.data(),
                                               kDialect, api::IStatement::PREPARE_PREFETCH_METADATA));
}

std::string Attachment::ReadBlob(api::ITransaction* transaction, ISC_QUAD id, const Column& column) {
  const std::vector<unsigned char> parameters = BlobParameters(column, column.charset, kUtf8);
  ++counters_.round_trips;
  Ref<api::IBlob> blob(
      handle_->openBlob(&status_, transaction, &id, static_cast<unsigned>(parameters.size()), parameters.data()));
  std::string text;
  std::array<char, 16384> buffer{};
  for (;;) {
    unsigned length = 0;
    ++counters_.round_trips;
    const int result = blob->getSegment(&status_, buffer.size(), buffer.data(), &length);
    text.append(buffer.data(), length);
    if (result != api::IStatus::RESULT_OK && result != api::IStatus::RESULT_SEGMENT) break;
  }
  blob->close(&status_);
  blob.Forget();
  return text;
}

ISC_QUAD Attachment::WriteBlob(api::ITransaction* transaction, const std::string& text, const Column& column) {
  const std::vector<unsigned char> parameters = BlobParameters(column, kUtf8, column.charset);
  ISC_QUAD id{};
  counters_.round_trips += 2;
  Ref<api::IBlob> blob(
      handle_->createBlob(&status_, transaction, &id, static_cast<unsigned>(parameters.size()), parameters.data()));
  constexpr std::size_t kSegment = 32000;
  for (std::size_t at = 0; at < text.size(); at += kSegment) {
    const std::size_t size = std::min(kSegment, text.size() - at);
    blob->putSegment(&status_, static_cast<unsigned>(size), text.data() + at);
  }
  blob->close(&status_);
  blob.Forget();
  return id;
}

}  // namespace app::firebird
