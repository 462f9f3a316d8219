// Windows that go in the middle of what a person does in them, keys that a person is told, forms that do not fit.
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include "tests/desktop/binder/toy_window.h"

namespace test {
namespace {

class Closing : public WindowTest {
 protected:
  void ExpectGone() {
    EXPECT_EQ(window_, nullptr);
    EXPECT_TRUE(toy_.desk.Screens().empty());
    Settle();
    EXPECT_EQ(top_->findChild<QPushButton*>(), nullptr);
  }
};

TEST_F(Closing, ByItsOwnButtonWithMouse) {
  OpenTear();
  Click("BtnFechar");
  ExpectGone();
}

TEST_F(Closing, ByItsOwnButtonWithKeys) {
  OpenTear();
  Press(Qt::Key_F, Qt::AltModifier);
  ExpectGone();
}

TEST_F(Closing, ByEnterOnItsButton) {
  OpenTear();
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(WindowTest::Focus(), "BtnFechar");
  Press(Qt::Key_Return);
  ExpectGone();
}

TEST_F(Closing, BySpaceOnItsButton) {
  OpenTear();
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  Press(Qt::Key_Space);
  ExpectGone();
}

TEST_F(Closing, ByTheExitOfAnInputOnAClickElsewhere) {
  OpenTear();
  Part<host::Edit>("EdtCodigo").OnExit = [this] { screen_->Close(); };
  Click("EdtObs");
  ExpectGone();
}

TEST_F(Closing, ByTheExitOfAnInputOnAClickIntoAList) {
  OpenTear();
  Part<host::Edit>("EdtCodigo").OnExit = [this] { screen_->Close(); };
  Click("CbSituacao");
  ExpectGone();
}

TEST_F(Closing, ByACharacterTyped) {
  OpenTear();
  Part<host::Edit>("EdtCodigo").OnChange = [this] { screen_->Close(); };
  Type("x");
  ExpectGone();
}

TEST_F(Closing, ByACharacterTypedIntoAMemo) {
  OpenTear();
  Part<host::Edit>("EdtObs").OnChange = [this] { screen_->Close(); };
  Click("EdtObs");
  Type("x");
  ExpectGone();
}

TEST_F(Closing, ByANumberHandedOverBeforeAButtonWorks) {
  OpenTear();
  Part<host::Edit>("EdtQtde").OnChange = [this] { screen_->Close(); };
  Click("EdtQtde");
  Type("5");
  Events();
  Click("BtnGravar");
  EXPECT_EQ(Events().find("click"), std::string::npos);
  EXPECT_FALSE(station_.GetTyping().Open());
  ExpectGone();
}

TEST_F(Closing, ByABoxTickedARadioButtonAListAndATab) {
  OpenTear();
  Part<host::CheckBox>("ChkAtivo").OnClick = [this] { screen_->Close(); };
  auto* tick = Find<QCheckBox>("ChkAtivo");
  Click(*tick, QPoint(8, tick->height() / 2));
  ExpectGone();
  OpenTear();
  Part<host::RadioGroup>("RgTipo").OnClick = [this] { screen_->Close(); };
  auto* radio = Find("RgTipo")->findChildren<QAbstractButton*>()[1];
  Click(*radio, QPoint(8, radio->height() / 2));
  ExpectGone();
  OpenTear();
  Part<host::ComboBox>("CbSituacao").OnClick = [this] { screen_->Close(); };
  Find("CbSituacao")->setFocus();
  Settle();
  Press(Qt::Key_Down);
  ExpectGone();
  OpenTear();
  Part<host::PageControl>("PgAbas").OnClick = [this] { screen_->Close(); };
  ClickTab("PgAbas", 1);
  ExpectGone();
}

TEST_F(Closing, WhileANumberIsHalfTyped) {
  OpenTear();
  Click("EdtQtde");
  Type("5x");
  EXPECT_TRUE(station_.GetTyping().Open());
  toy_.desk.Free(*screen_);
  EXPECT_FALSE(station_.GetTyping().Open());
  ExpectGone();
  EXPECT_TRUE(station_.Do([] { return host::ActResult::kDone; }));
}

TEST_F(Closing, TheWindowDeletedAtOnceInTheMiddleOfAClick) {
  OpenTear();
  toy_.environment.on_gone = [this](host::Screen&) {
    delete window_;
    window_ = nullptr;
    screen_ = nullptr;
  };
  Click("BtnFechar");
  ExpectGone();
}

TEST_F(Closing, TheWindowLeavesTheScreenWithoutViews) {
  OpenTear();
  delete window_;
  window_ = nullptr;
  for (const host::Component* component : screen_->Components()) EXPECT_FALSE(component->OnViewChange);
  Part<host::Edit>("EdtCodigo").SetText("M1");
  EXPECT_TRUE(station_.Do([] { return host::ActResult::kDone; }));
}

TEST_F(Closing, AnErrorInAClickIsToldAndTheWindowStays) {
  OpenTear();
  Part<host::Button>("BtnGravar").OnClick = [] { throw std::runtime_error("quebrou"); };
  Click("BtnGravar");
  EXPECT_NE(Events().find("error Tear: quebrou"), std::string::npos);
  EXPECT_EQ(WindowTest::Focus(), "BtnGravar");
}

class Keys : public WindowTest {};

TEST_F(Keys, AreToldForWhereTheFocusIs) {
  OpenTear([](ToyScreen& screen) { screen.hints = {{host::Key::kF5, "Captura Peso"}, {host::Key::kF2, "Salva"}}; });
  EXPECT_EQ(window_->KeysHere(),
            "Enter Avança   Esc Desfaz   F4 Pesquisa   F5 Captura Peso   F2 Salva   Ctrl+PgDn Próxima aba");
  QSignalSpy changed(window_, &app::desktop::ScreenWindow::KeysChanged);
  Press(Qt::Key_Return);
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(window_->KeysHere(), "Enter Avança   Esc Desfaz   F5 Captura Peso   F2 Salva   Ctrl+PgDn Próxima aba");
  Press(Qt::Key_Return);
  EXPECT_EQ(changed.count(), 1);
}

TEST_F(Keys, ThatTheScreenUsesItsOwnWayAreToldItsWay) {
  OpenTear([](ToyScreen& screen) { screen.hints = {{host::Key::kEnter, "Escolhe"}}; });
  EXPECT_TRUE(window_->KeysHere().startsWith("Enter Escolhe   Esc Desfaz   F4 Pesquisa"))
      << window_->KeysHere().toStdString();
}

TEST_F(Keys, OfAListAreThoseThatArePressedThere) {
  OpenTear([](ToyScreen& screen) { screen.hints = {{host::Key::kDelete, "Exclui o item"}}; });
  EXPECT_TRUE(window_->KeysHere().contains("Ctrl+Del Exclui o item")) << window_->KeysHere().toStdString();
}

TEST_F(Keys, OfAButtonStandInItsTipAndAnArrowsNameToo) {
  OpenTear();
  EXPECT_EQ(Find<QPushButton>("BtnGravar")->toolTip(), "F2");
  auto form = DrawForm(*screen_);
  delete form->findChild<QWidget*>("BtnGravar");
  (new QToolButton(form.get()))->setObjectName("BtnGravar");
  const app::desktop::ScreenWindow again(station_, *screen_, std::move(form));
  EXPECT_EQ(again.findChild<QToolButton*>("BtnGravar")->toolTip(), "Gravar F2");
}

TEST_F(Keys, OfButtonsThatCanBePressed) {
  OpenTear();
  EXPECT_TRUE(window_->KeysHere().contains("F2 Gravar"));
  Part<host::Button>("BtnGravar").SetEnabled(false);
  EXPECT_FALSE(window_->KeysHere().contains("F2"));
}

TEST_F(Keys, ReachTheScreen) {
  OpenTear();
  std::vector<host::Key> keys;
  screen_->on_key = [&](host::Key key) {
    keys.push_back(key);
    return true;
  };
  Press(Qt::Key_F5);
  Press(Qt::Key_F12);
  EXPECT_EQ(keys, (std::vector<host::Key>{host::Key::kF5, host::Key::kF12}));
  Press(Qt::Key_F5, Qt::ControlModifier);
  EXPECT_EQ(keys.size(), 2U);
}

class Mismatch : public WindowTest {
 protected:
  // The lines that a form changed by `change` gives.
  std::string After(const std::function<void(QWidget&)>& change) {
    OpenTear();
    std::unique_ptr<QWidget> form = DrawForm(*screen_);
    change(*form);
    app::desktop::ScreenWindow other(station_, *screen_, std::move(form));
    return other.Mismatches().join(QStringLiteral(" | ")).toStdString();
  }
};

TEST_F(Mismatch, NoneInAFormThatFits) {
  OpenTear();
  EXPECT_EQ(window_->Mismatches(), QStringList());
}

TEST_F(Mismatch, AComponentWithoutWidget) {
  EXPECT_EQ(After([](QWidget& form) { delete form.findChild<QWidget*>("EdtVoltas"); }), "EdtVoltas has no widget");
}

TEST_F(Mismatch, AComponentWithAWidgetThatCannotShowIt) {
  EXPECT_EQ(After([](QWidget& form) {
              delete form.findChild<QWidget*>("ChkAtivo");
              auto* label = new QLabel(&form);
              label->setObjectName("ChkAtivo");
            }),
            "ChkAtivo cannot be shown by QLabel \"ChkAtivo\"");
}

TEST_F(Mismatch, AWidgetWithoutComponent) {
  EXPECT_EQ(After([](QWidget& form) {
              (new QLineEdit(&form))->setObjectName("EdtTres");
              (new QToolButton(&form))->setObjectName("BtnSeta");
              (new QGroupBox(&form))->setObjectName("qt_frame");
              (new QLabel(&form))->setObjectName("LblTotal");
              (new QLabel(&form))->setObjectName("label_2");
            }),
            "QLineEdit \"EdtTres\" shows no component | QToolButton \"BtnSeta\" shows no component | QLabel "
            "\"LblTotal\" shows no component");
}

TEST_F(Mismatch, TwoWidgetsOfOneName) {
  EXPECT_EQ(After([](QWidget& form) { (new QLineEdit(&form))->setObjectName("EdtQtde"); }),
            "EdtQtde has 2 widgets | QLineEdit \"EdtQtde\" shows no component");
}

TEST_F(Mismatch, AnotherPageThanTheScreenSays) {
  EXPECT_EQ(After([](QWidget& form) {
              auto* tabs = form.findChild<QTabWidget*>();
              tabs->widget(1)->layout()->addWidget(form.findChild<QWidget*>("EdtUm"));
            }),
            "EdtUm stands on page 1 of PgAbas in the form, on page 0 of PgAbas in the screen");
  EXPECT_EQ(After([](QWidget& form) { form.layout()->addWidget(form.findChild<QWidget*>("EdtDois")); }),
            "EdtDois stands on page 0 of none in the form, on page 1 of PgAbas in the screen");
}

TEST_F(Mismatch, TabsOfOtherCaptions) {
  EXPECT_EQ(After([](QWidget& form) { form.findChild<QTabWidget*>()->setTabText(1, "Observações"); }),
            "PgAbas: page 1 is \"Observações\" in the form, \"Notas\" in the screen");
}

TEST_F(Mismatch, OneLetterUnderlinedTwice) {
  OpenTear([](ToyScreen& screen) { screen.Add<host::Button>("BtnGerar", "&Gerar"); });
  EXPECT_EQ(window_->Mismatches(), QStringList{"Alt+G belongs to &Gravar, &Gerar"});
}

}  // namespace
}  // namespace test
