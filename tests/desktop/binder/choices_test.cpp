// Boxes, radio buttons, lists, buttons, pages and menus.
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QGraphicsEffect>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QWheelEvent>
#include <algorithm>

#include "tests/desktop/binder/toy_window.h"

namespace test {
namespace {

class Ticks : public WindowTest {};

TEST_F(Ticks, ByMouseSpaceAndUnderlinedLetter) {
  OpenTear();
  auto& box = Part<host::CheckBox>("ChkAtivo");
  auto* tick = Find<QCheckBox>("ChkAtivo");
  EXPECT_EQ(tick->text(), "&Ativo");
  Click(*tick, QPoint(8, tick->height() / 2));
  EXPECT_TRUE(box.Checked());
  EXPECT_TRUE(tick->isChecked());
  EXPECT_EQ(Events(), "exit EdtCodigo | enter ChkAtivo");
  Press(Qt::Key_Space);
  EXPECT_FALSE(box.Checked());
  EXPECT_FALSE(tick->isChecked());
  Press(Qt::Key_A, Qt::AltModifier);
  EXPECT_TRUE(box.Checked());
  EXPECT_TRUE(tick->isChecked());
  EXPECT_EQ(WindowTest::Focus(), "ChkAtivo");
}

TEST_F(Ticks, GoBackWhenTheScreenPutsThemBack) {
  OpenTear();
  auto& box = Part<host::CheckBox>("ChkAtivo");
  box.OnClick = [&box] {
    box.OnClick = {};
    box.SetChecked(false);
    throw host::Abort();
  };
  auto* tick = Find<QCheckBox>("ChkAtivo");
  Click(*tick, QPoint(8, tick->height() / 2));
  EXPECT_FALSE(tick->isChecked());
}

TEST_F(Ticks, FollowTheScreen) {
  OpenTear();
  Part<host::CheckBox>("ChkAtivo").SetChecked(true);
  EXPECT_TRUE(Find<QCheckBox>("ChkAtivo")->isChecked());
  Part<host::CheckBox>("ChkAtivo").SetCaption("Ligado");
  EXPECT_EQ(Find<QCheckBox>("ChkAtivo")->text(), "Ligado");
}

class Choices : public WindowTest {
 protected:
  QList<QRadioButton*> Radios() { return Find("RgTipo")->findChildren<QRadioButton*>(); }
};

TEST_F(Choices, RadioButtonsAreMadeFromTheCaptions) {
  OpenTear();
  EXPECT_EQ(Find<QGroupBox>("RgTipo")->title(), "Tipo");
  ASSERT_EQ(Radios().size(), 3);
  EXPECT_EQ(Radios()[0]->text(), "Algodão");
  EXPECT_TRUE(Radios()[0]->isChecked());
}

TEST_F(Choices, RadioButtonsByMouseAndArrows) {
  OpenTear();
  auto& type = Part<host::RadioGroup>("RgTipo");
  Click(*Radios()[2], QPoint(8, Radios()[2]->height() / 2));
  EXPECT_EQ(type.Selected(), 2);
  EXPECT_EQ(WindowTest::Focus(), "RgTipo");
  Press(Qt::Key_Up);
  EXPECT_EQ(type.Selected(), 1);
  EXPECT_TRUE(Radios()[1]->isChecked());
  EXPECT_TRUE(Radios()[1]->hasFocus());
  Press(Qt::Key_Down);
  EXPECT_EQ(type.Selected(), 2);
  EXPECT_EQ(Events(), "exit EdtCodigo | enter RgTipo");
  Press(Qt::Key_Return);
  EXPECT_EQ(WindowTest::Focus(), "CbSituacao");
}

TEST_F(Choices, RadioButtonsGoBackWhenTheScreenPutsThemBack) {
  OpenTear();
  auto& type = Part<host::RadioGroup>("RgTipo");
  type.OnClick = [&type] {
    type.OnClick = {};
    type.SetSelected(0);
  };
  Click(*Radios()[1], QPoint(8, Radios()[1]->height() / 2));
  EXPECT_TRUE(Radios()[0]->isChecked());
  EXPECT_FALSE(Radios()[1]->isChecked());
  type.SetSelected(-1);
  EXPECT_FALSE(Radios()[0]->isChecked());
}

TEST_F(Choices, ListByKeys) {
  OpenTear();
  auto& state = Part<host::ComboBox>("CbSituacao");
  auto* list = Find<QComboBox>("CbSituacao");
  ASSERT_EQ(list->count(), 2);
  Click("ChkAtivo");
  Press(Qt::Key_Tab);
  Press(Qt::Key_Tab);
  EXPECT_EQ(WindowTest::Focus(), "CbSituacao");
  Press(Qt::Key_Down);
  EXPECT_EQ(state.SelectedText(), "Fechada");
  Press(Qt::Key_Up);
  EXPECT_EQ(state.SelectedText(), "Aberta");
  Press(Qt::Key_F);
  EXPECT_EQ(state.SelectedText(), "Fechada");
  Press(Qt::Key_Return);
  EXPECT_EQ(WindowTest::Focus(), "EdtUm");
}

TEST_F(Choices, ListByMouse) {
  OpenTear();
  auto* list = Find<QComboBox>("CbSituacao");
  Click("CbSituacao");
  EXPECT_EQ(WindowTest::Focus(), "CbSituacao");
  ASSERT_TRUE(list->view()->isVisible());
  const QRect second = list->view()->visualRect(list->model()->index(1, 0));
  QTest::qWait(QApplication::doubleClickInterval() + 50);  // the popup ignores a release soon after it opened
  QTest::mouseClick(list->view()->viewport(), Qt::LeftButton, Qt::NoModifier, second.center());
  EXPECT_EQ(Part<host::ComboBox>("CbSituacao").SelectedText(), "Fechada");
}

TEST_F(Choices, ListIsNotTurnedByAWheelThatPassesOverIt) {
  OpenTear();
  auto* list = Find<QComboBox>("CbSituacao");
  const QPointF at = list->rect().center();
  QWheelEvent wheel(at, list->mapToGlobal(at), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                    false);
  QApplication::sendEvent(list, &wheel);
  EXPECT_EQ(Part<host::ComboBox>("CbSituacao").Selected(), 0);
  EXPECT_EQ(list->currentIndex(), 0);
}

TEST_F(Choices, FollowTheScreen) {
  OpenTear();
  Part<host::ComboBox>("CbSituacao").SetSelected(1);
  EXPECT_EQ(Find<QComboBox>("CbSituacao")->currentText(), "Fechada");
  Part<host::RadioGroup>("RgTipo").SetSelected(2);
  EXPECT_TRUE(Radios()[2]->isChecked());
}

class Buttons : public WindowTest {};

TEST_F(Buttons, WorkByMouseEnterSpaceLetterAndFunctionKey) {
  OpenTear();
  auto* save = Find<QPushButton>("BtnGravar");
  EXPECT_EQ(save->text(), "&Gravar");
  EXPECT_EQ(save->toolTip(), "F2");
  EXPECT_EQ(Find<QPushButton>("BtnFechar")->toolTip(), "");
  Click("BtnGravar");
  EXPECT_EQ(Events(), "exit EdtCodigo | enter BtnGravar | click Gravar");
  EXPECT_EQ(WindowTest::Focus(), "BtnGravar");
  Press(Qt::Key_Return);
  EXPECT_EQ(Events(), "click Gravar");
  Press(Qt::Key_Space);
  EXPECT_EQ(Events(), "click Gravar");
  Click("EdtUm");
  Events();
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(Events(), "exit EdtUm | enter BtnGravar | click Gravar");
  Click("EdtUm");
  Events();
  Press(Qt::Key_F2);
  EXPECT_EQ(Events(), "exit EdtUm | enter BtnGravar | click Gravar");
}

TEST_F(Buttons, DisabledDoNothing) {
  OpenTear();
  Part<host::Button>("BtnGravar").SetEnabled(false);
  EXPECT_FALSE(Find("BtnGravar")->isEnabled());
  Click("BtnGravar");
  Press(Qt::Key_G, Qt::AltModifier);
  Press(Qt::Key_F2);
  EXPECT_EQ(Events(), "");
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
}

TEST_F(Buttons, ChangeTheirCaption) {
  OpenTear();
  Part<host::Button>("BtnGravar").SetCaption("&Baixar");
  EXPECT_EQ(Find<QPushButton>("BtnGravar")->text(), "&Baixar");
  Press(Qt::Key_B, Qt::AltModifier);
  EXPECT_EQ(Events(), "exit EdtCodigo | enter BtnGravar | click Gravar");
}

// Greyed as one that is disabled looks, and yet it can be pressed: what comes of it is the screen's decision.
TEST_F(Buttons, WithoutTheirRightLookSoAndCanStillBePressed) {
  application_.lacks = {"BtnGravar", "BtnExcluir", "BtnFechar", "BtnOutro"};
  OpenTear([this](ToyScreen& screen) {
    dynamic_cast<host::Button&>(*screen.FindComponent("BtnGravar")).Right = host::NeededRight{"A"};
    auto& remove = screen.Add<host::Button>("BtnExcluir", "&Excluir", [this] { toy_.notes.emplace_back("removed"); });
    remove.Right = host::NeededRight{"E"};
    screen.Add<host::Button>("BtnOutro", "&Outro").Right = host::NeededRight{"X"};
    screen.Add<host::Button>("BtnSeu", "Seu").Right = host::NeededRight{"A"};
  });
  const auto dimmed = [this](const char* name) { return Find(name)->graphicsEffect() != nullptr; };
  EXPECT_TRUE(dimmed("BtnGravar"));
  EXPECT_TRUE(dimmed("BtnExcluir"));
  EXPECT_TRUE(dimmed("BtnOutro"));
  EXPECT_FALSE(dimmed("BtnSeu"));     // the person holds its right
  EXPECT_FALSE(dimmed("BtnFechar"));  // it names none
  EXPECT_EQ(Find("BtnGravar")->toolTip(), "F2\nFalta o direito de alterar");
  EXPECT_EQ(Find("BtnExcluir")->toolTip(), "Falta o direito de excluir");
  EXPECT_EQ(Find("BtnOutro")->toolTip(), "Falta o direito a esta operação");
  EXPECT_EQ(Find("BtnExcluir")->accessibleDescription(), "Falta o direito de excluir");
  EXPECT_EQ(Find("BtnSeu")->toolTip(), "");
  EXPECT_TRUE(Find("BtnExcluir")->isEnabled());
  Click("BtnExcluir");
  EXPECT_EQ(Events(), "exit EdtCodigo | enter BtnExcluir | removed");
  Press(Qt::Key_F2);
  EXPECT_EQ(Events(), "exit BtnExcluir | enter BtnGravar | click Gravar");
  EXPECT_EQ(Find("BtnGravar")->toolTip(), "F2\nFalta o direito de alterar");
}

// A picture tells what a person sees: the caption is paler than that of the same button with its right.
TEST_F(Buttons, WithoutTheirRightArePaler) {
  application_.lacks = {"BtnUm"};
  OpenTear([](ToyScreen& screen) {
    for (const char* name : {"BtnUm", "BtnDois"}) {
      screen.Add<host::Button>(name, "MMMM").Right = host::NeededRight{"A"};
    }
  });
  const auto darkest = [this](const char* name) {
    QWidget* const button = Find(name);
    const QRect place(button->mapTo(top_.get(), QPoint()), button->size());
    const QImage image = top_->grab(place).toImage();
    int found = 255;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) found = std::min(found, qGray(image.pixel(x, y)));
    }
    return found;
  };
  EXPECT_GT(darkest("BtnUm"), darkest("BtnDois") + 40);
}

class Pages : public WindowTest {
 protected:
  int Page() { return Find<QTabWidget>("PgAbas")->currentIndex(); }
};

TEST_F(Pages, TurnByMouseAndTheFocusGoesToTheFirstInputThere) {
  OpenTear();
  ClickTab("PgAbas", 1);
  EXPECT_EQ(Page(), 1);
  EXPECT_EQ(Part<host::PageControl>("PgAbas").ActivePage(), 1);
  EXPECT_EQ(WindowTest::Focus(), "EdtDois");
  EXPECT_EQ(Events(), "exit EdtCodigo | enter EdtDois");
}

TEST_F(Pages, TurnByKeysThereAndBack) {
  OpenTear();
  Press(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(Page(), 1);
  EXPECT_EQ(WindowTest::Focus(), "EdtDois");
  Press(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(Page(), 0);
  EXPECT_EQ(WindowTest::Focus(), "EdtUm");
  Press(Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(Page(), 1);
}

TEST_F(Pages, LeaveTheFocusWhereTheScreenSendsIt) {
  OpenTear();
  Part<host::PageControl>("PgAbas").OnClick = [this] { Part<host::Edit>("EdtQtde").SetFocus(); };
  ClickTab("PgAbas", 1);
  EXPECT_EQ(Page(), 1);
  EXPECT_EQ(WindowTest::Focus(), "EdtQtde");
}

TEST_F(Pages, OutOfSightAreTurnedToWhenTheScreenSendsTheFocusThere) {
  OpenTear();
  Part<host::Button>("BtnGravar").OnClick = [this] { Part<host::Edit>("EdtDois").SetFocus(); };
  Press(Qt::Key_F2);
  EXPECT_EQ(Page(), 1);
  EXPECT_EQ(WindowTest::Focus(), "EdtDois");
}

TEST_F(Pages, AreNotTurnedByTheWheel) {
  OpenTear();
  QTabBar* bar = Find<QTabWidget>("PgAbas")->tabBar();
  const QPointF at = bar->tabRect(0).center();
  QWheelEvent wheel(at, bar->mapToGlobal(at), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                    false);
  QApplication::sendEvent(bar, &wheel);
  EXPECT_EQ(Page(), 0);
}

TEST_F(Pages, DisabledAreNotTurned) {
  OpenTear();
  Part<host::PageControl>("PgAbas").SetEnabled(false);
  ClickTab("PgAbas", 1);
  Press(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(Page(), 0);
}

class Shows : public WindowTest {};

TEST_F(Shows, HiddenAndDisabledAsTheScreenSaysCaptionsIncluded) {
  OpenTear();
  auto& amount = Part<host::Edit>("EdtQtde");
  EXPECT_EQ(Find<QLabel>("captionEdtQtde")->text(), "Quantidade");
  amount.SetVisible(false);
  EXPECT_FALSE(Find("EdtQtde")->isVisible());
  EXPECT_FALSE(Find("captionEdtQtde")->isVisible());
  Press(Qt::Key_Return);
  EXPECT_EQ(WindowTest::Focus(), "EdtVoltas");
  amount.SetVisible(true);
  EXPECT_TRUE(Find("EdtQtde")->isVisible());
  EXPECT_TRUE(Find("captionEdtQtde")->isVisible());
  amount.SetEnabled(false);
  EXPECT_FALSE(Find("EdtQtde")->isEnabled());
  Click("EdtQtde");
  EXPECT_EQ(WindowTest::Focus(), "EdtVoltas");
}

TEST_F(Shows, ALabelAsPlainText) {
  OpenTear();
  Part<host::Label>("LblDescricao").SetText("<b>A & B</b>");
  auto* label = Find<QLabel>("LblDescricao");
  EXPECT_EQ(label->text(), "<b>A & B</b>");
  EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

TEST_F(Shows, ALongDescriptionWithoutMakingTheWindowWider) {
  OpenTear();
  const int before = window_->minimumSizeHint().width();
  Part<host::Label>("LblDescricao").SetText(std::string(400, 'M'));
  QCoreApplication::processEvents();
  EXPECT_EQ(window_->minimumSizeHint().width(), before);
}

TEST_F(Shows, InputsAsWideAsWhatGoesIntoThem) {
  OpenTear();
  auto* code = Find<QLineEdit>("EdtCodigo");
  EXPECT_EQ(code->minimumWidth(), code->maximumWidth());
  EXPECT_GT(code->minimumWidth(), code->fontMetrics().horizontalAdvance(QStringLiteral("ABCDEF")));
  EXPECT_LT(code->minimumWidth(), code->fontMetrics().horizontalAdvance(QString(12, u'M')));
  auto* date = Find<QLineEdit>("EdtData");
  EXPECT_GT(date->maximumWidth(), date->fontMetrics().horizontalAdvance(QStringLiteral("31/12/2026")));
  EXPECT_LT(date->maximumWidth(), date->fontMetrics().horizontalAdvance(QStringLiteral("31/12/2026 31/12/2026")));
  EXPECT_EQ(Find("EdtUm")->maximumWidth(), QWIDGETSIZE_MAX);
  QFont larger = code->font();
  larger.setPointSize(larger.pointSize() * 2);
  const int before = code->maximumWidth();
  window_->setFont(larger);
  EXPECT_GT(code->maximumWidth(), before + before / 2);
}

class Popup : public WindowTest {
 protected:
  void SetUp() override {
    OpenTear([this](ToyScreen& screen) {
      menu_ = &screen.Add<host::PopupMenu>("PopUm");
      menu_->Add("Achar1", "&Achar", [this] { toy_.notes.emplace_back("achar"); });
      menu_->Add("Zerar1", "Zerar", [this] { toy_.notes.emplace_back("zerar"); });
      dynamic_cast<host::Edit*>(screen.FindComponent("EdtUm"))->Popup = menu_;
    });
  }
  // The entries of the menu that is open; it stays open.
  QStringList Entries() {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QStringList entries;
    if (menu == nullptr) return entries;
    for (const QAction* action : menu->actions()) {
      if (action->isSeparator()) break;
      entries.append(action->text());
    }
    return entries;
  }
  void Ask() {
    auto* line = Find<QLineEdit>("EdtUm");
    const QPoint at = line->rect().center();
    Click(*line, at, Qt::RightButton);
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, line->mapToGlobal(at));
    QApplication::sendEvent(line, &event);
  }
  void CloseMenu() {
    if (QWidget* menu = QApplication::activePopupWidget()) menu->close();
    Settle();
  }

  host::PopupMenu* menu_ = nullptr;
};

TEST_F(Popup, ShowsTheEntriesOfTheScreenAndThenTheInputsOwn) {
  Ask();
  EXPECT_EQ(WindowTest::Focus(), "EdtUm");
  EXPECT_EQ(Entries(), (QStringList{"&Achar", "Zerar"}));
  EXPECT_GT(qobject_cast<QMenu*>(QApplication::activePopupWidget())->actions().size(), 3);
  CloseMenu();
}

TEST_F(Popup, OpensByShiftF10WhereTheWindowSystemAsksForNoMenu) {
  auto* line = Find<QLineEdit>("EdtUm");
  Click(*line, line->rect().center());
  Press(Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_EQ(Entries(), (QStringList{"&Achar", "Zerar"}));
  CloseMenu();
}

TEST_F(Popup, PicksAnEntryByKeys) {
  Ask();
  Events();
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  QTest::keyClick(menu, Qt::Key_Down);
  QTest::keyClick(menu, Qt::Key_Down);
  QTest::keyClick(menu, Qt::Key_Return);
  EXPECT_EQ(Events(), "zerar");
  Settle();
  EXPECT_EQ(WindowTest::Focus(), "EdtUm");
}

TEST_F(Popup, ShowsOnlyWhatTheScreenLetsBeSeen) {
  menu_->OnPopup = [this] { menu_->Find("Achar")->visible = false; };
  Ask();
  EXPECT_EQ(Entries(), QStringList{"Zerar"});
  CloseMenu();
}

TEST_F(Popup, StaysClosedWhenTheScreenRefuses) {
  menu_->OnPopup = [] { throw host::Abort(); };
  Ask();
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(WindowTest::Focus(), "EdtUm");
}

TEST_F(Popup, StaysClosedWhenTheInputLeftRefuses) {
  RefuseExit("EdtCodigo");
  Ask();
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
}

}  // namespace
}  // namespace test
