// From an order to paper and labels, by keyboard and mouse: the printout, metres, roll labels.
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "desktop/scenario/hands.h"

namespace test {
namespace {

const QString kTitle = QStringLiteral("Ordens de Tecelagem");
const QString kLabels = QStringLiteral("Gerar Etiqueta(s)");
const QString kMetres = QStringLiteral("Calcular Metros");
const QString kHowMany = QStringLiteral("Quantidade:");
const QString kHowLong = QStringLiteral("Informe a quantidade:");
const QString kDone = QStringLiteral("Etiquetas Geradas.");

class OrderPaper : public Scenario {
 protected:
  static void Save() { Press(Qt::Key_G, Qt::AltModifier); }
  static void Print() { Press(Qt::Key_I, Qt::AltModifier); }
  static void Menu() { Press(Qt::Key_F10, Qt::ShiftModifier); }

  void Load(const std::string& number) {
    hands_.Enter("EdtNumero", QString::fromStdString(number));
    hands_.GoTo("DBGrid6");
  }

  /// A new order of 100 kg of F1 and 10 m of FM, saved and on the screen again.
  host::Screen& StoredOrder() {
    host::Screen& screen = StartOrder();
    TypeItem(QStringLiteral("F1"), QStringLiteral("01"), QStringLiteral("100"));
    Press(Qt::Key_Down);
    TypeItem(QStringLiteral("FM"), QStringLiteral("01"), QStringLiteral("10"));
    Save();
    Load("000001");
    return screen;
  }

  /// The entry is picked and what follows is dealt with.
  void Pick(const QString& entry, const std::function<void()>& expect) {
    desktop_.GetBoxes().ExpectMenu(entry);
    expect();
    Menu();
    EXPECT_TRUE(WaitFor([this] { return desktop_.GetBoxes().Met(); }));
    Settle();
  }

  void MakeLabels(const QString& count) {
    Pick(kLabels, [&] {
      desktop_.GetBoxes().ExpectInput(kHowMany, count);
      desktop_.ExpectBox(kDone);
    });
  }

  std::string Labels(const char* fabric) {
    return Scalar(std::string("SELECT LIST(LOTE, ' ') FROM (SELECT LOTE FROM {MAT_ITEN} WHERE UDF_LEN(LOTE) = 9 AND "
                              "CODIGO = '") +
                  fabric + "' ORDER BY LOTE)");
  }

  /// The entries of the screen's own that the menu has; it is closed again.
  bool Offers(const QString& entry) {
    bool offered = false;
    host::PopupMenu* menu = dynamic_cast<host::Grid*>(desktop_.Desk().Focused())->Popup;
    EXPECT_EQ(desktop_.Desk().OpenMenu(*desktop_.Desk().Focused()), host::ActResult::kDone);
    for (const host::MenuItem& item : menu->Items()) {
      if (QString::fromStdString(item.caption) == entry) offered = item.visible;
    }
    return offered;
  }
};

TEST_F(OrderPaper, LabelsOfTwoFabricsFollowEachOther) {
  StoredOrder();
  hands_.Row({{"Codigo", "F1"}});
  MakeLabels(QStringLiteral("3"));
  hands_.Row({{"Codigo", "FM"}});
  MakeLabels(QStringLiteral("2"));
  EXPECT_EQ(Labels("F1"), "000001001 000001002 000001003");
  EXPECT_EQ(Labels("FM"), "000001004 000001005");
  EXPECT_EQ(Focused(), "DBGrid6");
}

TEST_F(OrderPaper, LabelsAreProposedAsTheRollsAndAskedAboutTheSecondTime) {
  StoredOrder();
  hands_.Row({{"Codigo", "F1"}});
  Pick(kLabels, [&] {
    // 100 kg in rolls of 22: Enter takes what is proposed.
    desktop_.GetBoxes().ExpectDialog(kLabels, [](QWidget&) { Press(Qt::Key_Return); });
    desktop_.ExpectBox(kDone);
  });
  EXPECT_EQ(Labels("F1"), "000001001 000001002 000001003 000001004 000001005");
  const QString again = QStringLiteral("Etiqueta já gerada para este código e lote.\nDeseja gerar novamente?");
  Pick(kLabels, [&] {
    desktop_.GetBoxes().ExpectInput(kHowMany, QStringLiteral("2"));
    desktop_.ExpectBox(again, Reply::kOk);  // Enter is No
  });
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {MAT_ITEN} WHERE UDF_LEN(LOTE) = 9"), "5");
  Pick(kLabels, [&] {
    desktop_.GetBoxes().ExpectInput(kHowMany, QStringLiteral("2"));
    desktop_.ExpectBox(again, Reply::kYes);
    desktop_.ExpectBox(kDone);
  });
  EXPECT_EQ(Labels("F1"), "000001001 000001002");
  Pick(kLabels, [&] { desktop_.GetBoxes().ExpectInput(kHowMany, std::nullopt); });  // given up
  EXPECT_EQ(Labels("F1"), "000001001 000001002");
}

TEST_F(OrderPaper, LabelsOfAnOrderThatIsNotSavedAreRefused) {
  StartOrder();
  TypeItem(QStringLiteral("F1"), QStringLiteral("01"), QStringLiteral("100"));
  desktop_.GetBoxes().ExpectMenu(kLabels);
  ExpectRefused(kTitle,
                QStringLiteral("O item F1, cor 01, não está gravado na ordem 000001.\n"
                               "Grave a ordem antes de gerar etiquetas."),
                [] { Menu(); });
  EXPECT_EQ(Labels("F1"), "");
}

TEST_F(OrderPaper, MetresBecomeTheQuantityUnderTheCursor) {
  const host::Screen& screen = StoredOrder();
  hands_.Row({{"Codigo", "FM"}});
  hands_.Cell("Qtde");
  Pick(kMetres, [&] { desktop_.GetBoxes().ExpectInput(kHowLong, QStringLiteral("1500")); });
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo", "Qtde"}),
            (std::vector<std::string>{"F1; 100,000", "FM; 375,000"}));
  EXPECT_EQ(Focused(), "DBGrid6");
  Save();
  EXPECT_EQ(Scalar("SELECT QTDE FROM {TECEL_ITEN} WHERE CODIGO = 'FM'"), "375");
}

// A cell may be open when the menu is asked for: what was typed there does not come back over the metres.
TEST_F(OrderPaper, MetresWinOverAQuantityThatWasBeingTyped) {
  const host::Screen& screen = StoredOrder();
  hands_.Row({{"Codigo", "FM"}});
  hands_.Type("Qtde", QStringLiteral("77"));
  Pick(kMetres, [&] { desktop_.GetBoxes().ExpectInput(kHowLong, QStringLiteral("100")); });
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo", "Qtde"}),
            (std::vector<std::string>{"F1; 100,000", "FM; 25,000"}));
  Save();
  EXPECT_EQ(Scalar("SELECT QTDE FROM {TECEL_ITEN} WHERE CODIGO = 'FM'"), "25");
}

TEST_F(OrderPaper, MetresAreOfferedOnTheQuantityOnly) {
  StoredOrder();
  for (const char* field : {"Codigo", "Cor", "Custo", "Obs"}) {
    hands_.Cell(field);
    EXPECT_FALSE(Offers(kMetres)) << field;
    EXPECT_TRUE(Offers(kLabels)) << field;
  }
  hands_.Cell("Qtde");
  EXPECT_TRUE(Offers(kMetres));
}

// The right button takes the cursor to the cell under it, so that the menu is that cell's.
TEST_F(OrderPaper, TheMenuComesByMouseToo) {
  const host::Screen& screen = StoredOrder();
  auto* table = desktop_.GridOf(screen, "DBGrid6").findChild<QTableView*>();
  const host::Grid& grid = *desktop_.GridOf(screen, "DBGrid6").GetGrid();
  const QModelIndex cell = table->model()->index(1, grid.ColumnOf("Qtde"));
  table->scrollTo(cell);
  const QPoint at = table->visualRect(cell).center();
  desktop_.GetBoxes().ExpectMenu(kMetres);
  desktop_.GetBoxes().ExpectInput(kHowLong, QStringLiteral("40"));
  QTest::mouseClick(table->viewport(), Qt::RightButton, {}, at);
  QContextMenuEvent event(QContextMenuEvent::Mouse, at, table->viewport()->mapToGlobal(at));
  QApplication::sendEvent(table->viewport(), &event);
  EXPECT_TRUE(WaitFor([this] { return desktop_.GetBoxes().Met(); }));
  Settle();
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo", "Qtde"}),
            (std::vector<std::string>{"F1; 100,000", "FM; 10,000"}));
}

// What the grid itself offers (copying, say) stays.
TEST_F(OrderPaper, TheItemsOfALockedOrderOfferNeither) {
  const host::Screen& screen = StoredOrder();
  desktop_.GetMill().Exec("UPDATE {TECEL} SET SITUACAO = 'B'");
  hands_.Enter("EdtNumero", QStringLiteral("000001"));
  auto* table = desktop_.GridOf(screen, "DBGrid6").findChild<QTableView*>();
  const QPoint at = table->visualRect(table->model()->index(0, 0)).center();
  QStringList entries;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) return;
    for (const QAction* action : menu->actions()) entries.append(action->text().section(u'\t', 0, 0));
    menu->close();
  });
  look.start(20);
  QTest::mouseClick(table->viewport(), Qt::RightButton, {}, at);
  QContextMenuEvent event(QContextMenuEvent::Mouse, at, table->viewport()->mapToGlobal(at));
  QApplication::sendEvent(table->viewport(), &event);
  EXPECT_TRUE(WaitFor([&] { return !entries.isEmpty(); }));
  EXPECT_TRUE(entries.contains(QStringLiteral("Copiar")));
  EXPECT_FALSE(entries.contains(kLabels));
  EXPECT_FALSE(entries.contains(kMetres));
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
}

TEST_F(OrderPaper, IsPrintedByItsLetterAndNothingMoves) {
  const host::Screen& screen = StoredOrder();
  hands_.GoTo("GrdFios");
  hands_.Row({{"Codigo", "Y2"}});
  const auto yarns = hands_.Rows(screen, "GrdFios", {"Codigo", "Consumo"});
  const auto lots = hands_.Rows(screen, "GrdEstoque", {"Lote", "Deposito"});
  Print();
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
  const auto prints = desktop_.GetMill().Equipment().TakePrints();
  ASSERT_EQ(prints.size(), 1U);
  EXPECT_EQ(prints[0].report, "WTecLoteCad");
  EXPECT_EQ(prints[0].data.at("QryRelatorio").size(), 2U);
  EXPECT_EQ(Focused(), "BtnImprimir");
  EXPECT_EQ(hands_.Rows(screen, "GrdFios", {"Codigo", "Consumo"}), yarns);
  EXPECT_EQ(hands_.Rows(screen, "GrdEstoque", {"Lote", "Deposito"}), lots);
  hands_.GoTo("GrdFios");
  EXPECT_EQ(hands_.Shown("Codigo"), "Y2");
}

TEST_F(OrderPaper, OfAnUnsavedOrderIsRefused) {
  StartOrder();
  TypeItem(QStringLiteral("F1"), QStringLiteral("01"), QStringLiteral("100"));
  ExpectRefused(kTitle, QStringLiteral("A ordem 000001 não está gravada. Grave-a antes de imprimir."), [] { Print(); });
  EXPECT_TRUE(desktop_.GetMill().Equipment().TakePrints().empty());
}

TEST_F(OrderPaper, OfAChangedOrderIsAskedAbout) {
  StoredOrder();
  hands_.Row({{"Codigo", "FM"}});
  hands_.Type("Qtde", QStringLiteral("77"));
  const QString question =
      QStringLiteral("A ordem tem alterações não gravadas, que não sairão na impressão.\nDeseja imprimir assim mesmo?");
  desktop_.ExpectBox(question, Reply::kOk);  // Enter is No
  Print();
  EXPECT_TRUE(desktop_.GetMill().Equipment().TakePrints().empty());
  desktop_.ExpectBox(question, Reply::kYes);
  Print();
  const auto prints = desktop_.GetMill().Equipment().TakePrints();
  ASSERT_EQ(prints.size(), 1U);
  EXPECT_EQ(prints[0].data.at("QryRelatorio")[1].at("QTDE").AsText(), "10");
  Save();
  EXPECT_EQ(Scalar("SELECT QTDE FROM {TECEL_ITEN} WHERE CODIGO = 'FM'"), "77");
}

}  // namespace
}  // namespace test
