// How a cell of a grid looks.
#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

namespace app::desktop {

class CellDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit CellDelegate(QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  /// Where the box of a check-box cell is, inside the cell's rectangle.
  static QRect BoxOf(const QWidget* widget, const QRect& cell);
  /// Where the button that opens the lookup is.
  static QRect LookupButtonOf(const QRect& cell);

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  QIcon lookup_;
};

}  // namespace app::desktop
