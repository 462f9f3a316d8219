// The host knows reports by the module's list alone: nothing in app/ names one.
#include "module/reports.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::vector<std::string> Names() {
  std::vector<std::string> names;
  for (const host::ListedReport& report : tecelagem::ReportList()) names.emplace_back(report.name);
  return names;
}

bool IsOfAWord(char character) { return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_'; }

bool HasWord(const std::string& text, const std::string& word) {
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    if ((at == 0 || !IsOfAWord(text[at - 1])) && (end == text.size() || !IsOfAWord(text[end]))) return true;
  }
  return false;
}

// The reports whose names stand in a text as words of their own.
std::vector<std::string> NamedIn(const std::string& text) {
  std::vector<std::string> found;
  for (const std::string& name : Names()) {
    if (HasWord(text, name)) found.push_back(name);
  }
  return found;
}

TEST(ReportNames, NothingInTheHostNamesAReport) {
  std::string objections;
  std::size_t seen = 0;
  for (const auto& entry : fs::recursive_directory_iterator(fs::path(TECELAGEM_SOURCE_DIR) / "app")) {
    if (!entry.is_regular_file()) continue;
    ++seen;
    std::ifstream in(entry.path(), std::ios::binary);
    const std::string file = entry.path().string();
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    for (const std::string& name : NamedIn(file + "\n" + text))
      objections.append(file).append(": ").append(name).append("\n");
  }
  EXPECT_GT(seen, 100u);
  EXPECT_EQ(objections, "");
}

TEST(ReportNames, TheRuleItselfRefusesWhatItShould) {
  ASSERT_GE(Names().size(), 2u);
  for (const std::string& name : Names()) {
    const std::vector<std::string> itself{name};
    EXPECT_EQ(NamedIn("if (report == \"" + name + "\") Print();"), itself);
    EXPECT_EQ(NamedIn("// as " + name + ".js says"), itself);
    EXPECT_EQ(NamedIn("app/cli/print/" + name + ".js"), itself);
    EXPECT_TRUE(NamedIn("Tfm" + name + "2").empty());
  }
}

// What the rule looks for is what reports are called.
TEST(ReportNames, EveryReportIsCalledAsReportsAre) {
  for (const std::string& name : Names()) EXPECT_TRUE(std::regex_match(name, std::regex("W[A-Z][A-Za-z]+"))) << name;
}

}  // namespace
