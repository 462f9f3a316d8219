// Files of values separated by ";", as spreadsheets write them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace app::mill {

struct CsvRow {
  int line = 0;  // of the file, counted from 1, where the row starts
  std::vector<std::string> cells;
};

struct CsvFile {
  std::vector<std::string> header;  // first row, blanks around the names taken off, in capitals
  std::vector<CsvRow> rows;         // without empty lines; cells as many as the row has
};

/// Reads UTF-8 text with or without byte-order mark, lines ended by LF or CR LF. A cell in double quotes may hold ";",
/// line breaks and doubled quotes; blanks around a cell without quotes are taken off. Throws host::InputError, one
/// Portuguese sentence with the line, for another encoding, an open quote, text beside a quote and a file without
/// header.
CsvFile ReadCsv(std::string_view text);

/// The text that ReadCsv reads back cell by cell: with byte-order mark and CR LF, as spreadsheets of this country open
/// it; quotes where a cell needs them.
std::string WriteCsv(const std::vector<std::string>& header, const std::vector<std::vector<std::string>>& rows);

}  // namespace app::mill
