// What is to stand on a page, before it has its place.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <variant>

#include "app/printing/page/barcode.h"
#include "app/printing/page/printout.h"

namespace app::printing {

/// Type as a layout asks for it; what it leaves out is the report's.
struct StyleDraft {
  double size = 0;  // points; 0 for `scale` times the report's
  double scale = 1;
  bool bold = false;
  bool italic = false;
  std::uint32_t color = 0;
};

// Items of a band or label, in millimetres from its top left corner.

enum class VerticalAlign { kTop, kMiddle, kBottom };

struct TextDraft {
  QString text;
  double x = 0;
  double y = 0;
  std::optional<double> width;   // to the right edge without one
  std::optional<double> height;  // as high as its lines without one
  TextAlign align = TextAlign::kLeft;
  VerticalAlign vertical = VerticalAlign::kTop;
  StyleDraft style;
  bool wrap = false;
  bool shrink = false;
};

struct BarcodeDraft {
  Barcode code;
  BarcodeRoom room;  // its dpi 0 when the layout names none
  bool text = true;  // the line for human readers
};

using Item = std::variant<TextDraft, LineItem, BoxItem, BarcodeDraft>;

}  // namespace app::printing
