#include "app/desktop/grid/grid_rows.h"

#include <algorithm>
#include <string_view>

#include "app/desktop/grid/folded_text.h"

namespace app::desktop {
namespace {

// What a cell sorts by. Kinds never mix within a field; nothing comes before everything.
struct SortKey {
  int kind = 0;
  double number = 0;
  std::string text;

  friend bool operator<(const SortKey& left, const SortKey& right) {
    if (left.kind != right.kind) return left.kind < right.kind;
    if (left.number != right.number) return left.number < right.number;
    return left.text < right.text;
  }
};

SortKey KeyOf(const host::Value& value) {
  if (value.IsNumber()) return {1, value.AsFloat(), {}};
  if (value.IsDate()) {
    const host::Date date = value.AsDate();
    return {2, date.Year() * 10000.0 + date.Month() * 100.0 + date.Day(), {}};
  }
  if (value.IsNull()) return {};
  std::string text = Folded(value.AsText());
  if (text.empty()) return {};
  return {3, 0, std::move(text)};
}

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words;
  std::string word;
  for (const char c : Folded(text) + " ") {
    if (c != ' ' && c != '\t') {
      word += c;
    } else if (!word.empty()) {
      words.push_back(std::move(word));
      word.clear();
    }
  }
  return words;
}

std::vector<std::size_t> Ids(const RowSource& source) {
  std::vector<std::size_t> ids(source.Count());
  for (std::size_t at = 0; at < ids.size(); ++at) ids[at] = source.Id(at + 1);
  return ids;
}

}  // namespace

void GridRows::Arrange(const RowSource& source, const RowOrder& order) {
  const bool keeps = KeepsOrder(source, order);
  mapped_ = order.column >= 0 || !Words(order.filter).empty();
  order_ = order;
  if (!mapped_) {
    count_ = source.Count();
    rec_nos_.clear();
    rows_.clear();
    ids_.clear();
    return;
  }
  if (keeps) return;
  ids_ = Ids(source);
  Choose(source, order);
  if (order.column >= 0) Sort(source, order);
  count_ = rec_nos_.size();
  rows_.assign(source.Count(), 0);
  for (std::size_t row = 0; row < count_; ++row) rows_[rec_nos_[row] - 1] = row + 1;
}

// While a person edits a row it must not jump away under the cursor; it finds its place when it is posted.
bool GridRows::KeepsOrder(const RowSource& source, const RowOrder& order) const {
  if (!mapped_ || order_ != order || source.Edited() == 0 || source.Count() != ids_.size()) return false;
  for (std::size_t at = 0; at < ids_.size(); ++at) {
    if (ids_[at] != source.Id(at + 1)) return false;
  }
  return true;
}

void GridRows::Choose(const RowSource& source, const RowOrder& order) {
  rec_nos_.clear();
  const std::vector<std::string> words = Words(order.filter);
  const std::size_t count = source.Count();
  const auto* texts = words.empty() ? nullptr : &Texts(source);
  for (std::size_t rec_no = 1; rec_no <= count; ++rec_no) {
    const bool shown = texts == nullptr || rec_no == source.Edited() ||
                       std::all_of(words.begin(), words.end(), [&](const std::string& word) {
                         return (*texts)[rec_no - 1].find(word) != std::string::npos;
                       });
    if (shown) rec_nos_.push_back(rec_no);
  }
}

void GridRows::Sort(const RowSource& source, const RowOrder& order) {
  const auto column = static_cast<std::size_t>(order.column);
  std::vector<SortKey> keys(source.Count());
  for (const std::size_t rec_no : rec_nos_) keys[rec_no - 1] = KeyOf(source.At(rec_no, column));
  const bool inserted = source.Inserting() && !rec_nos_.empty();
  const auto end = rec_nos_.end() - (inserted ? 1 : 0);
  std::stable_sort(rec_nos_.begin(), end, [&](std::size_t left, std::size_t right) {
    return order.descending ? keys[right - 1] < keys[left - 1] : keys[left - 1] < keys[right - 1];
  });
}

const std::vector<std::string>& GridRows::Texts(const RowSource& source) {
  if (texts_of_ == source.Changes() && texts_.size() == source.Count() && texts_columns_ == source.Columns()) {
    return texts_;
  }
  texts_.assign(source.Count(), {});
  texts_of_ = source.Changes();
  texts_columns_ = source.Columns();
  for (std::size_t at = 0; at < texts_.size(); ++at) {
    std::string shown;
    for (std::size_t column = 0; column < texts_columns_; ++column) {
      shown += source.Text(at + 1, column);
      shown += '\n';  // a word never reaches from one cell into the next
    }
    texts_[at] = Folded(shown);
  }
  return texts_;
}

std::optional<std::size_t> GridRows::RowOf(std::size_t rec_no) const {
  if (rec_no == 0) return std::nullopt;
  if (!mapped_) return rec_no <= count_ ? std::optional(rec_no - 1) : std::nullopt;
  if (rec_no > rows_.size() || rows_[rec_no - 1] == 0) return std::nullopt;
  return rows_[rec_no - 1] - 1;
}

}  // namespace app::desktop
