#include "app/desktop/grid/totals_row.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

namespace app::desktop {

TotalsRow::TotalsRow(const QTableView& table, const GridModel& model, QWidget* parent)
    : QWidget(parent), table_(table), model_(model) {
  setObjectName(QStringLiteral("grid_totals"));
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  const auto repaint = [this] { update(); };
  const QHeaderView* header = table.horizontalHeader();
  connect(header, &QHeaderView::sectionResized, this, repaint);
  connect(header, &QHeaderView::sectionMoved, this, repaint);
  connect(header, &QHeaderView::geometriesChanged, this, repaint);
  connect(table.horizontalScrollBar(), &QScrollBar::valueChanged, this, repaint);
}

bool TotalsRow::HasTotals() const {
  for (int column = 0; column < model_.columnCount(); ++column) {
    if (model_.ColumnAt(column).total) return true;
  }
  return false;
}

void TotalsRow::Refresh() {
  sums_.clear();
  for (int column = 0; column < model_.columnCount(); ++column) {
    if (model_.ColumnAt(column).total) sums_.insert(column, model_.Sum(column));
  }
  heading_ = QStringLiteral("Soma   ") + RowsText(model_.rowCount(), model_.AllRows());
  update();
}

QSize TotalsRow::sizeHint() const { return {100, fontMetrics().height() + 8}; }

void TotalsRow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Window));
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(palette().color(QPalette::WindowText));

  const QHeaderView* header = table_.horizontalHeader();
  const int left = table_.viewport()->mapTo(table_.parentWidget(), QPoint()).x() - x();
  const QRect shown(left, 0, table_.viewport()->width(), height());
  painter.setClipRect(shown);
  int first = shown.right();
  for (auto sum = sums_.cbegin(); sum != sums_.cend(); ++sum) {
    const int width = header->sectionSize(sum.key());
    const QRect cell(left + header->sectionViewportPosition(sum.key()), 0, width, height());
    const QRect text = cell.adjusted(2, 0, -4, 0);
    // A sum wider than its column reaches over the one before it rather than being cut.
    const int needed = painter.fontMetrics().horizontalAdvance(sum.value());
    const QRect room = text.adjusted(std::min(0, text.width() - needed), 0, 0, 0);
    painter.drawText(room, Qt::AlignRight | Qt::AlignVCenter, sum.value());
    if (room.right() > shown.left()) first = std::min(first, room.left());
  }
  const QRect room(shown.left() + 4, 0, first - shown.left() - 12, height());
  const QString heading = painter.fontMetrics().elidedText(heading_, Qt::ElideRight, room.width());
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, heading);
}

QString RowsText(int shown, int all) {
  const QString counted = QString::number(all) + (all == 1 ? QStringLiteral(" linha") : QStringLiteral(" linhas"));
  return shown == all ? counted : QStringLiteral("%1 de %2").arg(QString::number(shown), counted);
}

}  // namespace app::desktop
