#include "app/printing/layout/flow.h"

#include <algorithm>
#include <utility>

#include "app/printing/page/fonts.h"
#include "app/printing/page/mistake.h"

namespace app::printing {
namespace {

void AddSpace(double height, bool keep_with_next, StripSink& sink) {
  if (height <= 0) return;
  Strip space;
  space.height = height;
  space.is_space = true;
  space.keep_with_next = keep_with_next;
  sink.Add(std::move(space));
}

// Neither the first line of a paragraph stays alone at the foot of a page nor its last one at the head of the next.
void FlowParagraph(const Paragraph& paragraph, FlowContext& context) {
  const TextStyle style = Resolved(paragraph.style, context.base);
  const std::uint32_t index = context.measure.StyleIndex(style);
  const std::vector<QString> lines = context.measure.Lines(index, paragraph.text, context.width);
  AddSpace(paragraph.space_before, paragraph.keep_with_next, context.sink);
  for (std::size_t at = 0; at < lines.size(); ++at) {
    Strip strip;
    strip.height = LineHeight(style.size);
    const bool last = at + 1 == lines.size();
    strip.keep_with_next = last ? paragraph.keep_with_next : at == 0 || at + 2 == lines.size();
    if (!lines[at].isEmpty()) {
      strip.items.texts.push_back(
          LineOfText(context.measure, index, lines[at].toStdString(), context.left, 0, context.width, paragraph.align));
    }
    context.sink.Add(std::move(strip));
  }
  AddSpace(paragraph.space_after, paragraph.keep_with_next, context.sink);
}

// Where the captions and values of a column of fields stand.
struct FieldsColumn {
  double x = 0;
  double caption_width = 0;
  double value_width = 0;
};

std::vector<FieldsColumn> FieldsColumns(const Fields& fields, std::uint32_t caption_style, FlowContext& context) {
  constexpr double kGap = 2;  // millimetres
  constexpr double kMostCaptionShare = 0.5;
  const auto count = static_cast<std::size_t>(fields.columns);
  const double width = context.width / fields.columns;
  std::vector<FieldsColumn> columns(count);
  for (std::size_t at = 0; at < count; ++at) {
    FieldsColumn& column = columns[at];
    column.x = context.left + static_cast<double>(at) * width;
    for (std::size_t pair = at; pair < fields.pairs.size(); pair += count) {
      column.caption_width =
          std::max(column.caption_width, context.measure.Width(caption_style, fields.pairs[pair].first));
    }
    column.caption_width = fields.caption_width.value_or(column.caption_width + kGap);
    column.caption_width = std::min(column.caption_width, width * kMostCaptionShare);
    column.value_width = width - column.caption_width - (at + 1 < count ? kGap : 0);
  }
  return columns;
}

void FlowFields(const Fields& fields, FlowContext& context) {
  constexpr std::uint32_t kCaptionColor = 0x555555;
  constexpr double kRowGap = 0.4;  // millimetres
  const TextStyle value_style = Resolved(fields.style, context.base);
  TextStyle caption_style = value_style;
  caption_style.bold = false;
  caption_style.color = kCaptionColor;
  const std::uint32_t value = context.measure.StyleIndex(value_style);
  const std::uint32_t caption = context.measure.StyleIndex(caption_style);
  const double line_height = LineHeight(value_style.size);
  const std::vector<FieldsColumn> columns = FieldsColumns(fields, caption, context);
  for (std::size_t from = 0; from < fields.pairs.size(); from += columns.size()) {
    Strip strip;
    std::size_t most_lines = 1;
    for (std::size_t at = 0; at < columns.size() && from + at < fields.pairs.size(); ++at) {
      const FieldsColumn& column = columns[at];
      const auto& [name, text] = fields.pairs[from + at];
      const QString cut = context.measure.Cut(caption, name, column.caption_width);
      strip.items.texts.push_back(
          LineOfText(context.measure, caption, cut.toStdString(), column.x, 0, column.caption_width, TextAlign::kLeft));
      const std::vector<QString> lines = context.measure.Lines(value, text, column.value_width);
      most_lines = std::max(most_lines, lines.size());
      for (std::size_t line = 0; line < lines.size(); ++line) {
        if (lines[line].isEmpty()) continue;
        strip.items.texts.push_back(LineOfText(context.measure, value, lines[line].toStdString(),
                                               column.x + column.caption_width, static_cast<double>(line) * line_height,
                                               column.value_width, TextAlign::kLeft));
      }
    }
    strip.height = static_cast<double>(most_lines) * line_height + kRowGap;
    context.sink.Add(std::move(strip));
  }
}

void FlowRule(const Rule& rule, FlowContext& context) {
  constexpr double kAir = 0.8;  // millimetres above and below
  Strip strip;
  strip.height = 2 * kAir + rule.width;
  const double y = strip.height / 2;
  strip.items.lines.push_back({context.left, y, context.left + context.width, y, rule.width});
  context.sink.Add(std::move(strip));
}

void FlowBlock(const Block& block, FlowContext& context) {
  if (const auto* band = std::get_if<Band>(&block.content)) {
    context.sink.Add(BandStrip(*band, context));
  } else if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
    FlowParagraph(*paragraph, context);
  } else if (const auto* fields = std::get_if<Fields>(&block.content)) {
    FlowFields(*fields, context);
  } else if (const auto* space = std::get_if<Space>(&block.content)) {
    AddSpace(space->height, false, context.sink);
  } else if (const auto* rule = std::get_if<Rule>(&block.content)) {
    FlowRule(*rule, context);
  } else if (std::holds_alternative<NewPage>(block.content)) {
    context.sink.NewPage();
  } else if (const auto* together = std::get_if<KeepTogether>(&block.content)) {
    context.sink.BeginTogether();
    FlowBlocks(together->blocks, context);
    context.sink.EndTogether();
  } else if (const auto* table = std::get_if<Table>(&block.content)) {
    FlowTable(*table, block.line, context);
  } else {
    FlowDetail(std::get<Detail>(block.content), block.line, context);
  }
}

}  // namespace

Strip BandStrip(const Band& band, FlowContext& context) {
  Strip strip;
  const double bottom = PlaceItems(band.items, context.Room(), strip.items);
  strip.height = band.height.value_or(bottom);
  strip.keep_with_next = band.keep_with_next;
  return strip;
}

void FlowBlocks(const std::vector<BlockPtr>& blocks, FlowContext& context) {
  for (const BlockPtr& block : blocks) {
    try {
      FlowBlock(*block, context);
    } catch (const Mistake& mistake) {
      if (mistake.Line() > 0) throw;
      throw Mistake(mistake.what(), block->line);
    }
  }
}

void StackedStrip::Add(Strip strip) {
  MoveItems(std::move(strip.items), strip_.height, strip_.items);
  strip_.height += strip.height;
}

void StackedStrip::NewPage() { throw Mistake("newPage() não pode estar no cabeçalho nem no rodapé da página"); }

}  // namespace app::printing
