// Finds the parts of a screen that a script names, and tells what they show.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/kit/component.h"
#include "host/kit/grid.h"
#include "host/kit/screen.h"

namespace app::script {

/// The component of that name as `Part`. Throws host::InputError that names screen and component when the screen has
/// none, or one of another kind; `kind` says what was wanted ("um botão").
template <typename Part>
Part& Find(const host::Screen& screen, std::string_view name, std::string_view kind);

/// The grid that shows the dataset of that name (or has that name itself); where several do, the one that a person
/// can act on. Throws host::InputError when the screen shows no such dataset.
host::Grid& FindGrid(const host::Screen& screen, std::string_view dataset);

/// The control of that name, or the grid that shows the dataset of that name. Throws as the two above.
host::Control& FindControl(const host::Screen& screen, std::string_view name);

/// The text that a component shows. Throws host::InputError for one that shows none (a grid).
std::string ShownText(const host::Screen& screen, std::string_view name);

/// A value of a grid's row, 1-based; the row being typed shows what was typed.
const host::Value& CellValue(const host::Grid& grid, std::size_t rec_no, const host::GridColumn& column);
/// Number of rows that the grid shows, a row being inserted included.
std::size_t RowCount(const host::Grid& grid);
/// Index of a column, by its field's name. Throws host::InputError when the grid does not show it.
int FindColumn(const host::Grid& grid, std::string_view field);

/// A key by its name ("F5", "Enter", "Tab"), without regard to case; nothing for an unknown one.
std::optional<host::Key> KeyByName(std::string_view name);

// --- implementation of the template ----------------------------------------------------------------------------

host::Component& FindAny(const host::Screen& screen, std::string_view name);
[[noreturn]] void RefuseKind(const host::Component& component, std::string_view kind);

template <typename Part>
Part& Find(const host::Screen& screen, std::string_view name, std::string_view kind) {
  host::Component& found = FindAny(screen, name);
  if (auto* part = dynamic_cast<Part*>(&found)) return *part;
  RefuseKind(found, kind);
}

}  // namespace app::script
