// A table from the clipboard, typed into a grid.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/kit/desk.h"

namespace app::desktop {

using PastedRows = std::vector<std::vector<std::string>>;

/// Lines of tab-separated cells, as spreadsheets hand them over: a cell in quotes may hold tabs, line breaks and
/// doubled quotes. Empty lines at the end are none.
PastedRows ReadPasted(std::string_view text);

struct Paste {
  std::vector<std::string> fields;
  PastedRows rows;  // as many cells as fields, check boxes as "S" and "N"
};

/// What is to be typed into these columns of the grid, from the cursor's on, named for the person by `captions`. A
/// first line that repeats the captions is left out. Throws host::InputError, one sentence, when a column is read
/// only, when there are more columns than the grid has there, or a check box is given anything but a yes or no.
Paste PlanPaste(const host::Grid& grid, const std::vector<int>& columns, const std::vector<std::string>& captions,
                PastedRows rows);

struct Pasted {
  std::size_t rows = 0;  // that were typed and posted whole
  bool stopped = false;  // the next one was refused; its message was shown
};

/// Types row by row as a person would. `ids` are the rows of the list from the cursor's down; after the last of them
/// rows are appended. What was accepted stays.
Pasted TypePaste(host::Desk& desk, host::Grid& grid, const Paste& paste, const std::vector<std::size_t>& ids);

}  // namespace app::desktop
