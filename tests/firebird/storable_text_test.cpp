// Which texts the database can hold, and what is said of the others.
#include "app/firebird/storable_text.h"

#include <gtest/gtest.h>

namespace {

using app::firebird::MakeStorable;
using app::firebird::WhyNotStorable;

TEST(StorableText, PortugueseAndItsSignsAreStorable) {
  for (const char* text :
       {"", "Fiação à mão, coração", "ÁÉÍÓÚÂÊÔÃÕÇÜÑ", "1ª 2º § ½ °", "“aspas” – € … Ž ™", "a\tb\r\nc"}) {
    EXPECT_EQ(WhyNotStorable(text), std::nullopt) << text;
    EXPECT_EQ(MakeStorable(text), text);
  }
}

TEST(StorableText, NamesTheFirstCharacterThatIsNot) {
  EXPECT_EQ(WhyNotStorable("10 Ω ou 日本").value(),
            "O caractere \"Ω\" (U+03A9) não pode ser gravado no banco de dados.");
  EXPECT_EQ(WhyNotStorable("😀").value(), "O caractere \"😀\" (U+1F600) não pode ser gravado no banco de dados.");
  EXPECT_EQ(WhyNotStorable(std::string_view("a\0b", 3)).value(),
            "O texto contém um caractere de controle (U+0000) e não pode ser gravado.");
  EXPECT_TRUE(WhyNotStorable("\xC2\x81").has_value());
}

TEST(StorableText, BrokenBytesAreNamedAndReplaced) {
  for (const char* text : {"\xC3", "\xFF", "\xC3(", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80"}) {
    EXPECT_TRUE(WhyNotStorable(text).has_value());
    EXPECT_EQ(WhyNotStorable(MakeStorable(text)), std::nullopt);
  }
  EXPECT_EQ(MakeStorable("a日b"), "a?b");
}

// --- settings
// -----------------------------------------------------------------------------------------------------------

}  // namespace
