// The shape of the composition grid: fixed fields for the yarn, then one field per colour of the fabric.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/database.h"
#include "host/kit/dataset.h"
#include "host/kit/grid.h"

namespace composition {

/// A colour in which the fabric exists.
struct FabricColour {
  std::string code;
  std::string description;
  /// The grid's field for it: the code itself, with something put before it where a field of that name exists already
  /// (field names do not regard case, and a mill may well call a colour "NE").
  std::string field;
};

/// The colours of an open query with COR and DESCRICAO, in its order. Rows without a colour are left out.
std::vector<FabricColour> ReadColours(host::TTIQuery& query);
/// By code, exactly; null when the fabric does not exist in it.
const FabricColour* FindColour(const std::vector<FabricColour>& colours, std::string_view code);
/// By field; null for a fixed field.
const FabricColour* ColourOfField(const std::vector<FabricColour>& colours, std::string_view field);

std::vector<host::FieldDef> GridFields(const std::vector<FabricColour>& colours);
/// All fields in order; what the program fills is read only, so that the cursor passes it by.
std::vector<host::GridColumn> GridColumns(const std::vector<FabricColour>& colours);

/// True when nothing but its position stands in the current row: no text, no number other than 0.
bool IsBlank(const host::Dataset& rows);

}  // namespace composition
