// The register of materials: the fullest of them.
#include <gtest/gtest.h>

#include "host/errors.h"
#include "registers/register_mill.h"

namespace {

using host::ActResult;

class Materials : public test::RegisterMill {
 protected:
  app::registers::TfmRegister& screen = Open("TfmMateriais");
};

TEST_F(Materials, TheFirstRecordIsShownAtOnce) {
  EXPECT_EQ(ListKeys(screen), (std::vector<std::string>{"F1", "F2", "F3", "F9", "FM", "FP", "Y1", "Y2", "Y3"}));
  EXPECT_EQ(mill.Text(screen, "LblBusca"), "9 registros");
  EXPECT_EQ(mill.Text(screen, "EdtCodigo"), "F1");
  EXPECT_EQ(mill.Text(screen, "EdtDescricao"), "Meia malha 30/1 PV");
  EXPECT_EQ(mill.Text(screen, "EdtLargura"), "1,8");
  EXPECT_FALSE(screen.HasUnsavedWork());
}

TEST_F(Materials, AnotherRowOfTheListShowsItsRecord) {
  EXPECT_EQ(mill.Desk().SelectRow(screen.GrdLista, 7), ActResult::kDone);
  EXPECT_EQ(mill.Text(screen, "EdtCodigo"), "Y1");
  EXPECT_EQ(mill.Text(screen, "EdtNe"), "30");
  EXPECT_EQ(mill.Text(screen, "EdtReposicao"), "20");
  EXPECT_THROW(mill.Type(screen, "EdtCodigo", "Y9"), host::ActError);  // the key of a stored record stays
}

TEST_F(Materials, SearchesByCodeAndDescriptionWithoutRegardToCaseAndAccents) {
  EXPECT_EQ(mill.Type(screen, "EdtBusca", "ALGODAO"), ActResult::kDone);
  EXPECT_EQ(ListKeys(screen), (std::vector<std::string>{"Y1"}));
  EXPECT_EQ(mill.Text(screen, "EdtCodigo"), "Y1");
  EXPECT_EQ(mill.Type(screen, "EdtBusca", "y"), ActResult::kDone);
  EXPECT_EQ(ListKeys(screen), (std::vector<std::string>{"Y1", "Y2", "Y3"}));
  EXPECT_EQ(mill.Type(screen, "EdtBusca", "um texto mais longo do que o código e a descrição juntos"),
            ActResult::kDone);
  EXPECT_TRUE(ListKeys(screen).empty());
  EXPECT_EQ(mill.Text(screen, "LblBusca"), "Nenhum registro");
  EXPECT_EQ(mill.Text(screen, "EdtCodigo"), "");
  EXPECT_EQ(Said(), "");
}

TEST_F(Materials, IncludesWithDefaultsAndAccents) {
  mill.SetClock("2026-03-10 10:00:00");
  EXPECT_EQ(mill.Desk().PressKey(screen, host::Key::kF2), ActResult::kDone);
  EXPECT_EQ(Focused(), "EdtCodigo");
  EXPECT_EQ(mill.Text(screen, "EdtCodigo"), "");
  EXPECT_EQ(mill.Text(screen, "EdtPeso"), "0");
  Type(screen, {{"EdtCodigo", "N1"},
                {"EdtDescricao", "Fio de algodão \"penteado\"; ção"},
                {"EdtUnidade", "KG"},
                {"EdtPeso", "1,25"},
                {"EdtCodcli", "F0001"},
                {"EdtNe", "24"},
                {"EdtReposicao", "18,123456"},
                {"EdtObservacao", "Primeira linha\nsegunda linha"}});
  EXPECT_EQ(mill.Text(screen, "LblCodcli"), "Fiação Serra");
  Check(screen, "ChkEstoque", false);
  EXPECT_TRUE(screen.HasUnsavedWork());
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Said(), "");
  EXPECT_FALSE(screen.HasUnsavedWork());

  const auto rows = mill.Rows("SELECT * FROM {MATERIAL} WHERE CODIGO = 'N1'");
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].at("DESCRICAO").AsText(), "Fio de algodão \"penteado\"; ção");
  EXPECT_EQ(rows[0].at("PESO").AsFloat(), 1.25);
  EXPECT_EQ(rows[0].at("NE").AsInteger(), 24);
  EXPECT_EQ(rows[0].at("REPOSICAO").AsFloat(), 18.123456);
  EXPECT_EQ(rows[0].at("OBSERVACAO").AsText(), "Primeira linha\nsegunda linha");
  EXPECT_EQ(rows[0].at("ATIVO").AsText(), "S");
  EXPECT_EQ(rows[0].at("ESTOQUE").AsText(), "N");
  EXPECT_TRUE(rows[0].at("GRUPO").IsNull());
  EXPECT_EQ(LastLog(), "CADASTRO DE MATERIAIS|INCLUSAO DE N1|0|N1|ADMIN");
  EXPECT_EQ(ListKeys(screen)[6], "N1");  // at its place in the list, which stands on it
  EXPECT_EQ(mill.Data(screen, "TbLista").RecNo(), 7u);
  EXPECT_EQ(mill.Text(screen, "LblBusca"), "10 registros");
  EXPECT_THROW(mill.Type(screen, "EdtCodigo", "N2"), host::ActError);
}

TEST_F(Materials, AltersOnlyWhatWasChanged) {
  Load(screen, "Y1");
  mill.Exec("UPDATE {MATERIAL} SET PRECO = 9 WHERE CODIGO = 'Y1'");  // as a roll would
  Type(screen, {{"EdtDescricao", "Fio 30/1 algodão penteado"}, {"EdtNe", "32"}});
  mill.TakeStatements();
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Said(), "");
  EXPECT_EQ(mill.TakeStatements("UPDATE MATERIAL"),
            (std::vector<std::string>{"UPDATE MATERIAL SET DESCRICAO = ?, NE = ? WHERE CODIGO = ?"}));
  EXPECT_EQ(Text("SELECT DESCRICAO FROM {MATERIAL} WHERE CODIGO = 'Y1'"), "Fio 30/1 algodão penteado");
  EXPECT_EQ(Text("SELECT PRECO FROM {MATERIAL} WHERE CODIGO = 'Y1'"), "9");
  EXPECT_EQ(mill.Text(screen, "EdtPreco"), "9");
  EXPECT_EQ(LastLog(), "CADASTRO DE MATERIAIS|ALTERACAO DE Y1|1|Y1|ADMIN");
  EXPECT_EQ(mill.Data(screen, "TbLista")["NE"].AsInteger(), 32);

  mill.TakeStatements();
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);  // nothing new
  EXPECT_TRUE(mill.TakeStatements("MATERIAL").empty());
}

TEST_F(Materials, EachRefusalIsOneSentenceAndTheFocusGoesThere) {
  struct Case {
    std::string input;
    std::string text;
    std::string said;
  };
  const std::vector<Case> cases = {
      {"EdtCodigo", "", "Campo \"Código\": o valor é obrigatório."},
      {"EdtCodigo", "F1", "O material F1 já está cadastrado."},
      {"EdtDescricao", "", "Campo \"Descrição\": o valor é obrigatório."},
      {"EdtUnidade", "", "Campo \"Unidade\": o valor é obrigatório."},
      {"EdtNe", "-1", "Campo \"Título Ne\": \"-1\" é menor que 0."},
      {"EdtPeso", "-0,5", "Campo \"Peso (kg)\": \"-0,5\" é menor que 0."},
      {"EdtGrupo", "XYZ", "Campo \"Grupo\": \"XYZ\" não está cadastrado."},
      {"EdtCodcli", "M99999", "Campo \"Cliente ou fornecedor\": \"M99999\" não está cadastrado."},
  };
  mill.Click(screen, "BtnIncluir");
  for (const Case& c : cases) {
    Type(screen, {{"EdtCodigo", "N1"},
                  {"EdtDescricao", "Novo"},
                  {"EdtUnidade", "KG"},
                  {"EdtNe", "1"},
                  {"EdtPeso", "1"},
                  {"EdtGrupo", ""},
                  {"EdtCodcli", ""}});
    Type(screen, {{c.input, c.text}});
    EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kRefused) << c.said;
    EXPECT_EQ(Said(), c.said);
    EXPECT_EQ(Focused(), c.input) << c.said;
    EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {MATERIAL}").AsInteger(), 9);
  }
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM TEC_LOG").AsInteger(), 0);
}

TEST_F(Materials, ALookupFillsTheCodeAndTellsItsName) {
  Load(screen, "Y1");
  auto& edit = dynamic_cast<host::Edit&>(*screen.FindComponent("EdtCodcli"));
  mill.Desk().Enter(edit);
  mill.Person().Pick("PqCodcli", "M00001");
  EXPECT_EQ(mill.Desk().PressKey(screen, host::Key::kF4), ActResult::kDone);
  EXPECT_EQ(edit.Text(), "M00001");
  EXPECT_EQ(mill.Text(screen, "LblCodcli"), "Malharia Aurora");
  mill.Type(screen, "EdtCodcli", "M99999");
  EXPECT_EQ(mill.Text(screen, "LblCodcli"), "não cadastrado");
  mill.Type(screen, "EdtCodcli", "");
  EXPECT_EQ(mill.Text(screen, "LblCodcli"), "");
}

TEST_F(Materials, AFlagNeverStoredMeansWhatANewRecordBeginsWith) {
  mill.Exec("UPDATE {MATERIAL} SET ATIVO = NULL WHERE CODIGO = 'Y1'");
  Load(screen, "Y1");
  EXPECT_TRUE(dynamic_cast<host::CheckBox&>(*screen.FindComponent("ChkAtivo")).Checked());
  EXPECT_FALSE(screen.HasUnsavedWork());
  Type(screen, {{"EdtNe", "31"}});
  mill.Click(screen, "BtnGravar");
  EXPECT_TRUE(mill.Scalar("SELECT ATIVO FROM {MATERIAL} WHERE CODIGO = 'Y1'").IsNull());
  Check(screen, "ChkAtivo", false);
  mill.Click(screen, "BtnGravar");
  EXPECT_EQ(Text("SELECT ATIVO FROM {MATERIAL} WHERE CODIGO = 'Y1'"), "N");
}

TEST_F(Materials, OnlyTheFirstTwoHundredAreListedAndMoreIsTold) {
  mill.Exec(
      "EXECUTE BLOCK AS DECLARE I INTEGER = 0; BEGIN WHILE (I < 50000) DO BEGIN "
      "INSERT INTO {MATERIAL} (CODIGO, DESCRICAO) VALUES ('B' || LPAD(:I, 6, '0'), 'Artigo ' || :I); I = I + 1; END "
      "END");
  mill.TakeStatements();
  mill.Type(screen, "EdtBusca", "artigo");
  EXPECT_EQ(ListKeys(screen).size(), 200u);
  EXPECT_EQ(ListKeys(screen).front(), "B000000");
  EXPECT_EQ(mill.Text(screen, "LblBusca"), "Os primeiros 200; há mais...");
  const auto lists = mill.TakeStatements("ORDER BY");
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0].substr(0, 16), "SELECT FIRST 201");
  mill.Type(screen, "EdtBusca", "ARTIGO 49999");
  EXPECT_EQ(ListKeys(screen), (std::vector<std::string>{"B049999"}));
}

}  // namespace
