// The items of bands and labels.
#include "app/printing/layout/block_reader.h"
#include "app/printing/layout/script_options.h"
#include "host/errors.h"

namespace app::printing {
namespace {

constexpr double kFarthest = 5'000;  // millimetres

TextDraft ReadText(Options& options) {
  TextDraft text;
  text.text = options.Text("text");
  text.x = options.Number("x", 0, -kFarthest, kFarthest);
  text.y = options.Number("y", 0, -kFarthest, kFarthest);
  text.width = options.MaybeNumber("w", 0, kFarthest);
  text.height = options.MaybeNumber("h", 0, kFarthest);
  text.align = ReadAlign(options);
  text.vertical = options.OneOf<VerticalAlign>(
      "valign", VerticalAlign::kTop,
      {{"top", VerticalAlign::kTop}, {"middle", VerticalAlign::kMiddle}, {"bottom", VerticalAlign::kBottom}});
  text.style = ReadStyle(options);
  text.wrap = options.Flag("wrap", false);
  text.shrink = options.Flag("shrink", false);
  return text;
}

LineItem ReadLine(Options& options) {
  const std::vector<double> ends = options.Numbers("line", 4, 4);
  LineItem line{ends[0], ends[1], ends[2], ends[3]};
  line.width = options.Number("width", line.width, 0, 100);
  return line;
}

BoxItem ReadBox(Options& options) {
  const std::vector<double> place = options.Numbers("box", 4, 4);
  BoxItem box{place[0], place[1], place[2], place[3]};
  if (box.width < 0 || box.height < 0) options.Refuse("box", "[x, y, largura, altura]");
  box.filled = options.Has("fill");
  box.fill = options.Color("fill", 0);
  box.pen = options.Number("width", box.filled ? 0 : box.pen, 0, 100);
  box.radius = options.Number("radius", 0, 0, kFarthest);
  return box;
}

BarcodeDraft ReadBarcode(Options& options) {
  constexpr int kLeastDpi = 72;
  constexpr int kMostDpi = 2400;
  constexpr double kTextHeight = 3;  // of the line for human readers
  BarcodeDraft draft;
  const std::string kind = options.Text("barcode").toStdString();
  if (!options.Has("value")) options.Refuse("value", "um texto");
  const std::string value = options.Text("value").toStdString();
  draft.room.x = options.Number("x", 0, -kFarthest, kFarthest);
  draft.room.y = options.Number("y", 0, -kFarthest, kFarthest);
  for (const char* side : {"w", "h"}) {
    if (!options.Has(side)) options.Refuse(side, "um número de milímetros");
  }
  draft.room.width = options.Number("w", 0, 0, kFarthest);
  draft.room.height = options.Number("h", 0, 0, kFarthest);
  draft.text = options.Flag("text", true);
  draft.room.text_height = draft.text ? kTextHeight : 0;
  draft.room.dpi = options.Has("dpi") ? options.Whole("dpi", 0, kLeastDpi, kMostDpi) : 0;
  try {
    draft.code = EncodeBarcode(kind, value);
  } catch (const host::InputError& error) {
    throw Mistake(error.what());
  }
  if (draft.code.text.empty()) draft.room.text_height = 0;
  return draft;
}

Item ReadItem(const QJSValue& value, const std::string& what) {
  Options options(value, what);
  Item item;
  if (options.Has("line")) {
    item = ReadLine(options);
  } else if (options.Has("box")) {
    item = ReadBox(options);
  } else if (options.Has("barcode")) {
    item = ReadBarcode(options);
  } else if (value.hasProperty(QStringLiteral("text"))) {
    item = ReadText(options);
  } else {
    throw Mistake(what + " precisa de \"text\", \"line\", \"box\" ou \"barcode\"");
  }
  options.Done();
  return item;
}

}  // namespace

TextAlign ReadAlign(Options& options, TextAlign otherwise) {
  return options.OneOf<TextAlign>(
      "align", otherwise, {{"left", TextAlign::kLeft}, {"center", TextAlign::kCenter}, {"right", TextAlign::kRight}});
}

StyleDraft ReadStyle(Options& options, bool bold) {
  constexpr double kSmallest = 1;
  constexpr double kLargest = 500;
  StyleDraft style;
  style.size = options.MaybeNumber("size", kSmallest, kLargest).value_or(0);
  style.bold = options.Flag("bold", bold);
  style.italic = options.Flag("italic", false);
  style.color = options.Color("color", 0);
  return style;
}

std::vector<Item> ItemsOf(const QJSValue& list, const std::string& of_whom) {
  std::vector<Item> items;
  const std::vector<QJSValue> values = Flattened(list);
  items.reserve(values.size());
  for (const QJSValue& value : values) {
    items.push_back(ReadItem(value, "o item " + std::to_string(items.size() + 1) + " de " + of_whom));
  }
  return items;
}

}  // namespace app::printing
