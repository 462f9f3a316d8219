#include "app/desktop/look_style.h"

#include <QPainter>
#include <QPen>
#include <QStyleFactory>
#include <QStyleOptionFrame>

namespace app::desktop {
namespace {

constexpr int kInputPadding = 3;  // in addition to what the input keeps by itself
constexpr int kCellPadding = 4;   // a cell's text stands one pixel further in

// The cross that closes a tab.
constexpr double kCrossInset = 0.32;  // of its side
constexpr double kCrossWidth = 1.3;
constexpr double kCrossRound = 3;

}  // namespace

LookStyle::LookStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* more) const {
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  return QProxyStyle::styleHint(hint, option, widget, more);
}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  if (element != PE_IndicatorTabClose) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  const QRectF ground(option->rect);
  if ((option->state & (State_MouseOver | State_Raised)) == (State_MouseOver | State_Raised)) {
    painter->setPen(Qt::NoPen);
    painter->setBrush(option->palette.color(QPalette::Mid));
    painter->drawRoundedRect(ground, kCrossRound, kCrossRound);
  }
  const double inset = ground.width() * kCrossInset;
  const QRectF cross = ground.adjusted(inset, inset, -inset, -inset);
  painter->setPen(QPen(option->palette.color(QPalette::WindowText), kCrossWidth, Qt::SolidLine, Qt::RoundCap));
  painter->drawLine(cross.topLeft(), cross.bottomRight());
  painter->drawLine(cross.topRight(), cross.bottomLeft());
  painter->restore();
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  if (metric == PM_FocusFrameHMargin) return kCellPadding;
  return QProxyStyle::pixelMetric(metric, option, widget);
}

QRect LookStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
  const QRect rect = QProxyStyle::subElementRect(element, option, widget);
  if (element == SE_LineEditContents) return rect.adjusted(kInputPadding, 0, -kInputPadding, 0);
  return rect;
}

// The margin that a style asks for stands above and below a caption too, where nothing is missing.
void LookStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
  if (element != CE_HeaderLabel || header == nullptr) {
    QProxyStyle::drawControl(element, option, painter, widget);
    return;
  }
  QStyleOptionHeader label = *header;
  const int missing = kCellPadding + 1 - QProxyStyle::pixelMetric(PM_HeaderMargin, option, widget);
  label.rect.adjust(missing, 0, -missing, 0);
  QProxyStyle::drawControl(element, &label, painter, widget);
}

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
  const QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
  return type == CT_LineEdit ? result + QSize(2 * kInputPadding, 0) : result;
}

}  // namespace app::desktop
