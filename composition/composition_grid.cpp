#include "composition/composition_grid.h"

#include <algorithm>

#include "host/kit/columns.h"
#include "host/text.h"

namespace composition {
namespace {

using host::FieldDef;
using host::FieldType;

std::vector<FieldDef> FixedFields() {
  return {
      {"Codigo", FieldType::kText, 15, "", "Código"},
      {"Ordem", FieldType::kInteger, 0, "", "Ordem"},
      {"Descricao", FieldType::kText, 50, "", "Descrição"},
      {"Custo", FieldType::kFloat, 0, "0.00", "Custo"},
      {"NE", FieldType::kInteger, 0, "", "NE"},
      {"Milimetros", FieldType::kFloat, 0, "", "Milimetros"},
      {"Tensao", FieldType::kFloat, 0, "", "Tensão"},
      {"LFA", FieldType::kFloat, 0, "", "LFA"},
      {"ROCA", FieldType::kFloat, 0, "", "ROCA"},
      {"Consumo", FieldType::kFloat, 0, "0.0000", "Consumo"},
      {"Perc", FieldType::kFloat, 0, "0.0000", "Perc."},
      {"Regra", FieldType::kText, 3, "", "Regra"},
      {"Desc_Regra", FieldType::kText, 50, "", "Desc. Regra"},
  };
}

bool FilledByProgram(std::string_view field) {
  return field == "Ordem" || field == "Descricao" || field == "Custo" || field == "NE" || field == "Consumo" ||
         field == "Desc_Regra";
}

bool IsNumber(const FieldDef& field) { return field.type == FieldType::kFloat || field.type == FieldType::kInteger; }

// In characters: as much as usually stands there; the descriptions are cut before the colours are pushed out of sight.
int FixedWidth(std::string_view field) {
  if (field == "Codigo" || field == "Desc_Regra") return 12;
  if (field == "Descricao") return 22;
  if (field == "Milimetros") return 10;
  if (field == "Consumo" || field == "Perc") return 9;
  if (field == "Ordem" || field == "NE" || field == "Regra" || field == "ROCA") return 6;
  return 8;
}

// The heading names the colour; a long name is cut.
int ColourWidth(const FabricColour& colour) {
  constexpr std::size_t k_widest = 16;
  constexpr std::size_t k_cell = 8;
  const std::size_t heading = host::Length(colour.code) + 1 + host::Length(colour.description);
  return static_cast<int>(std::clamp(heading, k_cell, k_widest));
}

std::string FreeFieldName(std::string_view code, const std::vector<FabricColour>& before) {
  const std::vector<FieldDef> fixed_fields = FixedFields();
  const auto taken = [&](std::string_view name) {
    return std::ranges::any_of(fixed_fields, [&](const FieldDef& fixed) { return host::SameName(fixed.name, name); }) ||
           std::ranges::any_of(before, [&](const FabricColour& other) { return host::SameName(other.field, name); });
  };
  std::string name(code);
  while (taken(name)) name.insert(0, "Cor ");
  return name;
}

}  // namespace

std::vector<FabricColour> ReadColours(host::TTIQuery& query) {
  std::vector<FabricColour> colours;
  for (query.First(); !query.Eof(); query.Next()) {
    const std::string code = query.FieldByName("COR").AsText();
    if (code.empty() || FindColour(colours, code) != nullptr) continue;
    std::string field = FreeFieldName(code, colours);
    colours.push_back({code, query.FieldByName("DESCRICAO").AsText(), std::move(field)});
  }
  return colours;
}

const FabricColour* FindColour(const std::vector<FabricColour>& colours, std::string_view code) {
  const auto found = std::ranges::find(colours, code, &FabricColour::code);
  return found == colours.end() ? nullptr : &*found;
}

const FabricColour* ColourOfField(const std::vector<FabricColour>& colours, std::string_view field) {
  const auto found =
      std::ranges::find_if(colours, [&](const FabricColour& colour) { return host::SameName(colour.field, field); });
  return found == colours.end() ? nullptr : &*found;
}

std::vector<FieldDef> GridFields(const std::vector<FabricColour>& colours) {
  std::vector<FieldDef> fields = FixedFields();
  for (const FabricColour& colour : colours) {
    fields.push_back({colour.field, FieldType::kText, 6, "", colour.code + "|" + colour.description});
  }
  return fields;
}

std::vector<host::GridColumn> GridColumns(const std::vector<FabricColour>& colours) {
  std::vector<host::GridColumn> columns;
  for (const FieldDef& field : GridFields(colours)) {
    const FabricColour* colour = ColourOfField(colours, field.name);
    const int width = colour != nullptr ? ColourWidth(*colour) : FixedWidth(field.name);
    // The caption is the field's.
    host::GridColumn column =
        IsNumber(field) ? host::TypedNumberColumn(field.name, {}, width) : host::TypedColumn(field.name, {}, width);
    column.read_only = FilledByProgram(field.name);
    column.lookup = colour != nullptr || field.name == "Codigo" || field.name == "Regra";
    // They have to make 100.
    column.total = field.name == "Perc";
    columns.push_back(std::move(column));
  }
  return columns;
}

bool IsBlank(const host::Dataset& rows) {
  for (std::size_t at = 0; at < rows.FieldCount(); ++at) {
    const host::Field& field = rows.FieldAt(at);
    if (field.Name() == "Ordem") continue;
    const host::Value& value = field.Get();
    if (value.IsNumber() ? value.AsFloat() != 0 : !host::Trim(value.AsText()).empty()) return false;
  }
  return true;
}

}  // namespace composition
