// The text functions that label layouts may call.
#include "writeoff/label_functions.h"

#include <gtest/gtest.h>

#include "host/errors.h"

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
  EXPECT_EQ(Chr1("27"), "\x1B");
  EXPECT_EQ(Chr1("2"), "\x02");
  EXPECT_EQ(Chr1("65"), "A");
  EXPECT_EQ(Chr1(" 65 "), "A");
  EXPECT_EQ(Chr1("127"), "\x7F");
  EXPECT_EQ(Chr1("0"), std::string(1, '\0'));
}

TEST(Chr1, AboveAsciiIsOfTheSystemsCharacterSet) {
  EXPECT_EQ(Chr1("128"), "€");
  EXPECT_EQ(Chr1("150"), "–");
  EXPECT_EQ(Chr1("159"), "Ÿ");
  EXPECT_EQ(Chr1("160"), "\u00A0");
  EXPECT_EQ(Chr1("231"), "ç");
  EXPECT_EQ(Chr1("255"), "ÿ");
}

TEST(Chr1, KnowsNoOtherCodes) {
  for (const char* code : {"", " ", "A", "1.5", "1,5", "-1", "256", "129", "141", "143", "144", "157", "99999999999"}) {
    EXPECT_THROW(Chr1(code), host::InputError) << code;
  }
}

TEST(ZeroE, PadsToTheLength) {
  EXPECT_EQ(ZeroE("7", "3"), "007");
  EXPECT_EQ(ZeroE("", "3"), "000");
  EXPECT_EQ(ZeroE("123", "3"), "123");
  EXPECT_EQ(ZeroE("7", "1000").size(), 1000u);
}

TEST(ZeroE, LeavesALongerTextAlone) {
  EXPECT_EQ(ZeroE("12345", "3"), "12345");
  EXPECT_EQ(ZeroE("12345", "0"), "12345");
  EXPECT_EQ(ZeroE("12345", "-4"), "12345");
}

TEST(ZeroE, CountsCharacters) {
  EXPECT_EQ(ZeroE("çã", "3"), "0çã");
  EXPECT_EQ(ZeroE("ção", "3"), "ção");
  EXPECT_EQ(ZeroE("€", "2"), "0€");
}

TEST(ZeroE, KnowsNoOtherLengths) {
  for (const char* length : {"", "x", "1.5", "1001", "2000000000", "99999999999"}) {
    EXPECT_THROW(ZeroE("7", length), host::InputError) << length;
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
}

std::string Sentence(const char* name, const std::vector<std::string>& arguments) {
  try {
    LabelFunction(name, arguments);
  } catch (const host::InputError& error) {
    return error.what();
  }
  return "none";
}

TEST(LabelFunction, SaysWhatIsWrongWithTheArguments) {
  EXPECT_EQ(Sentence("TiraPontos", {}), "TiraPontos() precisa de 1 valor, e tem 0");
  EXPECT_EQ(Sentence("RemoveAcento", {"1", "2"}), "RemoveAcento() precisa de 1 valor, e tem 2");
  EXPECT_EQ(Sentence("CHR1", {}), "CHR1() precisa de 1 valor, e tem 0");
  EXPECT_EQ(Sentence("ZeroE", {"1"}), "ZeroE() precisa de 2 valores, e tem 1");
  EXPECT_EQ(Sentence("CHR1", {"x"}), "CHR1() precisa do código de um caractere, e tem \"x\"");
  EXPECT_EQ(Sentence("ZeroE", {"1", "x"}), "ZeroE() precisa de um tamanho de até 1000, e tem \"x\"");
}

}  // namespace
}  // namespace writeoff
