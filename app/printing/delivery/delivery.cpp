#include "app/printing/delivery/delivery.h"

#include <QPageSize>
#include <fstream>
#include <iterator>
#include <utility>

#include "app/printing/delivery/cups_queue.h"
#include "app/printing/page/pdf.h"
#include "host/errors.h"

#ifdef _WIN32
#include <QPrinter>
#include <QPrinterInfo>
#else
#include <QTemporaryDir>
#endif

namespace app::printing {
namespace {

using Kind = Destination::Kind;

constexpr double kTestSize = 11;  // points

#ifdef _WIN32

void PrintPages(const Printout& printout, const Choice& choice, const TimeLimits&) {
  const QPrinterInfo info = QPrinterInfo::printerInfo(QString::fromStdString(choice.destination.place));
  if (info.isNull()) {
    throw host::InputError(Caption(choice.destination) +
                           " não existe neste computador: escolha outra. Nada foi impresso.");
  }
  QPrinter printer(info, QPrinter::HighResolution);
  printer.setDocName(QString::fromStdString(printout.title));
  printer.setCopyCount(choice.copies);
  PaintPages(printer, printout, 0, printout.pages.size() - 1);
  if (printer.printerState() == QPrinter::Error) {
    throw host::InputError(Caption(choice.destination) + " não recebeu o trabalho: confira a impressora.");
  }
}

#else

// A label keeps its size whatever the printer's usual paper is, and bar codes their dots.
std::vector<std::pair<std::string, std::string> > OptionsOf(const Printout& printout, int copies) {
  const QPageSize size = PaperOf(printout).pageSize();
  std::string media = size.key().toStdString();
  if (size.id() == QPageSize::Custom) {
    media = "Custom." + QString::number(printout.width).toStdString() + "x" +
            QString::number(printout.height).toStdString() + "mm";
  }
  return {{"copies", std::to_string(copies)}, {"media", media}, {"print-scaling", "none"}};
}

// The toolkit hands pages to the print server too, but keeps to itself whether the server took them.
void PrintPages(const Printout& printout, const Choice& choice, const TimeLimits& limits) {
  const QTemporaryDir folder;
  const std::string file = folder.filePath(QStringLiteral("paginas.pdf")).toStdString();
  WritePdf(printout, file);
  std::ifstream stream(file, std::ios::binary);
  const std::string document{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  SendToQueue({choice.destination.place, printout.title, QueueFormat::kPdf, OptionsOf(printout, choice.copies)},
              document, limits);
}

#endif

std::string Repeated(const std::string& bytes, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += bytes;
  return all;
}

}  // namespace

void CheckHasContent(const Printout& printout) {
  if (printout.form == PrintoutForm::kText ? !printout.bytes.empty() : !printout.pages.empty()) return;
  throw host::InputError("O relatório \"" + printout.report + "\" não tem nada para imprimir.");
}

PrintJob Deliver(const Printout& printout, const Choice& choice, const TimeLimits& limits) {
  CheckHasContent(printout);
  const char kind = KindOf(printout);
  const Destination& destination = choice.destination;
  ParseDestination(ToText(destination), kind);  // refuses what does not take this kind
  PrintJob job{printout.report, kind, {}, {}};
  if (destination.kind != Kind::kFile) job.destination = destination.place;
  if (destination.kind == Kind::kPrinter) {
    PrintPages(printout, choice, limits);
  } else if (kind == 'T') {
    const int copies = destination.kind == Kind::kFile ? 1 : choice.copies;
    job.file = SendBytes(destination, Repeated(printout.bytes, copies), printout.report, limits);
  } else {
    job.file = FileFor(destination.place, printout.report, "pdf");
    WritePdf(printout, job.file);
  }
  return job;
}

std::vector<std::string> PrinterNames() {
#ifdef _WIN32
  std::vector<std::string> names;
  const QString usual = QPrinterInfo::defaultPrinterName();
  for (const QString& name : QPrinterInfo::availablePrinterNames()) {
    names.insert(name == usual ? names.begin() : names.end(), name.toStdString());
  }
  return names;
#else
  return QueueNames();
#endif
}

Printout TestPrintout(char kind, const std::string& where, const std::string& moment) {
  const std::vector<std::string> lines = {"Tecelagem", "Teste de impressão", where, moment};
  Printout test;
  test.report = "Teste";
  test.title = "Teste de impressão";
  if (kind == 'T') {
    test.form = PrintoutForm::kText;
    // A printer of unknown alphabet: plain letters.
    test.bytes = "Tecelagem\r\nTeste de impressao\r\n" + where + "\r\n" + moment + "\r\n\f";
    return test;
  }
  constexpr double kMargin = 15;
  constexpr double kLine = 7;
  TextStyle style;
  style.family = "Noto Sans";
  style.size = kTestSize;
  test.styles.push_back(style);
  Page& page = test.pages.emplace_back();
  for (std::size_t at = 0; at < lines.size(); ++at) {
    TextItem item;
    item.text = lines[at];
    item.x = kMargin;
    item.y = kMargin + kLine * static_cast<double>(at);
    item.width = test.width - 2 * kMargin;
    item.height = kLine;
    item.baseline = item.y + kLine * 0.75;
    page.texts.push_back(item);
  }
  return test;
}

}  // namespace app::printing
