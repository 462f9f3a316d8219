#include "app/desktop/grid/grid_model.h"

#include <algorithm>

#include "host/decimal.h"
#include "host/text.h"

namespace app::desktop {
namespace {

const host::Value kNothing;

QString Qt8(const std::string& text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

bool Same(const host::GridColumn& left, const host::GridColumn& right) {
  return left.field == right.field && left.caption == right.caption && left.width == right.width &&
         left.read_only == right.read_only && left.check_box == right.check_box && left.align == right.align &&
         left.lookup == right.lookup && left.total == right.total;
}

std::size_t RowsOf(const host::Dataset& dataset) {
  return dataset.RecordCount() + (dataset.State() == host::DatasetState::kInsert ? 1 : 0);
}

}  // namespace

class GridModel::Source : public RowSource {
 public:
  explicit Source(const GridModel& model) : model_(model), dataset_(model.grid_.GetDataset()) {}

  std::size_t Count() const override { return RowsOf(dataset_); }
  bool Inserting() const override { return dataset_.State() == host::DatasetState::kInsert; }
  std::size_t Edited() const override { return dataset_.InEdit() ? dataset_.RecNo() : 0; }
  std::size_t Id(std::size_t rec_no) const override { return dataset_.IdAt(rec_no); }
  std::size_t Columns() const override { return model_.fields_.size(); }
  const host::Value& At(std::size_t rec_no, std::size_t column) const override {
    const int field = model_.fields_[column];
    return field < 0 ? kNothing : dataset_.ValueAt(rec_no, static_cast<std::size_t>(field));
  }
  std::string Text(std::size_t rec_no, std::size_t column) const override {
    const int field = model_.fields_[column];
    if (field < 0 || model_.columns_[column].check_box) return {};
    const auto index = static_cast<std::size_t>(field);
    return dataset_.FieldAt(index).DisplayText(dataset_.ValueAt(rec_no, index));
  }
  std::size_t Changes() const override { return dataset_.Changes(); }

 private:
  const GridModel& model_;
  const host::Dataset& dataset_;
};

GridModel::GridModel(host::Grid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(grid) {
  TakeColumns();
  Refresh();
}

// --- taking up changes -------------------------------------------------------------------------------------------

void GridModel::Release() {
  if (released_) return;
  beginResetModel();
  released_ = true;
  row_count_ = 0;
  columns_.clear();
  captions_.clear();
  fields_.clear();
  endResetModel();
}

void GridModel::Refresh() {
  if (released_) return;
  const std::size_t changes = grid_.GetDataset().Changes();
  const bool columns_changed = TakeColumns();
  if (columns_changed || !ordered_ || seen_ != changes) {
    seen_ = changes;
    ordered_ = true;
    ++readings_;
    TakeRows();
    emit RowsChanged();
  }
  emit Refreshed();
}

bool GridModel::TakeColumns() {
  const host::Dataset& dataset = grid_.GetDataset();
  std::vector<int> fields;
  std::vector<std::string> captions;
  for (const host::GridColumn& column : grid_.Columns()) {
    int found = -1;
    for (std::size_t at = 0; at < dataset.FieldCount() && found < 0; ++at) {
      if (host::SameName(dataset.FieldAt(at).Name(), column.field)) found = static_cast<int>(at);
    }
    fields.push_back(found);
    const bool own = !column.caption.empty() || found < 0;
    captions.push_back(own ? column.caption : dataset.FieldAt(static_cast<std::size_t>(found)).Def().caption);
    if (captions.back().empty()) captions.back() = column.field;
  }
  const bool same = columns_.size() == grid_.Columns().size() &&
                    std::equal(columns_.begin(), columns_.end(), grid_.Columns().begin(), Same) &&
                    captions_ == captions;
  if (same) {
    fields_ = std::move(fields);
    return false;
  }
  beginResetModel();
  columns_ = grid_.Columns();
  captions_ = std::move(captions);
  fields_ = std::move(fields);
  order_.column = -1;  // it named a column by its place
  row_count_ = 0;
  endResetModel();
  emit ColumnsChanged();
  return true;
}

void GridModel::TakeRows() {
  rows_.Arrange(Source(*this), order_);
  const int count = static_cast<int>(rows_.Count());
  if (count > row_count_) {
    beginInsertRows({}, row_count_, count - 1);
    row_count_ = count;
    endInsertRows();
  } else if (count < row_count_) {
    beginRemoveRows({}, count, row_count_ - 1);
    row_count_ = count;
    endRemoveRows();
  }
  if (row_count_ > 0 && !columns_.empty()) {
    emit dataChanged(index(0, 0), index(row_count_ - 1, static_cast<int>(columns_.size()) - 1));
  }
}

void GridModel::SetOrder(int column, bool descending) {
  const int wanted = column < static_cast<int>(columns_.size()) ? column : -1;
  if (wanted == order_.column && descending == order_.descending) return;
  order_.column = wanted;
  order_.descending = descending;
  ordered_ = false;
  Refresh();
}

void GridModel::SetFilter(const QString& words) {
  std::string filter = host::Trim(words.toStdString());
  if (filter == order_.filter) return;
  order_.filter = std::move(filter);
  ordered_ = false;
  Refresh();
}

// --- rows --------------------------------------------------------------------------------------------------------

int GridModel::AllRows() const { return released_ ? 0 : static_cast<int>(RowsOf(grid_.GetDataset())); }

std::size_t GridModel::IdAt(int row) const { return grid_.GetDataset().IdAt(RecNoAt(row)); }

std::size_t GridModel::RecNoOf(std::size_t id) const {
  const host::Dataset& dataset = grid_.GetDataset();
  if (id == 0) return dataset.State() == host::DatasetState::kInsert ? dataset.RecNo() : 0;
  for (std::size_t rec_no = 1; rec_no <= dataset.RecordCount(); ++rec_no) {
    if (dataset.IdAt(rec_no) == id) return rec_no;
  }
  return 0;
}

int GridModel::CursorRow() const {
  if (released_) return -1;
  const auto row = rows_.RowOf(grid_.GetDataset().RecNo());
  return row && static_cast<int>(*row) < row_count_ ? static_cast<int>(*row) : -1;
}

const host::Value& GridModel::ValueAt(int row, int column) const {
  if (released_) return kNothing;
  const host::Dataset& dataset = grid_.GetDataset();
  if (row < 0 || row >= row_count_ || column < 0 || column >= static_cast<int>(fields_.size())) return kNothing;
  const int field = fields_[static_cast<std::size_t>(column)];
  const std::size_t rec_no = RecNoAt(row);
  // The window may be painted between a change of the dataset and the refresh that takes it up.
  if (field < 0 || field >= static_cast<int>(dataset.FieldCount()) || rec_no > RowsOf(dataset)) return kNothing;
  return dataset.ValueAt(rec_no, static_cast<std::size_t>(field));
}

// --- columns -----------------------------------------------------------------------------------------------------

const host::GridColumn& GridModel::ColumnAt(int column) const { return columns_.at(static_cast<std::size_t>(column)); }

const host::Field* GridModel::FieldAt(int column) const {
  const host::Dataset& dataset = grid_.GetDataset();
  const int field = fields_.at(static_cast<std::size_t>(column));
  if (field < 0 || field >= static_cast<int>(dataset.FieldCount())) return nullptr;
  return &dataset.FieldAt(static_cast<std::size_t>(field));
}

bool GridModel::IsNumber(int column) const {
  const host::Field* field = FieldAt(column);
  return field != nullptr &&
         (field->Def().type == host::FieldType::kFloat || field->Def().type == host::FieldType::kInteger);
}

bool GridModel::CanType(int column) const {
  if (column < 0 || column >= static_cast<int>(columns_.size())) return false;
  return grid_.Enabled() && grid_.GetDataset().Active() && !grid_.ReadOnly() && !ColumnAt(column).read_only &&
         FieldAt(column) != nullptr;
}

QString GridModel::Sum(int column) const {
  const host::Field* field = FieldAt(column);
  if (field == nullptr) return {};
  double sum = 0;
  for (int row = 0; row < row_count_; ++row) sum += ValueAt(row, column).AsFloat();
  return Qt8(field->DisplayText(host::Value(host::WithoutNoise(sum))));
}

QString GridModel::Caption(int column) const {
  return Qt8(captions_.at(static_cast<std::size_t>(column))).replace(u'|', u' ');
}

// --- what the view reads -----------------------------------------------------------------------------------------

int GridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : row_count_; }

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QString GridModel::Shown(int row, int column) const {
  const host::Field* field = FieldAt(column);
  return field == nullptr ? QString() : Qt8(field->DisplayText(ValueAt(row, column)));
}

// Every digit of a number: what is typed over must not lose those that the format hides.
QString GridModel::Typed(int row, int column) const {
  const host::Value& value = ValueAt(row, column);
  QString text = Qt8(value.AsText());
  return value.IsNumber() ? text.replace(u'.', u',') : text;
}

Qt::Alignment GridModel::AlignmentOf(int column) const {
  switch (ColumnAt(column).align) {
    case host::Align::kCenter:
      return Qt::AlignCenter;
    case host::Align::kRight:
      return Qt::AlignRight | Qt::AlignVCenter;
    case host::Align::kLeft:
      break;
  }
  if (ColumnAt(column).check_box) return Qt::AlignCenter;
  // Numbers that stand one above the other are compared digit by digit.
  return (IsNumber(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= row_count_ || index.column() >= columnCount()) return {};
  const int row = index.row();
  const int column = index.column();
  const bool check_box = ColumnAt(column).check_box;
  switch (role) {
    case Qt::DisplayRole:
      // A cell is one line high.
      return check_box ? QVariant() : QVariant(Shown(row, column).replace(u'\n', u' '));
    case Qt::EditRole:
      return Typed(row, column);
    case Qt::CheckStateRole:
      if (!check_box) return {};
      return static_cast<int>(ValueAt(row, column).AsText() == "S" ? Qt::Checked : Qt::Unchecked);
    case Qt::TextAlignmentRole:
      return static_cast<int>(AlignmentOf(column).toInt());
    case kReadOnlyRole:
      return !grid_.ReadOnly() && ColumnAt(column).read_only;
    case kCursorRowRole:
      return CursorRow() == row;
    case kLookupRole:
      return ColumnAt(column).lookup && CanType(column);
    default:
      return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  if (role == Qt::DisplayRole) {
    // Code over description, so that a column as narrow as its code still tells which colour it is.
    return Qt8(captions_[static_cast<std::size_t>(section)]).replace(u'|', u'\n');
  }
  if (role == Qt::TextAlignmentRole) return static_cast<int>(AlignmentOf(section).toInt());
  return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
  if (CanType(index.column()))
    flags |= ColumnAt(index.column()).check_box ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable;
  return flags;
}

}  // namespace app::desktop
