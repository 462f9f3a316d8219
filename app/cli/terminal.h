// What is asked of whoever started the program, on the terminal.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace app::cli {

/// A password typed without showing it; nothing when there is no terminal to ask on.
std::optional<std::string> AskPassword(std::string_view prompt);

}  // namespace app::cli
