#include "app/services/registry_settings.h"

#ifdef _WIN32

#include <windows.h>

#include <charconv>
#include <vector>

#include "host/errors.h"

namespace app::services {
namespace {

std::wstring Wide(std::string_view text) {
  const int bytes = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, wide.data(), length);
  return wide;
}

std::string Narrow(std::wstring_view text) {
  const int characters = static_cast<int>(text.size());
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), characters, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), characters, narrow.data(), length, nullptr, nullptr);
  return narrow;
}

std::wstring Path(std::string_view key, std::string_view section) { return Wide(key) + L'\\' + Wide(section); }

// Only a number that reads back as the same text.
std::optional<DWORD> AsNumber(std::string_view text) {
  DWORD number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec != std::errc() || read.ptr != text.data() + text.size()) return std::nullopt;
  if (std::to_string(number) != text) return std::nullopt;
  return number;
}

}  // namespace

std::optional<std::string> RegistryUserSettings::Read(std::string_view key, std::string_view section,
                                                      std::string_view name) {
  const std::wstring path = Path(key, section);
  const std::wstring value = Wide(name);
  DWORD number = 0;
  DWORD size = sizeof number;
  if (RegGetValueW(HKEY_CURRENT_USER, path.c_str(), value.c_str(), RRF_RT_REG_DWORD, nullptr, &number, &size) ==
      ERROR_SUCCESS) {
    return std::to_string(number);
  }
  size = 0;
  if (RegGetValueW(HKEY_CURRENT_USER, path.c_str(), value.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::vector<wchar_t> text(size / sizeof(wchar_t) + 1);
  if (RegGetValueW(HKEY_CURRENT_USER, path.c_str(), value.c_str(), RRF_RT_REG_SZ, nullptr, text.data(), &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  return Narrow(std::wstring_view(text.data()));
}

void RegistryUserSettings::Write(std::string_view key, std::string_view section, std::string_view name,
                                 std::string_view value) {
  HKEY folder = nullptr;
  LSTATUS result = RegCreateKeyExW(HKEY_CURRENT_USER, Path(key, section).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                                   &folder, nullptr);
  if (result == ERROR_SUCCESS) {
    const std::wstring wide_name = Wide(name);
    if (const auto number = AsNumber(value)) {
      result = RegSetValueExW(folder, wide_name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&*number),
                              sizeof *number);
    } else {
      const std::wstring text = Wide(value);
      const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
      result = RegSetValueExW(folder, wide_name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes);
    }
    RegCloseKey(folder);
  }
  if (result != ERROR_SUCCESS)
    throw host::InputError("Não foi possível gravar as preferências no registro do Windows.");
}

}  // namespace app::services

#endif
