// Rolls written off by keyboard: with reserved yarn, and with the lots chosen by hand.
#include <QTableView>

#include "desktop/scenario/hands.h"
#include "support/road.h"

namespace test {
namespace {

const QString kRollTitle = QStringLiteral("Baixa de Ordem de Tecelagem");
const QString kYarnTitle = QStringLiteral("Selecione os consumos");

class Roll : public Scenario {
 protected:
  explicit Roll(const char* with_reservations = "S")
      : Scenario([with_reservations](Mill& mill) { mill.SetParameter("MAL", 70, with_reservations); }) {}

  /// The order on the write-off screen, the keyboard in the quantity.
  host::Screen& Load(const std::string& number) {
    host::Screen& screen = desktop_.Open("TfmMovBaiTec");
    EXPECT_EQ(Focused(), "EdtLote");
    hands_.Enter("EdtLote", QString::fromStdString(number));
    hands_.GoTo("EdtQtde");
    return screen;
  }
  std::string Stock(const char* yarn, const char* deposit, const char* lot) {
    return Scalar(std::string("SELECT QTDE FROM {MAT_ITEN} WHERE CODIGO = '") + yarn + "' AND DEPOSITO = '" + deposit +
                  "' AND LOTE = '" + lot + "'");
  }
  std::string Rolls() { return Scalar("SELECT COUNT(*) FROM {TECELB}"); }
};

class RollByHand : public Roll {
 protected:
  RollByHand() : Roll("N") {}

  /// 10 kg of F1 (6 of Y1, 4 of Y2) confirmed, and `act` at the yarn screen that opens.
  void RollOfTen(const std::function<void(host::Screen&)>& act) {
    hands_.Fill("EdtQtde", QStringLiteral("10,3"));  // the tare is 0,3
    desktop_.GetBoxes().ExpectDialog(kYarnTitle, [this, act](QWidget&) { act(*desktop_.Desk().Modal()); });
    Press(Qt::Key_F8);
  }
  void Take(const char* lot, const char* deposit) {
    if (Focused() != "GrdEstoque") Press(Qt::Key_F6);
    hands_.Row({{"Lote", lot}, {"Deposito", deposit}});
    Press(Qt::Key_F8);
  }
};

TEST_F(Roll, OfReservedYarnIsFourKeysAndAWeight) {
  const std::string number = SaveOrder(Elsewhere(), SmallMillOrder(100));
  const host::Screen& screen = Load(number);
  EXPECT_EQ(hands_.Text(screen, "LblFornecedor"), "Malharia Aurora");
  EXPECT_EQ(hands_.Text(screen, "EdtCodigo"), "F1");
  EXPECT_EQ(hands_.Text(screen, "EdtTara"), "0,30");
  TypeText(QStringLiteral("20,3"));
  Press(Qt::Key_Return);
  EXPECT_EQ(Focused(), "EdtPecas");
  Press(Qt::Key_Return);
  EXPECT_EQ(Focused(), "EdtTara");
  Press(Qt::Key_Return);
  EXPECT_EQ(Focused(), "BtnConfirma");
  Press(Qt::Key_Return);
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_EQ(hands_.Text(screen, "EdtQtde"), " 0,000");
  EXPECT_EQ(hands_.Rows(screen, "GrdRolos", {"Ordem", "Qtde", "Lote"}), std::vector<std::string>{"1; 20,000; 0000011"});
  EXPECT_EQ(hands_.Rows(screen, "GrdItens", {"Codigo", "Qtde_B", "Qtde_Rolo_B"}),
            std::vector<std::string>{"F1; 20,000; 1"});
  EXPECT_EQ(Stock("Y2", "D1", "L1"), "72");
  // The next one, by the function key.
  TypeText(QStringLiteral("18,3"));
  Press(Qt::Key_F8);
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_EQ(hands_.Rows(screen, "GrdRolos", {"Ordem", "Qtde"}), (std::vector<std::string>{"2; 18,000", "1; 20,000"}));
  // The same weight again is most likely the same roll.
  TypeText(QStringLiteral("18,3"));
  ExpectRefused(kRollTitle, QStringLiteral("Baixa já Realizada."), [] { Press(Qt::Key_F8); });
  EXPECT_EQ(Rolls(), "2");
}

TEST_F(Roll, WithoutReservationIsCancelled) {
  Load(OrderFromElsewhere(100));
  TypeText(QStringLiteral("10,3"));
  desktop_.ExpectBox(QStringLiteral("Lote sem reserva."));
  desktop_.ExpectBox(QStringLiteral("Baixa Cancelada."));
  Press(Qt::Key_F8);
  EXPECT_EQ(hands_.Text(hands_.Screen(), "EdtQtde"), " 10,300");
  EXPECT_EQ(Rolls(), "0");
}

TEST_F(Roll, WhatIsWrongIsSaidAndTheKeyboardGoesThere) {
  struct Case {
    const char* input;
    const char* wrong;
    const char* message;
    const char* right;
  };
  const Case cases[] = {
      {"EdtMaquina", "MQ9", "Código da Máquina Inválido.", "MQ1"},
      {"EdtFunc", "P9", "Código do Funcionário Inválido.", "P1"},
      {"EdtDeposito", "D9", "Depósito Inválido.", "DF"},
      {"EdtDeposito", "", "Depósito Inválido.", "DF"},
      {"EdtData", "11/03/2026", "Data da Baixa Inválida.", "10/03/2026"},
      {"EdtData", "", "Data da Baixa Inválida.", "10/03/2026"},
      {"EdtLote", "NADA", "Lote Inválido.", "000001"},
      {"EdtLote", "", "Lote Inválido.", "000001"},
  };
  Load(SaveOrder(Elsewhere(), SmallMillOrder(100)));
  for (const Case& tried : cases) {
    SCOPED_TRACE(std::string(tried.input) + " " + tried.wrong);
    hands_.Fill(tried.input, QString::fromUtf8(tried.wrong));
    hands_.Fill("EdtQtde", QStringLiteral("20,3"));
    ExpectRefused(
        kRollTitle, QString::fromUtf8(tried.message), [] { Press(Qt::Key_F8); }, host::Icon::kExclamation);
    EXPECT_EQ(Focused(), tried.input);
    hands_.Enter(tried.input, QString::fromUtf8(tried.right));
  }
  EXPECT_EQ(Rolls(), "0");
  hands_.Fill("EdtQtde", QStringLiteral("20,3"));
  Press(Qt::Key_F8);
  EXPECT_EQ(Rolls(), "1");
}

TEST_F(Roll, HeavierThanTheStandardIsAskedAbout) {
  Load(SaveOrder(Elsewhere(), SmallMillOrder(100)));  // 22 kg a roll, so up to 33
  TypeText(QStringLiteral("34"));
  Press(Qt::Key_Return);
  hands_.Fill("EdtPecas", QStringLiteral("1"));
  const QString question = QStringLiteral("Peso médio dos rolos está fora do padrão, deseja continuar?");
  desktop_.ExpectBox(question, Reply::kOk);
  Press(Qt::Key_F8);
  EXPECT_EQ(Rolls(), "0");
  desktop_.ExpectBox(question, Reply::kYes);
  Press(Qt::Key_F8);
  EXPECT_EQ(Rolls(), "1");
}

TEST_F(Roll, ClosingAnItemAsksAboutItsReservations) {
  const std::string number = SaveOrder(Elsewhere(), SmallMillOrder(100));
  Load(number);
  Press(Qt::Key_F6);
  EXPECT_EQ(Focused(), "GrdItens");
  hands_.Cell("Baixada");
  desktop_.ExpectBox(QStringLiteral("Deseja remover as reservas deste lote?"), Reply::kNo);
  Press(Qt::Key_Space);
  EXPECT_EQ(Scalar("SELECT BAIXADA FROM {TECEL_ITEN}"), "S");
  EXPECT_EQ(Scalar("SELECT SUM(QTDE) FROM {MAT_RESERVA}"), "100");
  Press(Qt::Key_Space);
  EXPECT_EQ(Scalar("SELECT BAIXADA FROM {TECEL_ITEN}"), "N");
  // The same from the menu of the items.
  desktop_.GetBoxes().ExpectMenu(QStringLiteral("Considerar Reserva como baixada"));
  desktop_.ExpectBox(QStringLiteral("Este procedimento irá zerar o saldo da reserva desse item. Deseja continuar?"),
                     Reply::kYes);
  Press(Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(WaitFor([this] { return desktop_.GetBoxes().Met(); }));
  Settle();
  EXPECT_EQ(Scalar("SELECT SUM(QTDE) FROM {MAT_RESERVA}"), "0");
}

// --- the yarn screen
// ---------------------------------------------------------------------------------------------------

TEST_F(RollByHand, TakesLotByLot) {
  const host::Screen& screen = Load(OrderFromElsewhere(100));
  RollOfTen([this](host::Screen& yarn) {
    EXPECT_EQ(Focused(), "GrdConsumos");
    EXPECT_EQ(hands_.Rows(yarn, "GrdConsumos", {"Codigo", "Qtde"}),
              (std::vector<std::string>{"Y1; 6,000", "Y2; 4,000"}));
    EXPECT_EQ(hands_.Rows(yarn, "GrdEstoque", {"Lote", "Deposito", "Qtde"}).size(), 3U);
    Take("L2", "D1");
    EXPECT_EQ(Focused(), "GrdConsumos");
    EXPECT_EQ(hands_.Rows(yarn, "GrdConsumos", {"Codigo", "Qtde"}), std::vector<std::string>{"Y2; 4,000"});
    EXPECT_EQ(hands_.Rows(yarn, "GrdEstoque", {"Lote", "Deposito"}), (std::vector<std::string>{"L1; D1", "L3; D2"}));
    Take("L3", "D2");  // the last yarn: the screen goes by itself
  });
  EXPECT_TRUE(desktop_.GetBoxes().Met());
  EXPECT_EQ(desktop_.Desk().Find("TFmMovBaiFio"), nullptr);
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_EQ(hands_.Rows(screen, "GrdRolos", {"Ordem", "Qtde"}), std::vector<std::string>{"1; 10,000"});
  EXPECT_EQ(Stock("Y1", "D1", "L2"), "44");
  EXPECT_EQ(Stock("Y2", "D2", "L3"), "36");
}

TEST_F(RollByHand, RemembersTheLotsForTheNextRolls) {
  Load(OrderFromElsewhere(100));
  RollOfTen([this](host::Screen&) {
    hands_.GoTo("CbTodos");
    Press(Qt::Key_Space);
    Take("L1", "D1");
    Take("L1", "D1");
  });
  hands_.Fill("EdtQtde", QStringLiteral("20,3"));
  Press(Qt::Key_F8);  // nothing is asked
  EXPECT_EQ(Rolls(), "2");
  EXPECT_EQ(Stock("Y1", "D1", "L1"), "82");
  EXPECT_EQ(Stock("Y2", "D1", "L1"), "68");
}

TEST_F(RollByHand, GivenUpLeavesNothing) {
  Load(OrderFromElsewhere(100));
  desktop_.GetBoxes().Take();
  RollOfTen([this](host::Screen&) {
    Take("L1", "D1");
    desktop_.ExpectBox(QStringLiteral("Baixa Cancelada."));
    hands_.GoTo("BitBtn2");
    Press(Qt::Key_Return);
  });
  EXPECT_TRUE(desktop_.GetBoxes().Met());
  EXPECT_EQ(hands_.Text(hands_.Screen(), "EdtQtde"), " 10,300");
  // The window's own close button gives up too.
  RollOfTen([this](host::Screen& yarn) {
    desktop_.ExpectBox(QStringLiteral("Baixa Cancelada."));
    desktop_.WindowOf(yarn).window()->close();
  });
  EXPECT_TRUE(desktop_.GetBoxes().Met());
  EXPECT_EQ(Rolls(), "0");
  EXPECT_EQ(Stock("Y1", "D1", "L1"), "100");
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {BAIXA_FIO}"), "0");
}

TEST_F(RollByHand, WhatOthersReservedIsNotTaken) {
  const std::string number = OrderFromElsewhere(100);
  desktop_.GetMill().Insert("MAT_RESERVA", {{"NUMERO", "999999"},
                                            {"CODIGO", "Y1"},
                                            {"COR", "CR"},
                                            {"DEPOSITO", "D1"},
                                            {"LOTE", "L2"},
                                            {"QTDE", 50},
                                            {"TIPO", "T"}});
  Load(number);
  RollOfTen([this](host::Screen&) {
    desktop_.ExpectBox(QStringLiteral("Quantidade reservada. Impossível continuar."));
    Take("L2", "D1");
    EXPECT_EQ(Focused(), "GrdConsumos");
    Take("L1", "D1");
    Take("L1", "D1");
  });
  EXPECT_EQ(Rolls(), "1");
}

TEST_F(RollByHand, ALineIsRaisedByMoreThanATenthOnlyOnYes) {
  Load(OrderFromElsewhere(100));
  const QString question = QStringLiteral("Quantidade baixada ultrapassou 10% do peso original. Deseja continuar?");
  RollOfTen([&](host::Screen&) {
    hands_.Type("Qtde", QStringLiteral("6,6"));  // a tenth is silent
    Press(Qt::Key_Down);
    hands_.Row({{"Codigo", "Y1"}});
    hands_.Type("Qtde", QStringLiteral("9"));
    desktop_.ExpectBox(question, Reply::kOk);
    Press(Qt::Key_Down);
    EXPECT_EQ(hands_.Shown("Codigo"), "Y1");
    EXPECT_EQ(hands_.Shown("Qtde"), "6,600");
    hands_.Type("Qtde", QStringLiteral("9"));
    desktop_.ExpectBox(question, Reply::kYes);
    Press(Qt::Key_Down);
    hands_.Row({{"Codigo", "Y1"}});
    Take("L1", "D1");
    Take("L1", "D1");
  });
  EXPECT_EQ(Stock("Y1", "D1", "L1"), "91");
}

TEST_F(RollByHand, TheLotsAreFilteredByALookupOverTheScreen) {
  Load(OrderFromElsewhere(100));
  RollOfTen([this](host::Screen& yarn) {
    hands_.GoTo("EdtDeposito");
    desktop_.GetBoxes().ExpectDialog(QStringLiteral("Pesquisa: Depósito"), [](QWidget&) {
      TypeText(QStringLiteral("fios 2"));
      Press(Qt::Key_Return);
    });
    Press(Qt::Key_F4);
    EXPECT_EQ(Focused(), "EdtDeposito");
    EXPECT_EQ(hands_.Text(yarn, "EdtDeposito"), "D2");
    EXPECT_EQ(hands_.Text(yarn, "LblDeposito"), "Depósito de fios 2");
    EXPECT_EQ(hands_.Rows(yarn, "GrdEstoque", {"Lote", "Deposito"}), std::vector<std::string>{"L1; D2"});
    Take("L1", "D2");
    hands_.Enter("EdtDeposito", QString());
    Take("L1", "D1");
  });
  EXPECT_EQ(Stock("Y1", "D2", "L1"), "24");
}

}  // namespace
}  // namespace test
