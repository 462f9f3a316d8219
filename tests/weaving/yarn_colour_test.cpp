// Which rows of a composition tell the colour of their yarn.
#include "weaving/yarn_colour.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/application.h"
#include "support/mill.h"

namespace test {
namespace {

TEST(YarnColour, IsMissingWhereAnAsteriskStands) {
  Mill mill;
  const std::vector<std::string> colours = {"CRU", std::string(weaving::kNoYarnColour), "A*1", "*", "0"};
  for (const std::string& colour : colours) {
    mill.Insert("COMP_MATERIAL", {{"MATERIAL", "M1"}, {"COR", "01"}, {"CODIGO", "F1"}, {"COR_I", colour}});
  }
  const auto given = weaving::Statements(mill.App())
                         .Open(R"(
SELECT COMP.COR_I FROM {COMP_MATERIAL} COMP
WHERE :coloured
ORDER BY COMP.COR_I)",
                               {{"coloured", weaving::YarnColourGiven("COMP.")}});
  std::vector<std::string> found;
  for (; !given->Eof(); given->Next()) found.push_back(given->FieldByName("COR_I").AsText());
  EXPECT_EQ(found, (std::vector<std::string>{"0", "CRU"}));
}

}  // namespace
}  // namespace test
