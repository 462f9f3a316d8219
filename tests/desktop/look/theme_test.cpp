// Light and dark.
#include "app/desktop/look/theme.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLocale>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QPalette>
#include <cmath>

#include "app/desktop/screens/screen_area.h"
#include "desktop/shell/toy_screens.h"
#include "desktop/support/desktop_mill.h"

namespace {

using app::desktop::Theme;

// Contrast as accessibility guidelines measure it: 4.5 is what text needs, 3 what larger or unavailable text may have.
double Luminance(const QColor& color) {
  const auto part = [](double value) {
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
  const double a = Luminance(one);
  const double b = Luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

class Themes : public ::testing::Test {
 protected:
  void TearDown() override { app::desktop::ApplyTheme(Theme::kLight); }

  void Pick(const char* entry) {
    for (QAction* action : mill_.Window().menuBar()->actions().first()->menu()->actions()) {
      if (action->text().remove(u'&') == QString::fromUtf8(entry)) return action->trigger();
    }
    FAIL() << entry;
  }

  test::DesktopMill mill_;
};

TEST_F(Themes, EveryTextCanBeReadInBoth) {
  for (const auto theme : {Theme::kLight, Theme::kDark}) {
    app::desktop::ApplyTheme(theme);
    const QPalette colors = QApplication::palette();
    using P = QPalette;
    const std::pair<P::ColorRole, P::ColorRole> texts[] = {{P::WindowText, P::Window},
                                                           {P::Text, P::Base},
                                                           {P::Text, P::AlternateBase},
                                                           {P::ButtonText, P::Button},
                                                           {P::Link, P::Base},
                                                           {P::Link, P::Window},
                                                           {P::HighlightedText, P::Highlight},
                                                           {P::ToolTipText, P::ToolTipBase}};
    for (const auto& [text, ground] : texts) {
      EXPECT_GE(Contrast(colors.color(text), colors.color(ground)), 4.5)
          << app::desktop::ThemeName(theme) << " " << text << " on " << ground;
    }
    EXPECT_GE(Contrast(colors.color(P::PlaceholderText), colors.color(P::Base)), 3.0);
    EXPECT_GE(Contrast(colors.color(P::Disabled, P::WindowText), colors.color(P::Window)), 2.4);
    EXPECT_EQ(Contrast(colors.color(P::Window), Qt::white) < 4.5, theme == Theme::kLight);
  }
}

TEST_F(Themes, TheChoiceShowsAtOnceAndIsRemembered) {
  Pick("Tema escuro");
  EXPECT_TRUE(app::desktop::IsDark());
  test::Settle();
  const QColor ground = mill_.Window().palette().color(QPalette::Window);
  EXPECT_LT(ground.lightness(), 80);
  EXPECT_LT(mill_.Window().findChild<app::desktop::ScreenArea*>()->background().color().lightness(), 80);
  app::desktop::ApplyTheme(Theme::kLight);
  mill_.RestartWindow();
  EXPECT_TRUE(app::desktop::IsDark());
  Pick("Tema claro");
  EXPECT_FALSE(app::desktop::IsDark());
}

TEST_F(Themes, NamesAreReadAndUnknownOnesFollowTheDesktop) {
  for (const auto theme : {Theme::kSystem, Theme::kLight, Theme::kDark}) {
    EXPECT_EQ(app::desktop::ThemeFromName(app::desktop::ThemeName(theme)), theme);
  }
  EXPECT_EQ(app::desktop::ThemeFromName("rosa"), Theme::kSystem);
}

TEST_F(Themes, QtSpeaksPortuguese) { EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Cancelar"); }

}  // namespace
