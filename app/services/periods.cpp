#include "app/services/periods.h"

namespace app::services {

bool Periods::PeriodoConciliado(host::Date date, std::string_view area) {
  constexpr std::string_view sql = R"(SELECT FIRST 1 1 FROM TEC_PERIODO
WHERE AREA = ? AND CONCILIADO = 'S' AND DT_INICIO <= ? AND DT_FIM >= ?)";
  return !database_.Query(sql, {area, date, date})->IsEmpty();
}

}  // namespace app::services
