// A report on the screen before it goes to paper.
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include "app/desktop/printing/page_view.h"
#include "app/desktop/printing/preview_dialog.h"
#include "paper_station.h"

namespace {

using app::desktop::PageView;
using test::Part;
using test::Press;

class Preview : public test::PaperStation {
 protected:
  /// Shows the list and lets the test act in the window; what Print handed back.
  std::optional<app::PrintJob> Show(const std::function<void(QWidget&)>& act) {
    boxes_.ExpectDialog("Visualizar: Lista de São João", act);
    auto job = Print("Lista", 'W');
    EXPECT_TRUE(boxes_.Met());
    return job;
  }
  static void Close(QWidget& box) { test::ClickOn(Part<QPushButton>(box, "BtnFechar")); }
  static QString PageShown(QWidget& box) { return Part<QLineEdit>(box, "EdtPagina").text(); }
  static QString ZoomShown(QWidget& box) { return Part<QComboBox>(box, "CbZoom").currentText(); }
  static PageView& View(QWidget& box) { return Part<PageView>(box, "PageView"); }
  /// Types a path in the file dialog that opens next.
  void ExpectFile(const QString& title, const QString& path) {
    boxes_.ExpectDialog(title, [path](QWidget& box) {
      auto* name = box.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
      name->setText(path);
      QTest::keyClick(name, Qt::Key_Return);
    });
  }
};

TEST_F(Preview, ItOnlyShowsUntilSomebodyPrints) {
  const auto job = Show([](QWidget& box) {
    EXPECT_EQ(PageShown(box), "1");
    EXPECT_EQ(Part<QLabel>(box, "LblPaginas").text(), "de " + QString::number(View(box).PageCount()));
    EXPECT_GE(View(box).PageCount(), 3);
    Close(box);
  });
  EXPECT_FALSE(job);
}

TEST_F(Preview, EscClosesIt) {
  EXPECT_FALSE(Show([](QWidget&) { Press(Qt::Key_Escape); }));
}

TEST_F(Preview, ButtonsTurnPages) {
  Show([](QWidget& box) {
    const auto click = [&box](const char* name) { test::ClickOn(Part<QToolButton>(box, name)); };
    const auto enabled = [&box](const char* name) { return Part<QToolButton>(box, name).isEnabled(); };
    const QString last = QString::number(View(box).PageCount());
    EXPECT_FALSE(enabled("BtnPrimeira"));
    EXPECT_FALSE(enabled("BtnAnterior"));
    click("BtnProxima");
    EXPECT_EQ(PageShown(box), "2");
    EXPECT_TRUE(enabled("BtnAnterior"));
    click("BtnUltima");
    EXPECT_EQ(PageShown(box), last);
    EXPECT_FALSE(enabled("BtnProxima"));
    click("BtnAnterior");
    EXPECT_EQ(PageShown(box).toInt(), last.toInt() - 1);
    click("BtnPrimeira");
    EXPECT_EQ(PageShown(box), "1");
    Close(box);
  });
}

TEST_F(Preview, KeysTurnPagesAndZoom) {
  Show([](QWidget& box) {
    const QString last = QString::number(View(box).PageCount());
    Press(Qt::Key_PageDown);
    EXPECT_EQ(PageShown(box), "2");
    Press(Qt::Key_End);
    EXPECT_EQ(PageShown(box), last);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(PageShown(box).toInt(), last.toInt() - 1);
    Press(Qt::Key_Home);
    EXPECT_EQ(PageShown(box), "1");
    Press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(ZoomShown(box), "100%");
    Press(Qt::Key_Plus);
    EXPECT_EQ(ZoomShown(box), "125%");
    Press(Qt::Key_Minus);
    Press(Qt::Key_Minus);
    EXPECT_EQ(ZoomShown(box), "75%");
    Close(box);
  });
}

TEST_F(Preview, AFitStaysWhenTheWindowGrows) {
  Show([](QWidget& box) {
    PageView& view = View(box);
    test::ClickOn(Part<QToolButton>(box, "BtnLargura"));
    const double wide = view.Zoom();
    test::ClickOn(Part<QToolButton>(box, "BtnInteira"));
    const double whole = view.Zoom();
    EXPECT_GT(wide, whole);  // a page is higher than wide, a window wider than high
    EXPECT_TRUE(Part<QToolButton>(box, "BtnInteira").isChecked());
    EXPECT_FALSE(Part<QToolButton>(box, "BtnLargura").isChecked());
    box.resize(box.size() * 3 / 2);
    EXPECT_TRUE(test::WaitFor([&] { return view.Zoom() > whole * 1.3; }));
    Press(Qt::Key_Plus);
    EXPECT_FALSE(Part<QToolButton>(box, "BtnInteira").isChecked());
    Close(box);
  });
}

TEST_F(Preview, PageAndZoomCanBeTyped) {
  Show([](QWidget& box) {
    auto& page = Part<QLineEdit>(box, "EdtPagina");
    page.setFocus();
    page.selectAll();
    test::TypeText("3");
    Press(Qt::Key_Return);
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(View(box).CurrentPage(), 2);
    auto& zoom = *Part<QComboBox>(box, "CbZoom").lineEdit();
    zoom.setFocus();
    zoom.selectAll();
    test::TypeText("90");
    Press(Qt::Key_Return);
    EXPECT_TRUE(box.isVisible());
    EXPECT_NEAR(View(box).Zoom(), 0.9, 0.001);
    EXPECT_EQ(View(box).CurrentPage(), 2);  // it stays where it was
    zoom.setFocus();
    zoom.selectAll();
    test::TypeText("largo");
    Press(Qt::Key_Return);
    EXPECT_EQ(ZoomShown(box), "90%");
    Close(box);
  });
}

TEST_F(Preview, ItShowsThePaper) {
  Show([](QWidget& box) {
    const QImage picture = View(box).viewport()->grab().toImage();
    // White paper in the middle, letters on it, the ground around it.
    int dark = 0;
    for (int x = 0; x < picture.width(); ++x) {
      for (int y = 0; y < picture.height(); ++y) dark += qGray(picture.pixel(x, y)) < 90 ? 1 : 0;
    }
    EXPECT_GT(dark, 500);
    EXPECT_EQ(picture.pixelColor(picture.width() / 2, 30), QColor(Qt::white));
    EXPECT_NE(picture.pixelColor(2, 2), QColor(Qt::white));
    Close(box);
  });
}

TEST_F(Preview, PagesAreSavedAsPdf) {
  const auto job = Show([this](QWidget& box) {
    ExpectFile("Gravar PDF", In("lista"));
    test::ClickOn(Part<QPushButton>(box, "BtnPdf"));
    EXPECT_EQ(Part<QLabel>(box, "LblNota").text(), "Gravado: " + In("lista.pdf"));
    Close(box);
  });
  ASSERT_TRUE(job);
  EXPECT_EQ(job->file, In("lista.pdf").toStdString());
  EXPECT_EQ(job->kind, 'W');
  const std::string text = OutputOf("pdftotext", {"-layout", In("lista.pdf"), "-"});
  EXPECT_NE(text.find("Código"), std::string::npos) << text;
  EXPECT_NE(text.find("M200"), std::string::npos);
}

TEST_F(Preview, APdfThatCannotBeWrittenIsToldAndNothingIsLost) {
  const auto job = Show([this](QWidget& box) {
    QDir(folder_.path()).mkdir("pasta");
    boxes_.ExpectDialog("Gravar PDF", [this](QWidget& ask) {
      auto* name = ask.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
      name->setText(In("pasta/lista.pdf"));
      QTest::keyClick(name, Qt::Key_Return);
      QDir(folder_.path()).rmdir("pasta");  // somebody took it away meanwhile
    });
    boxes_.Expect("Não foi possível gravar");
    test::ClickOn(Part<QPushButton>(box, "BtnPdf"));
    EXPECT_TRUE(box.isVisible());
    Close(box);
  });
  EXPECT_FALSE(job);
}

TEST_F(Preview, TheRowsAreSavedAsASpreadsheet) {
  const auto job = Show([this](QWidget& box) {
    ExpectFile("Gravar planilha", In("lista.xlsx"));
    test::ClickOn(Part<QPushButton>(box, "BtnPlanilha"));
    Close(box);
  });
  EXPECT_FALSE(job);  // a spreadsheet is no print
  const std::string texts = OutputOf("unzip", {"-p", In("lista.xlsx"), "xl/sharedStrings.xml"});
  EXPECT_NE(texts.find("Código"), std::string::npos) << texts;
  EXPECT_NE(texts.find("M200"), std::string::npos);
  const std::string cells = OutputOf("unzip", {"-p", In("lista.xlsx"), "xl/worksheets/sheet1.xml"});
  EXPECT_NE(cells.find("<v>0.5</v>"), std::string::npos) << cells.substr(0, 2000);
  EXPECT_NE(cells.find("<v>100</v>"), std::string::npos);
}

TEST_F(Preview, PrintingClosesItAndIsTheJob) {
  const auto job = Show([this](QWidget& box) {
    boxes_.ExpectDialog("Imprimir", [this](QWidget& ask) {
      auto& kinds = Part<QComboBox>(ask, "CbTipo");
      kinds.setCurrentIndex(kinds.findText("Arquivo ou pasta"));
      Part<QComboBox>(ask, "CbLugar").setEditText(In("papel.pdf"));
      Press(Qt::Key_Return);
    });
    Press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_FALSE(box.isVisible());
  });
  ASSERT_TRUE(job);
  EXPECT_EQ(job->file, In("papel.pdf").toStdString());
  EXPECT_TRUE(Whole(In("papel.pdf")).startsWith("%PDF"));
}

TEST_F(Preview, WhatCannotBePrintedIsToldAndThePagesStay) {
  app::printing::StoreChoice(settings_, {"Lista", 'W'}, {{app::printing::Destination::Kind::kPrinter, "Laser"}, 1});
  const auto job = Show([this](QWidget& box) {
    EXPECT_EQ(Part<QLabel>(box, "LblNota").text(), "Imprime em: Impressora Laser");
    boxes_.Expect("A fila de impressão \"Laser\"");
    test::ClickOn(Part<QPushButton>(box, "BtnImprimir"));
    EXPECT_TRUE(box.isVisible());
    Close(box);
  });
  EXPECT_FALSE(job);
}

TEST_F(Preview, AThousandPagesAreThereAtOnce) {
  std::vector<test::FieldsOfRow> rows;
  for (int i = 1; i <= 30'000; ++i) rows.push_back({{"Codigo", "M" + std::to_string(i)}, {"Qtde", host::Value(1.5)}});
  screen_.Add("TbItens", {"Codigo", "Qtde"}, rows);
  Show([](QWidget& box) {
    EXPECT_GT(View(box).PageCount(), 300);
    QElapsedTimer time;
    time.start();
    Press(Qt::Key_End);
    View(box).viewport()->repaint();
    EXPECT_LT(time.elapsed(), 500);
    EXPECT_EQ(PageShown(box).toInt(), View(box).PageCount());
    Close(box);
  });
}

TEST_F(Preview, AMistakeInTheLayoutOpensNothing) {
  WriteLayout("Lista.js", "report({\n  body: [nada()]\n});");
  const std::string why = WhyRefused("Lista", 'W');
  EXPECT_NE(why.find("Lista.js"), std::string::npos) << why;
  EXPECT_NE(why.find('2'), std::string::npos) << why;
  EXPECT_NE(why.find("nada"), std::string::npos) << why;
}

TEST_F(Preview, ALabelIsNotLargerThanTwiceItsSize) {
  WriteLayout("Lista.js", "label({ width: 100, height: 60, draw: () => [{ text: 'Rolo', x: 5, y: 5, w: 90 }] });");
  boxes_.ExpectDialog("Visualizar: Lista", [](QWidget& box) {
    EXPECT_LE(View(box).Zoom(), 2);
    EXPECT_FALSE(Part<QPushButton>(box, "BtnPlanilha").isEnabled());
    EXPECT_EQ(Part<QLabel>(box, "LblPaginas").text(), "de 1");
    Close(box);
  });
  Print("Lista", 'W');
}

TEST_F(Preview, NothingToPrintIsSaid) {
  WriteLayout("Lista.js", "label({ width: 100, height: 60, rows: [], draw: () => [] });");
  EXPECT_EQ(WhyRefused("Lista", 'W'), "O relatório \"Lista\" não tem nada para imprimir.");
}

}  // namespace
