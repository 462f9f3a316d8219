// What every register does with a record: leaving it, rights, other stations, failures, deletion.
#include <gtest/gtest.h>

#include "host/errors.h"
#include "registers/register_mill.h"

namespace {

using host::ActResult;

class Records : public test::RegisterMill {
 protected:
  bool Checked(host::Screen& screen, std::string_view box) {
    return dynamic_cast<host::CheckBox&>(*screen.FindComponent(box)).Checked();
  }
};

// --- leaving what is not stored -----------------------------------------------------------------------------------

TEST_F(Records, LeavingChangesAsksAndNoKeepsThem) {
  auto& screen = Open("TfmCores");
  Type(screen, {{"EdtDescricao", "Branco gelo"}});
  EXPECT_EQ(mill.Desk().SelectRow(screen.GrdLista, 2), ActResult::kRefused);
  EXPECT_EQ(Said(), "Há alterações não gravadas. Deseja descartá-las?");
  EXPECT_EQ(mill.Text(screen, "EdtCor"), "01");
  EXPECT_EQ(mill.Text(screen, "EdtDescricao"), "Branco gelo");
  EXPECT_EQ(mill.Data(screen, "TbLista").RecNo(), 1u);

  mill.Person().Answer("descartá-las", "yes");
  EXPECT_EQ(mill.Desk().SelectRow(screen.GrdLista, 2), ActResult::kDone);
  EXPECT_EQ(mill.Text(screen, "EdtCor"), "02");
  EXPECT_EQ(Text("SELECT DESCRICAO FROM {CADCOR} WHERE COR = '01'"), "Branco");
}

TEST_F(Records, SearchingAndIncludingAskToo) {
  auto& screen = Open("TfmCores");
  Type(screen, {{"EdtDescricao", "Branco gelo"}});
  mill.Type(screen, "EdtBusca", "azul");
  EXPECT_EQ(Said(), "Há alterações não gravadas. Deseja descartá-las?");
  EXPECT_EQ(mill.Text(screen, "EdtBusca"), "");
  EXPECT_EQ(ListKeys(screen).size(), 4u);
  EXPECT_EQ(mill.Click(screen, "BtnIncluir"), ActResult::kRefused);
  EXPECT_EQ(Said(), "Há alterações não gravadas. Deseja descartá-las?");
  EXPECT_EQ(mill.Text(screen, "EdtDescricao"), "Branco gelo");
}

TEST_F(Records, EscGivesUpANewRecordOrWhatWasChanged) {
  auto& screen = Open("TfmCores");
  mill.Click(screen, "BtnIncluir");
  EXPECT_EQ(mill.Text(screen, "EdtCor"), "");
  EXPECT_EQ(mill.Desk().PressKey(screen, host::Key::kEscape), ActResult::kDone);
  EXPECT_EQ(mill.Text(screen, "EdtCor"), "01");

  Type(screen, {{"EdtDescricao", "Branco gelo"}});
  mill.Person().Answer("descartá-las", "yes");
  mill.Desk().PressKey(screen, host::Key::kEscape);
  EXPECT_EQ(mill.Text(screen, "EdtDescricao"), "Branco");
  EXPECT_FALSE(screen.HasUnsavedWork());
}

TEST_F(Records, AClickOnTheRowOfTheListTurnsBackFromANewRecord) {
  auto& screen = Open("TfmCores");
  mill.Click(screen, "BtnIncluir");
  EXPECT_EQ(mill.Desk().ClickRow(screen.GrdLista, 1), ActResult::kDone);
  EXPECT_EQ(mill.Text(screen, "EdtCor"), "01");
}

// --- rights -------------------------------------------------------------------------------------------------------

TEST_F(Records, WithoutTheRightEveryActionEndsSilently) {
  auto& screen = Open("TfmCores");
  mill.TakeRight("TfmCores", "");  // no right on this register is left
  Type(screen, {{"EdtDescricao", "Branco gelo"}});
  mill.TakeStatements();
  for (const char* button : {"BtnIncluir", "BtnGravar", "BtnExcluir", "BtnImportar"}) {
    EXPECT_EQ(mill.Click(screen, button), ActResult::kRefused) << button;
  }
  EXPECT_EQ(Said(), "");
  EXPECT_TRUE(mill.TakeStatements("CADCOR").empty());
  EXPECT_EQ(Text("SELECT DESCRICAO FROM {CADCOR} WHERE COR = '01'"), "Branco");
}

TEST_F(Records, IncludingAndDeletingAreRightsOfTheirOwn) {
  auto& screen = Open("TfmCores");
  mill.TakeRight("TfmCores", "");
  mill.Insert("TEC_DIREITO", {{"USUARIO", "ADMIN"}, {"TELA", "TfmCores"}, {"OPERACAO", "A"}});
  Type(screen, {{"EdtDescricao", "Branco gelo"}});
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Text("SELECT DESCRICAO FROM {CADCOR} WHERE COR = '01'"), "Branco gelo");
  EXPECT_EQ(mill.Click(screen, "BtnExcluir"), ActResult::kRefused);
  EXPECT_EQ(Said(), "");
}

// --- other stations -----------------------------------------------------------------------------------------------

TEST_F(Records, ARecordChangedElsewhereIsToldWithWhoAndWhenAndLoadedAgain) {
  mill.SetClock("2026-03-10 10:00:00");
  auto& screen = Open("TfmCores");
  Type(screen, {{"EdtDescricao", "Branco gelo"}});
  mill.Exec("UPDATE {CADCOR} SET DESCRICAO = 'Branco neve' WHERE COR = '01'");
  mill.Insert("TEC_LOG", {{"USUARIO", "MARIA"},
                          {"DATA_HORA", "2026-03-10 10:05:00"},
                          {"ASSUNTO", "CADASTRO DE CORES"},
                          {"TEXTO", "ALTERACAO DE 01"},
                          {"OPERACAO", 1},
                          {"CHAVE", "01"}});
  const std::string told =
      "A cor 01 foi alterada por MARIA em 10/03/2026 10:05 depois de aberta aqui. Deseja carregar novamente? O que foi "
      "digitado se perde.";
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(Said(), told);
  EXPECT_EQ(mill.Text(screen, "EdtDescricao"), "Branco gelo");  // No: what was typed is still there
  EXPECT_EQ(Text("SELECT DESCRICAO FROM {CADCOR} WHERE COR = '01'"), "Branco neve");

  mill.Person().Answer("carregar novamente", "yes");
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(mill.Text(screen, "EdtDescricao"), "Branco neve");
  EXPECT_EQ(mill.Data(screen, "TbLista")["DESCRICAO"].AsText(), "Branco neve");
  EXPECT_FALSE(screen.HasUnsavedWork());

  Type(screen, {{"EdtDescricao", "Branco gelo"}});
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Text("SELECT DESCRICAO FROM {CADCOR} WHERE COR = '01'"), "Branco gelo");
}

TEST_F(Records, AChangeThatLeftNoLogIsToldWithoutAName) {
  mill.SetClock("2026-03-10 10:00:00");
  auto& screen = Open("TfmMateriais");
  Load(screen, "Y1");
  Type(screen, {{"EdtNe", "31"}});
  mill.Exec("UPDATE {MATERIAL} SET UNIDADE = 'MT' WHERE CODIGO = 'Y1'");
  Said();
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(
      Said(),
      "O material Y1 foi alterado depois de aberto aqui. Deseja carregar novamente? O que foi digitado se perde.");
}

TEST_F(Records, WhatARollSetsIsAConflictOnlyForWhoTypedThere) {
  auto& screen = Open("TfmMateriais");
  Load(screen, "Y1");
  Type(screen, {{"EdtCustoImp", "7"}});
  mill.Exec("UPDATE {MATERIAL} SET CUSTO_IMP = 3 WHERE CODIGO = 'Y1'");
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(Text("SELECT CUSTO_IMP FROM {MATERIAL} WHERE CODIGO = 'Y1'"), "3");
}

TEST_F(Records, ARecordDeletedElsewhereCanBeIncludedAgain) {
  auto& screen = Open("TfmCores");
  Load(screen, "03");
  Type(screen, {{"EdtDescricao", "Vermelho vivo"}});
  mill.Exec("DELETE FROM {CADCOR} WHERE COR = '03'");
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(Said(), "A cor 03 foi excluída depois de aberta aqui. Para incluir novamente, grave outra vez.");
  EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Text("SELECT DESCRICAO FROM {CADCOR} WHERE COR = '03'"), "Vermelho vivo");
  EXPECT_EQ(LastLog(), "CADASTRO DE CORES|INCLUSAO DE 03|0|03|ADMIN");
}

TEST_F(Records, StandingOnARecordDeletedElsewhereTells) {
  auto& screen = Open("TfmCores");
  mill.Exec("DELETE FROM {CADCOR} WHERE COR = '02'");
  EXPECT_EQ(mill.Desk().SelectRow(screen.GrdLista, 2), ActResult::kDone);
  EXPECT_EQ(Said(), "A cor 02 foi excluída por outra estação.");
  EXPECT_EQ(mill.Text(screen, "EdtCor"), "");
}

// --- deleting -----------------------------------------------------------------------------------------------------

TEST_F(Records, DeletesAfterAYes) {
  auto& screen = Open("TfmCores");
  Load(screen, "03");
  EXPECT_EQ(mill.Click(screen, "BtnExcluir"), ActResult::kDone);  // No is the default
  EXPECT_EQ(Said(), "Deseja excluir a cor 03?");
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {CADCOR} WHERE COR = '03'").AsInteger(), 1);

  mill.Person().Answer("Deseja excluir a cor 03?", "yes");
  EXPECT_EQ(mill.Click(screen, "BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {CADCOR} WHERE COR = '03'").AsInteger(), 0);
  EXPECT_EQ(LastLog(), "CADASTRO DE CORES|EXCLUSAO DE 03|2|03|ADMIN");
  EXPECT_TRUE(ListKeys(screen).empty());  // the search for it still stands
  EXPECT_EQ(mill.Text(screen, "EdtCor"), "");
  Said();
  EXPECT_EQ(mill.Click(screen, "BtnExcluir"), ActResult::kRefused);
  EXPECT_EQ(Said(), "Não há registro para excluir.");
}

TEST_F(Records, EmptyStockRowsGoWithTheirMaterial) {
  auto& screen = Open("TfmMateriais");
  mill.Exec("DELETE FROM {CADCORTI} WHERE CODIGO = 'F9'");
  Load(screen, "F9");
  mill.Person().Answer("Deseja excluir o material F9?", "yes");
  EXPECT_EQ(mill.Click(screen, "BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {MATERIAL} WHERE CODIGO = 'F9'").AsInteger(), 0);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {MAT_ITEN} WHERE CODIGO = 'F9'").AsInteger(), 0);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {MAT_ITEN} WHERE CODIGO = 'F1'").AsInteger(), 2);
}

// --- failures -----------------------------------------------------------------------------------------------------

TEST_F(Records, AFailureAtAnyStatementOfASaveLeavesEverythingAsItWas) {
  auto& screen = Open("TfmMateriais");
  mill.Click(screen, "BtnIncluir");
  Type(screen, {{"EdtCodigo", "N1"}, {"EdtDescricao", "Novo"}, {"EdtUnidade", "KG"}, {"EdtCodcli", "F0001"}});
  int n = 1;
  for (;; ++n) {
    mill.FailStatement(n);
    const ActResult saved = mill.Click(screen, "BtnGravar");
    if (!mill.StopFailing()) break;
    EXPECT_EQ(saved, ActResult::kFailed) << n;
    EXPECT_EQ(Said(), "falha provocada") << n;
    EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {MATERIAL} WHERE CODIGO = 'N1'").AsInteger(), 0) << n;
    EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM TEC_LOG").AsInteger(), 0) << n;
    EXPECT_EQ(mill.Text(screen, "EdtDescricao"), "Novo") << n;
    EXPECT_TRUE(screen.HasUnsavedWork()) << n;
    ASSERT_LT(n, 50);
  }
  EXPECT_GT(n, 5);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {MATERIAL} WHERE CODIGO = 'N1'").AsInteger(), 1);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM TEC_LOG").AsInteger(), 1);
}

TEST_F(Records, AFailureAtAnyStatementOfAnAlterationLeavesEverythingAsItWas) {
  auto& screen = Open("TfmTurnos");
  Type(screen, {{"EdtDescricao", "Manhã"}});
  auto& hours = mill.GridOf(screen, "TbDetalhe");
  mill.Desk().SelectRow(hours, 2);
  mill.Desk().SetRow(hours, {{"ENTRADA", "05:30"}});
  int n = 1;
  for (;; ++n) {
    mill.FailStatement(n);
    const ActResult saved = mill.Click(screen, "BtnGravar");
    if (!mill.StopFailing()) break;
    EXPECT_EQ(saved, ActResult::kFailed) << n;
    EXPECT_EQ(Said(), "falha provocada") << n;
    EXPECT_EQ(Text("SELECT DESCRICAO FROM {TURNO} WHERE TURNO = '1'"), "Dia") << n;
    EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {TURNO_HORARIOS} WHERE TURNO = '1'").AsInteger(), 7) << n;
    EXPECT_EQ(Text("SELECT ENTRADA FROM {TURNO_HORARIOS} WHERE TURNO = '1' AND DIA = 2"), "06:00:00") << n;
    EXPECT_TRUE(screen.HasUnsavedWork()) << n;
    ASSERT_LT(n, 60);
  }
  EXPECT_GT(n, 8);
  EXPECT_EQ(Text("SELECT ENTRADA FROM {TURNO_HORARIOS} WHERE TURNO = '1' AND DIA = 2"), "05:30:00");
}

TEST_F(Records, AFailureAtAnyStatementOfADeletionLeavesEverythingAsItWas) {
  auto& screen = Open("TfmTurnos");
  mill.Exec("UPDATE {PESSOAL} SET TURNO = NULL");
  int n = 1;
  for (;; ++n) {
    mill.Person().Answer("Deseja excluir", "yes");
    mill.FailStatement(n);
    const ActResult deleted = mill.Click(screen, "BtnExcluir");
    if (!mill.StopFailing()) break;
    EXPECT_EQ(deleted, ActResult::kFailed) << n;
    // What follows the deletion (the next record of the list is read) fails without undoing it.
    const bool durable = mill.Scalar("SELECT COUNT(*) FROM TEC_LOG").AsInteger() == 1;
    EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {TURNO} WHERE TURNO = '1'").AsInteger(), durable ? 0 : 1) << n;
    EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {TURNO_HORARIOS} WHERE TURNO = '1'").AsInteger(), durable ? 0 : 7) << n;
    if (durable) break;
    EXPECT_EQ(mill.Text(screen, "EdtTurno"), "1") << n;
    mill.Person().TakeUnexpected();
    ASSERT_LT(n, 60);
  }
  EXPECT_GT(n, 5);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {TURNO} WHERE TURNO = '1'").AsInteger(), 0);
}

TEST_F(Records, AFailureWhileTheListIsReadKeepsTheRecord) {
  auto& screen = Open("TfmCores");
  mill.FailStatement(1);
  EXPECT_EQ(mill.Desk().SelectRow(screen.GrdLista, 2), ActResult::kFailed);
  ASSERT_TRUE(mill.StopFailing());
  EXPECT_EQ(mill.Text(screen, "EdtCor"), "01");
  Said();
  EXPECT_EQ(mill.Desk().ClickRow(screen.GrdLista, 2), ActResult::kDone);  // asked again
  EXPECT_EQ(mill.Text(screen, "EdtCor"), "02");
}

}  // namespace
