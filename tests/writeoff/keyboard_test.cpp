// Rolls written off without the mouse: where Enter, F4, F6 and F8 lead, and what a window is told of the screens.
#include "yarn/operator_mill.h"

namespace test {
namespace {

using host::ActResult;
using host::Key;
using BoxList = std::vector<Box>;

class Keyboard : public Operator {
 protected:
  ActResult Press(host::Screen& screen, Key key) { return mill_.Desk().PressKey(screen, key); }
  ActResult Press(Key key) { return Press(Screen(), key); }
  void Enter(const char* control) {
    ASSERT_EQ(mill_.Desk().Enter(dynamic_cast<host::Control&>(*Screen().FindComponent(control))), ActResult::kDone);
  }
  ActResult TypeHere(const char* text) {
    return mill_.Desk().TypeInto(dynamic_cast<host::Edit&>(*mill_.Desk().Focused()), text);
  }
  /// Names of the controls that Enter passes through, up to the one named.
  std::string Way(const std::string& to) {
    std::string way;
    while (Focused() != to && way.size() < 500) {
      EXPECT_EQ(Press(Key::kEnter), ActResult::kDone);
      way += (way.empty() ? "" : " ") + Focused();
    }
    return way;
  }
};

TEST_F(Keyboard, EnterGoesFromTheOrderToTheButton) {
  ReservedOrder();
  mill_.Open("TfmMovBaiTec");
  Enter("EdtLote");
  ASSERT_EQ(TypeHere(kOrder), ActResult::kDone);
  EXPECT_EQ(Way("BtnConfirma"),
            "EdtData EdtDeposito EdtNFRet EdtNFCob EdtLocal EdtTurno EdtFunc EdtMaquina CbBarra EdtQtde EdtPecas "
            "EdtTara BtnConfirma");
}

TEST_F(Keyboard, RollAfterRollWithEnterAlone) {
  ReservedOrder();
  Load();
  Enter("EdtQtde");
  for (const char* quantity : {"10", "12"}) {
    ASSERT_EQ(Focused(), "EdtQtde");
    ASSERT_EQ(TypeHere(quantity), ActResult::kDone);
    EXPECT_EQ(Way("BtnConfirma"), "EdtPecas EdtTara BtnConfirma");
    ASSERT_EQ(Press(Key::kEnter), ActResult::kDone);
  }
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Rolls().size(), 2u);
  ExpectBooksBalance();
}

TEST_F(Keyboard, F8ConfirmsFromAnyInput) {
  ReservedOrder();
  Load();
  Enter("EdtQtde");
  ASSERT_EQ(TypeHere("10"), ActResult::kDone);
  ASSERT_EQ(Press(Key::kF8), ActResult::kDone);
  EXPECT_EQ(Rolls().size(), 1u);
  EXPECT_EQ(Focused(), "EdtQtde");
}

TEST_F(Keyboard, F6GoesToTheItemsAndBackToTheQuantity) {
  Order(kOrder, {{}, {"F1", "02", 100, ""}});
  Load();
  Enter("EdtData");
  ASSERT_EQ(Press(Key::kF6), ActResult::kDone);
  EXPECT_EQ(Focused(), "GrdItens");
  ASSERT_EQ(Press(Key::kDown), ActResult::kDone);
  EXPECT_EQ(Text("EdtCor"), "02");
  ASSERT_EQ(Press(Key::kF6), ActResult::kDone);
  EXPECT_EQ(Focused(), "EdtQtde");
  ASSERT_EQ(Press(Key::kF7), ActResult::kDone);
  EXPECT_EQ(Focused(), "EdtQtde");
  const auto hints = Screen().KeyHints();
  ASSERT_EQ(hints.size(), 2u);
  EXPECT_EQ(hints[0].key, Key::kF6);
  EXPECT_EQ(hints[0].text, "Itens");
  EXPECT_EQ(hints[1].key, Key::kF10);
  EXPECT_EQ(hints[1].text, "Balança");
}

TEST_F(Keyboard, DownOnTheLastItemStaysOnIt) {
  Order(kOrder, {{}, {"F1", "02", 100, ""}});
  Load();
  Enter("GrdItens");
  ASSERT_EQ(Press(Key::kDown), ActResult::kDone);
  EXPECT_EQ(Press(Key::kDown), ActResult::kRefused);
  EXPECT_EQ(mill_.Data(Screen(), "TbItens").RecordCount(), 2u);
  EXPECT_EQ(mill_.Data(Screen(), "TbItens").State(), host::DatasetState::kBrowse);
  EXPECT_EQ(Text("EdtCodigo"), "F1");
  EXPECT_EQ(Text("EdtCor"), "02");
}

TEST_F(Keyboard, WithoutAnOrderThereIsNoItemToBeginWith) {
  mill_.Open("TfmMovBaiTec");
  Enter("GrdItens");
  EXPECT_EQ(Press(Key::kDown), ActResult::kRefused);
  EXPECT_EQ(mill_.Data(Screen(), "TbItens").RecordCount(), 0u);
}

TEST_F(Keyboard, F4LooksUpTheCodes) {
  ReservedOrder();
  mill_.Open("TfmMovBaiTec");
  struct Case {
    const char* input;
    const char* lookup;
    const char* key;
    const char* label;
    const char* description;
  };
  for (const Case& c : {Case{"EdtLote", "PqLote", kOrder, "LblFornecedor", "Malharia Aurora"},
                        Case{"EdtDeposito", "PqDeposito", "DF", "LblDeposito", "Depósito de malha"},
                        Case{"EdtMaquina", "PqMaquina", "MQ1", "LblMaquina", nullptr},
                        Case{"EdtFunc", "PqFunc", "F01", "LblFunc", nullptr}}) {
    Enter(c.input);
    if (std::string_view(c.lookup) == "PqFunc") {
      mill_.Insert("PESSOAL", {{"CODIGO", c.key}, {"NOME", "Maria"}, {"TURNO", "2"}});
    }
    mill_.Person().Pick(c.lookup, c.key);
    ASSERT_EQ(Press(Key::kF4), ActResult::kDone) << c.input;
    EXPECT_EQ(Text(c.input), c.key);
    if (c.description != nullptr) {
      EXPECT_EQ(Text(c.label), c.description);
    }
  }
  EXPECT_EQ(Text("LblFunc"), "Maria");
  EXPECT_EQ(Text("EdtTurno"), "2");
  EXPECT_EQ(mill_.Data(Screen(), "TbItens").RecordCount(), 1u);
}

TEST_F(Keyboard, AQuantityNotConfirmedIsUnsavedWork) {
  ReservedOrder();
  host::Screen& screen = Load();
  EXPECT_FALSE(screen.HasUnsavedWork());
  Type("EdtQtde", "10");
  EXPECT_TRUE(screen.HasUnsavedWork());
  ASSERT_EQ(Confirm(), ActResult::kDone);
  EXPECT_FALSE(screen.HasUnsavedWork());
  Type("EdtQtde", "0,0004");
  EXPECT_FALSE(screen.HasUnsavedWork()) << "no roll weighs that little";
}

TEST_F(Keyboard, TheQuantitysMenuBelongsToIt) {
  Load();
  const auto& input = dynamic_cast<host::Edit&>(*Screen().FindComponent("EdtQtde"));
  ASSERT_NE(input.Popup, nullptr);
  EXPECT_NE(input.Popup->Find("Conversão de unidade"), nullptr);
}

TEST_F(Keyboard, QuantitiesHaveTotals) {
  Load();
  const auto totals = [](const host::Grid& grid) {
    std::vector<std::string> fields;
    for (const host::GridColumn& column : grid.Columns()) {
      if (!column.total) continue;
      fields.push_back(column.field);
      EXPECT_EQ(column.align, host::Align::kRight) << column.field;
    }
    return fields;
  };
  EXPECT_EQ(totals(mill_.GridOf(Screen(), "TbItens")),
            (std::vector<std::string>{"Qtde", "Qtde_B", "Qtde_Rolo", "Qtde_Rolo_B"}));
  EXPECT_EQ(totals(mill_.GridOf(Screen(), "TbRolos")), (std::vector<std::string>{"Qtde", "Qtde_R"}));
}

TEST_F(Keyboard, ThePersonTakesYarnByKeyboard) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              EXPECT_FALSE(yarn.HasUnsavedWork());
              for (const char* lot : {"L1", "L1"}) {
                ASSERT_EQ(Press(yarn, Key::kF6), ActResult::kDone);
                ASSERT_EQ(Focused(), "GrdEstoque");
                ASSERT_EQ(Lots(yarn)["Lote"].AsText(), lot);
                EXPECT_TRUE(CanTake(yarn));
                ASSERT_EQ(Press(yarn, Key::kF8), ActResult::kDone);
                if (yarn.CloseRequested()) return;
                EXPECT_EQ(Focused(), "GrdConsumos");
                EXPECT_FALSE(CanTake(yarn));
              }
            }),
            ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Rolls().size(), 1u);
  ExpectBooksBalance();
}

TEST_F(Keyboard, FromTheStockEnterGoesOnToTake) {
  FreeOrder();
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              ASSERT_EQ(Operator::Enter(yarn), ActResult::kDone);
              ASSERT_EQ(Press(yarn, Key::kEnter), ActResult::kDone);
              EXPECT_EQ(Focused(), "CbTodos");
              ASSERT_EQ(Press(yarn, Key::kEnter), ActResult::kDone);
              EXPECT_EQ(Focused(), "BitBtn1");
              ASSERT_EQ(Press(yarn, Key::kEnter), ActResult::kDone);
              EXPECT_EQ(Wanted(yarn).RecordCount(), 1u);
              ASSERT_EQ(Press(yarn, Key::kF6), ActResult::kDone);
              ASSERT_EQ(Press(yarn, Key::kF6), ActResult::kDone);
              EXPECT_EQ(Focused(), "GrdConsumos");
              EXPECT_EQ(Press(yarn, Key::kDown), ActResult::kRefused);
              EXPECT_EQ(Wanted(yarn).RecordCount(), 1u);
              EXPECT_EQ(yarn.KeyHints().size(), 1u);
            }),
            ActResult::kRefused);
  Boxes();
}

TEST_F(Keyboard, F4LooksUpDepositAndLotOfTheYarn) {
  FreeOrder();
  Load();
  EXPECT_EQ(
      RollOfTen([this](host::Screen& yarn) {
        mill_.Person().Pick("PqDeposito", "D2");
        ASSERT_EQ(mill_.Desk().Enter(dynamic_cast<host::Edit&>(*yarn.FindComponent("EdtDeposito"))), ActResult::kDone);
        ASSERT_EQ(Press(yarn, Key::kF4), ActResult::kDone);
        EXPECT_EQ(mill_.Text(yarn, "EdtDeposito"), "D2");
        mill_.Desk().TypeInto(dynamic_cast<host::Edit&>(*yarn.FindComponent("EdtDeposito")), "");
        mill_.Person().Pick("PqLote", "L2");
        ASSERT_EQ(mill_.Desk().Enter(dynamic_cast<host::Edit&>(*yarn.FindComponent("EdtLote"))), ActResult::kDone);
        ASSERT_EQ(Press(yarn, Key::kF4), ActResult::kDone);
        EXPECT_EQ(Offered(yarn), (std::vector<std::string>{"Y1 D1 L2"}));
      }),
      ActResult::kRefused);
  Boxes();
}

}  // namespace
}  // namespace test
