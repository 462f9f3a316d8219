#include "weaving/roll_lot.h"

namespace weaving {

std::string RollLot(std::string_view scheme, const RollLotParts& parts,
                    const std::function<std::string()>& next_sequence) {
  switch (scheme.empty() ? '\0' : scheme.front()) {
    case '1':
      return "000000";
    case '2':
      return parts.order;
    case '3':
      return parts.order + std::to_string(parts.roll);
    case '4':
      return parts.bar_code_ticked ? parts.bar_code : parts.order + next_sequence();
    case '5':
      return parts.order + parts.sales_order;
    case '6':
      return parts.order + parts.return_note;
    default:
      return {};
  }
}

}  // namespace weaving
