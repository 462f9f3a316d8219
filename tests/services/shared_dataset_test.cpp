// Shared datasets: looked up by key, and the one that is edited.
#include <gtest/gtest.h>

#include "app/services/tables.h"
#include "host/errors.h"
#include "host/kit/screen.h"
#include "host/tabela.h"
#include "support/mill.h"

namespace {

using host::SharedState;

class SharedDatasets : public testing::Test {
 protected:
  SharedDatasets() { test::FillSmallMill(mill_); }
  host::Tabela& Tables() { return mill_.App().GetTabela(); }
  host::SharedDataset& Open(std::string_view name) { return Open(name, screen_); }
  host::SharedDataset& Open(std::string_view name, const host::Screen& opener) {
    Tables().AbreTabela(name, opener);
    return Tables().Dataset(name, opener);
  }
  std::int64_t Prices() { return mill_.Scalar("SELECT COUNT(*) FROM {CADCORTI}").AsInteger(); }

  test::Mill mill_;
  host::Screen screen_{mill_.App(), "TfmTeste", "fmTeste", "Teste"};
};

TEST_F(SharedDatasets, EveryKnownNameOpensInAnyCase) {
  for (const char* name :
       {"tbEntidade", "tbentidade", "tbPedido", "tbMateriais", "tbCompMaterial", "tbDeposito", "tbCor", "TbCadCorTi"}) {
    EXPECT_NO_THROW(Open(name)) << name;
  }
  EXPECT_THROW(Tables().AbreTabela("tbNada", screen_), host::InputError);
}

TEST_F(SharedDatasets, OpeningsAreCounted) {
  Open("tbCor");
  Open("TBCOR");
  Tables().FechaTabela("tbCor", screen_);
  EXPECT_NO_THROW(Tables().Dataset("tbCor", screen_));
  Tables().FechaTabela("tbCor", screen_);
  EXPECT_THROW(Tables().Dataset("tbCor", screen_), host::InputError);
  EXPECT_NO_THROW(Tables().FechaTabela("tbCor", screen_));
}

TEST_F(SharedDatasets, LocatesByKeyAndReadsTheRow) {
  host::SharedDataset& materials = Open("tbMateriais");
  ASSERT_TRUE(materials.Locate("codigo", {"F1"}));
  EXPECT_EQ(materials.FieldByName("Descricao").AsText(), "Meia malha 30/1 PV");
  EXPECT_DOUBLE_EQ(materials.FieldByName("LARGURA").AsFloat(), 1.8);
  EXPECT_THROW(materials.FieldByName("NADA"), std::out_of_range);
}

TEST_F(SharedDatasets, NothingFoundLeavesNoRow) {
  host::SharedDataset& materials = Open("tbMateriais");
  ASSERT_TRUE(materials.Locate("CODIGO", {"F1"}));
  EXPECT_FALSE(materials.Locate("CODIGO", {"F'1;"}));
  EXPECT_TRUE(materials.FieldByName("DESCRICAO").IsNull());
  EXPECT_THROW(materials.FieldByName("NADA"), std::out_of_range);
}

TEST_F(SharedDatasets, LocatesByManyColumnsAndNull) {
  host::SharedDataset& compositions = Open("tbCompMaterial");
  ASSERT_TRUE(compositions.Locate("MATERIAL;COR;CODIGO", {"F1", "02", "Y2"}));
  EXPECT_DOUBLE_EQ(compositions.FieldByName("PERC").AsFloat(), 40);
  EXPECT_TRUE(compositions.Locate("MATERIAL;PRODUTO", {"F1", host::Value()}));
  EXPECT_FALSE(compositions.Locate("MATERIAL;COR", {"F1", host::Value()}));
  EXPECT_THROW(compositions.Locate("MATERIAL;COR", {"F1"}), std::invalid_argument);
}

TEST_F(SharedDatasets, OneLookupIsOneStatement) {
  host::SharedDataset& materials = Open("tbMateriais");
  mill_.TakeStatements();
  materials.Locate("CODIGO", {"F1"});
  materials.FieldByName("DESCRICAO");
  materials.FieldByName("PESO");
  EXPECT_EQ(mill_.TakeStatements().size(), 1u);
}

TEST_F(SharedDatasets, TheFilterHidesRows) {
  mill_.Insert("CADCORTI", {{"TIPO", "T"}, {"CODIGO", "F1"}, {"CODCLI", "M00004"}, {"COR", "0"}, {"CUSTO", 9}});
  host::SharedDataset& prices = Open("TbCadCorTi");
  EXPECT_TRUE(prices.Locate("CODIGO;CODCLI;COR", {"F1", "M00004", "0"}));
  prices.SetFilter("TIPO = 'C' OR TIPO = 'X'");
  EXPECT_FALSE(prices.Locate("CODIGO;CODCLI;COR", {"F1", "M00004", "0"}));
  EXPECT_TRUE(prices.Locate("CODIGO;CODCLI;COR", {"F1", "M00001", "0"}));
  prices.SetFilter("");
  EXPECT_TRUE(prices.Locate("CODIGO;CODCLI;COR", {"F1", "M00004", "0"}));
}

TEST_F(SharedDatasets, EachOpenerHasRowAndFilterToItself) {
  const host::Screen other(mill_.App(), "TfmOutra", "fmOutra", "Outra");
  host::SharedDataset& mine = Open("TbCadCorTi");
  host::SharedDataset& theirs = Open("TbCadCorTi", other);
  mine.SetFilter("COR = '02'");
  EXPECT_FALSE(mine.Locate("CODIGO;CODCLI;COR", {"F1", "M00001", "0"}));
  ASSERT_TRUE(theirs.Locate("CODIGO;CODCLI;COR", {"F1", "M00001", "0"}));
  ASSERT_TRUE(mine.Locate("CODIGO;CODCLI", {"F1", "M00001"}));
  EXPECT_EQ(mine.FieldByName("COR").AsText(), "02");
  EXPECT_EQ(theirs.FieldByName("COR").AsText(), "0");
  mine.Edit();
  EXPECT_TRUE(mine.InEdit());
  EXPECT_FALSE(theirs.InEdit());
  Tables().FechaTabela("TbCadCorTi", other);
  EXPECT_THROW(Tables().Dataset("TbCadCorTi", other), host::InputError);
  EXPECT_EQ(&Tables().Dataset("TbCadCorTi", screen_), &mine);
}

// The next screen may come to lie where this one lay.
TEST_F(SharedDatasets, WhatAScreenLeftOpenGoesWithIt) {
  const auto& tables = dynamic_cast<const app::services::Tables&>(Tables());
  for (const bool freed : {false, true}) {
    host::Screen& screen = mill_.Open("TFmCadComposi");
    Open("tbCor", screen).SetFilter("COR = '01'");
    Open("tbCor", screen);
    Open("tbCor");
    if (freed) {
      mill_.App().GetDesk().Free(screen);
    } else {
      ASSERT_EQ(mill_.Desk().CloseScreen(screen), host::ActResult::kDone);
    }
    EXPECT_EQ(tables.OpenCount(), 1u);  // the other screen's
  }
}

TEST_F(SharedDatasets, TellItsStateAndWhetherItStandsOnARow) {
  host::SharedDataset& prices = Open("TbCadCorTi");
  EXPECT_FALSE(prices.HasRow());
  EXPECT_EQ(prices.State(), SharedState::kBrowse);
  ASSERT_TRUE(prices.Locate("CODIGO;CODCLI;COR", {"F1", "M00001", "02"}));
  EXPECT_TRUE(prices.HasRow());
  prices.Edit();
  EXPECT_EQ(prices.State(), SharedState::kEdit);
  EXPECT_TRUE(prices.HasRow());
  prices.Cancel();
  EXPECT_FALSE(prices.InEdit());
  prices.Append();
  EXPECT_EQ(prices.State(), SharedState::kInsert);
  EXPECT_FALSE(prices.HasRow());
  prices.Cancel();
  EXPECT_TRUE(prices.HasRow());  // the one before
  prices.Edit();
  EXPECT_FALSE(prices.Locate("CODIGO", {"nada"}));
  EXPECT_FALSE(prices.HasRow());
  EXPECT_FALSE(prices.InEdit());
}

TEST_F(SharedDatasets, WithoutARowThereIsNothingToEdit) {
  host::SharedDataset& prices = Open("TbCadCorTi");
  EXPECT_THROW(prices.Edit(), std::logic_error);
  EXPECT_FALSE(prices.InEdit());
  ASSERT_TRUE(prices.Locate("CODIGO;CODCLI;COR", {"F1", "M00001", "02"}));
  prices.Delete();
  EXPECT_FALSE(prices.HasRow());
  EXPECT_THROW(prices.Edit(), std::logic_error);
}

// --- editing
// ------------------------------------------------------------------------------------------------------------

TEST_F(SharedDatasets, AppendsAPrice) {
  host::SharedDataset& prices = Open("TbCadCorTi");
  prices.Append();
  prices.SetField("TIPO", "C");
  prices.SetField("codigo", "F2");
  prices.SetField("CODCLI", "M00004");
  prices.SetField("CUSTO", 3.75);
  EXPECT_DOUBLE_EQ(prices.FieldByName("Custo").AsFloat(), 3.75);
  EXPECT_TRUE(prices.FieldByName("OBS").IsNull());
  prices.SetField("COR", "0");
  prices.Post();
  EXPECT_TRUE(prices.HasRow());
  EXPECT_FALSE(prices.InEdit());
  EXPECT_EQ(prices.FieldByName("CODIGO").AsText(), "F2");
  EXPECT_DOUBLE_EQ(mill_.Scalar("SELECT CUSTO FROM {CADCORTI} WHERE CODIGO = 'F2' AND CODCLI = 'M00004'").AsFloat(),
                   3.75);
}

TEST_F(SharedDatasets, EditsOnlyTheRowItStandsOn) {
  host::SharedDataset& prices = Open("TbCadCorTi");
  ASSERT_TRUE(prices.Locate("CODIGO;CODCLI;COR", {"F1", "M00001", "02"}));
  prices.Edit();
  prices.SetField("CUSTO", 7.25);
  prices.SetField("COR", "01");
  prices.Post();
  EXPECT_EQ(prices.FieldByName("COR").AsText(), "01");
  EXPECT_DOUBLE_EQ(
      mill_.Scalar("SELECT SUM(CUSTO) FROM {CADCORTI} WHERE CODIGO = 'F1' AND CODCLI = 'M00001'").AsFloat(), 12.25);
}

TEST_F(SharedDatasets, CancelForgetsAndDeleteRemoves) {
  host::SharedDataset& prices = Open("TbCadCorTi");
  const std::int64_t before = Prices();
  ASSERT_TRUE(prices.Locate("CODIGO;CODCLI;COR", {"F1", "M00001", "02"}));
  prices.Edit();
  prices.SetField("CUSTO", 99);
  prices.Cancel();
  EXPECT_DOUBLE_EQ(prices.FieldByName("CUSTO").AsFloat(), 6.5);
  prices.Post();
  EXPECT_DOUBLE_EQ(mill_.Scalar("SELECT MAX(CUSTO) FROM {CADCORTI}").AsFloat(), 6.5);
  prices.Delete();
  EXPECT_EQ(Prices(), before - 1);
  EXPECT_TRUE(prices.FieldByName("CUSTO").IsNull());
  prices.Delete();
  EXPECT_EQ(Prices(), before - 1);
}

TEST_F(SharedDatasets, ARefusedPostStaysInEdit) {
  host::SharedDataset& prices = Open("TbCadCorTi");
  prices.Append();
  for (const auto& [column, text] : std::vector<std::pair<std::string, std::string>>{
           {"TIPO", "C"}, {"CODIGO", "F1"}, {"CODCLI", "M00001"}, {"COR", "0"}}) {
    prices.SetField(column, text);
  }
  EXPECT_THROW(prices.Post(), host::DatabaseError);
  EXPECT_EQ(prices.State(), SharedState::kInsert);
  prices.SetField("COR", "01");
  EXPECT_NO_THROW(prices.Post());
}

TEST_F(SharedDatasets, ARowDeletedElsewhereIsTold) {
  host::SharedDataset& prices = Open("TbCadCorTi");
  ASSERT_TRUE(prices.Locate("CODIGO;CODCLI;COR", {"F1", "M00001", "02"}));
  mill_.Exec("DELETE FROM {CADCORTI} WHERE COR = '02'");
  prices.Edit();
  prices.SetField("CUSTO", 1);
  EXPECT_THROW(prices.Post(), host::DatabaseError);
}

TEST_F(SharedDatasets, WhatNoScreenEditsRefusesEditing) {
  host::SharedDataset& materials = Open("tbMateriais");
  EXPECT_THROW(materials.Append(), std::logic_error);
  EXPECT_THROW(materials.Delete(), std::logic_error);
  EXPECT_THROW(Open("TbCadCorTi").SetField("CUSTO", 1), std::logic_error);
}

}  // namespace
