#include "app/firebird/engine.h"

#include <algorithm>
#include <array>

#include "app/firebird/errors.h"

namespace app::firebird {

EngineError::EngineError(api::IStatus* status) {
  const intptr_t* at = status->getErrors();
  while (*at != isc_arg_end) {
    const intptr_t kind = *at++;
    switch (kind) {
      case isc_arg_gds:
        if (*at != 0) codes_.push_back(*at);
        ++at;
        break;
      case isc_arg_string:
      case isc_arg_interpreted:
        // The engine's status vector holds its texts' addresses as numbers.
        names_.emplace_back(reinterpret_cast<const char*>(*at++));  // NOLINT(performance-no-int-to-ptr)
        break;
      case isc_arg_cstring: {
        const auto length = static_cast<std::size_t>(*at++);
        names_.emplace_back(reinterpret_cast<const char*>(*at++), length);  // NOLINT(performance-no-int-to-ptr)
        break;
      }
      default:
        ++at;
    }
  }
  std::array<char, 2048> buffer{};
  const unsigned length = Master().getUtilInterface()->formatStatus(buffer.data(), buffer.size(), status);
  text_.assign(buffer.data(), length);
}

bool EngineError::Has(std::int64_t code) const { return std::find(codes_.begin(), codes_.end(), code) != codes_.end(); }

void Status::Raise() {
  const EngineError error(this);
  saw_loss_ = saw_loss_ || IsLost(error);
  throw error;
}

api::IMaster& Master() {
  static api::IMaster* const kMaster = api::fb_get_master_interface();
  return *kMaster;
}

}  // namespace app::firebird
