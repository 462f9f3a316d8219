#include "app/printing/page/pdf.h"

#include <QMarginsF>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <algorithm>

#include "app/printing/page/fonts.h"
#include "app/printing/page/page_painter.h"
#include "host/errors.h"

namespace app::printing {

QPageLayout PaperOf(const Printout& printout) {
  const QSizeF lying(printout.width, printout.height);
  const bool landscape = printout.width > printout.height;
  const QPageSize named(landscape ? lying.transposed() : lying, QPageSize::Millimeter, QString(),
                        QPageSize::FuzzyMatch);
  // A report's paper has the name that printers know it by, and may be turned. A label comes out as it is.
  const bool known = printout.form == PrintoutForm::kReport && named.id() != QPageSize::Custom;
  const QPageSize size =
      known ? QPageSize(named.id()) : QPageSize(lying, QPageSize::Millimeter, QString(), QPageSize::ExactMatch);
  const auto turned = known && landscape ? QPageLayout::Landscape : QPageLayout::Portrait;
  QPageLayout layout(size, turned, QMarginsF(), QPageLayout::Millimeter);
  layout.setMode(QPageLayout::FullPageMode);
  return layout;
}

void PaintPages(QPagedPaintDevice& device, const Printout& printout, std::size_t from, std::size_t to) {
  if (from >= printout.pages.size()) return;
  device.setPageLayout(PaperOf(printout));
  QPainter painter;
  const host::InputError refused("Não foi possível imprimir: a impressora não aceita as páginas.");
  if (!painter.begin(&device)) throw refused;
  const std::size_t last = std::min(to, printout.pages.size() - 1);
  for (std::size_t page = from; page <= last; ++page) {
    if (page > from && !device.newPage()) throw refused;
    PaintPage(painter, printout, page);
  }
  if (!painter.end()) throw refused;
}

void WritePdf(const Printout& printout, const std::string& path) {
  if (printout.form == PrintoutForm::kText) {
    throw host::InputError("O relatório \"" + printout.report + "\" é de texto e não tem páginas.");
  }
  // Whole or not at all: a file that was there before stays until the new one is complete.
  QSaveFile file(QString::fromStdString(path));
  const auto refuse = [&] {
    throw host::InputError("Não foi possível gravar o arquivo " + path + ": " + file.errorString().toStdString() + ".");
  };
  if (!file.open(QIODevice::WriteOnly)) refuse();
  {
    QPdfWriter writer(&file);
    writer.setResolution(kTextDpi);
    writer.setTitle(QString::fromStdString(printout.title));
    writer.setCreator(QStringLiteral("Tecelagem"));
    if (printout.pages.empty()) throw host::InputError("O relatório \"" + printout.report + "\" não tem páginas.");
    PaintPages(writer, printout, 0, printout.pages.size() - 1);
  }
  if (!file.commit()) refuse();
}

}  // namespace app::printing
