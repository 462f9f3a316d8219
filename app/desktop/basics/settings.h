// Names under which the windows keep their choices, per user of this computer.
#pragma once

namespace app::desktop {

inline constexpr const char* kSettingsKey = "Tecelagem";
inline constexpr const char* kWindowSection = "Janela";
inline constexpr const char* kModeName = "Modo";           // "abas" or "livres"
inline constexpr const char* kThemeName = "Tema";          // see ThemeName
inline constexpr const char* kGeometryName = "Geometria";  // of the main window, Qt's bytes in base 64
inline constexpr const char* kEntrySection = "Entrada";
inline constexpr const char* kUserName = "Usuario";    // who signed in last
inline constexpr const char* kDatabaseName = "Banco";  // and where

}  // namespace app::desktop
