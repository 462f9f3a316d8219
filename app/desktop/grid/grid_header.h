// The headings of a grid: captions of one or two lines, sorting by click.
#pragma once

#include <QHeaderView>

namespace app::desktop {

class GridHeader : public QHeaderView {
  Q_OBJECT

 public:
  explicit GridHeader(QWidget* parent = nullptr);

 protected:
  void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override;
  bool viewportEvent(QEvent* event) override;

 private:
  QString CaptionOf(int section) const;
  /// Room for the caption's lines; the sort mark takes its own.
  int TextWidth(int section) const;
};

}  // namespace app::desktop
