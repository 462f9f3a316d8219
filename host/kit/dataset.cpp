#include "host/kit/dataset.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "host/kit/fire.h"
#include "host/text.h"

namespace host {
namespace {

int Order(const Value& left, const Value& right) {
  if (left.IsNull() || right.IsNull()) return static_cast<int>(right.IsNull()) - static_cast<int>(left.IsNull());
  if (left.IsNumber() && right.IsNumber()) {
    if (left.AsFloat() != right.AsFloat()) return left.AsFloat() < right.AsFloat() ? -1 : 1;
    return 0;
  }
  if (left.IsDate() && right.IsDate()) {
    if (left.AsDate() != right.AsDate()) return left.AsDate() < right.AsDate() ? -1 : 1;
    return 0;
  }
  return left.AsText().compare(right.AsText());
}

// As Locate compares: nothing and empty text are the same, and a number is found by its text too.
bool Same(const Value& left, const Value& right) {
  if (left.IsNumber() && right.IsNumber()) return left == right;
  return left.AsText() == right.AsText();
}

}  // namespace

Dataset::Dataset(Screen& owner, std::string name, std::vector<FieldDef> fields) : Component(owner, std::move(name)) {
  if (!fields.empty()) CreateFields(std::move(fields));
}

Dataset::~Dataset() = default;

// --- structure ---------------------------------------------------------------------------------------------------

void Dataset::CreateFields(std::vector<FieldDef> fields) {
  Close();
  fields_.clear();
  index_fields_.clear();
  index_text_.clear();
  filter_.reset();
  filter_text_.clear();
  filtered_ = false;
  for (FieldDef& def : fields) {
    fields_.push_back(std::make_unique<Field>(*this, fields_.size(), std::move(def)));
  }
  state_ = DatasetState::kBrowse;
  ++changes_;
  NotifyView();
}

void Dataset::Close() {
  ++changes_;
  rows_.clear();
  visible_.clear();
  edited_.clear();
  state_ = DatasetState::kInactive;
  position_ = 0;
  eof_ = bof_ = true;
  told_id_ = 0;
  NotifyView();
}

Field* Dataset::FindField(std::string_view name) const {
  const int index = FieldIndex(name);
  return index < 0 ? nullptr : fields_[static_cast<std::size_t>(index)].get();
}

Field& Dataset::FieldByName(std::string_view name) const {
  Field* field = FindField(name);
  if (field == nullptr) throw std::out_of_range(Name() + " has no field " + std::string(name));
  return *field;
}

int Dataset::FieldIndex(std::string_view name) const {
  for (std::size_t at = 0; at < fields_.size(); ++at) {
    if (SameName(fields_[at]->Name(), name)) return static_cast<int>(at);
  }
  return -1;
}

std::vector<std::size_t> Dataset::FieldIndexes(std::string_view names) const {
  std::vector<std::size_t> indexes;
  for (const std::string& piece : SplitOutsideQuotes(names, ';')) {
    const int index = FieldIndex(Trim(piece));
    if (index < 0) throw std::out_of_range(Name() + " has no field " + piece);
    indexes.push_back(static_cast<std::size_t>(index));
  }
  return indexes;
}

void Dataset::RequireActive() const {
  if (!Active()) throw std::logic_error(Name() + " is not open");
}

// --- cursor ------------------------------------------------------------------------------------------------------

std::size_t Dataset::CurrentId() const {
  if (InEdit()) return edited_id_;
  return visible_.empty() ? 0 : rows_[visible_[position_]].id;
}

std::size_t Dataset::RecNo() const {
  if (state_ == DatasetState::kInsert) return visible_.size() + 1;
  return visible_.empty() ? 0 : position_ + 1;
}

std::size_t Dataset::IdAt(std::size_t rec_no) const {
  return rec_no == 0 || rec_no > visible_.size() ? 0 : rows_[visible_[rec_no - 1]].id;
}

std::size_t Dataset::RowIndex(std::size_t id) const {
  const auto found = std::lower_bound(rows_.begin(), rows_.end(), id,
                                      [](const Row& row, std::size_t wanted) { return row.id < wanted; });
  if (found == rows_.end() || found->id != id) return rows_.size();
  return static_cast<std::size_t>(found - rows_.begin());
}

void Dataset::TellArrival() {
  const std::size_t id = CurrentId();
  NotifyView();
  if (id == told_id_) return;
  // Where nobody listens, as while a screen loads, nothing was told: the next arrival tells it.
  told_id_ = AfterScroll ? id : 0;
  if (id != 0) Fire(AfterScroll);
}

void Dataset::Arrive(std::size_t position) {
  position_ = visible_.empty() ? 0 : std::min(position, visible_.size() - 1);
  TellArrival();
}

bool Dataset::LeaveRow() {
  if (InEdit()) Post();
  return !InEdit();
}

void Dataset::First() {
  if (!LeaveRow()) return;
  bof_ = true;
  eof_ = visible_.empty();
  Arrive(0);
}

void Dataset::Last() {
  if (!LeaveRow()) return;
  eof_ = true;
  bof_ = visible_.empty();
  Arrive(visible_.empty() ? 0 : visible_.size() - 1);
}

void Dataset::Next() {
  if (!LeaveRow()) return;
  bof_ = visible_.empty();
  if (position_ + 1 >= visible_.size()) {
    eof_ = true;
    return;
  }
  Arrive(position_ + 1);
}

void Dataset::Prior() {
  if (!LeaveRow()) return;
  eof_ = visible_.empty();
  if (position_ == 0) {
    bof_ = true;
    return;
  }
  Arrive(position_ - 1);
}

void Dataset::GoTo(std::size_t rec_no) { GoToId(IdAt(rec_no)); }

bool Dataset::GoToId(std::size_t id) {
  if (id == 0 || !LeaveRow()) return false;
  for (std::size_t at = 0; at < visible_.size(); ++at) {
    if (rows_[visible_[at]].id != id) continue;
    eof_ = bof_ = false;
    Arrive(at);
    return true;
  }
  return false;
}

bool Dataset::Locate(std::string_view fields, const std::vector<Value>& values) {
  const std::vector<std::size_t> indexes = FieldIndexes(fields);
  if (indexes.size() != values.size()) throw std::logic_error("as many values as fields to locate by");
  if (!LeaveRow()) return false;
  for (std::size_t at = 0; at < visible_.size(); ++at) {
    const Row& row = rows_[visible_[at]];
    bool same = true;
    for (std::size_t key = 0; same && key < indexes.size(); ++key) same = Same(row.values[indexes[key]], values[key]);
    if (!same) continue;
    eof_ = bof_ = false;
    Arrive(at);
    return true;
  }
  return false;
}

const Value& Dataset::ValueAt(std::size_t rec_no, std::size_t field) const {
  if (InEdit() && rec_no == RecNo()) return edited_.at(field);
  return rows_[visible_.at(rec_no - 1)].values.at(field);
}

const Value& Dataset::CurrentValue(std::size_t field) const {
  if (InEdit()) return edited_[field];
  if (visible_.empty()) return Value::Null();
  return rows_[visible_[position_]].values[field];
}

Value& Dataset::EditedValue(std::size_t field) {
  if (!InEdit()) throw std::logic_error(Name() + " is not in edit");
  ++changes_;
  return edited_[field];
}

// --- view --------------------------------------------------------------------------------------------------------

bool Dataset::Passes(const Row& row) const {
  if (!filtered_ || !filter_) return true;
  return filter_->Matches([&row](std::size_t field) -> const Value& { return row.values[field]; });
}

bool Dataset::Before(const Row& left, const Row& right) const {
  for (const std::size_t field : index_fields_) {
    const int order = Order(left.values[field], right.values[field]);
    if (order != 0) return order < 0;
  }
  return left.id < right.id;
}

std::size_t Dataset::PlaceOf(std::size_t row_index) const {
  const auto place =
      std::lower_bound(visible_.begin(), visible_.end(), row_index,
                       [this](std::size_t left, std::size_t right) { return Before(rows_[left], rows_[right]); });
  return static_cast<std::size_t>(place - visible_.begin());
}

void Dataset::Rebuild(std::size_t keep_id) {
  ++changes_;
  visible_.clear();
  for (std::size_t at = 0; at < rows_.size(); ++at) {
    if (Passes(rows_[at])) visible_.push_back(at);
  }
  if (!index_fields_.empty()) {
    std::sort(visible_.begin(), visible_.end(),
              [this](std::size_t left, std::size_t right) { return Before(rows_[left], rows_[right]); });
  }
  const auto kept = std::find_if(visible_.begin(), visible_.end(),
                                 [this, keep_id](std::size_t row) { return rows_[row].id == keep_id; });
  position_ = kept == visible_.end() ? 0 : static_cast<std::size_t>(kept - visible_.begin());
  bof_ = eof_ = visible_.empty();
}

void Dataset::SetFilter(std::string_view text) {
  std::optional<Filter> parsed;
  if (!Trim(text).empty()) {
    parsed = Filter::Parse(text, [this](std::string_view name) { return FieldIndex(name); });
  }
  if (filtered_) LeaveRow();
  filter_ = std::move(parsed);
  filter_text_ = text;
  if (!filtered_) return;
  Rebuild(CurrentId());
  TellArrival();
}

void Dataset::SetFiltered(bool on) {
  if (filtered_ == on) return;
  LeaveRow();
  filtered_ = on;
  Rebuild(CurrentId());
  TellArrival();
}

void Dataset::SetIndex(std::string_view fields) {
  index_fields_ = Trim(fields).empty() ? std::vector<std::size_t>() : FieldIndexes(fields);
  index_text_ = fields;
  // While a row is inserted the cursor's own row is the one that Cancel goes back to.
  Rebuild(visible_.empty() ? 0 : rows_[visible_[position_]].id);
  TellArrival();
}

}  // namespace host
