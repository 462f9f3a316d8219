#include "app/firebird/server_probe.h"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>
#include <string>

namespace app::firebird {
namespace {

using Clock = std::chrono::steady_clock;

struct Place {
  std::string host;
  std::string port = "3050";
};

std::optional<Place> PlaceOf(std::string_view database) {
  const std::size_t colon = database.find(':');
  if (colon == std::string_view::npos || database.find("://") != std::string_view::npos) return std::nullopt;
  const std::string_view server = database.substr(0, colon);
  if (server.find('[') != std::string_view::npos) return std::nullopt;
  const std::size_t slash = server.find('/');
  Place place;
  place.host = server.substr(0, slash);
  if (slash != std::string_view::npos) place.port = server.substr(slash + 1);
  return place;
}

// A try that waits in vain, and nothing else.
bool TimesOut(const addrinfo& address, Clock::time_point deadline) {
  const int call = socket(address.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (call < 0) return false;
  bool silent = false;
  if (connect(call, address.ai_addr, address.ai_addrlen) != 0 && errno == EINPROGRESS) {
    pollfd waiting{call, POLLOUT, 0};
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    silent = poll(&waiting, 1, static_cast<int>(std::max<std::int64_t>(0, left))) == 0;
  }
  close(call);
  return silent;
}

}  // namespace

bool ServerIsSilent(std::string_view database, std::chrono::milliseconds patience) {
  const auto place = PlaceOf(database);
  if (!place) return false;
  addrinfo wanted{};
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* first = nullptr;
  if (getaddrinfo(place->host.c_str(), place->port.c_str(), &wanted, &first) != 0) return false;
  const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> found(first, &freeaddrinfo);
  const auto deadline = Clock::now() + patience;
  for (const addrinfo* address = first; address != nullptr; address = address->ai_next) {
    if (!TimesOut(*address, deadline)) return false;
  }
  return first != nullptr;
}

}  // namespace app::firebird
