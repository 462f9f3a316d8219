// Which row of TEC_TRAVA stands for a record.
#pragma once

#include <cstdint>
#include <string_view>

namespace app::firebird {

/// Rows of TEC_TRAVA, numbered from 0.
inline constexpr std::uint32_t kRecordLocks = 1009;

/// The same at every station, whichever version and compiler made its program. Blanks at the end of the value make no
/// difference, as in a comparison of the database. `table` is the physical name.
std::int64_t RecordLock(std::string_view table, std::string_view key, std::string_view value);

}  // namespace app::firebird
