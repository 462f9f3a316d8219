// The program's own sources, as the rules of the house read them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace house {

inline const std::filesystem::path kRoot = TECELAGEM_SOURCE_DIR;

/// The file's bytes; empty when it cannot be read.
std::string Read(const std::filesystem::path& path);

/// Every .cpp and .h below that folder of the program's.
std::vector<std::filesystem::path> Sources(const std::string& folder);

struct Include {
  bool angled;
  std::string name;
};

/// In the order of the text; one that begins a line only.
std::vector<Include> Includes(const std::string& text);

}  // namespace house
