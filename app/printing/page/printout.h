// What a report or a label will look like on paper, as values: first everything is placed, then it is drawn.
#pragma once

#include <QPageLayout>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "app/equipment.h"
#include "app/printing/page/barcode.h"
#include "host/value.h"

class QPagedPaintDevice;
class QPainter;

namespace app::printing {

// All lengths are millimetres from the top left corner of the paper. Colours are 0xRRGGBB.

struct TextStyle {
  std::string family;
  double size = 9;  // points
  bool bold = false;
  bool italic = false;
  std::uint32_t color = 0;

  friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

enum class TextAlign { kLeft, kCenter, kRight };

/// One line of text: wrapping, shrinking and cutting are done. It is aligned within `x` and `x + width`.
struct TextItem {
  std::string text;
  double x = 0;
  double y = 0;  // top of the line
  double width = 0;
  double height = 0;
  double baseline = 0;
  std::uint32_t style = 0;  // into Printout::styles
  TextAlign align = TextAlign::kLeft;
};

struct LineItem {
  double x1 = 0;
  double y1 = 0;
  double x2 = 0;
  double y2 = 0;
  double width = 0.2;
};

struct BoxItem {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  double pen = 0.2;  // width of its frame, 0 for none
  bool filled = false;
  std::uint32_t fill = 0;
  double radius = 0;
};

/// A bar code on the page, in whole dots of the printer that it was made for. The line for human readers is a text item
/// of its own.
struct BarcodeItem {
  std::string kind;
  std::string value;
  PlacedBarcode symbol;
};

/// Drawn in this order; what stands later in a list covers what stands before it.
struct Page {
  std::vector<BoxItem> boxes;
  std::vector<LineItem> lines;
  std::vector<BarcodeItem> barcodes;
  std::vector<TextItem> texts;
};

/// The rows that a table of the report shows, as values, for whoever wants to work on with them; of bands and labels
/// that are drawn row by row, all fields of these rows.
struct DataTable {
  struct Column {
    std::string caption;
    std::string format;  // of its numbers ("0.000"); empty for as they are
  };
  std::string title;  // empty when the layout gives none
  std::vector<Column> columns;
  std::vector<std::vector<host::Value>> rows;
};

enum class PrintoutForm { kReport, kLabels, kText };

struct Printout {
  std::string report;
  std::string title;
  PrintoutForm form = PrintoutForm::kReport;
  double width = 210;  // of every page, as it lies before the reader
  double height = 297;
  int dpi = 0;  // that labels are made for; 0 for reports
  std::vector<TextStyle> styles;
  std::vector<Page> pages;  // at least one, except of form kText and of labels without rows
  std::string bytes;        // of form kText, in the encoding that the layout names
  std::vector<DataTable> tables;
};

/// How long a layout may keep the program busy in one go.
inline constexpr std::chrono::milliseconds kLayoutTimeLimit{10'000};

/// Finds the layout (the installation's own before the program's), runs it over the datasets of `request.owner` and
/// places everything on pages. The program must have a QGuiApplication. Throws host::InputError in one sentence that
/// names file and line: no such layout, a mistake in it, more than `limit` without an end, more output than paper is
/// for. The datasets' cursors stay where they are.
Printout MakePrintout(const PrintRequest& request, std::chrono::milliseconds limit = kLayoutTimeLimit);

/// The paper: size and orientation, no margins, drawn on from corner to corner.
QPageLayout PaperOf(const Printout& printout);

/// Draws a page (from 0) with the paper's corner at the painter's origin, at the resolution of the painter's device:
/// millimetres come out exact. `dpi` other than 0 is used instead of the device's own resolution, for a view that is
/// zoomed. The painter's state is as before afterwards. Throws std::out_of_range when there is no such page.
void PaintPage(QPainter& painter, const Printout& printout, std::size_t page, double dpi = 0);

/// Sets the device's paper and draws the pages `from` to `to` (from 0, both included) on it, each on a page of its own;
/// pages that do not exist are left out. Throws host::InputError when the device cannot be drawn on.
void PaintPages(QPagedPaintDevice& device, const Printout& printout, std::size_t from, std::size_t to);

/// Writes all pages with the printout's title, searchable text and the fonts embedded. Throws host::InputError when
/// the file cannot be written, and for form kText.
void WritePdf(const Printout& printout, const std::string& path);

}  // namespace app::printing
