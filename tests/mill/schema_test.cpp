// The structure of a mill's database: what is there, what it refuses, what it rounds.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "app/embedded.h"
#include "app/firebird/migrations.h"
#include "app/tables/table_shape.h"
#include "host/errors.h"
#include "mill/own_database.h"

namespace {

using app::firebird::Migration;
using test::OwnDatabase;

std::vector<Migration> AllMigrations() {
  std::vector<Migration> migrations;
  for (const auto& file : app::SchemaFiles()) migrations.push_back({std::string(file.name), std::string(file.text)});
  return migrations;
}

TEST(Schema, EveryMigrationAppliesOnceAndInOrder) {
  OwnDatabase own(OwnDatabase::Start::kNoFile);
  own.Adopt(app::firebird::Database::Create(own.Options()));
  const auto migrations = AllMigrations();
  ASSERT_GE(migrations.size(), 8u);
  for (std::size_t i = 1; i <= migrations.size(); ++i) {
    app::firebird::Migrate(own.Db(), {migrations.begin(), migrations.begin() + static_cast<std::ptrdiff_t>(i)});
    EXPECT_EQ(app::firebird::SchemaVersion(own.Db()), static_cast<int>(i)) << migrations[i - 1].name;
  }
  app::firebird::Migrate(own.Db(), migrations);
  EXPECT_EQ(own.Scalar("SELECT COUNT(*) FROM TEC_MIGRACAO").AsInteger(), static_cast<int>(migrations.size()));
  EXPECT_EQ(own.Scalar("SELECT COUNT(*) FROM TEC_USUARIO").AsInteger(), 1);
}

TEST(Schema, AFailingMigrationLeavesTheDatabaseAsItWas) {
  OwnDatabase own;
  auto migrations = AllMigrations();
  const int version = app::firebird::SchemaVersion(own.Db());
  migrations.push_back({"9999_broken.sql",
                        "CREATE TABLE {NOVA} (CODIGO VARCHAR(5));\n"
                        "ALTER TABLE {TECEL} ADD NOVA VARCHAR(5);\n"
                        "CREATE INDEX {NOVA}_X ON {NOVA} (NAO_EXISTE);"});
  try {
    app::firebird::Migrate(own.Db(), migrations);
    FAIL() << "the broken migration was accepted";
  } catch (const host::DatabaseError& error) {
    EXPECT_NE(std::string(error.what()).find("9999_broken.sql"), std::string::npos) << error.what();
  }
  EXPECT_EQ(app::firebird::SchemaVersion(own.Db()), version);
  EXPECT_EQ(own.Scalar("SELECT COUNT(*) FROM RDB$RELATIONS WHERE RDB$RELATION_NAME = 'NOVA_001'").AsInteger(), 0);
  EXPECT_EQ(app::tables::ReadTableShape(own.Db(), "TECEL").Find("NOVA"), nullptr);
  own.Exec("INSERT INTO {TECEL} (NUMERO) VALUES ('000001')");
}

// Table and the columns that screens, reports and imports name.
constexpr const char* kTables[] = {
    "TECEL NUMERO MALHARIA PERIODO OBSERVACAO DT_INICIO DT_EMISSAO FICHA MAQUINA FLUXO RPM TPONTO SITUACAO DEPOSITO "
    "PEDIDO",
    "TECEL_ITEN NUMERO CODIGO COR PEDIDO CUSTO QTDE BAIXADA QTDE_B CICLOS OBS",
    "MAT_RESERVA NUMERO CODIGO COR DEPOSITO LOTE QTDE NOME OBS QTDE_B TIPO",
    "TECELB NUMERO CODIGO ORDEM DT_LAN QTDE NF_RET DEPOSITO MAQUINA FUNCIONARIO COR TURNO NF_COB QTDE_R LOTE LOCAL "
    "PEDIDO PAGO DT_PAGTO",
    "DEF_MOV MOV CODIGO ARTIGO QUANT NUMERO REVISOR DT_LAN QUALIDADE TIPO TURNO ROLO LOTE COR LANCAMENTO",
    "BAIXA_FIO CODIGO DOCTO NUMERO QTDE LOTE COR DEPOSITO ORDEM MATERIAL",
    "COMP_MATERIAL MATERIAL CODIGO ORDEM LFA ROCA COMP_PONTO TENSAO LARGURA GRAMATURA DIAMETRO FINURA KG_ROLO "
    "ALIMENTADORES PERC COR COR_I DESPERDICIO RPM REGRA PRODUTO",
    "CADCORTI TIPO CODIGO CODCLI COR CUSTO OBS",
    "MATERIAL CODIGO DESCRICAO DESCRICAO2 UNIDADE PESO NE CONCENTRACAO GRAMATURA LARGURA COMPOSICAO OBSERVACAO CODCLI "
    "ATIVO ESTOQUE MAXIMO PRECO CUSTO_IMP REPOSICAO LINHA GRUPO CODFIS",
    "MAT_ITEN CODIGO COR DEPOSITO LOTE QTDE QTDE_R QTD_MINIMA QTD_MAXIMA PRECO_MED LOCAL BARRA LARGURA QUALIDADE",
    "MAT_LOTE CODIGO COR LOTE PARTIDA SEQUENCIA TONALIDADE",
    "MAT_MOV ID CODIGO COR LOTE DEPOSITO DOCUMENTO TIPO_DOC CLIENTE MAQUINA FUNCIONARIO DATA QTDE SAIDA USUARIO PRECO "
    "CUSTO LOCAL BAIXADO ATIVO COMPLEMENTO TIPO_MOV MOMENTO ORDEM ESTORNO",
    "ENTIDADE CODCLI NOME ATIVO BLOQUEIO SIMPLES",
    "CADCOR COR DESCRICAO",
    "DEPOSITO CODIGO DESCRICAO CODCLI PRIORIDADE",
    "MAQUINA MAQUINA CODIGO DESCRICAO TIPO",
    "PESSOAL CODIGO NOME TURNO",
    "TURNO TURNO DESCRICAO NOTURNO",
    "TURNO_HORARIOS TURNO DIA SAIDA",
    "FLUXOTIN CODIGO DESCRICAO",
    "TABPRZ PRAZO DESCRICAO",
    "TABLIN CODIGO DESCRICAO",
    "TABFIS CODIGO DESCRICAO",
    "TABQUL CODIGO DESCRICAO",
    "DEFEITO CODIGO DESCRICAO",
    "GRUPO_MA CODIGO DESCRICAO",
    "CADTAG CODIGO QTDE",
    "TNG_REGRA CODIGO DESCRICAO FORMULA",
    "PEDIDO NUMERO ENTREGA CODCLI",
    "CO_ITEN NUMERO CODIGO COR QTDE QTDE_B SITUACAO",
    "NOTA_ENTRA NOTAFISCAL CREDOR SERIE DT_ENTRADA",
    "NF_ENTRA_ITEN NUMERO CODCRE SERIE CODIGO LOTE",
    "CADMATTI CODIGO CODIGO2 FLUXO DESPERDICIO GRAMAT_CRUA GRAMATURA LARGURA_FINAL LTIN LMAX",
    "TINTUR_ITEN CODIGO2 COR PESO_LIQUIDO PESO_RETORNO SITUACAO",
    "NOTA_FCI CODIGO TIPO NRANO_MES NRFCI PCFCI",
    "FACCAO4 CODCLI CODIGO OP TIPO DESCRICAO QUANT VALOR DT_LAN PAGO DT_PAGO",
    "RAPORT MATERIAL COR ORDEM CODIGO COR_I MILIMETROS OBSERVACAO",
    "CADRAPORT CODIGO MILIMETROS ALIMENTADORES",
    "PROG_OF NUM_DOC TIPO",
};

TEST(Schema, EveryTableHasItsColumns) {
  OwnDatabase own;
  for (const char* entry : kTables) {
    std::istringstream words(entry);
    std::string table;
    words >> table;
    const auto shape = app::tables::ReadTableShape(own.Db(), table);
    ASSERT_FALSE(shape.columns.empty()) << table;
    for (std::string column; words >> column;) {
      EXPECT_NE(shape.Find(column), nullptr) << table << '.' << column;
      EXPECT_NO_THROW(own.Db().Query("SELECT FIRST 1 " + column + " FROM {" + table + "}", {}))
          << table << '.' << column;
    }
  }
}

TEST(Schema, TheHostHasItsOwnTables) {
  OwnDatabase own;
  EXPECT_EQ(own.Column("SELECT TRIM(RDB$RELATION_NAME) FROM RDB$RELATIONS WHERE RDB$RELATION_NAME STARTING 'TEC_' "
                       "ORDER BY 1"),
            (std::vector<std::string>{"TEC_CONTADOR", "TEC_DIREITO", "TEC_LOG", "TEC_MIGRACAO", "TEC_PARAMETRO",
                                      "TEC_PERIODO", "TEC_TENTATIVA", "TEC_TRAVA", "TEC_USUARIO"}));
  EXPECT_EQ(
      own.Column("SELECT GRUPO || ' ' || NUMERO || ' ' || VALOR FROM TEC_PARAMETRO ORDER BY GRUPO, NUMERO"),
      (std::vector<std::string>{"COM 80 F", "MAL 40 3", "MAL 50 N", "MAL 60 N", "MAL 70 S", "MAL 90 S", "SIS 20 S"}));
  EXPECT_EQ(own.Column("SELECT CODIGO FROM TEC_USUARIO WHERE ADMINISTRADOR = 'S' AND ATIVO = 'S' AND SENHA IS NULL"),
            std::vector<std::string>{"ADMIN"});
}

struct Rounded {
  const char* table;
  const char* column;
  const char* keys;    // columns that the row needs besides
  const char* values;  // and their values
};

constexpr Rounded kRounded[] = {
    {"TECEL_ITEN", "QTDE", "NUMERO, CODIGO, COR", "'1', 'M', 'C'"},
    {"TECEL_ITEN", "QTDE_B", "NUMERO, CODIGO, COR", "'1', 'M', 'C'"},
    {"MAT_RESERVA", "QTDE", "NUMERO, CODIGO, COR, DEPOSITO, LOTE", "'1', 'F', 'C', 'D', 'L'"},
    {"MAT_RESERVA", "QTDE_B", "NUMERO, CODIGO, COR, DEPOSITO, LOTE", "'1', 'F', 'C', 'D', 'L'"},
    {"TECELB", "QTDE", "NUMERO, CODIGO, ORDEM, COR", "'1', 'M', 1, 'C'"},
    {"TECELB", "QTDE_R", "NUMERO, CODIGO, ORDEM, COR", "'1', 'M', 1, 'C'"},
    {"BAIXA_FIO", "QTDE", "CODIGO, NUMERO", "'F', '1'"},
    {"MAT_ITEN", "QTDE", "CODIGO, COR, DEPOSITO, LOTE", "'F', 'C', 'D', 'L'"},
    {"MAT_ITEN", "QTDE_R", "CODIGO, COR, DEPOSITO, LOTE", "'F', 'C', 'D', 'L'"},
    {"MAT_MOV", "QTDE", "CODIGO, COR, DEPOSITO, LOTE, SAIDA", "'F', 'C', 'D', 'L', 'N'"},
    {"DEF_MOV", "QUANT", "NUMERO", "'1'"},
    {"CO_ITEN", "QTDE", "NUMERO, ITEM, CODIGO, COR", "'1', 1, 'F', 'C'"},
    {"CO_ITEN", "QTDE_B", "NUMERO, ITEM, CODIGO, COR", "'1', 1, 'F', 'C'"},
    {"NF_ENTRA_ITEN", "QTDE", "NUMERO, CODCRE, SERIE, ITEM", "'1', 'F', '1', 1"},
    {"TINTUR_ITEN", "PESO_LIQUIDO", "NUMERO, ITEM, CODIGO2, COR", "'1', 1, 'F', 'C'"},
    {"TINTUR_ITEN", "PESO_RETORNO", "NUMERO, ITEM, CODIGO2, COR", "'1', 1, 'F', 'C'"},
    {"FACCAO4", "QUANT", "TIPO, CODCLI, CODIGO, OP", "'T', 'C', 'M', '1'"},
};

TEST(Schema, StoredQuantitiesHaveSixDecimals) {
  for (const Rounded& rounded : kRounded) {
    OwnDatabase own;
    const std::string table = "{" + std::string(rounded.table) + "}";
    const std::string column = rounded.column;
    own.Exec("INSERT INTO " + table + " (" + rounded.keys + ", " + column + ") VALUES (" + rounded.values +
             ", 12.3456785)");
    EXPECT_EQ(own.Scalar("SELECT " + column + " FROM " + table).AsFloat(), 12.345679) << table << column;
    // What is left of a sum of doubles is nothing at all.
    own.Exec("UPDATE " + table + " SET " + column + " = CAST(0.1 AS DOUBLE PRECISION) + 0.2e0 - 0.3e0");
    EXPECT_EQ(own.Scalar("SELECT " + column + " FROM " + table).AsFloat(), 0.0) << table << column;
    EXPECT_EQ(own.Scalar("SELECT COUNT(*) FROM " + table + " WHERE " + column + " = 0").AsInteger(), 1);
  }
}

TEST(Schema, QuantitiesOfThreeDecimalsComeBackAsTheyWere) {
  OwnDatabase own;
  own.Exec("INSERT INTO {MAT_ITEN} (CODIGO, COR, DEPOSITO, LOTE) VALUES ('F', 'C', 'D', 'L')");
  for (const double quantity : {0.285, 20.304, 1.005, 17.9, 99999.999, 0.001, 1234567.123}) {
    own.Exec("UPDATE {MAT_ITEN} SET QTDE = ?", {quantity});
    EXPECT_EQ(own.Scalar("SELECT QTDE FROM {MAT_ITEN}").AsFloat(), quantity);
  }
}

TEST(Schema, CostsKeepAllTheirDigits) {
  OwnDatabase own;
  const double cost = 7.123456789012345;
  own.Exec("INSERT INTO {TECEL_ITEN} (NUMERO, CODIGO, COR, CUSTO) VALUES ('1', 'M', 'C', ?)", {cost});
  own.Exec("INSERT INTO {MAT_ITEN} (CODIGO, COR, DEPOSITO, LOTE, PRECO_MED) VALUES ('F', 'C', 'D', 'L', ?)", {cost});
  own.Exec("INSERT INTO {MAT_MOV} (CODIGO, COR, DEPOSITO, LOTE, SAIDA, PRECO) VALUES ('F', 'C', 'D', 'L', 'N', ?)",
           {cost});
  EXPECT_EQ(own.Scalar("SELECT CUSTO FROM {TECEL_ITEN}").AsFloat(), cost);
  EXPECT_EQ(own.Scalar("SELECT PRECO_MED FROM {MAT_ITEN}").AsFloat(), cost);
  EXPECT_EQ(own.Scalar("SELECT PRECO FROM {MAT_MOV}").AsFloat(), cost);
}

TEST(Schema, QuantitiesAreNeverNull) {
  OwnDatabase own;
  own.Exec("INSERT INTO {TECEL_ITEN} (NUMERO, CODIGO, COR) VALUES ('1', 'M', 'C')");
  EXPECT_EQ(own.Scalar("SELECT QTDE + QTDE_B + CUSTO + CICLOS FROM {TECEL_ITEN}").AsFloat(), 0.0);
  EXPECT_THROW(own.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = NULL"), host::DatabaseError);
  own.Exec("INSERT INTO {MAT_RESERVA} (NUMERO, CODIGO, COR, DEPOSITO, LOTE) VALUES ('1', 'F', 'C', 'D', 'L')");
  EXPECT_FALSE(own.Scalar("SELECT QTDE + QTDE_B FROM {MAT_RESERVA}").IsNull());
  EXPECT_THROW(own.Exec("UPDATE {MAT_RESERVA} SET QTDE = NULL"), host::DatabaseError);
}

TEST(Schema, KeysRefuseASecondRow) {
  OwnDatabase own;
  const std::string item = "INSERT INTO {TECEL_ITEN} (NUMERO, CODIGO, COR) VALUES ('000001', 'M1', '01')";
  own.Exec(item);
  EXPECT_THROW(own.Exec(item), host::DatabaseError);
  own.Exec("INSERT INTO {TECEL_ITEN} (NUMERO, CODIGO, COR) VALUES ('000001', 'M1', '02')");
  const std::string price = "INSERT INTO {CADCORTI} (TIPO, CODIGO, CODCLI, COR) VALUES ('C', 'M1', 'A', '0')";
  own.Exec(price);
  EXPECT_THROW(own.Exec(price), host::DatabaseError);
  own.Exec("INSERT INTO {CADCORTI} (TIPO, CODIGO, CODCLI, COR) VALUES ('T', 'M1', 'A', '0')");
  const std::string lot = "INSERT INTO {MAT_ITEN} (CODIGO, COR, DEPOSITO, LOTE) VALUES ('F', 'C', 'D', 'L')";
  own.Exec(lot);
  EXPECT_THROW(own.Exec(lot), host::DatabaseError);
}

TEST(Schema, ReservationsAndCompositionsMayRepeatTheirKeys) {
  OwnDatabase own;
  for (const char* kind : {"T", "F"}) {
    own.Exec(
        "INSERT INTO {MAT_RESERVA} (NUMERO, CODIGO, COR, DEPOSITO, LOTE, TIPO) VALUES ('1', 'F', 'C', 'D', 'L', ?)",
        {kind});
    own.Exec("INSERT INTO {COMP_MATERIAL} (MATERIAL, CODIGO, COR, COR_I) VALUES ('M', 'F', '01', '0')");
  }
  EXPECT_EQ(own.Scalar("SELECT COUNT(*) FROM {MAT_RESERVA}").AsInteger(), 2);
  EXPECT_EQ(own.Scalar("SELECT COUNT(*) FROM {COMP_MATERIAL}").AsInteger(), 2);
}

TEST(Schema, ARollLotMayBeLong) {
  OwnDatabase own;
  for (const char* table : {"TECELB", "MAT_ITEN", "MAT_MOV", "MAT_RESERVA", "BAIXA_FIO"}) {
    EXPECT_GE(app::tables::ReadTableShape(own.Db(), table).Find("LOTE")->width, 32) << table;
  }
}

TEST(Schema, AMachineIsFoundByEitherNameOfItsKey) {
  OwnDatabase own;
  own.Exec("INSERT INTO {MAQUINA} (MAQUINA, DESCRICAO) VALUES ('T01', 'CIRCULAR')");
  EXPECT_EQ(own.Scalar("SELECT DESCRICAO FROM {MAQUINA} WHERE CODIGO = 'T01'").AsText(), "CIRCULAR");
}

TEST(Schema, DescriptionsAreSearchedWithoutCaseAndAccentsAndCodesAreNot) {
  OwnDatabase own;
  own.Exec("INSERT INTO {CADCOR} (COR, DESCRICAO) VALUES ('a1', 'ALGODÃO CRU')");
  own.Exec("INSERT INTO {CADCOR} (COR, DESCRICAO) VALUES ('A1', 'OUTRA')");
  EXPECT_EQ(own.Column("SELECT COR FROM {CADCOR} WHERE DESCRICAO LIKE 'algodao%'"), std::vector<std::string>{"a1"});
  EXPECT_EQ(own.Column("SELECT DESCRICAO FROM {CADCOR} WHERE COR = 'A1'"), std::vector<std::string>{"OUTRA"});
}

TEST(Schema, DefectsNumberThemselves) {
  OwnDatabase own;
  own.Exec("INSERT INTO {DEF_MOV} (NUMERO) VALUES ('000001')");
  own.Exec("INSERT INTO {DEF_MOV} (NUMERO) VALUES ('000002')");
  EXPECT_EQ(own.Column("SELECT NUMERO FROM {DEF_MOV} ORDER BY MOV"), (std::vector<std::string>{"000001", "000002"}));
}

TEST(Schema, TextAndDateFunctions) {
  OwnDatabase own;
  const auto value = [&](const std::string& expression) {
    return own.Scalar("SELECT " + expression + " AS V FROM RDB$DATABASE").AsText();
  };
  EXPECT_EQ(value("UDF_COPY('000123001', 1, 6)"), "000123");
  EXPECT_EQ(value("UDF_COPY('000123001', 7, 3)"), "001");
  EXPECT_EQ(value("UDF_COPY('maçã', 3, 9)"), "çã");
  EXPECT_EQ(value("UDF_COPY('abc', 9, 2)"), "");
  EXPECT_EQ(value("UDF_COPY('abc', 0, 2)"), "ab");
  EXPECT_EQ(value("UDF_COPY('abc', 1, -1)"), "");
  EXPECT_EQ(value("UDF_LEN('maçã')"), "4");
  EXPECT_EQ(value("UDF_LEN('')"), "0");
  EXPECT_EQ(value("COALESCE(UDF_LEN(NULL), -1)"), "-1");
  EXPECT_EQ(value("UDF_WEEKDAY(DATE '2026-03-08')"), "0");  // a Sunday
  EXPECT_EQ(value("UDF_WEEKDAY(DATE '2026-03-14')"), "6");
}

}  // namespace
