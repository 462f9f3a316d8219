// Codes that are looked up instead of remembered.
#include <QAction>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include "desktop/scenario/hands.h"

namespace test {
namespace {

class Lookups : public Scenario {
 protected:
  using Scenario::Scenario;

  void ExpectLookup(const char* title, std::function<void(QWidget&)> act) {
    desktop_.GetBoxes().ExpectDialog(QString::fromUtf8(title), std::move(act));
  }
  static std::vector<std::string> Offered(const QWidget& dialog) {
    const auto* table = dialog.findChild<QTableView*>(QStringLiteral("TabOferta"));
    std::vector<std::string> codes;
    for (int row = 0; row < table->model()->rowCount(); ++row) {
      codes.push_back(table->model()->index(row, 0).data().toString().toStdString());
    }
    return codes;
  }
};

TEST_F(Lookups, F4OffersWhatMayBeChosenAndEnterPicks) {
  const host::Screen& screen = OpenOrders();
  Press(Qt::Key_Return);
  hands_.GoTo("EdtMalharia");
  ExpectLookup("Pesquisa: Malharia", [](QWidget& dialog) {
    // Neither the inactive mill, nor the blocked one, nor the one without prices.
    EXPECT_EQ(Offered(dialog), std::vector<std::string>{"M00001"});
    TypeText(QStringLiteral("auro"));
    Press(Qt::Key_Return);
  });
  Press(Qt::Key_F4);
  EXPECT_EQ(Focused(), "EdtMalharia");
  EXPECT_EQ(hands_.Text(screen, "EdtMalharia"), "M00001");
  EXPECT_EQ(hands_.Text(screen, "LblMalharia"), "Malharia Aurora");
  Press(Qt::Key_Return);
  EXPECT_EQ(Focused(), "EdtData");
}

TEST_F(Lookups, EscGivesUpAndWhatWasTypedStays) {
  const host::Screen& screen = OpenOrders();
  Press(Qt::Key_Return);
  hands_.Fill("EdtDeposito", QStringLiteral("D1"));
  ExpectLookup("Pesquisa: Depósito", [](QWidget& dialog) {
    // It begins with what stands in the input.
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("EdtPesquisa"))->text().toStdString(), "D1");
    Press(Qt::Key_Escape);
  });
  Press(Qt::Key_F4);
  EXPECT_EQ(Focused(), "EdtDeposito");
  EXPECT_EQ(hands_.Text(screen, "EdtDeposito"), "D1");
}

TEST_F(Lookups, TheButtonBesideTheInputIsForTheMouse) {
  const host::Screen& screen = OpenOrders();
  Press(Qt::Key_Return);
  auto& line = desktop_.WidgetOf<QLineEdit>(screen, "EdtMaquina");
  auto* button = line.findChild<QToolButton*>();
  ASSERT_NE(button, nullptr);
  ExpectLookup("Pesquisa: Máquina", [](QWidget& dialog) {
    auto* table = dialog.findChild<QTableView*>(QStringLiteral("TabOferta"));
    const QPoint second = table->visualRect(table->model()->index(1, 0)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, second);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, second);
  });
  test::ClickOn(*button);
  EXPECT_TRUE(WaitFor([this] { return desktop_.GetBoxes().Met(); }));
  Settle();
  EXPECT_EQ(Focused(), "EdtMaquina");
  EXPECT_EQ(hands_.Text(screen, "EdtMaquina"), "MQ2");
  EXPECT_EQ(hands_.Text(screen, "LblMaquina"), "Circular 34\" 24");
}

TEST_F(Lookups, AnInputThatRefusesToBeLeftKeepsThePersonFromAnothersButton) {
  const host::Screen& screen = OpenOrders();
  Press(Qt::Key_Return);
  hands_.Fill("EdtMalharia", QStringLiteral("NADA"));
  ExpectRefused(QStringLiteral("Ordens de Tecelagem"), QStringLiteral("Cliente não encontrado."),
                [&] { test::ClickOn(*desktop_.WidgetOf<QLineEdit>(screen, "EdtMaquina").findChild<QToolButton*>()); });
  EXPECT_EQ(Focused(), "EdtMalharia");
}

TEST_F(Lookups, InACellTheFabricAndItsColoursAreOffered) {
  StartOrder();
  hands_.Cell("Codigo");
  ExpectLookup("Pesquisa", [](QWidget& dialog) {
    const auto offered = Offered(dialog);
    // With a price, and not out of use.
    EXPECT_EQ(offered, (std::vector<std::string>{"F1", "F2", "F3", "FM", "FP"}));
    TypeText(QStringLiteral("moletom"));
    Press(Qt::Key_Return);
  });
  Press(Qt::Key_F4);
  EXPECT_EQ(Focused(), "DBGrid6");
  EXPECT_EQ(hands_.Shown("Codigo"), "F2");
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Shown("Descricao"), "Moletom sem composição");
  hands_.Cell("Cor");
  ExpectLookup("Pesquisa", [](QWidget& dialog) {
    EXPECT_EQ(Offered(dialog), (std::vector<std::string>{"01", "02"}));
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
  });
  Press(Qt::Key_F4);
  EXPECT_EQ(hands_.Shown("Cor"), "02");
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Shown("DescCor"), "Azul-marinho");
}

// The number of the order: the lookup puts it in, leaving it loads the order. On the way to the button a new number is
// given, which no stored order has: all are offered.
TEST_F(Lookups, AnOrderIsLookedUpByItsButton) {
  OrderFromElsewhere(100);
  const host::Screen& screen = OpenOrders();
  ExpectLookup("Pesquisa", [](QWidget& dialog) {
    EXPECT_EQ(Offered(dialog), std::vector<std::string>{"000001"});
    Press(Qt::Key_Return);
  });
  desktop_.ClickOn(screen, "BtnConsultar");
  EXPECT_TRUE(WaitFor([this] { return desktop_.GetBoxes().Met(); }));
  Settle();
  EXPECT_EQ(Focused(), "EdtNumero");
  EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "000001");
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Text(screen, "LblMalharia"), "Malharia Aurora");
}

}  // namespace
}  // namespace test
