// How the windows look: style, font, light and dark colours, icon, Qt's own words in Portuguese.
#pragma once

#include <optional>
#include <string_view>

namespace app::desktop {

enum class Theme { kSystem, kLight, kDark };

/// As kept in the settings: "sistema", "claro", "escuro"; kSystem for anything else.
Theme ThemeFromName(std::string_view name);
std::string_view ThemeName(Theme theme);

/// Once, after the application object was made: style, font, icon, translation.
void PrepareLook();
/// Every window changes its colours at once.
void ApplyTheme(Theme theme);
/// The colours that ApplyTheme chose last.
bool IsDark();

}  // namespace app::desktop
