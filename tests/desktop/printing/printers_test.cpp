// The main window's "Impressoras", and what a device begins while a person works.
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include "app/printing/delivery/printer_choices.h"
#include "desktop/support/desktop_mill.h"
#include "paper_station.h"

namespace {

using app::printing::Choice;
using app::printing::Destination;
using test::Part;
using test::Press;

class Printers : public ::testing::Test {
 protected:
  QString In(const QString& name) const { return folder_.filePath(name); }
  void Show(const std::function<void(QWidget&)>& act) {
    mill_.GetBoxes().ExpectDialog("Impressoras desta estação", act);
    mill_.Window().menuBar()->findChild<QAction*>("Impressoras")->trigger();
    EXPECT_TRUE(mill_.GetBoxes().Met());
  }
  static int RowOf(const QTableWidget& table, const QString& report, const QString& kind) {
    for (int row = 0; row < table.rowCount(); ++row) {
      if (table.item(row, 0)->text() == report && table.item(row, 1)->text() == kind) return row;
    }
    throw std::runtime_error("not listed: " + report.toStdString());
  }
  host::UserSettings& Settings() { return mill_.GetMill().App().GetUserSettings(); }

  QTemporaryDir folder_;
  test::DesktopMill mill_;
};

TEST_F(Printers, EveryReportIsListedChangedTriedAndForgotten) {
  QFile(In("lp0")).open(QIODevice::WriteOnly);
  Show([this](QWidget& box) {
    auto& table = Part<QTableWidget>(box, "TabImpressoras");
    const int row = RowOf(table, "Etiqueta do rolo (WEtqTecRolo)", "Texto");
    RowOf(table, "Etiqueta do rolo (WEtqTecRolo)", "Páginas");
    RowOf(table, "Ordem de tecelagem (WTecLoteCad)", "Páginas");
    table.setCurrentCell(row, 0);
    EXPECT_EQ(table.item(row, 2)->text(), "Pergunta ao imprimir");
    EXPECT_FALSE(Part<QPushButton>(box, "BtnTestar").isEnabled());
    EXPECT_FALSE(Part<QPushButton>(box, "BtnEsquecer").isEnabled());

    mill_.GetBoxes().ExpectDialog("Alterar impressora", [this](QWidget& ask) {
      EXPECT_FALSE(ask.findChild<QWidget*>("CbLembrar")->isVisible());  // that is what it is for
      auto& kinds = Part<QComboBox>(ask, "CbTipo");
      kinds.setCurrentIndex(kinds.findText("Dispositivo ligado ao computador"));
      Part<QComboBox>(ask, "CbLugar").setEditText(In("lp0"));
      Part<QSpinBox>(ask, "EdtCopias").setValue(2);
      Press(Qt::Key_Return);
    });
    test::ClickOn(Part<QPushButton>(box, "BtnAlterar"));
    EXPECT_EQ(table.item(row, 2)->text(), In("lp0"));
    EXPECT_EQ(table.item(row, 3)->text(), "2");

    test::ClickOn(Part<QPushButton>(box, "BtnTestar"));
    EXPECT_TRUE(Part<QLabel>(box, "LblNota").text().startsWith("Texto de teste enviado: " + In("lp0")));
    QFile device(In("lp0"));
    ASSERT_TRUE(device.open(QIODevice::ReadOnly));
    EXPECT_TRUE(device.readAll().startsWith("Tecelagem\r\nTeste de impressao\r\n"));

    test::ClickOn(Part<QPushButton>(box, "BtnEsquecer"));
    EXPECT_EQ(table.item(row, 2)->text(), "Pergunta ao imprimir");
    EXPECT_FALSE(Part<QPushButton>(box, "BtnTestar").isEnabled());
    test::ClickOn(Part<QPushButton>(box, "BtnFechar"));
  });
  EXPECT_FALSE(app::printing::ReadChoice(Settings(), {"WEtqTecRolo", 'T'}));
}

TEST_F(Printers, ATestThatFailsSaysWhy) {
  app::printing::StoreChoice(Settings(), {"WEtqTecRolo", 'T'},
                             {{Destination::Kind::kDevice, In("lp9").toStdString()}, 1});
  Show([this](QWidget& box) {
    auto& table = Part<QTableWidget>(box, "TabImpressoras");
    table.setCurrentCell(RowOf(table, "Etiqueta do rolo (WEtqTecRolo)", "Texto"), 0);
    mill_.ExpectBox("lp9\" não existe");
    test::ClickOn(Part<QPushButton>(box, "BtnTestar"));
    Press(Qt::Key_Escape);
  });
}

TEST_F(Printers, ATestPageIsAPage) {
  app::printing::StoreChoice(Settings(), {"WTecLoteCad", 'W'},
                             {{Destination::Kind::kFile, In("teste.pdf").toStdString()}, 1});
  Show([this](QWidget& box) {
    auto& table = Part<QTableWidget>(box, "TabImpressoras");
    table.setCurrentCell(RowOf(table, "Ordem de tecelagem (WTecLoteCad)", "Páginas"), 0);
    test::ClickOn(Part<QPushButton>(box, "BtnTestar"));
    EXPECT_EQ(Part<QLabel>(box, "LblNota").text(), "Página de teste enviada: " + In("teste.pdf") + ".");
    Press(Qt::Key_Escape);
  });
  QFile page(In("teste.pdf"));
  ASSERT_TRUE(page.open(QIODevice::ReadOnly));
  EXPECT_TRUE(page.readAll().startsWith("%PDF"));
}

TEST_F(Printers, AnOrderGoesToOnePlaceTheOneChosenLast) {
  app::printing::StoreChoice(Settings(), {"WTecLoteCad", 'W'},
                             {{Destination::Kind::kFile, In("ordem.pdf").toStdString()}, 1});
  Show([this](QWidget& box) {
    auto& table = Part<QTableWidget>(box, "TabImpressoras");
    const int pages = RowOf(table, "Ordem de tecelagem (WTecLoteCad)", "Páginas");
    const int text = RowOf(table, "Ordem de tecelagem (WTecLoteCad)", "Texto");
    EXPECT_EQ(table.item(pages, 2)->text(), In("ordem.pdf"));
    EXPECT_EQ(table.item(text, 2)->text(), "Sai em páginas");
    table.setCurrentCell(text, 0);
    mill_.GetBoxes().ExpectDialog("Alterar impressora", [](QWidget& ask) {
      auto& kinds = Part<QComboBox>(ask, "CbTipo");
      kinds.setCurrentIndex(kinds.findText("Impressora na rede"));
      Part<QComboBox>(ask, "CbLugar").setEditText("10.0.0.7:9100");
      Press(Qt::Key_Return);
    });
    test::ClickOn(Part<QPushButton>(box, "BtnAlterar"));
    EXPECT_EQ(table.item(text, 2)->text(), "10.0.0.7:9100");
    EXPECT_EQ(table.item(pages, 2)->text(), "Sai em texto");
    EXPECT_EQ(table.item(pages, 3)->text(), "");
    // A label's types have a place each: the screen asks which one.
    EXPECT_EQ(table.item(RowOf(table, "Etiqueta do rolo (WEtqTecRolo)", "Páginas"), 2)->text(), "Pergunta ao imprimir");
    Press(Qt::Key_Escape);
  });
  EXPECT_FALSE(app::printing::ReadChoice(Settings(), {"WTecLoteCad", 'W'}));
}

TEST_F(Printers, AnInstallationsOwnLayoutIsListed) {
  const std::string layouts = mill_.GetMill().App().LayoutsFolder();
  ASSERT_FALSE(layouts.empty());
  const QString own = QString::fromStdString(layouts);
  ASSERT_TRUE(QDir().mkpath(own));
  QFile(own + "/NossaLista.js").open(QIODevice::WriteOnly);
  Show([](QWidget& box) {
    RowOf(Part<QTableWidget>(box, "TabImpressoras"), "NossaLista", "Páginas");
    Press(Qt::Key_Escape);
  });
  QFile::remove(own + "/NossaLista.js");
  QDir().rmdir(own);
}

// --- what a device begins ------------------------------------------------------------------------------------------

TEST_F(Printers, ADevicesActIsAnActOfTheWindows) {
  int settled = 0;
  QObject::connect(&mill_.GetStation(), &app::desktop::Station::Settled, [&settled] { ++settled; });
  bool busy = false;
  mill_.Person().ActForDevice([&] { busy = mill_.GetStation().Busy(); });
  EXPECT_TRUE(busy);
  EXPECT_EQ(settled, 1);
}

TEST_F(Printers, ADeviceDoesNotStartWhileSomethingElseRuns) {
  bool acted = false;
  mill_.GetStation().Do([&] {
    mill_.Person().ActForDevice([&] { acted = true; });
    return host::ActResult::kDone;
  });
  EXPECT_FALSE(acted);
  mill_.Person().ActForDevice([&] { acted = true; });
  EXPECT_TRUE(acted);
}

TEST_F(Printers, ADeviceDoesNotActBehindABox) {
  bool acted = false;
  Show([&](QWidget&) {
    mill_.Person().ActForDevice([&] { acted = true; });
    Press(Qt::Key_Escape);
  });
  EXPECT_FALSE(acted);
}

}  // namespace
