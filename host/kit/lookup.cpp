#include "host/kit/lookup.h"

#include <utility>

#include "host/kit/fire.h"
#include "host/kit/screen.h"
#include "host/text.h"

namespace host {

TPesquisa::TPesquisa(Screen& owner, std::string name, std::string table, std::string key)
    : Component(owner, std::move(name)), table_(std::move(table)), key_(std::move(key)) {}

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
