#include "app/cli/terminal.h"

#ifdef _WIN32
#include <conio.h>
#include <io.h>
#include <stdio.h>
#else
#include <termios.h>
#include <unistd.h>
#endif

#include <iostream>

namespace app::cli {

#ifdef _WIN32

std::optional<std::string> AskPassword(std::string_view prompt) {
  if (_isatty(_fileno(stdin)) == 0) return std::nullopt;
  std::cerr << prompt << std::flush;
  std::string text;
  for (int key = _getch(); key != '\r' && key != '\n'; key = _getch()) {
    if (key == '\b') {
      if (!text.empty()) text.pop_back();
    } else {
      text += static_cast<char>(key);
    }
  }
  std::cerr << std::endl;
  return text;
}

#else

namespace {

// The terminal shows what is typed again, whatever happens meanwhile.
class HiddenTyping {
 public:
  HiddenTyping() {
    tcgetattr(STDIN_FILENO, &before_);
    termios hidden = before_;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
  }
  ~HiddenTyping() { tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_); }
  HiddenTyping(const HiddenTyping&) = delete;
  HiddenTyping& operator=(const HiddenTyping&) = delete;

 private:
  termios before_{};
};

}  // namespace

std::optional<std::string> AskPassword(std::string_view prompt) {
  if (isatty(STDIN_FILENO) == 0) return std::nullopt;
  std::cerr << prompt << std::flush;
  std::string text;
  {
    const HiddenTyping hidden;
    std::getline(std::cin, text);
  }
  std::cerr << std::endl;
  return text;
}

#endif

}  // namespace app::cli
