#include "app/firebird/record_lock.h"

namespace app::firebird {

// FNV-1a, the parts set apart by a character that none of them holds.
std::int64_t RecordLock(std::string_view table, std::string_view key, std::string_view value) {
  while (value.ends_with(' ')) value.remove_suffix(1);
  std::uint32_t hash = 2166136261U;
  const auto add = [&hash](std::string_view text) {
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    hash = (hash ^ 0xFFU) * 16777619U;
  };
  add(table);
  add(key);
  add(value);
  return hash % kRecordLocks;
}

}  // namespace app::firebird
