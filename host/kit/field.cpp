#include <algorithm>
#include <stdexcept>
#include <utility>

#include "host/decimal.h"
#include "host/kit/dataset.h"
#include "host/text.h"

namespace host {
namespace {

Value ToDate(const Value& value) {
  if (value.IsDate()) return value;
  const Date date = value.AsDate();
  return date.IsZero() ? Value() : Value(date);
}

}  // namespace

Field::Field(Dataset& dataset, std::size_t index, FieldDef def)
    : dataset_(dataset), index_(index), def_(std::move(def)) {
  if (def_.caption.empty()) def_.caption = def_.name;
}

Value Field::Converted(const Value& value, const FieldDef& def) {
  if (value.IsNull()) return {};
  if (def.type == FieldType::kText || def.type == FieldType::kMemo) {
    const std::string text = value.AsText();
    return def.width == 0 ? Value(text) : Value(Left(text, def.width));
  }
  if (def.type == FieldType::kDate) return ToDate(value);
  if (value.IsDate()) return {};
  if (value.IsText() && (Trim(value.AsText()).empty() || !ParseTyped(value.AsText()))) return {};
  return def.type == FieldType::kInteger ? Value(value.AsInteger()) : Value(value.AsFloat());
}

const Value& Field::Get() const { return dataset_.CurrentValue(index_); }

std::string Field::DisplayText() const { return DisplayText(Get()); }

std::string Field::DisplayText(const Value& value) const {
  if (!value.IsNumber()) return value.AsText();
  if (!def_.format.empty()) return FormatNumber(def_.format, value.AsFloat(), ',');
  std::string text = value.AsText();
  std::replace(text.begin(), text.end(), '.', ',');
  return text;
}

void Field::Set(const Value& value) {
  const Value before = Get();
  const std::size_t row = dataset_.CurrentId();
  dataset_.EditedValue(index_) = Converted(value, def_);
  if (const auto validate = OnValidate) {
    try {
      validate(*this);
    } catch (...) {
      // The handler may have given the whole row up; then there is nothing to put back.
      if (dataset_.InEdit() && dataset_.CurrentId() == row) dataset_.EditedValue(index_) = before;
      dataset_.NotifyView();
      throw;
    }
  }
  dataset_.NotifyView();
  if (const auto change = OnChange) change(*this);
}

}  // namespace host
