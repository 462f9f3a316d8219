#include "app/services/database_offer.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <utility>

#include "app/services/offered_columns.h"
#include "app/services/storable_text.h"
#include "app/tables/descriptions.h"
#include "host/text.h"

namespace app::services {
namespace {

using Values = std::vector<host::Value>;

constexpr std::size_t kLongestText = 255;
// Longer than any column that is searched, so that a long text is simply not found.
constexpr std::string_view kText = "CAST(? AS VARCHAR(255) CHARACTER SET WIN1252)";

bool CanStandInARow(std::string_view text) {
  return host::Length(text) <= kLongestText && !WhyNotStorable(text).has_value();
}

std::vector<std::string> Words(std::string_view text) {
  std::istringstream stream{std::string(text)};
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(std::move(word));
  return words;
}

std::string Both(const std::string& left, const std::string& right) {
  return left.empty() || right.empty() ? left + right : left + " AND " + right;
}

class DatabaseOffer : public LookupOffer {
 public:
  DatabaseOffer(firebird::Database& database, const host::TPesquisa& lookup)
      : database_(database), key_(host::UpperAscii(lookup.KeyColumn())) {
    if (lookup.Statement().empty()) {
      OfferTable(lookup);
    } else {
      OfferStatement(lookup);
    }
    for (const OfferedColumn& column : offered_.columns) columns_.push_back(column.shown);
  }

  const std::vector<OfferColumn>& Columns() const override { return columns_; }

  std::vector<host::LookupRow> Search(std::string_view text, std::size_t skip, std::size_t count) override {
    if (!CanStandInARow(text)) return {};
    Values values = {static_cast<std::int64_t>(count), static_cast<std::int64_t>(skip)};
    std::string wanted;
    for (const std::string& word : Words(text)) {
      wanted = Both(wanted, "(" + Contains() + ")");
      values.insert(values.end(), std::min<std::size_t>(offered_.columns.size(), kSearched), word);
    }
    // The words come before the filter: they cost less than a filter that looks into another table for every row.
    const std::string condition = Both(wanted, filter_);
    return Read("SELECT FIRST ? SKIP ? " + shown_ + " FROM " + source_ + Where(condition) + " ORDER BY " + key_ +
                    (offered_.newest_first ? " DESCENDING" : ""),
                values);
  }

  std::optional<host::LookupRow> Find(std::string_view key) override {
    if (!CanStandInARow(key)) return std::nullopt;
    return First(KeyIs(), {key});
  }

  std::optional<host::LookupRow> Whole(const host::LookupRow& shown) override {
    const auto key = shown.find(key_);
    if (key == shown.end()) return std::nullopt;
    std::string condition = KeyIs();
    Values values = {key->second};
    for (const OfferedColumn& column : offered_.columns) {
      const auto value = shown.find(column.shown.name);
      const bool told_apart = column.text && column.shown.name != key_ && value != shown.end() &&
                              host::Length(value->second.AsText()) <= kLongestText;
      if (!told_apart) continue;
      condition += " AND " + Expression(column) + " IS NOT DISTINCT FROM " + std::string(kText);
      values.push_back(value->second);
    }
    if (auto row = First(condition, values)) return row;
    return Find(key->second.AsText());  // another station changed it since it was shown
  }

 private:
  static constexpr std::size_t kSearched = 2;  // the key and what the record is called

  void OfferTable(const host::TPesquisa& lookup) {
    const std::string table = "{" + lookup.Table() + "}";
    offered_ = OfferedOf(database_, lookup.Table(), key_);
    source_ = table;
    of_table_ = true;
    if (!host::Trim(lookup.FilterText()).empty()) filter_ = "(" + lookup.FilterText() + ")";
    whole_ = table + ".*";
    for (const OfferedColumn& column : offered_.columns) {
      const std::string name = column.expression.empty() ? "" : " AS " + column.shown.name;
      shown_ += (shown_.empty() ? "" : ", ") + Expression(column) + name;
      if (!name.empty()) whole_ += ", " + Expression(column) + name;
    }
    if (shown_.empty()) shown_ = "*";  // there is no such table, which the engine will say
  }

  // Only a row tells of what kind a statement's columns are.
  void OfferStatement(const host::TPesquisa& lookup) {
    source_ = "(" + lookup.Statement() + ") OFERTA";
    shown_ = whole_ = "*";
    const auto query = database_.Query("SELECT FIRST 1 * FROM " + source_, {});
    for (std::size_t i = 0; i < query->FieldCount(); ++i) {
      OfferedColumn column;
      column.shown.name = query->FieldName(i);
      const std::string_view caption = tables::CaptionOf(lookup.Table(), column.shown.name);
      column.shown.caption = caption.empty() ? column.shown.name : caption;
      const host::Value& value = query->FieldByName(column.shown.name);
      column.text = value.IsNull() || value.IsText();
      if (value.IsNumber()) {
        column.shown.align = host::Align::kRight;
        column.shown.format = "0.######";
      }
      const bool first = host::SameName(column.shown.name, key_);
      offered_.columns.insert(first ? offered_.columns.begin() : offered_.columns.end(), std::move(column));
    }
  }

  static std::string Expression(const OfferedColumn& column) {
    return column.expression.empty() ? column.shown.name : column.expression;
  }

  // Codes are kept as they were typed; only here they are compared as descriptions are.
  std::string Contains() const {
    std::string condition;
    for (std::size_t i = 0; i < offered_.columns.size() && i < kSearched; ++i) {
      const OfferedColumn& column = offered_.columns[i];
      const std::string plain = column.text && of_table_ ? Expression(column) : AsText(Expression(column));
      condition += (i == 0 ? "" : " OR ") + plain + " COLLATE WIN_PTBR CONTAINING " + std::string(kText);
    }
    return condition;
  }

  std::string KeyIs() const {
    const bool text = offered_.columns.empty() || offered_.columns.front().text;
    return (text ? key_ : AsText(key_)) + " = " + std::string(kText);
  }

  static std::string AsText(const std::string& expression) {
    return "CAST(" + expression + " AS VARCHAR(255) CHARACTER SET WIN1252)";
  }

  static std::string Where(const std::string& condition) { return condition.empty() ? "" : " WHERE " + condition; }

  std::optional<host::LookupRow> First(const std::string& condition, const Values& values) {
    auto rows = Read("SELECT FIRST 1 " + whole_ + " FROM " + source_ + Where(Both(condition, filter_)), values);
    if (rows.empty()) return std::nullopt;
    return std::move(rows.front());
  }

  std::vector<host::LookupRow> Read(const std::string& sql, const Values& values) {
    const auto query = database_.Query(sql, values);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < query->FieldCount(); ++i) names.push_back(query->FieldName(i));
    std::vector<host::LookupRow> rows;
    for (; !query->Eof(); query->Next()) {
      host::LookupRow& row = rows.emplace_back();
      for (const std::string& name : names) row[host::UpperAscii(name)] = query->FieldByName(name);
    }
    return rows;
  }

  firebird::Database& database_;
  std::string key_;
  OfferedTable offered_;
  std::vector<OfferColumn> columns_;
  std::string source_;  // table, or statement in brackets
  bool of_table_ = false;
  std::string filter_;  // in brackets; empty for none
  std::string shown_;   // select lists
  std::string whole_;
};

}  // namespace

std::unique_ptr<LookupOffer> NewLookupOffer(firebird::Database& database, const host::TPesquisa& lookup) {
  return std::make_unique<DatabaseOffer>(database, lookup);
}

}  // namespace app::services
