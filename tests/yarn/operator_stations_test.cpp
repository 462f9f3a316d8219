// What other stations do while the operator thinks, and how the screen ends.
#include <algorithm>

#include "host/errors.h"
#include "yarn/operator_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

TEST_F(Operator, RollNumberIsReadWhenTheOperatorIsDone) {
  FreeOrder();
  Load();
  ASSERT_EQ(RollOfTen([this](host::Screen& yarn) {
              Take(yarn, "L1", "D1");
              // Another station writes rolls while the operator thinks.
              mill_.Insert("TECELB", {{"NUMERO", kOrder}, {"CODIGO", "F1"}, {"COR", "01"}, {"ORDEM", 4}, {"QTDE", 0}});
              TakeAll(yarn);
            }),
            ActResult::kDone);
  EXPECT_EQ(Rolls().back().at("ORDEM").AsInteger(), 5);
  EXPECT_EQ(Consumption().front().at("ORDEM").AsInteger(), 5);
}

TEST_F(Operator, LotEmptiedMeanwhileIsRefusedByTheStockAndLeavesNothing) {
  FreeOrder();
  Load();
  EXPECT_EQ(RollOfTen([this](host::Screen& yarn) {
              Take(yarn, "L1", "D1");
              const auto issue = mill_.App().NewEstoque();
              issue->Material = "Y2";
              issue->Cor = "CR";
              issue->Deposito = "D1";
              issue->Lote = "L1";
              issue->Quantidade = 80;
              issue->Saida = true;
              issue->Data = host::Date::FromParts(2026, 3, 10).value();
              issue->MovimentaEstoqueMaterial(true, true);
              mill_.Db().MakeDurable();
              Take(yarn, "L1", "D1");
              EXPECT_TRUE(yarn.CloseRequested());
            }),
            ActResult::kRefused);
  const auto boxes = Boxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].title, "Selecione os consumos");
  EXPECT_EQ(boxes[0].icon, host::Icon::kInformation);
  EXPECT_TRUE(boxes[0].text.starts_with("Erro na baixa dos fios\n")) << boxes[0];
  EXPECT_EQ(boxes[1], Notice("Baixa Cancelada."));
  EXPECT_TRUE(Rolls().empty());
  EXPECT_TRUE(Consumption().empty());
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
  ExpectBooksBalance();
}

TEST_F(Operator, TheYarnScreenAloneHarmsNothing) {
  host::Screen& yarn = mill_.Open("TFmMovBaiFio");
  EXPECT_EQ(mill_.Desk().Check(ForAll(yarn), true), ActResult::kDone);
  EXPECT_EQ(mill_.Type(yarn, "EdtDeposito", "D1"), ActResult::kDone);
  EXPECT_FALSE(CanTake(yarn));
  EXPECT_EQ(mill_.Click(yarn, "BitBtn2"), ActResult::kDone);
  EXPECT_EQ(mill_.Desk().Find("fmMovBaiFio"), nullptr);
  EXPECT_EQ(Boxes(), BoxList());
}

// A roll takes the open screen for itself; what was typed there before is not meant for it.
TEST_F(Operator, TheYarnScreenLeftOpenWithFiltersServesARoll) {
  host::Screen& yarn = mill_.Open("TFmMovBaiFio");
  ASSERT_EQ(mill_.Desk().Check(ForAll(yarn), true), ActResult::kDone);
  ASSERT_EQ(mill_.Type(yarn, "EdtDeposito", "DF"), ActResult::kDone);
  ASSERT_EQ(mill_.Type(yarn, "EdtLote", "L9"), ActResult::kDone);
  ReservedOrder();
  Load();
  EXPECT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Rolls().size(), 1u);
  EXPECT_EQ(Remembered().RecordCount(), 0u);
  EXPECT_EQ(mill_.Desk().Find("fmMovBaiFio"), nullptr);
  ExpectBooksBalance();
}

TEST_F(Operator, TheOrderIsHeldBeforeTheReservationsAndAgainBeforeTheRollsNumber) {
  FreeOrder();
  Load();
  Type("EdtQtde", "10");
  mill_.TakeStatements();
  std::vector<std::string> before;
  AtYarnScreen([&](host::Screen& yarn) {
    before = mill_.TakeStatements();
    TakeAll(yarn);
  });
  ASSERT_EQ(Confirm(), ActResult::kDone);
  const auto place = [](const std::vector<std::string>& sent, std::string_view text) {
    const auto found =
        std::find_if(sent.begin(), sent.end(), [text](const auto& sql) { return sql.find(text) != std::string::npos; });
    return found - sent.begin();
  };
  EXPECT_LT(place(before, "WITH LOCK"), place(before, "SELECT CODIGO FROM TECEL_ITEN"));
  const auto after = mill_.TakeStatements();
  EXPECT_LT(place(after, "WITH LOCK"), place(after, "SELECT MAX(ORDEM)"));
}

TEST_F(Operator, WithoutOperatorTheOrderIsHeldOnce) {
  ReservedOrder();
  Load();
  Type("EdtQtde", "10");
  mill_.TakeStatements();
  ASSERT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(mill_.TakeStatements("WITH LOCK").size(), 1u);
}

TEST_F(Operator, AFailureAtTheEndClosesTheUsedUpScreen) {
  FreeOrder();
  Load();
  const auto heard = mill_.Db().BeforeStatement;
  EXPECT_EQ(RollOfTen([&, this](host::Screen& yarn) {
              mill_.Db().BeforeStatement = [heard](std::string_view sql) {
                heard(sql);
                if (sql.find("MAX(ORDEM)") != std::string_view::npos) throw host::DatabaseError("falha", 0, "");
              };
              Take(yarn, "L1", "D1");
              EXPECT_FALSE(yarn.CloseRequested());
              Take(yarn, "L1", "D1");
              mill_.Db().BeforeStatement = heard;
              EXPECT_TRUE(yarn.CloseRequested());
            }),
            ActResult::kRefused);
  EXPECT_EQ(Boxes(), (BoxList{{"Selecione os consumos", "falha", host::Icon::kError}, Notice("Baixa Cancelada.")}));
  EXPECT_TRUE(Rolls().empty());
  ExpectBooksBalance();
}

}  // namespace
}  // namespace test
