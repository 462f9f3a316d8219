#include "app/printing/layout/root_reader.h"

#include <QPageSize>
#include <QSizeF>
#include <algorithm>

#include "app/printing/layout/block_reader.h"
#include "app/printing/layout/datasets_in_script.h"
#include "app/printing/layout/script_options.h"
#include "app/printing/layout/text_encoding.h"

namespace app::printing {
namespace {

constexpr double kSmallestPage = 5;  // millimetres
constexpr double kLargestPage = 3'000;

TextStyle UsualStyle() {
  TextStyle style;
  style.family = "Noto Sans";
  return style;
}

TextStyle ReadFont(Options& owner) {
  TextStyle style = UsualStyle();
  const QJSValue value = owner.Value("font");
  if (value.isUndefined()) return style;
  Options options(value, "\"font\" de " + owner.What());
  style.family = options.Text("family", QString::fromStdString(style.family)).toStdString();
  style.size = options.Number("size", style.size, 1, 500);
  options.Done();
  return style;
}

void ReadPageSize(Options& options, ReportRoot& report) {
  const QJSValue size = options.Value("size");
  if (size.isUndefined()) return;
  if (size.isArray()) {
    const std::vector<double> sides = options.Numbers("size", 2, 2);
    report.width = sides[0];
    report.height = sides[1];
    if (std::min(report.width, report.height) < kSmallestPage || std::max(report.width, report.height) > kLargestPage) {
      options.Refuse("size", "[largura, altura] em milímetros");
    }
    return;
  }
  const auto named = options.OneOf<QPageSize::PageSizeId>("size", QPageSize::A4,
                                                          {{"A3", QPageSize::A3},
                                                           {"A4", QPageSize::A4},
                                                           {"A5", QPageSize::A5},
                                                           {"Letter", QPageSize::Letter},
                                                           {"Legal", QPageSize::Legal}});
  const QSizeF millimetres = QPageSize::size(named, QPageSize::Millimeter);
  report.width = millimetres.width();
  report.height = millimetres.height();
}

void ReadPage(Options& owner, ReportRoot& report) {
  const QJSValue value = owner.Value("page");
  if (value.isUndefined()) return;
  Options options(value, "\"page\" de report()");
  ReadPageSize(options, report);
  if (options.Flag("landscape", false)) std::swap(report.width, report.height);
  if (options.Has("margins")) {
    const std::vector<double> margins = options.Numbers("margins", 4, 4);
    if (*std::min_element(margins.begin(), margins.end()) < 0) options.Refuse("margins", "quatro números positivos");
    report.left = margins[0];
    report.top = margins[1];
    report.right = margins[2];
    report.bottom = margins[3];
  } else {
    (void)options.Value("margins");
  }
  options.Done();
  constexpr double kLeastRoom = 10;
  if (report.width - report.left - report.right < kLeastRoom ||
      report.height - report.top - report.bottom < kLeastRoom) {
    throw Mistake("\"page\" de report(): as margens não deixam lugar na página");
  }
}

ReportRoot ReadReport(const QJSValue& value) {
  Options options(value, "report()");
  ReportRoot report;
  report.title = options.Text("title").toStdString();
  ReadPage(options, report);
  report.style = ReadFont(options);
  report.header = options.Function("pageHeader");
  // `pageFooter: null` is a page without the usual footer.
  const QJSValue footer = options.Value("pageFooter");
  report.has_footer = !footer.isNull();
  if (report.has_footer) report.footer = options.Function("pageFooter");
  if (!options.Has("body")) options.Refuse("body", "uma lista de blocos");
  report.body = BlocksOf(options.Value("body"));
  options.Done();
  return report;
}

std::shared_ptr<RowSource> ReadRows(Options& options, DatasetsInScript& datasets) {
  const QJSValue rows = options.Value("rows");
  if (rows.isUndefined()) return nullptr;
  return datasets.SourceOf(rows);
}

LabelRoot ReadLabel(const QJSValue& value, DatasetsInScript& datasets) {
  Options options(value, "label()");
  LabelRoot label;
  label.title = options.Text("title").toStdString();
  for (const char* side : {"width", "height"}) {
    if (!options.Has(side)) options.Refuse(side, "um número de milímetros");
  }
  label.width = options.Number("width", 0, kSmallestPage, kLargestPage);
  label.height = options.Number("height", 0, kSmallestPage, kLargestPage);
  label.dpi = options.Whole("dpi", label.dpi, 72, 2400);
  label.style = ReadFont(options);
  label.rows = ReadRows(options, datasets);
  label.draw = options.Function("draw");
  if (label.draw.isUndefined()) options.Refuse("draw", "uma função");
  options.Done();
  return label;
}

TextRoot ReadText(const QJSValue& value, DatasetsInScript& datasets) {
  Options options(value, "text()");
  TextRoot text;
  text.title = options.Text("title").toStdString();
  text.encoding = options.Text("encoding", QStringLiteral("cp850")).toStdString();
  if (!EncodingNamed(text.encoding)) options.Refuse("encoding", "\"utf-8\", \"windows-1252\" ou \"cp850\"");
  text.rows = ReadRows(options, datasets);
  text.write = options.Function("write");
  if (text.write.isUndefined()) options.Refuse("write", "uma função");
  options.Done();
  return text;
}

}  // namespace

TextStyle ReadFullStyle(const QJSValue& value) {
  TextStyle style = UsualStyle();
  Options options = Options::OrNone(value, "o estilo de textWidth()");
  style.family = options.Text("family", QString::fromStdString(style.family)).toStdString();
  style.size = options.Number("size", style.size, 1, 500);
  style.bold = options.Flag("bold", false);
  style.italic = options.Flag("italic", false);
  options.Done();
  return style;
}

Root ReadRoot(const std::string& kind, const QJSValue& options, DatasetsInScript& datasets) {
  if (kind == "report") return {ReadReport(options)};
  if (kind == "label") return {ReadLabel(options, datasets)};
  return {ReadText(options, datasets)};
}

}  // namespace app::printing
