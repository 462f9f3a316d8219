#include "orders/order_store.h"

#include "weaving/reservations.h"

namespace orders {

using weaving::Sql;

OrderStore::OrderStore(host::Host& host)
    : funcoes_(host.GetFuncoes()), database_(host.GetTabela().IBDatabase()), statements_(host) {}

bool OrderStore::Exists(std::string_view number) const {
  return funcoes_.Existe("TECEL", "NUMERO", funcoes_.Aspas(number), database_);
}

bool OrderStore::ItemExists(std::string_view number, std::string_view code) const {
  return funcoes_.Existe("TECEL_ITEN", "NUMERO,CODIGO", funcoes_.Aspas(number) + "," + funcoes_.Aspas(code), database_);
}

bool OrderStore::ItemExists(std::string_view number, std::string_view code, std::string_view colour) const {
  return funcoes_.Existe("TECEL_ITEN", "NUMERO,CODIGO,COR",
                         funcoes_.Aspas(number) + "," + funcoes_.Aspas(code) + "," + funcoes_.Aspas(colour), database_);
}

std::unique_ptr<host::TTIQuery> OrderStore::Load(std::string_view number) const {
  return statements_.Open(R"(
SELECT TECEL.DEPOSITO, TECEL.DT_EMISSAO, TECEL.DT_INICIO, TECEL.FICHA, TECEL.FLUXO, TECEL.MALHARIA,
TECEL.MAQUINA, TECEL.NUMERO, CAST(TECEL.OBSERVACAO AS VARCHAR(4000)) AS OBSERVACAO, TECEL.PERIODO,
TECEL.RPM, TECEL.SITUACAO, TECEL.TPONTO, CLIENTE.NOME,
TECEL_ITEN.CODIGO, TECEL_ITEN.PEDIDO, TECEL_ITEN.QTDE, TECEL_ITEN.QTDE_B, TECEL_ITEN.COR,
TECEL_ITEN.BAIXADA, TECEL_ITEN.CUSTO, TECEL_ITEN.CICLOS, TECEL_ITEN.OBS,
MATERIAL.DESCRICAO, MATERIAL.DESCRICAO2, MATERIAL.UNIDADE, MATERIAL.PESO, MATERIAL.NE,
MATERIAL.CONCENTRACAO, MATERIAL.GRAMATURA AS GRAMATURA_MAT, MATERIAL.LARGURA AS LARGURA_MAT,
MATERIAL.COMPOSICAO, MATERIAL.OBSERVACAO AS OBS_MAT, COR.DESCRICAO AS DESCCOR,
DEPOSITO.DESCRICAO AS DESC_DEP_ENT,
COMP.LARGURA, COMP.GRAMATURA, COMP.KG_ROLO, COMP.ALIMENTADORES, COMP.DIAMETRO, COMP.FINURA
FROM {TECEL} TECEL
LEFT JOIN {TECEL_ITEN} TECEL_ITEN ON (TECEL.NUMERO = TECEL_ITEN.NUMERO)
LEFT JOIN {MATERIAL} MATERIAL ON (TECEL_ITEN.CODIGO = MATERIAL.CODIGO)
LEFT JOIN {ENTIDADE} CLIENTE ON (TECEL.MALHARIA = CLIENTE.CODCLI)
LEFT JOIN {CADCOR} COR ON (TECEL_ITEN.COR = COR.COR)
LEFT JOIN {DEPOSITO} DEPOSITO ON (TECEL.DEPOSITO = DEPOSITO.CODIGO)
LEFT JOIN (SELECT DISTINCT COMP_MATERIAL.MATERIAL, COMP_MATERIAL.COR, COMP_MATERIAL.LARGURA,
COMP_MATERIAL.GRAMATURA, COMP_MATERIAL.KG_ROLO, COMP_MATERIAL.ALIMENTADORES,
COMP_MATERIAL.DIAMETRO, COMP_MATERIAL.FINURA
FROM {COMP_MATERIAL} COMP_MATERIAL
) AS COMP ON (COMP.MATERIAL = TECEL_ITEN.CODIGO AND COMP.COR = TECEL_ITEN.COR)
WHERE TECEL.NUMERO = :number)",
                          {{"number", number}});
}

std::unique_ptr<host::TTIQuery> OrderStore::Rows(std::string_view number) const {
  return statements_.Open(R"(
SELECT TECEL.DEPOSITO, TECEL.DT_EMISSAO, TECEL.DT_INICIO, TECEL.FICHA, TECEL.FLUXO, TECEL.MALHARIA,
TECEL.MAQUINA, CAST(TECEL.OBSERVACAO AS VARCHAR(4000)) AS OBSERVACAO, TECEL.PERIODO,
TECEL.RPM, TECEL.SITUACAO, TECEL.TPONTO,
TECEL_ITEN.CODIGO, TECEL_ITEN.PEDIDO, TECEL_ITEN.QTDE, TECEL_ITEN.QTDE_B, TECEL_ITEN.COR,
TECEL_ITEN.BAIXADA, TECEL_ITEN.CUSTO, TECEL_ITEN.CICLOS, TECEL_ITEN.OBS
FROM {TECEL} TECEL
LEFT JOIN {TECEL_ITEN} TECEL_ITEN ON (TECEL.NUMERO = TECEL_ITEN.NUMERO)
WHERE TECEL.NUMERO = :number)",
                          {{"number", number}});
}

std::unique_ptr<host::TTIQuery> OrderStore::Reservations(std::string_view number) const {
  return statements_.Open(R"(
SELECT CODIGO, COR, DEPOSITO, LOTE, QTDE, QTDE_B, NOME, OBS, TIPO
FROM {MAT_RESERVA}
WHERE NUMERO = :number
AND :kind)",
                          {{"number", number}, {"kind", weaving::YarnReservations()}});
}

double OrderStore::WrittenOff(std::string_view number, std::string_view code, std::string_view colour) const {
  const auto sum = statements_.Open(R"(
SELECT SUM(QTDE) QTDE_B
FROM {TECELB}
WHERE NUMERO = :number
AND CODIGO = :code
AND COR = :colour)",
                                    {{"number", number}, {"code", code}, {"colour", colour}});
  return sum->FieldByName("QTDE_B").AsFloat();
}

std::vector<std::pair<std::string, std::string>> OrderStore::WrittenOffItems(std::string_view number) const {
  const auto rows = statements_.Open(R"(
SELECT CODIGO, COR
FROM {TECELB}
WHERE NUMERO = :number
GROUP BY CODIGO, COR
HAVING SUM(QTDE) > 0)",
                                     {{"number", number}});
  std::vector<std::pair<std::string, std::string>> items;
  for (; !rows->Eof(); rows->Next()) {
    items.emplace_back(rows->FieldByName("CODIGO").AsText(), rows->FieldByName("COR").AsText());
  }
  return items;
}

void OrderStore::Replace(const OrderHeader& header) {
  std::vector<Sql> statements = HeaderAndItemsGone(header.number);
  statements.push_back(NewHeader(header));
  statements_.ExecuteTogether(statements);
}

void OrderStore::InsertItem(std::string_view number, const OrderItem& item) {
  statements_.Execute(NewItem(number, item));
}

void OrderStore::Insert(const OrderHeader& header, const std::vector<OrderItem>& items) {
  std::vector<Sql> statements = {NewHeader(header)};
  for (const OrderItem& item : items) statements.push_back(NewItem(header.number, item));
  statements_.ExecuteTogether(statements);
}

void OrderStore::Delete(std::string_view number) {
  std::vector<Sql> statements = HeaderAndItemsGone(number);
  statements.push_back(statements_.Write(R"(
DELETE FROM {MAT_RESERVA}
WHERE NUMERO = :number
AND :kind)",
                                         {{"number", number}, {"kind", weaving::YarnReservations()}}));
  statements.push_back(statements_.Write(R"(
DELETE FROM {PROG_OF}
WHERE NUM_DOC = :number
AND TIPO = 'M')",
                                         {{"number", number}}));
  statements_.ExecuteTogether(statements);
}

std::vector<Sql> OrderStore::HeaderAndItemsGone(std::string_view number) const {
  return {statements_.Write("DELETE FROM {TECEL}\nWHERE NUMERO = :number", {{"number", number}}),
          statements_.Write("DELETE FROM {TECEL_ITEN}\nWHERE NUMERO = :number", {{"number", number}})};
}

// State "A", whatever it was before.
Sql OrderStore::NewHeader(const OrderHeader& header) const {
  return statements_.Write(R"(
INSERT INTO {TECEL}
(NUMERO,MALHARIA,PERIODO,OBSERVACAO,DT_INICIO,FICHA,MAQUINA,FLUXO,RPM,TPONTO,SITUACAO,DEPOSITO)
VALUES
(:number,
:mill,
:delivery_term,
:remarks,
:start,
:sheet,
:machine,
:flow,
:rpm,
:stitch_size,
'A',
:warehouse))",
                           {{"number", header.number},
                            {"mill", header.mill},
                            {"delivery_term", header.delivery_term},
                            {"remarks", header.remarks},
                            {"start", header.start},
                            {"sheet", header.sheet},
                            {"machine", header.machine},
                            {"flow", header.flow},
                            {"rpm", header.rpm},
                            {"stitch_size", header.stitch_size},
                            {"warehouse", header.warehouse}});
}

Sql OrderStore::NewItem(std::string_view number, const OrderItem& item) const {
  return statements_.Write(R"(
INSERT INTO {TECEL_ITEN}
(NUMERO,CODIGO,COR,PEDIDO,CUSTO,QTDE,BAIXADA,QTDE_B,CICLOS,OBS)
VALUES
(:number,
:code,
:colour,
:sales_order,
:cost,
:quantity,
:closed,
:written_off,
:cycles,
:remark))",
                           {{"number", number},
                            {"code", item.code},
                            {"colour", item.colour},
                            {"sales_order", item.sales_order},
                            {"cost", item.cost},
                            {"quantity", item.quantity},
                            {"closed", item.closed},
                            {"written_off", item.written_off},
                            {"cycles", item.cycles},
                            {"remark", item.remark}});
}

}  // namespace orders
