// Fusion with a little more air around texts.
#pragma once

#include <QProxyStyle>

namespace app::desktop {

/// Texts keep some pixels away from the frames of inputs, from the lines between cells and between captions of columns;
/// a caption stands exactly above the texts of its column. A line of text that its widget has no room for ends with
/// "…". On a dark ground inputs have an outline that can be seen.
class LookStyle : public QProxyStyle {
 public:
  LookStyle();

  /// No pictures on the buttons of a box: the word says it.
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* more) const override;
  /// The button that closes a tab is a quiet cross, on a ground of its own under the pointer.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                    const QString& text, QPalette::ColorRole role) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
};

}  // namespace app::desktop
