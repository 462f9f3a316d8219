#include "app/firebird/message.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string_view>

#include "app/firebird/win1252.h"
#include "host/decimal.h"

namespace app::firebird {
namespace {

constexpr unsigned kShort = 64;  // dates and numbers as text
constexpr unsigned kLongest = 32765;
constexpr unsigned kUtf8 = 4;  // the engine's number of the connection's character set

template <typename T>
T Load(const unsigned char* from) {
  T value;
  std::memcpy(&value, from, sizeof value);
  return value;
}

template <typename T>
void Store(unsigned char* to, T value) {
  std::memcpy(to, &value, sizeof value);
}

host::Date ToDate(ISC_DATE day) {
  unsigned year = 0;
  unsigned month = 0;
  unsigned of_month = 0;
  Master().getUtilInterface()->decodeDate(day, &year, &month, &of_month);
  return host::Date::FromParts(static_cast<int>(year), static_cast<int>(month), static_cast<int>(of_month))
      .value_or(host::Date());
}

ISC_DATE FromDate(host::Date date) {
  return Master().getUtilInterface()->encodeDate(
      static_cast<unsigned>(date.Year()), static_cast<unsigned>(date.Month()), static_cast<unsigned>(date.Day()));
}

std::string ToTime(ISC_TIME time) {
  const unsigned second = time / ISC_TIME_SECONDS_PRECISION;
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%02u:%02u:%02u", second / 3600, second / 60 % 60, second % 60);
  return text.data();
}

std::string ReadVarying(const Column& column, const unsigned char* at) {
  std::string_view bytes(reinterpret_cast<const char*>(at) + sizeof(std::uint16_t), Load<std::uint16_t>(at));
  if (column.fixed_width) bytes = bytes.substr(0, bytes.find_last_not_of(' ') + 1);
  return FromWin1252(bytes);
}

host::Value ReadInteger(std::int64_t number, int scale) {
  if (scale == 0) return number;
  return Unscale(number, -scale);
}

// The whole number that the parameter stores for `number`; nothing when it does not hold it exactly.
std::optional<std::int64_t> ExactDigits(const Column& parameter, const host::Value& value) {
  std::int64_t power = 1;
  for (int i = 0; i > parameter.scale; --i) power *= 10;
  std::int64_t digits = 0;
  if (value.IsInteger()) {
    if (__builtin_mul_overflow(value.AsInteger(), power, &digits)) return std::nullopt;
  } else {
    const double number = value.AsFloat();
    const double scaled = std::round(number * static_cast<double>(power));
    if (!(std::abs(scaled) < 9e15)) return std::nullopt;
    digits = static_cast<std::int64_t>(scaled);
    if (Unscale(digits, -parameter.scale) != number) return std::nullopt;
  }
  const std::int64_t limit = parameter.type == SQL_SHORT  ? INT16_MAX
                             : parameter.type == SQL_LONG ? INT32_MAX
                                                          : INT64_MAX;
  if (digits > limit || digits < -limit) return std::nullopt;
  return digits;
}

std::string NumberText(const host::Value& value) {
  return value.IsInteger() ? std::to_string(value.AsInteger()) : host::PointText(value.AsFloat());
}

std::string TextOf(const host::Value& value) {
  if (value.IsDate()) return value.AsDate().ToIso();
  if (value.IsNumber()) return NumberText(value);
  return value.AsText();
}

bool IsTextType(unsigned type) { return type == SQL_TEXT || type == SQL_VARYING; }

bool TakesNatively(const Column& parameter, const host::Value& value) {
  switch (parameter.type) {
    case SQL_SHORT:
    case SQL_LONG:
    case SQL_INT64:
      return value.IsNumber() && ExactDigits(parameter, value).has_value();
    case SQL_DOUBLE:
    case SQL_FLOAT:
    case SQL_BOOLEAN:
      return value.IsNumber();
    case SQL_TYPE_DATE:
    case SQL_TIMESTAMP:
      return value.IsDate();
    case SQL_BLOB:
      return true;
    default:
      return false;
  }
}

void WriteText(const std::string& text, unsigned char* at) {
  Store(at, static_cast<std::uint16_t>(text.size()));
  std::copy(text.begin(), text.end(), at + sizeof(std::uint16_t));
}

}  // namespace

double Unscale(std::int64_t digits, int scale) {
  double power = 1;
  for (int i = 0; i < scale; ++i) power *= 10;
  return static_cast<double>(digits) / power;
}

Layout::Layout(Status& status, Ref<api::IMessageMetadata> metadata) : metadata_(std::move(metadata)) {
  const unsigned count = metadata_->getCount(&status);
  columns_.reserve(count);
  for (unsigned i = 0; i < count; ++i) {
    Column column;
    column.name = metadata_->getAlias(&status, i);
    column.type = metadata_->getType(&status, i) & ~1u;  // the lowest bit says "may be null"
    column.subtype = metadata_->getSubType(&status, i);
    column.length = metadata_->getLength(&status, i);
    column.scale = metadata_->getScale(&status, i);
    column.charset = metadata_->getCharSet(&status, i);
    column.offset = metadata_->getOffset(&status, i);
    column.null_offset = metadata_->getNullOffset(&status, i);
    columns_.push_back(std::move(column));
  }
  size_ = metadata_->getMessageLength(&status);
}

Layout OutputLayout(Status& status, api::IMessageMetadata& offered) {
  const unsigned count = offered.getCount(&status);
  std::vector<bool> fixed(count);
  Ref<api::IMetadataBuilder> builder(offered.getBuilder(&status));
  std::vector<std::string> names(count);
  for (unsigned i = 0; i < count; ++i) {
    names[i] = offered.getAlias(&status, i);
    fixed[i] = offered.getType(&status, i) == SQL_TEXT;
    if (fixed[i]) builder->setType(&status, i, SQL_VARYING);
    // As the tables keep them: the engine converts text by text and guards each with a dozen system calls, which cost
    // more than the rest of reading a list of rolls.
    if (IsTextType(offered.getType(&status, i) & ~1u)) builder->setCharSet(&status, i, kWin1252);
  }
  Layout layout(status, Ref<api::IMessageMetadata>(builder->getMetadata(&status)));
  auto& columns = const_cast<std::vector<Column>&>(layout.Columns());
  for (unsigned i = 0; i < count; ++i) {
    columns[i].name = names[i];
    columns[i].fixed_width = fixed[i];
  }
  return layout;
}

host::Value ReadValue(const Column& column, const unsigned char* row, const BlobReader& blob) {
  if (Load<std::int16_t>(row + column.null_offset) != 0) return {};
  const unsigned char* at = row + column.offset;
  switch (column.type) {
    case SQL_VARYING:
      return ReadVarying(column, at);
    case SQL_SHORT:
      return ReadInteger(Load<std::int16_t>(at), column.scale);
    case SQL_LONG:
      return ReadInteger(Load<std::int32_t>(at), column.scale);
    case SQL_INT64:
      return ReadInteger(Load<std::int64_t>(at), column.scale);
    case SQL_DOUBLE:
      return Load<double>(at);
    case SQL_FLOAT:
      return static_cast<double>(Load<float>(at));
    case SQL_BOOLEAN:
      return static_cast<int>(*at != 0);
    case SQL_TYPE_DATE:
      return ToDate(Load<ISC_DATE>(at));
    case SQL_TYPE_TIME:
      return ToTime(Load<ISC_TIME>(at));
    case SQL_TIMESTAMP: {
      const auto moment = Load<ISC_TIMESTAMP>(at);
      return ToDate(moment.timestamp_date).ToIso() + " " + ToTime(moment.timestamp_time);
    }
    case SQL_BLOB:
      return blob(Load<ISC_QUAD>(at), column);
    default:
      return {};
  }
}

unsigned TextLengthFor(const Column& parameter, const host::Value& value) {
  if (value.IsNull()) return IsTextType(parameter.type) ? parameter.length : 0;
  if (TakesNatively(parameter, value)) return 0;
  const auto size = static_cast<unsigned>(TextOf(value).size());
  const unsigned least = IsTextType(parameter.type) ? parameter.length : kShort;
  return size <= least ? least : kLongest;
}

Layout InputLayout(Status& status, api::IMessageMetadata& parameters, const std::vector<unsigned>& text_lengths) {
  Ref<api::IMetadataBuilder> builder(parameters.getBuilder(&status));
  for (unsigned i = 0; i < text_lengths.size(); ++i) {
    const unsigned type = parameters.getType(&status, i);
    if (text_lengths[i] > 0) {
      builder->setType(&status, i, SQL_VARYING + 1);
      builder->setLength(&status, i, text_lengths[i]);
      builder->setCharSet(&status, i, kUtf8);
    } else {
      builder->setType(&status, i, type + 1);
    }
  }
  return {status, Ref<api::IMessageMetadata>(builder->getMetadata(&status))};
}

void WriteValue(const Column& target, const host::Value& value, unsigned char* row, const BlobWriter& blob) {
  Store(row + target.null_offset, static_cast<std::int16_t>(value.IsNull() ? -1 : 0));
  if (value.IsNull()) return;
  unsigned char* at = row + target.offset;
  switch (target.type) {
    case SQL_VARYING:
      WriteText(TextOf(value), at);
      break;
    case SQL_SHORT:
      Store(at, static_cast<std::int16_t>(*ExactDigits(target, value)));
      break;
    case SQL_LONG:
      Store(at, static_cast<std::int32_t>(*ExactDigits(target, value)));
      break;
    case SQL_INT64:
      Store(at, *ExactDigits(target, value));
      break;
    case SQL_DOUBLE:
      Store(at, value.AsFloat());
      break;
    case SQL_FLOAT:
      Store(at, static_cast<float>(value.AsFloat()));
      break;
    case SQL_BOOLEAN:
      *at = value.AsFloat() != 0 ? 1 : 0;
      break;
    case SQL_TYPE_DATE:
      Store(at, FromDate(value.AsDate()));
      break;
    case SQL_TIMESTAMP:
      Store(at, ISC_TIMESTAMP{FromDate(value.AsDate()), 0});
      break;
    case SQL_BLOB:
      Store(at, blob(TextOf(value), target));
      break;
    default:
      Store(row + target.null_offset, static_cast<std::int16_t>(-1));
  }
}

}  // namespace app::firebird
