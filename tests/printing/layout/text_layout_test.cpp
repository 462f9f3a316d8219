// Text layouts: the very bytes that a printer gets.
#include <gmock/gmock.h>

#include "tests/printing/layout_fixture.h"

namespace {

class TextLayout : public test::LayoutTest {
 protected:
  std::string Bytes(const std::string& text, const std::string& options = {}) {
    return Printed("text({ " + options + " write: () => \"" + text + "\" });", 'T').bytes;
  }
};

TEST_F(TextLayout, TheUsualEncodingIsCp850) {
  EXPECT_EQ(Bytes("ação AÇÃO é õ º"), "a\x87\xC6o A\x80\xC7O \x82 \xE4 \xA7");
  EXPECT_EQ(Bytes("ação", "encoding: 'cp850',"), "a\x87\xC6o");
}

TEST_F(TextLayout, OtherEncodings) {
  EXPECT_EQ(Bytes("ação € –", "encoding: 'windows-1252',"), "a\xE7\xE3o \x80 \x96");
  EXPECT_EQ(Bytes("ação €", "encoding: 'utf-8',"), "ação €");
}

TEST_F(TextLayout, WhatAnEncodingLacksBecomesThePlainLetter) {
  EXPECT_EQ(Bytes("Łódź Ő ẽ ☃ €"),
            "?\xA2"
            "dz O e ? ?");
  EXPECT_EQ(Bytes("ẽ😀x", "encoding: 'windows-1252',"), "e?x");
}

TEST_F(TextLayout, LettersInPiecesAreJoined) { EXPECT_EQ(Bytes("a\\u0303"), "\xC6"); }

TEST_F(TextLayout, ControlCharactersStayAsTheyAre) {
  const std::string bytes = Bytes("\\u001b@\\u0000\\u0002A\\r\\n");
  EXPECT_EQ(bytes, std::string("\x1B@\0\x02"
                               "A\r\n",
                               7));
}

TEST_F(TextLayout, RowsFollowEachOther) {
  AddRows(3);
  EXPECT_EQ(Printed("text({ rows: TbLista, write: (r, n) => r.NOME + ':' + n + '\\n' });", 'T').bytes,
            "R001:0\nR002:1\nR003:2\n");
  AddRows(0);
  const auto printout = Printed("text({ rows: TbLista, write: r => r.Nome });", 'T');
  EXPECT_EQ(printout.bytes, "");
  EXPECT_EQ(printout.form, app::printing::PrintoutForm::kText);
  EXPECT_TRUE(printout.pages.empty());
}

TEST_F(TextLayout, NothingIsNoText) {
  EXPECT_EQ(Printed("text({ write: () => null });", 'T').bytes, "");
  EXPECT_EQ(Refusal("\ntext({ write: () => { } });", 'T'),
            "linha 2: o texto de write() não tem valor (undefined); o nome do campo está certo?");
}

}  // namespace
