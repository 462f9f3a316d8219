#include "app/printing/page/page_painter.h"

#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPainter>
#include <QPen>
#include <cmath>
#include <optional>
#include <vector>

#include "app/printing/page/fonts.h"

namespace app::printing {
namespace {

QColor ColorOf(std::uint32_t rgb) { return QColor(static_cast<QRgb>(0xFF000000u | rgb)); }

class PagePainter {
 public:
  PagePainter(QPainter& painter, const Printout& printout, double dpi)
      : painter_(painter),
        printout_(printout),
        device_dpi_(painter.device()->logicalDpiY()),
        dots_((dpi > 0 ? dpi : device_dpi_) / kMillimetresPerInch),
        text_scale_(dots_ * kMillimetresPerInch / kTextDpi),
        fonts_(printout.styles.size()) {}

  void Paint(const Page& page) {
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing, false);
    for (const BoxItem& box : page.boxes) PaintBox(box);
    for (const LineItem& line : page.lines) PaintLine(line);
    for (const BarcodeItem& barcode : page.barcodes) PaintBarcode(barcode);
    painter_.setRenderHint(QPainter::Antialiasing, true);
    painter_.setRenderHint(QPainter::TextAntialiasing, true);
    painter_.scale(text_scale_, text_scale_);
    for (const TextItem& text : page.texts) PaintText(text);
    painter_.restore();
  }

 private:
  struct Face {
    QFont font;
    QFontMetricsF metrics;
    QPen pen;
  };

  // Edges fall on dots, so that neighbours neither overlap nor leave a gap.
  QRectF Dots(double x, double y, double width, double height) const {
    const double left = std::round(x * dots_);
    const double top = std::round(y * dots_);
    return {left, top, std::round((x + width) * dots_) - left, std::round((y + height) * dots_) - top};
  }

  double PenWidth(double millimetres) const { return std::max(std::round(millimetres * dots_), 1.0); }

  void PaintBox(const BoxItem& box) {
    const QRectF place = Dots(box.x, box.y, box.width, box.height);
    if (box.radius > 0) painter_.setRenderHint(QPainter::Antialiasing, true);
    if (box.pen > 0) {
      QPen pen(Qt::black, PenWidth(box.pen));
      pen.setJoinStyle(Qt::MiterJoin);
      painter_.setPen(pen);
    } else {
      painter_.setPen(Qt::NoPen);
    }
    painter_.setBrush(box.filled ? QBrush(ColorOf(box.fill)) : QBrush(Qt::NoBrush));
    if (box.radius > 0) {
      painter_.drawRoundedRect(place, box.radius * dots_, box.radius * dots_);
      painter_.setRenderHint(QPainter::Antialiasing, false);
    } else if (box.pen > 0) {
      painter_.drawRect(place);
    } else {
      painter_.fillRect(place, painter_.brush());
    }
  }

  // Straight lines are filled, which makes them equally wide wherever they fall.
  void PaintLine(const LineItem& line) {
    const double width = PenWidth(line.width);
    const double x1 = line.x1 * dots_;
    const double y1 = line.y1 * dots_;
    const double x2 = line.x2 * dots_;
    const double y2 = line.y2 * dots_;
    if (line.y1 == line.y2) {
      const double left = std::round(std::min(x1, x2));
      painter_.fillRect(QRectF(left, std::round(y1 - width / 2), std::round(std::max(x1, x2)) - left, width),
                        Qt::black);
    } else if (line.x1 == line.x2) {
      const double top = std::round(std::min(y1, y2));
      painter_.fillRect(QRectF(std::round(x1 - width / 2), top, width, std::round(std::max(y1, y2)) - top), Qt::black);
    } else {
      painter_.setRenderHint(QPainter::Antialiasing, true);
      painter_.setPen(QPen(Qt::black, width));
      painter_.drawLine(QPointF(x1, y1), QPointF(x2, y2));
      painter_.setRenderHint(QPainter::Antialiasing, false);
    }
  }

  void PaintBarcode(const BarcodeItem& barcode) {
    const double dot = barcode.symbol.dot;
    for (const auto& bar : barcode.symbol.bars) {
      painter_.fillRect(Dots(bar.x * dot, bar.y * dot, bar.width * dot, bar.height * dot), Qt::black);
    }
  }

  const Face& FaceOf(std::uint32_t style) {
    std::optional<Face>& face = fonts_[style];
    if (!face) {
      const QFont font = FontOf(printout_.styles[style], device_dpi_);
      face.emplace(Face{font, QFontMetricsF(font, painter_.device()), QPen(ColorOf(printout_.styles[style].color))});
    }
    return *face;
  }

  void PaintText(const TextItem& item) {
    const Face& face = FaceOf(item.style);
    if (current_ != item.style) {
      painter_.setFont(face.font);
      painter_.setPen(face.pen);
      current_ = item.style;
    }
    constexpr double kDots = kTextDpi / kMillimetresPerInch;
    const QString text = QString::fromStdString(item.text);
    double x = item.x * kDots;
    if (item.align != TextAlign::kLeft) {
      const double free = item.width * kDots - face.metrics.horizontalAdvance(text);
      x += item.align == TextAlign::kCenter ? free / 2 : free;
    }
    painter_.drawText(QPointF(x, item.baseline * kDots), text);
  }

  QPainter& painter_;
  const Printout& printout_;
  double device_dpi_;
  double dots_;        // of the target per millimetre
  double text_scale_;  // dots of the target per dot of text
  std::vector<std::optional<Face>> fonts_;
  std::optional<std::uint32_t> current_;
};

}  // namespace

void PaintPage(QPainter& painter, const Printout& printout, std::size_t page, double dpi) {
  PagePainter(painter, printout, dpi).Paint(printout.pages.at(page));
}

}  // namespace app::printing
