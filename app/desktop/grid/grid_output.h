// A list copied, exported, and filled from the clipboard.
#pragma once

#include <QString>

#include "app/desktop/grid/grid_view.h"
#include "host/host.h"

namespace app::desktop {

class GridOutput {
 public:
  GridOutput(GridModel& model, GridView& view, host::UserSettings& settings);

  /// The marked block, or the cursor's cell alone without captions, to the clipboard.
  void Copy() const;
  /// What the clipboard holds is typed from the cursor's cell on; what stops it is told.
  void PasteHere();
  enum class Format { kXlsx, kCsv };
  /// Asks for a file, proposing the folder of the last export.
  void Export(Format format);

 private:
  QString Title() const;
  QString Folder() const;
  /// A sentence in a box, as the screen says its own.
  void Tell(const std::string& sentence);
  host::ActResult PasteRows(const std::string& text);

  GridModel& model_;
  GridView& view_;
  host::UserSettings& settings_;
};

}  // namespace app::desktop
