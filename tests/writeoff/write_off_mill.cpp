#include "write_off_mill.h"

#include <algorithm>
#include <ostream>
#include <stdexcept>

#include "app/books/check.h"

namespace test {
namespace {

std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

std::string OfLot(std::string_view code, std::string_view deposit, std::string_view lot) {
  return " WHERE CODIGO = " + Quoted(code) + " AND DEPOSITO = " + Quoted(deposit) + " AND LOTE = " + Quoted(lot);
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Box& box) {
  return out << "[" << box.title << "] " << box.text << " (icon " << static_cast<int>(box.icon) << ")";
}

Box Refusal(std::string text) { return {"Baixa de Ordem de Tecelagem", std::move(text), host::Icon::kExclamation}; }

Box Notice(std::string text) { return {"Baixa de Ordem de Tecelagem", std::move(text), host::Icon::kInformation}; }

Box YarnNotice(std::string text) { return {"Selecione os consumos", std::move(text), host::Icon::kInformation}; }

WriteOffMill::WriteOffMill() {
  FillSmallMill(mill_);
  mill_.SetClock("2026-03-10 10:00:00");
}

void WriteOffMill::TearDown() {
  EXPECT_EQ(mill_.Person().Unused(), std::vector<std::string>());
  EXPECT_EQ(mill_.Person().TakeUnexpected(), std::vector<std::string>());
}

void WriteOffMill::Order(std::string_view number, const std::vector<OrderItem>& items, std::string_view client) {
  mill_.Insert("TECEL", {{"NUMERO", number},
                         {"MALHARIA", client},
                         {"DEPOSITO", "DF"},
                         {"MAQUINA", "MQ1"},
                         {"SITUACAO", "A"},
                         {"FICHA", "FICHA 1"}});
  for (const OrderItem& item : items) {
    mill_.Insert("TECEL_ITEN", {{"NUMERO", number},
                                {"CODIGO", item.code},
                                {"COR", item.colour},
                                {"QTDE", item.quantity},
                                {"BAIXADA", "N"},
                                {"PEDIDO", item.sales_order}});
  }
}

void WriteOffMill::Reserve(std::string_view yarn, std::string_view deposit, std::string_view lot, double quantity,
                           std::string_view order, const host::Value& kind) {
  mill_.Insert("MAT_RESERVA", {{"NUMERO", order},
                               {"CODIGO", yarn},
                               {"COR", "CR"},
                               {"DEPOSITO", deposit},
                               {"LOTE", lot},
                               {"QTDE", quantity},
                               {"QTDE_B", 0},
                               {"TIPO", kind}});
}

void WriteOffMill::ReservedOrder() {
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 60);
  Reserve("Y2", "D1", "L1", 40);
}

void WriteOffMill::FreeOrder() {
  mill_.SetParameter("MAL", 70, "N");
  Order(kOrder, {{}});
}

host::Screen& WriteOffMill::Load(std::string_view order) {
  host::Screen& screen = mill_.Open("TfmMovBaiTec");
  Type("EdtLote", order);
  Type("EdtTara", "0");
  return screen;
}

host::Screen& WriteOffMill::Screen() {
  host::Screen* screen = mill_.Desk().Find("fmMovBaiTec");
  if (screen == nullptr) throw std::runtime_error("the write-off screen is not open");
  return *screen;
}

void WriteOffMill::Type(std::string_view edit, std::string_view text) {
  ASSERT_EQ(mill_.Type(Screen(), edit, text), host::ActResult::kDone) << edit << " = " << text;
}

host::ActResult WriteOffMill::Roll(std::string_view quantity) {
  Type("EdtQtde", quantity);
  return Confirm();
}

std::string WriteOffMill::Focused() {
  const host::Control* focused = mill_.Desk().Focused();
  return focused == nullptr ? std::string() : focused->Name();
}

void WriteOffMill::AtYarnScreen(std::function<void(host::Screen&)> act) {
  mill_.Person().OnModal("TFmMovBaiFio", [act = std::move(act)](host::Screen& screen, host::Desk&) { act(screen); });
}

void WriteOffMill::Take(host::Screen& yarn, std::string_view lot, std::string_view deposit) {
  host::Grid& stock = mill_.GridOf(yarn, "TbEst");
  host::Dataset& lots = stock.GetDataset();
  for (std::size_t row = 1; row <= lots.RecordCount(); ++row) {
    if (lots.ValueAt(row, 4).AsText() != lot || lots.ValueAt(row, 3).AsText() != deposit) continue;
    ASSERT_EQ(mill_.Desk().Enter(stock), host::ActResult::kDone);
    ASSERT_EQ(mill_.Desk().SelectRow(stock, row), host::ActResult::kDone);
    mill_.Click(yarn, "BitBtn1");
    return;
  }
  FAIL() << "no lot " << lot << " in " << deposit << " is offered for "
         << mill_.Data(yarn, "TbBaixa")["Codigo"].AsText();
}

void WriteOffMill::TakeAll(host::Screen& yarn) {
  host::Grid& stock = mill_.GridOf(yarn, "TbEst");
  for (int take = 0; take < 20 && !yarn.CloseRequested(); ++take) {
    ASSERT_EQ(mill_.Desk().Enter(stock), host::ActResult::kDone);
    host::Dataset& lots = stock.GetDataset();
    std::size_t row = 1;
    while (row < lots.RecordCount() && lots.ValueAt(row, 5).AsFloat() <= lots.ValueAt(row, 7).AsFloat()) ++row;
    ASSERT_EQ(mill_.Desk().SelectRow(stock, row), host::ActResult::kDone);
    mill_.Click(yarn, "BitBtn1");
  }
}

std::vector<Box> WriteOffMill::Boxes() {
  std::vector<Box> boxes;
  for (const auto& shown : mill_.Person().TakeMessages()) boxes.push_back({shown.title, shown.text, shown.icon});
  return boxes;
}

double WriteOffMill::Stock(std::string_view code, std::string_view deposit, std::string_view lot) {
  return Number("SELECT QTDE FROM {MAT_ITEN}" + OfLot(code, deposit, lot));
}

double WriteOffMill::Left(std::string_view yarn, std::string_view deposit, std::string_view lot,
                          std::string_view order) {
  return Number("SELECT QTDE FROM {MAT_RESERVA}" + OfLot(yarn, deposit, lot) + " AND NUMERO = " + Quoted(order));
}

double WriteOffMill::Consumed(std::string_view yarn, std::string_view deposit, std::string_view lot,
                              std::string_view order) {
  return Number("SELECT QTDE_B FROM {MAT_RESERVA}" + OfLot(yarn, deposit, lot) + " AND NUMERO = " + Quoted(order));
}

std::vector<Row> WriteOffMill::Rolls(std::string_view order) {
  return mill_.Rows("SELECT * FROM {TECELB} WHERE NUMERO = " + Quoted(order) + " ORDER BY ORDEM");
}

std::vector<Row> WriteOffMill::Consumption(std::string_view order) {
  return mill_.Rows("SELECT * FROM {BAIXA_FIO} WHERE NUMERO = " + Quoted(order) +
                    " ORDER BY ORDEM, CODIGO, DEPOSITO, LOTE");
}

std::vector<std::string> WriteOffMill::Log() {
  std::vector<std::string> texts;
  for (const Row& row : mill_.Rows("SELECT TEXTO FROM TEC_LOG WHERE ASSUNTO = 'BAIXAS DA TECELAGEM' ORDER BY ID")) {
    texts.push_back(row.at("TEXTO").AsText());
  }
  return texts;
}

void WriteOffMill::ExpectBooksBalance() { EXPECT_EQ(app::books::CheckBooks(mill_.Db()), std::vector<std::string>()); }

}  // namespace test
