// Who confirmed a roll or found a defect.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/host.h"

namespace writeoff {

struct Employee {
  std::string name;
  std::string shift;  // the usual one
};

/// Nothing for a code that is in no register. Throws DatabaseError.
std::optional<Employee> EmployeeOf(host::Host& host, std::string_view code);

}  // namespace writeoff
