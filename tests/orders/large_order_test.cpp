// An order of two hundred items: what it costs, and that its figures hold whatever is done to it.
#include <algorithm>
#include <functional>
#include <map>
#include <random>

#include "order_mill.h"

namespace test {
namespace {

class LargeOrder : public OrderTest {
 protected:
  // Fabrics G0001 ... take yarns Z1 ... in turn, 50 % each of two; every yarn has `lots` lots.
  void Fill(int fabrics, int yarns, int lots) {
    mill_.Exec("EXECUTE BLOCK AS DECLARE I INTEGER = 1; DECLARE L INTEGER; DECLARE C VARCHAR(15); BEGIN WHILE (I <= " +
               std::to_string(yarns) +
               ") DO BEGIN C = 'Z' || I; INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, UNIDADE) VALUES (:C, :C, 'KG'); "
               "L = 1; WHILE (L <= " +
               std::to_string(lots) +
               ") DO BEGIN INSERT INTO {MAT_ITEN} (CODIGO, COR, DEPOSITO, LOTE, QTDE) VALUES (:C, 'CR', 'D1', 'L' || "
               ":L, 1000); L = L + 1; END I = I + 1; END END");
    mill_.Exec(
        "EXECUTE BLOCK AS DECLARE I INTEGER = 1; DECLARE C VARCHAR(15); BEGIN "
        "INSERT INTO {TECEL} (NUMERO, MALHARIA, SITUACAO) VALUES ('000900', 'M00001', 'A'); WHILE (I <= " +
        std::to_string(fabrics) +
        ") DO BEGIN C = 'G' || LPAD(I, 4, '0'); INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, UNIDADE, PESO) VALUES "
        "(:C, :C, 'KG', 1); "
        "INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, PERC, ORDEM, KG_ROLO) VALUES (:C, '01', 'Z' || "
        "(MOD(:I, " +
        std::to_string(yarns) +
        ") + 1), 'CR', 50, 1, 20); INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, PERC, ORDEM, KG_ROLO) "
        "VALUES (:C, '01', 'Z' || (MOD(:I + 1, " +
        std::to_string(yarns) +
        ") + 1), 'CR', 50, 2, 20); INSERT INTO {TECEL_ITEN} (NUMERO, CODIGO, COR, QTDE) VALUES ('000900', :C, '01', "
        "100); I = I + 1; END END");
  }

  std::size_t StatementsOf(const std::function<ActResult()>& act) {
    mill_.TakeStatements();
    EXPECT_EQ(act(), ActResult::kDone);
    EXPECT_EQ(mill_.Messages(), Lines());
    return mill_.TakeStatements().size();
  }
};

TEST_F(LargeOrder, StatementsOfALoadGrowWithItemsYarnsAndLotsAndNoFaster) {
  constexpr std::size_t kItems = 200;
  constexpr std::size_t kYarns = 6;
  constexpr std::size_t kLots = 5;
  Fill(kItems, kYarns, kLots);
  const std::size_t load = StatementsOf([this] { return Type("EdtNumero", "000900"); });
  EXPECT_EQ(Screen().TbItens.RecordCount(), kItems);
  EXPECT_EQ(Screen().TbFios.RecordCount(), kYarns);
  // An explosion for each fabric that brings a yarn not listed yet (the first brings two), one look at the stock per
  // yarn; per lot what others reserved and who delivered it. Six for the order itself, two looks at the log, and once
  // in the life of a connection the keys of the tables.
  EXPECT_EQ(load, (kYarns - 1) + kYarns + 2 * kYarns * kLots + 8 + 1);
  double total = 0;
  for (host::DatasetCursor yarn(Screen().TbFios); !yarn.Eof(); yarn.Next()) {
    total += yarn.FieldByName("Consumo").AsFloat();
  }
  EXPECT_NEAR(total, 100.0 * kItems, 1e-6);
}

TEST_F(LargeOrder, APrintoutTakesFewerStatementsThanALoad) {
  constexpr std::size_t kYarns = 6;
  Fill(200, kYarns, 5);
  const std::size_t load = StatementsOf([this] { return Type("EdtNumero", "000900"); });
  const auto before = mill_.Db().Stats().commits;
  const std::size_t print = StatementsOf([this] { return Click("BtnImprimir"); });
  EXPECT_LE(mill_.Db().Stats().commits - before, 1u);
  // An explosion for each fabric that brings a yarn not listed yet; is the order stored, is it ours, the order itself,
  // its compositions, its stitch patterns.
  EXPECT_EQ(print, (kYarns - 1) + 5);
  EXPECT_LT(print, load);
  const auto prints = mill_.Equipment().TakePrints();
  ASSERT_EQ(prints.size(), 1u);
  EXPECT_EQ(prints[0].data.at("QryRelatorio").size(), 200u);
  EXPECT_EQ(prints[0].data.at("TbFios").size(), kYarns);
  EXPECT_EQ(prints[0].data.at("TbRolos").size(), 1000u);
}

// More values than the engine takes in one list.
TEST_F(LargeOrder, StitchPatternsOfSixteenHundredFabricsArePrinted) {
  Fill(1600, 2, 1);
  for (const char* fabric : {"G0001", "G0999", "G1000", "G1001", "G1600"}) {
    mill_.Insert("RAPORT", {{"MATERIAL", fabric}, {"COR", "01"}, {"ORDEM", 1}, {"CODIGO", "Z1"}, {"COR_I", "CR"}});
  }
  ASSERT_EQ(Type("EdtNumero", "000900"), ActResult::kDone);
  EXPECT_EQ(Click("BtnImprimir"), ActResult::kDone);
  EXPECT_EQ(Errors(), Lines());
  const auto prints = mill_.Equipment().TakePrints();
  ASSERT_EQ(prints.size(), 1u);
  Lines fabrics;
  for (const auto& row : prints[0].data.at("QryRaport")) fabrics.push_back(row.at("MATERIAL").AsText());
  EXPECT_EQ(fabrics, (Lines{"G0001", "G0999", "G1000", "G1001", "G1600"}));
}

TEST_F(LargeOrder, StatementsOfASaveArePerItem) {
  Fill(200, 6, 5);
  Type("EdtNumero", "000900");
  const std::size_t save = StatementsOf([this] { return Click("BtnGravar"); });
  // Composition known, composition of the colour, rolls, insert; a dozen for the order itself, two to see that nobody
  // else changed it.
  EXPECT_LE(save, 4u * 200 + 14);
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {TECEL_ITEN} WHERE NUMERO = '000900'").AsInteger(), 200);
}

TEST_F(LargeOrder, WrittenOffAndReservedHoldAfterEverySave) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F1", "02", "60"}, {"FP", "01", "30"}});
  std::mt19937 random(20260310);
  const auto pick = [&random](int from, int to) { return std::uniform_int_distribution<int>(from, to)(random); };
  const std::vector<std::pair<const char*, const char*>> keys = {{"F1", "01"}, {"F1", "02"}, {"FP", "01"}};
  int rolls = 0;
  for (int round = 0; round < 25; ++round) {
    for (int i = pick(0, 3); i > 0; --i) {
      const auto& [code, colour] = keys[static_cast<std::size_t>(pick(0, 2))];
      Roll(number, code, colour, ++rolls, pick(1, 30000) / 1000.0);
    }
    Load(number);
    std::map<std::string, std::string> ticked;  // yarn, deposit and lot to quantity
    for (std::size_t yarn = 1; yarn <= Screen().TbFios.RecordCount(); ++yarn) {
      ASSERT_EQ(mill_.Desk().SelectRow(Screen().GrdFios, yarn), ActResult::kDone);
      for (std::size_t lot = 1; lot <= Screen().TbEstoque.RecordCount(); ++lot) {
        ASSERT_EQ(mill_.Desk().SelectRow(Screen().GrdEstoque, lot), ActResult::kDone);
        const int what = pick(0, 3);
        if (what == 0) mill_.Set(Screen(), "TbEstoque", {{"Sel", "N"}});
        if (what == 1) mill_.Set(Screen(), "TbEstoque", {{"Sel", "S"}, {"Qtde_Res", std::to_string(pick(0, 90))}});
        if (what == 2) mill_.Set(Screen(), "TbEstoque", {{"Sel", "S"}});
        mill_.Messages();
      }
    }
    for (host::DatasetCursor lot(Screen().TbEstoque); !lot.Eof(); lot.Next()) {
      if (lot.FieldByName("Sel").AsText() != "S") continue;
      ticked[lot.FieldByName("Codigo").AsText() + lot.FieldByName("Deposito").AsText() +
             lot.FieldByName("Lote").AsText()] = lot.FieldByName("Qtde_Res").AsText();
      EXPECT_LE(lot.FieldByName("Qtde_Res").AsFloat(), lot.FieldByName("Qtde").AsFloat() + 1e-9);
    }
    ASSERT_EQ(Click("BtnGravar"), ActResult::kDone) << round;
    EXPECT_EQ(mill_.Messages(), Lines()) << round;

    EXPECT_EQ(mill_
                  .Scalar("SELECT COUNT(*) FROM {TECEL_ITEN} I WHERE ABS(I.QTDE_B - COALESCE((SELECT SUM(B.QTDE) FROM "
                          "{TECELB} B WHERE B.NUMERO = I.NUMERO AND B.CODIGO = I.CODIGO AND B.COR = I.COR), 0)) > "
                          "0.0000001")
                  .AsInteger(),
              0)
        << round;
    std::map<std::string, std::string> stored;
    for (const Row& row : mill_.Rows("SELECT * FROM {MAT_RESERVA}")) {
      stored[row.at("CODIGO").AsText() + row.at("DEPOSITO").AsText() + row.at("LOTE").AsText()] =
          row.at("QTDE").AsText();
    }
    EXPECT_EQ(stored, ticked) << round;
  }
  EXPECT_GT(rolls, 20);
}

}  // namespace
}  // namespace test
