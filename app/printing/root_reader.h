// What a layout file is as a whole: a report, labels or text.
#pragma once

#include <QJSValue>
#include <string>

#include "app/printing/blocks.h"

namespace app::printing {

class DatasetsInScript;

/// `kind` is "report", "label" or "text". Throws Mistake.
Root ReadRoot(const std::string& kind, const QJSValue& options, DatasetsInScript& datasets);

}  // namespace app::printing
