#include "app/desktop/shell/main_menu.h"

#include <QKeySequence>
#include <map>

#include "app/desktop/basics/mnemonics.h"
#include "app/desktop/basics/text.h"
#include "app/desktop/screens/screen_window.h"

namespace app::desktop {
namespace {

constexpr int kNumberedWindows = 9;

QAction* AddChoice(QMenu& menu, QActionGroup& group, const QString& text, int value) {
  QAction* action = menu.addAction(text);
  action->setCheckable(true);
  action->setData(value);
  group.addAction(action);
  return action;
}

void Tick(const QActionGroup& group, int value) {
  for (QAction* action : group.actions()) action->setChecked(action->data().toInt() == value);
}

}  // namespace

MainMenu::MainMenu(QMenuBar* bar, ScreenArea& area, const std::vector<MenuScreen>& screens)
    : QObject(bar), bar_(bar), area_(area) {
  taken_ = {u'a', u'j', u'u'};  // "Arquivo", "Janela" and "Ajuda", whatever headings stand between them
  AddFile();
  AddScreens(screens);
  AddWindows();
  AddHelp();
}

QMenu* MainMenu::AddMenu(const QString& title) {
  QMenu* menu = bar_->addMenu(title);
  menu->setProperty("fullTitle", title);
  return menu;
}

void MainMenu::AddFile() {
  QMenu* file = AddMenu(QStringLiteral("&Arquivo"));
  connect(file->addAction(QStringLiteral("&Trocar usuário...")), &QAction::triggered, this,
          &MainMenu::ChangeUserWanted);
  QAction* printers = file->addAction(QStringLiteral("&Impressoras..."));
  printers->setObjectName(QStringLiteral("Impressoras"));
  connect(printers, &QAction::triggered, this, &MainMenu::PrintersWanted);
  file->addSeparator();
  themes_ = new QActionGroup(this);
  AddChoice(*file, *themes_, QStringLiteral("Tema &claro"), static_cast<int>(Theme::kLight));
  AddChoice(*file, *themes_, QStringLiteral("Tema &escuro"), static_cast<int>(Theme::kDark));
  AddChoice(*file, *themes_, QStringLiteral("Tema do &sistema"), static_cast<int>(Theme::kSystem));
  connect(themes_, &QActionGroup::triggered, this,
          [this](const QAction* action) { emit ThemeWanted(static_cast<Theme>(action->data().toInt())); });
  file->addSeparator();
  QAction* quit = file->addAction(QStringLiteral("Sai&r"));
  quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
  connect(quit, &QAction::triggered, this, &MainMenu::QuitWanted);
}

void MainMenu::AddScreens(const std::vector<MenuScreen>& screens) {
  struct Heading {
    QMenu* menu = nullptr;
    QSet<QChar> taken;
  };
  std::map<std::string, Heading> headings;
  for (const MenuScreen& screen : screens) {
    if (screen.menu.empty()) continue;
    Heading& heading = headings[screen.menu];
    if (heading.menu == nullptr) heading.menu = AddMenu(WithMnemonic(ToQt(screen.menu), taken_));
    QAction* action = heading.menu->addAction(WithMnemonic(ToQt(screen.caption), heading.taken));
    const QString screen_class = ToQt(screen.class_name);
    action->setObjectName(screen_class);
    connect(action, &QAction::triggered, this, [this, screen_class] { emit OpenWanted(screen_class); });
  }
}

void MainMenu::AddWindows() {
  windows_ = AddMenu(QStringLiteral("&Janela"));
  const auto add = [this](const QString& text, const QKeySequence& keys, const std::function<void()>& act) {
    QAction* action = windows_->addAction(text);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, act);
    of_a_window_.push_back(action);
  };
  add(QStringLiteral("&Próxima"), QKeySequence(Qt::CTRL | Qt::Key_Tab), [this] { area_.activateNextSubWindow(); });
  add(QStringLiteral("&Anterior"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab),
      [this] { area_.activatePreviousSubWindow(); });
  add(QStringLiteral("&Fechar"), QKeySequence(Qt::CTRL | Qt::Key_W), [this] {
    if (const ScreenWindow* window = area_.Active()) area_.Close(window->GetScreen());
  });
  add(QStringLiteral("Fechar &todas"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_W), [this] { area_.CloseAll(); });
  windows_->addSeparator();
  modes_ = new QActionGroup(this);
  AddChoice(*windows_, *modes_, QStringLiteral("&Em abas"), static_cast<int>(ScreenArea::Mode::kTabs));
  AddChoice(*windows_, *modes_, QStringLiteral("Janelas &livres"), static_cast<int>(ScreenArea::Mode::kFree));
  connect(modes_, &QActionGroup::triggered, this,
          [this](const QAction* action) { emit ModeWanted(static_cast<ScreenArea::Mode>(action->data().toInt())); });
  list_begin_ = windows_->addSeparator();
  connect(&area_, &ScreenArea::ActiveChanged, this, &MainMenu::ListWindows);
  ListWindows();
}

// The open windows stand below the last separator, numbered for the keyboard.
void MainMenu::ListWindows() {
  const QList<QAction*> actions = windows_->actions();
  for (qsizetype i = actions.indexOf(list_begin_) + 1; i < actions.size(); ++i) delete actions[i];
  int number = 0;
  for (ScreenFrame* frame : area_.Frames()) {
    ++number;
    QString text = frame->windowTitle().replace(u'&', QStringLiteral("&&"));
    if (number <= kNumberedWindows) text = QStringLiteral("&%1 %2").arg(number).arg(text);
    QAction* action = windows_->addAction(text);
    action->setCheckable(true);
    action->setChecked(frame->Window() == area_.Active());
    connect(action, &QAction::triggered, frame, [this, frame] { area_.setActiveSubWindow(frame); });
  }
  list_begin_->setVisible(number > 0);
  for (QAction* action : of_a_window_) action->setEnabled(number > 0);
}

void MainMenu::AddHelp() {
  QMenu* help = AddMenu(QStringLiteral("Aj&uda"));
  connect(help->addAction(QStringLiteral("&Teclas")), &QAction::triggered, this, &MainMenu::KeysWanted);
  connect(help->addAction(QStringLiteral("&Sobre")), &QAction::triggered, this, &MainMenu::AboutWanted);
}

void MainMenu::ShowMode(ScreenArea::Mode mode) { Tick(*modes_, static_cast<int>(mode)); }

void MainMenu::ShowTheme(Theme theme) { Tick(*themes_, static_cast<int>(theme)); }

void MainMenu::Yield(const QSet<QChar>& letters) {
  for (QMenu* menu : bar_->findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) {
    const QString full = menu->property("fullTitle").toString();
    if (full.isEmpty()) continue;
    const bool theirs = letters.contains(MnemonicOf(full));
    menu->setTitle(theirs ? QString(full).remove(u'&') : full);
  }
}

}  // namespace app::desktop
