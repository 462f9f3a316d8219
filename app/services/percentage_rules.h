// The percentage of a yarn in a fabric by a stored rule.
#pragma once

#include <string>
#include <string_view>

#include "app/firebird/database.h"

namespace app::services {

/// Works the rule's formula out over the fabric's data, rounded to four decimals. Throws host::InputError, one sentence
/// that names rule and fabric, when one of them does not exist, when the formula is wrong or uses something that the
/// fabric does not have, and when the result is no percentage from 0 to 100.
double PercentageByRule(firebird::Database& database, std::string_view rule, std::string_view fabric);

}  // namespace app::services
