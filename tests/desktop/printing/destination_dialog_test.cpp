// Where a report goes: asked once, remembered, changed.
#include "app/desktop/printing/destination_dialog.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include "app/desktop/basics/mnemonics.h"
#include "paper_station.h"

namespace {

using app::printing::Choice;
using app::printing::Destination;
using app::printing::KnownReport;
using app::printing::ReadChoice;
using test::Part;
using test::Press;
using Kind = Destination::Kind;

const KnownReport kLabel{"Etiqueta", 'T'};
constexpr const char* kLabelBytes = "^XAM1^XZ\r\n^XAM2^XZ\r\n^XAM3^XZ\r\n";

class Destinations : public test::PaperStation {
 protected:
  static void Fill(QWidget& box, const QString& kind, const QString& place) {
    auto& kinds = Part<QComboBox>(box, "CbTipo");
    ASSERT_GE(kinds.findText(kind), 0) << kind.toStdString();
    kinds.setCurrentIndex(kinds.findText(kind));
    Part<QComboBox>(box, "CbLugar").setEditText(place);
  }
  void ExpectAsked(const std::function<void(QWidget&)>& act) { boxes_.ExpectDialog("Imprimir", act); }
  /// A device that keeps what it is sent.
  QString Device() {
    QFile device(In("lp0"));
    EXPECT_TRUE(device.open(QIODevice::WriteOnly));
    return In("lp0");
  }
};

TEST_F(Destinations, ItIsAskedOnceAndRemembered) {
  const QString device = Device();
  ExpectAsked([&](QWidget& box) {
    EXPECT_EQ(box.windowTitle(), "Imprimir");
    Fill(box, "Dispositivo ligado ao computador", device);
    Press(Qt::Key_Return);
  });
  const auto job = Print("Etiqueta", 'T');
  EXPECT_TRUE(boxes_.Met());
  ASSERT_TRUE(job);
  EXPECT_EQ(job->destination, device.toStdString());
  EXPECT_EQ(job->file, "");
  EXPECT_EQ(Whole(device), kLabelBytes);
  // Nobody is asked any more: any box would fail the test.
  EXPECT_TRUE(Print("Etiqueta", 'T'));
  EXPECT_EQ(Whole(device), QByteArray(kLabelBytes).repeated(2));
  EXPECT_EQ(ReadChoice(settings_, kLabel), (Choice{{Kind::kDevice, device.toStdString()}, 1}));
  EXPECT_EQ(settings_.Read("Tecelagem", "Impressoras", "Etiqueta.T"), "dispositivo:" + device.toStdString());
}

TEST_F(Destinations, TextAndPagesHaveTheirOwn) {
  app::printing::StoreChoice(settings_, {"Lista", 'T'}, {{Kind::kDevice, Device().toStdString()}, 1});
  EXPECT_FALSE(ReadChoice(settings_, {"Lista", 'W'}));
}

TEST_F(Destinations, ItIsNotRememberedWhenThePersonDoesNotWantIt) {
  const QString device = Device();
  for (int time = 0; time < 2; ++time) {
    ExpectAsked([&](QWidget& box) {
      Fill(box, "Dispositivo ligado ao computador", device);
      Part<QCheckBox>(box, "CbLembrar").setChecked(false);
      Press(Qt::Key_Return);
    });
    EXPECT_TRUE(Print("Etiqueta", 'T'));
  }
  EXPECT_FALSE(ReadChoice(settings_, kLabel));
}

TEST_F(Destinations, ItIsAskedAgainOnRequestAndShowsWhatIsRemembered) {
  const QString device = Device();
  app::printing::StoreChoice(settings_, kLabel, {{Kind::kAddress, "10.0.0.7:9100"}, 3});
  ExpectAsked([&](QWidget& box) {
    EXPECT_EQ(Part<QComboBox>(box, "CbTipo").currentText(), "Impressora na rede");
    EXPECT_EQ(Part<QComboBox>(box, "CbLugar").currentText(), "10.0.0.7:9100");
    EXPECT_EQ(Part<QSpinBox>(box, "EdtCopias").value(), 3);
    Fill(box, "Dispositivo ligado ao computador", device);
    Part<QSpinBox>(box, "EdtCopias").setValue(2);
    Press(Qt::Key_Return);
  });
  EXPECT_TRUE(Print("Etiqueta", 'T', {.preview = false, .show_dialog = true}));
  EXPECT_EQ(Whole(device), QByteArray(kLabelBytes).repeated(2));  // two copies
  EXPECT_EQ(ReadChoice(settings_, kLabel), (Choice{{Kind::kDevice, device.toStdString()}, 2}));
}

TEST_F(Destinations, WhoGivesUpHasNotPrinted) {
  ExpectAsked([](QWidget&) { Press(Qt::Key_Escape); });
  EXPECT_FALSE(Print("Etiqueta", 'T'));
  EXPECT_FALSE(ReadChoice(settings_, kLabel));
}

TEST_F(Destinations, WhatCannotBeIsObjectedToInTheDialog) {
  const QString device = Device();
  ExpectAsked([&](QWidget& box) {
    auto& objection = Part<QLabel>(box, "Objection");
    Press(Qt::Key_Return);
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(objection.text(), "Falta dizer para onde vai a impressão.");
    Fill(box, "Impressora na rede", "10.0.0.7:porta");
    EXPECT_FALSE(objection.isVisible());
    Press(Qt::Key_Return);
    EXPECT_TRUE(box.isVisible());
    EXPECT_TRUE(objection.text().contains("não é um endereço de impressora")) << objection.text().toStdString();
    Fill(box, "Dispositivo ligado ao computador", device);
    Press(Qt::Key_Return);
  });
  EXPECT_TRUE(Print("Etiqueta", 'T'));
}

TEST_F(Destinations, PagesAreOfferedOnlyWhatTakesPages) {
  app::desktop::DestinationDialog pages({"Imprimir", "Lista", 'W', {}, true, "&Imprimir"}, &window_);
  app::desktop::DestinationDialog text({"Imprimir", "Etiqueta", 'T', {}, true, "&Imprimir"}, &window_);
  const auto kinds = [](const QWidget& box) {
    QStringList names;
    const auto& all = Part<QComboBox>(box, "CbTipo");
    for (int i = 0; i < all.count(); ++i) names += all.itemText(i);
    return names;
  };
  EXPECT_EQ(kinds(pages), (QStringList{"Impressora deste computador", "Arquivo ou pasta"}));
  EXPECT_EQ(kinds(text), (QStringList{"Impressora na rede", "Dispositivo ligado ao computador",
                                      "Fila de impressão, sem tratamento", "Arquivo ou pasta"}));
}

TEST_F(Destinations, WhereTheDestinationDecidesAllAreOfferedAndSayWhatIsText) {
  const auto kinds = [this](char kind) {
    const app::desktop::DestinationDialog box({"Imprimir", "Lista", kind, {}, true, "&Imprimir", true}, &window_);
    QStringList names;
    const auto& all = Part<QComboBox>(box, "CbTipo");
    for (int i = 0; i < all.count(); ++i) names += all.itemText(i);
    return names;
  };
  EXPECT_EQ(kinds('W'), (QStringList{"Impressora deste computador", "Impressora na rede (texto)",
                                     "Dispositivo ligado ao computador (texto)",
                                     "Fila de impressão, sem tratamento (texto)", "Arquivo ou pasta"}));
  EXPECT_EQ(kinds('T').last(), "Arquivo ou pasta (texto)");
}

TEST_F(Destinations, EveryLetterIsOnce) {
  for (const char kind : {'W', 'T'}) {
    const app::desktop::DestinationDialog box({"Imprimir", "Lista", kind, {}, true, "&Imprimir"}, &window_);
    QList<QChar> letters;
    for (const auto* button : box.findChildren<QAbstractButton*>()) {
      letters += app::desktop::MnemonicOf(button->text());
    }
    for (const auto* label : box.findChildren<QLabel*>()) {
      if (label->buddy() != nullptr) letters += app::desktop::MnemonicOf(label->text());
    }
    letters.removeAll(QChar());
    EXPECT_EQ(letters.size(), QSet<QChar>(letters.begin(), letters.end()).size());
    EXPECT_GE(letters.size(), 6);
  }
}

TEST_F(Destinations, WhatFailedIsNotRemembered) {
  ExpectAsked([&](QWidget& box) {
    Fill(box, "Dispositivo ligado ao computador", In("lp9"));
    Press(Qt::Key_Return);
  });
  const std::string why = WhyRefused("Etiqueta", 'T');
  EXPECT_NE(why.find("não existe"), std::string::npos) << why;
  EXPECT_FALSE(ReadChoice(settings_, kLabel));
}

TEST_F(Destinations, APrintIsAPrintEvenWhenItsPlaceCannotBeKept) {
  const QString device = Device();
  settings_.Lock();
  ExpectAsked([&](QWidget& box) {
    Fill(box, "Dispositivo ligado ao computador", device);
    Press(Qt::Key_Return);
  });
  boxes_.Expect("Não foi possível gravar as preferências");
  EXPECT_TRUE(Print("Etiqueta", 'T'));
  EXPECT_EQ(Whole(device), kLabelBytes);
}

TEST_F(Destinations, PagesWithoutPreviewGoStraightToTheirPlace) {
  app::printing::StoreChoice(settings_, {"Lista", 'W'}, {{Kind::kFile, folder_.path().toStdString()}, 1});
  const auto first = Print("Lista", 'W', {.preview = false});
  const auto second = Print("Lista", 'W', {.preview = false});
  ASSERT_TRUE(first && second);
  EXPECT_EQ(first->file, In("Lista-1.pdf").toStdString());
  EXPECT_EQ(second->file, In("Lista-2.pdf").toStdString());
  EXPECT_TRUE(Whole(In("Lista-2.pdf")).startsWith("%PDF"));
}

// --- pages or text ---------------------------------------------------------------------------------------------------

class PagesOrText : public Destinations {
 protected:
  PagesOrText() {
    WriteLayout("Lista.text.js", "text({ rows: TbItens.rows.slice(0, 2), write: row => row.Codigo + '\\r\\n' });");
  }
  std::optional<app::PrintJob> PrintList(const host::ReportFlags& flags = {.preview = false},
                                         host::ReportLayouts layouts = host::ReportLayouts::kBothByDestination) {
    const host::ListedReport listed{"Lista", "Lista de rolos", layouts, nullptr, 0, ""};
    return Print("Lista", 'W', flags, &listed);
  }
  static constexpr const char* kListBytes = "M1\r\nM2\r\n";
};

TEST_F(PagesOrText, WhatWasChosenForTheTextGetsTheText) {
  const QString device = Device();
  app::printing::StoreChoice(settings_, {"Lista", 'T'}, {{Kind::kDevice, device.toStdString()}, 2});
  const auto job = PrintList();
  ASSERT_TRUE(job);
  EXPECT_EQ(job->kind, 'T');
  EXPECT_EQ(job->destination, device.toStdString());
  EXPECT_EQ(Whole(device), QByteArray(kListBytes).repeated(2));
}

TEST_F(PagesOrText, ItIsAskedOnceForBoth) {
  const QString device = Device();
  ExpectAsked([&](QWidget& box) {
    Fill(box, "Dispositivo ligado ao computador (texto)", device);
    Press(Qt::Key_Return);
  });
  ASSERT_TRUE(PrintList());
  EXPECT_TRUE(PrintList());  // any box would fail the test
  EXPECT_EQ(Whole(device), QByteArray(kListBytes).repeated(2));
  EXPECT_EQ(ReadChoice(settings_, {"Lista", 'T'}), (Choice{{Kind::kDevice, device.toStdString()}, 1}));
  EXPECT_FALSE(ReadChoice(settings_, {"Lista", 'W'}));
}

TEST_F(PagesOrText, AFileIsOfTheTypeThatTheStationPrintedBefore) {
  app::printing::StoreChoice(settings_, {"Lista", 'T'}, {{Kind::kDevice, In("lp9").toStdString()}, 1});
  ExpectAsked([&](QWidget& box) {
    EXPECT_EQ(Part<QComboBox>(box, "CbLugar").currentText(), In("lp9"));
    auto& kinds = Part<QComboBox>(box, "CbTipo");
    EXPECT_EQ(kinds.currentText(), "Dispositivo ligado ao computador (texto)");

    Fill(box, "Arquivo ou pasta (texto)", In("lista.txt"));
    Press(Qt::Key_Return);
  });
  ASSERT_TRUE(PrintList({.preview = false, .show_dialog = true}));
  EXPECT_EQ(Whole(In("lista.txt")), kListBytes);
  app::printing::ForgetChoice(settings_, {"Lista", 'T'});
  ExpectAsked([&](QWidget& box) {
    Fill(box, "Arquivo ou pasta", In("lista.pdf"));
    Press(Qt::Key_Return);
  });
  ASSERT_TRUE(PrintList());
  EXPECT_TRUE(Whole(In("lista.pdf")).startsWith("%PDF"));
  EXPECT_FALSE(ReadChoice(settings_, {"Lista", 'T'}));
}

TEST_F(PagesOrText, WhereThePersonChoosesTheTypeAtTheScreenPagesStayPages) {
  app::printing::StoreChoice(settings_, {"Lista", 'T'}, {{Kind::kDevice, Device().toStdString()}, 1});
  app::printing::StoreChoice(settings_, {"Lista", 'W'}, {{Kind::kFile, In("lista.pdf").toStdString()}, 1});
  const auto job = PrintList({.preview = false}, host::ReportLayouts::kBothByScreen);
  ASSERT_TRUE(job);
  EXPECT_EQ(job->kind, 'W');
  EXPECT_TRUE(Whole(In("lista.pdf")).startsWith("%PDF"));
}

TEST_F(PagesOrText, AMistakeInTheTextIsToldAndNothingIsRemembered) {
  WriteLayout("Lista.text.js", "text({\n  write: () => nada() });");
  const host::ListedReport listed{"Lista", "Lista", host::ReportLayouts::kBothByDestination, nullptr, 0, ""};
  ExpectAsked([&](QWidget& box) {
    Fill(box, "Dispositivo ligado ao computador (texto)", Device());
    Press(Qt::Key_Return);
  });
  try {
    Print("Lista", 'W', {.preview = false}, &listed);
    ADD_FAILURE() << "printed";
  } catch (const host::InputError& error) {
    EXPECT_NE(std::string(error.what()).find("Lista.text.js, linha 2"), std::string::npos) << error.what();
  }
  EXPECT_FALSE(ReadChoice(settings_, {"Lista", 'T'}));
}

TEST_F(Destinations, AStoredChoiceThatMakesNoSenseIsAskedAnew) {
  settings_.Write("Tecelagem", "Impressoras", "Etiqueta.T", "impressora:Laser");
  ExpectAsked([](QWidget&) { Press(Qt::Key_Escape); });
  EXPECT_FALSE(Print("Etiqueta", 'T'));
}

}  // namespace
