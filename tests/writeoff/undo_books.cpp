#include "undo_books.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "host/decimal.h"

namespace test {
namespace {

// Everything is stored with six decimals.
constexpr double kTolerance = 0.00001;

constexpr const char* kItem = "NUMERO || '/' || CODIGO || '/' || COR";
constexpr const char* kLot = "CODIGO || '/' || COR || '/' || DEPOSITO || '/' || LOTE";
constexpr const char* kReservation = "NUMERO || ':' || CODIGO || '/' || COR || '/' || DEPOSITO || '/' || LOTE";

std::string Text(const Row& row) {
  std::string text;
  for (const auto& [name, value] : row) text += name + "=" + value.AsText() + ";";
  return text;
}

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

std::string OfRoll(const UndoBooks::Key& roll) {
  return " WHERE NUMERO = " + Quoted(roll.first) + " AND ORDEM = " + std::to_string(roll.second);
}

}  // namespace

UndoBooks::UndoBooks(Mill& mill) : mill_(mill) {
  stock_ = Read(std::string("SELECT ") + kLot + " AS CHAVE, QTDE AS VALOR FROM {MAT_ITEN}");
  reserved_ = Read(std::string("SELECT ") + kReservation + " AS CHAVE, QTDE AS VALOR FROM {MAT_RESERVA}");
  ordered_ = Read(std::string("SELECT ") + kItem + " AS CHAVE, QTDE AS VALOR FROM {TECEL_ITEN}");
  averages_ = Read(std::string("SELECT ") + kLot + " AS CHAVE, PRECO_MED AS VALOR FROM {MAT_ITEN} WHERE COR = 'CR'");
  for (const auto& [item, quantity] : ordered_) closed_[item] = "N";
  SkipMovements();
}

void UndoBooks::SkipMovements() {
  last_movement_ =
      mill_.Scalar("SELECT MAX(ID) FROM {MAT_MOV} WHERE ID >= " + std::to_string(last_movement_)).AsInteger();
}

UndoBooks::Figures UndoBooks::Read(const std::string& sql) {
  Figures figures;
  for (const Row& row : mill_.Rows(sql)) figures[row.at("CHAVE").AsText()] += row.at("VALOR").AsFloat();
  return figures;
}

std::vector<std::string> UndoBooks::ReadRows(const std::string& sql) {
  std::vector<std::string> rows;
  for (const Row& row : mill_.Rows(sql)) rows.push_back(Text(row));
  return rows;
}

void UndoBooks::Written(const Key& roll) {
  Known known;
  const Row row = mill_.Rows("SELECT * FROM {TECELB}" + OfRoll(roll)).at(0);
  known.row = Text(row);
  known.item = roll.first + "/" + row.at("CODIGO").AsText() + "/" + row.at("COR").AsText();
  known.kilograms = row.at("QTDE").AsFloat();
  known.fabric_lot = row.at("CODIGO").AsText() + "/" + row.at("COR").AsText() + "/" + row.at("DEPOSITO").AsText() +
                     "/" + row.at("LOTE").AsText();
  known.yarns = ReadRows("SELECT * FROM {BAIXA_FIO}" + OfRoll(roll) + " ORDER BY CODIGO, COR, DEPOSITO, LOTE");
  known.taken = Read(std::string("SELECT ") + kLot + " AS CHAVE, QTDE AS VALOR FROM {BAIXA_FIO}" + OfRoll(roll));

  const std::string since = " FROM {MAT_MOV} WHERE ID > " + std::to_string(last_movement_);
  known.units = mill_.Scalar("SELECT SUM(QTDE)" + since + " AND SAIDA = 'N'").AsFloat();
  const Figures moved = Read(std::string("SELECT ") + kLot + " AS CHAVE, QTDE AS VALOR" + since + " AND SAIDA = 'S'");
  SkipMovements();

  const Figures consumed = Consumed();
  for (const auto& [lot, quantity] : known.taken) {
    // The crumb of a reservation is recorded with the roll and did not leave stock.
    stock_[lot] += quantity - moved.at(lot);
    const std::string reservation = roll.first + ":" + lot;
    if (!reserved_.contains(reservation)) continue;
    const double left = reserved_[reservation] - consumed.at(reservation);
    reserved_[reservation] += std::max(0.0, quantity - left);
  }
  rolls_[roll] = known;
  if (host::RoundTo(ordered_.at(known.item), 3) <= host::RoundTo(Items().at(known.item), 3)) closed_[known.item] = "S";
}

void UndoBooks::Reversed(const Key& roll) {
  const Known known = rolls_.at(roll);
  // The fabric leaves by its weight, whatever unit it came in with.
  stock_[known.fabric_lot] += known.units - known.kilograms;
  closed_[known.item] = "N";
  rolls_.erase(roll);
  SkipMovements();
}

void UndoBooks::GivenUp(const std::string& order) {
  const Figures consumed = Consumed();
  for (auto& [reservation, quantity] : reserved_) {
    if (reservation.starts_with(order + ":")) quantity = consumed.at(reservation);
  }
}

bool UndoBooks::CanReverse(const Key& roll) const {
  const Known& known = rolls_.at(roll);
  return host::RoundTo(Stock().at(known.fabric_lot), 2) >= host::RoundTo(known.kilograms, 2);
}

std::vector<UndoBooks::Key> UndoBooks::Rolls() const {
  std::vector<Key> keys;
  for (const auto& [key, known] : rolls_) keys.push_back(key);
  return keys;
}

UndoBooks::Figures UndoBooks::Items() const {
  Figures items;
  for (const auto& [item, quantity] : ordered_) items[item] = 0;
  for (const auto& [key, roll] : rolls_) items[roll.item] += roll.kilograms;
  return items;
}

UndoBooks::Figures UndoBooks::Stock() const {
  Figures stock = stock_;
  for (const auto& [key, roll] : rolls_) {
    stock[roll.fabric_lot] += roll.units;
    for (const auto& [lot, quantity] : roll.taken) stock[lot] -= quantity;
  }
  return stock;
}

UndoBooks::Figures UndoBooks::Consumed() const {
  Figures consumed;
  for (const auto& [reservation, quantity] : reserved_) consumed[reservation] = 0;
  for (const auto& [key, roll] : rolls_) {
    for (const auto& [lot, quantity] : roll.taken) {
      const auto found = consumed.find(key.first + ":" + lot);
      if (found != consumed.end()) found->second += quantity;
    }
  }
  return consumed;
}

UndoBooks::Figures UndoBooks::Reserved() const {
  Figures reserved = reserved_;
  for (const auto& [reservation, quantity] : Consumed()) reserved[reservation] -= quantity;
  return reserved;
}

std::map<std::string, std::string> UndoBooks::Closed() {
  std::map<std::string, std::string> closed;
  for (const Row& row : mill_.Rows(std::string("SELECT ") + kItem + " AS CHAVE, BAIXADA FROM {TECEL_ITEN}")) {
    closed[row.at("CHAVE").AsText()] = row.at("BAIXADA").AsText();
  }
  return closed;
}

void UndoBooks::Compare(const char* what, const Figures& expected, const Figures& actual) {
  std::set<std::string> keys;
  for (const auto& [key, value] : expected) keys.insert(key);
  for (const auto& [key, value] : actual) keys.insert(key);
  const auto of = [](const Figures& figures, const std::string& key) {
    const auto found = figures.find(key);
    return found == figures.end() ? 0 : found->second;
  };
  for (const std::string& key : keys) {
    const double wanted = of(expected, key);
    const double found = of(actual, key);
    if (std::abs(wanted - found) <= kTolerance) continue;
    differences_.push_back(std::string(what) + " of " + key + ": expected " + host::PointText(wanted) + ", found " +
                           host::PointText(found));
  }
}

void UndoBooks::CompareRows() {
  std::vector<std::string> rolls;
  std::vector<std::string> yarns;
  for (const auto& [key, roll] : rolls_) {
    rolls.push_back(roll.row);
    yarns.insert(yarns.end(), roll.yarns.begin(), roll.yarns.end());
  }
  if (ReadRows("SELECT * FROM {TECELB} ORDER BY NUMERO, ORDEM") != rolls) {
    differences_.emplace_back("the rolls are not those that remain");
  }
  if (ReadRows("SELECT * FROM {BAIXA_FIO} ORDER BY NUMERO, ORDEM, CODIGO, COR, DEPOSITO, LOTE") != yarns) {
    differences_.emplace_back("the yarn records are not those of the rolls that remain");
  }
}

std::vector<std::string> UndoBooks::Differences() {
  differences_.clear();
  CompareRows();
  Compare("QTDE_B", Items(), Read(std::string("SELECT ") + kItem + " AS CHAVE, QTDE_B AS VALOR FROM {TECEL_ITEN}"));
  Compare("stock", Stock(), Read(std::string("SELECT ") + kLot + " AS CHAVE, QTDE AS VALOR FROM {MAT_ITEN}"));
  Compare("consumed", Consumed(),
          Read(std::string("SELECT ") + kReservation + " AS CHAVE, QTDE_B AS VALOR FROM {MAT_RESERVA}"));
  Compare("reserved", Reserved(),
          Read(std::string("SELECT ") + kReservation + " AS CHAVE, QTDE AS VALOR FROM {MAT_RESERVA}"));
  Compare("average price", averages_,
          Read(std::string("SELECT ") + kLot + " AS CHAVE, PRECO_MED AS VALOR FROM {MAT_ITEN} WHERE COR = 'CR'"));
  if (Closed() != closed_) differences_.emplace_back("other items are closed than those that their rolls closed");
  return differences_;
}

}  // namespace test
