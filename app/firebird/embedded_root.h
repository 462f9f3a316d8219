// The private folder from which an ordinary user's process runs the embedded engine.
#pragma once

#include <filesystem>

namespace app::firebird {

/// Folder of the engine's settings for this user: TECELAGEM_FIREBIRD, or "tecelagem/firebird" in the user's cache
/// folder.
std::filesystem::path EmbeddedRoot();

/// Fills the folder where it lacks something and points the client library at it. To be called before the library's
/// first use; later calls do nothing. Throws host::DatabaseError when the folder cannot be written.
void PrepareLibrary();

/// Points the engine at the lock directory `directory` (an open descriptor) for the next attach or detach.
void UseLockDirectory(int directory);

}  // namespace app::firebird
