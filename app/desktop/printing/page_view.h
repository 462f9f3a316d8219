// The pages of a printout, one below the other, as they will be on paper.
#pragma once

#include <QAbstractScrollArea>
#include <cstddef>

#include "app/printing/page/printout.h"

namespace app::desktop {

/// Only what is in sight is drawn, so that a thousand pages are shown as fast as one. Page keys turn pages, Home and
/// End go to the first and the last, "+" and "-" and the wheel with Ctrl zoom.
class PageView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  enum class Fit { kNone, kWidth, kPage };

  /// `printout` outlives the view and has pages.
  explicit PageView(const printing::Printout& printout, QWidget* parent = nullptr);

  /// 1 is the size on paper, as far as the display tells its own.
  double Zoom() const { return zoom_; }
  void SetZoom(double zoom);
  /// The next of the usual sizes in that direction.
  void ZoomStep(int direction);
  Fit GetFit() const { return fit_; }
  /// Zooms now and whenever the view is resized.
  void SetFit(Fit fit);

  int PageCount() const { return static_cast<int>(printout_.pages.size()); }
  /// From 0: the page that most of the view shows.
  int CurrentPage() const { return current_; }
  void GoTo(int page);

 signals:
  void PageChanged(int page);
  void ZoomChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;

 private:
  double Dpi() const;
  QSize PageSize() const;         // pixels of this view
  int Stride() const;             // from a page's top to the next one's
  QRect PlaceOf(int page) const;  // in the viewport
  void LayOut();
  void ApplyFit();
  void FindCurrent();
  void ZoomTo(double zoom);

  const printing::Printout& printout_;
  double zoom_ = 1;
  Fit fit_ = Fit::kWidth;
  int current_ = 0;
};

}  // namespace app::desktop
