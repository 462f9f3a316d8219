// The order screen: fields and columns of its datasets.
#include "orders/cad_lote_tec_fields.h"

#include "host/kit/columns.h"
#include "weaving/stock_lot.h"

namespace orders {
namespace {

using host::FieldDef;
using host::GridColumn;
using host::NumberColumn;
using host::QuantityColumn;
using host::ShownColumn;
using host::TickedColumn;
using host::TypedColumn;
using host::TypedNumberColumn;
using host::WithLookup;
using host::WithTotal;
using enum host::FieldType;

constexpr const char* kQuantity = "0.000";

}  // namespace

std::vector<FieldDef> ItemFields() {
  return {{"Codigo", kText, 15},
          {"Descricao", kText, 50},
          {"Unidade", kText, 3},
          {"Pedido", kText, 12},
          {"Cor", kText, 6},
          {"DescCor", kText, 80},
          {"Qtde", kFloat, 0, kQuantity},
          {"Qtde_B", kFloat, 0, kQuantity},
          {"Baixada", kText, 1},
          {"Custo", kFloat, 0, "0.0000"},
          {"Peso", kFloat},
          {"Largura", kFloat, 0, "0.00"},
          {"Gramatura", kFloat, 0, "0.00"},
          {"KgRolo", kFloat, 0, "0.00"},
          {"LFA", kFloat},
          {"Qtde_Rolo", kInteger},
          {"Comp1", kText, 100},
          {"NE", kInteger},
          {"Concentracao", kFloat},
          {"Gramatura_Mat", kFloat},
          {"Largura_Mat", kFloat},
          {"Comp2", kText, 100},
          {"Observacao", kMemo},
          {"Alimentadores", kInteger},
          {"Diametro", kFloat},
          {"Finura", kFloat},
          {"CodAnt", kText, 15},
          {"CorAnt", kText, 6},
          {"Ciclos", kInteger},
          {"Obs", kText, 200}};
}

std::vector<GridColumn> ItemColumns() {
  return {WithLookup(TypedColumn("Codigo", "Código", 12)),
          ShownColumn("Descricao", "Descrição", 28),
          ShownColumn("Unidade", "Uni.", 4),
          TypedColumn("Pedido", "Pedido", 10),
          WithLookup(TypedColumn("Cor", "Cor", 6)),
          ShownColumn("DescCor", "Desc. Cor", 18),
          WithTotal(TypedNumberColumn("Qtde", "Qtde.", 12)),
          TypedNumberColumn("Ciclos", "Ciclos", 7),
          QuantityColumn("Qtde_B", "Qtde. Baixa", 12),
          TickedColumn("Baixada", "Baixada", 8),
          TypedNumberColumn("Custo", "Custo", 10),
          NumberColumn("Largura", "Largura", 8),
          NumberColumn("Gramatura", "Gramatura", 10),
          NumberColumn("KgRolo", "Kg/Rolo", 8),
          QuantityColumn("Qtde_Rolo", "Rolos", 6),
          TypedColumn("Obs", "Observação", 30)};
}

std::vector<FieldDef> YarnFields() {
  return {{"Codigo", kText, 15},
          {"Descricao", kText, 50},
          {"Cor", kText, 6},
          {"DescCor", kText, 80},
          {"Unidade", kText, 3},
          {"Consumo", kFloat, 0, "0.######"},
          {"Consumo_Total", kFloat, 0, "0.000"},
          {"LFA", kFloat, 0, "0.00"},
          {"Roca", kInteger},
          {"NE", kInteger},
          {"Ordem", kInteger},
          {"Qtde_OC", kFloat, 0, "0.00"},
          {"Qtde", kFloat, 0, kQuantity},
          {"Perc", kFloat},
          {"CodMalha", kText, 15},
          {"CodMalhaCor", kText, 6},
          {"Tensao", kFloat},
          {"Milimetro", kFloat},
          {"Diametro", kFloat},
          {"Finura", kFloat},
          {"Aliment", kInteger},
          {"DTex", kFloat, 0, "0.00"},
          {"Den", kFloat, 0, "0.00"},
          {"Tex", kFloat, 0, "0.00"}};
}

// Only the consumption is added up: a yarn that stands in two rows shows what the order still needs of it, what is in
// stock and what is on order in both. As far as that consumption everything is in sight beside the lots.
std::vector<GridColumn> YarnColumns() {
  return {ShownColumn("Codigo", "Código", 8),
          ShownColumn("Descricao", "Descrição", 20),
          ShownColumn("Cor", "Cor", 4),
          ShownColumn("DescCor", "Desc. Cor", 8),
          NumberColumn("LFA", "LFA", 7),
          NumberColumn("Roca", "Roca", 5),
          ShownColumn("Unidade", "Uni.", 4),
          QuantityColumn("Consumo", "Consumo", 10),
          NumberColumn("NE", "NE", 5),
          NumberColumn("Qtde_OC", "Qtde. OC", 11),
          NumberColumn("Qtde", "Estoque", 12),
          NumberColumn("Consumo_Total", "Consumo Total", 13),
          NumberColumn("Aliment", "Aliment.", 8),
          NumberColumn("Den", "Den", 7),
          NumberColumn("Tex", "Tex", 7),
          NumberColumn("DTex", "DTex", 7)};
}

// A lot is told apart by its whole text and a supplier is stored by its whole name, so both fields are wider than
// their columns.
std::vector<FieldDef> StockFields() {
  return {{"Sel", kText, 1},
          {"Lote", kText, weaving::kLotWidth},
          {"Deposito", kText, 6},
          {"Desc_Dep", kText, 50},
          {"Qtde", kFloat, 0, kQuantity},
          {"Qtde_Res", kFloat, 0, kQuantity},
          {"Qtde_Reservado", kFloat, 0, kQuantity},
          {"Qtde_B", kFloat, 0, kQuantity},
          {"Saldo_Reserva", kFloat, 0, kQuantity},
          {"Fornecedor", kText, 80},
          {"Fornecedor_NF", kText, 80},
          {"Local", kText, 30},
          {"Obs", kText, 30},
          {"Partida", kText, 20},
          {"Sequencia", kText, 3},
          {"Tonalidade", kText, 15},
          {"Largura", kFloat, 0, "0.00"},
          {"Codigo", kText, 15},
          {"Cor", kText, 6}};
}

std::vector<GridColumn> StockColumns() {
  return {TickedColumn("Sel", "Sel.", 4),
          ShownColumn("Lote", "Lote", 11),
          ShownColumn("Deposito", "Depósito", 8),
          ShownColumn("Desc_Dep", "Desc. Depósito", 12),
          QuantityColumn("Qtde", "Estoque", 10),
          WithTotal(TypedNumberColumn("Qtde_Res", "Reservar", 10)),
          QuantityColumn("Qtde_Reservado", "Reservadas", 11),
          QuantityColumn("Qtde_B", "Baixa Reserva", 13),
          QuantityColumn("Saldo_Reserva", "Reserva OF", 12),
          ShownColumn("Fornecedor", "Fornecedor", 6),
          ShownColumn("Fornecedor_NF", "Fornecedor NF", 20),
          ShownColumn("Local", "Local", 10),
          TypedColumn("Obs", "Obs.", 20),
          ShownColumn("Partida", "Partida", 10),
          ShownColumn("Sequencia", "Sequência", 9),
          ShownColumn("Tonalidade", "Tonalidade", 12),
          NumberColumn("Largura", "Largura", 8)};
}

std::vector<FieldDef> SearchFields() {
  return {{"NUMERO", kText, 6},   {"MALHARIA", kText, 6},         {"NOME", kText},
          {"CODIGO", kText, 15},  {"DESCRICAO", kText},           {"MAQUINA", kText, 6},
          {"DES_MAQUINA", kText}, {"QTDE", kFloat, 0, kQuantity}, {"BAIXADO", kFloat, 0, kQuantity},
          {"DT_INICIO", kDate},   {"PERIODO", kText, 6}};
}

std::vector<GridColumn> SearchColumns() {
  return {ShownColumn("NUMERO", "Número", 8),
          ShownColumn("MALHARIA", "Malharia", 8),
          ShownColumn("NOME", "Nome", 24),
          ShownColumn("CODIGO", "Material", 12),
          ShownColumn("DESCRICAO", "Descrição", 30),
          ShownColumn("MAQUINA", "Máquina", 8),
          ShownColumn("DES_MAQUINA", "Desc. Máquina", 18),
          QuantityColumn("QTDE", "Quantidade", 12),
          QuantityColumn("BAIXADO", "Baixado", 12),
          ShownColumn("DT_INICIO", "Data", 11),
          ShownColumn("PERIODO", "Prazo", 7)};
}

std::vector<FieldDef> RollFields() {
  return {{"Numero", kText, 8}, {"NR", kText, 4}, {"Codigo", kText, 15}, {"Cor", kText, 6}};
}

std::vector<FieldDef> StitchFields() {
  return {{"MATERIAL", kText, 15},   {"COR", kText, 6},    {"ORDEM", kInteger}, {"CODIGO", kText, 15},
          {"DESCRICAO", kText},      {"COR_I", kText, 6},  {"DESC_COR", kText}, {"MILIMETROS", kFloat},
          {"ALIMENTADORES", kFloat}, {"OBSERVACAO", kText}};
}

}  // namespace orders
