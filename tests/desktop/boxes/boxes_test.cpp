// What the program says and asks, as boxes.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "app/desktop/boxes/error_box.h"
#include "desktop/shell/toy_screens.h"
#include "desktop/support/desktop_mill.h"
#include "host/errors.h"

namespace {

using host::Icon;
using test::Reply;

class BoxesOfTheProgram : public ::testing::Test {
 protected:
  BoxesOfTheProgram() { test::Toys() = {}; }

  test::DesktopMill mill_;
  app::desktop::WindowPerson& person_ = mill_.Person();
};

TEST_F(BoxesOfTheProgram, AMessageHasTitleTextAndIconAsGiven) {
  for (const auto icon : {Icon::kInformation, Icon::kExclamation, Icon::kQuestion, Icon::kError}) {
    mill_.ExpectBox("Qtde. <b>maior</b> & \"outra\"");
    person_.Message("Baixa", "Qtde. <b>maior</b> & \"outra\"", icon);
    const auto boxes = mill_.GetBoxes().Take();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, "Baixa");
    EXPECT_EQ(boxes[0].text, "Qtde. <b>maior</b> & \"outra\"");
    EXPECT_EQ(boxes[0].icon, icon);
  }
}

TEST_F(BoxesOfTheProgram, AQuestionIsNoUnlessThePersonSaysYes) {
  mill_.ExpectBox("Deseja excluir?", Reply::kOk);  // Enter presses the default
  EXPECT_FALSE(person_.Question("Ordem", "Deseja excluir?"));
  mill_.ExpectBox("Deseja excluir?", Reply::kEscape);
  EXPECT_FALSE(person_.Question("Ordem", "Deseja excluir?"));
  mill_.ExpectBox("Deseja excluir?", Reply::kNo);
  EXPECT_FALSE(person_.Question("Ordem", "Deseja excluir?"));
  mill_.ExpectBox("Deseja excluir?", Reply::kYes);
  EXPECT_TRUE(person_.Question("Ordem", "Deseja excluir?"));
  for (const auto& box : mill_.GetBoxes().Take()) {
    EXPECT_EQ(box.default_button, "Não");
    EXPECT_EQ(box.icon, Icon::kQuestion);
  }
}

TEST_F(BoxesOfTheProgram, TheLetterSIsYes) {
  mill_.GetBoxes().ExpectDialog("Deseja excluir?", [](QWidget& box) {
    QTest::keyClick(&box, Qt::Key_S);
    EXPECT_TRUE(test::WaitFor([&box] { return !box.isVisible(); }));
  });
  EXPECT_TRUE(person_.Question("Ordem", "Deseja excluir?"));
}

// A scanner types into whatever has the keyboard.
TEST_F(BoxesOfTheProgram, AScannedCodeAnswersNothing) {
  for (const char* code : {"97891234567894", "000001002", "S1", "Sim 000123", "NS"}) {
    for (const Qt::Key end : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Tab}) {
      const auto scanned = [&](QWidget& box) {
        const QWidget* focus = box.focusWidget();
        test::TypeText(QString::fromLatin1(code));
        test::Press(end);
        QTest::qWait(120);
        EXPECT_TRUE(box.isVisible()) << code;
        EXPECT_EQ(box.focusWidget(), focus) << code;
        // A person's Enter is heard at once.
        test::Press(Qt::Key_Return);
      };
      mill_.GetBoxes().ExpectDialog("Deseja excluir?", scanned);
      EXPECT_FALSE(person_.Question("Ordem", "Deseja excluir?"));
      mill_.GetBoxes().ExpectDialog("Lote", scanned);
      person_.Message("Ordem", "Lote inválido.", host::Icon::kInformation);
    }
  }
}

// The end of a code that began before the box came up.
TEST_F(BoxesOfTheProgram, TheEndOfACodeAnswersNothing) {
  mill_.GetBoxes().ExpectDialog("Deseja excluir?", [](QWidget& box) {
    test::TypeText("4");
    test::Press(Qt::Key_Return);
    EXPECT_TRUE(box.isVisible());
    test::Press(Qt::Key_Tab);
    test::Press(Qt::Key_Escape);
  });
  EXPECT_FALSE(person_.Question("Ordem", "Deseja excluir?"));
}

TEST_F(BoxesOfTheProgram, AnInputBoxHandsBackWhatWasTyped) {
  mill_.GetBoxes().ExpectInput("Metros", "12,5 çã");
  EXPECT_EQ(person_.InputBox("Baixa", "Metros:", "10"), "12,5 çã");
  mill_.GetBoxes().ExpectInput("Metros", "");
  EXPECT_EQ(person_.InputBox("Baixa", "Metros:", "10"), "");
  mill_.GetBoxes().ExpectInput("Metros", std::nullopt);
  EXPECT_EQ(person_.InputBox("Baixa", "Metros:", "10"), std::nullopt);
}

TEST_F(BoxesOfTheProgram, WhatAnInputBoxProposesIsTakenByEnter) {
  mill_.GetBoxes().ExpectInput("Metros", "7");
  EXPECT_EQ(person_.InputBox("Baixa", "Metros:", ""), "7");
}

TEST_F(BoxesOfTheProgram, AnInputBoxKeepsWhatItCannotTakeAndSaysWhy) {
  QStringList objections;
  const auto try_text = [&objections](QWidget& box, const QString& text) {
    auto* input = box.findChild<QLineEdit*>();
    input->selectAll();
    test::TypeText(text);
    QTest::keyClick(input, Qt::Key_Return);
    objections.append(box.isVisible() ? box.findChild<QLabel*>("Objection")->text() : "taken");
    if (!box.isVisible()) return;
    EXPECT_EQ(input->text(), text);
    EXPECT_TRUE(input->hasFocus());
    EXPECT_EQ(input->selectedText(), text);
  };
  mill_.GetBoxes().ExpectDialog("Nota", [&](QWidget& box) {
    auto* objection = box.findChild<QLabel*>("Objection");
    EXPECT_FALSE(objection->isVisible());
    try_text(box, "123456789012345678901");
    EXPECT_TRUE(objection->isVisible());
    test::TypeText("1");
    EXPECT_FALSE(objection->isVisible());
    try_text(box, QString::fromUtf8("nota ✓"));
    try_text(box, QString::fromUtf8("çãõéíóúâêôàüñçãõéíóú"));
  });
  EXPECT_EQ(person_.InputBox("Pagamento", "Nota:", "", 20), "çãõéíóúâêôàüñçãõéíóú");
  ASSERT_EQ(objections.size(), 3);
  EXPECT_EQ(objections[0], "No máximo 20 caracteres; o texto tem 21.");
  EXPECT_TRUE(objections[1].contains(QString::fromUtf8("✓"))) << objections[1].toStdString();
  EXPECT_EQ(objections[2], "taken");
}

TEST_F(BoxesOfTheProgram, AnInputBoxWithWhatItCannotTakeCanBeGivenUp) {
  mill_.GetBoxes().ExpectDialog("Nota", [&](QWidget& box) {
    test::TypeText("12345");
    test::Press(Qt::Key_Return);
    EXPECT_TRUE(box.isVisible());
    test::Press(Qt::Key_Escape);
  });
  EXPECT_EQ(person_.InputBox("Pagamento", "Nota:", "", 4), std::nullopt);
}

TEST_F(BoxesOfTheProgram, AnInputBoxWithoutLimitTakesALongText) {
  const std::string text(300, 'x');
  mill_.GetBoxes().ExpectInput("Nota", QString::fromStdString(text));
  EXPECT_EQ(person_.InputBox("Pagamento", "Nota:", ""), text);
}

TEST_F(BoxesOfTheProgram, ADateBoxHandsBackTheDateAsTyped) {
  mill_.GetBoxes().ExpectInput("Data", " 01/03/2026 ");
  EXPECT_EQ(person_.AskDate("Relatório", "Data inicial"), "01/03/2026");
  mill_.GetBoxes().ExpectInput("Data", std::nullopt);
  EXPECT_EQ(person_.AskDate("Relatório", "Data inicial"), "");
}

TEST_F(BoxesOfTheProgram, ADateBoxStaysUntilItHasADate) {
  QStringList objections;
  const auto try_date = [&objections](QWidget& box, const QString& text) {
    auto* input = box.findChild<QLineEdit*>();
    input->selectAll();
    if (text.isEmpty()) QTest::keyClick(input, Qt::Key_Delete);
    test::TypeText(text);
    QTest::keyClick(input, Qt::Key_Return);
    objections.append(box.isVisible() ? box.findChild<QLabel*>("Objection")->text() : "");
  };
  mill_.GetBoxes().ExpectDialog("Data inicial", [&](QWidget& box) {
    try_date(box, "31/02/2026");
    try_date(box, "");
    try_date(box, "28/02/2026");
  });
  EXPECT_EQ(person_.AskDate("Relatório", "Data inicial"), "28/02/2026");
  EXPECT_EQ(objections, (QStringList{"\"31/02/2026\" não é uma data.", "Digite a data.", ""}));
}

TEST_F(BoxesOfTheProgram, F4ShowsACalendarAndEnterThereTakesTheDay) {
  mill_.GetBoxes().ExpectDialog("Data inicial", [](QWidget& box) {
    test::TypeText("05/03/2026");
    QTest::keyClick(&test::Keyboard(), Qt::Key_F4);
    auto* calendar = box.findChild<QCalendarWidget*>();
    EXPECT_TRUE(calendar->isVisible());
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 3, 5));
    QTest::keyClick(&test::Keyboard(), Qt::Key_Right);
    QTest::keyClick(&test::Keyboard(), Qt::Key_Return);
    EXPECT_FALSE(calendar->isVisible());
    QTest::keyClick(&test::Keyboard(), Qt::Key_Return);
  });
  EXPECT_EQ(person_.AskDate("Relatório", "Data inicial"), "06/03/2026");
}

// --- errors --------------------------------------------------------------------------------------------------------

TEST_F(BoxesOfTheProgram, AnErrorIsOneSentenceWithItsDetailsBehindAButton) {
  const host::DatabaseError error("O registro está em uso por outra estação.", 335544336, "UPDATE X SET Y = 1");
  QString details;
  bool hidden_at_first = false;
  mill_.GetBoxes().ExpectDialog("em uso por outra", [&](QWidget& box) {
    auto* shown = box.findChild<QPlainTextEdit*>("Details");
    hidden_at_first = !shown->isVisible();
    EXPECT_EQ(box.findChild<QLabel*>("Sentence")->text(), "O registro está em uso por outra estação.");
    QTest::keyClick(&test::Keyboard(), Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(test::WaitFor([shown] { return shown->isVisible(); }));
    details = shown->toPlainText();
    QTest::keyClick(&test::Keyboard(), Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(test::WaitFor([] { return QApplication::clipboard()->text().contains("335544336"); }));
    QTest::keyClick(&test::Keyboard(), Qt::Key_Escape);
  });
  person_.TellError("Ordens", error);
  EXPECT_TRUE(hidden_at_first);
  EXPECT_EQ(details, "Erro do banco de dados 335544336\n\nUPDATE X SET Y = 1");
  EXPECT_EQ(QApplication::clipboard()->text(),
            "O registro está em uso por outra estação.\n\nErro do banco de dados 335544336\n\nUPDATE X SET Y = 1");
}

TEST_F(BoxesOfTheProgram, OtherErrorsTellTheirKindInTheDetails) {
  EXPECT_EQ(app::desktop::ErrorDetails(std::out_of_range("coluna")), "std::out_of_range: coluna");
  EXPECT_EQ(app::desktop::ErrorDetails(host::InputError("Não.")), "host::InputError: Não.");
}

TEST_F(BoxesOfTheProgram, AnErrorOfAScreenIsToldAndTheProgramGoesOn) {
  host::Screen& screen = mill_.Open("TfmToyUm");
  test::Toys().first = [](host::Screen&) { throw std::logic_error("algo quebrou"); };
  mill_.ExpectBox("Erro inesperado do programa: algo quebrou");
  mill_.ClickOn(screen, "BtnUm");
  const auto boxes = mill_.GetBoxes().Take();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].name, "ErrorBox");
  EXPECT_EQ(boxes[0].title, "Tela um");
  mill_.ClickOn(screen, "BtnFechar");
  EXPECT_EQ(mill_.Desk().Find("TfmToyUm"), nullptr);
}

// What a widget's own code lets through ends nothing.
TEST_F(BoxesOfTheProgram, AnExceptionInASlotIsToldAndTheProgramGoesOn) {
  QPushButton button;
  QObject::connect(&button, &QPushButton::clicked, &button, [] { throw std::runtime_error("no meio de um clique"); });
  button.show();
  mill_.ExpectBox("no meio de um clique");
  test::ClickOn(button);
  EXPECT_TRUE(mill_.GetBoxes().Met());
  mill_.ExpectBox("no meio de um clique");
  EXPECT_TRUE(mill_.Window().isVisible());
  QMetaObject::invokeMethod(
      &button, [] { throw std::runtime_error("no meio de um clique"); }, Qt::QueuedConnection);
  test::Settle();
  EXPECT_TRUE(mill_.GetBoxes().Met());
}

// Busy or not: whoever is asked something sees the usual pointer, and the busy one again afterwards.
TEST_F(BoxesOfTheProgram, TheBusyPointerIsAwayWhileABoxIsOpen) {
  person_.ShowBusy(true, "");
  bool busy_in_box = true;
  mill_.GetBoxes().ExpectDialog("Pronto.", [&busy_in_box](QWidget& box) {
    busy_in_box = QApplication::overrideCursor() != nullptr;
    QTest::keyClick(&box, Qt::Key_Return);
  });
  person_.Message("Baixa", "Pronto.", Icon::kInformation);
  EXPECT_FALSE(busy_in_box);
  EXPECT_NE(QApplication::overrideCursor(), nullptr);
  person_.ShowBusy(false, "");
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

}  // namespace
