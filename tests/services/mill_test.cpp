// The mill that all other tests start from.
#include "support/mill.h"

#include <gtest/gtest.h>

namespace {

TEST(Mill, StartsWithStructureAndAdministratorOnly) {
  test::Mill mill;
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {MATERIAL}").AsInteger(), 0);
  EXPECT_EQ(mill.App().GetFuncoes().vUsuarioCodigo(), "ADMIN");
}

TEST(Mill, SmallMillBalancesItsBooks) {
  test::Mill mill;
  test::FillSmallMill(mill);
  EXPECT_DOUBLE_EQ(mill.Scalar("SELECT SUM(QTDE) FROM {MAT_ITEN} WHERE CODIGO = 'Y1'").AsFloat(), 180);
  EXPECT_TRUE(
      mill.Rows(R"(SELECT CODIGO FROM {MAT_ITEN} I WHERE QTDE <> COALESCE((SELECT SUM(IIF(SAIDA = 'S', -QTDE, QTDE))
    FROM {MAT_MOV} M WHERE M.CODIGO = I.CODIGO AND M.COR = I.COR AND M.DEPOSITO = I.DEPOSITO AND M.LOTE = I.LOTE), 0))")
          .empty());
}

}  // namespace
