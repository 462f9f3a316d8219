// The roll's label as it leaves the printer: what it tells, that it can be scanned, that nothing runs into anything.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "app/printing/barcode.h"
#include "host/date.h"
#include "tests/printing/decoded.h"
#include "tests/printing/paper_screen.h"
#include "writeoff/label_functions.h"

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
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;
using testing::UnorderedElementsAre;

const std::vector<std::string> kRollFields{"NUMERO",     "ORDEM",    "DT_LAN",      "CODIGO", "DESCRICAO", "COR",
                                           "QTDE",       "QTDE_R",   "LOTE",        "LOCAL",  "NF_RET",    "NF_COB",
                                           "TURNO",      "DEPOSITO", "FUNCIONARIO", "NOME",   "PEDIDO",    "MAQUINA",
                                           "OBSERVACAO", "FICHA",    "DESC_MAQUINA"};

FieldsOfRow UsualRoll() {
  return {{"NUMERO", "000123"},
          {"ORDEM", 12},
          {"DT_LAN", host::Date::FromIso("2026-03-10").value()},
          {"CODIGO", "M0111"},
          {"DESCRICAO", "MEIA MALHA LISTRADA FIO TINTO"},
          {"COR", "L01"},
          {"QTDE", 20.4},
          {"QTDE_R", 1},
          {"LOTE", "000123012"},
          {"TURNO", "2"},
          {"FUNCIONARIO", "00012"},
          {"NOME", "JOÃO DA CONCEIÇÃO"},
          {"MAQUINA", "03"},
          {"DESC_MAQUINA", "CIRCULAR 30 POL"}};
}

FieldsOfRow UsualFabric() {
  return {{"DESC_COR", "LISTRADO MARINHO/BRANCO"},
          {"COMPOSICAO", "49% ALGODÃO 40,9% ALGODÃO 3% POLIÉSTER 7,1% ELASTANO"},
          {"LARGURA", 1.7},
          {"GRAMATURA", 185},
          {"UNIDADE", "KG"},
          {"BARRA", "7891234501127"}};
}

// With other values in some fields; one that is null is put in as null.
FieldsOfRow With(FieldsOfRow row, const FieldsOfRow& changes) {
  for (const auto& [field, value] : changes) {
    bool found = false;
    for (auto& [name, old] : row) {
      if (name != field) continue;
      old = value;
      found = true;
    }
    if (!found) row.emplace_back(field, value);
  }
  return row;
}

class RollLabel : public testing::Test {
 protected:
  RollLabel() {
    Roll(UsualRoll());
    Fabric(UsualFabric());
    Defects({});
    screen_.Add("TbItens", {"Codigo", "Cor", "Desc_Cor", "Unidade"},
                {{{"Codigo", "M0111"}, {"Cor", "L01"}, {"Desc_Cor", "COR DO ITEM"}, {"Unidade", "KG"}}});
    screen_.Functions().OnUnknownFunction = [](std::string_view name, const std::vector<std::string>& arguments) {
      return writeoff::LabelFunction(name, arguments);
    };
  }

  void Roll(const FieldsOfRow& row) { screen_.Add("TbRolos", kRollFields, {row}); }
  void Fabric(const FieldsOfRow& row) {
    screen_.Add("QryEtiqueta", {"DESC_COR", "COMPOSICAO", "LARGURA", "GRAMATURA", "UNIDADE", "BARRA"}, {row});
  }
  void Defects(const std::vector<FieldsOfRow>& rows) {
    screen_.Add("QryDefeitos", {"NUMERO", "ROLO", "CODIGO", "DESCRICAO"}, rows);
  }
  static FieldsOfRow Defect(const std::string& name, int roll = 12) {
    return {{"NUMERO", "000123"}, {"ROLO", roll}, {"CODIGO", name.substr(0, 3)}, {"DESCRICAO", name}};
  }

  Printout Drawn() { return screen_.Print("WEtqTecRolo"); }
  std::string Commands() { return screen_.Print("WEtqTecRolo", 'T').bytes; }

  PaperScreen screen_;
};

// Rolls that a label must bear: nothing known, everything too long, no weight, a weight that no scale shows.
struct OddRoll {
  std::string name;
  FieldsOfRow roll;
  FieldsOfRow fabric;
  int defects = 0;
};

void PrintTo(const OddRoll& odd, std::ostream* out) { *out << odd.name; }

std::vector<OddRoll> OddRolls() {
  const std::string words =
      "MALHA DUPLA COM ELASTANO EXTRA LARGA WWWWWWWWWWWW DE ALGODÃO PENTEADO ORGÂNICO, TINTA EM FIO, ACABAMENTO "
      "ESPECIAL";
  return {
      {"usual", {}, {}, 0},
      {"nothing known",
       {{"DT_LAN", {}},
        {"DESCRICAO", {}},
        {"COR", {}},
        {"QTDE", {}},
        {"QTDE_R", {}},
        {"LOTE", {}},
        {"TURNO", {}},
        {"FUNCIONARIO", {}},
        {"NOME", {}},
        {"MAQUINA", {}},
        {"DESC_MAQUINA", {}}},
       {{"DESC_COR", {}}, {"COMPOSICAO", {}}, {"LARGURA", {}}, {"GRAMATURA", {}}, {"UNIDADE", {}}, {"BARRA", {}}},
       0},
      {"all too long",
       {{"DESCRICAO", words},
        {"COR", "WWWWWW"},
        {"CODIGO", "WWWWWWWWWWWWWWW"},
        {"LOTE", "W23456789012345"},
        {"NOME", words},
        {"DESC_MAQUINA", words},
        {"TURNO", "NOTURNO EXTRA"},
        {"MAQUINA", "99999"}},
       {{"DESC_COR", words}, {"COMPOSICAO", words + words}},
       30},
      {"no weight", {{"QTDE", 0}, {"QTDE_R", 0}}, {}, 1},
      {"huge weight", {{"QTDE", 123456789.123}, {"QTDE_R", 99999}}, {}, 3},
      {"accents", {{"DESCRICAO", "ÇÃÕÁÉÍÓÚÂÊÔÀÜ çãõáéíóúâêôàü"}, {"LOTE", "LOTE-Ç"}}, {}, 2},
      {"signs", {{"DESCRICAO", "^XZ~JA_5E\\& \"MALHA\" <b>"}, {"LOTE", "A^B~C_D"}, {"NOME", "~HS^XA"}}, {}, 2},
  };
}

class OddRollLabel : public RollLabel, public testing::WithParamInterface<OddRoll> {
 protected:
  OddRollLabel() {
    Roll(With(UsualRoll(), GetParam().roll));
    Fabric(With(UsualFabric(), GetParam().fabric));
    std::vector<FieldsOfRow> rows;
    rows.reserve(static_cast<std::size_t>(GetParam().defects));
    for (int at = 0; at < GetParam().defects; ++at) {
      rows.push_back(Defect("DEFEITO DE NÚMERO " + std::to_string(at) + " COM ^SINAL~ E NOME"));
    }
    Defects(rows);
  }
};

INSTANTIATE_TEST_SUITE_P(Rolls, OddRollLabel, testing::ValuesIn(OddRolls()));

// --- drawn ---------------------------------------------------------------------------------------------------------

TEST_F(RollLabel, TellsTheRoll) {
  const Printout label = Drawn();
  ASSERT_EQ(label.pages.size(), 1U);
  EXPECT_DOUBLE_EQ(label.width, 100);
  EXPECT_DOUBLE_EQ(label.height, 60);
  const std::string text = TextOf(label);
  for (const char* part :
       {"TECELAGEM SÃO JOSÉ LTDA", "Ordem 000123", "ROLO 12", "MEIA MALHA LISTRADA FIO TINTO", "M0111",
        "Cor L01 LISTRADO MARINHO/BRANCO", "49% ALGODÃO", "1,70 m", "185 g/m²", "PESO LÍQUIDO", "20,400 kg",
        "000123012", "10/03/2026", "00012 JOÃO DA CONCEIÇÃO", "03 CIRCULAR 30 POL"}) {
    EXPECT_THAT(text, HasSubstr(part));
  }
}

TEST_F(RollLabel, ItsCodesAreReadBackAtBothPrintersResolutions) {
  const PictureFolder folder;
  const Printout label = Drawn();
  for (const int dpi : {203, 300, 600}) {
    const std::string file = folder.File(std::to_string(dpi) + ".png");
    WritePage(label, 0, dpi, file);
    EXPECT_THAT(Decoded(file), UnorderedElementsAre("CODE-128:000123012", "I2/5:07891234501127",
                                                    "QR-Code:LOTE 000123012 PESO 20.400 KG"))
        << dpi;
  }
}

TEST_F(RollLabel, ItsCodesAreReadBackFromThePdfAndItsTextFound) {
  const PictureFolder folder;
  app::printing::WritePdf(Drawn(), folder.File("label.pdf"));
  OutputOf("pdftoppm -r 300 -png '" + folder.File("label.pdf") + "' '" + folder.File("page") + "'");
  EXPECT_THAT(Decoded(folder.File("page-1.png")), UnorderedElementsAre("CODE-128:000123012", "I2/5:07891234501127",
                                                                       "QR-Code:LOTE 000123012 PESO 20.400 KG"));
  const std::string text = OutputOf("pdftotext -layout '" + folder.File("label.pdf") + "' -");
  EXPECT_THAT(text, HasSubstr("JOÃO DA CONCEIÇÃO"));
  EXPECT_THAT(text, HasSubstr("20,400 kg"));
}

TEST_F(RollLabel, WeightAndLotAreReadAtArmsLength) {
  const Printout label = Drawn();
  for (const auto& item : label.pages[0].texts) {
    if (item.text != "20,400 kg" && item.text != "000123012") continue;
    EXPECT_GE(label.styles[item.style].size, 20) << item.text;
  }
}

TEST_P(OddRollLabel, NothingRunsIntoAnything) {
  const Printout label = Drawn();
  ASSERT_EQ(label.pages.size(), 1U);
  EXPECT_EQ(Collisions(label, 0), "");
  for (const auto& code : label.pages[0].barcodes) {
    const auto& symbol = code.symbol;
    const double left = symbol.x * symbol.dot;
    const double top = symbol.y * symbol.dot;
    const double right = left + symbol.width * symbol.dot;
    const double bottom = top + symbol.height * symbol.dot;
    EXPECT_TRUE(left >= 0 && top >= 0 && right <= 100 && bottom <= 60) << code.kind;
    for (const auto& text : label.pages[0].texts) {
      const bool apart = text.x + text.width <= left + 0.2 || right <= text.x + 0.2 ||
                         text.y + text.height <= top + 0.2 || bottom <= text.y + 0.2;
      EXPECT_TRUE(apart) << code.kind << " and " << text.text;
    }
  }
}

TEST_P(OddRollLabel, WhatItBearsAsCodesIsReadBack) {
  const PictureFolder folder;
  const Printout label = Drawn();
  WritePage(label, 0, 203, folder.File("label.png"));
  EXPECT_EQ(Decoded(folder.File("label.png")).size(), label.pages[0].barcodes.size());
  for (const auto& code : label.pages[0].barcodes) {
    EXPECT_THAT(Decoded(folder.File("label.png")), testing::Contains(HasSubstr(":" + code.value))) << code.kind;
  }
}

TEST_F(RollLabel, ALotThatNoScannerReadsHasNoBarCodeButIsWritten) {
  Roll(With(UsualRoll(), {{"LOTE", "LOTE-Ç"}}));
  const Printout label = Drawn();
  for (const auto& code : label.pages[0].barcodes) EXPECT_NE(code.kind, "code128");
  EXPECT_THAT(TextOf(label), HasSubstr("LOTE-Ç"));
}

TEST_F(RollLabel, ArticleNumberOnlyWhenItIsOne) {
  const auto kinds = [](const Printout& label) {
    std::vector<std::string> all;
    for (const auto& code : label.pages[0].barcodes) all.push_back(code.kind);
    return all;
  };
  for (const char* number : {"7891234501127", "17891234501124"}) {
    Fabric(With(UsualFabric(), {{"BARRA", number}}));
    EXPECT_THAT(kinds(Drawn()), UnorderedElementsAre("code128", "itf14", "qr")) << number;
    EXPECT_THAT(Commands(), HasSubstr("^B2N")) << number;
  }
  for (const char* number : {"", "7891234501120", "789", "ABC4567890123", "178912345011240"}) {
    Fabric(With(UsualFabric(), {{"BARRA", number}}));
    EXPECT_THAT(kinds(Drawn()), UnorderedElementsAre("code128", "qr")) << number;
    EXPECT_THAT(Commands(), Not(HasSubstr("^B2N"))) << number;
  }
}

TEST_F(RollLabel, DefectsOfThisRollOnlyEachOnce) {
  Defects({Defect("BURACO"), Defect("FIO PUXADO", 11), Defect("BURACO"), Defect("MANCHA DE ÓLEO")});
  EXPECT_THAT(TextOf(Drawn()), HasSubstr("BURACO (2), MANCHA DE ÓLEO\n"));
  EXPECT_THAT(TextOf(Drawn()), Not(HasSubstr("FIO PUXADO")));
  EXPECT_THAT(Commands(), HasSubstr("BURACO (2), MANCHA DE ÓLEO^FS"));
  EXPECT_THAT(Commands(), Not(HasSubstr("FIO PUXADO")));
}

TEST_F(RollLabel, ThirtyDefectsAreCountedBeyondTheRoomForThem) {
  std::vector<FieldsOfRow> rows;
  for (int at = 1; at <= 30; ++at) rows.push_back(Defect("DEFEITO " + std::to_string(at)));
  Defects(rows);
  for (const std::string& text : {TextOf(Drawn()), Commands()}) {
    EXPECT_THAT(text, HasSubstr("DEFEITO 1, DEFEITO 2"));
    const std::regex tail("e mais (\\d+)");
    std::smatch found;
    ASSERT_TRUE(std::regex_search(text, found, tail));
    int shown = 0;
    for (int at = 1; at <= 30; ++at) {
      shown += std::regex_search(text, std::regex("DEFEITO " + std::to_string(at) + "\\b")) ? 1 : 0;
    }
    EXPECT_EQ(shown + std::stoi(found[1].str()), 30);
  }
}

TEST_F(RollLabel, WithoutTheFabricsDataItTakesWhatTheItemTells) {
  PaperScreen bare;
  bare.Add("TbRolos", kRollFields, {UsualRoll()});
  bare.Add("TbItens", {"Codigo", "Cor", "Desc_Cor", "Unidade"},
           {{{"Codigo", "M0111"}, {"Cor", "L01"}, {"Desc_Cor", "COR DO ITEM"}, {"Unidade", "MT"}}});
  const std::string text = TextOf(bare.Print("WEtqTecRolo"));
  EXPECT_THAT(text, HasSubstr("COR DO ITEM"));
  EXPECT_THAT(text, HasSubstr("QUANTIDADE"));
  EXPECT_THAT(text, HasSubstr("20,4 mt"));
}

TEST_F(RollLabel, WithoutARollThereIsNoLabel) {
  screen_.Add("TbRolos", kRollFields);
  EXPECT_TRUE(Drawn().pages.empty());
  EXPECT_EQ(Commands(), "");
}

// --- in the label printers' language ---------------------------------------------------------------------------------

TEST_F(RollLabel, CommandsOfAUsualRoll) {
  Defects({Defect("BURACO"), Defect("FIO PUXADO")});
  EXPECT_EQ(Commands(),
            R"(^XA
^CI28
^PW812^LL480^LH0,0
^FO16,12^A0N,28,22^FH_^FDTECELAGEM SÃO JOSÉ LTDA^FS
^FO379,10^A0N,34,34^FH_^FDOrdem 000123^FS
^FO623,8^A0N,40,34^FH_^FDROLO 012^FS
^FO16,50^GB772,2,2^FS
^FO16,60^A0N,46,34^FH_^FDMEIA MALHA LISTRADA FIO TINTO^FS
^FO16,110^A0N,36,36^FH_^FDM0111^FS
^FO228,112^A0N,31,21^FH_^FDCor L01 LISTRADO MARINHO/BRANCO^FS
^FO16,151^A0N,19,13^FH_^FD49% ALGODÃO 40,9% ALGODÃO 3% POLIÉSTER 7,1% ELASTANO  -  1,70 m  -  185 g/m²^FS
^FO656,48^BQN,2,4^FH_^FDMA,LOTE 000123012 PESO 20.400 KG^FS
^FO16,178^GB772,2,2^FS
^FO16,184^A0N,18,18^FH_^FDPESO LÍQUIDO^FS
^FO16,202^A0N,78,78^FH_^FD20,400 kg^FS
^FO396,178^GB2,108,2^FS
^FO408,184^A0N,18,18^FH_^FDLOTE^FS
^FO408,202^A0N,78,75^FH_^FD000123012^FS
^FO16,286^GB772,2,2^FS
^FO16,292^A0N,18,18^FH_^FDPEÇAS^FS
^FO16,312^A0N,28,28^FH_^FD1^FS
^FO88,292^A0N,18,18^FH_^FDDATA^FS
^FO88,312^A0N,28,23^FH_^FD10/03/2026^FS
^FO232,292^A0N,18,18^FH_^FDTURNO^FS
^FO232,312^A0N,28,28^FH_^FD2^FS
^FO308,292^A0N,18,18^FH_^FDOPERADOR^FS
^FO308,314^A0N,24,16^FH_^FD00012 JOÃO DA CONCEIÇÃO^FS
^FO544,292^A0N,18,18^FH_^FDMÁQUINA^FS
^FO544,312^A0N,28,21^FH_^FD03 CIRCULAR 30 POL^FS
^FO16,342^GB772,2,2^FS
^FO16,348^A0N,18,18^FH_^FDDEFEITOS^FS
^FO128,346^A0N,22,22^FH_^FDBURACO, FIO PUXADO^FS
^FO46,396^BY3^BCN,76,N,N,N,A^FH_^FD000123012^FS
^FO492,396^BY2,3^B2N,52,Y,N,N^FH_^FD07891234501127^FS
^PQ1
^XZ
)");
}

// What stands between ^XA and ^XZ, field by field.
struct Field {
  int x = 0;
  int y = 0;
  int height = 0;
  int width = 0;     // of the type
  std::string kind;  // "text", "box", "code128", "itf", "qr"
  int module = 0;
  std::string data;  // escapes undone
  std::string raw;
};

std::string Unescaped(const std::string& data) {
  std::string text;
  for (std::size_t at = 0; at < data.size(); ++at) {
    if (data[at] == '_') {
      text += static_cast<char>(std::stoi(data.substr(at + 1, 2), nullptr, 16));
      at += 2;
    } else {
      text += data[at];
    }
  }
  return text;
}

// Fails the test at anything that is no field of the few kinds that the label is made of.
std::vector<Field> FieldsOf(const std::string& commands) {
  std::vector<Field> fields;
  std::istringstream lines(commands);
  const std::regex text("\\^FO(\\d+),(\\d+)\\^A0N,(\\d+),(\\d+)\\^FH_\\^FD([^^~]*)\\^FS");
  const std::regex box("\\^FO(\\d+),(\\d+)\\^GB(\\d+),(\\d+),\\d+\\^FS");
  const std::regex code("\\^FO(\\d+),(\\d+)\\^BY(\\d)(,3)?\\^(BC|B2)N,(\\d+),[YN],N,N(,A)?\\^FH_\\^FD([^^~]*)\\^FS");
  const std::regex square("\\^FO(\\d+),(\\d+)\\^BQN,2,(\\d)\\^FH_\\^FDMA,([^^~]*)\\^FS");
  const std::vector<std::string> frame{"^XA", "^CI28", "^PW812^LL480^LH0,0", "^PQ1", "^XZ"};
  for (std::string line; std::getline(lines, line);) {
    if (std::find(frame.begin(), frame.end(), line) != frame.end()) continue;
    std::smatch m;
    if (std::regex_match(line, m, text)) {
      fields.push_back(
          {std::stoi(m[1]), std::stoi(m[2]), std::stoi(m[3]), std::stoi(m[4]), "text", 0, Unescaped(m[5]), m[5]});
    } else if (std::regex_match(line, m, box)) {
      fields.push_back({std::stoi(m[1]), std::stoi(m[2]), std::stoi(m[4]), std::stoi(m[3]), "box", 0, "", ""});
    } else if (std::regex_match(line, m, code)) {
      fields.push_back({std::stoi(m[1]), std::stoi(m[2]), std::stoi(m[6]), 0, m[5] == "BC" ? "code128" : "itf",
                        std::stoi(m[3]), Unescaped(m[8]), m[8]});
    } else if (std::regex_match(line, m, square)) {
      fields.push_back({std::stoi(m[1]), std::stoi(m[2]), 0, 0, "qr", std::stoi(m[3]), Unescaped(m[4]), m[4]});
    } else {
      ADD_FAILURE() << "no field of this label: " << line;
    }
  }
  return fields;
}

// Advance widths of a narrow bold grotesque (Helvetica Narrow Bold's, the face that the printers' font 0 comes closest
// to), per mille of the type's width; accented letters are as wide as plain ones.
double Advance(const std::string& text) {
  double sum = 0;
  for (const char c : text) {
    if ((static_cast<unsigned char>(c) & 0xc0) == 0x80) continue;  // rest of a character
    if (c == ' ' || c == '.' || c == ',' || c == 'i' || c == 'l' || c == 'j' || c == 'I' || c == '/' || c == '|') {
      sum += 228;
    } else if (c == 'W' || c == '@' || c == '%') {
      sum += c == 'W' ? 774 : c == '%' ? 729 : 800;
    } else if (c == 'm' || c == 'M') {
      sum += c == 'm' ? 729 : 683;
    } else if ((c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0xc0) {
      sum += 638;  // O, Q and G; most are narrower
    } else {
      sum += c == 'w' ? 638 : 501;  // the widest of the other small letters
    }
  }
  return sum / 1000;
}

TEST_P(OddRollLabel, CommandsHoldNoneOfTheDatasOwn) {
  const std::string commands = Commands();
  EXPECT_EQ(commands.substr(0, 4), "^XA\n");
  EXPECT_EQ(commands.substr(commands.size() - 4), "^XZ\n");
  for (const char* once : {"^XA", "^XZ"}) {
    EXPECT_EQ(commands.find(once), commands.rfind(once)) << once;
  }
  EXPECT_EQ(commands.find('~'), std::string::npos);
  EXPECT_FALSE(FieldsOf(commands).empty());  // which takes no ^ but those of the label's own commands
  for (const char c : commands) EXPECT_TRUE(c == '\n' || static_cast<unsigned char>(c) >= 0x20);
}

TEST_P(OddRollLabel, EveryFieldOfTheCommandsIsOnTheLabel) {
  for (const Field& field : FieldsOf(Commands())) {
    double right = field.x;
    int bottom = field.y + field.height;
    if (field.kind == "text") right += Advance(field.data) * field.width;
    if (field.kind == "box") right += field.width;
    if (field.kind == "itf") {
      right += app::printing::EncodeBarcode("itf14", field.data).width * field.module - 10 * field.module;
      bottom += 26;  // its digits
    }
    if (field.kind == "code128") {
      right += (app::printing::EncodeBarcode("code128", field.data).width - 10) * field.module;
    }
    if (field.kind == "qr") {
      const int side = (app::printing::EncodeBarcode("qr", field.data).width - 8) * field.module;
      right += side;
      bottom += side + 10;
      EXPECT_LE(bottom, 178) << "into the weight";
    }
    EXPECT_LE(right, 812) << field.kind << " " << field.data;
    EXPECT_LE(bottom, 480) << field.kind << " " << field.data;
  }
}

TEST_P(OddRollLabel, TextsOfTheCommandsDoNotCoverEachOther) {
  const std::vector<Field> fields = FieldsOf(Commands());
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (fields[i].kind != "text") continue;
    for (std::size_t j = i + 1; j < fields.size(); ++j) {
      if (fields[j].kind != "text") continue;
      const double right_i = fields[i].x + Advance(fields[i].data) * fields[i].width;
      const double right_j = fields[j].x + Advance(fields[j].data) * fields[j].width;
      const bool apart = right_i <= fields[j].x || right_j <= fields[i].x ||
                         fields[i].y + fields[i].height <= fields[j].y || fields[j].y + fields[j].height <= fields[i].y;
      EXPECT_TRUE(apart) << fields[i].data << " | " << fields[j].data;
    }
  }
}

TEST_F(RollLabel, SignsOfTheLanguageArriveAsTheyAre) {
  Roll(With(UsualRoll(), {{"DESCRICAO", "^XZ~JA_5E\\&"}, {"LOTE", "A^B~C_D"}}));
  std::vector<std::string> data;
  for (const Field& field : FieldsOf(Commands())) data.push_back(field.data);
  EXPECT_THAT(data, IsSupersetOf({"^XZ~JA_5E\\&", "A^B~C_D", "LOTE A^B~C_D PESO 20.400 KG"}));
}

TEST_F(RollLabel, CommandsForAPrinterWithoutAccents) {
  std::ifstream own(std::string(TECELAGEM_SOURCE_DIR) + "/layouts/WEtqTecRolo.text.js");
  std::string layout((std::istreambuf_iterator<char>(own)), {});
  const std::string accents = "const ACCENTS = true;";
  ASSERT_NE(layout.find(accents), std::string::npos);
  layout.replace(layout.find(accents), accents.size(), "const ACCENTS = false;");
  const PictureFolder folder;
  std::ofstream(folder.File("WEtqTecRolo.text.js")) << layout;
  const std::string commands = screen_.Print("WEtqTecRolo", 'T', folder.File("")).bytes;
  EXPECT_THAT(commands, Not(HasSubstr("^CI28")));
  EXPECT_THAT(commands, HasSubstr("^FD00012 JOAO DA CONCEICAO^FS"));
  EXPECT_THAT(commands, HasSubstr("^FDPESO LIQUIDO^FS"));
  for (const char c : commands) EXPECT_LT(static_cast<unsigned char>(c), 0x80);
}

TEST_F(RollLabel, CommandsTellTheSameAsTheDrawnLabel) {
  Defects({Defect("BURACO")});
  const std::string drawn = TextOf(Drawn());
  for (const Field& field : FieldsOf(Commands())) {
    if (field.kind != "text" || field.data.find("ROLO") == 0 || field.data.find(" - ") != std::string::npos) continue;
    EXPECT_THAT(drawn, HasSubstr(field.data));
  }
}

}  // namespace
