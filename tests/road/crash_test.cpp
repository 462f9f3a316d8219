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

constexpr const char* kTables[] = {"TECEL",     "TECEL_ITEN", "MAT_RESERVA",   "TECELB",
                                   "BAIXA_FIO", "MATERIAL",   "COMP_MATERIAL", "DEF_MOV"};

// All that the actions write, as text. Of ledger and log what does not depend on the moment.
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
  // An order with reserved yarn and one roll written off, with a defect, closed again: the state before the action.
  Crash() {
    {
      test::Mill mill;
      test::FillSmallMill(mill);
      mill.SetClock("2026-03-09 10:00:00");
      order_ = test::SaveOrder(mill, test::SmallMillOrder(200));
      host::Screen& screen = test::OpenWriteOff(mill, order_, "DF");
      EXPECT_EQ(test::ConfirmRoll(mill, screen, 20), host::ActResult::kDone);
      EXPECT_EQ(mill.Messages(), std::vector<std::string>{});
      mill.Insert("DEFEITO", {{"CODIGO", "FURO"}, {"DESCRICAO", "Furo"}});
      mill.Insert("DEF_MOV", {{"NUMERO", order_}, {"ARTIGO", "F1"}, {"ROLO", 1}, {"TIPO", "T"}, {"QUANT", 7}});
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

  std::vector<std::string> killed;  // the state that each kill left
  std::string after;
  for (int n = 1;; ++n) {
    Fresh();
    const test::Ended ended = test::Station({"die", GetParam(), copy_, order_, "DF", std::to_string(n)}).Wait();
    const std::string state = State(off);
    EXPECT_EQ(off, std::vector<std::string>{}) << "killed before statement " << n;
    if (!ended.killed) {
      ASSERT_EQ(ended.exit_code, 0) << ended.output;
      after = state;
      break;
    }
    killed.push_back(state);
    ASSERT_LT(n, 500);
  }
  ASSERT_NE(after, before) << "the action that nobody killed must have done something";
  EXPECT_GT(killed.size(), 8u);
  EXPECT_EQ(killed.front(), before);
  bool whole = false;
  for (std::size_t i = 0; i < killed.size(); ++i) {
    // Once durable it stays whole: what comes after the commit only reads.
    whole = whole || killed[i] == after;
    EXPECT_EQ(killed[i], whole ? after : before) << "killed before statement " << i + 1;
  }
  RecordProperty("statements", static_cast<int>(killed.size()));
}

INSTANTIATE_TEST_SUITE_P(Actions, Crash, testing::Values("roll", "order", "composition", "reversal", "defects"),
                         [](const auto& parameter) { return std::string(parameter.param); });

}  // namespace
