// An order from its first key to the database and back: items, yarn, reservations, search, and other stations.
#include <QTableView>
#include <QTest>
#include <filesystem>

#include "desktop/scenario/hands.h"
#include "support/template_database.h"

namespace test {
namespace {

const QString kTitle = QStringLiteral("Ordens de Tecelagem");

/// A copy of a database file, removed with the object.
class CopiedFile {
 public:
  explicit CopiedFile(const std::string& file) : path_(file + ".killed") { std::filesystem::copy_file(file, path_); }
  ~CopiedFile() { RemoveDatabase(path_); }
  CopiedFile(const CopiedFile&) = delete;
  CopiedFile& operator=(const CopiedFile&) = delete;
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

class OrderEntry : public Scenario {
 protected:
  using Scenario::Scenario;

  static void Save() { Press(Qt::Key_G, Qt::AltModifier); }
  /// The order on the screen with the lots of that yarn in sight and the keyboard among them.
  host::Screen& AtLotsOf(const std::string& number, const char* yarn) {
    host::Screen& screen = OpenOrders();
    hands_.Enter("EdtNumero", QString::fromStdString(number));
    ToLotsOf(yarn);
    return screen;
  }
  void ToLotsOf(const char* yarn) {
    hands_.GoTo("GrdFios");
    hands_.Row({{"Codigo", yarn}});
    hands_.GoTo("GrdEstoque");
  }
  void Tick(const char* lot, const char* deposit) {
    hands_.Row({{"Lote", lot}, {"Deposito", deposit}});
    hands_.Cell("Sel");
    Press(Qt::Key_Space);
  }
  std::vector<std::string> Reserved() {
    std::vector<std::string> rows;
    for (const Row& row : desktop_.GetMill().Rows("SELECT CODIGO, DEPOSITO, LOTE, QTDE FROM {MAT_RESERVA} ORDER BY "
                                                  "CODIGO, DEPOSITO, LOTE")) {
      rows.push_back(row.at("CODIGO").AsText() + " " + row.at("DEPOSITO").AsText() + " " + row.at("LOTE").AsText() +
                     " " + row.at("QTDE").AsText());
    }
    return rows;
  }
};

// --- items -----------------------------------------------------------------------------------------------------------

TEST_F(OrderEntry, TwoItemsAreTypedSavedAndLoadedAgain) {
  const host::Screen& screen = StartOrder();
  TypeItem(QStringLiteral("F1"), QStringLiteral("01"), QStringLiteral("100"));
  Press(Qt::Key_Down);
  TypeItem(QStringLiteral("F3"), QStringLiteral("01"), QStringLiteral("12,5"));
  hands_.Type("Obs", QStringLiteral("urgência"));
  hands_.Cell("Baixada");
  Press(Qt::Key_Space);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {TECEL}"), "0");
  // The page of the remarks.
  Press(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(Focused(), "EdtObs");
  TypeText(QStringLiteral("Não lavar"));
  hands_.Fill("EdtPrazo", QStringLiteral("30"));
  Save();
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
  EXPECT_EQ(Focused(), "EdtNumero");
  EXPECT_EQ(hands_.Text(screen, "EdtMalharia"), "");

  EXPECT_EQ(Scalar("SELECT MALHARIA || DEPOSITO || PERIODO || SITUACAO || OBSERVACAO FROM {TECEL}"),
            "M00001DF30ANão lavar");
  EXPECT_EQ(Scalar("SELECT DT_INICIO FROM {TECEL}"), "10/03/2026");
  EXPECT_EQ(Scalar("SELECT QTDE FROM {TECEL_ITEN} WHERE CODIGO = 'F1'"), "100");
  EXPECT_EQ(Scalar("SELECT OBS || BAIXADA FROM {TECEL_ITEN} WHERE CODIGO = 'F3'"), "urgênciaS");

  hands_.Enter("EdtNumero", QStringLiteral("000001"));
  hands_.GoTo("EdtObs");  // the page turned to stays in sight
  Press(Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(Focused(), "DBGrid6");
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo", "Cor", "Qtde", "Custo", "Qtde_Rolo"}),
            (std::vector<std::string>{"F1; 01; 100,000; 5,0000; 5", "F3; 01; 12,500; 5,5000; 1"}));
  // Y1 60 % of the one and 70 % of the other; the yarn without a colour is in no list.
  EXPECT_EQ(hands_.Rows(screen, "GrdFios", {"Codigo", "Consumo", "Consumo_Total"}),
            (std::vector<std::string>{"Y1; 68,75; 68,750", "Y2; 40; 40,000"}));
  EXPECT_EQ(hands_.Text(screen, "EdtObs"), "Não lavar");
}

// --- reservation -----------------------------------------------------------------------------------------------------

TEST_F(OrderEntry, LotsAreTickedAndTypedAndSaved) {
  const std::string number = OrderFromElsewhere(100);  // Y1 60, Y2 40
  const host::Screen& screen = AtLotsOf(number, "Y1");
  EXPECT_EQ(hands_.Rows(screen, "GrdEstoque", {"Lote", "Deposito", "Qtde", "Qtde_Res"}).size(), 3U);
  Tick("L1", "D1");
  EXPECT_EQ(hands_.Shown("Qtde_Res"), "60,000");  // what the order needs
  hands_.Type("Qtde_Res", QStringLiteral("45,5"));
  Press(Qt::Key_Return);
  Tick("L2", "D1");
  EXPECT_EQ(hands_.Shown("Qtde_Res"), "14,500");
  ToLotsOf("Y2");
  hands_.Row({{"Lote", "L3"}});
  // The quantity typed before the tick, since the proposal counts the other yarn's lots.
  hands_.Type("Qtde_Res", QStringLiteral("40"));
  hands_.Cell("Sel");
  Press(Qt::Key_Space);
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
  EXPECT_EQ(Reserved(), std::vector<std::string>());
  Save();
  EXPECT_EQ(Reserved(), (std::vector<std::string>{"Y1 D1 L1 45.5", "Y1 D1 L2 14.5", "Y2 D2 L3 40"}));

  // Unticked and saved, it is none any more.
  hands_.Enter("EdtNumero", QString::fromStdString(number));
  ToLotsOf("Y1");
  hands_.Row({{"Lote", "L2"}});
  hands_.Cell("Sel");
  Press(Qt::Key_Space);
  EXPECT_EQ(hands_.Shown("Qtde_Res"), "0,000");
  Save();
  EXPECT_EQ(Reserved(), (std::vector<std::string>{"Y1 D1 L1 45.5", "Y2 D2 L3 40"}));
}

TEST_F(OrderEntry, MoreThanThereIsOrIsNeededIsCut) {
  const std::string number = OrderFromElsewhere(100);
  desktop_.GetMill().Insert("MAT_RESERVA", {{"NUMERO", "999999"},
                                            {"CODIGO", "Y1"},
                                            {"COR", "CR"},
                                            {"DEPOSITO", "D1"},
                                            {"LOTE", "L2"},
                                            {"QTDE", 20},
                                            {"TIPO", "T"}});
  AtLotsOf(number, "Y1");
  Tick("L2", "D1");
  EXPECT_EQ(hands_.Shown("Qtde_Reservado"), "20,000");
  EXPECT_EQ(hands_.Shown("Qtde_Res"), "30,000");
  hands_.Type("Qtde_Res", QStringLiteral("31"));
  ExpectRefused(kTitle,
                QStringLiteral("Quantidade reservada superior ao saldo.\nA quantidade será ajustada automaticamente."),
                [] { Press(Qt::Key_Up); });
  hands_.Row({{"Lote", "L2"}});
  EXPECT_EQ(hands_.Shown("Qtde_Res"), "30,000");
  Tick("L1", "D1");
  EXPECT_EQ(hands_.Shown("Qtde_Res"), "30,000");  // the other half
  hands_.Type("Qtde_Res", QStringLiteral("61"));
  ExpectRefused(kTitle,
                QStringLiteral("Quantidade reservada superior ao consumo requerido.\nA quantidade será ajustada "
                               "automaticamente."),
                [] { Press(Qt::Key_Return, Qt::ControlModifier); });
  EXPECT_EQ(hands_.Rows(hands_.Screen(), "GrdEstoque", {"Lote", "Qtde_Res"})[0], "L1; 60,000");
}

TEST_F(OrderEntry, LessThanIsWrittenOffIsRefusedAndComesBack) {
  const std::string number = OrderFromElsewhere(100);
  desktop_.GetMill().Insert("MAT_RESERVA", {{"NUMERO", number},
                                            {"CODIGO", "Y1"},
                                            {"COR", "CR"},
                                            {"DEPOSITO", "D1"},
                                            {"LOTE", "L1"},
                                            {"QTDE", 30},
                                            {"QTDE_B", 10},
                                            {"TIPO", "T"}});
  AtLotsOf(number, "Y1");
  hands_.Row({{"Lote", "L1"}, {"Deposito", "D1"}});
  EXPECT_EQ(hands_.Shown("Qtde_Res"), "30,000");
  EXPECT_EQ(hands_.Shown("Qtde_B"), "10,000");
  hands_.Type("Qtde_Res", QStringLiteral("9"));
  ExpectRefused(kTitle,
                QStringLiteral(
                    "Quantidade reservada inferior a quantidade baixada.\nA quantidade será ajustada automaticamente."),
                [] { Press(Qt::Key_Down); });
  EXPECT_EQ(Focused(), "GrdEstoque");
  EXPECT_EQ(hands_.Shown("Lote"), "L1");
  EXPECT_EQ(hands_.Shown("Qtde_Res"), "30,000");
}

TEST_F(OrderEntry, WithoutTheParameterAnyQuantityIsReserved) {
  const std::string number = OrderFromElsewhere(100);
  desktop_.GetMill().SetParameter("MAL", 90, "N");
  AtLotsOf(number, "Y1");
  Tick("L2", "D1");
  hands_.Type("Qtde_Res", QStringLiteral("500"));
  Save();
  EXPECT_EQ(Reserved(), std::vector<std::string>{"Y1 D1 L2 500"});
}

TEST_F(OrderEntry, TheFiltersNarrowTheLots) {
  const std::string number = OrderFromElsewhere(100);
  const host::Screen& screen = AtLotsOf(number, "Y1");
  hands_.Enter("EdtFilDeposito", QStringLiteral("D2"));
  EXPECT_EQ(hands_.Rows(screen, "GrdEstoque", {"Lote", "Deposito"}), std::vector<std::string>{"L1; D2"});
  hands_.Fill("EdtFilDeposito", QString());
  hands_.Fill("EdtFilLote", QStringLiteral("L2"));
  EXPECT_EQ(hands_.Rows(screen, "GrdEstoque", {"Lote", "Deposito"}), std::vector<std::string>{"L2; D1"});
}

// --- search ----------------------------------------------------------------------------------------------------------

TEST_F(OrderEntry, IsFoundAndOpenedFromTheListAndTheArrowsStepThroughIt) {
  for (const double quantity : {10, 20, 30}) OrderFromElsewhere(quantity);
  const host::Screen& screen = OpenOrders();
  Press(Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(Focused(), "EdtADe");
  EXPECT_EQ(hands_.Text(screen, "EdtADe"), "01/03/2026");
  EXPECT_EQ(hands_.Text(screen, "EdtAAte"), "10/03/2026");
  hands_.Enter("EdtAMalharia", QStringLiteral("M00001"));
  Press(Qt::Key_F3);
  EXPECT_EQ(Focused(), "DBGrid1");
  EXPECT_EQ(hands_.Rows(screen, "DBGrid1", {"NUMERO", "CODIGO", "QTDE"}),
            (std::vector<std::string>{"000003; F1; 30,000", "000002; F1; 20,000", "000001; F1; 10,000"}));

  // With the mouse, on the second row.
  const auto* table = desktop_.GridOf(screen, "DBGrid1").findChild<QTableView*>();
  const QPoint row = table->visualRect(table->model()->index(1, 0)).center();
  QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, row);
  QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, row);
  Settle();
  EXPECT_EQ(Focused(), "EdtNumero");
  EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "000002");
  EXPECT_EQ(hands_.Text(screen, "EdtMalharia"), "");  // it is loaded when the number is left
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Qtde"}), std::vector<std::string>{"20,000"});

  desktop_.ClickOn(screen, "SpeedButton4");
  EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "000001");
  EXPECT_EQ(Focused(), "EdtNumero");
  Press(Qt::Key_Return);
  EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Qtde"}), std::vector<std::string>{"10,000"});
  desktop_.ClickOn(screen, "SpeedButton4");  // the last one
  EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "000001");
  desktop_.ClickOn(screen, "SpeedButton1");
  desktop_.ClickOn(screen, "SpeedButton1");
  EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "000003");

  // By keys: the row under the cursor opens with Enter.
  Press(Qt::Key_PageUp, Qt::ControlModifier);
  hands_.GoTo("DBGrid1");
  hands_.Row({{"NUMERO", "000002"}});
  Press(Qt::Key_Return);
  EXPECT_EQ(Focused(), "EdtNumero");
  EXPECT_EQ(hands_.Text(screen, "EdtNumero"), "000002");
}

TEST_F(OrderEntry, IsFoundByWhatItIsAndByItsState) {
  OrderFromElsewhere(10);
  OrderFromElsewhere(20);
  desktop_.GetMill().Exec("UPDATE {TECEL_ITEN} SET BAIXADA = 'S' WHERE NUMERO = '000001'");
  desktop_.GetMill().Exec("UPDATE {TECEL} SET OBSERVACAO = 'Com URGÊNCIA' WHERE NUMERO = '000002'");
  const host::Screen& screen = OpenOrders();
  Press(Qt::Key_PageUp, Qt::ControlModifier);
  const auto found = [&] {
    Press(Qt::Key_F3);
    return hands_.Rows(screen, "DBGrid1", {"NUMERO"});
  };
  hands_.GoTo("RgASituacao");
  Press(Qt::Key_Down);
  EXPECT_EQ(found(), std::vector<std::string>{"000002"});  // Pendentes
  hands_.GoTo("RgASituacao");
  Press(Qt::Key_Down);
  EXPECT_EQ(found(), std::vector<std::string>{"000001"});  // Baixadas
  hands_.GoTo("RgASituacao");
  Press(Qt::Key_Up);
  Press(Qt::Key_Up);
  EXPECT_EQ(found().size(), 2U);
  hands_.Enter("EdtAObs", QStringLiteral("urgência"));
  EXPECT_EQ(found(), std::vector<std::string>{"000002"});
  hands_.Enter("EdtAObs", QString());
  hands_.Enter("EdtADe", QStringLiteral("11/03/2026"));
  EXPECT_EQ(found(), std::vector<std::string>());
}

// --- unsaved work and other stations
// -----------------------------------------------------------------------------------

TEST_F(OrderEntry, ClosingWithUnsavedWorkAsks) {
  const host::Screen& screen = StartOrder();
  TypeItem(QStringLiteral("F1"), QStringLiteral("01"), QStringLiteral("100"));
  const QString question =
      QStringLiteral("Há dados não gravados em \"Ordens de Tecelagem\". Deseja fechar mesmo assim?");
  for (const Reply reply : {Reply::kOk, Reply::kNo}) {
    desktop_.ExpectBox(question, reply);
    Press(Qt::Key_F, Qt::AltModifier);
    ASSERT_EQ(desktop_.Desk().Find("TfmCadLoteTec"), &screen);
    EXPECT_EQ(hands_.Rows(screen, "DBGrid6", {"Codigo", "Qtde"}), std::vector<std::string>{"F1; 100,000"});
  }
  desktop_.ExpectBox(question, Reply::kNo);
  EXPECT_FALSE(desktop_.Window().close());
  EXPECT_TRUE(desktop_.Window().isVisible());
  desktop_.ExpectBox(question, Reply::kYes);
  Press(Qt::Key_F, Qt::AltModifier);
  EXPECT_EQ(desktop_.Desk().Find("TfmCadLoteTec"), nullptr);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM {TECEL}"), "0");
}

TEST_F(OrderEntry, ClosingWhatIsSavedDoesNotAsk) {
  const std::string number = OrderFromElsewhere(100);
  OpenOrders();
  hands_.Enter("EdtNumero", QString::fromStdString(number));
  hands_.GoTo("DBGrid6");
  Press(Qt::Key_F, Qt::AltModifier);
  EXPECT_EQ(desktop_.Desk().Find("TfmCadLoteTec"), nullptr);
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
}

TEST_F(OrderEntry, ChangedAtAnotherStationItIsAskedAboutAndLoadedAgain) {
  const std::string number = OrderFromElsewhere(100);
  const host::Screen& screen = OpenOrders();
  hands_.Enter("EdtNumero", QString::fromStdString(number));
  hands_.Enter("EdtFicha", QStringLiteral("MINHA"));

  Mill& other = Elsewhere();
  other.SetClock("2026-03-10 15:02:00");
  host::Screen& there = other.Open("TfmCadLoteTec");
  ASSERT_EQ(other.Type(there, "EdtNumero", number), host::ActResult::kDone);
  ASSERT_EQ(other.Type(there, "EdtFicha", "DE LA"), host::ActResult::kDone);
  ASSERT_EQ(other.Click(there, "BtnGravar"), host::ActResult::kDone);

  const QString question = QStringLiteral(
      "A ordem 000001 foi alterada por ADMIN em 10/03/2026 15:02, depois de carregada nesta tela. Nada foi gravado. "
      "Deseja carregá-la novamente?");
  desktop_.ExpectBox(question, Reply::kOk);  // No is the default
  Save();
  EXPECT_EQ(hands_.Text(screen, "EdtFicha"), "MINHA");
  EXPECT_EQ(Scalar("SELECT FICHA FROM {TECEL}"), "DE LA");
  desktop_.ExpectBox(question, Reply::kYes);
  Save();
  EXPECT_EQ(hands_.Text(screen, "EdtFicha"), "DE LA");
  hands_.Enter("EdtFicha", QStringLiteral("DE AMBOS"));
  Save();
  EXPECT_EQ(Scalar("SELECT FICHA FROM {TECEL}"), "DE AMBOS");
}

// The file as it lies on the disk when the program is killed: what only stood in the window is not in it, what was
// saved is, and nothing needs mending.
TEST_F(OrderEntry, AfterAKillTheProgramHasWhatWasSaved) {
  StartOrder();
  TypeItem(QStringLiteral("F1"), QStringLiteral("01"), QStringLiteral("100"));
  Save();
  StartOrder();
  TypeItem(QStringLiteral("F1"), QStringLiteral("01"), QStringLiteral("33"));
  const CopiedFile killed(desktop_.GetMill().Path());

  app::desktop::WindowPerson person;
  Mill::Options options;
  options.database = killed.Path();
  options.person = &person;
  Mill again(options);
  app::desktop::MainWindow window(again.App(), person);
  host::Screen& screen = again.Open("TfmCadLoteTec");
  ASSERT_NE(window.WindowOf("TfmCadLoteTec"), nullptr);
  EXPECT_EQ(again.Type(screen, "EdtNumero", "000001"), host::ActResult::kDone);
  EXPECT_EQ(again.Data(screen, "TbItens")["Qtde"].AsFloat(), 100);
  EXPECT_EQ(again.Type(screen, "EdtNumero", "000002"), host::ActResult::kDone);
  EXPECT_TRUE(again.Data(screen, "TbItens").IsEmpty());
  EXPECT_EQ(again.Scalar("SELECT COUNT(*) FROM {TECEL}").AsInteger(), 1);
  // The number that was handed out is not handed out again.
  EXPECT_EQ(again.Click(screen, "BtnIncluir"), host::ActResult::kDone);
  EXPECT_EQ(again.Text(screen, "EdtNumero"), "000003");
  EXPECT_TRUE(desktop_.GetBoxes().Take().empty());
}

}  // namespace
}  // namespace test
