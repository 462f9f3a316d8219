// Registers and opening stock from files: every row checked first, all rows written or none.
#include "app/mill/import.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/errors.h"
#include "mill/own_database.h"

namespace {

using app::mill::Import;
using app::mill::ImportResult;
using Errors = std::vector<std::string>;

class ImportTest : public testing::Test {
 protected:
  ImportResult Bring(std::string_view table, const std::string& text) { return Import(own_.Db(), table, text); }
  std::int64_t Count(const std::string& table) {
    return own_.Scalar("SELECT COUNT(*) FROM {" + table + "}").AsInteger();
  }
  void FillRegisters() {
    ASSERT_EQ(Bring("ENTIDADE", "CODCLI;NOME\n00201;FIAÇÃO\n").errors, Errors());
    ASSERT_EQ(Bring("CADCOR", "COR;DESCRICAO\n0;CRU\n001;BRANCO\n").errors, Errors());
    ASSERT_EQ(Bring("DEPOSITO", "CODIGO;DESCRICAO;PRIORIDADE\n01;FIOS;1\n").errors, Errors());
    ASSERT_EQ(Bring("MATERIAL", "CODIGO;DESCRICAO;UNIDADE;NE\nF1;FIO 30;KG;30\nM1;MALHA;KG;0\n").errors, Errors());
  }
  test::OwnDatabase own_;
};

TEST_F(ImportTest, WritesTextNumbersDatesAndDefaults) {
  FillRegisters();
  const ImportResult result = Bring("MATERIAL",
                                    "\xEF\xBB\xBF"
                                    "codigo;descricao;unidade;peso;ne;codcli;observacao\r\n"
                                    "F2;FIO ALGODÃO 24/1;KG;1.234,5;24;00201;\"linha um\nlinha dois\"\r\n"
                                    "F3;;KG;0.25;;;\r\n");
  EXPECT_EQ(result.errors, Errors());
  EXPECT_EQ(result.rows, 2u);
  const auto row = own_.Db().Query("SELECT * FROM {MATERIAL} WHERE CODIGO = 'F2'", {});
  EXPECT_EQ(row->FieldByName("DESCRICAO").AsText(), "FIO ALGODÃO 24/1");
  EXPECT_EQ(row->FieldByName("PESO").AsFloat(), 1234.5);
  EXPECT_EQ(row->FieldByName("NE").AsInteger(), 24);
  EXPECT_EQ(row->FieldByName("OBSERVACAO").AsText(), "linha um\nlinha dois");
  EXPECT_EQ(row->FieldByName("ATIVO").AsText(), "S");
  EXPECT_EQ(own_.Scalar("SELECT PESO FROM {MATERIAL} WHERE CODIGO = 'F3'").AsFloat(), 0.25);
  EXPECT_EQ(own_.Scalar("SELECT NE FROM {MATERIAL} WHERE CODIGO = 'F3'").AsInteger(), 0);
  EXPECT_TRUE(own_.Scalar("SELECT DESCRICAO FROM {MATERIAL} WHERE CODIGO = 'F3'").IsNull());

  EXPECT_EQ(Bring("PEDIDO", "NUMERO;ENTREGA\nPV1;09/02/2026\n").errors, Errors());
  EXPECT_EQ(own_.Scalar("SELECT ENTREGA FROM {PEDIDO}").AsDate().ToIso(), "2026-02-09");
  EXPECT_EQ(Bring("TURNO", "TURNO;NOTURNO\n3;S\n").errors, Errors());
  EXPECT_EQ(Bring("TURNO_HORARIOS", "TURNO;DIA;SAIDA\n3;1;05:00\n").errors, Errors());
  EXPECT_EQ(own_.Scalar("SELECT CAST(SAIDA AS VARCHAR(13)) FROM {TURNO_HORARIOS}").AsText(), "05:00:00.0000");
}

TEST_F(ImportTest, IsDurableWhenItReturns) {
  ASSERT_EQ(Bring("CADCOR", "COR;DESCRICAO\n001;BRANCO\n").errors, Errors());
  const auto second = app::firebird::Database::Open(own_.Options());
  EXPECT_EQ(second->Query("SELECT COUNT(*) AS N FROM {CADCOR}", {})->FieldByName("N").AsInteger(), 1);
}

TEST_F(ImportTest, AllErrorsAreToldAndNothingIsWritten) {
  FillRegisters();
  const auto before = Count("MATERIAL");
  const ImportResult result = Bring("MATERIAL",
                                    "CODIGO;DESCRICAO;UNIDADE;PESO;NE;CODCLI;ATIVO\n"
                                    "F2;BOM;KG;1;30;00201;S\n"
                                    ";SEM CHAVE;KG;1;30;;S\n"
                                    "F3;TÍTULO;KG;um;30,5;;S\n"
                                    "F4;UNIDADE LONGA;METRO;1;30;;S\n"
                                    "F5;日本;KG;1;30;;X\n"
                                    "F1;REPETIDO NO BANCO;KG;1;30;;S\n"
                                    "F2;REPETIDO NO ARQUIVO;KG;1;30;;S\n"
                                    "F6;FORNECEDOR;KG;1;30;99999;S\n"
                                    "F7;PESO;KG;-1;30;;S\n"
                                    "F8;DEMAIS;KG;1;30;;S;x\n");
  EXPECT_EQ(result.errors,
            (Errors{
                "Linha 3, coluna CODIGO: o valor é obrigatório.",
                "Linha 4, coluna PESO: \"um\" não é um número.",
                "Linha 4, coluna NE: \"30,5\" não é um número inteiro.",
                "Linha 5, coluna UNIDADE: \"METRO\" tem 5 caracteres; cabem 3.",
                "Linha 6, coluna DESCRICAO: O caractere \"日\" (U+65E5) não pode ser gravado no banco de dados.",
                "Linha 6, coluna ATIVO: \"X\" não é S nem N.",
                "Linha 7: a chave \"F1\" já está cadastrada.",
                "Linha 8: a chave \"F2\" já aparece na linha 2.",
                "Linha 9, coluna CODCLI: \"99999\" não está cadastrado em ENTIDADE.",
                "Linha 10, coluna PESO: \"-1\" é menor que 0.",
                "Linha 11: há 8 valores para 7 colunas.",
            }));
  EXPECT_EQ(result.rows, 0u);
  EXPECT_EQ(Count("MATERIAL"), before);
}

TEST_F(ImportTest, ColumnsAreCheckedBeforeRows) {
  EXPECT_EQ(Bring("CADCOR", "COR;NOME;COR\n001;x;y\n").errors,
            (Errors{"Linha 1: a tabela CADCOR não tem a coluna \"NOME\".",
                    "Linha 1: a coluna COR aparece mais de uma vez."}));
  EXPECT_EQ(Bring("CADCOR", "DESCRICAO\nx\n").errors, Errors{"Linha 1: falta a coluna obrigatória COR."});
  EXPECT_EQ(Bring("MAQUINA", "MAQUINA;CODIGO\nT1;T1\n").errors,
            Errors{"Linha 1: a coluna CODIGO é preenchida pelo sistema e não pode ser importada."});
}

TEST_F(ImportTest, DatesAndTimesAreChecked) {
  EXPECT_EQ(Bring("PEDIDO", "NUMERO;ENTREGA\nPV1;31/02/2026\nPV2;2026-02-01\n").errors,
            (Errors{"Linha 2, coluna ENTREGA: \"31/02/2026\" não é uma data (DD/MM/AAAA).",
                    "Linha 3, coluna ENTREGA: \"2026-02-01\" não é uma data (DD/MM/AAAA)."}));
  EXPECT_EQ(Bring("TURNO", "TURNO\n3\n").errors, Errors());
  EXPECT_EQ(Bring("TURNO_HORARIOS", "TURNO;DIA;SAIDA\n3;8;05:00\n3;1;25:00\n").errors,
            (Errors{"Linha 2, coluna DIA: \"8\" é maior que 7.",
                    "Linha 3, coluna SAIDA: \"25:00\" não é uma hora (HH:MM)."}));
}

TEST_F(ImportTest, CompositeReferencesAndPlaceholders) {
  FillRegisters();
  EXPECT_EQ(Bring("NOTA_ENTRA", "NOTAFISCAL;CREDOR;SERIE\n100;00201;1\n").errors, Errors());
  EXPECT_EQ(Bring("NF_ENTRA_ITEN", "NUMERO;CODCRE;SERIE;ITEM;CODIGO\n100;00201;1;1;F1\n101;00201;1;1;F1\n").errors,
            Errors{"Linha 3, coluna NUMERO: \"101, 00201, 1\" não está cadastrado em NOTA_ENTRA."});
  EXPECT_EQ(Bring("COMP_MATERIAL", "MATERIAL;CODIGO;COR;COR_I;PERC\nM1;F1;0;*****;100\n").errors, Errors());
  EXPECT_EQ(Bring("COMP_MATERIAL", "MATERIAL;CODIGO;COR;COR_I;PERC\nM1;F1;0;999;101\n").errors,
            Errors{"Linha 2, coluna PERC: \"101\" é maior que 100."});
  EXPECT_EQ(Bring("COMP_MATERIAL", "MATERIAL;CODIGO;COR;COR_I\nM1;F1;0;999\n").errors,
            Errors{"Linha 2, coluna COR_I: \"999\" não está cadastrado em CADCOR."});
  EXPECT_EQ(Bring("CADCORTI", "TIPO;CODIGO;CODCLI;CUSTO\nC;M1;00201;3,5\nC;M1;00201;4\n").errors,
            Errors{"Linha 3: a chave \"C, M1, 00201, 0\" já aparece na linha 2."});
}

TEST_F(ImportTest, OpeningStockOpensTheLedger) {
  FillRegisters();
  const ImportResult result = Bring("MAT_ITEN",
                                    "CODIGO;COR;DEPOSITO;LOTE;QTDE;PRECO_MED;LOCAL\n"
                                    "F1;0;01;00201A1;150,25;23,6;RUA A\n"
                                    "M1;001;01;000000;0;0;\n");
  EXPECT_EQ(result.errors, Errors());
  EXPECT_EQ(Count("MAT_ITEN"), 2);
  ASSERT_EQ(Count("MAT_MOV"), 1);
  const auto row = own_.Db().Query("SELECT * FROM {MAT_MOV}", {});
  EXPECT_EQ(row->FieldByName("CODIGO").AsText(), "F1");
  EXPECT_EQ(row->FieldByName("LOTE").AsText(), "00201A1");
  EXPECT_EQ(row->FieldByName("QTDE").AsFloat(), 150.25);
  EXPECT_EQ(row->FieldByName("SAIDA").AsText(), "N");
  EXPECT_EQ(row->FieldByName("PRECO").AsFloat(), 23.6);
}

TEST_F(ImportTest, NegativeStockIsRefused) {
  FillRegisters();
  EXPECT_EQ(Bring("MAT_ITEN", "CODIGO;COR;DEPOSITO;LOTE;QTDE\nF1;0;01;L;-3\n").errors,
            Errors{"Linha 2, coluna QTDE: \"-3\" é menor que 0."});
  EXPECT_EQ(Count("MAT_ITEN"), 0);
}

TEST_F(ImportTest, FormulasAreReadBeforeTheyAreStored) {
  const auto check = [](std::string_view formula) {
    if (formula == "1 +") throw host::InputError("a fórmula termina cedo demais.");
  };
  EXPECT_EQ(Import(own_.Db(), "TNG_REGRA", "CODIGO;FORMULA\nA;2\nB;1 +\n", check).errors,
            Errors{"Linha 3, coluna FORMULA: a fórmula termina cedo demais."});
  EXPECT_EQ(Count("TNG_REGRA"), 0);
  EXPECT_EQ(Bring("TNG_REGRA", "CODIGO;FORMULA\nA;\"MIN(9; GRAMATURA * 0,02)\"\n").errors, Errors());
  EXPECT_EQ(Bring("TNG_REGRA", "CODIGO;FORMULA\nB;ALTURA * 2\n").errors.size(), 1u);
}

TEST_F(ImportTest, WhatTheScreensKeepIsNotImported) {
  for (const char* table : {"TECEL", "TECELB", "MAT_RESERVA", "MAT_MOV", "BAIXA_FIO", "TEC_USUARIO", "NADA"}) {
    EXPECT_EQ(Bring(table, "NUMERO\n1\n").errors,
              Errors{"A tabela \"" + std::string(table) + "\" não pode ser importada."});
  }
}

TEST_F(ImportTest, AnUnreadableFileIsOneError) {
  EXPECT_EQ(Bring("CADCOR", "COR;DESCRICAO\n001;ma\xE7\xE3\n").errors,
            Errors{"Linha 2: o arquivo não está em UTF-8; grave-o em UTF-8."});
}

TEST_F(ImportTest, ARefusalOfTheDatabaseUndoesTheRowsBefore) {
  int left = 3;
  own_.Db().BeforeStatement = [&](std::string_view sql) {
    if (sql.find("INSERT INTO") == 0 && --left == 0) throw host::DatabaseError("falha provocada", 1, std::string(sql));
  };
  const ImportResult result = Bring("CADCOR", "COR;DESCRICAO\n1;A\n2;B\n3;C\n4;D\n");
  own_.Db().BeforeStatement = nullptr;
  EXPECT_EQ(result.errors, Errors{"Linha 4: falha provocada"});
  EXPECT_EQ(Count("CADCOR"), 0);
}

TEST_F(ImportTest, AFailureAtAnyStatementLeavesNothing) {
  for (int nth = 1;; ++nth) {
    ASSERT_LT(nth, 100);
    int left = nth;
    own_.Db().BeforeStatement = [&](std::string_view sql) {
      if (--left == 0) throw host::DatabaseError("falha provocada", 1, std::string(sql));
    };
    bool told = false;
    try {
      told = !Bring("CADCOR", "COR;DESCRICAO\n1;A\n2;B\n").Ok();
    } catch (const host::DatabaseError& error) {
      told = std::string(error.what()) == "falha provocada";
    }
    own_.Db().BeforeStatement = nullptr;
    if (left > 0) {
      EXPECT_FALSE(told);
      EXPECT_GT(nth, 3);
      break;
    }
    EXPECT_TRUE(told) << nth;
    EXPECT_EQ(Count("CADCOR"), 0) << nth;
  }
  EXPECT_EQ(Count("CADCOR"), 2);
}

}  // namespace
