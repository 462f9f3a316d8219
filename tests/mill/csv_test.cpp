// Reading of the files that spreadsheets write.
#include "app/mill/csv.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/errors.h"

namespace {

using app::mill::CsvFile;
using app::mill::ReadCsv;
using Cells = std::vector<std::string>;

std::string ErrorOf(std::string_view text) {
  try {
    ReadCsv(text);
  } catch (const host::InputError& error) {
    return error.what();
  }
  return "no error";
}

TEST(Csv, HeaderAndRowsWithTheirLines) {
  const CsvFile file = ReadCsv("codigo; Descricao\nA;um\n\nB;dois\n");
  EXPECT_EQ(file.header, (Cells{"CODIGO", "DESCRICAO"}));
  ASSERT_EQ(file.rows.size(), 2u);
  EXPECT_EQ(file.rows[0].cells, (Cells{"A", "um"}));
  EXPECT_EQ(file.rows[0].line, 2);
  EXPECT_EQ(file.rows[1].cells, (Cells{"B", "dois"}));
  EXPECT_EQ(file.rows[1].line, 4);
}

TEST(Csv, ByteOrderMarkAndWindowsLineEndsAreNoContent) {
  const CsvFile file = ReadCsv(
      "\xEF\xBB\xBF"
      "A;B\r\n1;2\r\n3;4");
  EXPECT_EQ(file.header, (Cells{"A", "B"}));
  ASSERT_EQ(file.rows.size(), 2u);
  EXPECT_EQ(file.rows[1].cells, (Cells{"3", "4"}));
}

TEST(Csv, QuotesHoldSeparatorsLineBreaksAndQuotes) {
  const CsvFile file = ReadCsv("A;B\n\"x;y\";\"diz \"\"oi\"\"\"\n\"uma\nduas\"; z \n\"\";fim\n");
  ASSERT_EQ(file.rows.size(), 3u);
  EXPECT_EQ(file.rows[0].cells, (Cells{"x;y", "diz \"oi\""}));
  EXPECT_EQ(file.rows[1].cells, (Cells{"uma\nduas", "z"}));
  EXPECT_EQ(file.rows[2].cells, (Cells{"", "fim"}));
  EXPECT_EQ(file.rows[2].line, 5);
}

TEST(Csv, EmptyCellsStayInPlace) {
  const CsvFile file = ReadCsv("A;B;C\n;2;\n");
  ASSERT_EQ(file.rows.size(), 1u);
  EXPECT_EQ(file.rows[0].cells, (Cells{"", "2", ""}));
}

TEST(Csv, ErrorsNameTheLine) {
  EXPECT_EQ(ErrorOf("A;B\n1;2\nma\xE7\xE3;2\n"), "Linha 3: o arquivo não está em UTF-8; grave-o em UTF-8.");
  EXPECT_EQ(ErrorOf(std::string("\xFF\xFE"
                                "A\0",
                                4)),
            "Linha 1: o arquivo está em UTF-16; grave-o em UTF-8.");
  EXPECT_EQ(ErrorOf("A;B\n1;\"aberta\n2;3\n"), "Linha 2: as aspas abertas não foram fechadas.");
  EXPECT_EQ(ErrorOf("A;B\n\"x\"y;2\n"), "Linha 2: há texto depois das aspas.");
  EXPECT_EQ(ErrorOf(""), "Linha 1: o arquivo está vazio; a primeira linha traz os nomes das colunas.");
  EXPECT_EQ(ErrorOf("\n\n"), "Linha 1: o arquivo está vazio; a primeira linha traz os nomes das colunas.");
}

}  // namespace
