#include "host/kit/lookup.h"

#include <utility>

#include "host/kit/fire.h"
#include "host/kit/screen.h"
#include "host/text.h"

namespace host {
namespace {

std::vector<std::string> Columns(std::string_view joined) {
  std::vector<std::string> columns;
  for (const std::string& column : SplitOutsideQuotes(joined, ';')) columns.push_back(Trim(column));
  return columns;
}

}  // namespace

TPesquisa::TPesquisa(Screen& owner, std::string name, std::string table, std::string_view key)
    : Component(owner, std::move(name)), table_(std::move(table)), keys_(Columns(key)) {}

void TPesquisa::Open() {
  ScreenSite* site = Owner().Site();
  if (site == nullptr) return;
  std::optional<LookupRow> picked = site->Pick(*this);
  if (!picked) return;
  row_ = std::move(*picked);
  Fire(OnFechaPesquisa);
}

Value TPesquisa::RetornoPesquisa(std::string_view column) const {
  for (const auto& [name, value] : row_) {
    if (SameName(name, column)) return value;
  }
  return {};
}

}  // namespace host
