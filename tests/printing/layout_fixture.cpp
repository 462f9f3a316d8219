#include "tests/printing/layout_fixture.h"

#include <algorithm>
#include <fstream>

namespace test {

void LayoutTest::WriteLayout(const std::string& name, const std::string& bytes) {
  std::ofstream(LayoutPath(name), std::ios::binary) << bytes;
}

app::printing::Printout LayoutTest::Printed(const std::string& layout, char kind) {
  WriteLayout(kind == 'T' ? "Teste.text.js" : "Teste.js", layout);
  return screen_.Print("Teste", kind, Folder());
}

app::printing::Printout LayoutTest::Blocks(const std::string& blocks, const std::string& more) {
  return Printed("report({ title: 'Teste', " + more + " body: [" + blocks + "] });");
}

std::string LayoutTest::Refusal(const std::string& layout, char kind) {
  try {
    Printed(layout, kind);
  } catch (const host::InputError& error) {
    const std::string text = error.what();
    const std::string start = "Erro no leiaute " + LayoutPath(kind == 'T' ? "Teste.text.js" : "Teste.js");
    const std::size_t skipped = text.starts_with(start) ? start.size() : 0;
    EXPECT_GT(skipped, 0u) << text;
    EXPECT_EQ(text.find('\n'), std::string::npos) << text;
    return text.substr(skipped + (text.substr(skipped).starts_with(", ") ? 2 : 0));
  }
  ADD_FAILURE() << "printed: " << layout;
  return {};
}

host::Dataset& LayoutTest::AddRows(int count, int group) {
  std::vector<FieldsOfRow> rows;
  for (int row = 1; row <= count; ++row) {
    std::string number = std::to_string(row);
    number.insert(0, number.size() < 3 ? 3 - number.size() : 0, '0');
    rows.push_back({{"Grupo", "G" + std::to_string((row - 1) / group + 1)}, {"Nome", "R" + number}, {"Qtde", row}});
  }
  host::Dataset& dataset = screen_.Add("TbLista", {"Grupo", "Nome", "Qtde"}, rows);
  if (count == 0) dataset.CreateFields({{"Grupo"}, {"Nome"}, {"Qtde", host::FieldType::kFloat}});
  return dataset;
}

const app::printing::TextItem& Item(const app::printing::Printout& printout, const std::string& text,
                                    std::size_t page) {
  static const app::printing::TextItem kNone;
  for (const auto& item : printout.pages.at(page).texts) {
    if (item.text == text) return item;
  }
  ADD_FAILURE() << "no text \"" << text << "\" on page " << page + 1 << ":\n" << TextOf(printout, page);
  return kNone;
}

std::size_t CountOf(const app::printing::Printout& printout, const std::string& text, std::size_t page) {
  const auto& texts = printout.pages.at(page).texts;
  return static_cast<std::size_t>(
      std::count_if(texts.begin(), texts.end(), [&](const auto& item) { return item.text == text; }));
}

std::vector<std::string> Beginning(const app::printing::Printout& printout, const std::string& start,
                                   std::size_t page) {
  std::vector<std::string> found;
  for (const auto& item : printout.pages.at(page).texts) {
    if (item.text.starts_with(start)) found.push_back(item.text);
  }
  return found;
}

}  // namespace test
