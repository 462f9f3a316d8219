// A list leaves the program: as text for the clipboard, as CSV, as a spreadsheet.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/date.h"
#include "host/kit/grid.h"

namespace app::desktop {

/// What a list shows, in the order in which it shows it.
struct Table {
  struct Column {
    std::string caption;
    host::Align align = host::Align::kLeft;
    int width = 0;       // characters
    std::string format;  // display format of a number ("0.000"); empty otherwise
  };
  /// Nothing, text, number, date. A whole number is a number without decimals.
  using Cell = std::variant<std::monostate, std::string, double, host::Date>;
  std::string title;
  std::vector<Column> columns;
  std::vector<std::vector<Cell>> rows;
};

/// Tab-separated lines with the captions first, numbers with a decimal comma; tabs and line breaks inside a cell become
/// blanks.
std::string ToClipboardText(const Table& table);
/// For a spreadsheet of this country: ";" between cells, decimal comma, quotes where needed, UTF-8 with byte-order
/// mark, CR LF.
std::string ToCsv(const Table& table);
/// All throw host::InputError, one sentence that names the file, when it cannot be written; no half file stays.
void WriteCsv(const Table& table, const std::string& path);
/// Numbers and dates as such, with their formats; headings frozen, column widths as shown.
void WriteXlsx(const Table& table, const std::string& path);
/// A sheet for each table, named by its title; there is at least one.
void WriteXlsx(std::span<const Table> tables, const std::string& path);

}  // namespace app::desktop
