#include "host/kit/typed.h"

#include "host/decimal.h"
#include "host/kit/desk_impl.h"
#include "host/text.h"

namespace host {
namespace {

constexpr std::size_t kDigitsOfLot = 9;       // of a label that was made before its roll
constexpr std::size_t kDigitsOfArticle = 13;  // the shortest number of an article

// A scanner types into whatever has the cursor. No quantity is written so, and one taken from a code would be believed.
bool LooksScanned(std::string_view text) {
  if (text.find_first_not_of("0123456789") != std::string_view::npos) return false;
  return text.size() >= kDigitsOfArticle || (text.size() >= kDigitsOfLot && text.front() == '0');
}

}  // namespace

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
  if (kind == EditKind::kNumber && LooksScanned(Trim(text))) {
    return field + " aceita somente números; isto parece um código de barras.";
  }
  if (kind == EditKind::kNumber && !ParseTyped(text)) return field + " aceita somente números.";
  if (kind == EditKind::kInteger && !ParseTypedInteger(text)) return field + " aceita somente números inteiros.";
  if (kind == EditKind::kDate && !Trim(text).empty() && !Date::FromDisplay(text)) {
    return field + " aceita somente datas, como 31/12/2026.";
  }
  return std::nullopt;
}

}  // namespace host
