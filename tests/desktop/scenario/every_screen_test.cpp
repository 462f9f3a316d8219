// What holds for every window, whichever screen it shows.
#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QMap>
#include <QTabBar>
#include <algorithm>
#include <set>

#include "app/desktop/basics/mnemonics.h"
#include "desktop/scenario/hands.h"

namespace test {
namespace {

// A small display of 1280 x 720 without the menu, the tabs and the status bar of the main window.
constexpr QSize kRoom(1240, 600);
constexpr int kMostStops = 80;

class EveryScreen : public Scenario {
 protected:
  EveryScreen() : Scenario([](Mill& mill) { mill.SetParameter("MAL", 70, "N"); }) {}

  /// Every screen of the menu, one after the other, each closed again.
  void ForEachOfMenu(const std::function<void(host::Screen&)>& look) {
    int screens = 0;
    for (const app::MenuScreen& entry : desktop_.GetMill().App().MenuScreens()) {
      if (entry.menu.empty()) continue;
      const ::testing::ScopedTrace trace(__FILE__, __LINE__, entry.class_name);
      host::Screen& screen = desktop_.Open(entry.class_name);
      look(screen);
      Close(screen);
      ++screens;
    }
    EXPECT_GE(screens, 15);
  }

  /// The yarn screen opens by a roll that no reservation covers; the roll is given up afterwards.
  void AtYarnScreen(const std::function<void(host::Screen&)>& look) {
    const std::string number = OrderFromElsewhere(100);
    desktop_.Open("TfmMovBaiTec");
    hands_.Enter("EdtLote", QString::fromStdString(number));
    hands_.Fill("EdtQtde", QStringLiteral("10"));
    desktop_.GetBoxes().ExpectDialog(QStringLiteral("Selecione os consumos"), [&](QWidget&) {
      look(*desktop_.Desk().Modal());
      hands_.GoTo("BitBtn2");
      Press(Qt::Key_Return);
    });
    desktop_.ExpectBox(QStringLiteral("Baixa Cancelada."));
    Press(Qt::Key_F8);
    EXPECT_TRUE(desktop_.GetBoxes().Met());
  }

  void Everywhere(const std::function<void(host::Screen&)>& look) {
    ForEachOfMenu(look);
    const ::testing::ScopedTrace trace(__FILE__, __LINE__, "TFmMovBaiFio");
    AtYarnScreen(look);
  }

 private:
  void Close(const host::Screen& screen) {
    const std::string name = screen.ClassName();
    ASSERT_EQ(desktop_.Desk().CloseScreen(const_cast<host::Screen&>(screen)), host::ActResult::kDone);
    Settle();
    ASSERT_EQ(desktop_.Desk().Find(name), nullptr);
  }
};

bool IsStop(const host::Control& control) { return control.Focusable() && control.Enabled() && control.InSight(); }

TEST_F(EveryScreen, HasAWidgetForEachComponentAndAComponentForEachWidget) {
  Everywhere([this](host::Screen& screen) {
    EXPECT_EQ(desktop_.WindowOf(screen).Mismatches().join(u'\n').toStdString(), "");
  });
}

TEST_F(EveryScreen, FitsASmallDisplay) {
  Everywhere([this](host::Screen& screen) {
    const QSize least = desktop_.WindowOf(screen).minimumSizeHint();
    EXPECT_LE(least.width(), kRoom.width());
    EXPECT_LE(least.height(), kRoom.height());
  });
}

TEST_F(EveryScreen, HasEachLetterOnce) {
  Everywhere([this](host::Screen& screen) {
    const QWidget& window = desktop_.WindowOf(screen);
    QMap<QChar, QStringList> uses;
    const auto use = [&uses](const QWidget& widget, const QString& text) {
      const QChar letter = app::desktop::MnemonicOf(text);
      if (!letter.isNull() && widget.isVisible()) uses[letter].append(text);
    };
    for (const auto* button : window.findChildren<QAbstractButton*>()) use(*button, button->text());
    for (const auto* group : window.findChildren<QGroupBox*>()) use(*group, group->title());
    for (const auto* label : window.findChildren<QLabel*>()) {
      if (label->buddy() != nullptr) use(*label, label->text());
    }
    for (const auto* tabs : window.findChildren<QTabBar*>()) {
      for (int tab = 0; tab < tabs->count(); ++tab) use(*tabs, tabs->tabText(tab));
    }
    for (auto letter = uses.begin(); letter != uses.end(); ++letter) {
      EXPECT_EQ(letter.value().size(), 1) << letter.value().join(u" | ").toStdString();
    }
  });
}

// By keys alone one comes to everything, and round; and the same way back.
TEST_F(EveryScreen, IsWalkedRoundByTab) {
  Everywhere([this](host::Screen& screen) {
    const std::string first = Focused();
    ASSERT_NE(first, "") << "nothing has the keyboard";
    const auto walk = [&](bool back) {
      std::vector<std::string> stops;
      do {
        stops.push_back(Focused());
        const bool in_grid = dynamic_cast<const host::Grid*>(desktop_.Desk().Focused()) != nullptr;
        if (in_grid) {
          Press(Qt::Key_Return, back ? Qt::ControlModifier | Qt::ShiftModifier : Qt::ControlModifier);
        } else {
          Press(back ? Qt::Key_Backtab : Qt::Key_Tab, back ? Qt::ShiftModifier : Qt::NoModifier);
        }
      } while (Focused() != first && static_cast<int>(stops.size()) < kMostStops);
      return stops;
    };
    const std::vector<std::string> forward = walk(false);
    EXPECT_EQ(Focused(), first);
    const std::set<std::string> reached(forward.begin(), forward.end());
    EXPECT_EQ(reached.size(), forward.size()) << "a stop comes twice";
    for (const host::Component* component : screen.Components()) {
      const auto* control = dynamic_cast<const host::Control*>(component);
      if (control == nullptr || !IsStop(*control)) continue;
      const auto* edit = dynamic_cast<const host::Edit*>(control);
      if (edit != nullptr && edit->ReadOnly()) continue;
      EXPECT_TRUE(reached.contains(control->Name())) << control->Name();
    }
    std::vector<std::string> backward = walk(true);
    std::reverse(backward.begin() + 1, backward.end());
    EXPECT_EQ(backward, forward);
  });
}

}  // namespace
}  // namespace test
