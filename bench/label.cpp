// From the confirmation of a roll to the last byte of its label.
//
//   bench_label [ROLLS]    on a database that already holds ROLLS rolls (made once, kept in the build folder)
#include <QGuiApplication>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "app/printing/delivery/delivery.h"
#include "app/printing/layout/make_printout.h"
#include "app/printing/page/printout.h"
#include "bench/timing.h"
#include "bench/volume.h"
#include "support/label_printer.h"
#include "support/mill.h"
#include "support/road.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kWarmUp = 20;
constexpr int kCounted = 200;
constexpr double kRoll = 0.25;
constexpr std::chrono::microseconds kGlance(100);

double Since(Clock::time_point start, Clock::time_point end) {
  return std::chrono::duration<double, std::milli>(end - start).count();
}

// Labels are made as the program makes them and go to one place.
class LabelEquipment : public app::Equipment {
 public:
  explicit LabelEquipment(const std::string& to, char kind) : to_(app::printing::ParseDestination(to, kind)) {}
  std::unique_ptr<host::SerialPort> NewSerialPort(app::PortUse use) override { return scale_.NewPort(std::move(use)); }
  std::optional<app::PrintJob> Print(const app::PrintRequest& request) override {
    const auto begun = Clock::now();
    const double processor = bench::ProcessorMilliseconds();
    const auto printout = app::printing::MakePrintout(request);
    const auto made = Clock::now();
    making_processor = bench::ProcessorMilliseconds() - processor;
    auto job = app::printing::Deliver(printout, {to_, 1});
    last_byte = Clock::now();
    making = Since(begun, made);
    delivering = Since(made, last_byte);
    return job;
  }

  Clock::time_point last_byte;
  double making = 0;
  double making_processor = 0;
  double delivering = 0;

 private:
  app::printing::Destination to_;
  test::FakeScale scale_;
};

struct Case {
  const char* name;
  const char* print_type;  // parameter "SIS" 20
  char kind;
  std::string destination;
  std::function<Clock::time_point()> last_byte;  // as the far end saw it; empty where only the program knows
};

struct Measured {
  std::vector<double> label;      // until its last byte
  std::vector<double> processor;  // of the whole roll and its label
  std::vector<double> making;
  std::vector<double> making_processor;
  std::vector<double> delivering;
  std::vector<double> roll;  // until the next one can be scanned
  app::firebird::Statistics cost;
};

void Tell(const char* what, const std::vector<double>& times) {
  std::cout << "  " << what << ": median " << bench::Quantile(times, 0.5) << " ms, 95 % "
            << bench::Quantile(times, 0.95) << " ms\n";
}

void Tell(const Case& how, const Measured& measured) {
  const auto per_roll = [](auto count) { return static_cast<double>(count) / kCounted; };
  std::cout << how.name << '\n';
  Tell("from the confirmation to the last byte", measured.label);
  Tell("its processor time", measured.processor);
  Tell("of which the layout", measured.making);
  Tell("its processor time", measured.making_processor);
  Tell("and the way to the printer", measured.delivering);
  Tell("until the next roll can be scanned", measured.roll);
  std::cout << "  per roll " << per_roll(measured.cost.statements) << " statements, " << per_roll(measured.cost.commits)
            << " forced writes\n";
}

void Measure(std::int64_t rolls, const Case& how) {
  const std::string working = std::string(TECELAGEM_BINARY_DIR) + "/bench_label.fdb";
  fs::copy_file(bench::VolumeDatabase(rolls), working, fs::copy_options::overwrite_existing);
  LabelEquipment equipment(how.destination, how.kind);
  test::Mill::Options options;
  options.database = working;
  options.equipment = &equipment;
  test::Mill mill(options);
  mill.SetParameter("MAL", 50, "S");
  mill.SetParameter("SIS", 20, how.print_type);
  const std::string order = test::SaveOrder(mill, bench::kPlan);
  host::Screen& screen = test::OpenWriteOff(mill, order, bench::kPlan.deposit);

  Measured measured;
  for (int number = 0; number < kWarmUp + kCounted; ++number) {
    test::TypeRoll(mill, screen, number % 2 == 0 ? kRoll : kRoll + 0.001);
    const auto before = mill.Db().Stats();
    const double processor = bench::ProcessorMilliseconds();
    const auto start = Clock::now();
    mill.Desk().PressKey(screen, host::Key::kF8);
    const double whole = Since(start, Clock::now());
    const double spent = bench::ProcessorMilliseconds() - processor;
    for (const std::string& box : mill.Messages()) throw std::runtime_error(box);
    const auto last_byte = how.last_byte ? how.last_byte() : equipment.last_byte;
    if (number < kWarmUp) continue;
    if (last_byte < start) throw std::runtime_error("no label came");
    measured.label.push_back(Since(start, last_byte));
    measured.processor.push_back(spent);
    measured.making.push_back(equipment.making);
    measured.making_processor.push_back(equipment.making_processor);
    measured.delivering.push_back(equipment.delivering);
    measured.roll.push_back(whole);
    bench::AddSpent(measured.cost, before, mill.Db().Stats());
  }
  Tell(how, measured);
}

void Run(std::int64_t rolls) {
  const std::string pdf = std::string(TECELAGEM_BINARY_DIR) + "/bench_label.pdf";
  test::LabelPrinter printer;
  std::cout << rolls << " rolls in the database, " << kCounted << " confirmed\n";
  std::size_t labels = 0;
  const auto last_byte = [&] {
    ++labels;
    while (printer.Received().size() < labels) std::this_thread::sleep_for(kGlance);
    return printer.LastByte();
  };
  Measure(rolls, {"text, to a printer in the network", "S", 'T', printer.Destination(), last_byte});
  Measure(rolls, {"text, to a device", "S", 'T', "dispositivo:/dev/null", {}});
  Measure(rolls, {"graphic, to a PDF file as the print server gets it", "N", 'W', "arquivo:" + pdf, {}});
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  try {
    Run(argc > 1 ? std::atoll(argv[1]) : 0);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
  return 0;
}
