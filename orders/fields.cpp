#include "orders/fields.h"

namespace orders {
namespace {

using host::Align;
using host::FieldDef;
using host::GridColumn;
using enum host::FieldType;

GridColumn Shown(const char* field, const char* caption = "") {
  return {.field = field, .caption = caption, .read_only = true};
}

GridColumn ShownNumber(const char* field, const char* caption = "") {
  return {.field = field, .caption = caption, .read_only = true, .align = Align::kRight};
}

GridColumn Typed(const char* field, const char* caption = "") { return {.field = field, .caption = caption}; }

GridColumn TypedNumber(const char* field, const char* caption = "") {
  return {.field = field, .caption = caption, .align = Align::kRight};
}

GridColumn Ticked(const char* field) { return {.field = field, .check_box = true, .align = Align::kCenter}; }

}  // namespace

std::vector<FieldDef> ItemFields() {
  return {{"Codigo", kText, 15},   {"Descricao", kText, 50}, {"Unidade", kText, 3},    {"Pedido", kText, 12},
          {"Cor", kText, 6},       {"DescCor", kText, 80},   {"Qtde", kFloat},         {"Qtde_B", kFloat},
          {"Baixada", kText, 1},   {"Custo", kFloat},        {"Peso", kFloat},         {"Largura", kFloat},
          {"Gramatura", kFloat},   {"KgRolo", kFloat},       {"LFA", kFloat},          {"Qtde_Rolo", kInteger},
          {"Comp1", kText, 100},   {"NE", kInteger},         {"Concentracao", kFloat}, {"Gramatura_Mat", kFloat},
          {"Largura_Mat", kFloat}, {"Comp2", kText, 100},    {"Observacao", kMemo},    {"Alimentadores", kInteger},
          {"Diametro", kFloat},    {"Finura", kFloat},       {"CodAnt", kText, 15},    {"CorAnt", kText, 6},
          {"Ciclos", kInteger},    {"Obs", kText, 200}};
}

std::vector<GridColumn> ItemColumns() {
  return {Typed("Codigo", "Código"),
          Shown("Descricao", "Descrição"),
          Shown("Unidade", "Uni."),
          Typed("Pedido"),
          Typed("Cor"),
          Shown("DescCor"),
          TypedNumber("Qtde"),
          TypedNumber("Ciclos"),
          ShownNumber("Qtde_B", "Qtde. Baixa"),
          Ticked("Baixada"),
          TypedNumber("Custo"),
          ShownNumber("Largura"),
          ShownNumber("Gramatura"),
          ShownNumber("KgRolo"),
          ShownNumber("Qtde_Rolo"),
          Typed("Obs", "Observação")};
}

std::vector<FieldDef> YarnFields() {
  return {{"Codigo", kText, 15},
          {"Descricao", kText, 50},
          {"Cor", kText, 6},
          {"DescCor", kText, 80},
          {"Unidade", kText, 3},
          {"Consumo", kFloat, 0, "0.######"},
          {"Consumo_Total", kFloat, 0, "0.000"},
          {"LFA", kFloat},
          {"Roca", kInteger},
          {"NE", kInteger},
          {"Ordem", kInteger},
          {"Qtde_OC", kFloat, 0, "0.00"},
          {"Qtde", kFloat},
          {"Perc", kFloat},
          {"CodMalha", kText, 15},
          {"CodMalhaCor", kText, 6},
          {"Tensao", kFloat},
          {"Milimetro", kFloat},
          {"Diametro", kFloat},
          {"Finura", kFloat},
          {"Aliment", kInteger},
          {"DTex", kFloat},
          {"Den", kFloat},
          {"Tex", kFloat}};
}

std::vector<GridColumn> YarnColumns() {
  return {Shown("Codigo", "Código"),
          Shown("Descricao", "Descrição"),
          Shown("Cor"),
          Shown("DescCor"),
          ShownNumber("LFA"),
          ShownNumber("Roca"),
          Shown("Unidade", "Uni."),
          ShownNumber("Consumo"),
          ShownNumber("NE"),
          ShownNumber("Qtde_OC"),
          ShownNumber("Qtde", "Estoque"),
          ShownNumber("Consumo_Total", "Consumo Total"),
          ShownNumber("Aliment", "Aliment."),
          ShownNumber("Den"),
          ShownNumber("Tex"),
          ShownNumber("DTex")};
}

// A lot is told apart by its whole text and a supplier is stored by its whole name, so both fields are wider than
// their columns.
std::vector<FieldDef> StockFields() {
  return {{"Sel", kText, 1},
          {"Lote", kText, 32},
          {"Deposito", kText, 6},
          {"Desc_Dep", kText, 50},
          {"Qtde", kFloat},
          {"Qtde_Res", kFloat},
          {"Qtde_Reservado", kFloat},
          {"Qtde_B", kFloat},
          {"Saldo_Reserva", kFloat},
          {"Fornecedor", kText, 80},
          {"Fornecedor_NF", kText, 80},
          {"Local", kText, 30},
          {"Obs", kText, 30},
          {"Partida", kText, 20},
          {"Sequencia", kText, 3},
          {"Tonalidade", kText, 15},
          {"Largura", kFloat},
          {"Codigo", kText, 15},
          {"Cor", kText, 6}};
}

std::vector<GridColumn> StockColumns() {
  GridColumn lot = Shown("Lote");
  lot.width = 15;
  GridColumn supplier = Shown("Fornecedor");
  supplier.width = 6;
  return {Ticked("Sel"),
          lot,
          Shown("Deposito", "Depósito"),
          Shown("Desc_Dep", "Desc. Depósito"),
          ShownNumber("Qtde", "Estoque"),
          TypedNumber("Qtde_Res", "Reservar"),
          ShownNumber("Qtde_Reservado", "Reservadas"),
          ShownNumber("Qtde_B", "Baixa Reserva"),
          ShownNumber("Saldo_Reserva", "Reserva OF"),
          supplier,
          Shown("Fornecedor_NF"),
          Shown("Local"),
          Typed("Obs"),
          Shown("Partida"),
          Shown("Sequencia", "Sequência"),
          Shown("Tonalidade"),
          ShownNumber("Largura")};
}

}  // namespace orders
