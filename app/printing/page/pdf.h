// Pages on a printer, and in a PDF file.
#pragma once

#include <QPageLayout>
#include <cstddef>
#include <string>

#include "app/printing/page/printout.h"

class QPagedPaintDevice;

namespace app::printing {

/// The paper: size and orientation, no margins, drawn on from corner to corner.
QPageLayout PaperOf(const Printout& printout);

/// Sets the device's paper and draws the pages `from` to `to` (from 0, both included) on it, each on a page of its own;
/// pages that do not exist are left out. Throws host::InputError when the device cannot be drawn on.
void PaintPages(QPagedPaintDevice& device, const Printout& printout, std::size_t from, std::size_t to);

/// Writes all pages with the printout's title, searchable text and the fonts embedded. Throws host::InputError when
/// the file cannot be written, and for form kText.
void WritePdf(const Printout& printout, const std::string& path);

}  // namespace app::printing
