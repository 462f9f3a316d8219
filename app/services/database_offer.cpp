#include "app/services/database_offer.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <utility>

#include "app/firebird/storable_text.h"
#include "app/services/offered_columns.h"
#include "app/tables/descriptions.h"
#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::services {
namespace {

using Values = std::vector<host::Value>;

constexpr std::size_t kLongestText = 255;
// Longer than any column that is searched, so that a long text is simply not found.
constexpr std::string_view kText = "CAST(? AS VARCHAR(255) CHARACTER SET WIN1252)";

bool CanStandInARow(std::string_view text) {
  return host::Length(text) <= kLongestText && !firebird::WhyNotStorable(text).has_value();
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
    for (const std::string& key : lookup.KeyColumns()) keys_.push_back(host::UpperAscii(key));
    if (lookup.Statement().empty()) {
      OfferTable(lookup);
    } else {
      OfferStatement(lookup);
    }
    for (const OfferedColumn& column : offered_.columns) columns_.push_back(column.shown);
    PutInOrder();
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
    return Read("SELECT FIRST ? SKIP ? " + shown_ + " FROM " + source_ + Where(condition) + " ORDER BY " + order_,
                values);
  }

  std::optional<host::LookupRow> Find(std::string_view key) override {
    if (!CanStandInARow(key)) return std::nullopt;
    return First(KeyIs(), {key});
  }

  std::optional<host::LookupRow> FindRow(const host::LookupRow& wanted) override {
    std::string condition;
    Values values;
    for (const auto& [name, value] : wanted) {
      const auto term = TermOf(ColumnOf(name), value);
      if (!term) return std::nullopt;
      condition = Both(condition, term->condition);
      values.insert(values.end(), term->values.begin(), term->values.end());
    }
    return First(condition, values);
  }

  std::optional<host::LookupRow> Whole(const host::LookupRow& shown) override {
    const auto key = shown.find(key_);
    if (key == shown.end()) return std::nullopt;
    if (const auto primary_key = PrimaryKeyOf(shown)) return FindRow(*primary_key);
    std::string condition = KeyIs();
    Values values = {key->second};
    for (const OfferedColumn& column : offered_.columns) {
      const auto value = shown.find(column.shown.name);
      const bool told_apart = column.kind == StoredKind::kText && column.shown.name != key_ && value != shown.end() &&
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
    // A row that was shown is found again by these, whether a person sees them or not.
    for (const std::string& key : offered_.primary_key) {
      if (!IsShown(key)) shown_ += ", " + key;
    }
  }

  bool IsShown(const std::string& name) const {
    return std::any_of(offered_.columns.begin(), offered_.columns.end(),
                       [&](const OfferedColumn& column) { return column.shown.name == name; });
  }

  // Rows of one key come in the order of the table's primary key, or a page could repeat rows of the page before and
  // leave others out. What has no primary key is told apart by all that is shown of it.
  void PutInOrder() {
    std::vector<std::string> by;
    const auto add = [&by](const std::string& column) {
      if (std::find(by.begin(), by.end(), column) == by.end()) by.push_back(column);
    };
    for (const std::string& key : keys_) add(key);
    for (const std::string& key : offered_.primary_key) add(key);
    if (offered_.primary_key.empty()) {
      for (const OfferedColumn& column : offered_.columns) add(column.shown.name);
    }
    for (const std::string& column : by) {
      order_ += (order_.empty() ? "" : ", ") + column;
      if (column == key_ && offered_.newest_first) order_ += " DESCENDING";
    }
    one_row_per_key_ = by.size() == 1;
  }

  /// Nothing when the table has none, or the row does not hold all of it.
  std::optional<host::LookupRow> PrimaryKeyOf(const host::LookupRow& shown) const {
    host::LookupRow key;
    for (const std::string& column : offered_.primary_key) {
      const auto value = shown.find(column);
      if (value == shown.end()) return std::nullopt;
      key.insert(*value);
    }
    if (key.empty()) return std::nullopt;
    return key;
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
      column.kind = value.IsNumber() ? StoredKind::kNumber : value.IsDate() ? StoredKind::kDate : StoredKind::kText;
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
      const std::string plain =
          column.kind == StoredKind::kText && of_table_ ? Expression(column) : AsText(Expression(column));
      condition += (i == 0 ? "" : " OR ") + plain + " COLLATE WIN_PTBR CONTAINING " + std::string(kText);
    }
    return condition;
  }

  std::string KeyIs() const {
    const bool text = offered_.columns.empty() || offered_.columns.front().kind == StoredKind::kText;
    return (text ? key_ : AsText(key_)) + " = " + std::string(kText);
  }

  /// A column that rows can be found by: one that is shown, or any other of the table.
  OfferedColumn ColumnOf(const std::string& column) const {
    const std::string name = host::UpperAscii(column);
    for (const OfferedColumn& each : offered_.columns) {
      if (each.shown.name == name) return each;
    }
    for (const StoredColumn& each : offered_.stored) {
      if (each.name == name) return {{.name = name, .caption = name}, {}, each.kind};
    }
    throw host::InputError("A pesquisa não tem a coluna \"" + column + "\".");
  }

  struct Term {
    std::string condition;
    Values values;
  };

  /// The column holds this value; nothing for a value that no row can have there.
  static std::optional<Term> TermOf(const OfferedColumn& column, const host::Value& value) {
    const std::string expression = Expression(column);
    const std::string text = value.AsText();
    if (column.kind == StoredKind::kText) {
      if (!CanStandInARow(text)) return std::nullopt;
      if (text.empty()) return Term{"(" + expression + " IS NULL OR " + expression + " = '')", {}};
      // The column itself finds the row by its index, but a description's collation takes letters for equal.
      const std::string equals = " = " + std::string(kText);
      return Term{Both(expression + equals, AsText(expression) + equals), {text, text}};
    }
    if (host::Trim(text).empty()) return Term{expression + " IS NULL", {}};
    if (column.kind == StoredKind::kNumber) {
      const auto number = value.IsNumber() ? value.AsFloat() : host::ParseTyped(text);
      if (!number) return std::nullopt;
      return Term{expression + " = CAST(? AS DOUBLE PRECISION)", {*number}};
    }
    const auto iso = host::Date::FromIso(text);
    const auto date = iso ? iso : host::Date::FromDisplay(text);
    if (!date) return std::nullopt;
    return Term{expression + " = CAST(? AS DATE)", {*date}};
  }

  static std::string AsText(const std::string& expression) {
    return "CAST(" + expression + " AS VARCHAR(255) CHARACTER SET WIN1252)";
  }

  static std::string Where(const std::string& condition) { return condition.empty() ? "" : " WHERE " + condition; }

  std::optional<host::LookupRow> First(const std::string& condition, const Values& values) {
    const std::string order = one_row_per_key_ ? "" : " ORDER BY " + order_;
    auto rows = Read("SELECT FIRST 1 " + whole_ + " FROM " + source_ + Where(Both(condition, filter_)) + order, values);
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
  std::string key_;  // the first of the keys
  std::vector<std::string> keys_;
  OfferedTable offered_;
  std::vector<OfferColumn> columns_;
  std::string source_;  // table, or statement in brackets
  bool of_table_ = false;
  std::string filter_;  // in brackets; empty for none
  std::string order_;   // columns of ORDER BY
  bool one_row_per_key_ = false;
  std::string shown_;  // select lists
  std::string whole_;
};

}  // namespace

std::unique_ptr<LookupOffer> NewLookupOffer(firebird::Database& database, const host::TPesquisa& lookup) {
  return std::make_unique<DatabaseOffer>(database, lookup);
}

}  // namespace app::services
