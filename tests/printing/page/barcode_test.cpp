#include "app/printing/page/barcode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "host/errors.h"
#include "tests/printing/decoded.h"

namespace app::printing {
namespace {

using test::Decoded;
using test::PictureFolder;
using test::WritePicture;
using testing::ElementsAre;
using testing::HasSubstr;

std::string Refusal(const std::string& kind, const std::string& value) {
  try {
    EncodeBarcode(kind, value);
  } catch (const host::InputError& error) {
    return error.what();
  }
  return "taken";
}

std::string PlaceRefusal(const Barcode& code, const BarcodeRoom& room) {
  try {
    PlaceBarcode(code, room);
  } catch (const host::InputError& error) {
    return error.what();
  }
  return "placed";
}

// --- decoded back ----------------------------------------------------------------------------------------------------

struct Case {
  std::string kind;
  std::string value;
  std::string read;  // by a scanner
  std::string text;
};

void PrintTo(const Case& one, std::ostream* out) { *out << one.kind << " " << one.value; }

class EveryKind : public testing::TestWithParam<Case> {};

TEST_P(EveryKind, IsReadBackAtBothPrintersResolutions) {
  const Case& one = GetParam();
  const PictureFolder folder;
  const Barcode code = EncodeBarcode(one.kind, one.value);
  EXPECT_EQ(code.text, one.text);
  for (const int dpi : {203, 300}) {
    const auto placed = PlaceBarcode(code, {.x = 3, .y = 2, .width = 62, .height = 22, .text_height = 3, .dpi = dpi});
    const std::string file = folder.File(std::to_string(dpi) + ".pgm");
    WritePicture(placed, 0, file);  // the symbol's own quiet zones are enough
    EXPECT_THAT(Decoded(file), ElementsAre(one.read)) << dpi;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, EveryKind,
    testing::Values(Case{"code128", "000123001", "CODE-128:000123001", "000123001"},
                    Case{"code128", "AB-12/x ~^_z", "CODE-128:AB-12/x ~^_z", "AB-12/x ~^_z"},
                    Case{"code128", "  000123001 ", "CODE-128:000123001", "000123001"},
                    Case{"ean13", "789123456789", "EAN-13:7891234567895", "7891234567895"},
                    Case{"ean13", "7891234500120", "EAN-13:7891234500120", "7891234500120"},
                    Case{"ean14", "1789123456789", "CODE-128:0117891234567892", "(01)17891234567892"},
                    Case{"ean14", "17891234567892", "CODE-128:0117891234567892", "(01)17891234567892"},
                    Case{"itf14", "1789123456789", "I2/5:17891234567892", "17891234567892"},
                    Case{"itf14", "07891234567895", "I2/5:07891234567895", "07891234567895"},
                    Case{"gs1-128", "(01)17891234567892(10)000123001", "CODE-128:011789123456789210000123001",
                         "(01)17891234567892(10)000123001"},
                    Case{"gs1-128", "[01]97891234567898[3103]018450", "CODE-128:01978912345678983103018450",
                         "(01)97891234567898(3103)018450"},
                    Case{"code39", "MALHA 12-3/B", "CODE-39:MALHA 12-3/B", "*MALHA 12-3/B*"},
                    Case{"qr", "000123001;18.450", "QR-Code:000123001;18.450", ""},
                    Case{"qr", "Malha Piquê é de algodão, ação nº 5 ÃÕÇ ^~_",
                         "QR-Code:Malha Piquê é de algodão, ação nº 5 ÃÕÇ ^~_", ""}));

TEST(Barcode, LotOfEveryLengthIsReadBack) {
  const PictureFolder folder;
  std::string lot;
  for (int length = 1; length <= 15; ++length) {
    lot += static_cast<char>(length % 3 == 0 ? 'A' + length : '0' + length % 10);
    const auto placed = PlaceBarcode(EncodeBarcode("code128", lot), {.width = 60, .height = 12, .dpi = 203});
    WritePicture(placed, 0, folder.File(lot + ".pgm"));
    EXPECT_THAT(Decoded(folder.File(lot + ".pgm")), ElementsAre("CODE-128:" + lot));
  }
}

TEST(Barcode, SmallestModuleThatFitsIsReadBackToo) {
  const PictureFolder folder;
  for (const char* kind : {"code128", "qr"}) {
    const Barcode code = EncodeBarcode(kind, "000123001");
    const double least = code.width * 25.4 / 203;
    const auto placed =
        PlaceBarcode(code, {.width = least + 0.01, .height = code.square ? least + 0.01 : 8, .dpi = 203});
    EXPECT_EQ(placed.module, 1);
    // A scanner's camera sees each dot as several pixels.
    PlacedBarcode seen = placed;
    for (CodeBar& bar : seen.bars) bar = {bar.x * 3, bar.y * 3, bar.width * 3, bar.height * 3};
    seen.x *= 3, seen.y *= 3, seen.width *= 3, seen.height *= 3;
    WritePicture(seen, 0, folder.File(kind));
    ASSERT_EQ(Decoded(folder.File(kind)).size(), 1U) << kind;
    EXPECT_THAT(Decoded(folder.File(kind)).front(), HasSubstr(":000123001"));
  }
}

// --- check digits ----------------------------------------------------------------------------------------------------

TEST(CheckDigit, FollowsTheModuloTenRuleForEveryLengthOfKey) {
  EXPECT_EQ(CheckDigit("629104150021"), '3');
  EXPECT_EQ(CheckDigit("789123456789"), '5');
  EXPECT_EQ(CheckDigit("1789123456789"), '2');
  EXPECT_EQ(CheckDigit("9638507"), '4');            // GTIN-8
  EXPECT_EQ(CheckDigit("37610425002123456"), '9');  // SSCC
  EXPECT_EQ(CheckDigit("000000000000"), '0');
}

TEST(CheckDigit, OneDigitMistypedNeverPasses) {
  const std::string good = "789123450012";
  const char check = CheckDigit(good);
  for (std::size_t i = 0; i < good.size(); ++i) {
    for (char digit = '0'; digit <= '9'; ++digit) {
      std::string typed = good;
      typed[i] = digit;
      EXPECT_EQ(CheckDigit(typed) == check, digit == good[i]) << typed;
    }
  }
}

TEST(CheckDigit, NeedsDigitsOfAKey) {
  for (const char* digits : {"", "12345x789012", "123456", "123456789012345678", "78912345678 ", "-89123456789"}) {
    EXPECT_THROW(CheckDigit(digits), host::InputError) << digits;
  }
}

// --- values that a kind does not hold --------------------------------------------------------------------------------

TEST(Barcode, RefusalNamesKindValueAndReason) {
  EXPECT_EQ(Refusal("ean13", "7891234567890"),
            "Código de barras ean13 \"7891234567890\": dígito verificador errado; seria 5.");
  EXPECT_EQ(Refusal("ean13", "789"), "Código de barras ean13 \"789\": tem 3 dígitos em vez de 13.");
  EXPECT_EQ(Refusal("ean13", "78912345678A"), "Código de barras ean13 \"78912345678A\": só aceita dígitos.");
  EXPECT_EQ(Refusal("ean14", "17891234567897"),
            "Código de barras ean14 \"17891234567897\": dígito verificador errado; seria 2.");
  EXPECT_EQ(Refusal("itf14", "178912345678921"),
            "Código de barras itf14 \"178912345678921\": tem 15 dígitos em vez de 14.");
  EXPECT_EQ(Refusal("code128", ""), "Código de barras code128 \"\": não há valor.");
  EXPECT_EQ(Refusal("code128", "   "), "Código de barras code128 \"\": não há valor.");
  EXPECT_EQ(Refusal("code128", "algodão"),
            "Código de barras code128 \"algodão\": tem acentos ou caracteres de controle.");
  EXPECT_THAT(Refusal("code39", "abc"), HasSubstr("só aceita letras maiúsculas"));
  EXPECT_THAT(Refusal("gs1-128", "000123001"), HasSubstr("identificadores"));
  EXPECT_THAT(Refusal("gs1-128", "(01)17891234567897"), HasSubstr("contraria as regras"));
  EXPECT_THAT(Refusal("pdf417", "1"),
              HasSubstr("tipo desconhecido; há code128, ean13, ean14, itf14, gs1-128, qr e code39."));
  EXPECT_THAT(Refusal("", "1"), HasSubstr("tipo desconhecido"));
}

TEST(Barcode, NoKindTakesControlCharactersButTheOneForFreeText) {
  for (const char* kind : {"code128", "code39", "ean13", "itf14", "gs1-128"}) {
    EXPECT_NE(Refusal(kind, std::string("12\x01") + "3"), "taken") << kind;
  }
  EXPECT_EQ(Refusal("qr", "lote 1\npeso 2"), "taken");
}

TEST(Barcode, TooLongValueIsCutInTheRefusalBetweenCharacters) {
  std::string accents;
  for (int i = 0; i < 4000; ++i) accents += "ã";
  const std::string refused = Refusal("qr", accents);
  EXPECT_THAT(refused, HasSubstr("longo demais"));
  EXPECT_LT(refused.size(), 120U);
  EXPECT_THAT(refused, HasSubstr("ãã…"));
  EXPECT_THAT(Refusal("code128", std::string(500, 'x')), HasSubstr("longo demais"));
}

TEST(Barcode, WhateverIsAskedForIsEncodedWholeOrRefused) {
  std::mt19937 random(20260310);  // the same values in every run
  const std::vector<std::string> kinds{"code128", "ean13", "ean14", "itf14", "gs1-128", "qr", "code39"};
  const std::string likely = "0123456789()[]ABCxyz -.$/+%\xc3\xa3";
  int encoded = 0;
  for (int round = 0; round < 20'000; ++round) {
    const std::string& kind = kinds[random() % kinds.size()];
    std::string value;
    for (auto left = random() % 24; left > 0; --left) {
      value += round % 2 == 0 ? likely[random() % likely.size()] : static_cast<char>(random() % 256);
    }
    if (round % 5 == 0) {
      value = std::to_string(random()) + std::to_string(random());
      value.resize(std::min<std::size_t>(value.size(), 12 + random() % 3));
    }
    ASSERT_EQ(CanEncode(kind, value), Refusal(kind, value) == "taken") << kind << " " << value;
    if (!CanEncode(kind, value)) continue;
    ++encoded;
    const Barcode code = EncodeBarcode(kind, value);
    ASSERT_FALSE(code.bars.empty());
    for (const CodeBar& bar : code.bars) {
      ASSERT_TRUE(bar.x >= code.quiet_left && bar.width > 0 && bar.x + bar.width <= code.width - code.quiet_right);
      ASSERT_TRUE(bar.y >= 0 && bar.height > 0 && bar.y + bar.height <= code.height);
    }
  }
  EXPECT_GT(encoded, 3'000);
}

// --- geometry --------------------------------------------------------------------------------------------------------

TEST(Barcode, QuietZonesAreEmptyAndCounted) {
  const std::map<std::string, std::pair<int, int>> zones{{"code128", {10, 10}}, {"ean13", {11, 7}},
                                                         {"ean14", {10, 10}},   {"itf14", {10, 10}},
                                                         {"qr", {4, 4}},        {"code39", {10, 10}}};
  for (const auto& [kind, zone] : zones) {
    const Barcode code = EncodeBarcode(kind, kind == "ean13" ? "789123456789" : "1789123456789");
    int first = code.width;
    int last = 0;
    for (const CodeBar& bar : code.bars) {
      first = std::min(first, bar.x);
      last = std::max(last, bar.x + bar.width);
    }
    EXPECT_EQ(first, zone.first) << kind;
    EXPECT_EQ(code.width - last, zone.second) << kind;
    EXPECT_EQ(code.quiet_left, zone.first) << kind;
    EXPECT_EQ(code.quiet_right, zone.second) << kind;
  }
  EXPECT_EQ(EncodeBarcode("ean13", "789123456789").width, 95 + 18);
  EXPECT_EQ(EncodeBarcode("qr", "1").height, 21 + 8);
}

TEST(PlaceBarcode, TakesTheLargestWholeNumberOfDots) {
  const Barcode code = EncodeBarcode("ean13", "789123456789");  // 113 modules
  for (const int dpi : {203, 300, 600}) {
    const double dot = 25.4 / dpi;
    for (double width = 15; width < 90; width += 0.7) {
      const auto placed = PlaceBarcode(code, {.x = 1.3, .y = 0.4, .width = width, .height = 15, .dpi = dpi});
      EXPECT_LE(placed.width * dot, width + 1e-9);
      EXPECT_GT((placed.width + 113 + 2) * dot, width) << "one dot more per module would have fitted";
      EXPECT_EQ(placed.width, placed.module * 113);
      EXPECT_GE(placed.x * dot, 1.3 - 1e-9);
      EXPECT_LE((placed.x + placed.width) * dot, 1.3 + width + 1e-9);
      EXPECT_GE(placed.y * dot, 0.4 - 1e-9);
      EXPECT_LE((placed.y + placed.height) * dot, 15.4 + 1e-9);
      for (const CodeBar& bar : placed.bars) EXPECT_EQ(bar.width % placed.module, 0);
    }
  }
}

TEST(PlaceBarcode, StandsInTheMiddleOfItsRoomAndLeavesTheFootToTheText) {
  const Barcode code = EncodeBarcode("code128", "000123001");
  const BarcodeRoom room{.x = 10, .y = 20, .width = 60, .height = 15, .text_height = 4, .dpi = 203};
  const auto placed = PlaceBarcode(code, room);
  const double left = placed.x * placed.dot - 10;
  const double right = 70 - (placed.x + placed.width) * placed.dot;
  EXPECT_NEAR(left, right, 2 * placed.dot);
  EXPECT_LE((placed.y + placed.height) * placed.dot, 31);
  EXPECT_EQ(placed.text, "000123001");
  EXPECT_DOUBLE_EQ(placed.text_x, 10);
  EXPECT_DOUBLE_EQ(placed.text_y, 31);
  EXPECT_DOUBLE_EQ(placed.text_width, 60);
  EXPECT_DOUBLE_EQ(placed.text_height, 4);

  const auto square = PlaceBarcode(EncodeBarcode("qr", "000123001"), room);
  EXPECT_EQ(square.text, "");
  EXPECT_EQ(square.width, square.height);
  EXPECT_GT(square.height * square.dot, 11) << "a kind without text leaves no room for it";
}

TEST(PlaceBarcode, BearerBarsRunAlongBothEdgesOfTheSymbol) {
  const auto placed = PlaceBarcode(EncodeBarcode("itf14", "1789123456789"), {.width = 60, .height = 20, .dpi = 203});
  std::vector<CodeBar> bearers;
  for (const CodeBar& bar : placed.bars) {
    if (bar.width > 20 * placed.module) bearers.push_back(bar);
  }
  ASSERT_EQ(bearers.size(), 2U);
  EXPECT_EQ(bearers[0].y, placed.y);
  EXPECT_EQ(bearers[1].y + bearers[1].height, placed.y + placed.height);
  for (const CodeBar& bearer : bearers) EXPECT_EQ(bearer.height, 2 * placed.module);
}

TEST(PlaceBarcode, TellsTheRoomThatItWouldNeed) {
  const Barcode code = EncodeBarcode("ean13", "789123456789");
  EXPECT_EQ(PlaceRefusal(code, {.width = 14, .height = 10, .dpi = 203}),
            "Código de barras ean13 \"789123456789\": não cabe; precisa de 14,2 mm x 2,0 mm.");
  EXPECT_EQ(PlaceRefusal(code, {.width = 14.2, .height = 10, .dpi = 203}), "placed");
  EXPECT_EQ(PlaceRefusal(code, {.width = 40, .height = 4, .text_height = 3, .dpi = 203}),
            "Código de barras ean13 \"789123456789\": não cabe; precisa de 14,2 mm x 5,0 mm.");
  EXPECT_EQ(PlaceRefusal(code, {.width = 40, .height = 5, .text_height = 3, .dpi = 203}), "placed");
  const Barcode square = EncodeBarcode("qr", "1");
  EXPECT_THAT(PlaceRefusal(square, {.width = 40, .height = 3, .dpi = 203}), HasSubstr("precisa de 3,7 mm x 3,7 mm"));
}

TEST(PlaceBarcode, RefusesRoomsWithoutSense) {
  const Barcode code = EncodeBarcode("qr", "1");
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const BarcodeRoom& room :
       {BarcodeRoom{.width = nan, .height = 10}, BarcodeRoom{.width = 10, .height = -1},
        BarcodeRoom{.width = 1e300, .height = 10}, BarcodeRoom{.x = nan, .width = 10, .height = 10},
        BarcodeRoom{.width = 10, .height = 10, .dpi = 0}, BarcodeRoom{.width = 10, .height = 10, .dpi = -203},
        BarcodeRoom{.width = 10, .height = 10, .text_height = nan}}) {
    EXPECT_THAT(PlaceRefusal(code, room), HasSubstr("sem sentido"));
  }
}

}  // namespace
}  // namespace app::printing
