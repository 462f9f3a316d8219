// The roll's label in ZPL II: what a label printer is told. Nothing here draws it, so the commands are read field by
// field.
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "app/printing/page/barcode.h"
#include "tests/printing/decoded.h"
#include "tests/printing/layout/roll_label.h"

namespace test {
namespace {

using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;

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
}  // namespace test
