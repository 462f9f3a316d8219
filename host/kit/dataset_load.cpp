// Taking a query's result into an in-memory dataset.
#include <algorithm>
#include <utility>

#include "host/kit/dataset.h"
#include "host/kit/fire.h"
#include "host/text.h"

namespace host {
namespace {

// What the values of a column are.
struct Kinds {
  bool text = false;
  bool integer = false;
  bool number = false;  // with a fraction
  bool date = false;

  void Add(const Value& value) {
    text = text || value.IsText();
    integer = integer || value.IsInteger();
    number = number || (value.IsNumber() && !value.IsInteger());
    date = date || value.IsDate();
  }
  /// The type that holds all of them.
  FieldType Type() const {
    if (text || (date && (integer || number))) return FieldType::kText;
    if (date) return FieldType::kDate;
    if (number) return FieldType::kFloat;
    return integer ? FieldType::kInteger : FieldType::kText;
  }
  /// Some values are of another kind than the type that holds all.
  bool Mixed() const {
    return static_cast<int>(text) + static_cast<int>(integer) + static_cast<int>(number) + static_cast<int>(date) > 1;
  }
};

bool HasName(const std::vector<std::string>& names, const std::string& name) {
  return std::any_of(names.begin(), names.end(), [&](const std::string& other) { return SameName(other, name); });
}

// The engine calls two columns of a join alike; each needs a name of its own to be read by.
std::vector<std::string> OwnNames(const std::vector<std::string>& names) {
  std::vector<std::string> own;
  for (const std::string& name : names) {
    std::string free = name;
    // A name that another column of the result bears is none to give away.
    for (int twin = 1; HasName(own, free) || (free != name && HasName(names, free)); ++twin) {
      free = name + '_' + std::to_string(twin);
    }
    own.push_back(std::move(free));
  }
  return own;
}

}  // namespace

// The base class hands over copies.
void Dataset::LoadFrom(TTIQuery& query) { Load(query.TTIQuery::TakeRows()); }

void Dataset::LoadFrom(std::unique_ptr<TTIQuery> query) {
  RowSet taken = query->TakeRows();
  query.reset();
  Load(std::move(taken));
}

void Dataset::Load(RowSet loaded) {
  const std::vector<std::string> names = OwnNames(loaded.names);
  std::vector<Kinds> kinds(names.size());
  for (const std::vector<Value>& row : loaded.rows) {
    for (std::size_t at = 0; at < kinds.size(); ++at) kinds[at].Add(row[at]);
  }
  std::vector<FieldDef> defs;
  for (std::size_t at = 0; at < names.size(); ++at) defs.push_back({names[at], kinds[at].Type()});
  CreateFields(defs);
  for (std::size_t at = 0; at < kinds.size(); ++at) {
    if (!kinds[at].Mixed()) continue;
    for (std::vector<Value>& row : loaded.rows) row[at] = Field::Converted(row[at], defs[at]);
  }
  rows_.reserve(loaded.rows.size());
  for (std::vector<Value>& row : loaded.rows) rows_.push_back({next_id_++, std::move(row)});
  Rebuild(0);
  bof_ = true;
  told_id_ = CurrentId();
  NotifyView();
  Fire(AfterScroll);
}

}  // namespace host
