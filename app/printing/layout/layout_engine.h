// Runs a layout file.
#pragma once

#include <QJSEngine>
#include <chrono>
#include <string>

#include "app/equipment.h"
#include "app/printing/layout/blocks.h"
#include "app/printing/layout/datasets_in_script.h"
#include "app/printing/layout/layout_bridge.h"
#include "app/printing/layout/layout_files.h"
#include "app/printing/layout/time_limit.h"

namespace app::printing {

/// Lives as long as what the layout described is being worked on: its functions are called row by row.
class LayoutEngine {
 public:
  LayoutEngine(const PrintRequest& request, const LayoutFile& file, std::chrono::milliseconds limit);

  /// What the file describes. Throws Mistake, which knows its line where the engine does, and whatever a function of
  /// the screen's own throws.
  const Root& Run();
  /// What a function of the layout hands back. Throws as Run does; a mistake whose line the engine does not know gets
  /// `line`.
  QJSValue Call(const QJSValue& function, const QJSValueList& arguments, int line);

  QJSEngine& Script() { return engine_; }

 private:
  void CheckTime(int line) const;

  const LayoutFile& file_;
  QJSEngine engine_;
  TimeLimit time_;
  DatasetsInScript datasets_;
  LayoutBridge bridge_;
  QJSValue call_;
};

}  // namespace app::printing
