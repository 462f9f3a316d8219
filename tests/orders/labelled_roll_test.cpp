// A label's whole life: made for an order, filled by a roll, emptied by its reversal, made again. The books hold at
// every step.
#include <gtest/gtest.h>

#include "app/books/check.h"
#include "support/mill.h"
#include "support/road.h"

namespace test {
namespace {

using host::ActResult;
using Lines = std::vector<std::string>;

class LabelledRoll : public ::testing::Test {
 protected:
  void SetUp() override {
    FillSmallMill(mill_);
    mill_.SetClock("2026-03-10 14:30:00");
    mill_.SetParameter("MAL", 40, "4");  // the lot of a scanned roll is what was scanned
    number_ = SaveOrder(mill_, SmallMillOrder(100));
    orders_ = &mill_.Open("TfmCadLoteTec");
    ASSERT_EQ(mill_.Type(*orders_, "EdtNumero", number_), ActResult::kDone);
  }

  /// What is shown when three labels are asked for.
  Lines Labels(bool again) {
    mill_.Person().Answer("Quantidade:", "3");
    if (again) mill_.Person().Answer("Deseja gerar novamente?", "yes");
    mill_.Desk().PickMenu(*orders_, "Gerar Etiqueta(s)");
    Lines shown = mill_.Messages();
    EXPECT_EQ(app::books::CheckBooks(mill_.Db()), Lines());
    return shown;
  }

  /// A roll of 10 kg without its tare is weighed and its label scanned; what is shown.
  Lines Scan(host::Screen& screen, const std::string& label, const char* weight) {
    EXPECT_EQ(mill_.Type(screen, "EdtQtde", weight), ActResult::kDone);
    mill_.Type(screen, "EdtBarra", label);
    Lines shown = mill_.Messages();
    EXPECT_EQ(app::books::CheckBooks(mill_.Db()), Lines());
    return shown;
  }

  std::string Stock() {
    return mill_
        .Scalar(
            "SELECT LIST(LOTE || ' ' || CAST(QTDE AS NUMERIC(9,1)), ', ') FROM (SELECT LOTE, QTDE FROM {MAT_ITEN} "
            "WHERE UDF_LEN(LOTE) = 9 ORDER BY LOTE)")
        .AsText();
  }

  Mill mill_;
  std::string number_;
  host::Screen* orders_ = nullptr;
};

TEST_F(LabelledRoll, IsFilledEmptiedAndLabelledAgain) {
  EXPECT_EQ(Labels(false), Lines{"Etiquetas Geradas."});
  EXPECT_EQ(Stock(), "000001001 0.0, 000001002 0.0, 000001003 0.0");

  host::Screen& weighing = OpenWriteOff(mill_, number_, "DF");
  mill_.Messages();
  ASSERT_EQ(mill_.Desk().Check(dynamic_cast<host::CheckBox&>(*weighing.FindComponent("CbBarra")), true),
            ActResult::kDone);
  EXPECT_EQ(Scan(weighing, "000001002", "10,3"), Lines());
  EXPECT_EQ(Stock(), "000001001 0.0, 000001002 10.0, 000001003 0.0");
  EXPECT_EQ(mill_.Scalar("SELECT LOTE FROM {TECELB}").AsText(), "000001002");

  // The order was loaded before the roll came.
  EXPECT_EQ(Labels(false), Lines{"Não é possível gerar etiquetas de itens com baixas."});
  mill_.Person().InputBox("", "Quantidade:", "");  // it never came to the count
  EXPECT_EQ(Stock(), "000001001 0.0, 000001002 10.0, 000001003 0.0");

  mill_.Person().Answer("Deseja estornar este Movimento?", "yes");
  ASSERT_EQ(mill_.Click(weighing, "BtnExtorna"), ActResult::kDone);
  EXPECT_EQ(Stock(), "000001001 0.0, 000001002 0.0, 000001003 0.0");
  mill_.Messages();
  EXPECT_EQ(Labels(true).back(), "Etiquetas Geradas.");
  EXPECT_EQ(Stock(), "000001001 0.0, 000001002 0.0, 000001003 0.0");
  EXPECT_EQ(Scan(weighing, "000001002", "11,3"), Lines());
  EXPECT_EQ(Stock(), "000001001 0.0, 000001002 11.0, 000001003 0.0");
}

}  // namespace
}  // namespace test
