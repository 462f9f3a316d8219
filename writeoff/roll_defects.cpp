#include "writeoff/roll_defects.h"

#include <utility>

#include "weaving/statement.h"

namespace writeoff {

void LoadDefects(host::Host& host, std::string_view order, host::Dataset& defects) {
  auto rows = weaving::Statements(host).Open(R"(
SELECT DEF_MOV.NUMERO, DEF_MOV.ROLO, DEF_MOV.CODIGO, DEFEITO.DESCRICAO
FROM {TECELB} TECELB
INNER JOIN {DEF_MOV} DEF_MOV ON ((TECELB.NUMERO = DEF_MOV.NUMERO) AND (TECELB.ORDEM = DEF_MOV.ROLO))
LEFT JOIN {DEFEITO} DEFEITO ON (DEFEITO.CODIGO = DEF_MOV.CODIGO)
WHERE TECELB.NUMERO = :order
AND DEF_MOV.TIPO = 'T')",
                                             {{"order", order}});
  defects.LoadFrom(std::move(rows));
}

}  // namespace writeoff
