// The windows of the screens: from the menu, one each, in tabs or free, with the focus where the person is.
#include <gtest/gtest.h>

#include "desktop/shell/toy_screens.h"
#include "desktop/support/desktop_mill.h"

namespace {

class Windows : public ::testing::Test {
 protected:
  void SetUp() override { test::Toys() = {}; }

  test::DesktopMill mill_;
};

TEST_F(Windows, AScreenOpensFromTheMenuWithTheFocusInItsFirstInput) {
  host::Screen& screen = mill_.Open("TfmToyUm");
  EXPECT_TRUE(mill_.WindowOf(screen).isVisible());
  ASSERT_NE(mill_.Desk().Focused(), nullptr);
  EXPECT_EQ(mill_.Desk().Focused()->Name(), "EdtNome");
  test::TypeText(QStringLiteral("João"));
  EXPECT_EQ(dynamic_cast<test::ToyScreen&>(screen).EdtNome.Text(), "João");
}

}  // namespace
