#include "app/printing/layout/block_reader.h"

#include "app/printing/layout/datasets_in_script.h"
#include "app/printing/layout/layout_bridge.h"
#include "app/printing/layout/script_options.h"

namespace app::printing {
namespace {

constexpr double kTallest = 5'000;  // millimetres

Band ReadBand(const QJSValue& value) {
  Options options(value, "band()");
  Band band;
  band.items = ItemsOf(options.Value("items"), "band()");
  band.height = options.MaybeNumber("height", 0, kTallest);
  band.keep_with_next = options.Flag("keepWithNext", false);
  options.Done();
  return band;
}

Paragraph ReadParagraph(const std::string& name, const QJSValue& text, const QJSValue& value) {
  const bool heading = name == "heading";
  Options options = Options::OrNone(value, name + "()");
  Paragraph paragraph;
  paragraph.text = PrintedText(text, "o texto de " + name + "()");
  paragraph.style = ReadStyle(options, heading);
  paragraph.align = ReadAlign(options);
  paragraph.keep_with_next = options.Flag("keepWithNext", heading);
  if (heading) {
    constexpr double kHeadingScale = 1.25;
    paragraph.style.scale = kHeadingScale;
    paragraph.space_before = 2;
    paragraph.space_after = 1;
  }
  options.Done();
  return paragraph;
}

Fields ReadFields(const QJSValue& pairs, const QJSValue& value) {
  Options options = Options::OrNone(value, "fields()");
  const bool skip_empty = options.Flag("skipEmpty", false);
  Fields fields;
  fields.columns = options.Whole("columns", fields.columns, 1, 10);
  fields.caption_width = options.MaybeNumber("captionWidth", 0, kTallest);
  fields.style = ReadStyle(options);
  options.Done();
  const std::string wrong = "fields() precisa de uma lista de pares [[\"legenda\", valor], ...]";
  if (!pairs.isArray()) throw Mistake(wrong);
  const quint32 count = pairs.property(QStringLiteral("length")).toUInt();
  for (quint32 at = 0; at < count; ++at) {
    const QJSValue pair = pairs.property(at);
    if (pair.isNull() || pair.isBool()) continue;  // condition && ["caption", value]
    if (!pair.isArray() || pair.property(QStringLiteral("length")).toUInt() != 2) throw Mistake(wrong);
    const QString caption = PrintedText(pair.property(0), "a legenda " + std::to_string(at + 1) + " de fields()");
    const QString text = PrintedText(pair.property(1), "o valor de " + Quoted(caption.toStdString()) + " em fields()");
    if (skip_empty && text.trimmed().isEmpty()) continue;
    fields.pairs.emplace_back(caption, text);
  }
  return fields;
}

Space ReadSpace(const QJSValue& height) {
  if (!height.isNumber() || !(height.toNumber() >= 0 && height.toNumber() <= kTallest)) {
    throw Mistake("space() precisa de um número de milímetros");
  }
  return {height.toNumber()};
}

Rule ReadRule(const QJSValue& value) {
  Options options = Options::OrNone(value, "rule()");
  Rule rule;
  rule.width = options.Number("width", rule.width, 0, 100);
  options.Done();
  return rule;
}

}  // namespace

Block ReadBlock(const std::string& kind, const QJSValue& first, const QJSValue& second, DatasetsInScript& datasets) {
  if (kind == "band") return {ReadBand(first)};
  if (kind == "heading" || kind == "paragraph") return {ReadParagraph(kind, first, second)};
  if (kind == "fields") return {ReadFields(first, second)};
  if (kind == "table") return {ReadTable(first, datasets)};
  if (kind == "detail") return {ReadDetail(first, datasets)};
  if (kind == "space") return {ReadSpace(first)};
  if (kind == "rule") return {ReadRule(first)};
  if (kind == "keepTogether") return {KeepTogether{BlocksOf(first)}};
  return {NewPage{}};
}

std::vector<BlockPtr> BlocksOf(const QJSValue& list) {
  std::vector<BlockPtr> blocks;
  for (const QJSValue& value : Flattened(list)) {
    const auto* handle = value.isQObject() ? qobject_cast<const BlockHandle*>(value.toQObject()) : nullptr;
    if (handle == nullptr) {
      throw Mistake("a parte " + std::to_string(blocks.size() + 1) +
                    " da lista não é um bloco, como band(), table() ou paragraph()");
    }
    blocks.push_back(handle->Get());
  }
  return blocks;
}

}  // namespace app::printing
