#include "app/printing/layout/report_printout.h"

#include <algorithm>
#include <string>
#include <utility>

#include "app/printing/layout/block_reader.h"
#include "app/printing/layout/flow.h"
#include "app/printing/layout/number_text.h"
#include "app/printing/page/fonts.h"
#include "app/printing/page/paginator.h"

namespace app::printing {
namespace {

// "Página 3 de 7" at the right, moment and user at the left.
Strip UsualFooter(const ReportRoot& report, const PrintRequest& request, TextMeasure& measure, std::size_t page,
                  std::size_t pages) {
  constexpr double kScale = 0.85;  // of the report's own type
  TextStyle style = report.style;
  style.size *= kScale;
  const std::uint32_t index = measure.StyleIndex(style);
  const double width = report.width - report.left - report.right;
  const std::string moment = request.moment.ToIso();
  std::string left = DateText(moment) + " " + TimeText(moment);
  if (!request.user.empty()) left += "  " + request.user;
  const std::string right = "Página " + std::to_string(page) + " de " + std::to_string(pages);
  Strip strip;
  strip.height = LineHeight(style.size);
  strip.items.texts.push_back(LineOfText(measure, index, left, report.left, 0, width / 2, TextAlign::kLeft));
  strip.items.texts.push_back(
      LineOfText(measure, index, right, report.left + width / 2, 0, width / 2, TextAlign::kRight));
  return strip;
}

class ReportFlow {
 public:
  ReportFlow(const ReportRoot& report, int line, const PrintRequest& request, LayoutEngine& engine)
      : report_(report), line_(line), request_(request), engine_(engine) {}

  void Fill(Printout& printout) {
    constexpr int kMostRuns = 3;  // each with the number of pages that the one before had
    std::size_t pages = 1;
    for (int run = 0; run < kMostRuns; ++run) {
      printout.tables.clear();
      Paginator paginator(
          {report_.height, report_.top, report_.bottom},
          [this](std::size_t page, std::size_t count) { return Header(page, count); },
          [this](std::size_t page, std::size_t count) { return Footer(page, count); }, pages);
      FlowContext context = Context(paginator);
      context.tables = &printout.tables;
      FlowBlocks(report_.body, context);
      const bool settled = paginator.Finish();
      printout.pages = std::move(paginator.Pages());
      if (settled) break;
      pages = printout.pages.size();
    }
    printout.styles = measure_.Styles();
  }

 private:
  FlowContext Context(StripSink& sink) {
    return {engine_, measure_, report_.style, report_.left, report_.width - report_.left - report_.right,
            sink,    nullptr};
  }

  Strip Furniture(const QJSValue& function, std::size_t page, std::size_t pages) {
    QJSValue counts = engine_.Script().newObject();
    counts.setProperty(QStringLiteral("page"), static_cast<int>(page));
    counts.setProperty(QStringLiteral("pages"), static_cast<int>(pages));
    StackedStrip stacked;
    FlowContext context = Context(stacked);
    FlowBlocks(BlocksOf(engine_.Call(function, {counts}, line_)), context);
    return stacked.Take();
  }

  Strip Header(std::size_t page, std::size_t pages) {
    return report_.header.isUndefined() ? Strip() : Furniture(report_.header, page, pages);
  }

  Strip Footer(std::size_t page, std::size_t pages) {
    if (!report_.has_footer) return {};
    if (report_.footer.isUndefined()) return UsualFooter(report_, request_, measure_, page, pages);
    return Furniture(report_.footer, page, pages);
  }

  const ReportRoot& report_;
  int line_;
  const PrintRequest& request_;
  LayoutEngine& engine_;
  TextMeasure measure_;
};

}  // namespace

void FillReport(const ReportRoot& report, int line, const PrintRequest& request, LayoutEngine& engine,
                Printout& printout) {
  printout.form = PrintoutForm::kReport;
  printout.title = report.title;
  printout.width = report.width;
  printout.height = report.height;
  ReportFlow(report, line, request, engine).Fill(printout);
}

}  // namespace app::printing
