// A process killed at any statement of an action leaves the action whole or absent.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/books/check.h"
#include "road/processes.h"
#include "support/mill.h"
#include "support/road.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kTables[] = {"TECEL",     "TECEL_ITEN", "MAT_RESERVA",  "TECELB",
                                   "BAIXA_FIO", "MATERIAL",   "COMP_MATERIAL"};

// All that the three actions write, as text. Of ledger and log what does not depend on the moment.
std::string Everything(test::Mill& mill) {
  std::string all;
  const auto add = [&](const std::string& sql) {
    for (const auto& row : mill.Rows(sql)) {
      for (const auto& [name, value] : row) all += name + "=" + value.AsText() + ";";
      all += '\n';
    }
  };
  for (const std::string table : kTables) add("SELECT * FROM {" + table + "} ORDER BY 1, 2, 3");
  add("SELECT CODIGO, COR, DEPOSITO, LOTE, QTDE, PRECO_MED, LOCAL FROM {MAT_ITEN} ORDER BY 1, 2, 3, 4");
  add("SELECT CODIGO, COR, LOTE, DEPOSITO, DOCUMENTO, QTDE, SAIDA, PRECO FROM {MAT_MOV} ORDER BY ID");
  add("SELECT ASSUNTO, TEXTO FROM TEC_LOG ORDER BY ID");
  return all;
}

class Crash : public testing::TestWithParam<const char*> {
 protected:
  // An order with reserved yarn and one roll written off, closed again: the state before the action.
  Crash() {
    {
      test::Mill mill;
      test::FillSmallMill(mill);
      mill.SetClock("2026-03-09 10:00:00");
      order_ = test::SaveOrder(mill, test::SmallMillOrder(200));
      host::Screen& screen = test::OpenWriteOff(mill, order_, "DF");
      EXPECT_EQ(test::ConfirmRoll(mill, screen, 20), host::ActResult::kDone);
      EXPECT_EQ(mill.Messages(), std::vector<std::string>{});
      base_ = mill.Path() + ".base";
      mill.Db().MakeDurable();
      fs::copy_file(mill.Path(), base_, fs::copy_options::overwrite_existing);
    }
    copy_ = base_ + ".copy.fdb";
  }
  ~Crash() override {
    fs::remove(base_);
    Forget();
  }

  void Forget() {
    fs::remove(copy_);
    fs::remove_all(copy_ + ".lock");
  }
  void Fresh() {
    Forget();
    fs::copy_file(base_, copy_);
  }
  std::string State(std::vector<std::string>& off) {
    test::Mill::Options options;
    options.database = copy_;
    test::Mill mill(options);
    off = app::books::CheckBooks(mill.Db());
    return Everything(mill);
  }

  std::string order_;
  std::string base_;
  std::string copy_;
};

TEST_P(Crash, LeavesTheActionWholeOrAbsent) {
  std::vector<std::string> off;
  Fresh();
  const std::string before = State(off);
  ASSERT_EQ(off, std::vector<std::string>{});

  int killed = 0;
  std::string last;
  for (int n = 1;; ++n) {
    Fresh();
    const test::Ended ended = test::Station({"die", GetParam(), copy_, order_, "DF", std::to_string(n)}).Wait();
    last = State(off);
    EXPECT_EQ(off, std::vector<std::string>{}) << "killed before statement " << n;
    if (!ended.killed) {
      ASSERT_EQ(ended.exit_code, 0) << ended.output;
      break;
    }
    ++killed;
    EXPECT_EQ(last, before) << "killed before statement " << n;
    ASSERT_LT(n, 500);
  }
  EXPECT_NE(last, before) << "the action that nobody killed must have done something";
  EXPECT_GT(killed, 8);
  RecordProperty("statements", killed);
}

INSTANTIATE_TEST_SUITE_P(Actions, Crash, testing::Values("roll", "order", "composition"),
                         [](const auto& parameter) { return std::string(parameter.param); });

}  // namespace
