#include "app/printing/page/strip.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace app::printing {
namespace {

constexpr double kTolerance = 1e-6;  // millimetres

void MoveBarcode(BarcodeItem& item, double down) {
  PlacedBarcode& symbol = item.symbol;
  if (symbol.dot <= 0) return;
  const int dots = static_cast<int>(std::lround(down / symbol.dot));
  symbol.y += dots;
  for (auto& bar : symbol.bars) bar.y += dots;
  symbol.text_y += dots * symbol.dot;
}

template <typename Items>
void Append(Items&& from, Items& to) {
  to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

// Moves the items that lie wholly above `cut` from one list to the other.
template <typename Item, typename Bottom>
void TakeAbove(std::vector<Item>& from, std::vector<Item>& to, double cut, const Bottom& bottom) {
  const auto below = std::stable_partition(from.begin(), from.end(),
                                           [&](const Item& item) { return bottom(item) <= cut + kTolerance; });
  to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(below));
  from.erase(from.begin(), below);
}

double BarcodeBottom(const BarcodeItem& item) { return (item.symbol.y + item.symbol.height) * item.symbol.dot; }

// Frames and upright lines that cross the cut go on below it.
void CutDrawings(Page& rest, Page& upper, double cut) {
  for (BoxItem& box : rest.boxes) {
    if (box.y >= cut) continue;
    BoxItem part = box;
    part.height = cut - box.y;
    upper.boxes.push_back(part);
    box.height -= part.height;
    box.y = cut;
  }
  for (LineItem& line : rest.lines) {
    if (line.x1 != line.x2 || std::min(line.y1, line.y2) >= cut) continue;
    upper.lines.push_back({line.x1, std::min(line.y1, line.y2), line.x2, cut, line.width});
    (line.y1 < line.y2 ? line.y1 : line.y2) = cut;
  }
}

}  // namespace

void MoveItems(Page&& items, double down, Page& page) {
  for (auto& box : items.boxes) box.y += down;
  for (auto& line : items.lines) {
    line.y1 += down;
    line.y2 += down;
  }
  for (auto& barcode : items.barcodes) MoveBarcode(barcode, down);
  for (auto& text : items.texts) {
    text.y += down;
    text.baseline += down;
  }
  Append(std::move(items.boxes), page.boxes);
  Append(std::move(items.lines), page.lines);
  Append(std::move(items.barcodes), page.barcodes);
  Append(std::move(items.texts), page.texts);
}

Strip CutStrip(Strip& strip, double height) {
  Strip upper;
  const auto text_bottom = [](const TextItem& text) { return text.y + text.height; };
  TakeAbove(strip.items.texts, upper.items.texts, height, text_bottom);
  TakeAbove(strip.items.barcodes, upper.items.barcodes, height, BarcodeBottom);
  if (upper.items.texts.empty() && upper.items.barcodes.empty()) return upper;

  double cut = std::min(height, strip.height);
  for (const auto& text : strip.items.texts) cut = std::min(cut, text.y);
  for (const auto& barcode : strip.items.barcodes) cut = std::min(cut, barcode.symbol.y * barcode.symbol.dot);
  cut = std::max(cut, kTolerance);
  TakeAbove(strip.items.boxes, upper.items.boxes, cut, [](const BoxItem& box) { return box.y + box.height; });
  TakeAbove(strip.items.lines, upper.items.lines, cut, [](const LineItem& line) { return std::max(line.y1, line.y2); });
  CutDrawings(strip.items, upper.items, cut);
  upper.height = cut;
  upper.keep_with_next = true;

  Page rest;
  MoveItems(std::move(strip.items), -cut, rest);
  strip.items = std::move(rest);
  strip.height -= cut;
  return upper;
}

}  // namespace app::printing
