// The two statements that load an order on the write-off screen.
#pragma once

#include <memory>
#include <string_view>

#include "host/host.h"

namespace writeoff {

/// One row per item of the order (one with a null CODIGO for an order without items; none for an unknown order), with
/// the order's mill, deposit and machine in each, as it stood at one moment. Another station that saves the order
/// replaces all its rows, and may do so between two of those that a statement reads. Throws DatabaseError.
std::unique_ptr<host::TTIQuery> ItemsOfOrder(host::Host& host, std::string_view order);

/// The order's rolls, newest first. Throws DatabaseError.
std::unique_ptr<host::TTIQuery> RollsOfOrder(host::Host& host, std::string_view order);

}  // namespace writeoff
