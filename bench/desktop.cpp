// What a person waits for at the windows: the start, each screen, the exits of an order's inputs, a roll. Real windows
// and real key events on Qt's offscreen platform, so the pixels are drawn but not sent to a screen.
#include <QApplication>
#include <QByteArray>
#include <QStyleFactory>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/application.h"
#include "app/desktop/shell/main_window.h"
#include "app/desktop/shell/window_person.h"
#include "app/mill/mill.h"
#include "bench/large_order.h"
#include "bench/timing.h"
#include "desktop/support/desktop_mill.h"
#include "support/mill.h"
#include "support/module_under_test.h"
#include "support/road.h"
#include "support/template_database.h"

namespace {

constexpr int kRuns = 7;

/// Waits until all that an act left to do is done and drawn.
void Drawn(QWidget& window) {
  QApplication::processEvents();
  window.repaint();
  QApplication::processEvents();
}

void Report(std::string_view what, const std::vector<double>& times) {
  std::cout << std::left << std::setw(52) << what << std::right << std::fixed << std::setprecision(1) << std::setw(8)
            << bench::Quantile(times, 0.5) << " ms median" << std::setw(8) << bench::Quantile(times, 1.0)
            << " ms longest of " << times.size() << '\n';
}

std::vector<double> Repeated(int runs, const std::function<double()>& once) {
  std::vector<double> times;
  for (int run = 0; run < runs; ++run) times.push_back(once());
  return times;
}

/// The demonstration mill in a file of its own, gone with the object.
class DemoFile {
 public:
  DemoFile()
      : path_(std::filesystem::temp_directory_path() / ("tecelagem-bench-" + std::to_string(::getpid()) + ".fdb")) {
    std::filesystem::remove(path_);
    app::firebird::ConnectOptions options;
    options.database = path_.string();
    app::mill::CreateDemo(options, "demo");
  }
  ~DemoFile() { test::RemoveDatabase(path_.string()); }
  DemoFile(const DemoFile&) = delete;
  DemoFile& operator=(const DemoFile&) = delete;

  std::string Path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

// From the opening of the database to the main window drawn; the process and Qt itself are there already.
double FirstPaint(const std::string& database) {
  app::desktop::WindowPerson person;
  std::unique_ptr<app::Application> application;
  std::unique_ptr<app::desktop::MainWindow> window;
  const double time = bench::Milliseconds([&] {
    app::ApplicationOptions options;
    options.connect.database = database;
    options.settings_file = database + ".settings";
    application = app::Application::Start(options, test::ModuleUnderTest(), person);
    window = std::make_unique<app::desktop::MainWindow>(*application, person);
    window->resize(1280, 720);
    window->show();
    Drawn(*window);
  });
  window.reset();
  return time;
}

void MeasureScreens(test::DesktopMill& mill) {
  for (const app::MenuScreen& entry : mill.GetMill().App().MenuScreens()) {
    if (entry.menu.empty()) continue;
    Report("abrir " + entry.caption, Repeated(kRuns, [&] {
             host::Screen* screen = nullptr;
             const double time = bench::Milliseconds([&] {
               screen = mill.Desk().Open(entry.class_name);
               Drawn(mill.Window());
             });
             mill.GetStation().Do([&] { return mill.Desk().CloseScreen(*screen); });
             Drawn(mill.Window());
             return time;
           }));
  }
}

/// What a click on an input leaves to do: its text is marked, to be typed over.
void Stand(test::DesktopMill& mill, const host::Screen& screen, const char* input) {
  mill.ClickOn(screen, input);
  test::Press(Qt::Key_A, Qt::ControlModifier);
}

/// A text typed into an input and left by Enter, until all of it is drawn.
double TypeAndEnter(test::DesktopMill& mill, const QString& text) {
  return bench::Milliseconds([&] {
    test::TypeText(text);
    test::Press(Qt::Key_Return);
    Drawn(mill.Window());
  });
}

void MeasureOrder(test::DesktopMill& mill) {
  host::Screen& screen = mill.Open("TfmCadLoteTec");
  struct Step {
    const char* input;
    const char* text;
    const char* what;
  };
  for (const Step& step : {Step{"EdtNumero", "", "ordem: número novo"}, Step{"EdtMalharia", "00101", "ordem: malharia"},
                           Step{"EdtMaquina", "T02", "ordem: máquina"}, Step{"EdtDeposito", "02", "ordem: depósito"}}) {
    Report(step.what, Repeated(kRuns, [&] {
             Stand(mill, screen, step.input);
             return TypeAndEnter(mill, QString::fromUtf8(step.text));
           }));
  }
  mill.ExpectBox(QStringLiteral("Deseja fechar mesmo assim"), test::Reply::kYes);
  mill.GetStation().Do([&] { return mill.Desk().CloseScreen(screen); });
}

void MeasureLargeOrder() {
  for (const int yarns : {4, 100}) {
    test::DesktopMill::Options options;
    options.prepare = [yarns](test::Mill& mill) { bench::FillLargeOrder(mill, yarns); };
    test::DesktopMill mill(options);
    host::Screen& screen = mill.Open("TfmCadLoteTec");
    Report("carregar ordem de 200 itens, " + std::to_string(yarns) + " fios", Repeated(5, [&] {
             Stand(mill, screen, "EdtNumero");
             return TypeAndEnter(mill, QString::fromUtf8(bench::kLargeOrder));
           }));
  }
}

void MeasureRolls() {
  test::DesktopMill::Options options;
  options.prepare = [](test::Mill& mill) { test::FillSmallMill(mill); };
  test::DesktopMill mill(options);
  const std::string order = test::SaveOrder(mill.GetMill(), test::SmallMillOrder(200));
  host::Screen& screen = mill.Open("TfmMovBaiTec");
  Stand(mill, screen, "EdtLote");
  Report("baixa: carregar a ordem", {TypeAndEnter(mill, QString::fromStdString(order))});
  Stand(mill, screen, "EdtDeposito");
  TypeAndEnter(mill, QStringLiteral("DF"));
  int roll = 0;
  Report("baixa: confirmar uma peça", Repeated(9, [&] {
           Stand(mill, screen, "EdtQtde");
           test::TypeText(QStringLiteral("20,%1").arg(++roll));
           return bench::Milliseconds([&] {
             test::Press(Qt::Key_F8);
             Drawn(mill.Window());
           });
         }));
}

}  // namespace

int main(int count, char** values) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  try {
    std::unique_ptr<QApplication> application;
    const double toolkit = bench::Milliseconds([&] {
      application = std::make_unique<QApplication>(count, values);
      QApplication::setStyle(QStyleFactory::create("Fusion"));
    });
    QApplication::setQuitOnLastWindowClosed(false);
    const DemoFile demo;
    Report("Qt", {toolkit});
    Report("do banco fechado à janela principal pintada", Repeated(kRuns, [&] { return FirstPaint(demo.Path()); }));
    {
      test::DesktopMill::Options options;
      options.mill.database = demo.Path();
      test::DesktopMill mill(options);
      MeasureScreens(mill);
      MeasureOrder(mill);
    }
    MeasureLargeOrder();
    MeasureRolls();
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
