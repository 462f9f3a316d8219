#include "app/desktop/grid/grid_panel.h"

#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QPointer>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include "app/desktop/grid/column_memory.h"
#include "app/desktop/grid/column_widths.h"
#include "app/desktop/grid/filter_line.h"
#include "app/desktop/grid/grid_output.h"
#include "app/desktop/grid/totals_row.h"
#include "host/kit/screen.h"

namespace app::desktop {
namespace {

constexpr int kLongList = 20;  // rows from which a filter line helps
constexpr int kSavePauseMs = 400;
constexpr int kFewRows = 2;
constexpr int kWantedRows = 4;  // that a form leaves room for

}  // namespace

class GridPanel::Parts : public QObject {
 public:
  Parts(GridPanel& panel, Station& station, host::Grid& grid, host::UserSettings& settings);
  ~Parts() override;

  GridModel& Model() { return model_; }
  GridView& View() { return view_; }
  FilterLine& Filter() { return filter_; }
  void ShowTotals();
  int WantedHeight() const { return HeightOf(kWantedRows) + totals_.sizeHint().height(); }
  /// The grid goes now; the widgets stay, empty.
  void Release();

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Watch(host::Handler& handler);
  void Connect(Station& station);
  void ConnectFilter();
  void MarkDirty();
  void TakeUp();
  void Shown();
  int HeightOf(int rows) const;
  void ShowFilter();
  void FilterDone();

  void ApplyLayout();
  void SpreadColumns();
  void ResetLayout();
  void SaveLayout();
  void ColumnsTouched();
  void SortChanged(int column, Qt::SortOrder order);

  void ShowMenu(const QPoint& global);
  void AddPopup(QMenu& menu);

  GridPanel& panel_;
  Station& station_;
  host::Grid& grid_;
  GridModel model_;
  FilterLine filter_;
  GridView view_;
  TotalsRow totals_;
  GridOutput output_;
  ColumnMemory memory_;
  QTimer dirty_;
  QTimer save_;
  bool filter_asked_ = false;  // by Ctrl+F, in a short list
  bool arranging_ = false;     // the program moves the columns, not the person
  bool personal_ = false;      // the person arranged the columns
};

// The parts stand in the panel's layout, which takes them for its children; they are members and go first.
GridPanel::Parts::Parts(GridPanel& panel, Station& station, host::Grid& grid, host::UserSettings& settings)
    : panel_(panel),
      station_(station),
      grid_(grid),
      model_(grid),
      filter_(&panel),
      view_(station, model_, &panel),
      totals_(view_, model_, &panel),
      output_(model_, view_, settings),
      memory_(settings, grid) {
  auto* column = new QVBoxLayout(&panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(&filter_);
  column->addWidget(&view_, 1);
  column->addWidget(&totals_);
  view_.setMinimumHeight(HeightOf(1));
  dirty_.setSingleShot(true);
  dirty_.setInterval(0);
  save_.setSingleShot(true);
  save_.setInterval(kSavePauseMs);
  Watch(grid.OnViewChange);
  Watch(grid.GetDataset().OnViewChange);
  Connect(station);
  ConnectFilter();
  view_.viewport()->installEventFilter(this);
  ApplyLayout();
  Shown();
}

GridPanel::Parts::~Parts() {
  // The viewport still gets events while the view around it is half gone.
  view_.viewport()->removeEventFilter(this);
  Release();
  delete panel_.layout();
}

void GridPanel::Parts::Release() {
  if (model_.Released()) return;
  if (save_.isActive()) SaveLayout();
  dirty_.stop();
  station_.GetTyping().End(&view_);
  station_.disconnect(this);
  model_.Release();
}

// Others may show the same component or the same rows; each hears of a change.
void GridPanel::Parts::Watch(host::Handler& handler) {
  handler = [parts = QPointer<Parts>(this), former = handler] {
    if (former) former();
    if (parts && !parts->model_.Released()) parts->MarkDirty();
  };
}

void GridPanel::Parts::Connect(Station& station) {
  connect(&station, &Station::Settled, this, &Parts::TakeUp);
  connect(&dirty_, &QTimer::timeout, this, &Parts::TakeUp);
  connect(&save_, &QTimer::timeout, this, &Parts::SaveLayout);
  connect(&model_, &GridModel::RowsChanged, this, &Parts::Shown);
  connect(&model_, &GridModel::ColumnsChanged, this, &Parts::ApplyLayout);
  connect(&view_, &GridView::KeyboardWanted, &panel_, &GridPanel::KeyboardWanted);
  connect(&view_, &GridView::CopyWanted, this, [this] { output_.Copy(); });
  connect(&view_, &GridView::PasteWanted, this, [this] { output_.PasteHere(); });
  connect(&view_, &GridView::MenuWanted, this, &Parts::ShowMenu);
  const QHeaderView* header = view_.horizontalHeader();
  connect(header, &QHeaderView::sectionResized, this, &Parts::ColumnsTouched);
  connect(header, &QHeaderView::sectionMoved, this, &Parts::ColumnsTouched);
  connect(header, &QHeaderView::sortIndicatorChanged, this, &Parts::SortChanged);
}

void GridPanel::Parts::ConnectFilter() {
  connect(&view_, &GridView::FilterWanted, this, &Parts::ShowFilter);
  connect(&filter_, &FilterLine::WordsChanged, &model_, &GridModel::SetFilter);
  connect(&filter_, &FilterLine::Entered, this, [this] {
    // Where the person comes from is left first; where that is refused the keyboard is called back there.
    if (station_.GetTyping().Settle()) view_.TurnTo();
  });
  connect(&filter_, &FilterLine::Done, this, &Parts::FilterDone);
  connect(&filter_, &FilterLine::GivenUp, this, [this] {
    filter_asked_ = false;
    view_.TakeFocus();
    Shown();
  });
}

// --- following the dataset -----------------------------------------------------------------------------------------

// A screen that loads 200 rows tells of each; they are read once, when the act has ended or the program waits.
void GridPanel::Parts::MarkDirty() {
  if (!dirty_.isActive()) dirty_.start();
}

void GridPanel::Parts::TakeUp() {
  if (!dirty_.isActive() && sender() == &station_) return;
  dirty_.stop();
  model_.Refresh();
}

void GridPanel::Parts::Shown() {
  const bool long_list = model_.AllRows() > kLongList && !panel_.filter_on_request_;
  const bool filter = filter_asked_ || long_list || !filter_.Words().isEmpty();
  filter_.setVisible(filter);
  filter_.ShowCount(RowsText(model_.rowCount(), model_.AllRows()));
  ShowTotals();
  if (totals_.HasTotals()) totals_.Refresh();
}

int GridPanel::Parts::HeightOf(int rows) const {
  return view_.horizontalHeader()->sizeHint().height() + rows * view_.verticalHeader()->defaultSectionSize();
}

// Where next to nothing of the rows would be left they come first.
void GridPanel::Parts::ShowTotals() {
  const int needed = HeightOf(kFewRows) + view_.horizontalScrollBar()->sizeHint().height();
  totals_.setVisible(totals_.HasTotals() && panel_.height() >= needed + totals_.sizeHint().height());
}

// --- the filter line -----------------------------------------------------------------------------------------------

void GridPanel::Parts::ShowFilter() {
  if (!station_.GetTyping().Settle()) return;
  filter_asked_ = true;
  Shown();
  filter_.TakeFocus();
}

// On to the first row found, unless the cursor's own row is among them.
void GridPanel::Parts::FilterDone() {
  const QPointer<Parts> alive(this);
  if (view_.Actor().Live() && !view_.Actor().Enter()) return;
  if (!alive || model_.Released()) return;
  view_.TakeFocus();
  if (model_.CursorRow() >= 0 || model_.rowCount() == 0) return;
  if (view_.Actor().Live()) {
    view_.Actor().ToRow(0);
  } else {
    view_.LookAt(0, std::max(0, grid_.SelectedColumn()));
  }
}

// --- columns -------------------------------------------------------------------------------------------------------

void GridPanel::Parts::ApplyLayout() {
  const auto kept = memory_.Read();
  personal_ = kept.has_value();
  arranging_ = true;
  GridHeader& header = view_.Header();
  if (kept) {
    for (int place = 0; place < static_cast<int>(kept->columns.size()); ++place) {
      const auto& column = kept->columns[static_cast<std::size_t>(place)];
      const int section = grid_.ColumnOf(column.field.toStdString());
      if (section < 0) continue;
      header.moveSection(header.visualIndex(section), place);
      header.resizeSection(section, std::max(column.width, header.minimumSectionSize()));
    }
  }
  const int sorted = kept && !kept->sorted_by.isEmpty() ? grid_.ColumnOf(kept->sorted_by.toStdString()) : -1;
  const bool descending = kept && kept->descending;
  header.setSortIndicator(sorted, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
  arranging_ = false;
  model_.SetOrder(sorted, descending);
  SpreadColumns();
}

// As long as the person has not arranged the columns they use the room that the window gives.
void GridPanel::Parts::SpreadColumns() {
  if (personal_) return;
  arranging_ = true;
  const std::vector<int> widths = NaturalWidths(model_, view_.fontMetrics(), view_.viewport()->width());
  for (std::size_t at = 0; at < widths.size(); ++at) view_.setColumnWidth(static_cast<int>(at), widths[at]);
  arranging_ = false;
}

void GridPanel::Parts::ResetLayout() {
  memory_.Forget();
  save_.stop();
  personal_ = false;
  arranging_ = true;
  GridHeader& header = view_.Header();
  for (int section = 0; section < header.count(); ++section) header.moveSection(header.visualIndex(section), section);
  arranging_ = false;
  SpreadColumns();
  if (model_.SortColumn() >= 0) SaveLayout();
}

void GridPanel::Parts::ColumnsTouched() {
  if (arranging_) return;
  personal_ = true;
  save_.start();
}

void GridPanel::Parts::SaveLayout() {
  save_.stop();
  ColumnLayout layout;
  for (const int section : view_.ShownColumns()) {
    layout.columns.push_back({QString::fromStdString(model_.ColumnAt(section).field), view_.columnWidth(section)});
  }
  if (model_.SortColumn() >= 0) layout.sorted_by = QString::fromStdString(model_.ColumnAt(model_.SortColumn()).field);
  layout.descending = model_.Descending();
  memory_.Write(layout);
}

void GridPanel::Parts::SortChanged(int column, Qt::SortOrder order) {
  if (arranging_) return;
  const QPointer<Parts> alive(this);
  const bool settled = station_.GetTyping().Settle();
  if (!alive || model_.Released()) return;
  if (settled) {
    model_.SetOrder(column, order == Qt::DescendingOrder);
    save_.start();
  } else {
    arranging_ = true;
    view_.Header().setSortIndicator(model_.SortColumn(),
                                    model_.Descending() ? Qt::DescendingOrder : Qt::AscendingOrder);
    arranging_ = false;
  }
}

bool GridPanel::Parts::eventFilter(QObject* watched, QEvent* event) {
  if (watched == view_.viewport() && event->type() == QEvent::Resize) SpreadColumns();
  return QObject::eventFilter(watched, event);
}

// --- the menu ------------------------------------------------------------------------------------------------------

void GridPanel::Parts::AddPopup(QMenu& menu) {
  for (const host::MenuItem& item : grid_.Popup->Items()) {
    if (!item.visible) continue;
    const std::string caption = item.caption;
    QAction* action = menu.addAction(QString::fromStdString(caption));
    connect(action, &QAction::triggered, &view_, [this, caption] {
      station_.Do([this, caption] { return station_.Desk().PickMenu(grid_.Owner(), caption); });
    });
  }
  if (!menu.isEmpty()) menu.addSeparator();
}

void GridPanel::Parts::ShowMenu(const QPoint& global) {
  if (model_.Released()) return;
  const QPointer<Parts> alive(this);
  const bool live = view_.Actor().Live();
  QMenu menu(&view_);
  menu.setObjectName(QStringLiteral("grid_menu"));
  if (live && grid_.Popup != nullptr) {
    const bool opened = station_.Do([this] { return station_.Desk().OpenMenu(grid_); });
    if (!alive || model_.Released()) return;
    if (opened) AddPopup(menu);
  }
  const auto add = [&](const char* caption, const char* keys, const std::function<void()>& act) {
    QAction* action = menu.addAction(QString::fromUtf8(caption));
    // Shown only: the table has these keys itself.
    if (*keys != '\0') action->setText(action->text() + u'\t' + QString::fromUtf8(keys));
    connect(action, &QAction::triggered, &view_, act);
    return action;
  };
  add("Copiar", "Ctrl+C", [this] { output_.Copy(); });
  add("Colar", "Ctrl+V", [this] { output_.PasteHere(); })->setEnabled(live && !grid_.ReadOnly());
  add("Filtrar", "Ctrl+F", [this] { ShowFilter(); });
  menu.addSeparator();
  add("Exportar planilha (.xlsx)...", "", [this] { output_.Export(GridOutput::Format::kXlsx); });
  add("Exportar CSV...", "", [this] { output_.Export(GridOutput::Format::kCsv); });
  menu.addSeparator();
  add("Larguras padrão", "", [this] { ResetLayout(); });
  menu.exec(global);
}

// --- the panel -----------------------------------------------------------------------------------------------------

GridPanel::GridPanel(QWidget* parent) : QWidget(parent) {}

GridPanel::~GridPanel() = default;

void GridPanel::Bind(Station& station, host::Grid& grid, host::UserSettings& settings) {
  parts_.reset();
  parts_ = std::make_unique<Parts>(*this, station, grid, settings);
  setFocusProxy(&parts_->View());
}

host::Grid* GridPanel::GetGrid() const {
  return parts_ == nullptr || parts_->Model().Released() ? nullptr : &parts_->Model().GetGrid();
}

QSize GridPanel::minimumSizeHint() const {
  const QSize least = QWidget::minimumSizeHint();
  return parts_ == nullptr ? least : least.expandedTo({0, parts_->WantedHeight()});
}

void GridPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (parts_ != nullptr) parts_->ShowTotals();
}

void GridPanel::LetGo() {
  if (parts_ != nullptr) parts_->Release();
}

// A person who types into the filter line is in the grid already.
void GridPanel::TakeFocus() {
  if (parts_ != nullptr && !parts_->Filter().HasKeyboard()) parts_->View().TakeFocus();
}

bool GridPanel::HasKeyboard() const {
  return parts_ != nullptr && (parts_->View().HasKeyboard() || parts_->Filter().HasKeyboard());
}

}  // namespace app::desktop
