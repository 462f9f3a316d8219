// What would be lost if the screen closed now.
#include "order_mill.h"

namespace test {
namespace {

class Unsaved : public OrderTest {
 protected:
  bool Work() { return Screen().HasUnsavedWork(); }
};

TEST_F(Unsaved, AnEmptyScreenHasNone) {
  EXPECT_FALSE(Work());
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
  EXPECT_FALSE(Work());
  EXPECT_EQ(Type("EdtNumero", "000077"), ActResult::kDone);
  EXPECT_FALSE(Work());
  // What a search asks for and what narrows the lots is not the order's.
  for (const char* input : {"EdtAMalharia", "EdtAObs", "EdtFilDeposito", "EdtFilLote", "EdtFilLocal"}) {
    EXPECT_EQ(Type(input, "X"), ActResult::kDone);
    EXPECT_FALSE(Work()) << input;
  }
}

TEST_F(Unsaved, EachInputOfTheHeader) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  const Cells inputs = {{"EdtMalharia", "M00004"}, {"EdtData", "11/03/2026"}, {"EdtFicha", "F-1"}, {"EdtPrazo", "30"},
                        {"EdtMaquina", "MQ1"},     {"EdtPonto", "2,5"},       {"EdtFluxo", "FL1"}, {"EdtRPM", "25"},
                        {"EdtDeposito", "DF"},     {"EdtObs", "com pressa"}};
  for (const auto& [input, text] : inputs) {
    Load(number);
    EXPECT_FALSE(Work()) << input;
    const std::string before = Text(input);
    EXPECT_EQ(Type(input, text), ActResult::kDone);
    EXPECT_TRUE(Work()) << input;
    EXPECT_EQ(Type(input, before), ActResult::kDone);
    EXPECT_FALSE(Work()) << input;
  }
}

TEST_F(Unsaved, ItemsTypedChangedAndDeleted) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F2", "01", "40"}});
  Load(number);
  mill_.Desk().SelectCell(Screen().DBGrid6, "Qtde");
  EXPECT_FALSE(Work());
  EXPECT_EQ(mill_.Desk().TypeCell(Screen().DBGrid6, "33"), ActResult::kDone);
  EXPECT_TRUE(Work());  // the row is still being typed
  EXPECT_EQ(mill_.Desk().CancelRow(Screen().DBGrid6), ActResult::kDone);
  EXPECT_FALSE(Work());
  for (const auto& [field, text] :
       Cells{{"Pedido", "PV"}, {"Ciclos", "2"}, {"Baixada", "S"}, {"Custo", "9"}, {"Obs", "x"}}) {
    Load(number);
    EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{field, text}}), ActResult::kDone);
    EXPECT_TRUE(Work()) << field;
  }
  Load(number);
  EXPECT_EQ(AddItem("F1", "02", "1"), ActResult::kDone);
  EXPECT_TRUE(Work());
  Load(number);
  EXPECT_EQ(mill_.Desk().DeleteRow(Screen().DBGrid6), ActResult::kDone);
  EXPECT_TRUE(Work());
}

TEST_F(Unsaved, ANewRowIsWorkOnceSomethingStandsInIt) {
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
  mill_.Desk().SelectCell(Screen().DBGrid6, "Codigo");
  Screen().TbItens.Append();
  EXPECT_FALSE(Work());
  EXPECT_EQ(mill_.Desk().TypeCell(Screen().DBGrid6, "F1"), ActResult::kDone);
  EXPECT_TRUE(Work());
}

TEST_F(Unsaved, ReservationsOfAnyYarn) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  ASSERT_EQ(mill_.Desk().SelectRow(Screen().GrdFios, 2), ActResult::kDone);
  EXPECT_FALSE(Work());
  EXPECT_EQ(mill_.Set(Screen(), "TbEstoque", {{"Sel", "S"}, {"Qtde_Res", "5"}}), ActResult::kDone);
  EXPECT_TRUE(Work());
  // Also while another yarn's lots are in sight.
  ASSERT_EQ(mill_.Desk().SelectRow(Screen().GrdFios, 1), ActResult::kDone);
  EXPECT_TRUE(Work());
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_FALSE(Work());
  Load(number);
  EXPECT_FALSE(Work());
  mill_.Desk().SelectCell(Screen().GrdEstoque, "Sel");
  EXPECT_EQ(mill_.Desk().TypeCell(Screen().GrdEstoque, "S"), ActResult::kDone);
  EXPECT_TRUE(Work());  // not posted yet
}

TEST_F(Unsaved, LoadingSavingAndClearingEndIt) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  EXPECT_FALSE(Work());
  int times = 0;
  const auto work = [&] {
    mill_.Messages();
    Load(number);
    Type("EdtPonto", "3," + std::to_string(++times));
    EXPECT_TRUE(Work());
  };
  work();
  Load(number);
  EXPECT_FALSE(Work());
  work();
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_FALSE(Work());
  Type("EdtPonto", "9,9");
  // The stitch size stays when the screen is cleared; it is nobody's work then.
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
  EXPECT_FALSE(Work());
  work();
  mill_.Person().Answer("Deseja duplicar", "yes");
  EXPECT_EQ(Click("BtnDuplicar"), ActResult::kDone);
  EXPECT_FALSE(Work());
  work();
  mill_.Person().Answer("Deseja excluir", "yes");
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kDone);
  EXPECT_FALSE(Work());
}

TEST_F(Unsaved, ASaveThatWasRefusedOrFailedKeepsIt) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  Type("EdtMalharia", "M00004");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_TRUE(Work());
  Type("EdtMalharia", "M00001");
  EXPECT_FALSE(Work());
  Type("EdtFicha", "x");
  mill_.FailStatement(8);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kFailed);
  EXPECT_TRUE(mill_.StopFailing());
  EXPECT_TRUE(Work());
}

}  // namespace
}  // namespace test
