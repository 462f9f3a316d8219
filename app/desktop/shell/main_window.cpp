#include "app/desktop/shell/main_window.h"

#include <QApplication>
#include <QByteArray>
#include <QCloseEvent>
#include <QPointer>
#include <filesystem>
#include <string>

#include "app/desktop/basics/mnemonics.h"
#include "app/desktop/basics/settings.h"
#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/message_boxes.h"
#include "app/desktop/look/theme.h"
#include "app/desktop/printing/printers_dialog.h"
#include "app/desktop/screens/modal_window.h"
#include "app/desktop/screens/screen_area.h"
#include "app/desktop/screens/screen_window.h"
#include "app/desktop/shell/about.h"
#include "app/desktop/shell/main_menu.h"
#include "app/desktop/shell/status_line.h"
#include "app/firebird/attachment.h"

namespace app::desktop {
namespace {

constexpr QSize kFirstSize(1280, 720);
constexpr const char* kTabs = "abas";
constexpr const char* kFree = "livres";

QString ShortName(const std::string& database) {
  if (firebird::IsServerPath(database)) return ToQt(database);
  return QString::fromStdString(std::filesystem::path(database).filename().string());
}

}  // namespace

class MainWindow::Parts : public QObject {
 public:
  Parts(MainWindow& window, WindowPerson& person)
      : window_(window),
        station_(window.station_),
        application_(station_.App()),
        person_(person),
        area_(new ScreenArea(station_, &window)),
        status_(new StatusLine(&window)) {
    window.setCentralWidget(area_);
    window.setStatusBar(status_);
    menu_ = new MainMenu(window.menuBar(), *area_, application_.MenuScreens());
    ShowWhere();
    ConnectMenu();
    ConnectShell();
    connect(area_, &ScreenArea::ActiveChanged, this, [this] { ActiveChanged(); });
    connect(&station_, &Station::NotPossible, status_, &StatusLine::ShowNotPossible);
    connect(&station_, &Station::Settled, this, [this] { ActEnded(); });
    Restore();
    ShowKeys();
  }
  ~Parts() override { person_.SetShell({}); }

  ScreenArea& Area() { return *area_; }

  bool CloseEverything() {
    if (station_.Busy() || station_.Desk().Modal() != nullptr || !area_->CloseAll()) return false;
    Remember(kGeometryName, window_.saveGeometry().toBase64().toStdString());
    return true;
  }

 private:
  host::UserSettings& Settings() { return application_.GetUserSettings(); }
  void Remember(const char* name, std::string_view value) {
    Settings().Write(kSettingsKey, kWindowSection, name, value);
  }
  std::string Remembered(const char* name) { return Settings().Read(kSettingsKey, kWindowSection, name).value_or(""); }

  void ShowWhere() {
    const firebird::ConnectOptions& options = application_.GetDatabase().Options();
    status_->ShowWhere(ToQt(options.company), ToQt(application_.GetFuncoes().vUsuario()), ShortName(options.database),
                       ToQt(options.database));
  }

  void ConnectMenu() {
    connect(menu_, &MainMenu::OpenWanted, this, [this](const QString& name) { area_->Open(FromQt(name)); });
    connect(menu_, &MainMenu::PrintersWanted, this, [this] {
      PrintersDialog dialog(application_, &window_);
      RunBox(dialog);
    });
    connect(menu_, &MainMenu::QuitWanted, &window_, &QWidget::close);
    connect(menu_, &MainMenu::ChangeUserWanted, this, [this] { window_.change_user_ = window_.close(); });
    connect(menu_, &MainMenu::ThemeWanted, this, [this](Theme theme) {
      ApplyTheme(theme);
      ShowBackground();
      Remember(kThemeName, ThemeName(theme));
    });
    connect(menu_, &MainMenu::ModeWanted, this, [this](ScreenArea::Mode mode) {
      area_->SetMode(mode);
      Remember(kModeName, mode == ScreenArea::Mode::kTabs ? kTabs : kFree);
    });
    connect(menu_, &MainMenu::KeysWanted, this, [this] { ShowKeysOfAllScreens(&window_); });
    connect(menu_, &MainMenu::AboutWanted, this,
            [this] { ShowAbout(&window_, ToQt(application_.GetDatabase().Options().database)); });
  }

  void ConnectShell() {
    WindowPerson::Shell shell;
    shell.show = [this](host::Screen& screen) { area_->Show(screen); };
    shell.let_go = [this](host::Screen& screen) { area_->LetGo(screen); };
    shell.run_modal = [this](host::Screen& screen) {
      QWidget* over = QApplication::activeModalWidget();
      RunModalScreen(station_, screen, over != nullptr ? over : &window_);
    };
    shell.device = [this](const std::function<void()>& act) {
      // Whoever is in a box or a menu is not at the scale.
      if (QApplication::activeModalWidget() != nullptr) return;
      if (QApplication::activePopupWidget() != nullptr) return;
      station_.Do([&act] {
        act();
        return host::ActResult::kDone;
      });
    };
    shell.busy = [this](bool on, const QString& text) { status_->ShowBusy(on, text); };
    person_.SetShell(std::move(shell));
  }

  void Restore() {
    const std::string mode = Remembered(kModeName);
    if (mode == kFree) area_->SetMode(ScreenArea::Mode::kFree);
    menu_->ShowMode(area_->GetMode());
    const Theme theme = ThemeFromName(Remembered(kThemeName));
    ApplyTheme(theme);
    menu_->ShowTheme(theme);
    ShowBackground();
    window_.resize(kFirstSize);
    window_.restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(Remembered(kGeometryName))));
  }

  void ShowBackground() {
    const QColor window = QApplication::palette().color(QPalette::Window);
    area_->setBackground(IsDark() ? window.darker(125) : window.darker(108));
  }

  void ActiveChanged() {
    ScreenWindow* active = area_->Active();
    if (active != listened_) {
      if (listened_ != nullptr) listened_->disconnect(this);
      listened_ = active;
      if (active != nullptr) {
        connect(active, &ScreenWindow::KeysChanged, this, [this] { ShowKeys(); });
      }
      menu_->Yield(active != nullptr ? MnemonicsIn(*active) : QSet<QChar>());
    }
    ShowKeys();
  }

  void ShowKeys() {
    status_->ShowKeys(listened_ != nullptr ? listened_->KeysHere() : QStringLiteral("Alt+letra abre um menu"));
  }

  void ActEnded() {
    // Whatever failed in between, an act that has ended keeps nobody waiting.
    if (status_->Busy()) status_->ShowBusy(false, {});
    status_->ShowConnected(application_.GetDatabase().Connected());
    ShowKeys();
  }

  MainWindow& window_;
  Station& station_;
  Application& application_;
  WindowPerson& person_;
  ScreenArea* area_;
  StatusLine* status_;
  MainMenu* menu_ = nullptr;
  QPointer<ScreenWindow> listened_;
};

MainWindow::MainWindow(Application& application, WindowPerson& person) : station_(application) {
  setWindowTitle(QStringLiteral("Tecelagem"));
  parts_ = std::make_unique<Parts>(*this, person);
}

MainWindow::~MainWindow() {
  // The windows of the screens use the station; they go while it is still there.
  delete takeCentralWidget();
}

ScreenWindow* MainWindow::WindowOf(std::string_view name) const { return parts_->Area().WindowOf(name); }

void MainWindow::closeEvent(QCloseEvent* event) {
  if (parts_->CloseEverything()) {
    event->accept();
  } else {
    event->ignore();
  }
}

}  // namespace app::desktop
