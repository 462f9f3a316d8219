// Fields and grid columns of the order screen's datasets.
#pragma once

#include <vector>

#include "host/kit/dataset.h"
#include "host/kit/grid.h"

namespace orders {

std::vector<host::FieldDef> ItemFields();
std::vector<host::GridColumn> ItemColumns();

/// One row per yarn, yarn colour, LFA and feeders that the order needs.
std::vector<host::FieldDef> YarnFields();
std::vector<host::GridColumn> YarnColumns();

/// One row per order and fabric that a search found; the names are those of its query.
std::vector<host::FieldDef> SearchFields();
std::vector<host::GridColumn> SearchColumns();

/// One row per stock lot of a needed yarn.
std::vector<host::FieldDef> StockFields();
std::vector<host::GridColumn> StockColumns();

/// One row per roll that an order lets expect.
std::vector<host::FieldDef> RollFields();

/// One row per line of a stitch pattern; the names are those of its query.
std::vector<host::FieldDef> StitchFields();

}  // namespace orders
