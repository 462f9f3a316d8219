// Text as people look for it: without regard to case and accents.
#pragma once

#include <string>
#include <string_view>

namespace app::desktop {

/// Lower case without accents: "Âmbar" and "AMBAR" give the same. UTF-8 in and out; characters outside Western
/// alphabets stay as they are.
std::string Folded(std::string_view text);

}  // namespace app::desktop
