// A list as text for the clipboard, as CSV and as a spreadsheet.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "app/desktop/grid/table_export.h"
#include "host/errors.h"

namespace {

using app::desktop::Table;
using app::desktop::ToClipboardText;
using app::desktop::ToCsv;
using app::desktop::WriteCsv;
using app::desktop::WriteXlsx;
using host::Align;
using host::Date;

Table Items() {
  Table table;
  table.title = "Ordem: [1] de Tecelagem, com um nome comprido";
  table.columns = {{"Código", Align::kLeft, 8, ""},
                   {"Qtde", Align::kRight, 10, "0.00"},
                   {"Rolos", Align::kRight, 6, ""},
                   {"Entrega", Align::kLeft, 10, ""}};
  table.rows = {{std::string("M1"), 1234.5, 3.0, *Date::FromDisplay("15/03/2026")},
                {std::string("a;\"b\"\nc\td"), 0.125, 2.75, std::monostate()}};
  return table;
}

std::string Read(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "no file";
}

// A piece of the spreadsheet, which is a zip of XML files.
std::string Piece(const QString& file, const QString& name) {
  QProcess unzip;
  unzip.start(QStringLiteral("unzip"), {QStringLiteral("-p"), file, name});
  if (!unzip.waitForFinished(10000) || unzip.exitCode() != 0) return "not in the file";
  return unzip.readAllStandardOutput().toStdString();
}

TEST(ExportTest, TheClipboardGetsCaptionsAndTabsAndNoBreaksInsideACell) {
  EXPECT_EQ(ToClipboardText(Items()),
            "Código\tQtde\tRolos\tEntrega\n"
            "M1\t1234,50\t3\t15/03/2026\n"
            "a;\"b\" c d\t0,13\t2,75\t\n");
}

TEST(ExportTest, CsvIsForASpreadsheetOfThisCountry) {
  EXPECT_EQ(ToCsv(Items()),
            "\xEF\xBB\xBF"
            "Código;Qtde;Rolos;Entrega\r\n"
            "M1;1234,50;3;15/03/2026\r\n"
            "\"a;\"\"b\"\"\nc\td\";0,13;2,75;\r\n");
}

TEST(ExportTest, ATableWithoutRowsIsItsCaptions) {
  Table table = Items();
  table.rows.clear();
  EXPECT_EQ(ToClipboardText(table), "Código\tQtde\tRolos\tEntrega\n");
}

TEST(ExportTest, ACsvFileReplacesTheOneBefore) {
  QTemporaryDir folder;
  const QString path = folder.filePath("lista ação.csv");
  WriteCsv(Items(), path.toStdString());
  Table table = Items();
  table.rows.clear();
  WriteCsv(table, path.toStdString());
  EXPECT_EQ(Read(path),
            "\xEF\xBB\xBF"
            "Código;Qtde;Rolos;Entrega\r\n");
}

TEST(ExportTest, AFileThatCannotBeWrittenIsNamedAndNothingStays) {
  QTemporaryDir folder;
  for (const auto write : {WriteCsv, WriteXlsx}) {
    const std::string path = folder.filePath("no/lista").toStdString();
    try {
      write(Items(), path);
      FAIL() << path << " was written";
    } catch (const host::InputError& error) {
      EXPECT_NE(std::string(error.what()).find("Não foi possível gravar o arquivo \"" + path + "\""), std::string::npos)
          << error.what();
    }
  }
  // A folder in the way: the file comes to nothing and leaves no part of itself.
  ASSERT_TRUE(QDir(folder.path()).mkpath("lista.xlsx/sub"));
  EXPECT_THROW(WriteXlsx(Items(), folder.filePath("lista.xlsx").toStdString()), host::InputError);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("lista.xlsx"));
}

TEST(ExportTest, ASpreadsheetHoldsNumbersAndDatesAsSuchWithTheirFormats) {
  QTemporaryDir folder;
  const QString path = folder.filePath("lista ação.xlsx");
  WriteXlsx(Items(), path.toStdString());
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("lista ação.xlsx"));

  const std::string sheet = Piece(path, "xl/worksheets/sheet1.xml");
  EXPECT_NE(sheet.find("<v>1234.5</v>"), std::string::npos) << sheet;
  EXPECT_NE(sheet.find("<v>0.125</v>"), std::string::npos);
  EXPECT_NE(sheet.find("<v>2.75</v>"), std::string::npos);
  EXPECT_NE(sheet.find("<v>46096</v>"), std::string::npos) << "15/03/2026 as a day of the sheet\n" << sheet;
  EXPECT_NE(sheet.find("state=\"frozen\""), std::string::npos);
  EXPECT_NE(sheet.find("ySplit=\"1\""), std::string::npos);
  EXPECT_EQ(sheet.find("r=\"D3\" t"), std::string::npos) << "nothing is no text";

  const std::string strings = Piece(path, "xl/sharedStrings.xml");
  EXPECT_NE(strings.find("Código"), std::string::npos) << strings;
  EXPECT_NE(strings.find("a;\"b\"\nc\td"), std::string::npos);

  const std::string styles = Piece(path, "xl/styles.xml");
  EXPECT_NE(styles.find("dd/mm/yyyy"), std::string::npos) << styles;
  EXPECT_NE(styles.find("formatCode=\"0.00\""), std::string::npos) << styles;

  const std::string book = Piece(path, "xl/workbook.xml");
  EXPECT_NE(book.find("name=\"Ordem   1  de Tecelagem, com um\""), std::string::npos) << book;
}

TEST(ExportTest, ASpreadsheetReplacesTheOneBefore) {
  QTemporaryDir folder;
  const QString path = folder.filePath("lista.xlsx");
  WriteXlsx(Items(), path.toStdString());
  Table table = Items();
  table.rows = {{std::string("M2"), 7.0, std::monostate(), *Date::FromDisplay("01/01/1500")}};
  table.title = "";
  WriteXlsx(table, path.toStdString());
  const std::string strings = Piece(path, "xl/sharedStrings.xml");
  EXPECT_NE(strings.find("M2"), std::string::npos);
  EXPECT_EQ(strings.find("M1"), std::string::npos);
  EXPECT_NE(strings.find("01/01/1500"), std::string::npos) << "older than the sheet's calendar: as text";
  EXPECT_NE(Piece(path, "xl/workbook.xml").find("name=\"Lista\""), std::string::npos);
}

}  // namespace
