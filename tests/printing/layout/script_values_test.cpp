// What a layout sees of the screen, and how it writes values.
#include <gmock/gmock.h>

#include "tests/printing/layout_fixture.h"

namespace {

using test::TextOf;

class LayoutValues : public test::LayoutTest {
 protected:
  /// What an expression gives, as a text layout writes it.
  std::string Value(const std::string& expression) {
    return Printed("text({ encoding: 'utf-8', write: () => String(" + expression + ") });", 'T').bytes;
  }
};

TEST_F(LayoutValues, RowsAreObjectsByFieldNameAndInCapitals) {
  screen_.Add("TbItens", {"Codigo", "Qtde", "Dia", "Obs"},
              {{{"Codigo", "M1"}, {"Qtde", 10.5}, {"Dia", host::Date::FromIso("2026-03-10").value()}},
               {{"Codigo", "Açaí"}, {"Qtde", 2}}});
  EXPECT_EQ(Value("TbItens.count"), "2");
  EXPECT_EQ(Value("TbItens.rows.length"), "2");
  EXPECT_EQ(Value("TbItens.rows[0].Codigo + TbItens.rows[0].CODIGO"), "M1M1");
  EXPECT_EQ(Value("TbItens.rows[0].Qtde + 1"), "11.5");
  EXPECT_EQ(Value("TbItens.rows[0].Dia"), "2026-03-10");
  EXPECT_EQ(Value("TbItens.rows[0].OBS === null"), "true");
  EXPECT_EQ(Value("TbItens.rows.map(r => r.Codigo).join('+')"), "M1+Açaí");
  EXPECT_EQ(Value("TbItens.rows === TbItens.rows"), "true") << "made once";
  EXPECT_EQ(Value("Object.keys(TbItens.first).join()"), "Codigo,Qtde,Dia,Obs");
  EXPECT_EQ(Value("JSON.stringify(TbItens.rows[1])"), R"({"Codigo":"Açaí","Qtde":2,"Dia":null,"Obs":null})");
}

TEST_F(LayoutValues, TheCurrentRowIsTheCursors) {
  auto& rows = AddRows(3);
  rows.GoTo(2);
  EXPECT_EQ(Value("TbLista.current.Nome"), "R002");
  EXPECT_EQ(Value("TbLista.rows[1] === TbLista.current"), "true");
  EXPECT_EQ(Value("TbLista.first.Nome"), "R001");
  AddRows(0);
  EXPECT_EQ(Value("TbLista.current"), "null");
  EXPECT_EQ(Value("TbLista.first"), "null");
}

TEST_F(LayoutValues, OnlyRowsThatTheFilterLetsThrough) {
  auto& rows = AddRows(5);
  rows.SetFilter("Qtde > 3");
  rows.SetFiltered(true);
  EXPECT_EQ(Value("TbLista.rows.map(r => r.Nome).join()"), "R004,R005");
}

TEST_F(LayoutValues, ARowBeingTypedIsSeenAsItIs) {
  auto& rows = AddRows(2);
  rows.Edit();
  rows["Nome"].Set("digitado");
  EXPECT_EQ(Value("TbLista.current.Nome + TbLista.rows[0].Nome"), "digitadodigitado");
  rows.Cancel();
  rows.Append();
  rows["Nome"].Set("nova");
  EXPECT_EQ(Value("TbLista.current.Nome + TbLista.count"), "nova2");
}

TEST_F(LayoutValues, ShownIsWhatTheGridShows) {
  auto& rows =
      screen_.Add("TbItens", {"Qtde", "Dia"}, {{{"Qtde", 10.5}, {"Dia", host::Date::FromIso("2026-03-10").value()}}});
  rows.FieldByName("Qtde").SetFormat("0.000");
  EXPECT_EQ(Value("TbItens.shown(TbItens.first, 'qtde')"), "10,500");
  EXPECT_EQ(Value("TbItens.shown(TbItens.first, 'DIA')"), "10/03/2026");
  EXPECT_EQ(Value("TbItens.shown(null, 'DIA')"), "");
}

TEST_F(LayoutValues, Info) {
  EXPECT_EQ(Value("[info.user, info.company, info.moment, info.report].join('|')"),
            "ADMIN|TECELAGEM SÃO JOSÉ LTDA|2026-03-10 22:15:00|Teste");
}

TEST_F(LayoutValues, NumbersAndDatesArePortuguese) {
  EXPECT_EQ(Value("number(1234.5, '0.000')"), "1234,500");
  EXPECT_EQ(Value("number(1234567.891, '#,##0.00')"), "1.234.567,89");
  EXPECT_EQ(Value("number(999, '#,##0')"), "999");
  EXPECT_EQ(Value("number(1000, '#,##0')"), "1.000");
  EXPECT_EQ(Value("number(-123456, '#,##0.0')"), "-123.456,0");
  EXPECT_EQ(Value("number(0.185, '0.00')"), "0,19");
  EXPECT_EQ(Value("number(12.5)"), "12,5");
  EXPECT_EQ(Value("number(0.1 + 0.2)"), "0,3") << "what binary arithmetic leaves is not shown";
  EXPECT_EQ(Value("number(null, '0')"), "");
  EXPECT_EQ(Value("date('2026-03-10') + date('2026-03-10 22:15:00') + date(null) + date('')"), "10/03/202610/03/2026");
  EXPECT_EQ(Value("date('1899-12-30')"), "") << "no date";
  EXPECT_EQ(Value("time('2026-03-10 22:15:59') + time('08:05:00') + time(null)"), "22:1508:05");
  EXPECT_EQ(Value("date('livre') + time('livre')"), "livrelivre");
}

TEST_F(LayoutValues, WhetherABarCodeCanHoldAValue) {
  EXPECT_EQ(Value("encodes('ean13', '789123456789')"), "true");
  EXPECT_EQ(Value("encodes('ean13', 'ABC')"), "false");
  EXPECT_EQ(Value("encodes('ean13', null)"), "false");
}

TEST_F(LayoutValues, HowWideATextIs) {
  EXPECT_EQ(Value("textWidth('')"), "0");
  EXPECT_EQ(Value("Math.abs(textWidth('fifi') - 2 * textWidth('fi')) < 0.001"), "true");
  EXPECT_EQ(Value("textWidth('abc', { size: 18 }) > 1.9 * textWidth('abc')"), "true");
  EXPECT_EQ(Value("textWidth('abc', { bold: true }) > textWidth('abc')"), "true");
}

TEST_F(LayoutValues, TheScreensOwnFunctionsAreAskedWithTextArguments) {
  std::string asked;
  screen_.Functions().OnUnknownFunction = [&](std::string_view name, const std::vector<std::string>& arguments) {
    asked += std::string(name) + "(";
    for (const auto& argument : arguments) asked += "[" + argument + "]";
    asked += ")";
    return name == "ZeroE" ? std::optional<std::string>("00ação") : std::nullopt;
  };
  EXPECT_EQ(Value("ZeroE('7', 2.5, null, true) + '!'"), "00ação!");
  EXPECT_EQ(asked, "ZeroE([7][2.5][][true])");
  EXPECT_EQ(Value("[1, 2].map(n => ZeroE(n)).join()"), "00ação,00ação");
}

TEST_F(LayoutValues, AFunctionThatTheScreenDoesNotKnowEither) {
  screen_.Functions().OnUnknownFunction = [](std::string_view, const std::vector<std::string>&) {
    return std::optional<std::string>();
  };
  EXPECT_EQ(Refusal("\n\ntext({\n  write: () => Outra('x'),\n});", 'T'), "linha 4: a função \"Outra\" não existe.");
  screen_.Functions().OnUnknownFunction = nullptr;
  EXPECT_EQ(Refusal("const x = Outra();\nreport({ body: [] });"), "linha 1: a função \"Outra\" não existe.");
}

TEST_F(LayoutValues, ANameThatIsNotCalledIsToldAsUnknown) {
  EXPECT_EQ(Refusal("report({\n body: [table({ rows: TbItms.rows, columns: [] })] });"),
            "linha 2: não há conjunto de dados, função ou variável \"TbItms\".");
  EXPECT_EQ(Refusal("report({ body: [\n paragraph('x' + nada)] });"),
            "linha 2: não há conjunto de dados, função ou variável \"nada\".");
  EXPECT_EQ(Value("typeof TbItms"), "function") << "a layout may ask for a dataset that is not always there";
}

TEST_F(LayoutValues, AnErrorOfTheScreensOwnFunctionGoesThrough) {
  struct Broken : std::runtime_error {
    using std::runtime_error::runtime_error;
  };
  screen_.Functions().OnUnknownFunction = [](std::string_view,
                                             const std::vector<std::string>&) -> std::optional<std::string> {
    throw Broken("o banco caiu");
  };
  EXPECT_THROW(Value("Qualquer()"), Broken);
  screen_.Functions().OnUnknownFunction = [](std::string_view,
                                             const std::vector<std::string>&) -> std::optional<std::string> {
    throw host::InputError("O texto não é um número.");
  };
  EXPECT_EQ(Refusal("text({ write: () =>\n CHR1('x') });", 'T'), "linha 2: O texto não é um número.");
}

}  // namespace
