#include "app/desktop/grid/grid_header.h"

#include <QHelpEvent>
#include <QStyle>
#include <QStyleOptionHeader>
#include <QToolTip>

namespace app::desktop {

GridHeader::GridHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
  setSectionsClickable(true);
  setSectionsMovable(true);
  setHighlightSections(false);
  setSortIndicatorClearable(true);
  setSortIndicator(-1, Qt::AscendingOrder);
  setMinimumSectionSize(fontMetrics().averageCharWidth() * 4);
  setTextElideMode(Qt::ElideNone);
}

QString GridHeader::CaptionOf(int section) const {
  return model() == nullptr ? QString() : model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
}

int GridHeader::TextWidth(int section) const {
  const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;  // as in the cells
  const int mark =
      section == sortIndicatorSection() ? style()->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, this) + margin : 0;
  return sectionSize(section) - 2 * margin - mark;
}

// Each line is cut by itself; the style would make one line of them.
void GridHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int section) const {
  QHeaderView::initStyleOptionForIndex(option, section);
  QStringList lines = CaptionOf(section).split(u'\n');
  for (QString& line : lines) line = fontMetrics().elidedText(line, Qt::ElideRight, TextWidth(section));
  option->text = lines.join(u'\n');
}

bool GridHeader::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QHeaderView::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int section = logicalIndexAt(help->pos());
  const QString caption = CaptionOf(section);
  bool cut = false;
  for (const QString& line : caption.split(u'\n')) {
    cut = cut || fontMetrics().horizontalAdvance(line) > TextWidth(section);
  }
  if (section >= 0 && cut) {
    QToolTip::showText(help->globalPos(), caption, this);
  } else {
    QToolTip::hideText();
  }
  return true;
}

}  // namespace app::desktop
