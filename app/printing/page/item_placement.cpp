#include "app/printing/page/item_placement.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/printing/page/fonts.h"
#include "app/printing/page/mistake.h"
#include "host/errors.h"

namespace app::printing {
namespace {

constexpr double kTolerance = 0.01;    // millimetres
constexpr double kSmallestShrunk = 4;  // points; smaller cannot be read
constexpr double kShrinkStep = 0.5;    // points
constexpr double kSmallestWidth = 1;   // millimetres, of a text at the very edge

struct Fitted {
  std::uint32_t style = 0;
  double line_height = 0;
  std::vector<QString> lines;
};

class TextLayout {
 public:
  TextLayout(const TextDraft& draft, const ItemRoom& room)
      : draft_(draft),
        room_(room),
        width_(draft.width.value_or(std::max(room.width - draft.x, kSmallestWidth))),
        style_(Resolved(draft.style, room.base)) {}

  double Place(Page& page) {
    Fitted fitted = Fit(style_.size);
    if (draft_.shrink) {
      for (double size = style_.size - kShrinkStep; !Fits(fitted) && size >= kSmallestShrunk; size -= kShrinkStep) {
        fitted = Fit(size);
      }
    }
    CutDown(fitted);
    const double used = static_cast<double>(fitted.lines.size()) * fitted.line_height;
    double y = draft_.y;
    if (draft_.height && draft_.vertical != VerticalAlign::kTop) {
      const double free = *draft_.height - used;
      y += draft_.vertical == VerticalAlign::kMiddle ? free / 2 : free;
    }
    for (const QString& line : fitted.lines) {
      if (!line.isEmpty()) {
        page.texts.push_back(LineOfText(room_.measure, fitted.style, line.toStdString(), room_.left + draft_.x, y,
                                        width_, draft_.align));
      }
      y += fitted.line_height;
    }
    return draft_.y + draft_.height.value_or(used);
  }

 private:
  Fitted Fit(double size) const {
    TextStyle style = style_;
    style.size = size;
    Fitted fitted{room_.measure.StyleIndex(style), LineHeight(size), {}};
    if (draft_.wrap) {
      fitted.lines = room_.measure.Lines(fitted.style, draft_.text, width_);
    } else {
      const QStringList lines = draft_.text.split(u'\n');
      fitted.lines.assign(lines.begin(), lines.end());
    }
    return fitted;
  }

  bool Fits(const Fitted& fitted) const {
    const double used = static_cast<double>(fitted.lines.size()) * fitted.line_height;
    if (draft_.height && used > *draft_.height + kTolerance) return false;
    return std::all_of(fitted.lines.begin(), fitted.lines.end(), [&](const QString& line) {
      return room_.measure.Width(fitted.style, line) <= width_ + kTolerance;
    });
  }

  // A line stays at least, and "…" tells that there was more.
  void CutDown(Fitted& fitted) const {
    if (draft_.height) {
      const double room = std::floor((*draft_.height + kTolerance) / fitted.line_height);
      const auto most = static_cast<std::size_t>(std::max(room, 1.0));
      if (fitted.lines.size() > most) {
        fitted.lines.resize(most);
        fitted.lines.back() = room_.measure.WithEllipsis(fitted.style, fitted.lines.back(), width_);
      }
    }
    for (QString& line : fitted.lines) line = room_.measure.Cut(fitted.style, line, width_);
  }

  const TextDraft& draft_;
  const ItemRoom& room_;
  double width_;
  TextStyle style_;
};

double PlaceBarcodeItem(const BarcodeDraft& draft, const ItemRoom& room, Page& page) {
  BarcodeRoom where = draft.room;
  where.x += room.left;
  if (where.dpi == 0) where.dpi = room.dpi;
  BarcodeItem item{draft.code.kind, draft.code.value, {}};
  try {
    item.symbol = PlaceBarcode(draft.code, where);
  } catch (const host::InputError& error) {
    throw Mistake(error.what());
  }
  const PlacedBarcode& symbol = item.symbol;
  if (!symbol.text.empty()) {
    TextDraft text;
    text.text = QString::fromStdString(symbol.text);
    text.x = symbol.text_x - room.left;
    text.y = symbol.text_y;
    text.width = symbol.text_width;
    text.height = symbol.text_height;
    text.align = TextAlign::kCenter;
    text.style.size = std::floor(symbol.text_height / LineHeight(1) / kShrinkStep) * kShrinkStep;
    text.shrink = true;
    TextLayout(text, room).Place(page);
  }
  page.barcodes.push_back(std::move(item));
  return draft.room.y + draft.room.height;
}

double PlaceItem(const Item& item, const ItemRoom& room, Page& page) {
  if (const auto* text = std::get_if<TextDraft>(&item)) return TextLayout(*text, room).Place(page);
  if (const auto* barcode = std::get_if<BarcodeDraft>(&item)) return PlaceBarcodeItem(*barcode, room, page);
  if (const auto* line = std::get_if<LineItem>(&item)) {
    LineItem placed = *line;
    placed.x1 += room.left;
    placed.x2 += room.left;
    page.lines.push_back(placed);
    return std::max(line->y1, line->y2);
  }
  BoxItem placed = std::get<BoxItem>(item);
  const double bottom = placed.y + placed.height;
  placed.x += room.left;
  page.boxes.push_back(placed);
  return bottom;
}

}  // namespace

TextStyle Resolved(const StyleDraft& draft, const TextStyle& base) {
  TextStyle style = base;
  style.size = draft.size > 0 ? draft.size : base.size * draft.scale;
  style.bold = draft.bold;
  style.italic = draft.italic;
  style.color = draft.color;
  return style;
}

TextItem LineOfText(TextMeasure& measure, std::uint32_t style, std::string text, double x, double y, double width,
                    TextAlign align) {
  const double size = measure.Style(style).size;
  return {std::move(text), x, y, width, LineHeight(size), y + BaselineBelowTop(size), style, align};
}

double PlaceItems(const std::vector<Item>& items, const ItemRoom& room, Page& page) {
  double bottom = 0;
  for (const Item& item : items) bottom = std::max(bottom, PlaceItem(item, room, page));
  return bottom;
}

}  // namespace app::printing
