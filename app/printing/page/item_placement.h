// Gives items their place.
#pragma once

#include <vector>

#include "app/printing/page/items.h"
#include "app/printing/page/text_measure.h"

namespace app::printing {

/// Where items stand, and what their type is when they name none.
struct ItemRoom {
  TextMeasure& measure;
  const TextStyle& base;
  double left = 0;   // of the room on the page
  double width = 0;  // to its right edge
  int dpi = 203;     // of the printer, for bar codes that name none
};

TextStyle Resolved(const StyleDraft& draft, const TextStyle& base);

/// A line of text as it is, without cutting.
TextItem LineOfText(TextMeasure& measure, std::uint32_t style, std::string text, double x, double y, double width,
                    TextAlign align);

/// Adds the items to the page and returns the lower edge of the lowest one. Throws Mistake for a bar code that has no
/// room.
double PlaceItems(const std::vector<Item>& items, const ItemRoom& room, Page& page);

}  // namespace app::printing
