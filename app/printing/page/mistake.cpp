#include "app/printing/page/mistake.h"

#include "host/text.h"

namespace app::printing {

std::string At(std::string_view name, int line) {
  return "Erro no leiaute " + std::string(name) + (line > 0 ? ", linha " + std::to_string(line) : "") + ": ";
}

std::string Quoted(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  std::string shown = host::Left(text, kLongest);
  if (shown.size() < text.size()) shown += "…";
  for (char& character : shown) {
    if (character == '\n' || character == '\r' || character == '\t') character = ' ';
  }
  return '"' + shown + '"';
}

}  // namespace app::printing
