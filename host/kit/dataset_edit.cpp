// Editing and the second cursor of an in-memory dataset.
#include <algorithm>
#include <stdexcept>
#include <utility>

#include "host/kit/dataset.h"
#include "host/kit/fire.h"
#include "host/restored.h"

namespace host {
void Dataset::Append() {
  RequireActive();
  if (!LeaveRow()) throw std::logic_error(Name() + " is being posted");
  state_ = DatasetState::kInsert;
  edited_.assign(fields_.size(), Value());
  edited_id_ = next_id_++;
  ++changes_;
  bof_ = eof_ = false;
  Fire(AfterInsert);
  TellArrival();
}

void Dataset::Edit() {
  RequireActive();
  if (InEdit()) return;
  if (visible_.empty()) {
    Append();
    return;
  }
  const Row& row = rows_[visible_[position_]];
  state_ = DatasetState::kEdit;
  edited_ = row.values;
  edited_id_ = row.id;
  NotifyView();
}

void Dataset::PutBack(std::size_t field, const Value& value) {
  EditedValue(field) = value;
  NotifyView();
}

void Dataset::Post() {
  if (!InEdit() || posting_) return;
  {
    const Restored<bool> posting(posting_, true);
    Fire(BeforePost);
    if (!InEdit()) return;
    StoreEdited();
  }
  NotifyView();
  Fire(AfterPost);
  if (!InEdit()) TellArrival();
}

void Dataset::StoreEdited() {
  ++changes_;
  std::size_t row = RowIndex(edited_id_);
  if (row == rows_.size()) {
    rows_.push_back({edited_id_, std::move(edited_)});
  } else {
    rows_[row].values = std::move(edited_);
  }
  state_ = DatasetState::kBrowse;
  // Where the view had the row; the binary search below needs the rest of the view, which is in order.
  const auto shown = std::find(visible_.begin(), visible_.end(), row);
  std::size_t place = visible_.size();
  if (shown != visible_.end()) {
    place = static_cast<std::size_t>(shown - visible_.begin());
    visible_.erase(shown);
  }
  if (Passes(rows_[row])) {
    place = PlaceOf(row);
    visible_.insert(visible_.begin() + static_cast<std::ptrdiff_t>(place), row);
  }
  position_ = visible_.empty() ? 0 : std::min(place, visible_.size() - 1);
  bof_ = eof_ = visible_.empty();
}

void Dataset::Cancel() {
  if (!InEdit()) return;
  ++changes_;
  state_ = DatasetState::kBrowse;
  edited_.clear();
  bof_ = eof_ = visible_.empty();
  TellArrival();
}

void Dataset::Delete() {
  RequireActive();
  if (state_ == DatasetState::kInsert) {
    Cancel();
    return;
  }
  if (visible_.empty()) return;
  Fire(BeforeDelete);
  if (state_ == DatasetState::kEdit) state_ = DatasetState::kBrowse;
  edited_.clear();
  if (visible_.empty()) return;
  ++changes_;
  const std::size_t row = visible_[position_];
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
  visible_.erase(visible_.begin() + static_cast<std::ptrdiff_t>(position_));
  for (std::size_t& index : visible_) {
    if (index > row) --index;
  }
  bof_ = eof_ = visible_.empty();
  Arrive(position_);
}

void Dataset::Empty() {
  ++changes_;
  rows_.clear();
  visible_.clear();
  edited_.clear();
  if (InEdit()) state_ = DatasetState::kBrowse;
  position_ = 0;
  bof_ = eof_ = true;
  TellArrival();
}

// --- the second cursor -------------------------------------------------------------------------------------------

DatasetCursor::DatasetCursor(const Dataset& dataset) : dataset_(dataset) { First(); }

void DatasetCursor::First() {
  order_.clear();
  newest_ = 0;
  position_ = 0;
  Refresh();
}

void DatasetCursor::Refresh() const {
  std::vector<std::size_t> fresh;
  for (std::size_t at = 0; at < dataset_.rows_.size(); ++at) {
    if (dataset_.rows_[at].id > newest_) fresh.push_back(at);
  }
  std::sort(fresh.begin(), fresh.end(), [this](std::size_t left, std::size_t right) {
    return dataset_.Before(dataset_.rows_[left], dataset_.rows_[right]);
  });
  for (const std::size_t row : fresh) {
    order_.push_back(dataset_.rows_[row].id);
    newest_ = std::max(newest_, dataset_.rows_[row].id);
  }
}

void DatasetCursor::Next() {
  if (!Eof()) ++position_;
}

bool DatasetCursor::Eof() const {
  const auto gone = [this](std::size_t at) { return dataset_.RowIndex(order_[at]) == dataset_.rows_.size(); };
  while (position_ < order_.size() && gone(position_)) ++position_;
  if (position_ == order_.size()) Refresh();
  return position_ >= order_.size();
}

std::size_t DatasetCursor::RecordCount() const { return dataset_.rows_.size(); }

const Value& DatasetCursor::FieldByName(std::string_view name) const {
  const int field = dataset_.FieldIndex(name);
  if (field < 0) throw std::out_of_range(dataset_.Name() + " has no field " + std::string(name));
  if (position_ >= order_.size()) return Value::Null();
  const std::size_t row = dataset_.RowIndex(order_[position_]);
  return row == dataset_.rows_.size() ? Value::Null() : dataset_.rows_[row].values[static_cast<std::size_t>(field)];
}

}  // namespace host
