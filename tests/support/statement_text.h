// Statements as tests compare them.
#pragma once

#include <string>
#include <string_view>

namespace test {

/// The statement in one line, runs of blanks outside quotes as one blank, and its tables by their logical names:
/// "TECEL_001" and "{TECEL}" both become "TECEL".
std::string OneLine(std::string_view sql);

/// Savepoints and commits, which no screen sends itself.
bool IsTransactionControl(std::string_view statement);

}  // namespace test
