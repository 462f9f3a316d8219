// Every statement by which screens and services look something up in a table that grows, in the form they send it.
#pragma once

#include <string_view>
#include <vector>

namespace test {

struct LookUp {
  std::string_view what;
  std::string_view sql;  // tables in braces
};

const std::vector<LookUp>& LookUps();

}  // namespace test
