// The house keeps its own rules: which folder may include which, no test switched off, one exported symbol.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/house/sources.h"

namespace {

namespace fs = std::filesystem;
using house::Include;
using house::Includes;
using house::kRoot;
using house::Read;
using house::Sources;

// Folder of our own to the folders it may include.
const std::map<std::string, std::set<std::string>> kMayInclude = {
    {"host", {"host"}},
    {"weaving", {"host", "weaving"}},
    {"orders", {"host", "weaving", "orders"}},
    {"yarn", {"host", "weaving", "yarn"}},
    {"writeoff", {"host", "weaving", "writeoff", "yarn"}},
    {"composition", {"host", "weaving", "composition"}},
    {"module", {"host", "module", "orders", "yarn", "writeoff", "composition"}},
    {"app", {"host", "app"}},
};

const std::set<std::string> kStandardHeaders = {
    "algorithm", "array",       "atomic",      "bit",           "charconv",
    "chrono",    "climits",     "cmath",       "compare",       "concepts",
    "cstddef",   "cstdint",     "cstdio",      "cstdlib",       "cstring",
    "deque",     "exception",   "fstream",     "functional",    "initializer_list",
    "iomanip",   "iostream",    "iterator",    "limits",        "list",
    "locale",    "map",         "memory",      "mutex",         "numeric",
    "optional",  "ostream",     "queue",       "random",        "ranges",
    "regex",     "set",         "span",        "sstream",       "stack",
    "stdexcept", "string",      "string_view", "system_error",  "thread",
    "tuple",     "type_traits", "typeinfo",    "unordered_map", "unordered_set",
    "utility",   "variant",     "vector",      "cctype",        "ctime",
    "filesystem"};

// The reason why `folder` may not include this, or nothing.
std::string Objection(const std::string& folder, const Include& include) {
  if (include.angled) {
    const bool toolkit_free = folder != "app";
    if (toolkit_free && !kStandardHeaders.contains(include.name)) return "not a header of the standard library";
    return {};
  }
  if (folder == "app" && include.name.starts_with("ui_")) return {};  // made of a form of that folder
  const std::string target = include.name.substr(0, include.name.find('/'));
  if (!kMayInclude.at(folder).contains(target)) return "the arrow does not run this way";
  if (folder == "writeoff" && target == "yarn" && include.name != "yarn/yarn_write_off.h") {
    return "the write-off knows the yarn screen only by its interface";
  }
  return {};
}

TEST(HouseRules, IncludesRunOneWay) {
  std::string objections;
  std::size_t seen = 0;
  for (const auto& [folder, allowed] : kMayInclude) {
    for (const auto& path : Sources(folder)) {
      for (const auto& include : Includes(Read(path))) {
        ++seen;
        const std::string objection = Objection(folder, include);
        if (!objection.empty()) {
          objections += fs::relative(path, kRoot).string() + " includes " + include.name + ": " + objection + "\n";
        }
      }
    }
  }
  EXPECT_GT(seen, 100u);
  EXPECT_EQ(objections, "");
}

TEST(HouseRules, TheRuleItselfRefusesWhatItShould) {
  EXPECT_NE(Objection("orders", {false, "writeoff/mov_bai_tec.h"}), "");
  EXPECT_NE(Objection("weaving", {false, "orders/order_store.h"}), "");
  EXPECT_NE(Objection("writeoff", {false, "yarn/mov_bai_fio.h"}), "");
  EXPECT_EQ(Objection("writeoff", {false, "weaving/roll_lot.h"}), "");
  EXPECT_NE(Objection("orders", {true, "QString"}), "");
  EXPECT_NE(Objection("host", {false, "app/application.h"}), "");
  EXPECT_NE(Objection("app", {false, "orders/cad_lote_tec.h"}), "");
  EXPECT_EQ(Objection("orders", {true, "vector"}), "");
}

TEST(HouseRules, NoTestIsSwitchedOff) {
  // Put together here so that this file does not find itself.
  const std::vector<std::string> words = {std::string("DISABLED") + "_", std::string("GTEST") + "_SKIP",
                                          std::string("EXPECT_TRUE(") + "true)", std::string("SUCC") + "EED()"};
  std::string found;
  for (const auto& path : Sources("tests")) {
    const std::string text = Read(path);
    for (const auto& word : words) {
      if (text.find(word) != std::string::npos) found += path.string() + " has " + word + "\n";
    }
  }
  EXPECT_EQ(found, "");
}

TEST(HouseRules, TheModuleExportsOneFunction) {
  const std::string command = std::string("nm -D --defined-only ") + TECELAGEM_BINARY_DIR + "/libtecelagem.so";
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  ASSERT_NE(pipe, nullptr);
  std::string output;
  std::array<char, 4096> piece;
  while (const std::size_t size = fread(piece.data(), 1, piece.size(), pipe.get())) output.append(piece.data(), size);
  ASSERT_EQ(std::count(output.begin(), output.end(), '\n'), 1) << output;
  EXPECT_NE(output.find(" T tecelagem_module"), std::string::npos) << output;
}

}  // namespace
