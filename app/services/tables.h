// The data module: the connection and the shared datasets by name.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "app/services/shared_dataset.h"

namespace app::services {

class Tables : public host::Tabela {
 public:
  explicit Tables(firebird::Database& database) : database_(database) {}

  host::Database& IBDatabase() override { return database_; }
  void AbreTabela(std::string_view name, const host::Screen& opener) override;
  /// Closing what is not open does nothing.
  void FechaTabela(std::string_view name, const host::Screen& opener) override;
  host::SharedDataset& Dataset(std::string_view name, const host::Screen& opener) override;
  /// Closes what this screen left open: the next screen may come to lie where it lay, and is not to find its row,
  /// filter and edit.
  void ScreenGone(const host::Screen& opener);

  /// Datasets that are open, of all screens together: none when every screen closed what it opened.
  std::size_t OpenCount() const { return open_.size(); }

 private:
  struct Open {
    std::unique_ptr<TableDataset> dataset;
    int count = 0;
  };
  using Key = std::pair<const host::Screen*, std::string>;  // the opener, the name in capitals

  firebird::Database& database_;
  std::map<Key, Open> open_;
};

}  // namespace app::services
