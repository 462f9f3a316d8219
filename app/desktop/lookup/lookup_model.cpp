#include "app/desktop/lookup/lookup_model.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "app/desktop/basics/text.h"
#include "host/decimal.h"

namespace app::desktop {
namespace {

constexpr std::size_t kPage = 100;
constexpr const char* kPlainNumber = "0.######";

Qt::Alignment AlignmentOf(host::Align align) {
  switch (align) {
    case host::Align::kRight:
      return Qt::AlignRight | Qt::AlignVCenter;
    case host::Align::kCenter:
      return Qt::AlignCenter;
    case host::Align::kLeft:
      break;
  }
  return Qt::AlignLeft | Qt::AlignVCenter;
}

// A row is searched with fewer columns than it has.
bool IsPartOf(const host::LookupRow& row, const host::LookupRow& whole) {
  return std::all_of(row.begin(), row.end(), [&whole](const auto& column) {
    const auto found = whole.find(column.first);
    return found != whole.end() && found->second == column.second;
  });
}

QString Shown(const host::Value& value, const OfferColumn& column) {
  if (!value.IsNumber()) return ToQt(value.AsText());
  return ToQt(host::FormatNumber(column.format.empty() ? kPlainNumber : column.format, value.AsFloat(), ','));
}

}  // namespace

LookupModel::LookupModel(LookupOffer& offer, std::function<void(const std::function<void()>&)> guard, QObject* parent)
    : QAbstractTableModel(parent), offer_(offer), guard_(std::move(guard)) {}

void LookupModel::Search(const QString& text) {
  beginResetModel();
  rows_.clear();
  read_ = 0;
  has_more_ = false;
  put_first_.reset();
  text_ = FromQt(text);
  try {
    rows_ = NextPage();
    if (!text.trimmed().isEmpty()) PutExactFirst(text.trimmed());
  } catch (...) {
    rows_.clear();
    has_more_ = false;
    endResetModel();
    throw;
  }
  endResetModel();
}

void LookupModel::PutExactFirst(const QString& text) {
  if (!has_more_ || RowOfKey(text) >= 0) return;
  auto exact = offer_.Find(FromQt(text));
  if (!exact) return;
  put_first_ = *exact;
  rows_.insert(rows_.begin(), std::move(*exact));
}

std::vector<host::LookupRow> LookupModel::NextPage() {
  // One row more than is shown tells whether there are more.
  std::vector<host::LookupRow> page = offer_.Search(text_, read_, kPage + 1);
  has_more_ = page.size() > kPage;
  if (has_more_) page.resize(kPage);
  read_ += page.size();
  if (!put_first_) return page;
  // Others may have the same key, and two may even look alike: one row goes, once.
  const auto it =
      std::find_if(page.begin(), page.end(), [this](const auto& row) { return IsPartOf(row, *put_first_); });
  if (it == page.end()) return page;
  page.erase(it);
  put_first_.reset();
  return page;
}

QString LookupModel::KeyOf(const host::LookupRow& row) const {
  const auto found = row.find(offer_.Columns().front().name);
  return found == row.end() ? QString() : ToQt(found->second.AsText());
}

int LookupModel::RowOfKey(const QString& text) const {
  const QString wanted = text.trimmed();
  for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
    const auto found = std::find_if(rows_.begin(), rows_.end(), [&](const host::LookupRow& row) {
      return KeyOf(row).compare(wanted, sensitivity) == 0;
    });
    if (found != rows_.end()) return static_cast<int>(std::distance(rows_.begin(), found));
  }
  return -1;
}

int LookupModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int LookupModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(offer_.Columns().size());
}

QVariant LookupModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const OfferColumn& column = offer_.Columns()[static_cast<std::size_t>(index.column())];
  const auto found = Row(index.row()).find(column.name);
  if (found == Row(index.row()).end()) return {};
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return Shown(found->second, column);
  if (role == Qt::TextAlignmentRole) {
    return QVariant::fromValue(AlignmentOf(found->second.IsNumber() ? host::Align::kRight : column.align));
  }
  return {};
}

QVariant LookupModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  const OfferColumn& column = offer_.Columns()[static_cast<std::size_t>(section)];
  if (role == Qt::DisplayRole) return ToQt(column.caption);
  if (role == Qt::TextAlignmentRole) return QVariant::fromValue(AlignmentOf(column.align));
  return {};
}

bool LookupModel::canFetchMore(const QModelIndex& parent) const { return !parent.isValid() && has_more_; }

void LookupModel::fetchMore(const QModelIndex& /*parent*/) {
  std::vector<host::LookupRow> page;
  guard_([&] {
    has_more_ = false;  // a view would ask again and again for what cannot be read
    page = NextPage();
  });
  if (page.empty()) return;
  const int first = static_cast<int>(rows_.size());
  beginInsertRows({}, first, first + static_cast<int>(page.size()) - 1);
  std::move(page.begin(), page.end(), std::back_inserter(rows_));
  endInsertRows();
}

}  // namespace app::desktop
