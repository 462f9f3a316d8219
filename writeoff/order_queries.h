// The two statements that load an order on the write-off screen.
#pragma once

#include <memory>
#include <string_view>

#include "host/database.h"
#include "host/funcoes.h"

namespace writeoff {

/// One row per item of the order (one with a null CODIGO for an order without items; none for an unknown order), with
/// the order's mill, deposit and machine in each.
void ItemsOfOrder(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order);

/// The result of ItemsOfOrder as it stood at one moment. Another station that saves the order replaces all its rows,
/// and may do so between two of those that a statement reads.
std::unique_ptr<host::TTIQuery> ReadItems(host::Database& database, const host::Funcoes& funcoes,
                                          std::string_view order);

/// The order's rolls, newest first.
void RollsOfOrder(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order);

}  // namespace writeoff
