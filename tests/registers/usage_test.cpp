// A record in use is not deleted, and the person hears where it is used.
#include "app/registers/usage.h"

#include <gtest/gtest.h>

#include "registers/register_mill.h"
#include "support/road.h"

namespace {

using host::ActResult;

class Usage : public test::RegisterMill {
 protected:
  /// What the person hears who says yes to the deletion of this record.
  std::string Delete(std::string_view screen_class, std::string_view key) {
    auto& screen = Open(screen_class);
    Load(screen, key);
    mill.Person().Answer("Deseja excluir", "yes");
    Said();
    EXPECT_EQ(mill.Click(screen, "BtnExcluir"), ActResult::kRefused) << key;
    const auto said = mill.Messages();
    const auto& columns = screen.Description();
    EXPECT_EQ(Text("SELECT COUNT(*) FROM {" + std::string(columns.table) + "} WHERE " + std::string(columns.Key()) +
                   " = '" + std::string(key) + "'"),
              "1");
    mill.Desk().CloseScreen(screen);
    return said.empty() ? "" : said.back();
  }
};

TEST_F(Usage, EveryReferenceToARegisterCanBeTold) {
  for (const auto& description : app::tables::Registers()) {
    for (const auto& reference : app::registers::ReferencesTo(description.table)) {
      const app::registers::Place* place = app::registers::PlaceOf(reference);
      ASSERT_NE(place, nullptr) << reference.table;
      // Both columns exist: the statement can be sent.
      EXPECT_NO_THROW(mill.Scalar("SELECT FIRST 1 " + std::string(place->example) + " FROM {" +
                                  std::string(reference.table) + "} WHERE " + std::string(reference.columns.front()) +
                                  " = 'X'"))
          << reference.table;
    }
  }
}

TEST_F(Usage, AnOrderUsesItsMillFabricColourTermFlowMachineAndDeposit) {
  mill.Insert("TECEL", {{"NUMERO", "000012"},
                        {"MALHARIA", "M00004"},
                        {"PERIODO", "30"},
                        {"MAQUINA", "MQ1"},
                        {"FLUXO", "FL1"},
                        {"DEPOSITO", "DF"}});
  mill.Insert("TECEL_ITEN", {{"NUMERO", "000012"}, {"CODIGO", "F1"}, {"COR", "03"}, {"QTDE", 10}});
  const std::string where = " na ordem de tecelagem 000012. Não pode ser ";
  EXPECT_EQ(Delete("TfmMateriais", "F1"), "O material F1 está" + where + "excluído.");
  EXPECT_EQ(Delete("TfmCores", "03"), "A cor 03 está" + where + "excluída.");
  EXPECT_EQ(Delete("TfmEntidades", "M00004"), "O cadastro M00004 está" + where + "excluído.");
  EXPECT_EQ(Delete("TfmPrazos", "30"), "O prazo 30 está" + where + "excluído.");
  EXPECT_EQ(Delete("TfmFluxos", "FL1"), "O fluxo FL1 está" + where + "excluído.");
  EXPECT_EQ(Delete("TfmMaquinas", "MQ1"), "A máquina MQ1 está" + where + "excluída.");
  EXPECT_EQ(Delete("TfmDepositos", "DF"), "O depósito DF está" + where + "excluído.");
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM TEC_LOG").AsInteger(), 0);
}

TEST_F(Usage, ARollUsesItsPersonShiftAndDefects) {
  mill.Exec("UPDATE {PESSOAL} SET TURNO = NULL");
  mill.Insert(
      "TECELB",
      {{"NUMERO", "000012"}, {"CODIGO", "F1"}, {"ORDEM", 1}, {"COR", "01"}, {"FUNCIONARIO", "P1"}, {"TURNO", "3"}});
  mill.Insert("DEFEITO", {{"CODIGO", "BUR"}, {"DESCRICAO", "Buraco"}});
  mill.Insert("TABQUL", {{"CODIGO", "2"}, {"DESCRICAO", "Segunda"}});
  mill.Insert("DEF_MOV", {{"CODIGO", "BUR"}, {"ARTIGO", "F1"}, {"NUMERO", "000012"}, {"QUALIDADE", "2"}});
  const std::string where = " está numa peça da ordem de tecelagem 000012. Não pode ser ";
  EXPECT_EQ(Delete("TfmPessoal", "P1"), "A pessoa P1" + where + "excluída.");
  EXPECT_EQ(Delete("TfmTurnos", "3"), "O turno 3" + where + "excluído.");
  const std::string defects = " está nos defeitos da ordem de tecelagem 000012. Não pode ser ";
  EXPECT_EQ(Delete("TfmDefeitos", "BUR"), "O defeito BUR" + defects + "excluído.");
  EXPECT_EQ(Delete("TfmQualidades", "2"), "A qualidade 2" + defects + "excluída.");
}

TEST_F(Usage, StockAndLedgerHoldAMaterial) {
  EXPECT_EQ(Delete("TfmMateriais", "Y3"), "O material Y3 está na movimentação do depósito D1. Não pode ser excluído.");
  mill.Exec("DELETE FROM {MAT_MOV} WHERE CODIGO = 'Y3'");
  EXPECT_EQ(Delete("TfmMateriais", "Y3"), "O material Y3 está no estoque do depósito D1. Não pode ser excluído.");
  mill.Exec("UPDATE {MAT_ITEN} SET QTDE = 0 WHERE CODIGO = 'Y3'");
  EXPECT_EQ(Delete("TfmMateriais", "Y3"), "O material Y3 está na composição da malha F3. Não pode ser excluído.");
  EXPECT_EQ(Delete("TfmMateriais", "F9"), "O material F9 está na tabela de preços de M00001. Não pode ser excluído.");
}

TEST_F(Usage, OtherRegistersHoldWhatTheyName) {
  mill.Insert("GRUPO_MA", {{"CODIGO", "G1"}, {"DESCRICAO", "Fios"}});
  mill.Insert("TABLIN", {{"CODIGO", "L1"}, {"DESCRICAO", "Básicos"}});
  mill.Insert("TABFIS", {{"CODIGO", "5205"}, {"DESCRICAO", "Fio"}});
  mill.Exec("UPDATE {MATERIAL} SET GRUPO = 'G1', LINHA = 'L1', CODFIS = '5205' WHERE CODIGO = 'Y1'");
  EXPECT_EQ(Delete("TfmGrupos", "G1"), "O grupo G1 está no material Y1. Não pode ser excluído.");
  EXPECT_EQ(Delete("TfmLinhas", "L1"), "A linha L1 está no material Y1. Não pode ser excluída.");
  EXPECT_EQ(Delete("TfmClassesFiscais", "5205"), "A classe fiscal 5205 está no material Y1. Não pode ser excluída.");
  EXPECT_EQ(Delete("TfmTurnos", "1"), "O turno 1 está no cadastro da pessoa P1. Não pode ser excluído.");
  mill.Exec("UPDATE {COMP_MATERIAL} SET REGRA = 'R1' WHERE MATERIAL = 'FP'");
  EXPECT_EQ(Delete("TfmRegras", "R1"), "A regra R1 está na composição da malha FP. Não pode ser excluída.");
}

TEST_F(Usage, ThePriceOfNoColourInParticularHoldsNoColour) {
  mill.Insert("CADCOR", {{"COR", "0"}, {"DESCRICAO", "Cru"}});
  auto& screen = Open("TfmCores");
  Load(screen, "0");
  mill.Person().Answer("Deseja excluir a cor 0?", "yes");
  EXPECT_EQ(mill.Click(screen, "BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {CADCOR} WHERE COR = '0'").AsInteger(), 0);
}

TEST_F(Usage, AnOrderThatWasReallySavedHoldsItsYarn) {
  const std::string number = test::SaveOrder(mill, test::SmallMillOrder(50));
  mill.Exec("DELETE FROM {MAT_MOV} WHERE CODIGO = 'Y1'");
  EXPECT_EQ(Delete("TfmMateriais", "Y1"),
            "O material Y1 está na reserva de fios da ordem de tecelagem " + number + ". Não pode ser excluído.");
}

}  // namespace
