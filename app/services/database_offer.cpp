#include "app/services/database_offer.h"

#include <utility>

#include "host/text.h"

namespace app::services {
namespace {

std::string Source(const host::TPesquisa& lookup) {
  if (!lookup.Statement().empty()) return "(" + lookup.Statement() + ")";
  if (host::Trim(lookup.FilterText()).empty()) return "{" + lookup.Table() + "}";
  return "(SELECT * FROM {" + lookup.Table() + "} WHERE (" + lookup.FilterText() + "))";
}

class DatabaseOffer : public LookupOffer {
 public:
  DatabaseOffer(firebird::Database& database, const host::TPesquisa& lookup)
      : database_(database), source_(Source(lookup)), key_(lookup.KeyColumn()) {
    columns_.push_back({host::UpperAscii(key_), key_, 15});
  }

  const std::vector<OfferColumn>& Columns() const override { return columns_; }

  std::vector<host::LookupRow> Search(std::string_view text, std::size_t skip, std::size_t count) override {
    return Read("SELECT FIRST " + std::to_string(count) + " SKIP " + std::to_string(skip) + " * FROM " + source_ +
                    " OFERTA WHERE " + key_ + " CONTAINING ? ORDER BY " + key_,
                text);
  }

  std::optional<host::LookupRow> Find(std::string_view key) override {
    auto rows = Read("SELECT FIRST 1 * FROM " + source_ + " OFERTA WHERE " + key_ + " = ?", key);
    if (rows.empty()) return std::nullopt;
    return std::move(rows.front());
  }

 private:
  std::vector<host::LookupRow> Read(const std::string& sql, std::string_view parameter) {
    const auto query = database_.Query(sql, {parameter});
    std::vector<host::LookupRow> rows;
    for (; !query->Eof(); query->Next()) {
      host::LookupRow& row = rows.emplace_back();
      for (std::size_t i = 0; i < query->FieldCount(); ++i) {
        const std::string name = query->FieldName(i);
        row[host::UpperAscii(name)] = query->FieldByName(name);
      }
    }
    return rows;
  }

  firebird::Database& database_;
  std::string source_;
  std::string key_;
  std::vector<OfferColumn> columns_;
};

}  // namespace

std::unique_ptr<LookupOffer> NewLookupOffer(firebird::Database& database, const host::TPesquisa& lookup) {
  return std::make_unique<DatabaseOffer>(database, lookup);
}

}  // namespace app::services
