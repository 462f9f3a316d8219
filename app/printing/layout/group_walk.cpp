#include "app/printing/layout/group_walk.h"

#include <utility>

#include "app/printing/layout/block_reader.h"
#include "app/printing/layout/script_options.h"
#include "app/printing/page/fonts.h"

namespace app::printing {

GroupWalk::GroupWalk(const std::optional<Grouping>& grouping, RowSource& rows, LayoutEngine& engine, int line)
    : grouping_(grouping), rows_(rows), engine_(engine), line_(line) {
  if (grouping_ && !grouping_->field.empty()) field_ = rows_.Find(grouping_->field);
}

std::string GroupWalk::KeyOf(std::size_t row) {
  if (!grouping_) return {};
  if (!grouping_->field.empty()) return rows_.At(row, field_).AsText();
  const QJSValue key = engine_.Call(grouping_->key, {rows_.ScriptRow(row)}, line_);
  return PrintedText(key, "a chave do grupo").toStdString();
}

void GroupWalk::GoTo(std::size_t row) {
  const bool first = row == 0;
  const std::string before = std::exchange(key_, first ? KeyOf(0) : next_key_);
  begins_ = first || before != key_;
  const bool last = row + 1 == rows_.Size();
  next_key_ = last ? std::string() : KeyOf(row + 1);
  ends_ = last || next_key_ != key_;
}

Strip GroupHeader(const Grouping& grouping, std::size_t row, RowSource& rows, const GroupType& type, int line,
                  FlowContext& context) {
  constexpr double kAbove = 2;  // millimetres
  constexpr double kBelow = 0.7;
  Strip strip;
  strip.keep_with_next = true;
  if (grouping.header.isUndefined()) return strip;
  const QJSValue header = context.engine.Call(grouping.header, {rows.ScriptRow(row)}, line);
  if (header.isObject()) {
    strip.height = PlaceItems(ItemsOf(header, "\"header\" de \"group\""), context.Room(), strip.items);
    return strip;
  }
  TextStyle bold = type.style;
  bold.bold = true;
  const std::uint32_t index = context.measure.StyleIndex(bold);
  const QString text = PrintedText(header, "o texto de \"header\" de \"group\"");
  double y = kAbove;
  for (const QString& text_line : context.measure.Lines(index, text, context.width - type.indent)) {
    if (!text_line.isEmpty()) {
      strip.items.texts.push_back(LineOfText(context.measure, index, text_line.toStdString(),
                                             context.left + type.indent, y, context.width - type.indent,
                                             TextAlign::kLeft));
    }
    y += LineHeight(bold.size);
  }
  strip.height = y + kBelow;
  return strip;
}

}  // namespace app::printing
