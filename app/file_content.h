// Files of the person, by paths in the program's own text.
#pragma once

#include <cstddef>
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>

namespace app {

/// The path of this UTF-8 text, on every system.
std::filesystem::path PathOf(std::string_view text);

/// The name of the file, without its folder.
std::string FileName(std::string_view path);

/// The bytes of the file. Throws host::InputError in one sentence when it cannot be read or has more than `most_bytes`.
std::string ReadFile(std::string_view path, std::size_t most_bytes = std::numeric_limits<std::size_t>::max());

}  // namespace app
