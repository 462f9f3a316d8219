// Every format that is read, every reason for which no weight is taken, frame by frame as it is on the line.
#include "app/scale/frame.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/errors.h"
#include "host/raw_bytes.h"

namespace {

using app::scale::WeightOfFrame;
using host::RawBytes;
using namespace std::string_literals;

struct Weighed {
  std::string received;
  double kilograms;
};

struct Refused {
  std::string received;
  std::string part;  // of the sentence
};

std::string WhyNot(const std::string& received, char terminator = '\r') {
  try {
    return "a weight: " + std::to_string(WeightOfFrame(received, terminator));
  } catch (const host::InputError& error) {
    return error.what();
  }
}

void ExpectWeights(const std::vector<Weighed>& frames) {
  for (const Weighed& frame : frames) {
    try {
      EXPECT_EQ(WeightOfFrame(frame.received, '\r'), frame.kilograms) << RawBytes(frame.received);
    } catch (const host::InputError& error) {
      ADD_FAILURE() << RawBytes(frame.received) << ": " << error.what();
    }
  }
}

void ExpectRefusals(const std::vector<Refused>& frames) {
  for (const Refused& frame : frames) {
    const std::string told = WhyNot(frame.received);
    EXPECT_NE(told.find(frame.part), std::string::npos) << RawBytes(frame.received) << ": " << told;
  }
}

constexpr const char* kCut = "veio cortada";
constexpr const char* kUnstable = "não está estável";
constexpr const char* kNegative = "peso negativo";
constexpr const char* kOverload = "sobrecarga";
constexpr const char* kUnit = "unidade que não é";
constexpr const char* kTwo = "mais de um número";
constexpr const char* kNoNumber = "nenhum número";
constexpr const char* kStrange = "não foi entendida";
constexpr const char* kLong = "comprida demais";

// --- formats -------------------------------------------------------------------------------------------------------

TEST(Frame, PlainNumber) {
  ExpectWeights({{"20.5\r", 20.5},
                 {"20,5\r", 20.5},
                 {"0020.50\r\n", 20.5},
                 {"   20,50\r\n", 20.5},
                 {"002050\r", 2050},
                 {"20.50 kg\r\n", 20.5},
                 {"20.50KG\r\n", 20.5},
                 {"+012.78\r\n", 12.78},
                 {"12.\r", 12},
                 {"0.000\r", 0},
                 {"20500 g\r", 20.5},
                 {"0.0205 t\r", 20.5},
                 {"1 t\r", 1000},
                 {"0.1 kg\r", 0.1},
                 {"100 g\r", 0.1},
                 {"\n   20.50 kgGR\r\x03", 20.5},
                 {"\n   18.25 kgNT\r\x03", 18.25}});
}

TEST(Frame, BetweenStxAndEtx) {
  ExpectWeights({{"\x02"s + "0020.50\x03", 20.5},
                 {"\x02"s + "20.50\r", 20.5},
                 {"\x02"s + "02050\x03", 2050},
                 {"\x02"s + "   20,5 kg\x03\r\n", 20.5},
                 {"\x06\x02"s + "20.5\x03", 20.5},
                 {"\x02"s + "20.50\x03" + "A", 20.5}});  // a check character follows
}

TEST(Frame, StatusWordsWithCommas) {
  ExpectWeights({{"ST,GS,+  12.345kg\r\n", 12.345},
                 {"ST,GS,+0012.345kg\r\n", 12.345},
                 {"ST,NT,+00012,34kg\r\n", 12.34},
                 {"ST,G ,+01234.5kg\r\n", 1234.5},
                 {"ST,N ,+01234.5 g\r\n", 1.2345},
                 {"ST,GS,+001.2345 t\r\n", 1234.5},
                 {"ST,GS,+0012345kg\r\n", 12345},
                 {"ST,GS,   20.50,kg\r\n", 20.5},
                 {"ST,+0001.278, kg\r\n", 1.278},
                 {"ST,GS,+00020.5  \r\n", 20.5},
                 {"ST,NT,+000020.Kg\r\n", 20}});
}

TEST(Frame, StatusWordsWithScaleAndLamps) {
  // Named "1": the number of the scale is no digit of the weight. The lamps say stable (bit 6).
  ExpectWeights({{"ST,GS,1\xC4,00020.50 kg\r\n"s, 20.5},
                 {"ST,NT,1\xC2,   18.25 kg\r\n"s, 18.25},
                 {"ST,GS,9D,00020.50 kg\r\n", 20.5},  // seven data bits: bit 7 is lost
                 {"ST,GS,10,00020.50 kg\r\n", 20.5}});
  ExpectRefusals({{"ST,GS,1\x84,00020.50 kg\r\n"s, kUnstable},
                  {"US,GS,1\xC4,00020.50 kg\r\n"s, kUnstable},
                  {"OL,GS,1\xC4,         kg\r\n"s, kOverload},
                  {"ST,GS,1\xD4,00020.50 kg\r\n"s, "retido"},
                  {"ST,GS,1\xC4,-0000.50 kg\r\n"s, kNegative},
                  {"ST,GS,1\xC4,00020.50 lb\r\n"s, kUnit}});
}

// Byte A says where the point is, B the state, C the unit.
TEST(Frame, StatusBits) {
  ExpectWeights({{"\x02"s + "*0 002050000000\r", 2050},   // A 2: no decimals
                 {"\x02"s + "+0 002050000000\r", 205},    // 3: one
                 {"\x02"s + ",0 002050000000\r", 20.5},   // 4: two
                 {"\x02"s + "-0 002050000000\r", 2.05},   // 5: three
                 {"\x02"s + ".0 002050000000\r", 0.205},  // 6: four
                 {"\x02"s + "/0 002050000000\r", 0.0205},
                 {"\x02"s + "(0 002050000000\r", 205000},  // 0: two noughts left out
                 {"\x02"s + ")0 002050000000\r", 20500},
                 {"\x02"s + "40   2050     0\r", 20.5},      // step 2, blanks for noughts
                 {"\x02"s + "<1 001825000225\r", 18.25},     // step 5, net
                 {"\x02"s + ",0(002050000000\r", 20.5},      // the print key
                 {"\x02"s + ",0!002050000000\r", 0.0205},    // gram
                 {"\x02"s + "-0\"002050000000\r", 2050},     // tonne
                 {"\x02"s + ",0 002050000000\r\x4B", 20.5},  // checksum
                 {"\x02"s + ",0 002050\r", 20.5},            // without tare
                 {"\x02"s + "40 002050\r\x02", 20.5}});      // a checksum that looks like STX
  ExpectRefusals({{"\x02"s + ",8 002050000000\r", kUnstable},
                  {"\x02"s + ",p 002050000000\r", kUnstable},  // switched on and not zeroed
                  {"\x02"s + ",2 002050000000\r", kNegative},
                  {"\x02"s + ",4 002050000000\r", kOverload},
                  {"\x02"s + ",< 002050000000\r", kOverload},  // and in motion
                  {"\x02"s + ",  002050000000\r", kUnit},      // pounds
                  {"\x02"s + ",0#002050000000\r", kUnit},
                  {"\x02"s + ",00002050000000\r", kStrange},  // magnified
                  {"\x02"s + "+  002050\r", kUnit},           // plus 2050 kg, or 205.0 pounds: nobody knows
                  {"\x02"s + ",0 002050000000", kCut}});
}

// The same characters without STX are no status.
TEST(Frame, StatusBitsNeedStx) { ExpectRefusals({{"40 002050\r", kTwo}, {"40   2050     0\r", kTwo}}); }

TEST(Frame, DigitsThatCouldBeStatusBytes) {
  ExpectWeights({{"\x02"s + "000020.50\r", 20.5},
                 {"\x02"s + "000002050\r", 2050},
                 {"\x02"s + "400020500\r", 400020500},
                 {"\x02"s + "+00020.50\r", 20.5}});
}

TEST(Frame, UnitKindAndStateInOneCapitalEach) {
  ExpectWeights({{"\x02"s + "   20.50KG \r\n", 20.5},
                 {"\x02"s + "   18.25KN \r", 18.25},
                 {"\x02"s + "  20500.GG \r", 20.5},
                 {"\x02"s + "  0.0205TN \r", 20.5},
                 {"\x02"s + "    0.00KGZ\r", 0}});
  ExpectRefusals({{"\x02"s + "   20.50KGM\r", kUnstable},
                  {"\x02"s + "   20.50KNM\r", kUnstable},
                  {"\x02"s + "   20.50KGI\r", kUnstable},
                  {"\x02"s + "   20.50KGO\r", kOverload},
                  {"\x02"s + "-   0.50KG \r", kNegative},
                  {"\x02"s + "   20.50LG \r", kUnit},
                  {"\x02"s + "   20.50OG \r", kUnit},
                  {"\x02"s + "   20.50 G \r", kUnit},
                  {"\x02"s + "   20.50 T \r", kUnit},
                  {"20.50 G\r", kUnit}});
}

TEST(Frame, EndedByEtxAndBegunByReturn) {
  ExpectWeights({{"\r+0020.5  kg g  \x03", 20.5},
                 {"\r+0020.5  kg n  \x03\r+0020.5  kg n  \x03", 20.5},
                 {"\r 00020.5 kgG\x03", 20.5},
                 {"\r+0020.5   g g  \x03", 0.0205}});
  ExpectRefusals({{"\r+0020.5m kg g  \x03", kUnstable},
                  {"\r+0020.5o kg g  \x03", kOverload},
                  {"\r 00020.5MkgG\x03", kUnit},
                  {"\r 00020.5Mkg\x03", kUnstable},
                  {"\r 00020.5Okg\x03", kOverload},
                  {"\r-0020.5  kg g  \x03", kNegative},
                  {"\r+0020.5  lb g  \x03", kUnit},
                  {"\r+0020.5     g  \x03", kUnit}});  // no unit and gross, or gram
}

TEST(Frame, CommandAndStateInLetters) {
  ExpectWeights({{"S S     20.500 kg\r\n", 20.5}, {"S S     500.00 g\r\n", 0.5}});
  ExpectRefusals({{"S D     20.500 kg\r\n", kUnstable},
                  {"S I\r\n", kUnstable},
                  {"S +\r\n", kOverload},
                  {"S -\r\n", kNegative},
                  {"ES\r\n", kNoNumber}});
}

TEST(Frame, UnitIsBlankWhileTheWeightMoves) {
  ExpectWeights({{"+   20.500 kg \r\n", 20.5}, {"N     +   18.250 kg \r\n", 18.25}});
  ExpectRefusals({{"+   20.500    \r\n", kUnstable},
                  {"N     +   18.250    \r\n", kUnstable},
                  {"T     +    0.350 kg \r\n", "tara"},
                  {"      High    \r\n", kOverload},
                  {"      Low     \r\n", kNegative},
                  {"Err   054     \r\n", "erro"}});
}

TEST(Frame, QuestionMarkWhileTheWeightMoves) {
  ExpectWeights(
      {{"    20.50 kg        \r\n", 20.5}, {"    20.50 kg     G  \r\n", 20.5}, {"    18.25 kg     NET\r\n", 18.25}});
  ExpectRefusals({{"    20.50 kg    ?   \r\n", kUnstable},
                  {"    20.50 kg    ?NET\r\n", kUnstable},
                  {"     0.35 kg     T  \r\n", "tara"}});
}

// --- reasons -------------------------------------------------------------------------------------------------------

TEST(Frame, NothingCame) {
  ExpectRefusals(
      {{"", "não respondeu"}, {"\r\n", "não respondeu"}, {"   ", "não respondeu"}, {"\0\0"s, "não respondeu"}});
}

TEST(Frame, CutOff) {
  ExpectRefusals({{"20.5", kCut},
                  {"ST,GS,+  12.3", kCut},
                  {"\x02", kCut},
                  {"\x02"s + "0020.5", kCut},
                  {"45 kg\r\nST,GS,+  12.3", kCut},       // the end of one and the beginning of the next
                  {"50\x03\x02"s + "002", kCut},          // likewise
                  {"\x02"s + "00\x02" + "0020", kCut}});  // it broke off and began again
}

TEST(Frame, TheBeginningThatWasNotHeard) {
  ExpectWeights({{"45 kg\r\nST,GS,+  12.345kg\r\nST,GS,+", 12.345},
                 {"0.50\r\n0020.50\r\n", 20.5},
                 {"5\x03\x02"s + "20.5\x03\x02" + "20", 20.5},
                 {"00000\r\x4B\x02"s + ",0 002050000000\r\x4B\x02" + ",0 0", 20.5},
                 {"\n0020.50\r\n002", 20.5},
                 {"ST,GS,+  12.345kg\r\nST,G", 12.345}});
}

TEST(Frame, SeveralFramesMustAgree) {
  ExpectWeights({{"\x02"s + "20.5\x03\x02" + "20.50\x03\x02" + "20.500\x03", 20.5},
                 {"ST,GS,+  20.500kg\r\nST,GS,+20500.0 g\r\n", 20.5}});
  ExpectRefusals({{"\x02"s + "20.5\x03\x02" + "20.6\x03", "mudou durante"},
                  {"ST,GS,+  20.500kg\r\nUS,GS,+  20.500kg\r\n", kUnstable},
                  {"US,GS,+  20.500kg\r\nST,GS,+  20.500kg\r\n", kUnstable},
                  {"ST,GS,+  20.500kg\r\nOL,GS,+      kg\r\n", kOverload}});
}

TEST(Frame, Unstable) {
  ExpectRefusals({{"US,GS,+  12.345kg\r\n", kUnstable},
                  {"US,NT,+  12.345kg\r\n", kUnstable},
                  {"\x02IIIII\x03", kUnstable},
                  {"20.5 kg ?\r", kUnstable}});
}

TEST(Frame, Negative) {
  ExpectRefusals({{"-20.5\r", kNegative},
                  {"-   0.050 kg\r", kNegative},
                  {"ST,GS,-  12.345kg\r\n", kNegative},
                  {"20.5-\r", kNegative},
                  {"-0.000\r", kNegative},
                  {"---------\r", kNegative},
                  {"\x02NNNNN\x03", kNegative}});
}

TEST(Frame, Overload) {
  ExpectRefusals({{"OL,GS,+      kg\r\n", kOverload},
                  {"OL,GS,+    .  kg\r\n", kOverload},
                  {"OL,GS,-    .  kg\r\n", kOverload},
                  {"LO,NT,          kg\r\n", kOverload},
                  {"OL,+9999999E+19\r\n", kOverload},
                  {"OL,GS,+0099999kg\r\n", kOverload},  // a number beside it is no weight
                  {"^^^^^^^^^ kg\r", kOverload},
                  {"\x02SSSSS\x03", kOverload}});
}

TEST(Frame, NotTheWeightOfWhatLiesThere) {
  ExpectRefusals(
      {{"ST,TR,+  00.350kg\r\n", "tara"}, {"ST,PT,+  00.350kg\r\n", "tara"}, {"HD,GS,+  12.345kg\r\n", "retido"}});
}

TEST(Frame, NoDigits) {
  ExpectRefusals({{"kg\r", kNoNumber}, {"ST,GS,      kg\r\n", kNoNumber}, {"ERRO\r", kNoNumber}});
}

TEST(Frame, TwoNumbers) {
  ExpectRefusals({{"20.5 18.2\r", kTwo}, {"20.5 kg 20.5\r", kTwo}, {"1.234,5\r", kTwo}, {"20 500 g\r", kTwo}});
}

TEST(Frame, UnknownUnit) {
  ExpectRefusals({{"20.5 lb\r", kUnit},
                  {"ST,GS,+  12.345lb\r\n", kUnit},
                  {"20.5 oz\r", kUnit},
                  {"12 pcs\r", kUnit},
                  {"20.5 tn\r", kUnit},
                  {"20.5 kgf\r", kUnit},
                  {"20.5 mg\r", kUnit},
                  {"20.5 TN\r", kUnit},
                  {"01ST,GS,  20.5,kg\r\n", kUnit}});
}

TEST(Frame, AbsurdLength) {
  ExpectRefusals({{std::string(45, '0') + "\r", kLong},
                  {"12345678901\r", kLong},
                  {"0.12345678901 kg\r", kLong},
                  {std::string(38, ' ') + "20.5\r", kLong}});
}

TEST(Frame, NotUnderstood) {
  ExpectRefusals({{"\xB2\xB0.5\r"s, kStrange},  // wrong parity
                  {"20.5\x01\r", kStrange},
                  {"20:5\r", kStrange},
                  {".5 kg\r", kStrange},
                  {"+-20.5\r", kNegative},
                  {"20.5 kg abc\r", kStrange},
                  {"PESO 20.5 kg\r", kStrange},
                  {"20.5%\r", kStrange},
                  {"0x20\r", kUnit}});
}

TEST(Frame, AnotherTerminator) {
  EXPECT_EQ(WeightOfFrame("20.5\r\n", '\n'), 20.5);
  EXPECT_EQ(WeightOfFrame("20.5;", ';'), 20.5);
  EXPECT_NE(WhyNot("20.5\r", '\n').find(kCut), std::string::npos);
}

TEST(Frame, EveryReasonIsOneSentence) {
  for (const char* received : {"", "20", "US,GS,1\r", "-1\r", "OL\r", "ST,TR,1\r", "HD,1\r", "Err 1\r", "kg\r", "1 2\r",
                               "1 lb\r", "12345678901\r", "#\r", "\r1\r2\r"}) {
    const std::string told = WhyNot(received);
    EXPECT_EQ(told.back(), '.') << told;
    EXPECT_EQ(told.find(". "), std::string::npos) << told;
    EXPECT_EQ(told.find('\n'), std::string::npos) << told;
  }
}

// --- the log's bytes -----------------------------------------------------------------------------------------------

TEST(RawBytes, PrintableOnesAsTheyAre) {
  EXPECT_EQ(RawBytes("ST,GS,+  12.345kg"), "ST,GS,+  12.345kg");
  EXPECT_EQ(RawBytes("\x02"s + "20.5\x03\r\n"), "<02>20.5<03><0D><0A>");
  EXPECT_EQ(RawBytes("<02>"), "<3C>02>");
  EXPECT_EQ(RawBytes("\0\x7F\x80\xFF"s), "<00><7F><80><FF>");
  EXPECT_EQ(RawBytes(""), "");
}

// Every byte is told in a way that no other byte is.
TEST(RawBytes, SayEveryByteInItsOwnWay) {
  std::vector<std::string> told;
  for (int byte = 0; byte < 256; ++byte) told.push_back(RawBytes(std::string(1, static_cast<char>(byte))));
  for (std::size_t a = 0; a < told.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) EXPECT_NE(told[a], told[b]);
  }
}

}  // namespace
