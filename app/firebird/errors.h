// The engine's refusals as sentences for the person at the screen.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/firebird/engine.h"
#include "host/errors.h"

namespace app::firebird {

/// The error to throw for a refused statement: one sentence in Portuguese, the engine's text only where there is no
/// better, the first number that says something, and the statement as it was given.
host::DatabaseError ToDatabaseError(const EngineError& error, std::string_view sql);

/// The same for a refused connection to `database`, or its refused creation.
host::DatabaseError ToConnectError(const EngineError& error, const std::string& database, bool create);

/// True when another station changed or holds the row: the statement may succeed when it is run again.
bool IsConflict(const EngineError& error);

/// True when a value did not fit the type that the engine expected of a parameter.
bool IsConversion(const EngineError& error);

/// True when the connection itself is gone, so that nothing more can be done on it.
bool IsLost(const EngineError& error);

}  // namespace app::firebird
