#include "order_mill.h"

#include "host/text.h"

namespace test {

void OrderTest::SetUp() {
  FillSmallMill(mill_);
  mill_.SetClock("2026-03-10 09:30:00");
  screen_ = dynamic_cast<orders::TfmCadLoteTec*>(&mill_.Open("TfmCadLoteTec"));
  ASSERT_NE(screen_, nullptr);
  mill_.TakeStatements();
}

ActResult OrderTest::AddItem(std::string_view code, std::string_view colour, std::string_view quantity) {
  return mill_.Append(*screen_, "TbItens",
                      {{"Codigo", std::string(code)}, {"Cor", std::string(colour)}, {"Qtde", std::string(quantity)}});
}

void OrderTest::Stand(std::string_view dataset, const Cells& values) {
  host::Grid& grid = mill_.GridOf(*screen_, dataset);
  Lines names;
  Lines wanted;
  for (const auto& [name, text] : values) {
    names.push_back(name);
    wanted.push_back(text);
  }
  std::string line;
  for (const auto& text : wanted) line += (line.empty() ? "" : " | ") + text;
  const Lines rows = Shown(dataset, names);
  for (std::size_t at = 0; at < rows.size(); ++at) {
    if (rows[at] != line) continue;
    ASSERT_EQ(mill_.Desk().SelectRow(grid, at + 1), ActResult::kDone);
    return;
  }
  FAIL() << "no row " << line;
}

std::string OrderTest::NewOrder() {
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
  EXPECT_EQ(Type("EdtMalharia", "M00001"), ActResult::kDone);
  return Text("EdtNumero");
}

std::string OrderTest::SavedOrder(const std::vector<std::vector<std::string>>& items) {
  const std::string number = NewOrder();
  for (const auto& item : items) EXPECT_EQ(AddItem(item[0], item[1], item[2]), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
  mill_.TakeStatements();
  return number;
}

void OrderTest::Load(std::string_view number) {
  ASSERT_EQ(Type("EdtNumero", number), ActResult::kDone);
  ASSERT_EQ(mill_.Messages(), Lines());
}

void OrderTest::Roll(std::string_view order, std::string_view code, std::string_view colour, int sequence,
                     double quantity) {
  mill_.Insert("TECELB",
               {{"NUMERO", order}, {"CODIGO", code}, {"COR", colour}, {"ORDEM", sequence}, {"QTDE", quantity}});
}

std::string OrderTest::FocusedName() {
  const host::Control* focused = mill_.Desk().Focused();
  return focused == nullptr ? "" : focused->Name();
}

Lines OrderTest::Shown(std::string_view dataset, const Lines& fields) {
  const host::Dataset& rows = mill_.Data(*screen_, dataset);
  Lines lines;
  for (std::size_t row = 1; row <= rows.RecordCount(); ++row) {
    std::string line;
    for (std::size_t name = 0; name < fields.size(); ++name) {
      for (std::size_t field = 0; field < rows.FieldCount(); ++field) {
        if (!host::SameName(rows.FieldAt(field).Name(), fields[name])) continue;
        line += (name == 0 ? "" : " | ") + rows.ValueAt(row, field).AsText();
      }
    }
    lines.push_back(line);
  }
  return lines;
}

Lines OrderTest::Stored(std::string_view sql, const Lines& columns) {
  Lines lines;
  for (const Row& row : mill_.Rows(sql)) {
    std::string line;
    for (std::size_t at = 0; at < columns.size(); ++at) line += (at == 0 ? "" : " | ") + row.at(columns[at]).AsText();
    lines.push_back(line);
  }
  return lines;
}

Lines OrderTest::Items(std::string_view order) {
  return Stored("SELECT * FROM {TECEL_ITEN} WHERE NUMERO = '" + std::string(order) + "' ORDER BY CODIGO, COR",
                {"CODIGO", "COR", "PEDIDO", "CUSTO", "QTDE", "BAIXADA", "QTDE_B", "CICLOS", "OBS"});
}

Lines OrderTest::Reservations(std::string_view order) {
  return Stored("SELECT * FROM {MAT_RESERVA} WHERE NUMERO = '" + std::string(order) +
                    "' ORDER BY CODIGO, COR, DEPOSITO, LOTE, TIPO",
                {"CODIGO", "COR", "DEPOSITO", "LOTE", "QTDE", "QTDE_B", "TIPO", "NOME", "OBS"});
}

Lines OrderTest::Log() {
  return Stored("SELECT * FROM TEC_LOG ORDER BY ID", {"ASSUNTO", "TEXTO", "OPERACAO", "CHAVE"});
}

Lines OrderTest::Everything() {
  Lines all;
  const auto add = [&](const Lines& lines) { all.insert(all.end(), lines.begin(), lines.end()); };
  add(Stored("SELECT T.*, CAST(OBSERVACAO AS VARCHAR(4000)) AS OBS4 FROM {TECEL} T ORDER BY NUMERO",
             {"NUMERO", "MALHARIA", "PERIODO", "OBS4", "DT_INICIO", "FICHA", "MAQUINA", "FLUXO", "RPM", "TPONTO",
              "SITUACAO", "DEPOSITO"}));
  add(Stored("SELECT * FROM {TECEL_ITEN} ORDER BY NUMERO, CODIGO, COR",
             {"NUMERO", "CODIGO", "COR", "PEDIDO", "CUSTO", "QTDE", "BAIXADA", "QTDE_B", "CICLOS", "OBS"}));
  add(Stored("SELECT * FROM {MAT_RESERVA} ORDER BY NUMERO, CODIGO, COR, DEPOSITO, LOTE, TIPO",
             {"NUMERO", "CODIGO", "COR", "DEPOSITO", "LOTE", "QTDE", "QTDE_B", "TIPO"}));
  add(Stored("SELECT * FROM {PROG_OF} ORDER BY NUM_DOC, TIPO", {"NUM_DOC", "TIPO"}));
  add(Log());
  return all;
}

}  // namespace test
