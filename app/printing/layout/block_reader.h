// Blocks and items out of what a layout writes.
#pragma once

#include <QJSValue>
#include <memory>
#include <string>
#include <vector>

#include "app/printing/layout/blocks.h"

namespace app::printing {

class DatasetsInScript;
class Options;

/// A block by the name of its function. Throws Mistake.
Block ReadBlock(const std::string& kind, const QJSValue& first, const QJSValue& second, DatasetsInScript& datasets);

/// The blocks of a (nested) list, or a single one. Throws Mistake for anything that is no block.
std::vector<BlockPtr> BlocksOf(const QJSValue& list);

/// The items of a (nested) list. Throws Mistake.
std::vector<Item> ItemsOf(const QJSValue& list, const std::string& of_whom);

/// "size", "bold", "italic" and "color".
StyleDraft ReadStyle(Options& options, bool bold = false);

/// The table's side of the reader; throws Mistake.
Table ReadTable(const QJSValue& options, DatasetsInScript& datasets);
Detail ReadDetail(const QJSValue& options, DatasetsInScript& datasets);

/// "left", "center", "right".
TextAlign ReadAlign(Options& options, TextAlign otherwise = TextAlign::kLeft);

}  // namespace app::printing
