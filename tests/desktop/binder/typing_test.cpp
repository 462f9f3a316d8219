// What is typed: texts reach the screen character by character, numbers and dates when they are left.
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include "tests/desktop/binder/toy_window.h"

namespace test {
namespace {

class TextTyped : public WindowTest {};

TEST_F(TextTyped, ReachesTheScreenWithEveryCharacter) {
  OpenTear();
  Type("M");
  EXPECT_EQ(Part<host::Edit>("EdtCodigo").Text(), "M");
  EXPECT_EQ(Find<QLabel>("LblDescricao")->text(), "Malha M");
  Type("ã1");
  EXPECT_EQ(Part<host::Edit>("EdtCodigo").Text(), "Mã1");
  EXPECT_EQ(Find<QLabel>("LblDescricao")->text(), "Malha Mã1");
  Press(Qt::Key_Backspace);
  EXPECT_EQ(Part<host::Edit>("EdtCodigo").Text(), "Mã");
}

TEST_F(TextTyped, IsNoLongerThanItMayBe) {
  OpenTear();
  Type("1234567");
  EXPECT_EQ(Shown("EdtCodigo"), "123456");
  EXPECT_EQ(Part<host::Edit>("EdtCodigo").Text(), "123456");
  EXPECT_EQ(Events(), "");
}

TEST_F(TextTyped, ThatCannotBeStoredIsToldAndTakenBack) {
  OpenTear();
  Type("ab");
  Type("☃");
  EXPECT_EQ(Events(), "box Tear: O caractere \"☃\" não pode ser gravado. | end aborted");
  EXPECT_EQ(Shown("EdtCodigo"), "ab");
  EXPECT_EQ(Part<host::Edit>("EdtCodigo").Text(), "ab");
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
}

TEST_F(TextTyped, IsGivenUpByEscBackToWhatStoodThereOnEntering) {
  OpenTear();
  Part<host::Edit>("EdtCodigo").SetText("M1");
  Type("xy");
  EXPECT_EQ(Find<QLabel>("LblDescricao")->text(), "Malha xy");
  Press(Qt::Key_Escape);
  EXPECT_EQ(Shown("EdtCodigo"), "M1");
  EXPECT_EQ(Part<host::Edit>("EdtCodigo").Text(), "M1");
  EXPECT_EQ(Find<QLabel>("LblDescricao")->text(), "Malha M1");
  EXPECT_EQ(Find<QLineEdit>("EdtCodigo")->selectedText(), "M1");
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
}

TEST_F(TextTyped, EscWithNothingTypedIsTheScreens) {
  OpenTear();
  std::vector<host::Key> keys;
  screen_->on_key = [&](host::Key key) {
    keys.push_back(key);
    return false;
  };
  Type("x");
  Press(Qt::Key_Escape);
  EXPECT_TRUE(keys.empty());
  Press(Qt::Key_Escape);
  EXPECT_EQ(keys, std::vector<host::Key>{host::Key::kEscape});
}

TEST_F(TextTyped, WhatTheScreenMakesOfItShowsWithTheCursorWhereItWas) {
  OpenTear();
  auto& code = Part<host::Edit>("EdtCodigo");
  code.OnChange = [&code] {
    std::string capitals;
    for (const char c : code.Text()) capitals += static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    code.SetText(capitals);
  };
  Type("acd");
  Press(Qt::Key_Left);
  Press(Qt::Key_Left);
  Type("b");
  EXPECT_EQ(Shown("EdtCodigo"), "ABCD");
  EXPECT_EQ(Find<QLineEdit>("EdtCodigo")->cursorPosition(), 2);
}

TEST_F(TextTyped, LongerThanCanBeTypedIsShownWhole) {
  OpenTear();
  Part<host::Edit>("EdtCodigo").SetText("ABCDEFGHIJ");
  EXPECT_EQ(Shown("EdtCodigo"), "ABCDEFGHIJ");
}

TEST_F(TextTyped, ReadOnlyIsNotTyped) {
  OpenTear();
  auto& first = Part<host::Edit>("EdtUm");
  station_.Do([&first] {
    first.SetText("fixo");
    first.SetReadOnly(true);
    return host::ActResult::kDone;
  });
  Click("EdtUm");
  EXPECT_EQ(WindowTest::Focus(), "EdtUm");
  Type("x");
  EXPECT_EQ(Shown("EdtUm"), "fixo");
  EXPECT_EQ(first.Text(), "fixo");
}

TEST_F(TextTyped, SecretIsNotShown) {
  OpenTear([](ToyScreen& screen) { screen.Add<host::Edit>("EdtSenha", "Senha").Secret = true; });
  EXPECT_EQ(Find<QLineEdit>("EdtSenha")->echoMode(), QLineEdit::Password);
}

class NumberTyped : public WindowTest {
 protected:
  void SetUp() override {
    OpenTear();
    Press(Qt::Key_Return);
    Events();
  }
  host::Edit& Qtde() { return Part<host::Edit>("EdtQtde"); }
};

TEST_F(NumberTyped, ReachesTheScreenWhenItIsLeft) {
  int changes = 0;
  Qtde().OnChange = [&] { ++changes; };
  Type("12,5");
  EXPECT_EQ(Qtde().Number(), 0);
  EXPECT_EQ(changes, 0);
  Press(Qt::Key_Return);
  EXPECT_EQ(Qtde().Number(), 12.5);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(Shown("EdtQtde"), "12,50");
  EXPECT_EQ(WindowTest::Focus(), "EdtVoltas");
}

TEST_F(NumberTyped, KeepsItsPrecisionWhenOnlyPassedThrough) {
  Qtde().SetNumber(1.23456);
  EXPECT_EQ(Shown("EdtQtde"), "1,23");
  Press(Qt::Key_Return);
  EXPECT_EQ(Qtde().Number(), 1.23456);
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  Press(Qt::Key_End);
  Type("4");
  Press(Qt::Key_Backspace);
  Press(Qt::Key_Return);
  EXPECT_EQ(Qtde().Number(), 1.23456);
}

TEST_F(NumberTyped, IsShownInItsFormatEvenWhenItIsTheSameNumber) {
  Qtde().SetNumber(5);
  Find<QLineEdit>("EdtQtde")->selectAll();
  Type("5");
  Press(Qt::Key_Return);
  EXPECT_EQ(Shown("EdtQtde"), "5,00");
}

TEST_F(NumberTyped, RefusedGoesOnBeingTypedWhateverIsTriedNext) {
  Type("1x");
  const std::string refusal = "box Tear: O campo \"Quantidade\" aceita somente números. | end aborted";
  const auto expect_refused = [&](const char* how) {
    EXPECT_EQ(Events(), refusal) << how;
    EXPECT_EQ(WindowTest::Focus(), "EdtQtde") << how;
    EXPECT_EQ(Shown("EdtQtde"), "1x") << how;
    EXPECT_EQ(Find<QLineEdit>("EdtQtde")->selectedText(), "1x") << how;
  };
  Press(Qt::Key_Return);
  expect_refused("Enter");
  Press(Qt::Key_Tab);
  expect_refused("Tab");
  Click("EdtUm");
  expect_refused("a click into another input");
  Click("BtnGravar");
  expect_refused("a button");
  Press(Qt::Key_G, Qt::AltModifier);
  expect_refused("an underlined letter");
  Press(Qt::Key_F2);
  expect_refused("a function key");
  ClickTab("PgAbas", 1);
  expect_refused("a tab");
  EXPECT_EQ(Qtde().Text(), "");
  Type("7");
  Press(Qt::Key_Return);
  EXPECT_EQ(Qtde().Number(), 7);
  EXPECT_EQ(WindowTest::Focus(), "EdtVoltas");
}

TEST_F(NumberTyped, IsGivenUpByEsc) {
  Qtde().SetNumber(3);
  Type("9x");
  EXPECT_TRUE(station_.GetTyping().Open());
  Press(Qt::Key_Escape);
  EXPECT_FALSE(station_.GetTyping().Open());
  EXPECT_EQ(Shown("EdtQtde"), "3,00");
  EXPECT_EQ(Events(), "");
  EXPECT_EQ(WindowTest::Focus(), "EdtQtde");
  Press(Qt::Key_Return);
  EXPECT_EQ(Qtde().Number(), 3);
}

TEST_F(NumberTyped, StaysWhileTheScreenChangesSomethingElse) {
  Type("12");
  Qtde().SetCaption("Qtde.");
  Part<host::Label>("LblDescricao").SetText("outra");
  EXPECT_EQ(Shown("EdtQtde"), "12");
  EXPECT_EQ(Find<QLabel>("captionEdtQtde")->text(), "Qtde.");
}

TEST_F(NumberTyped, IsHandedOverBeforeAButtonWorks) {
  double at_click = -1;
  Part<host::Button>("BtnGravar").OnClick = [&] { at_click = Qtde().Number(); };
  Type("8");
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(at_click, 8);
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  Click("EdtQtde");
  Find<QLineEdit>("EdtQtde")->selectAll();
  Type("9");
  Click("BtnGravar");
  EXPECT_EQ(at_click, 9);
  Click("EdtQtde");
  Find<QLineEdit>("EdtQtde")->selectAll();
  Type("10");
  Press(Qt::Key_F2);
  EXPECT_EQ(at_click, 10);
}

TEST_F(NumberTyped, IsForgottenWhenTheInputCannotTakeItAnyMore) {
  Type("8");
  Qtde().SetEnabled(false);
  Click("BtnGravar");
  EXPECT_NE(Events().find("click Gravar"), std::string::npos);
  EXPECT_FALSE(station_.GetTyping().Open());
  EXPECT_EQ(Shown("EdtQtde"), "");
}

TEST_F(NumberTyped, StandsAtTheRight) {
  EXPECT_TRUE(Find<QLineEdit>("EdtQtde")->alignment() & Qt::AlignRight);
  EXPECT_TRUE(Find<QLineEdit>("EdtVoltas")->alignment() & Qt::AlignRight);
  EXPECT_FALSE(Find<QLineEdit>("EdtCodigo")->alignment() & Qt::AlignRight);
}

TEST_F(NumberTyped, WholeOnlyWhereItMustBe) {
  Press(Qt::Key_Return);
  Events();
  Type("1,5");
  Press(Qt::Key_Return);
  EXPECT_EQ(Events(), "box Tear: O campo \"Voltas\" aceita somente números inteiros. | end aborted");
  EXPECT_EQ(WindowTest::Focus(), "EdtVoltas");
}

class DateTyped : public WindowTest {};

TEST_F(DateTyped, ReachesTheScreenWhenItIsLeftAndIsRefusedWhenItIsNone) {
  OpenTear();
  Click("EdtData");
  Events();
  Type("31/02/2026");
  Press(Qt::Key_Tab);
  EXPECT_EQ(Events(), "box Tear: O campo \"Data\" aceita somente datas, como 31/12/2026. | end aborted");
  EXPECT_EQ(WindowTest::Focus(), "EdtData");
  Type("10/03/2026");
  Press(Qt::Key_Tab);
  EXPECT_EQ(Part<host::Edit>("EdtData").GetDate().ToDisplay(), "10/03/2026");
  EXPECT_EQ(WindowTest::Focus(), "EdtObs");
}

class MemoTyped : public WindowTest {
 protected:
  void SetUp() override {
    OpenTear();
    Click("EdtObs");
    Events();
  }
};

TEST_F(MemoTyped, EnterIsANewLineAndTabLeaves) {
  Type("um");
  Press(Qt::Key_Return);
  Type("dois");
  EXPECT_EQ(Part<host::Edit>("EdtObs").Text(), "um\ndois");
  EXPECT_EQ(WindowTest::Focus(), "EdtObs");
  Press(Qt::Key_Tab);
  EXPECT_EQ(WindowTest::Focus(), "ChkAtivo");
  EXPECT_EQ(Part<host::Edit>("EdtObs").Text(), "um\ndois");
}

TEST_F(MemoTyped, IsGivenUpByEsc) {
  auto& memo = Part<host::Edit>("EdtObs");
  memo.SetText("antes");
  EXPECT_EQ(Find<QPlainTextEdit>("EdtObs")->toPlainText(), "antes");
  Type("x");
  EXPECT_EQ(memo.Text().size(), 6U);
  Press(Qt::Key_Escape);
  EXPECT_EQ(memo.Text(), "antes");
  EXPECT_EQ(Find<QPlainTextEdit>("EdtObs")->toPlainText(), "antes");
}

TEST_F(MemoTyped, ThatCannotBeStoredIsTakenBack) {
  Type("a");
  Type("☃");
  EXPECT_EQ(Part<host::Edit>("EdtObs").Text(), "a");
  EXPECT_EQ(Find<QPlainTextEdit>("EdtObs")->toPlainText(), "a");
}

class LookupOfAnInput : public WindowTest {
 protected:
  QAction* Button(const char* name) {
    const QList<QAction*> actions = Find<QLineEdit>(name)->actions();
    return actions.isEmpty() ? nullptr : actions.front();
  }
  void ClickLookupButton(const char* name) {
    auto* button = Find<QLineEdit>(name)->findChild<QToolButton*>();
    ASSERT_NE(button, nullptr);
    Click(*button, button->rect().center());
  }
};

TEST_F(LookupOfAnInput, OpensByF4AndByTheButtonBesideIt) {
  OpenTear();
  toy_.environment.lookup_answer = host::LookupRow{{"CODIGO", "M1"}};
  Press(Qt::Key_F4);
  EXPECT_EQ(Shown("EdtCodigo"), "M1");
  EXPECT_EQ(Find<QLabel>("LblDescricao")->text(), "Malha M1");
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  toy_.environment.lookup_answer = host::LookupRow{{"CODIGO", "M2"}};
  Click("EdtData");
  Events();
  ClickLookupButton("EdtCodigo");
  EXPECT_EQ(Shown("EdtCodigo"), "M2");
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  EXPECT_EQ(Button("EdtCodigo")->toolTip(), "Pesquisar (F4)");
}

TEST_F(LookupOfAnInput, HasNoButtonWhereThereIsNone) {
  OpenTear();
  EXPECT_EQ(Button("EdtUm"), nullptr);
}

TEST_F(LookupOfAnInput, DoesNotOpenFromAnInputThatRefusesToBeLeft) {
  OpenTear();
  toy_.environment.lookup_answer = host::LookupRow{{"CODIGO", "M1"}};
  Click("EdtData");
  RefuseExit("EdtData");
  ClickLookupButton("EdtCodigo");
  EXPECT_EQ(Shown("EdtCodigo"), "");
  EXPECT_EQ(WindowTest::Focus(), "EdtData");
}

TEST_F(LookupOfAnInput, IsOffWhileTheInputIsDisabledOrReadOnly) {
  OpenTear();
  auto& code = Part<host::Edit>("EdtCodigo");
  EXPECT_TRUE(Button("EdtCodigo")->isEnabled());
  code.SetEnabled(false);
  EXPECT_FALSE(Button("EdtCodigo")->isEnabled());
  code.SetEnabled(true);
  EXPECT_TRUE(Button("EdtCodigo")->isEnabled());
  station_.Do([&code] {
    code.SetReadOnly(true);
    return host::ActResult::kDone;
  });
  EXPECT_TRUE(Find<QLineEdit>("EdtCodigo")->isReadOnly());
  EXPECT_FALSE(Button("EdtCodigo")->isEnabled());
}

}  // namespace
}  // namespace test
