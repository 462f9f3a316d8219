// A length in metres made into the quantity of an item.
#include "order_mill.h"

namespace test {
namespace {

constexpr const char* kEntry = "Calcular Metros";

class Metres : public OrderTest {
 protected:
  void SetUp() override {
    OrderTest::SetUp();
    NewOrder();
    ASSERT_EQ(AddItem("FM", "01", "10"), ActResult::kDone);
  }

  bool Offered() {
    EXPECT_EQ(mill_.Desk().OpenMenu(Screen().DBGrid6), ActResult::kDone);
    return Screen().PopupMenu1.Find(kEntry)->visible;
  }

  void StandOn(const char* column) { ASSERT_EQ(mill_.Desk().SelectCell(Screen().DBGrid6, column), ActResult::kDone); }

  /// The quantity after the person asked for so many metres.
  std::string QuantityFor(const char* metres) {
    StandOn("Qtde");
    mill_.Person().Answer("Informe a quantidade:", metres);
    EXPECT_EQ(mill_.Desk().PickMenu(Screen(), kEntry), ActResult::kDone);
    EXPECT_EQ(mill_.Person().Unused(), Lines());
    return Screen().TbItens["Qtde"].AsText();
  }

  void SetWeight(const char* weight) {
    mill_.Exec(std::string("UPDATE {MATERIAL} SET PESO = ") + weight + " WHERE CODIGO = 'FM'");
    Screen().TbItens.Edit();
    Screen().TbItens["Peso"].Set(host::Value());
  }
};

TEST_F(Metres, AreWeighed) {
  EXPECT_EQ(QuantityFor("1500"), "375");
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Qtde"}), Lines{"FM | 375"});
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(Metres, OfAFabricOfTwoHundredGramsAMetre) {
  SetWeight("0.2");
  EXPECT_EQ(QuantityFor("1500"), "300");
}

TEST_F(Metres, TakeTheWeightFromTheMaterialWhenTheItemHasNone) {
  SetWeight("0.3");
  mill_.TakeStatements();
  EXPECT_EQ(QuantityFor("100"), "30");
  EXPECT_EQ(Screen().TbItens["Peso"].AsText(), "0.3");
  EXPECT_EQ(mill_.TakeStatements("MATERIAL").size(), 1u);
  // Known from then on, whatever the register says now.
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 5 WHERE CODIGO = 'FM'");
  EXPECT_EQ(QuantityFor("200"), "60");
  EXPECT_EQ(mill_.TakeStatements("MATERIAL").size(), 0u);
}

TEST_F(Metres, OfAFabricWithoutWeightAreNothing) {
  SetWeight("0");
  EXPECT_EQ(QuantityFor("100"), "0");
}

TEST_F(Metres, LeaveNoNoise) {
  SetWeight("0.1");
  EXPECT_EQ(QuantityFor("3"), "0.3");
  EXPECT_EQ(QuantityFor("1.234,5"), "123.45");
}

TEST_F(Metres, MayBeNegative) { EXPECT_EQ(QuantityFor("-100"), "-25"); }

TEST_F(Metres, OfZeroOrOfNoNumberEndThere) {
  for (const char* answer : {"0", "0,000", "", "muitos", "1e9", "1500 m", "nan", "12345678901234567890"}) {
    EXPECT_EQ(QuantityFor(answer), "10") << answer;
  }
}

TEST_F(Metres, GivenUpEndThere) {
  StandOn("Qtde");
  EXPECT_EQ(mill_.Desk().PickMenu(Screen(), kEntry), ActResult::kDone);
  EXPECT_EQ(Screen().TbItens["Qtde"].AsText(), "10");
  EXPECT_EQ(mill_.Person().TakeUnexpected(), Lines{"entrada \"Informe a quantidade:\""});
}

TEST_F(Metres, AreAskedForInABoxThatProposesNone) {
  class Watching : public app::ScriptedPerson {
   public:
    std::optional<std::string> InputBox(std::string_view title, std::string_view prompt, std::string_view proposed,
                                        std::size_t /*longest*/) override {
      asked = std::string(title) + "|" + std::string(prompt) + "|" + std::string(proposed);
      return std::nullopt;
    }
    std::string asked;
  } person;
  const std::string number = Text("EdtNumero");
  ASSERT_EQ(Click("BtnGravar"), ActResult::kDone);
  Mill::Options options;
  options.database = mill_.Path();
  options.person = &person;
  Mill station(options);
  host::Screen& screen = station.Open("TfmCadLoteTec");
  ASSERT_EQ(station.Type(screen, "EdtNumero", number), ActResult::kDone);
  host::Grid& grid = station.GridOf(screen, "TbItens");
  ASSERT_EQ(station.Desk().SelectCell(grid, "Qtde"), ActResult::kDone);
  EXPECT_EQ(station.Desk().PickMenu(screen, kEntry), ActResult::kDone);
  EXPECT_EQ(person.asked, "Quantidade em Metros|Informe a quantidade:|");
}

TEST_F(Metres, HugeOnesAreSavedOrRefusedWhole) {
  QuantityFor("999999999999999");
  const std::string number = Text("EdtNumero");
  if (Click("BtnGravar") == ActResult::kDone) {
    Load(number);
    EXPECT_EQ(Screen().TbItens["Qtde"].AsText(), "249999999999999.75");
  } else {
    EXPECT_EQ(Errors().size(), 1u);
    EXPECT_EQ(Items(number), Lines());
  }
}

TEST_F(Metres, AreSavedWithTheOrder) {
  QuantityFor("1500");
  const std::string number = Text("EdtNumero");
  ASSERT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines{"FM | 01 |  | 1.2 | 375 |  | 0 | 0 | "});
}

TEST_F(Metres, AreOfferedOnTheQuantityOfAnItemOnly) {
  for (const host::GridColumn& column : Screen().DBGrid6.Columns()) {
    Screen().DBGrid6.SelectColumn(Screen().DBGrid6.ColumnOf(column.field));
    EXPECT_EQ(Offered(), column.field == "Qtde") << column.field;
  }
  Screen().DBGrid6.SelectColumn(Screen().DBGrid6.ColumnOf("Qtde"));
  ASSERT_EQ(mill_.Desk().DeleteRow(Screen().DBGrid6), ActResult::kDone);
  EXPECT_FALSE(Offered());
}

TEST_F(Metres, AreNotOfferedInARowWithoutCode) {
  Screen().TbItens.Append();
  StandOn("Qtde");
  EXPECT_FALSE(Offered());
}

TEST_F(Metres, OfALockedOrderAreOutOfReach) {
  const std::string number = Text("EdtNumero");
  ASSERT_EQ(Click("BtnGravar"), ActResult::kDone);
  mill_.Exec("UPDATE {TECEL} SET SITUACAO = 'B'");
  Load(number);
  Screen().DBGrid6.SelectColumn(Screen().DBGrid6.ColumnOf("Qtde"));
  EXPECT_EQ(mill_.Desk().PickMenu(Screen(), kEntry), ActResult::kRefused);
  EXPECT_EQ(Screen().TbItens["Qtde"].AsText(), "10");
}

TEST_F(Metres, LeaveTheQuantityWhenTheMaterialCannotBeRead) {
  SetWeight("0.3");
  StandOn("Qtde");
  mill_.Person().Answer("Informe a quantidade:", "100");
  mill_.FailStatement(1);
  EXPECT_EQ(mill_.Desk().PickMenu(Screen(), kEntry), ActResult::kFailed);
  EXPECT_TRUE(mill_.StopFailing());
  EXPECT_EQ(Errors(), Lines{"falha provocada"});
  EXPECT_EQ(Screen().TbItens["Qtde"].AsText(), "10");
}

}  // namespace
}  // namespace test
