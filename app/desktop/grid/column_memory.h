// Widths, order and sorting of a grid's columns as a person left them.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "host/host.h"
#include "host/kit/grid.h"

namespace app::desktop {

struct ColumnLayout {
  struct Column {
    QString field;
    int width = 0;  // device-independent pixels
  };
  std::vector<Column> columns;  // as they stand on the screen, from the left
  QString sorted_by;            // field; empty for the screen's own order
  bool descending = false;
};

/// One layout per user, screen class and grid.
class ColumnMemory {
 public:
  ColumnMemory(host::UserSettings& settings, const host::Grid& grid);

  /// Nothing when none was kept or the grid has other columns than it was kept for.
  std::optional<ColumnLayout> Read() const;
  /// A layout that cannot be written is forgotten with the program; nobody is bothered about it.
  void Write(const ColumnLayout& layout);
  void Forget();

 private:
  void Put(std::string_view text);

  host::UserSettings& settings_;
  const host::Grid& grid_;
  std::string section_;
};

}  // namespace app::desktop
