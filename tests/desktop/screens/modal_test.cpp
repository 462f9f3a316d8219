// A screen that another one opens modally.
#include <gtest/gtest.h>

#include <QTest>

#include "desktop/shell/toy_screens.h"
#include "desktop/support/desktop_mill.h"
#include "host/errors.h"

namespace {

using test::Reply;
using test::ToyScreen;

class Modal : public ::testing::Test {
 protected:
  Modal() {
    test::Toys() = {};
    test::Toys().first = [this](host::Screen& screen) {
      if (screen.ClassName() == "TfmToyModal") return screen.Close();
      host::Host& host = screen.GetHost();
      host::Screen& opened = host.GetFuncoes().Carrega_Form("TfmToyModal");
      host.ShowModal(opened);
      handed_back_ = dynamic_cast<ToyScreen&>(opened).EdtNome.Text();
      host.Free(opened);
    };
  }

  ToyScreen& InFront() { return dynamic_cast<ToyScreen&>(*mill_.Desk().Modal()); }

  test::DesktopMill mill_;
  std::string handed_back_;
};

TEST_F(Modal, ThePersonWorksInItUntilItAsksToBeClosed) {
  host::Screen& opener = mill_.Open("TfmToyDois");
  mill_.GetBoxes().ExpectDialog("Tela modal", [this](QWidget& dialog) {
    EXPECT_TRUE(dialog.isModal());
    EXPECT_EQ(mill_.Desk().Focused()->Name(), "EdtNome");
    test::TypeText(QStringLiteral("fio é 30/1"));
    test::Press(Qt::Key_Return);
    EXPECT_EQ(mill_.Desk().Focused()->Name(), "BtnUm");
    test::Press(Qt::Key_Return);
  });
  mill_.ClickOn(opener, "BtnUm");
  EXPECT_EQ(handed_back_, "fio é 30/1");
  EXPECT_EQ(mill_.Desk().Find("TfmToyModal"), nullptr);
  ASSERT_NE(mill_.Desk().Focused(), nullptr);
  EXPECT_EQ(&mill_.Desk().Focused()->Owner(), &opener);
  mill_.ClickOn(opener, "EdtNome");  // the opener goes on
  test::TypeText("e agora");
  EXPECT_EQ(dynamic_cast<ToyScreen&>(opener).EdtNome.Text(), "e agora");
  EXPECT_TRUE(mill_.Window().isActiveWindow());
}

TEST_F(Modal, ItIsSizedToItsFormAndOverTheMainWindow) {
  host::Screen& opener = mill_.Open("TfmToyDois");
  mill_.GetBoxes().ExpectDialog("Tela modal", [this](QWidget& dialog) {
    EXPECT_GE(dialog.width(), dialog.sizeHint().width());
    const QPoint away = dialog.geometry().center() - mill_.Window().geometry().center();
    EXPECT_LE(away.manhattanLength(), 4);
    dialog.close();
  });
  mill_.ClickOn(opener, "BtnUm");
}

TEST_F(Modal, TheOpenerCannotBeReachedMeanwhile) {
  host::Screen& opener = mill_.Open("TfmToyDois");
  mill_.GetBoxes().ExpectDialog("Tela modal", [&](QWidget& dialog) {
    EXPECT_FALSE(mill_.GetStation().Do([&] { return mill_.Desk().Click(dynamic_cast<ToyScreen&>(opener).BtnDois); }));
    EXPECT_NE(mill_.StatusMessage().indexOf("espera ser fechada"), -1) << mill_.StatusMessage().toStdString();
    EXPECT_FALSE(mill_.Window().close());
    dialog.close();
  });
  mill_.ClickOn(opener, "BtnUm");
  EXPECT_TRUE(mill_.Window().isVisible());
}

// The close button leaves the input like any other way out: what it refuses keeps the screen open.
TEST_F(Modal, ItsCloseButtonClosesTheScreenAsAPersonDoes) {
  host::Screen& opener = mill_.Open("TfmToyDois");
  mill_.GetBoxes().ExpectDialog("Tela modal", [this](QWidget& dialog) {
    test::TypeText("x");
    mill_.ExpectBox("Nome inválido.");
    dialog.close();
    EXPECT_TRUE(mill_.GetBoxes().Met());
    EXPECT_TRUE(dialog.isVisible());
    test::TypeText("y");
    mill_.ExpectBox("Há dados não gravados em \"Tela modal\".", Reply::kNo);
    dialog.close();
    EXPECT_TRUE(dialog.isVisible());
    mill_.ExpectBox("Há dados não gravados em \"Tela modal\".", Reply::kYes);
    dialog.close();
  });
  mill_.ClickOn(opener, "BtnUm");
  EXPECT_EQ(mill_.Desk().Modal(), nullptr);
}

TEST_F(Modal, EscAndEnterAreTheScreensOwn) {
  host::Screen& opener = mill_.Open("TfmToyDois");
  mill_.GetBoxes().ExpectDialog("Tela modal", [](QWidget& dialog) {
    test::Press(Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    test::Press(Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    dialog.close();
  });
  mill_.ClickOn(opener, "BtnUm");
}

TEST_F(Modal, BoxesComeUpOverIt) {
  host::Screen& opener = mill_.Open("TfmToyDois");
  test::Toys().second = [](host::Screen& screen) { screen.Inform("Da tela modal."); };
  mill_.GetBoxes().ExpectDialog("Tela modal", [this](QWidget& dialog) {
    mill_.GetBoxes().ExpectDialog("Da tela modal.", [&dialog](QWidget& box) {
      EXPECT_EQ(box.parentWidget(), &dialog);
      QTest::keyClick(&box, Qt::Key_Return);
    });
    mill_.ClickOn(InFront(), "BtnDois");
    EXPECT_TRUE(dialog.isVisible());
    dialog.close();
  });
  mill_.ClickOn(opener, "BtnUm");
}

TEST_F(Modal, AnErrorInItIsToldAndItStaysOpen) {
  host::Screen& opener = mill_.Open("TfmToyDois");
  test::Toys().second = [](host::Screen&) { throw host::DatabaseError("Sem conexão.", 1, "SELECT 1"); };
  mill_.GetBoxes().ExpectDialog("Tela modal", [this](QWidget& dialog) {
    mill_.ExpectBox("Sem conexão.");
    mill_.ClickOn(InFront(), "BtnDois");
    EXPECT_TRUE(dialog.isVisible());
    dialog.close();
  });
  mill_.ClickOn(opener, "BtnUm");
}

}  // namespace
