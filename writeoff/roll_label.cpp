#include "writeoff/roll_label.h"

#include <utility>

#include "weaving/statement.h"

namespace writeoff {

// Rolls are written off by weight, whatever the material is measured in. Every roll that ever came has a row of the
// item in stock; few of them bear its number.
void LoadFabricOfLabel(host::Host& host, std::string_view code, std::string_view colour, host::Dataset& fabric) {
  auto row = weaving::Statements(host).Open(R"(
SELECT CADCOR.DESCRICAO AS DESC_COR, MATERIAL.COMPOSICAO, MATERIAL.LARGURA, MATERIAL.GRAMATURA,
CAST('KG' AS VARCHAR(3)) AS UNIDADE,
(SELECT MAX(MAT_ITEN.BARRA) FROM {MAT_ITEN} MAT_ITEN
WHERE MAT_ITEN.BARRA > '' AND MAT_ITEN.CODIGO = :fabric AND MAT_ITEN.COR = :colour) AS BARRA
FROM {MATERIAL} MATERIAL
LEFT JOIN {CADCOR} CADCOR ON (CADCOR.COR = :colour)
WHERE MATERIAL.CODIGO = :fabric)",
                                            {{"fabric", code}, {"colour", colour}});
  fabric.LoadFrom(std::move(row));
}

}  // namespace writeoff
