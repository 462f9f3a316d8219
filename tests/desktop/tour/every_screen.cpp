#include <QString>

#include "app/desktop/basics/text.h"
#include "desktop/tour/walks.h"

namespace tour {
namespace {

// What is typed into a screen so that it shows something.
void FillIn(test::DesktopMill& mill, const host::Screen& screen) {
  const auto type = [&](const char* input, const char* text) {
    mill.ClickOn(screen, input);
    test::TypeText(QString::fromUtf8(text));
    test::Press(Qt::Key_Return);
  };
  if (screen.ClassName() == "TFmCadComposi") type("EdtCodMat", "M0111");
}

}  // namespace

void EveryScreen(test::DesktopMill& mill, const Camera& camera) {
  for (const app::MenuScreen& entry : mill.GetMill().App().MenuScreens()) {
    if (entry.menu.empty()) continue;
    const host::Screen& screen = mill.Open(entry.class_name);
    FillIn(mill, screen);
    test::Settle();
    camera.Take(mill.Window(), app::desktop::ToQt(entry.class_name));
    mill.GetStation().Do([&] { return mill.Desk().CloseScreen(*mill.Desk().Find(entry.class_name)); });
    test::Settle();
  }
}

}  // namespace tour
