// A mill's database from nothing, the demonstration mill in it, and years of volume on top.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "app/books/check.h"
#include "app/embedded.h"
#include "app/firebird/migrations.h"
#include "app/mill/mill.h"
#include "app/mill/volume.h"
#include "app/services/passwords.h"
#include "app/tables/import_rules.h"
#include "host/errors.h"
#include "mill/own_database.h"

namespace {

using test::OwnDatabase;
using Texts = std::vector<std::string>;

TEST(Init, MakesADatabaseWithAnAdministratorUnderHisPassword) {
  OwnDatabase own(OwnDatabase::Start::kNoFile);
  own.Adopt(app::mill::InitDatabase(own.Options(), "tear-32"));
  EXPECT_EQ(app::firebird::SchemaVersion(own.Db()), static_cast<int>(app::SchemaFiles().size()));
  EXPECT_TRUE(app::services::CheckPassword(own.Db(), "ADMIN", "tear-32"));
  EXPECT_FALSE(app::services::CheckPassword(own.Db(), "ADMIN", "tear-33"));
  EXPECT_FALSE(app::services::CheckPassword(own.Db(), "ADMIN", ""));
  EXPECT_FALSE(app::services::CheckPassword(own.Db(), "OUTRO", "tear-32"));
  EXPECT_EQ(own.Scalar("SELECT SENHA FROM TEC_USUARIO").AsText().find("tear"), std::string::npos);
  EXPECT_EQ(own.Scalar("SELECT COUNT(*) FROM {MATERIAL}").AsInteger(), 0);

  app::services::SetPassword(own.Db(), "ADMIN", "nova");
  EXPECT_TRUE(app::services::CheckPassword(own.Db(), "ADMIN", "nova"));
  EXPECT_FALSE(app::services::CheckPassword(own.Db(), "ADMIN", "tear-32"));
  own.Exec("UPDATE TEC_USUARIO SET ATIVO = 'N'");
  EXPECT_FALSE(app::services::CheckPassword(own.Db(), "ADMIN", "nova"));
}

TEST(Init, NobodySignsInWithoutAPassword) {
  OwnDatabase own;
  EXPECT_FALSE(app::services::CheckPassword(own.Db(), "ADMIN", ""));
  EXPECT_THROW(app::services::SetPassword(own.Db(), "ADMIN", ""), host::InputError);
  EXPECT_THROW(app::services::SetPassword(own.Db(), "NINGUEM", "x"), host::InputError);
}

TEST(Init, AnEmptyPasswordMakesNoFile) {
  OwnDatabase own(OwnDatabase::Start::kNoFile);
  EXPECT_THROW(app::mill::InitDatabase(own.Options(), ""), host::InputError);
  EXPECT_THROW(app::mill::CreateDemo(own.Options(), ""), host::InputError);
  EXPECT_FALSE(std::filesystem::exists(own.Path()));
}

TEST(Init, AnExistingFileStaysAsItIs) {
  OwnDatabase own(OwnDatabase::Start::kNoFile);
  std::ofstream(own.Path()) << "outra coisa";
  EXPECT_THROW(app::mill::InitDatabase(own.Options(), "x"), host::DatabaseError);
  std::ifstream in(own.Path());
  std::string text;
  std::getline(in, text);
  EXPECT_EQ(text, "outra coisa");
}

// Made once: the tests only read it, each volume test works on a copy of its own.
class DemoTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    own_ = new OwnDatabase(OwnDatabase::Start::kNoFile);
    own_->Adopt(app::mill::CreateDemo(own_->Options(), "demo"));
  }
  static void TearDownTestSuite() {
    delete own_;
    own_ = nullptr;
  }
  std::int64_t Count(const std::string& from) { return own_->Scalar("SELECT COUNT(*) FROM " + from).AsInteger(); }

  static OwnDatabase* own_;
};
OwnDatabase* DemoTest::own_ = nullptr;

TEST_F(DemoTest, PaperBearsTheMillsNameAndScannersReadItsFabrics) {
  EXPECT_EQ(own_->Scalar("SELECT VALOR FROM TEC_PARAMETRO WHERE GRUPO = 'SIS' AND NUMERO = 10").AsText(),
            "TÊXTIL SANTA CLARA");
  EXPECT_EQ(Count("{MAT_ITEN} WHERE CODIGO STARTING 'M' AND CHAR_LENGTH(BARRA) <> 13"), 0);
  EXPECT_EQ(Count("(SELECT BARRA FROM {MAT_ITEN} WHERE BARRA <> '' GROUP BY BARRA HAVING COUNT(*) > 1)"), 0);
  EXPECT_EQ(Count("{MAT_ITEN} I INNER JOIN {MATERIAL} M ON M.CODIGO = I.CODIGO WHERE M.GRUPO IN ('MCR', 'RET') AND "
                  "I.LOTE = '000000' AND I.BARRA SIMILAR TO '789[0-9]{10}'"),
            15);
}

TEST_F(DemoTest, EveryFileIsBroughtInWhole) {
  const auto order = app::tables::ImportOrder();
  for (const auto& file : app::DemoFiles()) {
    if (!file.name.ends_with(".csv")) continue;
    const std::string table(file.name.substr(0, file.name.size() - 4));
    EXPECT_NE(std::find(order.begin(), order.end(), table), order.end()) << table << " is never imported";
    EXPECT_GT(Count("{" + table + "}"), 0) << table;
  }
  EXPECT_EQ(Count("{MATERIAL} WHERE GRUPO = 'FIO'"), 24);
  EXPECT_EQ(Count("{MATERIAL} WHERE GRUPO IN ('MCR', 'RET')"), 12);
}

TEST_F(DemoTest, BalancesAreTheSumOfTheLedger) {
  EXPECT_EQ(app::books::CheckBooks(own_->Db()), Texts());
  EXPECT_GT(own_->Scalar("SELECT SUM(QTDE) FROM {MAT_MOV}").AsFloat(), 10000);
}

TEST_F(DemoTest, EveryCompositionAddsUpToOneHundred) {
  const auto rows =
      own_->Db().Query("SELECT MATERIAL, COR, PERC FROM {COMP_MATERIAL} ORDER BY MATERIAL, COR, ORDEM", {});
  std::map<std::string, double> sums;
  std::map<std::string, int> yarns;
  for (; !rows->Eof(); rows->Next()) {
    const std::string key = rows->FieldByName("MATERIAL").AsText() + "/" + rows->FieldByName("COR").AsText();
    sums[key] += rows->FieldByName("PERC").AsFloat();
    ++yarns[key];
  }
  EXPECT_GE(sums.size(), 12u);
  for (const auto& [key, sum] : sums) {
    EXPECT_EQ(sum, 100.0) << key;
    EXPECT_GE(yarns[key], 2) << key;
    EXPECT_LE(yarns[key], 4) << key;
  }
  EXPECT_GE(Count("{COMP_MATERIAL} WHERE COR_I = '*****'"), 1);
}

TEST_F(DemoTest, AYarnLotBeginsWithItsSupplier) {
  EXPECT_EQ(Count("{MAT_ITEN} I INNER JOIN {MATERIAL} M ON M.CODIGO = I.CODIGO WHERE M.GRUPO = 'FIO' AND NOT EXISTS "
                  "(SELECT 1 FROM {ENTIDADE} E WHERE E.CODCLI = LEFT(I.LOTE, 5))"),
            0);
}

TEST_F(DemoTest, EveryMillHasPricesAndAYarnDeposit) {
  EXPECT_EQ(own_->Column("SELECT DISTINCT CODCLI FROM {CADCORTI} WHERE TIPO = 'C' ORDER BY 1"),
            (Texts{"00001", "00101", "00102", "00103"}));
  EXPECT_EQ(own_->Column("SELECT CODCLI FROM {DEPOSITO} WHERE PRIORIDADE = '5' ORDER BY 1"),
            (Texts{"00001", "00101", "00102", "00103"}));
  EXPECT_EQ(Count("{DEPOSITO} WHERE PRIORIDADE = '1'"), 1);
  EXPECT_EQ(own_->Column("SELECT TURNO FROM {TURNO} WHERE NOTURNO = 'S'"), Texts{"3"});
}

TEST_F(DemoTest, FabricsComeInKilogramsMetresAndPieces) {
  EXPECT_EQ(own_->Column("SELECT DISTINCT UNIDADE FROM {MATERIAL} WHERE GRUPO IN ('MCR', 'RET') ORDER BY 1"),
            (Texts{"KG", "MT", "PC"}));
  EXPECT_EQ(Count("{MATERIAL} WHERE UNIDADE IN ('MT', 'PC') AND PESO <= 0"), 0);
}

TEST_F(DemoTest, EveryFabricColourHasAStockRowAndEveryYarnColourToo) {
  EXPECT_EQ(Count("{COMP_MATERIAL} C WHERE NOT EXISTS (SELECT 1 FROM {MAT_ITEN} I WHERE I.CODIGO = C.MATERIAL AND "
                  "I.COR = C.COR)"),
            0);
  EXPECT_EQ(Count("{COMP_MATERIAL} C WHERE C.COR_I NOT LIKE '%*%' AND NOT EXISTS (SELECT 1 FROM {MAT_ITEN} I WHERE "
                  "I.CODIGO = C.CODIGO AND I.COR = C.COR_I)"),
            0);
}

class VolumeTest : public testing::Test {
 protected:
  VolumeTest() : own_(OwnDatabase::Start::kNoFile) { app::mill::CreateDemo(own_.Options(), "demo"); }
  OwnDatabase own_;
};

TEST_F(VolumeTest, TheBooksBalanceAfterIt) {
  own_.Exec(
      "CREATE TABLE ANTES (CODIGO VARCHAR(15), COR VARCHAR(6), DEPOSITO VARCHAR(6), LOTE VARCHAR(32), QTDE DOUBLE "
      "PRECISION)");
  own_.Exec("INSERT INTO ANTES SELECT CODIGO, COR, DEPOSITO, LOTE, QTDE FROM {MAT_ITEN}");
  app::mill::VolumeOptions options;
  options.rolls = 1030;
  options.rolls_per_order = 50;
  options.rolls_per_day = 100;
  options.open_orders = 3;
  options.last_day = host::Date::FromIso("2026-11-20").value();
  own_.Close();
  const auto result = app::mill::GenerateVolumeFast(own_.Options(), options);
  EXPECT_EQ(result.rolls, 1030);
  EXPECT_EQ(result.orders, 21);
  EXPECT_EQ(result.first_order, "000001");
  EXPECT_EQ(result.last_order, "000021");

  EXPECT_EQ(app::books::CheckBooks(own_.Db()), Texts());
  EXPECT_EQ(own_.Scalar("SELECT COUNT(*) FROM {TECELB}").AsInteger(), 1030);
  EXPECT_EQ(own_.Scalar("SELECT COUNT(*) FROM {TECELB} WHERE LOTE <> NUMERO || ORDEM").AsInteger(), 0);
  EXPECT_EQ(own_.Scalar("SELECT MAX(DT_LAN) FROM {TECELB}").AsDate().ToIso(), "2026-11-20");
  EXPECT_EQ(own_.Scalar("SELECT COUNT(*) FROM TEC_LOG WHERE ASSUNTO = 'BAIXAS DA TECELAGEM'").AsInteger(), 1030);
  // Yarn that was there before is not touched.
  EXPECT_EQ(own_.Scalar("SELECT COUNT(*) FROM ANTES A INNER JOIN {MAT_ITEN} I ON I.CODIGO = A.CODIGO AND I.COR = A.COR "
                        "AND I.DEPOSITO = A.DEPOSITO AND I.LOTE = A.LOTE WHERE I.QTDE <> A.QTDE")
                .AsInteger(),
            0);
}

TEST_F(VolumeTest, OnlyTheLastOrdersAreOpenWithYarnInReserve) {
  app::mill::VolumeOptions options;
  options.rolls = 200;
  options.rolls_per_order = 20;
  options.open_orders = 2;
  app::mill::GenerateVolumeFast(own_.Options(), options);
  EXPECT_EQ(own_.Column("SELECT NUMERO FROM {TECEL_ITEN} WHERE QTDE > QTDE_B ORDER BY 1"), (Texts{"000009", "000010"}));
  EXPECT_EQ(own_.Column("SELECT NUMERO FROM {TECEL_ITEN} WHERE BAIXADA IS DISTINCT FROM 'S' ORDER BY 1"),
            (Texts{"000009", "000010"}));
  EXPECT_EQ(own_.Column("SELECT DISTINCT NUMERO FROM {MAT_RESERVA} WHERE QTDE > 0 ORDER BY 1"),
            (Texts{"000009", "000010"}));
  EXPECT_EQ(own_.Scalar("SELECT COUNT(*) FROM {MAT_RESERVA} R INNER JOIN {MAT_ITEN} I ON I.CODIGO = R.CODIGO AND "
                        "I.COR = R.COR AND I.DEPOSITO = R.DEPOSITO AND I.LOTE = R.LOTE WHERE R.QTDE > I.QTDE")
                .AsInteger(),
            0);
  // A second run goes on after the first.
  EXPECT_EQ(app::mill::GenerateVolume(own_.Db(), options).first_order, "000011");
  EXPECT_EQ(app::books::CheckBooks(own_.Db()), Texts());
}

TEST(Volume, NeedsAMillWithPrices) {
  OwnDatabase own;
  EXPECT_THROW(app::mill::GenerateVolume(own.Db(), {}), host::InputError);
  EXPECT_EQ(own.Scalar("SELECT COUNT(*) FROM {TECEL}").AsInteger(), 0);
}

}  // namespace
