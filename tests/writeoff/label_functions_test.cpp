// The text functions that label layouts may call.
#include "writeoff/label_functions.h"

#include <gtest/gtest.h>

namespace writeoff {
namespace {

using Result = std::optional<std::string>;

TEST(TiraPontos, TakesTheFourMarksOutAndKeepsTheRestInOrder) {
  EXPECT_EQ(TiraPontos("12.345.678/0001-90"), "12345678000190");
  EXPECT_EQ(TiraPontos("1.234,50"), "123450");
  EXPECT_EQ(TiraPontos("...---///,,,"), "");
  EXPECT_EQ(TiraPontos(""), "");
  EXPECT_EQ(TiraPontos("a b;c:d_e\\f"), "a b;c:d_e\\f");
  EXPECT_EQ(TiraPontos("maçã, a-z"), "maçã az");
}

TEST(RemoveAcento, TakesEveryPairOfTheTable) {
  EXPECT_EQ(RemoveAcento("àâãáçêéíôõóûúü"), "aaacaeeiooouuu");
  EXPECT_EQ(RemoveAcento("ÀÂÃÁÇÊÉÍÔÕÓÛÚÜ"), "AAAACEEIOOOUUU");
}

TEST(RemoveAcento, OfWords) {
  EXPECT_EQ(RemoveAcento("maçã"), "maaa");
  EXPECT_EQ(RemoveAcento("MAÇÃ"), "MACA");
  EXPECT_EQ(RemoveAcento("água"), "cgua");
  EXPECT_EQ(RemoveAcento("Confecção São João"), "Confecaao Sao Joao");
}

TEST(RemoveAcento, KeepsWhatIsNotInTheTable) {
  EXPECT_EQ(RemoveAcento("ñ è ì ò ù ä € — ºª 日本 🧶"), "ñ è ì ò ù ä € — ºª 日本 🧶");
  EXPECT_EQ(RemoveAcento("abc XYZ 0-9"), "abc XYZ 0-9");
  EXPECT_EQ(RemoveAcento(""), "");
  // A text that breaks off within a character, and one whose bytes look like the end of another.
  EXPECT_EQ(RemoveAcento("a\xC3"), "a\xC3");
  EXPECT_EQ(RemoveAcento("\xE2\x82\xAC\xC3\xA1"),
            "\xE2\x82\xAC"
            "c");
}

TEST(Chr1, IsTheCharacterWithThatCode) {
  EXPECT_EQ(Chr1("27"), Result("\x1B"));
  EXPECT_EQ(Chr1("2"), Result("\x02"));
  EXPECT_EQ(Chr1("65"), Result("A"));
  EXPECT_EQ(Chr1(" 65 "), Result("A"));
  EXPECT_EQ(Chr1("127"), Result("\x7F"));
  EXPECT_EQ(Chr1("0"), Result(std::string(1, '\0')));
}

TEST(Chr1, AboveAsciiIsOfTheSystemsCharacterSet) {
  EXPECT_EQ(Chr1("128"), Result("€"));
  EXPECT_EQ(Chr1("150"), Result("–"));
  EXPECT_EQ(Chr1("159"), Result("Ÿ"));
  EXPECT_EQ(Chr1("160"), Result("\u00A0"));
  EXPECT_EQ(Chr1("231"), Result("ç"));
  EXPECT_EQ(Chr1("255"), Result("ÿ"));
}

TEST(Chr1, KnowsNoOtherCodes) {
  for (const char* code : {"", " ", "A", "1.5", "1,5", "-1", "256", "129", "141", "143", "144", "157", "99999999999"}) {
    EXPECT_EQ(Chr1(code), std::nullopt) << code;
  }
}

TEST(ZeroE, PadsToTheLength) {
  EXPECT_EQ(ZeroE("7", "3"), Result("007"));
  EXPECT_EQ(ZeroE("", "3"), Result("000"));
  EXPECT_EQ(ZeroE("123", "3"), Result("123"));
  EXPECT_EQ(ZeroE("7", "1000")->size(), 1000u);
}

TEST(ZeroE, LeavesALongerTextAlone) {
  EXPECT_EQ(ZeroE("12345", "3"), Result("12345"));
  EXPECT_EQ(ZeroE("12345", "0"), Result("12345"));
  EXPECT_EQ(ZeroE("12345", "-4"), Result("12345"));
}

TEST(ZeroE, CountsCharacters) {
  EXPECT_EQ(ZeroE("çã", "3"), Result("0çã"));
  EXPECT_EQ(ZeroE("ção", "3"), Result("ção"));
  EXPECT_EQ(ZeroE("€", "2"), Result("0€"));
}

TEST(ZeroE, KnowsNoOtherLengths) {
  for (const char* length : {"", "x", "1.5", "1001", "2000000000", "99999999999"}) {
    EXPECT_EQ(ZeroE("7", length), std::nullopt) << length;
  }
}

TEST(LabelFunction, CallsTheFourByName) {
  EXPECT_EQ(LabelFunction("TiraPontos", {"1.2-3/4,5"}), Result("12345"));
  EXPECT_EQ(LabelFunction("RemoveAcento", {"maçã"}), Result("maaa"));
  EXPECT_EQ(LabelFunction("CHR1", {"27"}), Result("\x1B"));
  EXPECT_EQ(LabelFunction("ZeroE", {"12", "6"}), Result("000012"));
}

TEST(LabelFunction, LeavesEverythingElseUnhandled) {
  for (const char* name : {"", "tirapontos", "TIRAPONTOS", "Chr1", "CHR2", "ZeroE ", "Soma"}) {
    EXPECT_EQ(LabelFunction(name, {"1"}), std::nullopt) << name;
    EXPECT_EQ(LabelFunction(name, {"1", "2"}), std::nullopt) << name;
  }
  for (const char* name : {"TiraPontos", "RemoveAcento", "CHR1"}) {
    EXPECT_EQ(LabelFunction(name, {}), std::nullopt) << name;
    EXPECT_EQ(LabelFunction(name, {"1", "2"}), std::nullopt) << name;
  }
  EXPECT_EQ(LabelFunction("ZeroE", {"1"}), std::nullopt);
  EXPECT_EQ(LabelFunction("ZeroE", {"1", "2", "3"}), std::nullopt);
}

}  // namespace
}  // namespace writeoff
