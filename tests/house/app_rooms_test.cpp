// The rooms of app/: which may include which, in an order that has no circle.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "tests/house/sources.h"

namespace {

namespace fs = std::filesystem;
using house::Include;

struct Room {
  std::string name;  // its folder below app/
  std::set<std::string> may_include;
};

// Files that stand in app/ itself: the contracts between the rooms, and values that travel inside the program.
const std::string kLoose = ".";
const std::string kMain = "main.cpp";

// From the ground up. A room includes only rooms that stand before it, which leaves no circle. Whoever adds an arrow
// here says that one room has to know another; whoever cannot add it without changing the order moves a file instead.
const std::vector<Room> kHouse = {
    {"firebird", {}},
    {"scale", {}},
    {kLoose, {"firebird", "scale"}},
    {"tables", {"firebird"}},
    {"services", {"firebird", "scale", kLoose, "tables"}},
    {"operator", {kLoose}},
    {"books", {"firebird"}},
    {"serial", {"scale", kLoose}},
    {"mill", {"firebird", kLoose, "tables", "services"}},
    // The host's own screens.
    {"registers", {"firebird", kLoose, "tables", "mill"}},
    {"admin", {"firebird", kLoose, "services"}},
    {"assembly", {"firebird", kLoose, "services", "registers", "admin"}},
    {"script", {kLoose, "operator", "books"}},
    // Paper.
    {"printing/page", {}},
    {"printing/layout", {kLoose, "printing/page"}},
    {"printing/delivery", {kLoose, "serial", "printing/page", "printing/layout"}},
    // Windows.
    {"desktop/basics", {kLoose}},
    {"desktop/look", {}},
    {"desktop/boxes", {"desktop/basics", "desktop/look"}},
    {"desktop/lookup", {kLoose, "desktop/basics"}},
    {"desktop/scale", {"scale", kLoose, "serial", "desktop/basics", "desktop/boxes"}},
    {"desktop/grid", {"desktop/basics"}},
    {"desktop/bindings", {"desktop/basics", "desktop/grid"}},
    {"desktop/forms", {"registers", "desktop/basics", "desktop/grid"}},
    {"desktop/screens", {"desktop/basics", "desktop/boxes", "desktop/bindings", "desktop/forms"}},
    {"desktop/printing",
     {kLoose, "serial", "printing/page", "printing/layout", "printing/delivery", "desktop/basics", "desktop/boxes",
      "desktop/grid"}},
    {"desktop/shell",
     {"firebird", kLoose, "services", "mill", "desktop/basics", "desktop/look", "desktop/boxes", "desktop/lookup",
      "desktop/scale", "desktop/screens", "desktop/printing"}},
    // The program.
    {"windows", {kLoose, "printing/delivery", "desktop/shell"}},
    {"cli",
     {"firebird", "scale", kLoose, "services", "operator", "books", "mill", "script", "desktop/shell", "windows"}},
    {kMain, {"cli"}},
};

/// The room of a file: "desktop/grid" for "app/desktop/grid/grid_panel.h".
std::string RoomOf(const std::string& file) {
  const fs::path below = fs::path(file).lexically_relative("app");
  if (below == kMain) return kMain;
  return below.has_parent_path() ? below.parent_path().generic_string() : kLoose;
}

const Room* Find(const std::vector<Room>& rooms, const std::string& name) {
  const auto found = std::find_if(rooms.begin(), rooms.end(), [&](const Room& room) { return room.name == name; });
  return found == rooms.end() ? nullptr : &*found;
}

/// What in the order itself is wrong, a line for each; empty when no circle is possible.
std::string OutOfOrder(const std::vector<Room>& rooms) {
  std::string wrong;
  std::set<std::string> before;
  for (const Room& room : rooms) {
    for (const std::string& other : room.may_include) {
      if (!before.contains(other)) wrong += room.name + " includes " + other + ", which does not stand before it\n";
    }
    if (!before.insert(room.name).second) wrong += room.name + " stands there twice\n";
  }
  return wrong;
}

/// The reason why a file of that room may not include this, or nothing.
std::string Objection(const std::string& name, const Include& include) {
  const Room* room = Find(kHouse, name);
  if (room == nullptr) return "it stands in a folder that has no place in the order";
  if (include.angled) {
    const bool script = include.name.starts_with("QJS");
    return name == "printing/page" && script ? "a page knows nothing of scripts" : "";
  }
  if (!include.name.starts_with("app/")) return {};
  const std::string target = RoomOf(include.name);
  if (target == name || room->may_include.contains(target)) return {};
  return Find(kHouse, target) == nullptr ? "there is no such room" : "the arrow does not run this way";
}

TEST(AppRooms, TheOrderHasNoCircle) { EXPECT_EQ(OutOfOrder(kHouse), ""); }

TEST(AppRooms, EveryRoomIsInTheOrder) {
  std::set<std::string> in_order;
  for (const Room& room : kHouse) in_order.insert(room.name);
  std::set<std::string> on_disk;
  for (const auto& path : house::Sources("app")) {
    on_disk.insert(RoomOf(fs::relative(path, house::kRoot).generic_string()));
  }
  EXPECT_EQ(on_disk, in_order);
}

TEST(AppRooms, IncludesKeepTheOrder) {
  std::string objections;
  std::size_t seen = 0;
  for (const auto& path : house::Sources("app")) {
    const std::string file = fs::relative(path, house::kRoot).generic_string();
    for (const auto& include : house::Includes(house::Read(path))) {
      if (include.name.starts_with("app/")) ++seen;
      const std::string objection = Objection(RoomOf(file), include);
      if (!objection.empty()) objections.append(file + " includes ").append(include.name + ": " + objection + "\n");
    }
  }
  EXPECT_GT(seen, 500u);
  EXPECT_EQ(objections, "");
}

TEST(AppRooms, TheRuleItselfRefusesWhatItShould) {
  EXPECT_NE(Objection("services", {false, "app/registers/register_screen.h"}), "");
  EXPECT_NE(Objection("services", {false, "app/mill/mill.h"}), "");
  EXPECT_NE(Objection("mill", {false, "app/registers/usage.h"}), "");
  EXPECT_NE(Objection("admin", {false, "app/assembly/own_screens.h"}), "");
  EXPECT_NE(Objection("printing/page", {false, "app/printing/layout/blocks.h"}), "");
  EXPECT_NE(Objection("printing/page", {true, "QJSValue"}), "");
  EXPECT_NE(Objection("desktop/grid", {false, "app/desktop/shell/main_window.h"}), "");
  EXPECT_NE(Objection("firebird", {false, "app/application.h"}), "");
  EXPECT_NE(Objection("cli", {false, "app/desktop/desktop.h"}), "");  // nothing stands loose in app/desktop
  EXPECT_NE(Objection("desktop", {false, "app/person.h"}), "");
  EXPECT_EQ(Objection("registers", {false, "app/mill/csv.h"}), "");
  EXPECT_EQ(Objection("desktop/grid", {false, "app/desktop/grid/grid_view.h"}), "");
  EXPECT_EQ(Objection("printing/layout", {true, "QJSValue"}), "");
  EXPECT_EQ(Objection("services", {false, "host/funcoes.h"}), "");
}

TEST(AppRooms, AnOrderWithACircleIsRefused) {
  EXPECT_NE(OutOfOrder({{"services", {"registers"}}, {"registers", {"services"}}}), "");
  EXPECT_NE(OutOfOrder({{"services", {"services"}}}), "");
  EXPECT_NE(OutOfOrder({{"services", {}}, {"services", {}}}), "");
  EXPECT_EQ(OutOfOrder({{"services", {}}, {"registers", {"services"}}}), "");
}

}  // namespace
