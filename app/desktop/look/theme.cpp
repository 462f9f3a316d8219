#include "app/desktop/look/theme.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLibraryInfo>
#include <QPalette>
#include <QToolTip>
#include <QTranslator>

#include "app/desktop/look/look_style.h"

// The icons stand in a static library, whose resources nobody would take in otherwise; this is Qt's way, outside any
// namespace.
static void TakeIcons() { Q_INIT_RESOURCE(desktop); }

namespace app::desktop {
namespace {

constexpr int kPointSize = 10;

struct Colors {
  QRgb window, window_text, base, alternate, text, button, placeholder, disabled, highlight, highlighted, link, visited,
      tip, tip_text, light, midlight, mid, dark, shadow;
};

constexpr Colors kLight = {0xfff3f3f1, 0xff1c1c1a, 0xffffffff, 0xfff5f7f8, 0xff1c1c1a, 0xffececea, 0xff7d7d78,
                           0xff9b9b96, 0xff1f5f78, 0xffffffff, 0xff1a5fb4, 0xff6b3fa0, 0xfffffbe6, 0xff1c1c1a,
                           0xffffffff, 0xfff8f8f6, 0xffc4c4bf, 0xffa6a6a1, 0xff6f6f6a};
constexpr Colors kDark = {0xff2a2c2e, 0xffe4e4e1, 0xff1e2022, 0xff25282a, 0xffe4e4e1, 0xff36393c, 0xff8f9295,
                          0xff777a7d, 0xff2c7391, 0xffffffff, 0xff78b7f0, 0xffc0a0f0, 0xff3a3d40, 0xffe4e4e1,
                          0xff484b4f, 0xff3f4246, 0xff232527, 0xff1a1c1d, 0xff0f1011};

bool dark_now = false;

// What the desktop around us chose, as far as Qt can tell: a dark window colour before we set our own.
bool DesktopIsDark() {
  static const bool kIsDark = [] {
    if (qgetenv("GTK_THEME").toLower().contains("dark")) return true;
    return QApplication::palette().color(QPalette::Window).lightness() < 128;
  }();
  return kIsDark;
}

QPalette PaletteOf(const Colors& colors) {
  QPalette palette;
  const auto set = [&palette](QPalette::ColorRole role, QRgb color) { palette.setColor(role, QColor(color)); };
  set(QPalette::Window, colors.window);
  set(QPalette::WindowText, colors.window_text);
  set(QPalette::Base, colors.base);
  set(QPalette::AlternateBase, colors.alternate);
  set(QPalette::Text, colors.text);
  set(QPalette::Button, colors.button);
  set(QPalette::ButtonText, colors.window_text);
  set(QPalette::BrightText, 0xffffffff);
  set(QPalette::PlaceholderText, colors.placeholder);
  set(QPalette::Highlight, colors.highlight);
  set(QPalette::HighlightedText, colors.highlighted);
  set(QPalette::Link, colors.link);
  set(QPalette::LinkVisited, colors.visited);
  set(QPalette::ToolTipBase, colors.tip);
  set(QPalette::ToolTipText, colors.tip_text);
  set(QPalette::Light, colors.light);
  set(QPalette::Midlight, colors.midlight);
  set(QPalette::Mid, colors.mid);
  set(QPalette::Dark, colors.dark);
  set(QPalette::Shadow, colors.shadow);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(colors.disabled));
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, QColor(colors.window));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(colors.mid));
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, QColor(colors.window_text));
  return palette;
}

}  // namespace

Theme ThemeFromName(std::string_view name) {
  if (name == ThemeName(Theme::kLight)) return Theme::kLight;
  if (name == ThemeName(Theme::kDark)) return Theme::kDark;
  return Theme::kSystem;
}

std::string_view ThemeName(Theme theme) {
  switch (theme) {
    case Theme::kLight:
      return "claro";
    case Theme::kDark:
      return "escuro";
    case Theme::kSystem:
      break;
  }
  return "sistema";
}

void PrepareLook() {
  TakeIcons();
  DesktopIsDark();  // while the colours are still the desktop's
  QApplication::setStyle(new LookStyle);
  QFont font;
  QStringList families = {QStringLiteral("Noto Sans")};
  families += font.families();
  font.setFamilies(families);
  font.setPointSize(kPointSize);
  QApplication::setFont(font);
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/tecelagem.svg")));
  auto* words = new QTranslator(qApp);
  if (words->load(QStringLiteral("qtbase_pt_BR"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QApplication::installTranslator(words);
  }
}

void ApplyTheme(Theme theme) {
  dark_now = theme == Theme::kDark || (theme == Theme::kSystem && DesktopIsDark());
  const QPalette palette = PaletteOf(dark_now ? kDark : kLight);
  QApplication::setPalette(palette);
  QToolTip::setPalette(palette);
}

bool IsDark() { return dark_now; }

}  // namespace app::desktop
