// No look-up reads a table from end to end, neither in a young database nor after years of work.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "app/mill/mill.h"
#include "app/mill/volume.h"
#include "mill/look_ups.h"
#include "mill/own_database.h"

namespace {

using test::OwnDatabase;

// The plan that the engine made for a statement; a second connection sees it among the prepared ones.
std::string PlanOf(OwnDatabase& own, std::string_view sql) {
  own.Db().Query(sql, {});
  const std::string text = own.Db().ReplaceNames(sql);
  const auto watcher = app::firebird::Database::Open(own.Options());
  const auto rows = watcher->Query("SELECT MON$SQL_TEXT AS TEXTO, MON$EXPLAINED_PLAN AS PLANO FROM MON$STATEMENTS", {});
  for (; !rows->Eof(); rows->Next()) {
    if (rows->FieldByName("TEXTO").AsText() == text) return rows->FieldByName("PLANO").AsText();
  }
  return {};
}

// What grows with every order. Registers of a handful of rows may be read whole.
const std::vector<std::string> kGrowing = {"TECEL",    "TECEL_ITEN", "TECELB",  "MAT_RESERVA",  "BAIXA_FIO",
                                           "MAT_ITEN", "MAT_MOV",    "DEF_MOV", "COMP_MATERIAL"};

std::size_t CountOf(const std::string& text, const std::string& piece) {
  std::size_t count = 0;
  for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) ++count;
  return count;
}

// Lines of the plan that read one of these tables from end to end; an index read in its order is none.
std::string ScansIn(const std::string& plan, const std::vector<std::string>& tables) {
  std::string scans;
  std::istringstream lines(plan);
  for (std::string line; std::getline(lines, line);) {
    if (line.find("Full Scan") == std::string::npos) continue;
    for (const auto& table : tables) {
      if (line.find("Table \"" + table + "_001\"") != std::string::npos) scans += line + '\n';
    }
  }
  return scans;
}

void ExpectNoScan(OwnDatabase& own, const std::vector<std::string>& tables) {
  for (const auto& look_up : test::LookUps()) {
    const std::string plan = PlanOf(own, look_up.sql);
    EXPECT_GT(CountOf(plan, "Index"), 0u) << look_up.what << '\n' << plan;
    EXPECT_EQ(ScansIn(plan, tables), "") << look_up.what << '\n' << plan;
  }
}

TEST(Plans, TheCheckItselfSeesAFullScan) {
  OwnDatabase own;
  const std::string plan = PlanOf(own, "SELECT 1 FROM {TECELB} WHERE QTDE > 3");
  EXPECT_NE(ScansIn(plan, kGrowing), "") << plan;
}

TEST(Plans, NoLookUpScansATableInAYoungDatabase) {
  OwnDatabase own;
  ExpectNoScan(own, kGrowing);
}

class PlansWithVolume : public testing::Test {
 protected:
  PlansWithVolume() : own_(OwnDatabase::Start::kNoFile) {
    app::mill::CreateDemo(own_.Options(), "demo");
    app::mill::VolumeOptions options;
    options.rolls = 3000;
    options.rolls_per_order = 60;
    options.last_day = host::Date::FromIso("2026-11-20").value();
    app::mill::GenerateVolumeFast(own_.Options(), options);
  }
  OwnDatabase own_;
};

TEST_F(PlansWithVolume, NoLookUpScansAGrowingTable) {
  std::vector<std::string> tables = kGrowing;
  tables.push_back("MATERIAL");
  ExpectNoScan(own_, tables);
  // The engine keeps the statistics of the young database until it is told to look again; either must do.
  for (const auto& index : own_.Column("SELECT TRIM(RDB$INDEX_NAME) FROM RDB$INDICES WHERE RDB$SYSTEM_FLAG = 0")) {
    own_.Exec("SET STATISTICS INDEX " + index);
  }
  ExpectNoScan(own_, tables);
}

}  // namespace
