// From the order's window to paper, with the printers of a station.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include "app/desktop/printing/desktop_equipment.h"
#include "app/desktop/printing/page_view.h"
#include "app/printing/delivery/printer_choices.h"
#include "desktop/support/desktop_mill.h"
#include "paper_station.h"

namespace {

using app::printing::Destination;
using test::Part;
using test::Press;

class OrderOnPaper : public ::testing::Test {
 protected:
  static test::DesktopMill::Options With(app::Equipment& equipment) {
    test::DesktopMill::Options options;
    options.mill.equipment = &equipment;
    options.prepare = [](test::Mill& mill) {
      test::FillSmallMill(mill);
      mill.Insert("TECEL", {{"NUMERO", "000123"}, {"MALHARIA", "M00001"}, {"DT_EMISSAO", "2026-03-10"}});
      mill.Insert("TECEL_ITEN", {{"NUMERO", "000123"}, {"CODIGO", "F1"}, {"COR", "01"}, {"QTDE", 100}});
    };
    return options;
  }
  /// The order on the screen, and Alt+I pressed.
  void PrintOrder() {
    host::Screen& screen = mill_.Open("TfmCadLoteTec");
    mill_.WidgetOf(screen, "EdtNumero").setFocus();
    test::TypeText("000123");
    Press(Qt::Key_Return);
    mill_.ClickOn(screen, "BtnImprimir");
    EXPECT_TRUE(mill_.GetBoxes().Met());
  }
  std::vector<app::PrintJob> Jobs() { return mill_.GetMill().App().TakeJobs(); }

  QTemporaryDir folder_;
  app::desktop::DesktopEquipment equipment_;
  test::DesktopMill mill_{With(equipment_)};
};

TEST_F(OrderOnPaper, ItIsSeenThenPrintedThenTheWindowGoesOn) {
  const QString file = folder_.filePath("ordem.pdf");
  app::printing::StoreChoice(mill_.GetMill().App().GetUserSettings(), {"WTecLoteCad", 'W'},
                             {{Destination::Kind::kFile, file.toStdString()}, 1});
  mill_.GetBoxes().ExpectDialog("Visualizar: ", [&](QWidget& box) {
    EXPECT_TRUE(box.windowTitle().contains("000123")) << box.windowTitle().toStdString();
    EXPECT_GE(Part<app::desktop::PageView>(box, "PageView").PageCount(), 1);
    EXPECT_EQ(Part<QLabel>(box, "LblNota").text(), "Imprime em: " + file);
    EXPECT_TRUE(mill_.GetStation().Busy());  // nothing else of the windows starts meanwhile
    Press(Qt::Key_P, Qt::ControlModifier);
  });
  PrintOrder();
  const auto jobs = Jobs();
  ASSERT_EQ(jobs.size(), 1u);
  EXPECT_EQ(jobs[0].report, "WTecLoteCad");
  EXPECT_EQ(jobs[0].file, file.toStdString());
  EXPECT_TRUE(QFile::exists(file));
  EXPECT_FALSE(mill_.GetStation().Busy());
  EXPECT_TRUE(mill_.Window().isActiveWindow());
  mill_.GetBoxes().Take();
  // The screen works on.
  mill_.GetBoxes().ExpectDialog("Visualizar: ", [](QWidget&) { Press(Qt::Key_Escape); });
  mill_.ClickOn(*mill_.Desk().Find("TfmCadLoteTec"), "BtnImprimir");
  EXPECT_TRUE(Jobs().empty());
}

TEST_F(OrderOnPaper, ALinePrinterGetsTheTextOfWhatIsSeen) {
  const QString device = folder_.filePath("lp0");
  ASSERT_TRUE(QFile(device).open(QIODevice::WriteOnly));
  mill_.GetBoxes().ExpectDialog("Visualizar: ", [&](QWidget& box) {
    EXPECT_EQ(Part<QLabel>(box, "LblNota").text(), "");
    mill_.GetBoxes().ExpectDialog("Imprimir", [&](QWidget& ask) {
      auto& kinds = Part<QComboBox>(ask, "CbTipo");
      kinds.setCurrentIndex(kinds.findText("Dispositivo ligado ao computador (texto)"));
      Part<QComboBox>(ask, "CbLugar").setEditText(device);
      Press(Qt::Key_Return);
    });
    Press(Qt::Key_P, Qt::ControlModifier);
  });
  PrintOrder();
  const auto jobs = Jobs();
  ASSERT_EQ(jobs.size(), 1u);
  EXPECT_EQ(jobs[0].kind, 'T');
  EXPECT_EQ(jobs[0].destination, device.toStdString());
  QFile printed(device);
  ASSERT_TRUE(printed.open(QIODevice::ReadOnly));
  const QByteArray bytes = printed.readAll();
  EXPECT_TRUE(bytes.contains("ORDEM DE TECELAGEM 000123")) << bytes.toStdString();
  EXPECT_TRUE(bytes.endsWith('\f'));
  // The next order is only seen, not asked about.
  mill_.GetBoxes().ExpectDialog("Visualizar: ", [&](QWidget& box) {
    EXPECT_EQ(Part<QLabel>(box, "LblNota").text(), "Imprime em: " + device + " (texto)");
    Press(Qt::Key_P, Qt::ControlModifier);
  });
  mill_.ClickOn(*mill_.Desk().Find("TfmCadLoteTec"), "BtnImprimir");
  EXPECT_EQ(Jobs().size(), 1u);
}

TEST_F(OrderOnPaper, AMistakeInTheInstallationsLayoutIsABoxAndNothingElse) {
  const QString layouts = QString::fromStdString(mill_.GetMill().App().LayoutsFolder());
  ASSERT_TRUE(QDir().mkpath(layouts));
  QFile own(layouts + "/WTecLoteCad.js");
  ASSERT_TRUE(own.open(QIODevice::WriteOnly));
  own.write("report({\n  body: [heading(QryRelatorio.first.NADA.X)]\n});\n");
  own.close();
  mill_.ExpectBox("WTecLoteCad.js");
  PrintOrder();
  const auto shown = mill_.GetBoxes().Take();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_TRUE(shown[0].text.contains('2')) << shown[0].text.toStdString();
  EXPECT_TRUE(own.remove());
  QDir().rmdir(layouts);
  mill_.GetBoxes().ExpectDialog("Visualizar: ", [](QWidget&) { Press(Qt::Key_Escape); });
  mill_.ClickOn(*mill_.Desk().Find("TfmCadLoteTec"), "BtnImprimir");
  EXPECT_TRUE(mill_.GetBoxes().Met());
}

}  // namespace
