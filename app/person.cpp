#include "app/person.h"

#include "app/file_content.h"
#include "app/firebird/storable_text.h"
#include "host/text.h"

namespace app {

std::optional<std::string> AnswerObjection(std::size_t longest, std::string_view text) {
  const std::size_t length = host::Length(text);
  if (longest != 0 && length > longest) {
    return "No máximo " + std::to_string(longest) + (longest == 1 ? " caractere" : " caracteres") + "; o texto tem " +
           std::to_string(length) + ".";
  }
  return firebird::WhyNotStorable(text);
}

std::optional<host::ChosenFile> Person::ChooseFile(std::string_view title, std::string_view kinds,
                                                   std::size_t most_bytes) {
  const auto path = AskFile({.save = false, .title = std::string(title), .kind = std::string(kinds), .proposed = ""});
  if (!path) return std::nullopt;
  return host::ChosenFile{FileName(*path), ReadFile(*path, most_bytes)};
}

}  // namespace app
