// Blocks become strips.
#pragma once

#include <vector>

#include "app/printing/layout/blocks.h"
#include "app/printing/layout/layout_engine.h"
#include "app/printing/page/item_placement.h"
#include "app/printing/page/strip.h"
#include "app/printing/page/text_measure.h"

namespace app::printing {

/// What blocks need to find their size and rows, and who gets their strips.
struct FlowContext {
  LayoutEngine& engine;
  TextMeasure& measure;
  const TextStyle& base;
  double left = 0;   // of the body
  double width = 0;  // of the body
  StripSink& sink;
  std::vector<DataTable>* tables = nullptr;  // null where nobody wants the tables' data

  ItemRoom Room() const { return {measure, base, left, width}; }
};

/// Throws Mistake with the line of the block, and what the layout's functions throw.
void FlowBlocks(const std::vector<BlockPtr>& blocks, FlowContext& context);

/// One strip of what a head or foot holds. Throws Mistake; a new page cannot begin in there.
class StackedStrip : public StripSink {
 public:
  void Add(Strip strip) override;
  void SetRepeated(std::shared_ptr<const Strip> /*strip*/) override {}
  void NewPage() override;
  void BeginTogether() override {}
  void EndTogether() override {}
  Strip Take() { return std::move(strip_); }

 private:
  Strip strip_;
};

// --- blocks that have a file of their own ----------------------------------------------------------------------------

void FlowTable(const Table& table, int line, FlowContext& context);
void FlowDetail(const Detail& detail, int line, FlowContext& context);
Strip BandStrip(const Band& band, FlowContext& context);

}  // namespace app::printing
