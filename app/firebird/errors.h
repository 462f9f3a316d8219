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

/// What a person is told when the connection went while an operation was under way.
inline constexpr const char* kConnectionLost =
    "A conexão com o banco de dados caiu. Nada desta operação foi gravado; o que já estava gravado está a salvo. Tente "
    "de novo quando o servidor voltar.";
/// And when it went while the operation was made durable: nobody on this side knows whether it was.
inline constexpr const char* kConnectionLostInCommit =
    "A conexão com o banco de dados caiu enquanto a operação era gravada. Não se sabe se ela foi gravada: confira "
    "antes "
    "de repetir.";

/// The error to throw for a commit that failed.
host::DatabaseError ToCommitError(const EngineError& error);

/// The same for a refused connection to `database`, or its refused creation.
host::DatabaseError ToConnectError(const EngineError& error, const std::string& database, bool create);

/// What is told of a server that does not answer.
std::string SilentServer(const std::string& database);

/// True when another station changed or holds the row: the statement may succeed when it is run again.
bool IsConflict(const EngineError& error);

/// True when a value did not fit the type that the engine expected of a parameter.
bool IsConversion(const EngineError& error);

/// True when the connection itself is gone, so that nothing more can be done on it.
bool IsLost(const EngineError& error);

}  // namespace app::firebird
