// The data module: the connection and the shared datasets by name.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "app/services/shared_dataset.h"

namespace app::services {

class Tables : public host::Tabela {
 public:
  explicit Tables(firebird::Database& database) : database_(database) {}

  host::Database& IBDatabase() override { return database_; }
  void AbreTabela(std::string_view name) override;
  /// Closing what is not open does nothing.
  void FechaTabela(std::string_view name) override;
  host::SharedDataset& Dataset(std::string_view name) override;

 private:
  struct Open {
    std::unique_ptr<TableDataset> dataset;
    int count = 0;
  };
  firebird::Database& database_;
  std::map<std::string, Open, std::less<>> open_;  // by name in capitals
};

}  // namespace app::services
