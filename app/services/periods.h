// Accounting periods, reconciled or not, by area.
#pragma once

#include "app/firebird/database.h"
#include "host/host.h"

namespace app::services {

class Periods : public host::Contabil {
 public:
  explicit Periods(firebird::Database& database) : database_(database) {}
  bool PeriodoConciliado(host::Date date, std::string_view area) override;

 private:
  firebird::Database& database_;
};

}  // namespace app::services
