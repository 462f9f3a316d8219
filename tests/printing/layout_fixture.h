// An installation with a layout of its own, over datasets that the test makes.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "tests/printing/decoded.h"
#include "tests/printing/paper_screen.h"

namespace test {

class LayoutTest : public testing::Test {
 protected:
  /// Writes the file Teste.js, or Teste.text.js for kind 'T', and prints it.
  app::printing::Printout Printed(const std::string& layout, char kind = 'W');
  /// The same for a report of these blocks: "paragraph('a'), space(3)".
  app::printing::Printout Blocks(const std::string& blocks, const std::string& more = {});
  /// What a layout is refused with, file and folder left out ("linha 3: ..."); the test fails when it is printed.
  std::string Refusal(const std::string& layout, char kind = 'W');
  /// Puts any bytes into a file of the installation.
  void WriteLayout(const std::string& name, const std::string& bytes);
  std::string LayoutPath(const std::string& name) const { return folder_.File(name); }
  std::string Folder() const { return folder_.File(""); }
  /// Rows "R001", "R002" ... with the number itself in Qtde, of `group` rows a group in Grupo ("G1" ...).
  host::Dataset& AddRows(int count, int group = 1000);

  PaperScreen screen_;
  PictureFolder folder_;
};

/// The item of that text, on any page; the test fails when there is none.
const app::printing::TextItem& Item(const app::printing::Printout& printout, const std::string& text,
                                    std::size_t page = 0);
/// Number of items of that text on a page.
std::size_t CountOf(const app::printing::Printout& printout, const std::string& text, std::size_t page);
/// Texts of a page that begin with this, in their order.
std::vector<std::string> Beginning(const app::printing::Printout& printout, const std::string& start, std::size_t page);

}  // namespace test
