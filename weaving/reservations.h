// Which reservations of yarn concern weaving.
#pragma once

#include <string>
#include <string_view>

#include "weaving/statement.h"

namespace weaving {

/// The condition that keeps reservations of kind "F" out of sight, which other modules write. `prefix` ("MAT_RESERVA.")
/// stands before the column where other tables have a TIPO too. The first term adds nothing to the second; it stays
/// because every module that reads reservations words the condition like this.
inline Sql YarnReservations(std::string_view prefix = {}) {
  const std::string kind = std::string(prefix) + "TIPO";
  return Sql("(" + kind + " = 'T' OR " + kind + " <> 'F' OR " + kind + " IS NULL)");
}

}  // namespace weaving
