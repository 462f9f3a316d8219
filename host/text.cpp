#include "host/text.h"

namespace host {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// The bytes after the first one of a character.
bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

}  // namespace

std::string Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return std::string(text);
}

std::size_t Length(std::string_view text) {
  std::size_t length = 0;
  for (const char c : text) {
    if (!IsContinuation(c)) ++length;
  }
  return length;
}

std::string Left(std::string_view text, std::size_t count) {
  std::size_t seen = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (IsContinuation(text[at])) continue;
    if (seen == count) return std::string(text.substr(0, at));
    ++seen;
  }
  return std::string(text);
}

std::string UpperAscii(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = Upper(c);
  return upper;
}

bool SameName(std::string_view left, std::string_view right) {
  if (left.size() != right.size()) return false;
  for (std::size_t at = 0; at < left.size(); ++at) {
    if (Upper(left[at]) != Upper(right[at])) return false;
  }
  return true;
}

std::vector<std::string> SplitOutsideQuotes(std::string_view text, char separator) {
  std::vector<std::string> pieces(1);
  // A doubled quote closes and opens again at once, so that toggling serves it too.
  bool quoted = false;
  for (const char c : text) {
    if (c == '\'') quoted = !quoted;
    if (c == separator && !quoted) {
      pieces.emplace_back();
    } else {
      pieces.back() += c;
    }
  }
  return pieces;
}

}  // namespace host
