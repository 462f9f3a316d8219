// A register as a file that the import reads back.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "app/firebird/database.h"

namespace app::mill {

struct ExportedTable {
  std::string csv;
  std::size_t rows = 0;
};

/// All rows of a logical table of the company in the order of its key, with the columns that Import takes; "Import"
/// tells the form. Throws host::DatabaseError.
ExportedTable Export(firebird::Database& database, std::string_view table);

}  // namespace app::mill
