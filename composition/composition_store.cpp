#include "composition/composition_store.h"

namespace composition {

CompositionStore::CompositionStore(host::Host& host)
    : funcoes_(host.GetFuncoes()), database_(host.GetTabela().IBDatabase()), statements_(host) {}

void CompositionStore::Hold(std::string_view fabric) { database_.LockRow("MATERIAL", "CODIGO", fabric); }

bool CompositionStore::Exists(std::string_view fabric) const {
  return funcoes_.Existe("COMP_MATERIAL", "MATERIAL", funcoes_.Aspas(fabric), database_);
}

std::unique_ptr<host::TTIQuery> CompositionStore::Colours(std::string_view fabric) const {
  return statements_.Open(R"(
SELECT DISTINCT CADCOR.COR, CADCOR.DESCRICAO 
FROM {MAT_ITEN} MAT_ITEN 
LEFT JOIN {CADCOR} CADCOR ON (MAT_ITEN.COR = CADCOR.COR)
WHERE MAT_ITEN.CODIGO = :fabric)",
                          {{"fabric", fabric}});
}

std::unique_ptr<host::TTIQuery> CompositionStore::Load(std::string_view fabric) const {
  return statements_.Open(R"(
SELECT COMP_MATERIAL.MATERIAL, COMP_MATERIAL.CODIGO, COMP_MATERIAL.PERC, COMP_MATERIAL.TENSAO, 
MATERIAL.DESCRICAO, COMP_MATERIAL.COR, COMP_MATERIAL.COR_I, COMP_MATERIAL.ORDEM, 
CADCOR.DESCRICAO AS DESCCOR, 
COMP_MATERIAL.LFA, COMP_MATERIAL.ROCA, COMP_MATERIAL.LARGURA, COMP_MATERIAL.GRAMATURA, 
COMP_MATERIAL.DIAMETRO, COMP_MATERIAL.FINURA, COMP_MATERIAL.KG_ROLO, MATERIAL.REPOSICAO AS CUSTO, 
COMP_MATERIAL.COMP_PONTO, COMP_MATERIAL.ALIMENTADORES, MATERIAL.NE, COMP_MATERIAL.DESPERDICIO, 
COMP_MATERIAL.RPM, 
COMP_MATERIAL.REGRA, TNG_REGRA.DESCRICAO AS DESC_REGRA 
FROM {COMP_MATERIAL} COMP_MATERIAL
 LEFT JOIN {MATERIAL} MATERIAL ON (COMP_MATERIAL.CODIGO = MATERIAL.CODIGO)
LEFT JOIN {CADCOR} CADCOR ON (COMP_MATERIAL.COR = CADCOR.COR)
LEFT JOIN {TNG_REGRA} TNG_REGRA ON (COMP_MATERIAL.REGRA = TNG_REGRA.CODIGO)
WHERE COMP_MATERIAL.MATERIAL = :fabric
AND (COMP_MATERIAL.PRODUTO = '' OR COMP_MATERIAL.PRODUTO IS NULL)
ORDER BY COMP_MATERIAL.CODIGO, COMP_MATERIAL.COR )",
                          {{"fabric", fabric}});
}

void CompositionStore::Delete(std::string_view fabric) {
  statements_.Execute(R"(
DELETE FROM {COMP_MATERIAL}
WHERE MATERIAL = :fabric
AND (PRODUTO = '' OR PRODUTO IS NULL))",
                      {{"fabric", fabric}});
}

std::unique_ptr<host::TTIQuery> CompositionStore::NewRows() const {
  return statements_.Batch(R"(
INSERT INTO {COMP_MATERIAL}(MATERIAL, CODIGO, ORDEM, LFA, ROCA, COMP_PONTO, TENSAO, LARGURA, GRAMATURA, DIAMETRO,
FINURA, KG_ROLO, ALIMENTADORES, PERC, COR, COR_I, DESPERDICIO, RPM, REGRA)
VALUES (
:MATERIAL, :CODIGO, :ORDEM, :LFA, :ROCA, :COMP_PONTO, :TENSAO, :LARGURA, :GRAMATURA, :DIAMETRO,
:FINURA, :KG_ROLO, :ALIMENTADORES, :PERC, :COR, :COR_I, :DESPERDICIO, :RPM, :REGRA
))");
}

bool CompositionStore::YarnHasColour(std::string_view yarn, std::string_view colour) const {
  return funcoes_.Existe("MAT_ITEN", "COR,CODIGO", funcoes_.Aspas(colour) + "," + funcoes_.Aspas(yarn), database_);
}

void CompositionStore::RegisterYarnColour(std::string_view yarn, std::string_view colour, std::string_view deposit) {
  statements_.Execute(R"(
INSERT INTO {MAT_ITEN} 
(CODIGO, COR, LOTE, QTDE, QTDE_R, QTD_MINIMA, DEPOSITO, PRECO_MED)
VALUES
(:yarn,:colour,'000000',0,0,0,:deposit,0))",
                      {{"yarn", yarn}, {"colour", colour}, {"deposit", deposit}});
}

std::string CompositionStore::ColoursOfYarn(std::string_view yarn) const {
  return statements_
      .Write(R"(
SELECT COR, DESCRICAO FROM (
SELECT CADCOR.COR, CADCOR.DESCRICAO 
FROM {MAT_ITEN} MAT_ITEN 
LEFT JOIN {CADCOR} CADCOR ON (MAT_ITEN.COR = CADCOR.COR)
WHERE MAT_ITEN.CODIGO = :yarn
GROUP BY CADCOR.COR, CADCOR.DESCRICAO
) AS MAT_ITEN WHERE 1 = 1 )",
             {{"yarn", yarn}})
      .Text();
}

std::string CompositionStore::ComposedColours(std::string_view fabric) const {
  return statements_
      .Write(R"(
SELECT * FROM(
SELECT DISTINCT CADCOR.COR , CADCOR.DESCRICAO
FROM {COMP_MATERIAL} COMP_MATERIAL
INNER JOIN {CADCOR} CADCOR ON (COMP_MATERIAL.COR = CADCOR.COR)
WHERE COMP_MATERIAL.MATERIAL = :fabric
) AS COMP_MATERIAL WHERE 1=1)",
             {{"fabric", fabric}})
      .Text();
}

}  // namespace composition
