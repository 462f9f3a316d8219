#include "host/kit/typed.h"

#include "host/decimal.h"
#include "host/kit/desk_impl.h"
#include "host/text.h"

namespace host {

std::string PlainCaption(std::string_view caption, std::string_view otherwise) {
  std::string plain(caption);
  std::erase(plain, '&');
  return plain.empty() ? std::string(otherwise) : plain;
}

std::optional<std::string> TypedObjection(EditKind kind, std::size_t max_length, std::string_view caption,
                                          std::string_view text) {
  const std::string field = "O campo \"" + std::string(caption) + "\"";
  if (max_length != 0 && Length(text) > max_length) {
    return field + " aceita no máximo " + std::to_string(max_length) +
           (max_length == 1 ? " caractere." : " caracteres.");
  }
  if (kind == EditKind::kNumber && !ParseTyped(text)) return field + " aceita somente números.";
  if (kind == EditKind::kInteger && !ParseTypedInteger(text)) return field + " aceita somente números inteiros.";
  if (kind == EditKind::kDate && !Trim(text).empty() && !Date::FromDisplay(text)) {
    return field + " aceita somente datas, como 31/12/2026.";
  }
  return std::nullopt;
}

}  // namespace host
