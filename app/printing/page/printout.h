// What a report or a label will look like on paper, as values: first everything is placed, then it is drawn.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/printing/page/barcode.h"
#include "host/value.h"

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

}  // namespace app::printing
