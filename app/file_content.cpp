#include "app/file_content.h"

#include <array>
#include <fstream>

#include "host/decimal.h"
#include "host/errors.h"

namespace app {
namespace {

constexpr double kMegabyte = 1024.0 * 1024.0;

std::string SizeText(std::size_t bytes) {
  const auto size = static_cast<double>(bytes);
  if (size < kMegabyte) return std::to_string(bytes) + " bytes";
  return host::FormatNumber("0.#", size / kMegabyte, ',') + " MB";
}

std::string Named(std::string_view path) { return "O arquivo \"" + std::string(path) + "\""; }

}  // namespace

std::filesystem::path PathOf(std::string_view text) { return {std::u8string(text.begin(), text.end())}; }

std::string FileName(std::string_view path) {
  const std::u8string name = PathOf(path).filename().u8string();
  return {name.begin(), name.end()};
}

std::string ReadFile(std::string_view path, std::size_t most_bytes) {
  std::ifstream in(PathOf(path), std::ios::binary);
  std::string content;
  std::array<char, 65536> piece;
  while (in) {
    in.read(piece.data(), piece.size());
    content.append(piece.data(), static_cast<std::size_t>(in.gcount()));
    if (content.size() > most_bytes) {
      throw host::InputError(Named(path) + " tem mais de " + SizeText(most_bytes) + ", o máximo aqui.");
    }
  }
  if (!in.eof()) throw host::InputError(Named(path) + " não pôde ser lido.");
  return content;
}

}  // namespace app
