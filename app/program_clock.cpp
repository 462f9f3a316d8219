#include <ctime>

#include "app/application.h"

namespace app {

host::DateTime ProgramClock::Now() const {
  if (set_) return *set_;
  const std::time_t moment = std::time(nullptr);
  std::tm local{};
#ifdef _WIN32
  localtime_s(&local, &moment);
#else
  localtime_r(&moment, &local);
#endif
  host::DateTime now;
  now.date = host::Date::FromParts(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday).value();
  now.second_of_day = local.tm_hour * 3600 + local.tm_min * 60 + (local.tm_sec > 59 ? 59 : local.tm_sec);
  return now;
}

}  // namespace app
