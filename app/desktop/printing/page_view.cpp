#include "app/desktop/printing/page_view.h"

#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>

#include "app/printing/page/page_painter.h"

namespace app::desktop {
namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr int kGap = 14;  // around a page
constexpr double kLeastZoom = 0.1;
constexpr double kMostZoom = 6;
constexpr std::array kSteps = {0.1, 0.25, 0.5, 0.75, 1.0, 1.25, 1.5, 2.0, 3.0, 4.0, 6.0};

}  // namespace

PageView::PageView(const printing::Printout& printout, QWidget* parent)
    : QAbstractScrollArea(parent), printout_(printout) {
  setObjectName(QStringLiteral("PageView"));
  setFocusPolicy(Qt::StrongFocus);
  setBackgroundRole(QPalette::Dark);
  viewport()->setBackgroundRole(QPalette::NoRole);
  // The bars come and go with the zoom; a fit that changed the room it fits into would not come to rest.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

double PageView::Dpi() const { return logicalDpiX() * zoom_; }

QSize PageView::PageSize() const {
  const auto pixels = [this](double millimetres) {
    return std::max(1, static_cast<int>(std::lround(millimetres / kMillimetresPerInch * Dpi())));
  };
  return {pixels(printout_.width), pixels(printout_.height)};
}

int PageView::Stride() const { return PageSize().height() + kGap; }

QRect PageView::PlaceOf(int page) const {
  const QSize size = PageSize();
  const int spare = viewport()->width() - size.width();
  const int x = spare > 2 * kGap ? spare / 2 : kGap - horizontalScrollBar()->value();
  // A single page that leaves room stands in the middle.
  const int rest = viewport()->height() - PageCount() * Stride() - kGap;
  const int top = rest > 0 ? rest / 2 : 0;
  return {QPoint(x, top + kGap + page * Stride() - verticalScrollBar()->value()), size};
}

void PageView::LayOut() {
  const QSize size = PageSize();
  horizontalScrollBar()->setRange(0, std::max(0, size.width() + 2 * kGap - viewport()->width()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setSingleStep(kGap);
  verticalScrollBar()->setRange(0, std::max(0, PageCount() * Stride() + kGap - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(3 * kGap);
  viewport()->update();
}

// The place that was in the middle stays there.
void PageView::ZoomTo(double zoom) {
  zoom = std::clamp(zoom, kLeastZoom, kMostZoom);
  if (zoom == zoom_) {
    LayOut();
    return;
  }
  const double middle = (verticalScrollBar()->value() + viewport()->height() / 2.0) / Stride();
  const double across = (horizontalScrollBar()->value() + viewport()->width() / 2.0) / PageSize().width();
  zoom_ = zoom;
  LayOut();
  verticalScrollBar()->setValue(static_cast<int>(std::lround(middle * Stride() - viewport()->height() / 2.0)));
  horizontalScrollBar()->setValue(
      static_cast<int>(std::lround(across * PageSize().width() - viewport()->width() / 2.0)));
  FindCurrent();
  emit ZoomChanged();
}

void PageView::SetZoom(double zoom) {
  fit_ = Fit::kNone;
  ZoomTo(zoom);
  emit ZoomChanged();
}

void PageView::ZoomStep(int direction) {
  constexpr double kNear = 0.01;
  double next = zoom_;
  if (direction > 0) {
    for (const double step : kSteps) {
      if (step > zoom_ + kNear) {
        next = step;
        break;
      }
    }
  } else {
    for (const double step : kSteps) {
      if (step < zoom_ - kNear) next = step;
    }
  }
  SetZoom(next);
}

void PageView::SetFit(Fit fit) {
  fit_ = fit;
  const int page = current_;
  ApplyFit();
  GoTo(page);
  emit ZoomChanged();
}

void PageView::ApplyFit() {
  const double per_inch = logicalDpiX() / kMillimetresPerInch;
  const double wide = (viewport()->width() - 2.0 * kGap) / (printout_.width * per_inch);
  const double high = (viewport()->height() - 2.0 * kGap) / (printout_.height * per_inch);
  if (fit_ == Fit::kWidth) ZoomTo(wide);
  if (fit_ == Fit::kPage) ZoomTo(std::min(wide, high));
  if (fit_ == Fit::kNone) LayOut();
}

void PageView::GoTo(int page) {
  page = std::clamp(page, 0, PageCount() - 1);
  verticalScrollBar()->setValue(page * Stride());
  // The last pages of all may not reach the top.
  if (page != current_) {
    current_ = page;
    emit PageChanged(page);
  }
}

void PageView::FindCurrent() {
  const int middle = verticalScrollBar()->value() + viewport()->height() / 2;
  const int page = std::clamp(middle / Stride(), 0, PageCount() - 1);
  if (page == current_) return;
  current_ = page;
  emit PageChanged(page);
}

void PageView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), palette().color(QPalette::Window).darker(118));
  const int first = std::max(0, (verticalScrollBar()->value() + event->rect().top()) / Stride() - 1);
  for (int page = first; page < PageCount(); ++page) {
    const QRect place = PlaceOf(page);
    if (place.top() > event->rect().bottom()) break;
    if (!place.adjusted(-1, -1, 3, 3).intersects(event->rect())) continue;
    painter.fillRect(place.translated(2, 2), QColor(0, 0, 0, 60));  // its shadow
    painter.fillRect(place, Qt::white);                             // paper is white in the dark, too
    painter.save();
    painter.setClipRect(place.intersected(event->rect()));
    painter.translate(place.topLeft());
    printing::PaintPage(painter, printout_, static_cast<std::size_t>(page), Dpi());
    painter.restore();
  }
}

void PageView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  const int page = current_;
  ApplyFit();
  if (fit_ == Fit::kPage) GoTo(page);
}

void PageView::scrollContentsBy(int /*dx*/, int /*dy*/) {
  viewport()->update();
  FindCurrent();
}

void PageView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_PageDown:
      return GoTo(current_ + 1);
    case Qt::Key_PageUp:
      return GoTo(current_ - 1);
    case Qt::Key_Home:
      return GoTo(0);
    case Qt::Key_End:
      return GoTo(PageCount() - 1);
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      return ZoomStep(1);
    case Qt::Key_Minus:
      return ZoomStep(-1);
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

void PageView::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) {
    QAbstractScrollArea::wheelEvent(event);
    return;
  }
  if (event->angleDelta().y() != 0) ZoomStep(event->angleDelta().y() > 0 ? 1 : -1);
  event->accept();
}

}  // namespace app::desktop
