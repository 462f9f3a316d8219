// What reversals and defects leave in the books, and what they must not.
#include <tuple>

#include "books_mill.h"

namespace test {
namespace {

using Lines = std::vector<std::string>;

class BooksAfterReversals : public BooksTest {
 protected:
  /// Fabric of a roll in, and out again by its weight when it is taken back.
  void InAndOut(const char* fabric, const char* lot, double units, double kilograms) {
    Move("000001", fabric, "01", "DF", lot, units, false);
    Move("000001", fabric, "01", "DF", lot, kilograms, true);
  }
  void Defect(const char* order, int roll, const char* fabric, const char* kind) {
    mill_.Insert(
        "DEF_MOV",
        {{"NUMERO", order}, {"ROLO", roll}, {"ARTIGO", fabric}, {"TIPO", kind}, {"CODIGO", "FURO"}, {"QUANT", 2.5}});
  }
};

TEST_F(BooksAfterReversals, MetresTakenBackByWeightLeaveTheirDifference) {
  Order("000001", "FM");
  InAndOut("FM", "0000011", 100, 25);
  EXPECT_EQ(Check(), Lines{});
  // In a lot shared with rolls that remain, as often as it happens.
  Roll({.number = 2, .fabric = "FM", .quantity = 10, .stocked = 40, .lot = "000000", .yarns = {}});
  for (const double metres : {40.0, 12.4, 100.0}) InAndOut("FM", "000000", metres, metres / 4);
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksAfterReversals, PiecesHeavierThanAKilogramTakeMoreThanTheyBrought) {
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 1.5 WHERE CODIGO = 'FP'");
  Order("000001", "FP");
  Roll({.number = 2, .fabric = "FP", .quantity = 30, .stocked = 20, .lot = "000000", .yarns = {}});
  InAndOut("FP", "000000", 10, 15);
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksAfterReversals, OfKilogramsLeaveNothing) {
  Order("000001");
  InAndOut("F1", "0000011", 20, 20);
  EXPECT_EQ(Check(), Lines{});
  Move("000001", "F1", "01", "DF", "0000012", 20, false);
  Move("000001", "F1", "01", "DF", "0000012", 19, true);
  EXPECT_EQ(Check(), Lines{"Entrada de malha difere das peças: ordem 000001, malha F1, cor 01, depósito DF, lote "
                           "0000012: peças 0, entradas 1."});
}

TEST_F(BooksAfterReversals, AnotherDifferenceIsStillTold) {
  Order("000001", "FM");
  Move("000001", "FM", "01", "DF", "0000011", 101, false);
  Move("000001", "FM", "01", "DF", "0000011", 25, true);
  // A reversal whose entry is missing.
  Roll({.number = 2, .fabric = "FM", .quantity = 10, .stocked = 40, .yarns = {}});
  Move("000001", "FM", "01", "DF", "0000012", 10, true);
  EXPECT_EQ(Check(), (Lines{"Entrada de malha difere das peças: ordem 000001, malha FM, cor 01, depósito DF, lote "
                            "0000011: peças 0, entradas 76.",
                            "Peça sem entrada no estoque: ordem 000001, malha FM, cor 01, depósito DF, lote 0000012, "
                            "peça 2: 1 peça, 0 entradas."}));
}

TEST_F(BooksAfterReversals, YarnByTheMetreIsNotExcused) {
  mill_.Exec("UPDATE {MATERIAL} SET UNIDADE = 'MT', PESO = 0.25 WHERE CODIGO = 'Y1'");
  Order("000001");
  Move("000001", "Y1", "CR", "D1", "L1", 20, true);
  Move("000001", "Y1", "CR", "D1", "L1", 80, false);
  EXPECT_EQ(Check(), Lines{"Saída de fio difere das baixas: ordem 000001, fio Y1, cor CR, depósito D1, lote L1: "
                           "baixas 0, saídas -60."});
}

// --- defects -----------------------------------------------------------------------------------------------------

TEST_F(BooksAfterReversals, DefectsOfRollsAndOfLotsBalance) {
  Order("000001");
  Roll({});
  Roll({.number = 3});
  Defect("000001", 1, "F1", "T");
  Defect("000001", 1, "F1", "T");
  Defect("000001", 3, "F1", "T");
  Defect("000009", 7, "F1", "D");
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksAfterReversals, DefectsOfARollThatIsGoneAreTold) {
  Order("000001");
  Roll({});
  for (const auto& [order, roll, fabric] : {std::tuple{"000001", 2, "F1"}, {"000001", 1, "F2"}, {"000002", 1, "F1"}}) {
    Defect(order, roll, fabric, "T");
  }
  EXPECT_EQ(Check(), (Lines{"Defeito sem a sua peça: ordem 000001, peça 1, malha F2, defeito FURO: 2,5.",
                            "Defeito sem a sua peça: ordem 000001, peça 2, malha F1, defeito FURO: 2,5.",
                            "Defeito sem a sua peça: ordem 000002, peça 1, malha F1, defeito FURO: 2,5."}));
}

}  // namespace
}  // namespace test
