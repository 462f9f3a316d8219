#include "orders/order_store.h"

namespace orders {

OrderStore::OrderStore(host::Host& host)
    : funcoes_(host.GetFuncoes()), database_(host.GetTabela().IBDatabase()), words_(funcoes_) {}

bool OrderStore::Exists(std::string_view number) const {
  return funcoes_.Existe("TECEL", "NUMERO", words_.Text(number), database_);
}

bool OrderStore::ItemExists(std::string_view number, std::string_view code) const {
  return funcoes_.Existe("TECEL_ITEN", "NUMERO,CODIGO", words_.Text(number) + "," + words_.Text(code), database_);
}

bool OrderStore::ItemExists(std::string_view number, std::string_view code, std::string_view colour) const {
  return funcoes_.Existe("TECEL_ITEN", "NUMERO,CODIGO,COR",
                         words_.Text(number) + "," + words_.Text(code) + "," + words_.Text(colour), database_);
}

std::unique_ptr<host::TTIQuery> OrderStore::Load(std::string_view number) const {
  const Words& w = words_;
  return OpenQuery(
      database_, {"SELECT TECEL.DEPOSITO, TECEL.DT_EMISSAO, TECEL.DT_INICIO, TECEL.FICHA, TECEL.FLUXO, TECEL.MALHARIA,",
                  "TECEL.MAQUINA, TECEL.NUMERO, CAST(TECEL.OBSERVACAO AS VARCHAR(4000)) AS OBSERVACAO, TECEL.PERIODO,",
                  "TECEL.RPM, TECEL.SITUACAO, TECEL.TPONTO, CLIENTE.NOME,",
                  "TECEL_ITEN.CODIGO, TECEL_ITEN.PEDIDO, TECEL_ITEN.QTDE, TECEL_ITEN.QTDE_B, TECEL_ITEN.COR,",
                  "TECEL_ITEN.BAIXADA, TECEL_ITEN.CUSTO, TECEL_ITEN.CICLOS, TECEL_ITEN.OBS,",
                  "MATERIAL.DESCRICAO, MATERIAL.DESCRICAO2, MATERIAL.UNIDADE, MATERIAL.PESO, MATERIAL.NE,",
                  "MATERIAL.CONCENTRACAO, MATERIAL.GRAMATURA AS GRAMATURA_MAT, MATERIAL.LARGURA AS LARGURA_MAT,",
                  "MATERIAL.COMPOSICAO, MATERIAL.OBSERVACAO AS OBS_MAT, COR.DESCRICAO AS DESCCOR,",
                  "DEPOSITO.DESCRICAO AS DESC_DEP_ENT,",
                  "COMP.LARGURA, COMP.GRAMATURA, COMP.KG_ROLO, COMP.ALIMENTADORES, COMP.DIAMETRO, COMP.FINURA",
                  "FROM " + w.Named("TECEL"),
                  "LEFT JOIN " + w.Named("TECEL_ITEN") + " ON (TECEL.NUMERO = TECEL_ITEN.NUMERO)",
                  "LEFT JOIN " + w.Named("MATERIAL") + " ON (TECEL_ITEN.CODIGO = MATERIAL.CODIGO)",
                  "LEFT JOIN " + w.Table("ENTIDADE") + " CLIENTE ON (TECEL.MALHARIA = CLIENTE.CODCLI)",
                  "LEFT JOIN " + w.Table("CADCOR") + " COR ON (TECEL_ITEN.COR = COR.COR)",
                  "LEFT JOIN " + w.Named("DEPOSITO") + " ON (TECEL.DEPOSITO = DEPOSITO.CODIGO)",
                  "LEFT JOIN (SELECT DISTINCT COMP_MATERIAL.MATERIAL, COMP_MATERIAL.COR, COMP_MATERIAL.LARGURA,",
                  "COMP_MATERIAL.GRAMATURA, COMP_MATERIAL.KG_ROLO, COMP_MATERIAL.ALIMENTADORES,",
                  "COMP_MATERIAL.DIAMETRO, COMP_MATERIAL.FINURA",
                  "FROM " + w.Named("COMP_MATERIAL"),
                  ") AS COMP ON (COMP.MATERIAL = TECEL_ITEN.CODIGO AND COMP.COR = TECEL_ITEN.COR)",
                  "WHERE TECEL.NUMERO = " + w.Text(number)});
}

std::unique_ptr<host::TTIQuery> OrderStore::Rows(std::string_view number) const {
  const Words& w = words_;
  return OpenQuery(
      database_, {"SELECT TECEL.DEPOSITO, TECEL.DT_EMISSAO, TECEL.DT_INICIO, TECEL.FICHA, TECEL.FLUXO, TECEL.MALHARIA,",
                  "TECEL.MAQUINA, CAST(TECEL.OBSERVACAO AS VARCHAR(4000)) AS OBSERVACAO, TECEL.PERIODO,",
                  "TECEL.RPM, TECEL.SITUACAO, TECEL.TPONTO,",
                  "TECEL_ITEN.CODIGO, TECEL_ITEN.PEDIDO, TECEL_ITEN.QTDE, TECEL_ITEN.QTDE_B, TECEL_ITEN.COR,",
                  "TECEL_ITEN.BAIXADA, TECEL_ITEN.CUSTO, TECEL_ITEN.CICLOS, TECEL_ITEN.OBS", "FROM " + w.Named("TECEL"),
                  "LEFT JOIN " + w.Named("TECEL_ITEN") + " ON (TECEL.NUMERO = TECEL_ITEN.NUMERO)",
                  "WHERE TECEL.NUMERO = " + w.Text(number)});
}

std::unique_ptr<host::TTIQuery> OrderStore::Reservations(std::string_view number) const {
  return OpenQuery(database_, {"SELECT CODIGO, COR, DEPOSITO, LOTE, QTDE, QTDE_B, NOME, OBS, TIPO",
                               "FROM " + words_.Table("MAT_RESERVA"), "WHERE NUMERO = " + words_.Text(number),
                               words_.ReservationKind()});
}

double OrderStore::WrittenOff(std::string_view number, std::string_view code, std::string_view colour) const {
  const auto sum = OpenQuery(
      database_, {"SELECT SUM(QTDE) QTDE_B", "FROM " + words_.Table("TECELB"), "WHERE NUMERO = " + words_.Text(number),
                  "AND CODIGO = " + words_.Text(code), "AND COR = " + words_.Text(colour)});
  return sum->FieldByName("QTDE_B").AsFloat();
}

std::vector<std::pair<std::string, std::string>> OrderStore::WrittenOffItems(std::string_view number) const {
  const auto rows =
      OpenQuery(database_, {"SELECT CODIGO, COR", "FROM " + words_.Table("TECELB"),
                            "WHERE NUMERO = " + words_.Text(number), "GROUP BY CODIGO, COR", "HAVING SUM(QTDE) > 0"});
  std::vector<std::pair<std::string, std::string>> items;
  for (; !rows->Eof(); rows->Next()) {
    items.emplace_back(rows->FieldByName("CODIGO").AsText(), rows->FieldByName("COR").AsText());
  }
  return items;
}

void OrderStore::InsertHeader(const OrderHeader& header) {
  const Words& w = words_;
  Execute(database_,
          {"INSERT INTO " + w.Table("TECEL"),
           "(NUMERO,MALHARIA,PERIODO,OBSERVACAO,DT_INICIO,FICHA,MAQUINA,FLUXO,RPM,TPONTO,SITUACAO,DEPOSITO)", "VALUES",
           "(" + w.Text(header.number) + ",", w.Text(header.mill) + ",", w.Text(header.delivery_term) + ",",
           w.Text(header.remarks) + ",", w.Day(header.start) + ",", w.Text(header.sheet) + ",",
           w.Text(header.machine) + ",", w.Text(header.flow) + ",", w.Number(header.rpm) + ",",
           w.Number(header.stitch_size) + ",", w.Text("A") + ",", w.Text(header.warehouse) + ")"});
}

void OrderStore::InsertItem(std::string_view number, const OrderItem& item) {
  const Words& w = words_;
  Execute(database_,
          {"INSERT INTO " + w.Table("TECEL_ITEN"), "(NUMERO,CODIGO,COR,PEDIDO,CUSTO,QTDE,BAIXADA,QTDE_B,CICLOS,OBS)",
           "VALUES", "(" + w.Text(number) + ",", w.Text(item.code) + ",", w.Text(item.colour) + ",",
           w.Text(item.sales_order) + ",", w.Number(item.cost) + ",", w.Number(item.quantity) + ",",
           w.Text(item.closed) + ",", w.Number(item.written_off) + ",", std::to_string(item.cycles) + ",",
           w.Text(item.remark) + ")"});
}

void OrderStore::DeleteHeaderAndItems(std::string_view number) {
  for (const char* table : {"TECEL", "TECEL_ITEN"}) {
    Execute(database_, {"DELETE FROM " + words_.Table(table), "WHERE NUMERO = " + words_.Text(number)});
  }
}

void OrderStore::DeleteReservationsAndPlanning(std::string_view number) {
  Execute(database_, {"DELETE FROM " + words_.Table("MAT_RESERVA"), "WHERE NUMERO = " + words_.Text(number),
                      words_.ReservationKind()});
  Execute(database_, {"DELETE FROM " + words_.Table("PROG_OF"), "WHERE NUM_DOC = " + words_.Text(number),
                      "AND TIPO = " + words_.Text("M")});
}

}  // namespace orders
