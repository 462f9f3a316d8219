// Scripts on the real screens and a real database.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "app/script/driver.h"
#include "support/mill.h"

namespace {

class MillScript : public ::testing::Test {
 protected:
  MillScript() { test::FillSmallMill(mill_); }

  app::script::RunResult Execute(const std::string& source) {
    output_.str({});
    notes_.str({});
    return app::script::Run(mill_.App(), mill_.Person(), source,
                            {"teste.js", std::chrono::milliseconds(0), output_, notes_});
  }
  std::string Printed(const std::string& source) {
    const auto result = Execute(source);
    EXPECT_TRUE(result.ok) << result.error;
    return output_.str();
  }

  test::Mill mill_;
  std::ostringstream output_;
  std::ostringstream notes_;
};

// An order of F1 in colour 01 on the screen, saved under its number.
constexpr const char* kOrder = R"js(
  const s = open("TfmCadLoteTec");
  s.click("BtnIncluir");
  const number = s.text("EdtNumero");
  s.type("EdtMalharia", "M00001");
  s.type("EdtDeposito", "DF");
  s.append("TbItens", {Codigo: "F1", Cor: "01", Qtde: 100});
  if (!s.click("BtnGravar")) throw new Error(JSON.stringify(messages()));
)js";

TEST_F(MillScript, ValuesOfRows) {
  EXPECT_EQ(Printed(R"js(
    db.exec("INSERT INTO TEC_PERIODO (AREA, DT_INICIO, DT_FIM, CONCILIADO) VALUES (?, ?, DATE '2026-01-31', ?)",
            ["IV", "2026-01-01", false]);
    print(db.query("SELECT AREA, DT_INICIO, DT_FIM, CONCILIADO FROM TEC_PERIODO"));
    print(db.query("SELECT QTDE, LOCAL, BARRA FROM {MAT_ITEN} WHERE CODIGO = ? AND LOTE = ? AND DEPOSITO = 'D1'", ["Y1", "L1"]));
    print(db.query("SELECT CAST(0.1 AS DOUBLE PRECISION) AS X, CAST(7 AS BIGINT) AS N FROM RDB$DATABASE WHERE 1 = ?", [1]));
    print(db.query("SELECT NOME FROM {ENTIDADE} WHERE CODCLI = 'F0001'")[0].NOME);
    print(db.query("SELECT NOME FROM {ENTIDADE} WHERE CODCLI = ?", [null]));
  )js"),
            "[{\"AREA\":\"IV\",\"DT_INICIO\":\"2026-01-01\",\"DT_FIM\":\"2026-01-31\",\"CONCILIADO\":\"N\"}]\n"
            "[{\"QTDE\":100,\"LOCAL\":\"A1\",\"BARRA\":null}]\n"
            "[{\"X\":0.1,\"N\":7}]\n"
            "Fiação Serra\n"
            "[]\n");
}

TEST_F(MillScript, WhatAStatementDidStaysWhenTheScriptFails) {
  const auto result = Execute("db.exec(\"INSERT INTO {CADCOR} (COR) VALUES ('77')\");\ndb.query('SELECT NADA');");
  EXPECT_FALSE(result.ok);
  EXPECT_EQ(result.error.substr(0, 12), "teste.js:2: ");
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {CADCOR} WHERE COR = '77'").AsInteger(), 1);
}

TEST_F(MillScript, AnOrderIsTypedAndSaved) {
  EXPECT_EQ(Printed(std::string(kOrder) + R"js(
    print(number, s.text("EdtMalharia") === "", s.focused());
    s.type("EdtNumero", number);
    print(s.text("LblMalharia"), s.rows("TbItens").length, s.rows("TbItens")[0].Descricao !== null, s.rows("TbItens")[0].Custo);
    print(s.rows("TbFios").map(r => [r.Codigo, r.Consumo]));
  )js"),
            "000001 true EdtNumero\nMalharia Aurora 1 true 5\n[[\"Y1\",60],[\"Y2\",40]]\n");
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {TECEL_ITEN} WHERE NUMERO = '000001'").AsInteger(), 1);
}

TEST_F(MillScript, TheClockSetsTheDateOfANewOrder) {
  EXPECT_EQ(Printed(R"js(
    clock("2026-03-10 22:15:00");
    const s = open("TfmCadLoteTec");
    s.click("BtnIncluir");
    print(s.value("EdtData"), s.text("EdtData"));
  )js"),
            "2026-03-10 10/03/2026\n");
}

TEST_F(MillScript, RefusalsAreToldByTheMessages) {
  EXPECT_EQ(Printed(R"js(
    const s = open("TfmCadLoteTec");
    s.click("BtnIncluir");
    print(s.type("EdtMalharia", "M00003"), messages()[0].text, s.focused());
    s.type("EdtMalharia", "M00001");
    print(s.append("TbItens", {Codigo: "NADA"}), messages()[0].text);
    s.key("Escape");
    print(s.rows("TbItens").length);
  )js"),
            "false Malharia inativa ou bloqueada. Impossível continuar. EdtMalharia\n"
            "false Material não cadastrado.\n0\n");
}

TEST_F(MillScript, ALookupPicksARowOfTheDatabase) {
  EXPECT_EQ(Printed(R"js(
    const s = open("TfmCadLoteTec");
    s.click("BtnIncluir");
    lookup("PqMalharia", "M00001");
    s.search("PqMalharia");
    print(s.text("EdtMalharia"), s.text("LblMalharia"));
    lookup("PqMalharia", "M00003");
    s.search("PqMalharia");
    print(s.text("EdtMalharia"));
  )js"),
            "M00001 Malharia Aurora\nM00001\n");
  // The blocked mill was not offered.
  EXPECT_NE(notes_.str().find("M00003"), std::string::npos) << notes_.str();
}

TEST_F(MillScript, AnErrorOfTheDatabaseIsAnExceptionAndLeavesNothing) {
  mill_.Exec("CREATE EXCEPTION FALHA 'o disco encheu'");
  mill_.Exec("CREATE TRIGGER FALHA_ITEM FOR {TECEL_ITEN} BEFORE INSERT AS BEGIN EXCEPTION FALHA; END");
  const auto result = Execute(kOrder);
  EXPECT_FALSE(result.ok);
  EXPECT_EQ(result.error.substr(0, 12), "teste.js:8: ") << result.error;
  EXPECT_NE(result.error.find("o disco encheu"), std::string::npos) << result.error;
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {TECEL}").AsInteger(), 0);
}

TEST_F(MillScript, TheOperatorTakesTheYarnInTheModalScreen) {
  mill_.SetParameter("MAL", 70, "N");
  EXPECT_EQ(Printed(std::string(kOrder) + R"js(
    const w = open("TfmMovBaiTec");
    w.type("EdtLote", number);
    w.select("TbItens", 0);
    w.type("EdtTara", 0);
    w.type("EdtQtde", 10);
    modal("TFmMovBaiFio", y => {
      while (y.rows("TbBaixa").length > 0) {
        y.select("TbBaixa", 0);
        y.select("TbEst", 0);
        y.click("BitBtn1");
        if (screen("fmMovBaiFio") === null || y.rows("TbBaixa").length === 0) break;
      }
    });
    print(w.click("BtnConfirma"), messages().map(m => m.text));
    print(db.query("SELECT CODIGO, LOTE, QTDE FROM {BAIXA_FIO} ORDER BY CODIGO"));
    print(db.query("SELECT ORDEM, QTDE FROM {TECELB}"));
  )js"),
            "true []\n"
            "[{\"CODIGO\":\"Y1\",\"LOTE\":\"L1\",\"QTDE\":6},{\"CODIGO\":\"Y2\",\"LOTE\":\"L1\",\"QTDE\":4}]\n"
            "[{\"ORDEM\":1,\"QTDE\":10}]\n");
}

TEST_F(MillScript, AScriptThatGivesUpInTheModalScreenLeavesNoRoll) {
  mill_.SetParameter("MAL", 70, "N");
  const auto result = Execute(std::string(kOrder) + R"js(
    const w = open("TfmMovBaiTec");
    w.type("EdtLote", number);
    w.select("TbItens", 0);
    w.type("EdtQtde", 10);
    modal("TFmMovBaiFio", y => { throw new Error("chega"); });
    w.click("BtnConfirma");
  )js");
  EXPECT_EQ(result.error, "teste.js:14: chega");
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {TECELB}").AsInteger(), 0);
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {BAIXA_FIO}").AsInteger(), 0);
}

TEST_F(MillScript, AnOrderIsPrintedAndItsRollsAreLabelled) {
  EXPECT_EQ(Printed(std::string(kOrder) + R"js(
    s.type("EdtNumero", number);
    s.click("BtnImprimir");
    print(jobs().map(job => job.report + " " + job.kind));
    s.select("TbItens", {Codigo: "F1"});
    answer("Quantidade:", "2");
    s.menu("Gerar Etiqueta(s)");
    print(messages().map(shown => shown.text));
    print(db.query("SELECT LOTE, QTDE FROM {MAT_ITEN} WHERE UDF_LEN(LOTE) = 9 ORDER BY LOTE"));
  )js"),
            "[\"WTecLoteCad W\"]\n"
            "[\"Etiquetas Geradas.\"]\n"
            "[{\"LOTE\":\"000001001\",\"QTDE\":0},{\"LOTE\":\"000001002\",\"QTDE\":0}]\n");
}

TEST_F(MillScript, MetresAreMadeIntoAQuantityWithTheCursorOnIt) {
  EXPECT_EQ(Printed(R"js(
    const s = open("TfmCadLoteTec");
    s.click("BtnIncluir");
    s.type("EdtMalharia", "M00001");
    s.append("TbItens", {Codigo: "FM", Cor: "01", Qtde: 1});
    s.cell("TbItens", "Qtde");
    answer("Informe a quantidade:", "1500");
    s.menu("Calcular Metros");
    print(s.rows("TbItens")[0].Qtde);
  )js"),
            "375\n");
}

}  // namespace
