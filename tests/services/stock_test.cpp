// Movements of stock: ledger, balance, average price.
#include "app/services/stock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <thread>

#include "host/errors.h"
#include "host/kit/desk.h"
#include "support/mill.h"

namespace {

struct Move {
  std::string material = "Y1";
  std::string lot = "L9";
  double quantity = 1;
  bool out = false;
  double price = 0;
  std::string place = {};
  int roll = 0;
  bool undoes = false;
};

void Fill(host::TEstoque& movement, const Move& move) {
  movement.Material = move.material;
  movement.Cor = "CR";
  movement.Lote = move.lot;
  movement.Deposito = "D1";
  movement.Documento = "000001";
  movement.TipoDocumento = "BT";
  movement.Ordem = move.roll;
  movement.Estorno = move.undoes;
  movement.Cliente = "M00001";
  movement.Maquina = "MQ1";
  movement.Funcionario = "P1";
  movement.Data = host::Date::FromParts(2026, 3, 10).value();
  movement.Quantidade = move.quantity;
  movement.Saida = move.out;
  movement.Usuario = "ADMIN";
  movement.PrecoUnitario = move.price;
  movement.Custo = move.price;
  movement.Local = move.place;
  movement.TipoMovimento = movement.CodigoTipoMovEstoque(move.out ? host::kMovementOutbound : host::kMovementInbound);
}

class Stock : public testing::Test {
 protected:
  void Run(const Move& move) {
    const auto movement = mill_.App().NewEstoque();
    Fill(*movement, move);
    movement->MovimentaEstoqueMaterial(true, true);
  }
  void Enter(double quantity, double price = 0, const std::string& place = {}) {
    Run({.quantity = quantity, .price = price, .place = place});
  }
  void Issue(double quantity, double price = 0) { Run({.quantity = quantity, .out = true, .price = price}); }
  test::Row Lot() {
    const auto rows = mill_.Rows("SELECT * FROM {MAT_ITEN} WHERE CODIGO = 'Y1' AND LOTE = 'L9'");
    return rows.empty() ? test::Row() : rows.front();
  }
  double Balance() { return Lot().at("QTDE").AsFloat(); }
  double Average() { return Lot().at("PRECO_MED").AsFloat(); }
  std::int64_t LedgerRows() { return mill_.Scalar("SELECT COUNT(*) FROM {MAT_MOV}").AsInteger(); }
  std::string Refusal(const Move& move) {
    try {
      Run(move);
    } catch (const host::DatabaseError& error) {
      EXPECT_EQ(error.Code(), 0);
      return error.what();
    }
    return "";
  }

  test::Mill mill_;
};

TEST_F(Stock, AnEntryOpensTheLot) {
  Enter(12.5, 20, "A1");
  EXPECT_DOUBLE_EQ(Balance(), 12.5);
  EXPECT_DOUBLE_EQ(Average(), 20);
  EXPECT_EQ(Lot().at("LOCAL").AsText(), "A1");
}

TEST_F(Stock, TheLedgerKeepsEverythingItWasGiven) {
  Enter(12.5, 20, "A1");
  const auto rows = mill_.Rows("SELECT * FROM {MAT_MOV}");
  ASSERT_EQ(rows.size(), 1u);
  const auto text = [&](const char* column) { return rows[0].at(column).AsText(); };
  EXPECT_EQ(text("CODIGO"), "Y1");
  EXPECT_EQ(text("COR"), "CR");
  EXPECT_EQ(text("LOTE"), "L9");
  EXPECT_EQ(text("DEPOSITO"), "D1");
  EXPECT_EQ(text("DOCUMENTO"), "000001");
  EXPECT_EQ(text("TIPO_DOC"), "BT");
  EXPECT_EQ(text("CLIENTE"), "M00001");
  EXPECT_EQ(text("MAQUINA"), "MQ1");
  EXPECT_EQ(text("FUNCIONARIO"), "P1");
  EXPECT_EQ(text("DATA"), "10/03/2026");
  EXPECT_EQ(text("QTDE"), "12.5");
  EXPECT_EQ(text("SAIDA"), "N");
  EXPECT_EQ(text("USUARIO"), "ADMIN");
  EXPECT_EQ(text("PRECO"), "20");
  EXPECT_EQ(text("CUSTO"), "20");
  EXPECT_EQ(text("LOCAL"), "A1");
  EXPECT_EQ(text("BAIXADO"), "0");
  EXPECT_EQ(text("ATIVO"), "1");
  EXPECT_EQ(text("COMPLEMENTO"), "");
  EXPECT_NE(text("TIPO_MOV"), "");
  EXPECT_EQ(text("ORDEM"), "0");
  EXPECT_EQ(text("ESTORNO"), "N");
}

TEST_F(Stock, AMovementNamesItsRollAndWhatItTakesBack) {
  Run({.quantity = 20.5, .price = 12.25, .roll = 3});
  Run({.quantity = 4, .roll = 12});
  Run({.quantity = 20.5, .out = true, .price = 12.25, .roll = 3, .undoes = true});
  const auto rows = mill_.App().GetFuncoes().MovimentosDaPeca("000001", 3);
  ASSERT_EQ(rows.size(), 2u);
  const auto movement = mill_.App().NewEstoque();
  EXPECT_EQ(rows[0].movement_type, movement->CodigoTipoMovEstoque(host::kMovementInbound));
  EXPECT_EQ(rows[0].material, "Y1");
  EXPECT_EQ(rows[0].colour, "CR");
  EXPECT_EQ(rows[0].lot, "L9");
  EXPECT_EQ(rows[0].deposit, "D1");
  EXPECT_DOUBLE_EQ(rows[0].quantity, 20.5);
  EXPECT_DOUBLE_EQ(rows[0].price, 12.25);
  EXPECT_FALSE(rows[0].out);
  EXPECT_FALSE(rows[0].undoes);
  EXPECT_EQ(rows[1].movement_type, movement->CodigoTipoMovEstoque(host::kMovementOutbound));
  EXPECT_TRUE(rows[1].out);
  EXPECT_TRUE(rows[1].undoes);
  const std::string written = mill_.Scalar("SELECT CAST(MIN(MOMENTO) AS VARCHAR(30)) FROM {MAT_MOV}").AsText();
  EXPECT_EQ(rows[0].moment.ToIso(), written.substr(0, 19));
}

TEST_F(Stock, ARollWithoutMovementsHasNone) {
  host::Funcoes& services = mill_.App().GetFuncoes();
  Run({.quantity = 5});
  // Before movements named their roll, and another kind of document of the same number.
  mill_.Exec(
      "INSERT INTO {MAT_MOV} (CODIGO, COR, LOTE, DEPOSITO, DOCUMENTO, TIPO_DOC, QTDE, SAIDA) "
      "VALUES ('Y1', 'CR', 'L9', 'D1', '000001', 'BT', 7, 'N')");
  mill_.Exec(
      "INSERT INTO {MAT_MOV} (CODIGO, COR, LOTE, DEPOSITO, DOCUMENTO, TIPO_DOC, QTDE, SAIDA, ORDEM) "
      "VALUES ('Y1', 'CR', 'L9', 'D1', '000001', 'NF', 7, 'N', 3)");
  EXPECT_TRUE(services.MovimentosDaPeca("000001", 3).empty());
  EXPECT_TRUE(services.MovimentosDaPeca("000001", 0).empty());
  EXPECT_TRUE(services.MovimentosDaPeca("", 1).empty());
}

TEST_F(Stock, EntriesAverageThePriceAndIssuesLeaveIt) {
  Enter(10, 20);
  Enter(30, 24);
  EXPECT_DOUBLE_EQ(Average(), 23);
  Issue(5, 99);
  EXPECT_DOUBLE_EQ(Average(), 23);
  EXPECT_DOUBLE_EQ(Balance(), 35);
  Enter(5);
  EXPECT_DOUBLE_EQ(Average(), 23);
  Issue(40);
  EXPECT_DOUBLE_EQ(Balance(), 0);
  EXPECT_DOUBLE_EQ(Average(), 23);
  Enter(2, 10);
  EXPECT_DOUBLE_EQ(Average(), 10);
}

TEST_F(Stock, OnlyAnEntryWithAPlaceMovesThePlace) {
  Enter(10, 20, "A1");
  Run({.quantity = 1, .out = true, .place = "B2"});
  EXPECT_EQ(Lot().at("LOCAL").AsText(), "A1");
  Enter(1);
  EXPECT_EQ(Lot().at("LOCAL").AsText(), "A1");
  Enter(1, 0, "B2");
  EXPECT_EQ(Lot().at("LOCAL").AsText(), "B2");
}

TEST_F(Stock, AnIssueBelowTheBalanceIsRefusedWhole) {
  Enter(10.5, 20);
  EXPECT_EQ(Refusal({.quantity = 12, .out = true}),
            "Saldo de estoque insuficiente: material Y1, cor CR, lote L9, depósito D1, saldo 10,5, quantidade 12.");
  EXPECT_DOUBLE_EQ(Balance(), 10.5);
  EXPECT_EQ(LedgerRows(), 1);
}

TEST_F(Stock, ALotThatDoesNotExistHasNoBalance) {
  EXPECT_NE(Refusal({.quantity = 1, .out = true}).find("saldo 0, quantidade 1."), std::string::npos);
  EXPECT_TRUE(Lot().empty());
  EXPECT_EQ(LedgerRows(), 0);
}

// What a reversal takes out exactly may exceed by a hundredth what it compared at two decimals.
TEST_F(Stock, ABalanceMayEndOneHundredthBelowNothing) {
  Enter(5.55, 20);
  Issue(5.56);
  EXPECT_NEAR(Balance(), -0.01, 1e-9);
  EXPECT_NE(Refusal({.quantity = 0.001, .out = true}), "");
  Enter(10.001, 20);
  EXPECT_DOUBLE_EQ(Average(), 20);
  EXPECT_NEAR(Balance(), 9.991, 1e-9);
  EXPECT_NE(Refusal({.quantity = 10.001001, .out = true}), "");
  Issue(10.001);
  EXPECT_NEAR(Balance(), -0.01, 1e-9);
}

TEST_F(Stock, QuantitiesThatAreNoneAreRefused) {
  Enter(10, 20);
  for (const double quantity : {0.0, -3.0, 1e-9, std::nan(""), std::numeric_limits<double>::infinity()}) {
    for (const bool out : {false, true}) {
      const std::string refusal = Refusal({.quantity = quantity, .out = out});
      EXPECT_NE(refusal.find("Quantidade inválida"), std::string::npos) << quantity;
      EXPECT_NE(refusal.find("saldo 10,"), std::string::npos) << refusal;
    }
  }
  EXPECT_NE(Refusal({.quantity = 1, .price = std::nan("")}).find("Preço inválido"), std::string::npos);
  EXPECT_DOUBLE_EQ(Balance(), 10);
  EXPECT_EQ(LedgerRows(), 1);
}

TEST_F(Stock, AMovementThatFailsHalfWayLeavesNothing) {
  Enter(10, 20);
  const auto movement = mill_.App().NewEstoque();
  Fill(*movement, {.quantity = 3, .out = true});
  movement->Complemento = std::string(150, 'x');  // too long for the ledger, which is written after the balance
  EXPECT_THROW(movement->MovimentaEstoqueMaterial(true, true), host::DatabaseError);
  mill_.Db().CommitRetaining();
  EXPECT_DOUBLE_EQ(Balance(), 10);
  EXPECT_EQ(LedgerRows(), 1);
}

TEST_F(Stock, BalanceAndLedgerCanMoveAlone) {
  const auto movement = mill_.App().NewEstoque();
  Fill(*movement, {.quantity = 3});
  movement->MovimentaEstoqueMaterial(true, false);
  EXPECT_DOUBLE_EQ(Balance(), 3);
  EXPECT_EQ(LedgerRows(), 0);
  movement->MovimentaEstoqueMaterial(false, true);
  EXPECT_DOUBLE_EQ(Balance(), 3);
  EXPECT_EQ(LedgerRows(), 1);
}

TEST_F(Stock, AMovementIsUndoneWithItsAction) {
  mill_.Desk().Run("ação", [&] {
    Enter(10, 20);
    throw host::InputError("falha depois do movimento");
  });
  EXPECT_TRUE(Lot().empty());
  EXPECT_EQ(LedgerRows(), 0);
}

TEST_F(Stock, AMovementIsOneStatement) {
  Enter(10, 20);
  mill_.TakeStatements();
  Issue(1);
  EXPECT_EQ(mill_.TakeStatements().size(), 1u);
}

TEST_F(Stock, MovementTypesHaveTheirCodes) {
  const auto movement = mill_.App().NewEstoque();
  EXPECT_NE(movement->CodigoTipoMovEstoque(7), movement->CodigoTipoMovEstoque(15));
  EXPECT_THROW(movement->CodigoTipoMovEstoque(3), host::InputError);
}

// Whatever is moved: the balance is the ledger's sum, never below the tolerance, and the average follows its formula.
TEST_F(Stock, RandomMovementsKeepTheBooks) {
  std::mt19937 random(20260310);
  std::uniform_int_distribution<int> grams(1, 60000);
  double balance = 0;
  double average = 0;
  int refused = 0;
  for (int i = 0; i < 300; ++i) {
    const double quantity = grams(random) / 1000.0;
    const bool out = random() % 3 != 0;
    const double price = random() % 3 == 0 ? 0 : 10 + static_cast<double>(random() % 1000) / 100;
    const bool fits = !out || balance - quantity > -0.0100005;
    const std::string refusal = Refusal({.quantity = quantity, .out = out, .price = price});
    ASSERT_EQ(refusal.empty(), fits) << refusal << " at " << i;
    if (!fits) {
      ++refused;
      continue;
    }
    if (!out && price > 0) {
      average = balance <= 0 ? price : (balance * average + quantity * price) / (balance + quantity);
    }
    balance = std::round((balance + (out ? -quantity : quantity)) * 1e6) / 1e6;
    ASSERT_NEAR(Balance(), balance, 1e-7) << i;
    ASSERT_NEAR(Average(), average, 1e-7) << i;
  }
  EXPECT_GT(refused, 10);
  const double ledger = mill_.Scalar("SELECT SUM(IIF(SAIDA = 'S', -QTDE, QTDE)) FROM {MAT_MOV}").AsFloat();
  EXPECT_NEAR(ledger, balance, 1e-6);
}

// Two stations on one lot, opening it both: nothing is lost and nothing spent twice.
TEST_F(Stock, TwoStationsShareALot) {
  std::string failures[2];
  int issued[2] = {0, 0};
  std::vector<std::thread> stations;
  for (std::size_t station = 0; station < 2; ++station) {
    stations.emplace_back([&, station] {
      try {
        app::firebird::ConnectOptions options;
        options.database = mill_.Path();
        const auto database = app::firebird::Database::Open(options);
        for (int i = 0; i < 80; ++i) {
          const auto movement = std::make_unique<app::services::StockMovement>(*database);
          Fill(*movement, {.quantity = i < 40 ? 1.0 : 1.5, .out = i >= 40, .price = 10});
          try {
            movement->MovimentaEstoqueMaterial(true, true);
            if (i >= 40) ++issued[station];
          } catch (const host::DatabaseError& error) {
            if (error.Code() != 0) throw;  // the lack of stock is expected, nothing else
          }
          database->CommitRetaining();
        }
      } catch (const std::exception& error) {
        failures[station] = error.what();
      }
    });
  }
  for (auto& station : stations) station.join();
  EXPECT_EQ(failures[0], "");
  EXPECT_EQ(failures[1], "");
  EXPECT_NEAR(Balance(), 80 - 1.5 * (issued[0] + issued[1]), 1e-6);
  EXPECT_GE(Balance(), -0.0100001);
  EXPECT_LT(Balance(), 1.5);
  const double ledger = mill_.Scalar("SELECT SUM(IIF(SAIDA = 'S', -QTDE, QTDE)) FROM {MAT_MOV}").AsFloat();
  EXPECT_NEAR(ledger, Balance(), 1e-6);
}

}  // namespace
