#include "app/desktop/look/look_style.h"

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

constexpr QStyle::State kUnderPointer = QStyle::State_MouseOver | QStyle::State_Raised;

constexpr int kDark = 128;  // of a colour's lightness
constexpr double kRounding = 2.0;

// Between the ground and the text on it.
QColor Outline(const QPalette& palette) {
  const QColor ground = palette.color(QPalette::Window);
  const QColor text = palette.color(QPalette::WindowText);
  const auto mix = [](int one, int other) { return (3 * one + other) / 4; };
  return {mix(ground.red(), text.red()), mix(ground.green(), text.green()), mix(ground.blue(), text.blue())};
}

void DrawCross(const QStyleOption& option, QPainter& painter) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF ground(option.rect);
  if ((option.state & kUnderPointer) == kUnderPointer) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(option.palette.color(QPalette::Mid));
    painter.drawRoundedRect(ground, kCrossRound, kCrossRound);
  }
  const double inset = ground.width() * kCrossInset;
  const QRectF cross = ground.adjusted(inset, inset, -inset, -inset);
  painter.setPen(QPen(option.palette.color(QPalette::WindowText), kCrossWidth, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(cross.topLeft(), cross.bottomRight());
  painter.drawLine(cross.topRight(), cross.bottomLeft());
  painter.restore();
}

// Fusion draws outlines darker than the window, which a dark one swallows.
void DrawOutline(const QStyleOption& option, QPainter& painter, bool round) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(Outline(option.palette));
  const QRectF rect = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
  if (round) {
    painter.drawEllipse(rect);
  } else {
    painter.drawRoundedRect(rect, kRounding, kRounding);
  }
  painter.restore();
}

}  // namespace

LookStyle::LookStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* more) const {
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  return QProxyStyle::styleHint(hint, option, widget, more);
}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  if (element == PE_IndicatorTabClose) {
    DrawCross(*option, *painter);
    return;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool round = element == PE_IndicatorRadioButton;
  const bool outlined = round || element == PE_IndicatorCheckBox || element == PE_FrameLineEdit;
  const bool dark = option->palette.color(QPalette::Window).lightness() < kDark;
  if (outlined && dark && !option->state.testFlag(State_HasFocus)) DrawOutline(*option, *painter, round);
}

void LookStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                             const QString& text, QPalette::ColorRole role) const {
  const bool one_line = (flags & (Qt::TextWordWrap | Qt::TextWrapAnywhere)) == 0 && !text.contains(u'\n');
  const QString shown =
      one_line ? painter->fontMetrics().elidedText(text, Qt::ElideRight, rect.width(), flags & Qt::TextShowMnemonic)
               : text;
  QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, shown, role);
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
