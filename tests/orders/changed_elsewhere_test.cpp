// An order that somebody else changed, deleted or stored while it was on the screen.
#include "order_mill.h"

namespace test {
namespace {

class ChangedElsewhere : public OrderTest {
 protected:
  void SetUp() override {
    OrderTest::SetUp();
    mill_.Insert("TEC_USUARIO", {{"CODIGO", "MARIA"}, {"NOME", "MARIA"}, {"ADMINISTRADOR", "S"}});
    Mill::Options options;
    options.database = mill_.Path();
    options.user = "MARIA";
    other_ = std::make_unique<Mill>(options);
    other_->SetClock("2026-11-21 14:05:33");
    elsewhere_ = &other_->Open("TfmCadLoteTec");
  }

  /// MARIA gives the order another sheet, and saves.
  void ChangeElsewhere(const std::string& number) {
    EXPECT_EQ(other_->Type(*elsewhere_, "EdtNumero", number), ActResult::kDone);
    EXPECT_EQ(other_->Type(*elsewhere_, "EdtFicha", "DE MARIA"), ActResult::kDone);
    EXPECT_EQ(other_->Click(*elsewhere_, "BtnGravar"), ActResult::kDone);
    EXPECT_EQ(other_->Messages(), Lines());
  }
  void DeleteElsewhere(const std::string& number) {
    EXPECT_EQ(other_->Type(*elsewhere_, "EdtNumero", number), ActResult::kDone);
    other_->Person().Answer("Deseja excluir totalmente", "yes");
    EXPECT_EQ(other_->Click(*elsewhere_, "BtnExcluir"), ActResult::kDone);
  }

  /// Saves in vain: the one question is `said`, and nothing is written.
  void ExpectAsked(const std::string& said, const char* reply, const char* button = "BtnGravar") {
    const Lines before = Everything();
    if (reply != nullptr) mill_.Person().Answer("Deseja", reply);
    EXPECT_EQ(Click(button), ActResult::kRefused);
    const auto shown = mill_.Person().TakeMessages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, said);
    EXPECT_EQ(shown[0].title, "Ordens de Tecelagem");
    EXPECT_EQ(shown[0].icon, host::Icon::kQuestion);
    EXPECT_EQ(Everything(), before);
  }

  std::unique_ptr<Mill> other_;
  host::Screen* elsewhere_ = nullptr;
};

constexpr const char* kByMaria =
    "A ordem 000001 foi alterada por MARIA em 21/11/2026 14:05, depois de carregada nesta tela. Nada foi gravado. "
    "Deseja carregá-la novamente?";
constexpr const char* kBySomebody =
    "A ordem 000001 foi alterada por outro usuário ou programa, depois de carregada nesta tela. Nada foi gravado. "
    "Deseja carregá-la novamente?";

TEST_F(ChangedElsewhere, NoLeavesTheScreenAndTheNextSaveAsksAgain) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  Type("EdtFicha", "MINHA");
  ChangeElsewhere(number);
  ExpectAsked(kByMaria, nullptr);  // nobody answers: No is the default
  EXPECT_EQ(Text("EdtFicha"), "MINHA");
  EXPECT_TRUE(Screen().HasUnsavedWork());
  ExpectAsked(kByMaria, "no");
  EXPECT_EQ(Text("EdtFicha"), "MINHA");
}

TEST_F(ChangedElsewhere, YesLoadsItAgainAndThenItIsSaved) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  Type("EdtFicha", "MINHA");
  ChangeElsewhere(number);
  ExpectAsked(kByMaria, "yes");
  EXPECT_EQ(Text("EdtFicha"), "DE MARIA");
  EXPECT_FALSE(Screen().HasUnsavedWork());
  Type("EdtPrazo", "30");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(Stored("SELECT * FROM {TECEL}", {"FICHA", "PERIODO"}), Lines{"DE MARIA | 30"});
}

TEST_F(ChangedElsewhere, EveryPartOfTheStoredOrderCounts) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F1", "02", "50"}});
  mill_.Insert("MAT_RESERVA", {{"NUMERO", number},
                               {"CODIGO", "Y1"},
                               {"COR", "CR"},
                               {"DEPOSITO", "D1"},
                               {"LOTE", "L1"},
                               {"QTDE", 10},
                               {"TIPO", "T"}});
  const Lines changes = {"UPDATE {TECEL} SET OBSERVACAO = 'outra'",
                         "UPDATE {TECEL} SET SITUACAO = 'B'",
                         "UPDATE {TECEL} SET DT_EMISSAO = '2026-03-09'",
                         "UPDATE {TECEL_ITEN} SET QTDE_B = 3 WHERE COR = '02'",
                         "UPDATE {TECEL_ITEN} SET BAIXADA = 'S' WHERE COR = '01'",
                         "UPDATE {TECEL_ITEN} SET CUSTO = 7 WHERE COR = '01'",
                         "DELETE FROM {TECEL_ITEN} WHERE COR = '02'",
                         "UPDATE {MAT_RESERVA} SET QTDE = 4, QTDE_B = 6",
                         "DELETE FROM {MAT_RESERVA}"};
  for (const std::string& change : changes) {
    Load(number);
    mill_.Exec(change);
    ExpectAsked(kBySomebody, nullptr);
  }
  // Saving brings the state back to open, and the order can be saved again and again.
  Load(number);
  Click("BtnGravar");
  mill_.Messages();
}

TEST_F(ChangedElsewhere, WhatBelongsToOthersDoesNotCount) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  const std::string another = SavedOrder({{"F2", "01", "5"}});
  Load(number);
  mill_.Insert("MAT_RESERVA", {{"NUMERO", number},
                               {"CODIGO", "Y1"},
                               {"COR", "CR"},
                               {"DEPOSITO", "D1"},
                               {"LOTE", "L1"},
                               {"QTDE", 10},
                               {"TIPO", "F"}});
  mill_.Exec("UPDATE {TECEL} SET FICHA = 'x' WHERE NUMERO = '" + another + "'");
  mill_.Exec("UPDATE {MATERIAL} SET DESCRICAO = 'outra' WHERE CODIGO = 'F1'");
  mill_.Exec("UPDATE {COMP_MATERIAL} SET LARGURA = 2 WHERE MATERIAL = 'F1' AND CODIGO = 'Y2'");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(ChangedElsewhere, AChangeThatWasTakenBackIsNone) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE = 90");
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE = 100");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(ChangedElsewhere, ARollNamesWhoeverWroteItOff) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 12.5");
  const auto log = [this](const char* user, const char* moment, const char* subject) {
    mill_.Insert("TEC_LOG", {{"USUARIO", user},
                             {"DATA_HORA", moment},
                             {"ASSUNTO", subject},
                             {"TEXTO", "x"},
                             {"OPERACAO", 1},
                             {"CHAVE", "000001"}});
  };
  log("MARIA", "2026-11-21 14:05:33", "BAIXAS DA TECELAGEM");
  ExpectAsked(kByMaria, nullptr);
  // Of a roll and a save the later one is told.
  log("JOANA", "2026-11-21 13:00:00", "ORDEM DE TECELAGEM");
  ExpectAsked(kByMaria, nullptr);
  log("JOANA", "2026-11-21 18:30:59", "ORDEM DE TECELAGEM");
  ExpectAsked(
      "A ordem 000001 foi alterada por JOANA em 21/11/2026 18:30, depois de carregada nesta tela. Nada foi gravado. "
      "Deseja carregá-la novamente?",
      nullptr);
}

TEST_F(ChangedElsewhere, AnOldRowOfTheLogIsNotTakenForTheChange) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  ChangeElsewhere(number);
  Load(number);
  mill_.Exec("UPDATE {TECEL} SET FICHA = 'x'");
  ExpectAsked(kBySomebody, nullptr);
}

TEST_F(ChangedElsewhere, ItComesAfterTheRightAndBeforeTheChecks) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  ChangeElsewhere(number);
  Type("EdtMalharia", "M00004");
  mill_.Exec("DELETE FROM {COMP_MATERIAL} WHERE MATERIAL = 'F1' AND COR = '01'");
  ExpectAsked(kByMaria, nullptr);
  mill_.TakeRight("TfmCadLoteTec", "A");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(ChangedElsewhere, ADeletedOrderIsToldAndYesClearsTheScreen) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  DeleteElsewhere(number);
  const char* said =
      "A ordem 000001 foi excluída por MARIA em 21/11/2026 14:05, depois de carregada nesta tela. Nada foi gravado. "
      "Deseja limpar a tela?";
  ExpectAsked(said, "no");
  EXPECT_EQ(Shown("TbItens", {"Codigo"}), Lines{"F1"});
  ExpectAsked(said, "yes");
  EXPECT_EQ(Text("EdtMalharia"), "");
  EXPECT_TRUE(Screen().TbItens.IsEmpty());
  EXPECT_FALSE(Screen().HasUnsavedWork());
  // The number is free: whoever wants the order back types it anew.
  Type("EdtMalharia", "M00001");
  EXPECT_EQ(AddItem("F1", "01", "7"), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 5 | 7 |  | 0 | 0 | "});
}

TEST_F(ChangedElsewhere, ANewOrderWhoseNumberWasTakenMeanwhile) {
  EXPECT_EQ(Type("EdtNumero", "000077"), ActResult::kDone);
  Type("EdtMalharia", "M00001");
  EXPECT_EQ(AddItem("F1", "01", "7"), ActResult::kDone);
  EXPECT_EQ(other_->Type(*elsewhere_, "EdtNumero", "000077"), ActResult::kDone);
  EXPECT_EQ(other_->Type(*elsewhere_, "EdtMalharia", "M00001"), ActResult::kDone);
  EXPECT_EQ(other_->Click(*elsewhere_, "BtnGravar"), ActResult::kDone);
  const char* said =
      "A ordem 000077 foi gravada por MARIA em 21/11/2026 14:05, depois de iniciada nesta tela. Nada foi gravado. "
      "Deseja carregá-la?";
  ExpectAsked(said, "no");
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Qtde"}), Lines{"F1 | 7"});
  ExpectAsked(said, "yes");
  EXPECT_EQ(Shown("TbItens", {"Codigo"}), Lines{""});
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
}

TEST_F(ChangedElsewhere, ANumberOfTheSequenceThatSomebodyTyped) {
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
  EXPECT_EQ(other_->Type(*elsewhere_, "EdtNumero", "000001"), ActResult::kDone);
  EXPECT_EQ(other_->Type(*elsewhere_, "EdtMalharia", "M00001"), ActResult::kDone);
  EXPECT_EQ(other_->Click(*elsewhere_, "BtnGravar"), ActResult::kDone);
  Type("EdtMalharia", "M00001");
  ExpectAsked(
      "A ordem 000001 foi gravada por MARIA em 21/11/2026 14:05, depois de iniciada nesta tela. Nada foi gravado. "
      "Deseja carregá-la?",
      nullptr);
}

TEST_F(ChangedElsewhere, ADeletionOfAChangedOrder) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  ChangeElsewhere(number);
  const Lines before = Everything();
  mill_.Person().Answer("Deseja excluir totalmente", "yes");
  mill_.Person().Answer("Deseja carregá-la novamente?", "yes");
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kRefused);
  const Lines said = mill_.Messages();
  ASSERT_EQ(said.size(), 2u);
  EXPECT_EQ(said[1],
            "A ordem 000001 foi alterada por MARIA em 21/11/2026 14:05, depois de carregada nesta tela. Nada foi "
            "excluído. Deseja carregá-la novamente?");
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(Text("EdtFicha"), "DE MARIA");
  mill_.Person().Answer("Deseja excluir totalmente", "yes");
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines());
}

TEST_F(ChangedElsewhere, OwnSavesAndDeletionsAreNoChange) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  for (const char* quantity : {"90", "80"}) {
    Load(number);
    EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Qtde", quantity}}), ActResult::kDone);
    EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
    // The focus stands on the number: the next save leaves it first and saves the order as it is stored.
    EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  }
  EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 5 | 80 |  | 0 | 0 | "});
  Load(number);
  mill_.Person().Answer("Deseja excluir totalmente", "yes");
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kDone);
  Type("EdtMalharia", "M00001");
  EXPECT_EQ(AddItem("F1", "01", "7"), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number).size(), 1u);
}

TEST_F(ChangedElsewhere, AReloadThatFailsLeavesNothingToBeSaved) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  ChangeElsewhere(number);
  const Lines before = Everything();
  int failed = 0;
  for (int n = 1;; ++n) {
    Load(number);
    mill_.Exec("UPDATE {TECEL} SET FICHA = 'mudou " + std::to_string(n) + "'");
    const Lines stored = Everything();
    mill_.Person().Answer("Deseja carregá-la novamente?", "yes");
    mill_.FailStatement(n);
    const ActResult result = Click("BtnGravar");
    if (!mill_.StopFailing()) {
      EXPECT_EQ(result, ActResult::kRefused);
      break;
    }
    ++failed;
    EXPECT_EQ(result, ActResult::kFailed) << n;
    EXPECT_EQ(Errors(), Lines{"falha provocada"}) << n;
    mill_.Messages();
    // Whatever is left on the screen, a save does not put it in the place of the order.
    EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused) << n;
    EXPECT_EQ(mill_.Messages().size(), 1u) << n;
    EXPECT_EQ(Everything(), stored) << n;
  }
  EXPECT_GT(failed, 10);
  EXPECT_NE(Everything(), before);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
}

}  // namespace
}  // namespace test
