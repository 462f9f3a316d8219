// What one confirmed roll with three reserved yarn lots costs, beside the floor: the same rows written by prepared
// statements and one commit.
//
//   bench_roll [ROLLS]    on a database that already holds ROLLS rolls (made once, kept in the build folder)
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "bench/timing.h"
#include "bench/volume.h"
#include "support/mill.h"
#include "support/road.h"

namespace {

namespace fs = std::filesystem;
using bench::kPlan;

constexpr int kWarmUp = 20;
constexpr int kCounted = 200;
constexpr int kPart = 30;
constexpr double kRoll = 0.25;

// The rows of one roll, as somebody would write them who only wanted the rows.
class Floor {
 public:
  explicit Floor(app::firebird::Database& database, std::string order)
      : database_(database), order_(std::move(order)) {}

  void WriteRoll(int number) {
    database_.BeginAction();
    for (const auto& lot : kPlan.reservations) TakeYarn(lot, number);
    const std::string fabric_lot = order_ + std::to_string(number);
    Move(kPlan.fabric, kPlan.colour, kPlan.deposit, fabric_lot, kRoll, "N", number);
    database_.Execute(
        "INSERT INTO {MAT_ITEN} (CODIGO, COR, DEPOSITO, LOTE, QTDE, PRECO_MED, LOCAL) VALUES (?, ?, ?, ?, ?, ?, ?)",
        {kPlan.fabric, kPlan.colour, kPlan.deposit, fabric_lot, kRoll, 26.5, ""});
    database_.Execute("UPDATE {MATERIAL} SET PRECO = ?, CUSTO_IMP = ? WHERE CODIGO = ?", {26.5, 2.4, kPlan.fabric});
    database_.Execute("UPDATE {TECEL_ITEN} SET QTDE_B = QTDE_B + ? WHERE NUMERO = ? AND CODIGO = ? AND COR = ?",
                      {kRoll, order_, kPlan.fabric, kPlan.colour});
    database_.Execute(
        "INSERT INTO {TECELB} (NUMERO, CODIGO, ORDEM, DT_LAN, QTDE, NF_RET, DEPOSITO, MAQUINA, FUNCIONARIO, COR, "
        "TURNO, "
        "NF_COB, QTDE_R, LOTE, LOCAL, PEDIDO) VALUES (?, ?, ?, CURRENT_DATE, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        {order_, kPlan.fabric, number, kRoll, "", kPlan.deposit, "", "", kPlan.colour, "", "", 0, fabric_lot, "", ""});
    database_.Execute(
        "INSERT INTO TEC_LOG (USUARIO, DATA_HORA, ASSUNTO, TEXTO, OPERACAO, CHAVE) "
        "VALUES (?, CURRENT_TIMESTAMP, ?, ?, ?, ?)",
        {"ADMIN", "BAIXAS DA TECELAGEM", "BAIXA DE LOTE NR.: " + order_, 0, order_});
    database_.EndAction(app::firebird::Database::Outcome::kOk);
  }

 private:
  void Move(const std::string& code, const std::string& colour, const std::string& deposit, const std::string& lot,
            double quantity, const char* out, int number) {
    database_.Execute(
        "INSERT INTO {MAT_MOV} (CODIGO, COR, LOTE, DEPOSITO, DOCUMENTO, TIPO_DOC, CLIENTE, MAQUINA, FUNCIONARIO, DATA, "
        "QTDE, SAIDA, USUARIO, PRECO, CUSTO, LOCAL, BAIXADO, ATIVO, COMPLEMENTO, TIPO_MOV, ORDEM, ESTORNO) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, CURRENT_DATE, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 'N')",
        {code, colour,  lot,  deposit, order_, "BT", kPlan.mill, "", "",       quantity,
         out,  "ADMIN", 20.0, 20.0,    "",     "0",  "1",        "", "TECSAI", number});
  }
  void TakeYarn(const test::Reservation& lot, int number) {
    const double quantity = kRoll * lot.quantity / kPlan.quantity;
    Move(lot.yarn, lot.colour, lot.deposit, lot.lot, quantity, "S", number);
    database_.Execute(
        "UPDATE {MAT_ITEN} SET QTDE = QTDE - ? WHERE CODIGO = ? AND COR = ? AND DEPOSITO = ? AND LOTE = ?",
        {quantity, lot.yarn, lot.colour, lot.deposit, lot.lot});
    database_.Execute(
        "INSERT INTO {BAIXA_FIO} (CODIGO, DOCTO, NUMERO, QTDE, LOTE, COR, DEPOSITO, ORDEM, MATERIAL) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
        {lot.yarn, order_, order_, quantity, lot.lot, lot.colour, lot.deposit, number, kPlan.fabric});
    database_.Execute(
        "UPDATE {MAT_RESERVA} SET QTDE = QTDE - ?, QTDE_B = QTDE_B + ? WHERE NUMERO = ? AND CODIGO = ? AND COR = ? AND "
        "DEPOSITO = ? AND LOTE = ?",
        {quantity, quantity, order_, lot.yarn, lot.colour, lot.deposit, lot.lot});
  }

  app::firebird::Database& database_;
  std::string order_;
};

struct Measured {
  std::vector<double> times;
  std::vector<double> processor;
  app::firebird::Statistics cost;
};

void Print(const char* what, const Measured& measured) {
  const auto& cost = measured.cost;
  std::cout << what << ": median " << bench::Quantile(measured.times, 0.5) << " ms, 95 % "
            << bench::Quantile(measured.times, 0.95) << " ms, processor " << bench::Quantile(measured.processor, 0.5)
            << " ms; per roll " << static_cast<double>(cost.statements) / kCounted << " statements, "
            << static_cast<double>(cost.prepares) / kCounted << " prepares, "
            << static_cast<double>(cost.round_trips) / kCounted << " round trips, "
            << static_cast<double>(cost.commits) / kCounted << " forced writes\n";
}

// One act, counted once the statements are warm.
template <typename Act>
void Measure(test::Mill& mill, int number, Measured& measured, const Act& act) {
  const auto before = mill.Db().Stats();
  const double processor = bench::ProcessorMilliseconds();
  const double time = bench::Milliseconds(act);
  if (number < kWarmUp) return;
  measured.times.push_back(time);
  measured.processor.push_back(bench::ProcessorMilliseconds() - processor);
  bench::AddSpent(measured.cost, before, mill.Db().Stats());
}

int Run(std::int64_t rolls) {
  const std::string working = std::string(TECELAGEM_BINARY_DIR) + "/bench_roll.fdb";
  fs::copy_file(bench::VolumeDatabase(rolls), working, fs::copy_options::overwrite_existing);
  test::Mill::Options options;
  options.database = working;
  test::Mill mill(options);
  const std::string order = test::SaveOrder(mill, kPlan);
  const std::string floor_order = test::SaveBareOrder(mill, kPlan);
  host::Screen& screen = test::OpenWriteOff(mill, order, kPlan.deposit);

  Measured roll;
  for (int number = 0; number < kWarmUp + kCounted; ++number) {
    test::TypeRoll(mill, screen, number % 2 == 0 ? kRoll : kRoll + 0.001);
    Measure(mill, number, roll, [&] { mill.Click(screen, "BtnConfirma"); });
    const auto boxes = mill.Messages();
    if (!boxes.empty()) {
      std::cerr << boxes.front() << '\n';
      return 1;
    }
  }
  std::cout << rolls << " rolls in the database, " << kCounted << " confirmed\n";
  Print("roll ", roll);

  Floor floor(mill.Db(), floor_order);
  Measured bare;
  for (int number = 0; number < kWarmUp + kCounted; ++number) {
    Measure(mill, number, bare, [&] { floor.WriteRoll(number + 1); });
  }
  Print("floor", bare);
  // The screen lists the order's rolls after each one, so a roll costs more the more its own order has.
  const std::vector<double> early(roll.times.begin(), roll.times.begin() + kPart);
  const std::vector<double> late(roll.times.end() - kPart, roll.times.end());
  std::cout << "roll " << kWarmUp + 1 << " to " << kWarmUp + kPart << " of its order: median "
            << bench::Quantile(early, 0.5) << " ms; roll " << kWarmUp + kCounted - kPart + 1 << " to "
            << kWarmUp + kCounted << ": " << bench::Quantile(late, 0.5) << " ms\n";
  std::cout << "ratio of the medians " << bench::Quantile(roll.times, 0.5) / bench::Quantile(bare.times, 0.5)
            << ", of processor time " << bench::Quantile(roll.processor, 0.5) / bench::Quantile(bare.processor, 0.5)
            << '\n';
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc > 1 ? std::atoll(argv[1]) : 0);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
