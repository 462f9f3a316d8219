// Labels: a page per row. And text: the bytes of all rows.
#include <utility>

#include "app/printing/layout/block_reader.h"
#include "app/printing/layout/report_printout.h"
#include "app/printing/layout/script_options.h"
#include "app/printing/layout/text_encoding.h"
#include "app/printing/page/item_placement.h"
#include "app/printing/page/mistake.h"

namespace app::printing {
namespace {

constexpr std::size_t kMostLabels = 20'000;
constexpr std::size_t kMostBytes = 64'000'000;

// Calls the layout's function for each row, or once without a row.
template <typename Use>
void ForEachRow(const std::shared_ptr<RowSource>& rows, const QJSValue& function, int line, LayoutEngine& engine,
                const Use& use) {
  if (rows == nullptr) {
    use(engine.Call(function, {QJSValue(QJSValue::NullValue), QJSValue(0)}, line));
    return;
  }
  for (std::size_t row = 0; row < rows->Size(); ++row) {
    use(engine.Call(function, {rows->ScriptRow(row), QJSValue(static_cast<int>(row))}, line));
  }
}

}  // namespace

void FillLabels(const LabelRoot& label, int line, LayoutEngine& engine, Printout& printout) {
  printout.form = PrintoutForm::kLabels;
  printout.title = label.title;
  printout.width = label.width;
  printout.height = label.height;
  printout.dpi = label.dpi;
  if (label.rows != nullptr && label.rows->Size() > kMostLabels) throw Mistake("são mais de 20.000 etiquetas");
  if (label.rows != nullptr) {
    DataTable data = DataOf(*label.rows);
    if (!data.columns.empty()) printout.tables.push_back(std::move(data));
  }
  TextMeasure measure;
  const ItemRoom room{measure, label.style, 0, label.width, label.dpi};
  ForEachRow(label.rows, label.draw, line, engine, [&](const QJSValue& items) {
    Page page;
    PlaceItems(ItemsOf(items, "draw()"), room, page);
    printout.pages.push_back(std::move(page));
  });
  printout.styles = measure.Styles();
}

void FillText(const TextRoot& text, int line, LayoutEngine& engine, Printout& printout) {
  printout.form = PrintoutForm::kText;
  printout.title = text.title;
  const Encoding encoding = EncodingNamed(text.encoding).value_or(Encoding::kCp850);
  ForEachRow(text.rows, text.write, line, engine, [&](const QJSValue& written) {
    printout.bytes += Encoded(PrintedText(written, "o texto de write()"), encoding);
    if (printout.bytes.size() > kMostBytes) throw Mistake("o texto passa de 64 MB");
  });
}

}  // namespace app::printing
