#include "app/services/tables.h"

#include "host/errors.h"
#include "host/text.h"

namespace app::services {
namespace {

struct Known {
  std::string_view name;
  std::string_view table;
  bool editable;
};

constexpr Known kKnown[] = {
    {"TBENTIDADE", "ENTIDADE", false},          {"TBPEDIDO", "PEDIDO", false},     {"TBMATERIAIS", "MATERIAL", false},
    {"TBCOMPMATERIAL", "COMP_MATERIAL", false}, {"TBDEPOSITO", "DEPOSITO", false}, {"TBCOR", "CADCOR", false},
    {"TBCADCORTI", "CADCORTI", true},
};

[[noreturn]] void Unknown(std::string_view name) {
  throw host::InputError("A tabela compartilhada \"" + std::string(name) + "\" não existe.");
}

}  // namespace

void Tables::AbreTabela(std::string_view name, const host::Screen& opener) {
  for (const Known& known : kKnown) {
    if (!host::SameName(known.name, name)) continue;
    Open& open = open_[{&opener, std::string(known.name)}];
    if (open.count++ == 0) {
      open.dataset = std::make_unique<TableDataset>(database_, std::string(known.table), known.editable);
    }
    return;
  }
  Unknown(name);
}

void Tables::FechaTabela(std::string_view name, const host::Screen& opener) {
  const auto found = open_.find({&opener, host::UpperAscii(name)});
  if (found != open_.end() && --found->second.count == 0) open_.erase(found);
}

host::SharedDataset& Tables::Dataset(std::string_view name, const host::Screen& opener) {
  const auto found = open_.find({&opener, host::UpperAscii(name)});
  if (found == open_.end())
    throw host::InputError("A tabela compartilhada \"" + std::string(name) + "\" não está aberta.");
  return *found->second.dataset;
}

void Tables::ScreenGone(const host::Screen& opener) {
  std::erase_if(open_, [&opener](const auto& open) { return open.first.first == &opener; });
}

}  // namespace app::services
