#include "app/desktop/look_style.h"

#include <QStyleFactory>
#include <QStyleOptionFrame>

namespace app::desktop {
namespace {

constexpr int kInputPadding = 3;  // in addition to what the input keeps by itself
constexpr int kCellPadding = 4;   // a cell's text stands one pixel further in

}  // namespace

LookStyle::LookStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* more) const {
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  return QProxyStyle::styleHint(hint, option, widget, more);
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  if (metric == PM_FocusFrameHMargin) return kCellPadding;
  return QProxyStyle::pixelMetric(metric, option, widget);
}

QRect LookStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
  const QRect rect = QProxyStyle::subElementRect(element, option, widget);
  if (element == SE_LineEditContents) return rect.adjusted(kInputPadding, 0, -kInputPadding, 0);
  if (element == SE_HeaderLabel) {
    const int missing = kCellPadding + 1 - QProxyStyle::pixelMetric(PM_HeaderMargin, option, widget);
    return rect.adjusted(missing, 0, -missing, 0);
  }
  return rect;
}

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
  const QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
  return type == CT_LineEdit ? result + QSize(2 * kInputPadding, 0) : result;
}

}  // namespace app::desktop
