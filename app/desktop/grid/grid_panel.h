// A grid of a screen as people expect a list: the table itself, a filter line above it, totals under it.
#pragma once

#include <QResizeEvent>
#include <QSize>
#include <QString>
#include <QWidget>
#include <memory>

#include "app/desktop/basics/station.h"
#include "host/host.h"
#include "host/kit/grid.h"

namespace app::desktop {

/// Stands in a form under the grid's component name (promoted from QWidget); Bind gives it its grid. Every change a
/// person makes in it goes through the Station; sorting, the filter line and the order of columns are this view's own
/// and change nothing in the dataset.
class GridPanel : public QWidget {
  Q_OBJECT

 public:
  explicit GridPanel(QWidget* parent = nullptr);
  ~GridPanel() override;

  /// `settings` keeps widths, order and sorting of the columns per user; it outlives the panel, as do the others.
  void Bind(Station& station, host::Grid& grid, host::UserSettings& settings);
  host::Grid* GetGrid() const;
  /// Before Bind: no filter line by itself, however long the list; the screen has a search of its own. Ctrl+F still
  /// brings it.
  void SetFilterOnRequest() { filter_on_request_ = true; }
  /// The cell under the cursor gets the keyboard.
  void TakeFocus();
  /// The table holds the keyboard, or one of its cell editors does.
  bool HasKeyboard() const;
  QSize minimumSizeHint() const override;
  /// The screen goes now, perhaps from within an event of this panel: from here on it touches neither grid nor dataset
  /// again. Without effect before Bind.
  void LetGo();

 signals:
  /// The person turned to the grid with the mouse or a key; whoever binds the screen enters it on the desk. Emitted
  /// before anything else is done.
  void KeyboardWanted();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  class Parts;
  bool filter_on_request_ = false;
  std::unique_ptr<Parts> parts_;
};

}  // namespace app::desktop
