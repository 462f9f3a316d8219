// What a layout file is as a whole: a report, labels or text.
#pragma once

#include <QJSValue>
#include <string>

#include "app/printing/layout/blocks.h"

namespace app::printing {

class DatasetsInScript;

/// `kind` is "report", "label" or "text". Throws Mistake.
Root ReadRoot(const std::string& kind, const QJSValue& options, DatasetsInScript& datasets);

/// The style of textWidth(): "family", "size", "bold" and "italic"; the usual type without it. Throws Mistake.
TextStyle ReadFullStyle(const QJSValue& style);

}  // namespace app::printing
