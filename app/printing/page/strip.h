// Pieces of a page, from top to bottom.
#pragma once

#include <memory>

#include "app/printing/page/printout.h"

namespace app::printing {

/// What stays on one page: a row, a line of a paragraph, a band. Its items have their place across the page, and down
/// from the strip's top.
struct Strip {
  double height = 0;
  Page items;
  bool keep_with_next = false;
  bool is_space = false;                  // left out where a page begins
  std::shared_ptr<const Strip> repeated;  // stands at the top when a new page begins before this strip; null for none
};

/// Takes the strips of a report in order.
class StripSink {
 public:
  virtual ~StripSink() = default;
  virtual void Add(Strip strip) = 0;
  /// From now on, this stands at the top of every page that begins. Null ends it.
  virtual void SetRepeated(std::shared_ptr<const Strip> strip) = 0;
  virtual void NewPage() = 0;
  /// What is added until the matching EndTogether stays on one page if it has room there.
  virtual void BeginTogether() = 0;
  virtual void EndTogether() = 0;
};

/// Moves all items down, and adds them to `page`. A bar code goes by whole dots of its printer.
void MoveItems(Page&& items, double down, Page& page);

/// Cuts a strip that is higher than a page between two lines: what fits into `height` comes back, the rest stays in
/// `strip`, from its top. Comes back without height when not even a line fits.
Strip CutStrip(Strip& strip, double height);

}  // namespace app::printing
