#include "orders/fields.h"

namespace orders {
namespace {

using host::Align;
using host::FieldDef;
using host::GridColumn;
using enum host::FieldType;

constexpr const char* kQuantity = "0.000";

GridColumn Shown(const char* field, const char* caption, int width) {
  return {.field = field, .caption = caption, .width = width, .read_only = true};
}

GridColumn ShownNumber(const char* field, const char* caption, int width) {
  return {.field = field, .caption = caption, .width = width, .read_only = true, .align = Align::kRight};
}

GridColumn Typed(const char* field, const char* caption, int width) {
  return {.field = field, .caption = caption, .width = width};
}

GridColumn TypedNumber(const char* field, const char* caption, int width) {
  return {.field = field, .caption = caption, .width = width, .align = Align::kRight};
}

GridColumn Ticked(const char* field, const char* caption, int width) {
  return {.field = field, .caption = caption, .width = width, .check_box = true, .align = Align::kCenter};
}

GridColumn WithLookup(GridColumn column) {
  column.lookup = true;
  return column;
}

GridColumn WithTotal(GridColumn column) {
  column.total = true;
  return column;
}

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
  return {WithLookup(Typed("Codigo", "Código", 12)),
          Shown("Descricao", "Descrição", 28),
          Shown("Unidade", "Uni.", 4),
          Typed("Pedido", "Pedido", 10),
          WithLookup(Typed("Cor", "Cor", 6)),
          Shown("DescCor", "Desc. Cor", 18),
          WithTotal(TypedNumber("Qtde", "Qtde.", 12)),
          TypedNumber("Ciclos", "Ciclos", 7),
          WithTotal(ShownNumber("Qtde_B", "Qtde. Baixa", 12)),
          Ticked("Baixada", "Baixada", 8),
          TypedNumber("Custo", "Custo", 10),
          ShownNumber("Largura", "Largura", 8),
          ShownNumber("Gramatura", "Gramatura", 10),
          ShownNumber("KgRolo", "Kg/Rolo", 8),
          WithTotal(ShownNumber("Qtde_Rolo", "Rolos", 6)),
          Typed("Obs", "Observação", 30)};
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
  return {Shown("Codigo", "Código", 8),
          Shown("Descricao", "Descrição", 20),
          Shown("Cor", "Cor", 4),
          Shown("DescCor", "Desc. Cor", 8),
          ShownNumber("LFA", "LFA", 7),
          ShownNumber("Roca", "Roca", 5),
          Shown("Unidade", "Uni.", 4),
          WithTotal(ShownNumber("Consumo", "Consumo", 10)),
          ShownNumber("NE", "NE", 5),
          ShownNumber("Qtde_OC", "Qtde. OC", 11),
          ShownNumber("Qtde", "Estoque", 12),
          ShownNumber("Consumo_Total", "Consumo Total", 13),
          ShownNumber("Aliment", "Aliment.", 8),
          ShownNumber("Den", "Den", 7),
          ShownNumber("Tex", "Tex", 7),
          ShownNumber("DTex", "DTex", 7)};
}

// A lot is told apart by its whole text and a supplier is stored by its whole name, so both fields are wider than
// their columns.
std::vector<FieldDef> StockFields() {
  return {{"Sel", kText, 1},
          {"Lote", kText, 32},
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
  return {Ticked("Sel", "Sel.", 4),
          Shown("Lote", "Lote", 11),
          Shown("Deposito", "Depósito", 8),
          Shown("Desc_Dep", "Desc. Depósito", 12),
          WithTotal(ShownNumber("Qtde", "Estoque", 10)),
          WithTotal(TypedNumber("Qtde_Res", "Reservar", 10)),
          WithTotal(ShownNumber("Qtde_Reservado", "Reservadas", 11)),
          WithTotal(ShownNumber("Qtde_B", "Baixa Reserva", 13)),
          WithTotal(ShownNumber("Saldo_Reserva", "Reserva OF", 12)),
          Shown("Fornecedor", "Fornecedor", 6),
          Shown("Fornecedor_NF", "Fornecedor NF", 20),
          Shown("Local", "Local", 10),
          Typed("Obs", "Obs.", 20),
          Shown("Partida", "Partida", 10),
          Shown("Sequencia", "Sequência", 9),
          Shown("Tonalidade", "Tonalidade", 12),
          ShownNumber("Largura", "Largura", 8)};
}

std::vector<FieldDef> SearchFields() {
  return {{"NUMERO", kText, 6},   {"MALHARIA", kText, 6},         {"NOME", kText},
          {"CODIGO", kText, 15},  {"DESCRICAO", kText},           {"MAQUINA", kText, 6},
          {"DES_MAQUINA", kText}, {"QTDE", kFloat, 0, kQuantity}, {"BAIXADO", kFloat, 0, kQuantity},
          {"DT_INICIO", kDate},   {"PERIODO", kText, 6}};
}

std::vector<GridColumn> SearchColumns() {
  return {Shown("NUMERO", "Número", 8),
          Shown("MALHARIA", "Malharia", 8),
          Shown("NOME", "Nome", 24),
          Shown("CODIGO", "Material", 12),
          Shown("DESCRICAO", "Descrição", 30),
          Shown("MAQUINA", "Máquina", 8),
          Shown("DES_MAQUINA", "Desc. Máquina", 18),
          WithTotal(ShownNumber("QTDE", "Quantidade", 12)),
          WithTotal(ShownNumber("BAIXADO", "Baixado", 12)),
          Shown("DT_INICIO", "Data", 11),
          Shown("PERIODO", "Prazo", 7)};
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
