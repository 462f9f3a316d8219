#include "tests/house/sources.h"

#include <fstream>
#include <regex>
#include <sstream>

namespace house {

namespace fs = std::filesystem;

std::string Read(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::vector<fs::path> Sources(const std::string& folder) {
  std::vector<fs::path> found;
  for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder)) {
    const auto extension = entry.path().extension();
    if (extension == ".cpp" || extension == ".h") found.push_back(entry.path());
  }
  return found;
}

std::vector<Include> Includes(const std::string& text) {
  static const std::regex kInclude("^#include ([<\"])([^>\"]+)[>\"]", std::regex::multiline);
  std::vector<Include> found;
  for (std::sregex_iterator at(text.begin(), text.end(), kInclude), end; at != end; ++at) {
    found.push_back({(*at)[1] == "<", (*at)[2]});
  }
  return found;
}

}  // namespace house
