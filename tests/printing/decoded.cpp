#include "tests/printing/decoded.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace test {

PictureFolder::PictureFolder() {
  const auto* running = testing::UnitTest::GetInstance()->current_test_info();
  std::string name = std::string(running->test_suite_name()) + "." + running->name();
  std::replace(name.begin(), name.end(), '/', '_');
  path_ = std::filesystem::temp_directory_path() / (name + "." + std::to_string(getpid()));
  std::filesystem::remove_all(path_);
  std::filesystem::create_directories(path_);
}

PictureFolder::~PictureFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string OutputOf(const std::string& command, const std::vector<int>& also) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) {
    ADD_FAILURE() << "cannot run " << command;
    return output;
  }
  std::array<char, 4096> piece{};
  for (std::size_t got = 0; (got = fread(piece.data(), 1, piece.size(), pipe)) > 0;) output.append(piece.data(), got);
  const int status = pclose(pipe);
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  if (code != 0 && std::find(also.begin(), also.end(), code) == also.end()) {
    ADD_FAILURE() << command << " ended with " << code << ":\n" << output;
  }
  return output;
}

std::vector<std::string> Decoded(const std::string& picture) {
  constexpr int kNothingFound = 4;
  std::istringstream lines(OutputOf("zbarimg -q --nodbus -Si25.enable '" + picture + "' 2>/dev/null", {kNothingFound}));
  std::vector<std::string> symbols;
  for (std::string line; std::getline(lines, line);) symbols.push_back(line);
  std::sort(symbols.begin(), symbols.end());
  return symbols;
}

void WritePicture(const app::printing::PlacedBarcode& placed, int margin, const std::string& file) {
  const int width = placed.width + 2 * margin;
  const int height = placed.height + 2 * margin;
  const auto at = [&](int x, int y) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
  };
  std::string dots(at(0, height), '\xff');
  for (const auto& bar : placed.bars) {
    const int left = bar.x - placed.x + margin;
    const int top = bar.y - placed.y + margin;
    ASSERT_TRUE(left >= margin && top >= margin && left + bar.width <= width - margin &&
                top + bar.height <= height - margin)
        << "a bar lies outside its symbol";
    for (int y = top; y < top + bar.height; ++y)
      std::fill_n(dots.begin() + static_cast<std::ptrdiff_t>(at(left, y)), bar.width, '\0');
  }
  std::ofstream out(file, std::ios::binary);
  out << "P5\n" << width << ' ' << height << "\n255\n" << dots;
  ASSERT_TRUE(out.flush()) << file;
}

}  // namespace test
