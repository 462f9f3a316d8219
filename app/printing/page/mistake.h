// What is wrong in a layout file.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace app::printing {

/// Something that a layout asks for and that cannot be done, as the rest of a sentence ("a coluna 2 ..."). Whoever runs
/// the layout puts file and line before it.
class Mistake : public std::runtime_error {
 public:
  explicit Mistake(const std::string& text, int line = 0) : std::runtime_error(text), line_(line) {}
  int Line() const { return line_; }  // 0 when only the script engine knows it

 private:
  int line_;
};

/// "Erro no leiaute NAME, linha 12: "; without the line when it is 0.
std::string At(std::string_view name, int line);

/// A name or a value in a sentence: in double quotes, on one line, cut when it is long.
std::string Quoted(std::string_view text);

}  // namespace app::printing
