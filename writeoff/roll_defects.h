// The defects of an order's rolls as labels list them.
#pragma once

#include <string_view>

#include "host/host.h"
#include "host/kit/dataset.h"

namespace writeoff {

/// NUMERO, ROLO, CODIGO and DESCRICAO, one row per defect of every roll of the order; null DESCRICAO where the code is
/// in no register any more. Throws DatabaseError; the dataset is then as it was.
void LoadDefects(host::Host& host, std::string_view order, host::Dataset& defects);

}  // namespace writeoff
