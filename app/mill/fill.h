// Filling a database file with a lot at once.
#pragma once

#include <functional>
#include <memory>

#include "app/firebird/database.h"

namespace app::mill {

enum class FillStart { kNewFile, kExistingFile };

/// Opens the database, or creates it, without its waiting for the disk at every commit; lets `fill` work; brings all of
/// it to the disk once, sets the file to wait for the disk from now on and hands it back open. When `fill` throws, a
/// new file is removed, an existing one keeps what `fill` made durable, and the exception goes on. Nobody else may have
/// the file open. A power cut meanwhile can ruin the file.
std::unique_ptr<firebird::Database> FillAtOnce(const firebird::ConnectOptions& options, FillStart start,
                                               const std::function<void(firebird::Database&)>& fill);

}  // namespace app::mill
