// The defects of an order's rolls as labels list them.
#pragma once

#include <string_view>

#include "host/database.h"
#include "host/funcoes.h"
#include "host/kit/dataset.h"

namespace writeoff {

/// NUMERO, ROLO, CODIGO and DESCRICAO, one row per defect of every roll of the order; null DESCRICAO where the code is
/// in no register any more.
void DefectsOfOrder(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order);

/// Puts the result of DefectsOfOrder into the dataset. Throws DatabaseError; the dataset is then as it was.
void LoadDefects(host::Database& database, const host::Funcoes& funcoes, std::string_view order,
                 host::Dataset& defects);

}  // namespace writeoff
