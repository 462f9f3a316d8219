// A lookup's offer of rows that the test gives.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "app/lookup_offer.h"
#include "host/errors.h"

namespace test {

class RowOffer : public app::LookupOffer {
 public:
  RowOffer(std::string key, std::vector<host::LookupRow> rows) : key_(std::move(key)), rows_(std::move(rows)) {
    columns_.push_back({key_, key_, 10});
    if (rows_.empty()) return;
    for (const auto& [name, value] : rows_.front()) {
      if (name != key_) columns_.push_back({name, name, 20});
    }
  }

  const std::vector<app::OfferColumn>& Columns() const override { return columns_; }

  /// By letters as they stand, unlike a database.
  std::vector<host::LookupRow> Search(std::string_view text, std::size_t skip, std::size_t count) override {
    std::vector<host::LookupRow> found;
    for (const host::LookupRow& row : rows_) {
      bool fits = false;
      for (const auto& [name, value] : row) fits = fits || value.AsText().find(text) != std::string::npos;
      if (!fits) continue;
      if (skip > 0) {
        --skip;
      } else if (found.size() < count) {
        found.push_back(row);
      }
    }
    return found;
  }

  std::optional<host::LookupRow> Find(std::string_view key) override {
    for (const host::LookupRow& row : rows_) {
      if (row.at(key_).AsText() == key) return row;
    }
    return std::nullopt;
  }

  /// By texts.
  std::optional<host::LookupRow> FindRow(const host::LookupRow& wanted) override {
    for (const host::LookupRow& row : rows_) {
      bool fits = true;
      for (const auto& [name, value] : wanted) {
        if (!row.contains(name)) throw host::InputError("A pesquisa não tem a coluna \"" + name + "\".");
        fits = fits && row.at(name).AsText() == value.AsText();
      }
      if (fits) return row;
    }
    return std::nullopt;
  }

 private:
  std::string key_;
  std::vector<host::LookupRow> rows_;
  std::vector<app::OfferColumn> columns_;
};

}  // namespace test
