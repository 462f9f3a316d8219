// A lookup over 50,000 materials: what a search costs, how long the dialog takes to open and to answer a key.
#include <QAbstractItemModel>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableView>
#include <QTimer>
#include <chrono>
#include <iostream>
#include <string>
#include <vector>

#include "app/desktop/lookup/lookup_dialog.h"
#include "app/services/database_offer.h"
#include "bench/timing.h"
#include "host/kit/screen.h"
#include "support/mill.h"

namespace {

constexpr int kMaterials = 50000;
constexpr int kRuns = 21;

// Every second one has a price of weaving, which the order screen's filter asks for.
void Fill(test::Mill& mill) {
  static const char* const kKinds[] = {"Malha piquê", "Fio de algodão penteado", "Meia malha cardada",
                                       "Moletom três cabos", "Ribana 2x1"};
  app::firebird::Database& database = mill.Db();
  database.BeginAction();
  for (int i = 0; i < kMaterials; ++i) {
    const std::string code = "B" + std::to_string(100000 + i);
    const std::string text = std::string(kKinds[i % 5]) + " 30/1 " + std::to_string(i * 7 % 9973);
    database.Execute("INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, UNIDADE) VALUES (?, ?, ?)", {code, text, "KG"});
    if (i % 2 == 0) continue;
    database.Execute("INSERT INTO {CADCORTI} (TIPO, CODIGO, CODCLI, COR, CUSTO) VALUES ('C', ?, 'M00001', '0', 5)",
                     {code});
  }
  database.EndAction(app::firebird::Database::Outcome::kOk);
}

/// Times of one act, and what of them this process used itself.
struct Measured {
  std::vector<double> times;
  std::vector<double> processor;

  template <typename Act>
  void Add(const Act& act) {
    const double before = bench::ProcessorMilliseconds();
    times.push_back(bench::Milliseconds(act));
    processor.push_back(bench::ProcessorMilliseconds() - before);
  }
};

void Print(const std::string& what, const Measured& measured) {
  std::cout << what << ": median " << bench::Quantile(measured.times, 0.5) << " ms, 95 % "
            << bench::Quantile(measured.times, 0.95) << " ms, processor " << bench::Quantile(measured.processor, 0.5)
            << " ms\n";
}

void MeasureOffer(app::LookupOffer& offer, const std::string& name) {
  for (const char* text : {"", "algodao", "9972", "algodao 9972", "nada disso", "B149999"}) {
    Measured measured;
    std::size_t found = offer.Search(text, 0, 101).size();
    for (int run = 0; run < kRuns; ++run) measured.Add([&] { found = offer.Search(text, 0, 101).size(); });
    Print(name + ", search \"" + text + "\" (" + std::to_string(found) + " rows)", measured);
  }
}

// From a key in the search line until the rows that it finds are painted; the pause for the next key is in it.
void TypeLetter(QDialog& dialog, QChar letter, Measured& keys) {
  auto* line = dialog.findChild<QLineEdit*>();
  auto* table = dialog.findChild<QTableView*>();
  bool searched = false;
  const auto listening = QObject::connect(table->model(), &QAbstractItemModel::modelReset, [&] { searched = true; });
  keys.Add([&] {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
    QApplication::sendEvent(line, &press);
    while (!searched) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    dialog.repaint();
  });
  QObject::disconnect(listening);
}

void MeasureDialog(test::Mill& mill, const host::TPesquisa& lookup) {
  Measured open;
  Measured keys;
  for (int run = 0; run < kRuns; ++run) {
    const auto start = std::chrono::steady_clock::now();
    const double processor = bench::ProcessorMilliseconds();
    const auto offer = app::services::NewLookupOffer(mill.Db(), lookup);
    QTimer::singleShot(0, [&] {
      auto* dialog = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
      dialog->repaint();
      const std::chrono::duration<double, std::milli> opened = std::chrono::steady_clock::now() - start;
      open.times.push_back(opened.count());
      open.processor.push_back(bench::ProcessorMilliseconds() - processor);
      for (const QChar letter : QStringLiteral("algodao 99")) TypeLetter(*dialog, letter, keys);
      dialog->reject();
    });
    app::desktop::AskLookup(nullptr, QStringLiteral("Pesquisa"), *offer, lookup, "");
  }
  Print("dialog, from F4 until painted", open);
  Print("dialog, from a key until painted", keys);
}

}  // namespace

int main(int count, char** values) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(count, values);
  try {
    test::Mill mill;
    test::FillSmallMill(mill);
    Fill(mill);
    host::Screen& order = mill.Open("TfmCadLoteTec");
    auto& filtered = dynamic_cast<host::TPesquisa&>(*order.FindComponent("PqMaterial"));
    host::Screen screen(mill.App(), "TfmBench", "fmBench", "Bench");
    const host::TPesquisa plain(screen, "PqMaterial", "MATERIAL", "CODIGO");
    MeasureOffer(*app::services::NewLookupOffer(mill.Db(), plain), "all materials");
    MeasureOffer(*app::services::NewLookupOffer(mill.Db(), filtered), "the order screen's materials");
    MeasureDialog(mill, filtered);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
