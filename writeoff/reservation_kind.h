// Which reservations of an order are those of its yarn.
#pragma once

#include <string_view>

namespace writeoff {

/// The condition that keeps reservations of kind "F" out of sight.
inline constexpr std::string_view kReservationKind = "(TIPO = 'T' OR TIPO <> 'F' OR TIPO IS NULL)";

}  // namespace writeoff
