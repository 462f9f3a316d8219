#include "app/services/user_settings.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "app/services/registry_settings.h"
#include "host/errors.h"

namespace app::services {
namespace {

namespace fs = std::filesystem;

std::string FullName(std::string_view key, std::string_view section, std::string_view name) {
  return std::string(key) + '/' + std::string(section) + '/' + std::string(name);
}

// The line's own signs ("=" only in a name) in a form that cannot be taken for them.
std::string Escape(std::string_view text, bool is_name) {
  std::string result;
  for (const char c : text) {
    if (c == '\\') {
      result += "\\\\";
    } else if (c == '\n') {
      result += "\\n";
    } else if (c == '\r') {
      result += "\\r";
    } else if (is_name && c == '=') {
      result += "\\e";
    } else {
      result += c;
    }
  }
  return result;
}

std::string Unescape(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      result += text[i];
      continue;
    }
    const char code = text[++i];
    result += code == 'n' ? '\n' : code == 'r' ? '\r' : code == 'e' ? '=' : code;
  }
  return result;
}

std::string FromEnvironment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

}  // namespace

std::string FileUserSettings::DefaultPath() {
  for (const char* variable : {"TECELAGEM_CONFIG", "XDG_CONFIG_HOME", "APPDATA"}) {
    const std::string folder = FromEnvironment(variable);
    if (!folder.empty()) return (fs::path(folder) / "tecelagem" / "settings").string();
  }
  const std::string home = FromEnvironment("HOME");
  return (fs::path(home.empty() ? "." : home) / ".config" / "tecelagem" / "settings").string();
}

void FileUserSettings::Load() {
  if (loaded_) return;
  loaded_ = true;
  std::ifstream in(path_, std::ios::binary);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();  // one that belongs to the value is written "\\r"
    const std::size_t sign = line.find('=');
    if (sign == std::string::npos) continue;
    values_[Unescape(std::string_view(line).substr(0, sign))] = Unescape(std::string_view(line).substr(sign + 1));
  }
}

void FileUserSettings::Save() const {
  std::error_code error;
  const fs::path path(path_);
  if (path.has_parent_path()) fs::create_directories(path.parent_path(), error);
  const fs::path draft(path_ + ".new");
  {
    std::ofstream out(draft, std::ios::binary | std::ios::trunc);
    for (const auto& [name, value] : values_) out << Escape(name, true) << '=' << Escape(value, false) << '\n';
    out.close();
    if (!out) throw host::InputError("Não foi possível gravar as preferências em " + path_ + ".");
  }
  fs::rename(draft, path, error);
  if (error) throw host::InputError("Não foi possível gravar as preferências em " + path_ + ".");
}

std::optional<std::string> FileUserSettings::Read(std::string_view key, std::string_view section,
                                                  std::string_view name) {
  Load();
  const auto found = values_.find(FullName(key, section, name));
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void FileUserSettings::Write(std::string_view key, std::string_view section, std::string_view name,
                             std::string_view value) {
  Load();
  values_[FullName(key, section, name)] = value;
  Save();
}

std::unique_ptr<host::UserSettings> OpenUserSettings(const std::string& path) {
#ifdef _WIN32
  if (path.empty()) return std::make_unique<RegistryUserSettings>();
#endif
  return std::make_unique<FileUserSettings>(path.empty() ? FileUserSettings::DefaultPath() : path);
}

}  // namespace app::services
