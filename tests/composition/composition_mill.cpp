#include "composition_mill.h"

#include "host/decimal.h"

namespace test {

void CompositionTest::SetUp() {
  mill_.SetClock("2026-03-10 09:30:00");
  const auto material = [this](const char* code, const char* name, int count, double cost, const char* client) {
    mill_.Insert("MATERIAL", {{"CODIGO", code},
                              {"DESCRICAO", name},
                              {"NE", count},
                              {"REPOSICAO", cost},
                              {"CODCLI", client},
                              {"GRAMATURA", 160},
                              {"UNIDADE", "KG"}});
  };
  for (const auto& [code, name] : {std::pair{"00001", "Têxtil Aurora"}, std::pair{"00002", "Malharia Bela Vista"}}) {
    mill_.Insert("ENTIDADE", {{"CODCLI", code}, {"NOME", name}});
  }
  material("M1", "Meia malha 30/1", 0, 0, "00002");
  material("M2", "Ribana 2x1", 0, 0, "00001");
  material("M0", "Moletom sem cores", 0, 0, "00001");
  material("F1", "Algodão penteado 30/1", 30, 18.5, "00001");
  material("F2", "Algodão cardado 20/1", 20, 14.25, "00002");
  material("F0", "Elastano 20 denier", 0, 52, "00001");
  mill_.Insert("DEPOSITO", {{"CODIGO", "GERAL"}, {"DESCRICAO", "Depósito geral"}, {"PRIORIDADE", "1"}});
  for (const auto& [code, name] : {std::pair{"01", "Branco"}, std::pair{"02", "Preto"}, std::pair{"CRU", "Cru"},
                                   std::pair{"BCO", "Alvejado"}, std::pair{"99", "Vinho"}}) {
    mill_.Insert("CADCOR", {{"COR", code}, {"DESCRICAO", name}});
  }
  for (const auto& [code, colour] : {std::pair{"M1", "01"}, std::pair{"M1", "02"}, std::pair{"M2", "01"},
                                     std::pair{"F1", "CRU"}, std::pair{"F1", "BCO"}, std::pair{"F2", "CRU"}}) {
    mill_.Insert("MAT_ITEN", {{"CODIGO", code}, {"COR", colour}, {"DEPOSITO", "GERAL"}, {"LOTE", "000000"}});
  }
  mill_.Insert("TNG_REGRA",
               {{"CODIGO", "R1"}, {"DESCRICAO", "Um quarto da gramatura"}, {"FORMULA", "GRAMATURA * 0.25"}});
  screen_ = dynamic_cast<composition::TFmCadComposi*>(&mill_.Open("TFmCadComposi"));
  ASSERT_NE(screen_, nullptr);
  mill_.TakeStatements();
}

void CompositionTest::Store(std::string_view fabric, const StoredRow& row) {
  mill_.Insert("COMP_MATERIAL", {{"MATERIAL", fabric},
                                 {"CODIGO", row.yarn},
                                 {"ORDEM", row.position},
                                 {"COR", row.colour},
                                 {"COR_I", row.yarn_colour},
                                 {"LFA", row.lfa},
                                 {"ROCA", row.roca},
                                 {"PERC", row.percentage},
                                 {"LARGURA", 1.8},
                                 {"GRAMATURA", 160.0},
                                 {"DIAMETRO", 30.0},
                                 {"FINURA", 24.0},
                                 {"KG_ROLO", 21.0},
                                 {"ALIMENTADORES", 2268.0},
                                 {"DESPERDICIO", 2.5},
                                 {"RPM", 32.0},
                                 {"COMP_PONTO", 2.75},
                                 {"TENSAO", 4.5}});
}

host::ActResult CompositionTest::Load(std::string_view fabric) { return mill_.Type(*screen_, "EdtCodMat", fabric); }

host::ActResult CompositionTest::TypeCell(std::string_view field, std::string_view text) {
  host::Grid& grid = screen_->GrdComposi;
  host::ActResult result = mill_.Desk().SelectCell(grid, field);
  if (result == host::ActResult::kDone) result = mill_.Desk().TypeCell(grid, text);
  if (result == host::ActResult::kDone) result = mill_.Desk().GridKey(grid, host::Key::kTab);
  return result;
}

std::string CompositionTest::Cell(std::size_t row, std::string_view field) {
  for (std::size_t at = 0; at < Rows().FieldCount(); ++at) {
    const host::Field& found = Rows().FieldAt(at);
    if (found.Name() == field) return found.DisplayText(Rows().ValueAt(row, at));
  }
  return "no such field";
}

std::vector<std::string> CompositionTest::Composition(std::string_view fabric) {
  std::vector<std::string> lines;
  for (const Row& row : mill_.Rows("SELECT CODIGO, ORDEM, COR, COR_I, PERC FROM {COMP_MATERIAL} WHERE MATERIAL = '" +
                                   std::string(fabric) + "' ORDER BY ORDEM, COR")) {
    lines.push_back(row.at("CODIGO").AsText() + " " + row.at("ORDEM").AsText() + " " + row.at("COR").AsText() + " " +
                    row.at("COR_I").AsText() + " " + host::FormatNumber("0.####", row.at("PERC").AsFloat()));
  }
  return lines;
}

std::vector<std::string> CompositionTest::Log() {
  std::vector<std::string> lines;
  for (const Row& row : mill_.Rows("SELECT ASSUNTO, TEXTO, OPERACAO, CHAVE FROM TEC_LOG ORDER BY ID")) {
    lines.push_back(row.at("ASSUNTO").AsText() + ": " + row.at("TEXTO").AsText() + " [" + row.at("OPERACAO").AsText() +
                    ", " + row.at("CHAVE").AsText() + "]");
  }
  return lines;
}

std::string CompositionTest::Error() {
  const auto errors = mill_.Person().TakeErrors();
  return errors.size() == 1 ? errors.front() : std::to_string(errors.size()) + " errors";
}

}  // namespace test
