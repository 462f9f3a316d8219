// The order for the mill on paper: with nothing, with one item, with more than a page holds.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

#include "app/printing/page/pdf.h"
#include "host/date.h"
#include "host/decimal.h"
#include "tests/printing/decoded.h"
#include "tests/printing/paper_screen.h"

namespace {

using app::printing::Printout;
using test::Collisions;
using test::Decoded;
using test::FieldsOfRow;
using test::OutputOf;
using test::PaperScreen;
using test::PictureFolder;
using test::TextOf;
using test::WritePage;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const std::vector<std::string> kOrderFields{
    "NOME",      "CODIGO",          "DESCRICAO",  "PESO_UNI",   "UNIDADE",       "PEDIDO",      "QTDE",
    "QTDE_B",    "LARGURA",         "GRAMATURA",  "KG_ROLO",    "DESC_FLUXO",    "COR",         "DESCCOR",
    "DESCMAQ",   "CUSTO",           "DESCRICAO2", "NUMERO",     "MALHARIA",      "PERIODO",     "OBSERVACAO",
    "DT_INICIO", "FICHA",           "MAQUINA",    "FLUXO",      "RPM",           "TPONTO",      "SITUACAO",
    "DEPOSITO",  "DESC_DEP_ENT",    "LINHA",      "DESC_LINHA", "ALIMENTADORES", "DESPERDICIO", "DIAMETRO",
    "FINURA",    "OBS_CUSTO_MALHA", "CICLOS",     "RPM_MAT",    "OBS_ITEM"};
const std::vector<std::string> kYarnFields{"Codigo", "Descricao", "Cor", "DescCor", "Unidade",  "Consumo",
                                           "LFA",    "Roca",      "NE",  "Tensao",  "Milimetro"};
const std::vector<std::string> kPatternFields{"MATERIAL", "COR",      "ORDEM",      "CODIGO",        "DESCRICAO",
                                              "COR_I",    "DESC_COR", "MILIMETROS", "ALIMENTADORES", "OBSERVACAO"};

FieldsOfRow Header() {
  return {{"NOME", "MALHARIA SANTA CLARA LTDA"},
          {"NUMERO", "000123"},
          {"MALHARIA", "00101"},
          {"PERIODO", "15 DIAS"},
          {"OBSERVACAO", "Conferir gramatura no primeiro rolo.\nNão misturar lotes de fio."},
          {"DT_INICIO", host::Date::FromIso("2026-03-10").value()},
          {"FICHA", "FL-77"},
          {"MAQUINA", "03"},
          {"DESCMAQ", "CIRCULAR 30 POL"},
          {"FLUXO", "01"},
          {"DESC_FLUXO", "MALHA CRUA"},
          {"RPM", 28},
          {"TPONTO", 2.815},
          {"DEPOSITO", "02"},
          {"DESC_DEP_ENT", "MALHA CRUA MATRIZ"}};
}

FieldsOfRow Item(const std::string& code, const std::string& colour, double quantity) {
  FieldsOfRow row = Header();
  const FieldsOfRow own{{"CODIGO", code},
                        {"DESCRICAO", "MEIA MALHA " + code},
                        {"DESCRICAO2", "MEIA MALHA 30/1 " + code},
                        {"UNIDADE", "KG"},
                        {"COR", colour},
                        {"DESCCOR", "LISTRADO " + colour},
                        {"QTDE", quantity},
                        {"LARGURA", 1.75},
                        {"GRAMATURA", 190},
                        {"KG_ROLO", 20},
                        {"ALIMENTADORES", 2640},
                        {"DIAMETRO", 30},
                        {"FINURA", 28},
                        {"CICLOS", 12},
                        {"RPM_MAT", 25}};
  row.insert(row.end(), own.begin(), own.end());
  return row;
}

FieldsOfRow Yarn(const std::string& code, double quantity) {
  return {{"Codigo", code},  {"Descricao", "FIO ALGODÃO " + code},
          {"Cor", "003"},    {"DescCor", "AZUL MARINHO"},
          {"Unidade", "KG"}, {"Consumo", quantity},
          {"LFA", 7392},     {"Roca", 90},
          {"NE", 30},        {"Tensao", 4},
          {"Milimetro", 2.8}};
}

FieldsOfRow Pattern(const std::string& fabric, const std::string& colour, int order, const std::string& remark) {
  return {{"MATERIAL", fabric},
          {"COR", colour},
          {"ORDEM", order},
          {"CODIGO", "F0024"},
          {"DESCRICAO", "FIO TINTO 30/1"},
          {"COR_I", "003"},
          {"DESC_COR", "AZUL"},
          {"MILIMETROS", 20},
          {"ALIMENTADORES", 24},
          {"OBSERVACAO", remark}};
}

class OrderPaper : public testing::Test {
 protected:
  OrderPaper() {
    Order({Item("M0111", "L01", 120)});
    Yarns({Yarn("F0024", 98.765), Yarn("F0018", 4.321)});
    Patterns({Pattern("M0111", "L01", 1, "LISTRA LARGA"), Pattern("M0111", "L01", 2, "")});
    Rolls({{"M0111", "L01"}}, 6);
  }

  void Order(const std::vector<FieldsOfRow>& rows) { screen_.Add("QryRelatorio", kOrderFields, rows); }
  void Yarns(const std::vector<FieldsOfRow>& rows) { screen_.Add("TbFios", kYarnFields, rows); }
  void Patterns(const std::vector<FieldsOfRow>& rows) { screen_.Add("QryRaport", kPatternFields, rows); }
  void Rolls(const std::vector<std::pair<std::string, std::string>>& fabrics, int each) {
    std::vector<FieldsOfRow> rows;
    for (const auto& [code, colour] : fabrics) {
      for (int at = 0; at < each; ++at) {
        std::string number = std::to_string(rows.size() + 1);
        number.insert(0, number.size() < 3 ? 3 - number.size() : 0, '0');
        rows.push_back({{"Numero", "000123"}, {"NR", number}, {"Codigo", code}, {"Cor", colour}});
      }
    }
    screen_.Add("TbRolos", {"Numero", "NR", "Codigo", "Cor"}, rows);
  }
  void Huge(int items) {
    std::vector<FieldsOfRow> rows;
    std::vector<std::pair<std::string, std::string>> fabrics;
    for (int at = 0; at < items; ++at) {
      const std::string code = "M" + std::to_string(1000 + at);
      rows.push_back(Item(code, "0", 100.5));
      rows.back().emplace_back("OBS_ITEM", at % 3 == 0 ? "Cuidado com o item " + code : std::string());
      fabrics.emplace_back(code, "0");
    }
    Order(rows);
    Rolls(fabrics, 2);
  }

  Printout Drawn() { return screen_.Print("WTecLoteCad"); }
  std::string Typed() { return screen_.Print("WTecLoteCad", 'T').bytes; }

  PaperScreen screen_;
};

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) ++count;
  return count;
}

void ExpectSoundPages(const Printout& paper) {
  for (std::size_t page = 0; page < paper.pages.size(); ++page) {
    EXPECT_EQ(Collisions(paper, page), "") << page;
    EXPECT_THAT(TextOf(paper, page),
                HasSubstr("Página " + std::to_string(page + 1) + " de " + std::to_string(paper.pages.size())));
    EXPECT_THAT(TextOf(paper, page), HasSubstr("000123"));
    for (const auto& text : paper.pages[page].texts) {
      EXPECT_GE(text.x, 11.9) << text.text;
      EXPECT_LE(text.x + text.width, 198.1) << text.text;
      EXPECT_LE(text.y + text.height, 288) << text.text;
    }
    for (const auto& box : paper.pages[page].boxes) EXPECT_LE(box.y + box.height, 287.1);
  }
}

// --- drawn -----------------------------------------------------------------------------------------------------------

TEST_F(OrderPaper, TellsTheMillWhatItNeeds) {
  const Printout paper = Drawn();
  ASSERT_EQ(paper.pages.size(), 1U);
  const std::string text = TextOf(paper);
  for (const char* part : {"TECELAGEM SÃO JOSÉ LTDA",
                           "Ordem de Tecelagem",
                           "000123",
                           "00101 MALHARIA SANTA CLARA LTDA",
                           "10/03/2026",
                           "15 DIAS",
                           "03 CIRCULAR 30 POL",
                           "01 MALHA CRUA",
                           "28",
                           "2,815",
                           "FL-77",
                           "02 MALHA CRUA MATRIZ",
                           "120,000 kg",
                           "M0111",
                           "MEIA MALHA M0111",
                           "Cor L01 LISTRADO L01",
                           "MEIA MALHA 30/1 M0111",
                           "Kg por rolo",
                           "20,00",
                           "1,75",
                           "190",
                           "Agulhas",
                           "2640",
                           "Ciclos",
                           "F0024",
                           "FIO ALGODÃO F0024",
                           "003 AZUL MARINHO",
                           "7392",
                           "2,80",
                           "98,765",
                           "103,086",
                           "Raport",
                           "LISTRA LARGA",
                           "Observações",
                           "Conferir gramatura no primeiro rolo.",
                           "Não misturar lotes de fio.",
                           "Rolos esperados (6)",
                           "006",
                           "Emitido por",
                           "Recebido na malharia",
                           "Página 1 de 1"}) {
    EXPECT_THAT(text, HasSubstr(part));
  }
  ExpectSoundPages(paper);
}

TEST_F(OrderPaper, ItsNumberIsScannedFromPaperAndPdf) {
  const PictureFolder folder;
  const Printout paper = Drawn();
  for (const int dpi : {203, 300, 600}) {
    const std::string file = folder.File(std::to_string(dpi) + ".png");
    WritePage(paper, 0, dpi, file);
    EXPECT_THAT(Decoded(file), ElementsAre("CODE-128:000123")) << dpi;
  }
  app::printing::WritePdf(paper, folder.File("order.pdf"));
  OutputOf("pdftoppm -r 300 -png '" + folder.File("order.pdf") + "' '" + folder.File("page") + "'");
  EXPECT_THAT(Decoded(folder.File("page-1.png")), ElementsAre("CODE-128:000123"));
  const std::string text = OutputOf("pdftotext -layout '" + folder.File("order.pdf") + "' -");
  for (const char* part : {"Ordem de Tecelagem", "Prazo de entrega", "Depósito de entrada", "Fios", "Código", "Tensão",
                           "FIO ALGODÃO F0024", "Observações", "Não misturar lotes de fio."}) {
    EXPECT_THAT(text, HasSubstr(part));
  }
}

TEST_F(OrderPaper, WithoutItemsYarnsPatternsAndRollsSaysSo) {
  Order({Header()});
  Yarns({});
  Patterns({});
  Rolls({}, 0);
  const Printout paper = Drawn();
  ASSERT_EQ(paper.pages.size(), 1U);
  const std::string text = TextOf(paper);
  EXPECT_THAT(text, HasSubstr("Nenhum item."));
  EXPECT_THAT(text, HasSubstr("Nenhum fio na composição das malhas."));
  EXPECT_THAT(text, Not(HasSubstr("Raport")));
  EXPECT_THAT(text, Not(HasSubstr("Rolos esperados")));
  ExpectSoundPages(paper);
}

TEST_F(OrderPaper, TwoHundredItemsOverManyPages) {
  Huge(200);
  const Printout paper = Drawn();
  EXPECT_GT(paper.pages.size(), 5U);
  ExpectSoundPages(paper);
  const std::string text = TextOf(paper);
  for (int at = 0; at < 200; ++at) {
    EXPECT_EQ(CountOf(text, "\nMEIA MALHA M" + std::to_string(1000 + at) + "\n"), 1U) << at;
  }
  EXPECT_THAT(text, HasSubstr("20.100,000 kg"));
  EXPECT_THAT(text, HasSubstr("Rolos esperados (400)"));
  EXPECT_THAT(text, HasSubstr("\n400\n"));
  // A remark stands on the page of its item.
  for (std::size_t page = 0; page < paper.pages.size(); ++page) {
    const std::string here = TextOf(paper, page);
    for (int at = 0; at < 200; at += 3) {
      const std::string code = "M" + std::to_string(1000 + at);
      EXPECT_EQ(CountOf(here, "Cuidado com o item " + code), CountOf(here, "\nMEIA MALHA " + code + "\n")) << code;
    }
  }
}

TEST_F(OrderPaper, ManyRollsAreListedWithoutRoomForWeights) {
  Rolls({{"M0111", "L01"}}, 3000);
  const Printout paper = Drawn();
  EXPECT_THAT(TextOf(paper), HasSubstr("Rolos esperados (3000)\n"));
  EXPECT_THAT(TextOf(paper), HasSubstr("\n3000\n"));
  ExpectSoundPages(paper);
}

TEST_F(OrderPaper, RowsThatDifferInTechnicalDataOnlyAreOneItem) {
  FieldsOfRow other = Item("M0111", "L01", 120);
  for (auto& [name, value] : other) {
    if (name == "ALIMENTADORES") value = 2262;
  }
  Order({Item("M0111", "L01", 120), other, Item("M0111", "L02", 30)});
  const std::string text = TextOf(Drawn());
  EXPECT_EQ(CountOf(text, "\nMEIA MALHA M0111\n"), 2U);
  EXPECT_THAT(text, HasSubstr("2640 / 2262"));
  EXPECT_THAT(text, HasSubstr("150,000 kg"));
}

TEST_F(OrderPaper, TotalsAreByUnit) {
  FieldsOfRow pieces = Item("M0112", "0", 300);
  for (auto& [name, value] : pieces) {
    if (name == "UNIDADE") value = "PC";
  }
  Order({Item("M0111", "L01", 120.5), pieces});
  EXPECT_THAT(TextOf(Drawn()), HasSubstr("120,500 kg  +  300 pc"));
}

TEST_F(OrderPaper, PatternsOfOtherFabricsStayAway) {
  Order({Item("M0111", "L01", 120), Item("M0108", "L02", 40)});
  Patterns({Pattern("M0108", "L01", 1, "DE NINGUÉM"), Pattern("M0111", "L01", 1, "DESTA"),
            Pattern("M0111", "L02", 1, "DE OUTRA")});
  const std::string text = TextOf(Drawn());
  EXPECT_THAT(text, HasSubstr("DESTA"));
  EXPECT_THAT(text, Not(HasSubstr("DE NINGUÉM")));
  EXPECT_THAT(text, Not(HasSubstr("DE OUTRA")));
}

TEST_F(OrderPaper, LongAndOddTextsStayInTheirPlaces) {
  const std::string words = "MALHA DUPLA EXTRA LARGA WWWWWWWWWWWWWWWWWWWWWWWWWW ^~<>&\" ÇÃÕ ";
  std::string remark;
  for (int at = 0; at < 400; ++at) remark += "Observação número " + std::to_string(at) + " desta ordem. ";
  FieldsOfRow row = Item("M0111", "L01", 123456789.125);
  for (auto& [name, value] : row) {
    if (name == "OBSERVACAO") value = remark;
    if (name == "DESCRICAO" || name == "DESCCOR" || name == "NOME" || name == "DESCMAQ" || name == "DESC_FLUXO")
      value = words + words;
  }
  row.emplace_back("OBS_ITEM", words + words);
  row.emplace_back("OBS_CUSTO_MALHA", words);
  row.emplace_back("PEDIDO", "WWWWWWWWWWWW");
  Order({row});
  const Printout paper = Drawn();
  EXPECT_GT(paper.pages.size(), 1U);
  ExpectSoundPages(paper);
  EXPECT_THAT(TextOf(paper), HasSubstr("123.456.789,125 kg"));
  EXPECT_THAT(TextOf(paper), HasSubstr("399 desta ordem."));
}

TEST_F(OrderPaper, NothingKnownButTheNumber) {
  Order({{{"NUMERO", "000123"}, {"CODIGO", "M1"}}});
  Yarns({{{"Codigo", "F1"}}});
  Patterns({});
  Rolls({}, 0);
  ExpectSoundPages(Drawn());
  EXPECT_THAT(Typed(), HasSubstr("ORDEM DE TECELAGEM 000123"));
}

// --- on a line printer -----------------------------------------------------------------------------------------------

std::vector<std::string> Lines(const std::string& page) {
  std::vector<std::string> lines;
  std::string line;
  for (const char c : page) {
    if (c == '\n') {
      lines.push_back(line);
      line.clear();
    } else if (c != '\r') {
      line += c;
    }
  }
  if (!line.empty()) lines.push_back(line);
  return lines;
}

std::vector<std::string> Pages(const std::string& bytes) {
  std::vector<std::string> pages;
  std::size_t from = 0;
  for (std::size_t at = bytes.find('\f'); at != std::string::npos; at = bytes.find('\f', from)) {
    pages.push_back(bytes.substr(from, at - from));
    from = at + 1;
  }
  EXPECT_EQ(from, bytes.size()) << "the last page is fed out too";
  return pages;
}

TEST_F(OrderPaper, TypedLinesFitThePrinter) {
  for (const int items : {1, 200}) {
    Huge(items);
    const auto pages = Pages(Typed());
    for (std::size_t at = 0; at < pages.size(); ++at) {
      const auto lines = Lines(pages[at]);
      EXPECT_LE(lines.size(), 60U);
      ASSERT_GE(lines.size(), 2U);
      // In code page 850 "á" is A0.
      EXPECT_THAT(lines[0], HasSubstr("P\xa0gina " + std::to_string(at + 1) + " de " + std::to_string(pages.size())));
      for (const std::string& line : lines) EXPECT_LE(line.size(), 80U) << line;
    }
    std::string all = Typed();
    for (int item = 0; item < items; ++item) {
      EXPECT_THAT(all, HasSubstr("\nM" + std::to_string(1000 + item) + " ")) << item;
    }
    // One for each roll, and the end of the line of signatures.
    EXPECT_EQ(CountOf(all, "________\r\n") + CountOf(all, "________   "), static_cast<std::size_t>(items) * 2 + 1);
  }
}

TEST_F(OrderPaper, TypedTellsWhatTheDrawnOneTells) {
  const std::string all = Typed();
  for (const char* part :
       {"ORDEM DE TECELAGEM 000123", "00101 MALHARIA SANTA CLARA LTDA", "10/03/2026", "15 DIAS", "FL-77", "M0111",
        "120,000 KG", "Kg/rolo 20,00", "Larg 1,75", "F0024", "98,765 KG", "M0111 Cor L01", "LISTRA LARG",
        "Conferir gramatura no primeiro rolo.", "006  ________", "Emitido por"}) {
    EXPECT_THAT(all, HasSubstr(part));
  }
  EXPECT_THAT(all, HasSubstr("N\xc6o misturar lotes de fio."));  // "ã" in code page 850
}

}  // namespace
