#include "app/desktop/grid/cell_delegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

#include "app/desktop/grid/grid_model.h"

namespace app::desktop {
namespace {

QColor Mixed(const QColor& base, const QColor& tint, double part) {
  const auto mix = [part](int of_base, int of_tint) { return static_cast<int>(of_base + (of_tint - of_base) * part); };
  return {mix(base.red(), tint.red()), mix(base.green(), tint.green()), mix(base.blue(), tint.blue())};
}

bool IsCursor(const QStyleOptionViewItem& option, const QModelIndex& index) {
  const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
  return view != nullptr && view->currentIndex() == index;
}

}  // namespace

CellDelegate::CellDelegate(QObject* parent)
    : QStyledItemDelegate(parent), lookup_(QStringLiteral(":/icons/lookup.svg")) {}

// What nobody types into recedes towards the window's colour, the row under the cursor stands out a little: mixed from
// the palette, so that it holds in light and dark.
void CellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  option->features &= ~QStyleOptionViewItem::HasCheckIndicator;
  const QPalette& palette = option->palette;
  const bool greyed = option->widget != nullptr && option->widget->property("greyed").toBool();
  const bool alternate = option->features.testFlag(QStyleOptionViewItem::Alternate);
  QColor ground = palette.color(QPalette::Active, alternate ? QPalette::AlternateBase : QPalette::Base);
  const QColor window = palette.color(QPalette::Active, QPalette::Window);
  if (greyed) {
    ground = window;
    option->palette.setColor(QPalette::Text, Mixed(palette.color(QPalette::Active, QPalette::Text), window, 0.45));
  } else if (index.data(GridModel::kReadOnlyRole).toBool()) {
    ground = Mixed(ground, palette.color(QPalette::Active, QPalette::Mid), 0.16);
  }
  if (index.data(GridModel::kCursorRowRole).toBool()) {
    ground = Mixed(ground, palette.color(QPalette::Active, QPalette::Highlight), 0.16);
  }
  option->backgroundBrush = ground;
}

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  const QVariant checked = index.data(Qt::CheckStateRole);
  if (checked.isValid()) {
    QStyleOptionButton box;
    box.initFrom(option.widget);
    box.rect = BoxOf(option.widget, option.rect);
    box.state = QStyle::State_Raised | (checked.toInt() == Qt::Checked ? QStyle::State_On : QStyle::State_Off);
    if (index.flags().testFlag(Qt::ItemIsUserCheckable)) box.state |= QStyle::State_Enabled;
    const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, painter, option.widget);
    // The style's own outline cannot be seen on a dark ground.
    const QPalette& palette = option.palette;
    painter->setPen(
        Mixed(palette.color(QPalette::Active, QPalette::Base), palette.color(QPalette::Active, QPalette::Text), 0.45));
    painter->drawRect(box.rect.adjusted(0, 0, -1, -1));
    return;
  }
  if (!IsCursor(option, index) || !index.data(GridModel::kLookupRole).toBool()) return;
  const QRect button = LookupButtonOf(option.rect);
  painter->fillRect(button, option.palette.color(QPalette::Active, QPalette::Button));
  const int margin = button.height() / 6;
  lookup_.paint(painter, button.adjusted(margin, margin, -margin, -margin));
}

QSize CellDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QSize size = QStyledItemDelegate::sizeHint(option, index);
  const QVariant checked = index.data(Qt::CheckStateRole);
  if (checked.isValid()) size = size.expandedTo(BoxOf(option.widget, option.rect).size() + QSize(8, 0));
  // Room for the grid line and for the button, which covers the text only while the cursor is here.
  return size + QSize(6, 0);
}

QRect CellDelegate::BoxOf(const QWidget* widget, const QRect& cell) {
  const QStyle* style = widget != nullptr ? widget->style() : QApplication::style();
  const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, widget),
                   style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, widget));
  return QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, cell);
}

QRect CellDelegate::LookupButtonOf(const QRect& cell) {
  const int side = cell.height() - 2;
  return {cell.right() - side, cell.top() + 1, side, side};
}

}  // namespace app::desktop
