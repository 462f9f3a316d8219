#include "app/printing/layout/make_printout.h"

#include "app/printing/layout/layout_engine.h"
#include "app/printing/layout/layout_files.h"
#include "app/printing/layout/report_printout.h"
#include "app/printing/page/mistake.h"
#include "host/errors.h"

namespace app::printing {
namespace {

std::string Sentence(std::string text) {
  for (char& character : text) {
    if (character == '\n' || character == '\r') character = ' ';
  }
  if (text.find_last_of(".!?") + 1 != text.size()) text += '.';
  return text;
}

void CheckKind(const Root& root, char kind) {
  const bool is_text = std::holds_alternative<TextRoot>(root.content);
  if (kind == 'T' && !is_text) throw Mistake("um leiaute de texto precisa chamar text()", root.line);
  if (kind != 'T' && is_text) throw Mistake("um leiaute gráfico precisa chamar report() ou label()", root.line);
}

void Fill(const Root& root, const PrintRequest& request, LayoutEngine& engine, Printout& printout) {
  try {
    if (const auto* report = std::get_if<ReportRoot>(&root.content)) {
      FillReport(*report, root.line, request, engine, printout);
    } else if (const auto* label = std::get_if<LabelRoot>(&root.content)) {
      FillLabels(*label, root.line, engine, printout);
    } else {
      FillText(std::get<TextRoot>(root.content), root.line, engine, printout);
    }
  } catch (const Mistake& mistake) {
    if (mistake.Line() > 0) throw;
    throw Mistake(mistake.what(), root.line);
  }
}

}  // namespace

Printout MakePrintout(const PrintRequest& request, std::chrono::milliseconds limit) {
  const LayoutFile file = FindLayout(request.report, request.kind, request.layouts_folder);
  Printout printout;
  printout.report = request.report;
  try {
    LayoutEngine engine(request, file, limit);
    const Root& root = engine.Run();
    CheckKind(root, request.kind);
    Fill(root, request, engine, printout);
  } catch (const Mistake& mistake) {
    throw host::InputError(Sentence(At(file.name, mistake.Line()) + mistake.what()));
  }
  if (printout.title.empty()) printout.title = request.report;
  return printout;
}

}  // namespace app::printing
