// A roll as the label's layout reads it, and rolls that a label must bear.
#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "host/date.h"
#include "tests/printing/paper_screen.h"
#include "writeoff/label_functions.h"

namespace test {

inline const std::vector<std::string> kRollFields{
    "NUMERO",      "ORDEM", "DT_LAN", "CODIGO",  "DESCRICAO",  "COR",   "QTDE",
    "QTDE_R",      "LOTE",  "LOCAL",  "NF_RET",  "NF_COB",     "TURNO", "DEPOSITO",
    "FUNCIONARIO", "NOME",  "PEDIDO", "MAQUINA", "OBSERVACAO", "FICHA", "DESC_MAQUINA"};

inline FieldsOfRow UsualRoll() {
  return {{"NUMERO", "000123"},
          {"ORDEM", 12},
          {"DT_LAN", host::Date::FromIso("2026-03-10").value()},
          {"CODIGO", "M0111"},
          {"DESCRICAO", "MEIA MALHA LISTRADA FIO TINTO"},
          {"COR", "L01"},
          {"QTDE", 20.4},
          {"QTDE_R", 1},
          {"LOTE", "000123012"},
          {"TURNO", "2"},
          {"FUNCIONARIO", "00012"},
          {"NOME", "JOÃO DA CONCEIÇÃO"},
          {"MAQUINA", "03"},
          {"DESC_MAQUINA", "CIRCULAR 30 POL"}};
}

inline FieldsOfRow UsualFabric() {
  return {{"DESC_COR", "LISTRADO MARINHO/BRANCO"},
          {"COMPOSICAO", "49% ALGODÃO 40,9% ALGODÃO 3% POLIÉSTER 7,1% ELASTANO"},
          {"LARGURA", 1.7},
          {"GRAMATURA", 185},
          {"UNIDADE", "KG"},
          {"BARRA", "7891234501127"}};
}

// With other values in some fields; one that is null is put in as null.
inline FieldsOfRow With(FieldsOfRow row, const FieldsOfRow& changes) {
  for (const auto& [field, value] : changes) {
    bool found = false;
    for (auto& [name, old] : row) {
      if (name != field) continue;
      old = value;
      found = true;
    }
    if (!found) row.emplace_back(field, value);
  }
  return row;
}

class RollLabel : public testing::Test {
 protected:
  RollLabel() {
    Roll(UsualRoll());
    Fabric(UsualFabric());
    Defects({});
    screen_.Add("TbItens", {"Codigo", "Cor", "Desc_Cor", "Unidade"},
                {{{"Codigo", "M0111"}, {"Cor", "L01"}, {"Desc_Cor", "COR DO ITEM"}, {"Unidade", "KG"}}});
    screen_.Functions().OnUnknownFunction = [](std::string_view name, const std::vector<std::string>& arguments) {
      return writeoff::LabelFunction(name, arguments);
    };
  }

  void Roll(const FieldsOfRow& row) { screen_.Add("TbRolos", kRollFields, {row}); }
  void Fabric(const FieldsOfRow& row) {
    screen_.Add("QryEtiqueta", {"DESC_COR", "COMPOSICAO", "LARGURA", "GRAMATURA", "UNIDADE", "BARRA"}, {row});
  }
  void Defects(const std::vector<FieldsOfRow>& rows) {
    screen_.Add("QryDefeitos", {"NUMERO", "ROLO", "CODIGO", "DESCRICAO"}, rows);
  }
  static FieldsOfRow Defect(const std::string& name, int roll = 12) {
    return {{"NUMERO", "000123"}, {"ROLO", roll}, {"CODIGO", name.substr(0, 3)}, {"DESCRICAO", name}};
  }

  app::printing::Printout Drawn() { return screen_.Print("WEtqTecRolo"); }
  std::string Commands() { return screen_.Print("WEtqTecRolo", 'T').bytes; }

  PaperScreen screen_;
};

// Rolls that a label must bear: nothing known, everything too long, no weight, a weight that no scale shows.
struct OddRoll {
  std::string name;
  FieldsOfRow roll;
  FieldsOfRow fabric;
  int defects = 0;
};

inline void PrintTo(const OddRoll& odd, std::ostream* out) { *out << odd.name; }

inline std::vector<OddRoll> OddRolls() {
  const std::string words =
      "MALHA DUPLA COM ELASTANO EXTRA LARGA WWWWWWWWWWWW DE ALGODÃO PENTEADO ORGÂNICO, TINTA EM FIO, ACABAMENTO "
      "ESPECIAL";
  return {
      {"usual", {}, {}, 0},
      {"nothing known",
       {{"DT_LAN", {}},
        {"DESCRICAO", {}},
        {"COR", {}},
        {"QTDE", {}},
        {"QTDE_R", {}},
        {"LOTE", {}},
        {"TURNO", {}},
        {"FUNCIONARIO", {}},
        {"NOME", {}},
        {"MAQUINA", {}},
        {"DESC_MAQUINA", {}}},
       {{"DESC_COR", {}}, {"COMPOSICAO", {}}, {"LARGURA", {}}, {"GRAMATURA", {}}, {"UNIDADE", {}}, {"BARRA", {}}},
       0},
      {"all too long",
       {{"DESCRICAO", words},
        {"COR", "WWWWWW"},
        {"CODIGO", "WWWWWWWWWWWWWWW"},
        {"LOTE", "W23456789012345"},
        {"NOME", words},
        {"DESC_MAQUINA", words},
        {"TURNO", "NOTURNO EXTRA"},
        {"MAQUINA", "99999"}},
       {{"DESC_COR", words}, {"COMPOSICAO", words + words}},
       30},
      {"no weight", {{"QTDE", 0}, {"QTDE_R", 0}}, {}, 1},
      {"huge weight", {{"QTDE", 123456789.123}, {"QTDE_R", 99999}}, {}, 3},
      {"accents", {{"DESCRICAO", "ÇÃÕÁÉÍÓÚÂÊÔÀÜ çãõáéíóúâêôàü"}, {"LOTE", "LOTE-Ç"}}, {}, 2},
      {"signs", {{"DESCRICAO", "^XZ~JA_5E\\& \"MALHA\" <b>"}, {"LOTE", "A^B~C_D"}, {"NOME", "~HS^XA"}}, {}, 2},
  };
}

class OddRollLabel : public RollLabel, public testing::WithParamInterface<OddRoll> {
 protected:
  OddRollLabel() {
    Roll(With(UsualRoll(), GetParam().roll));
    Fabric(With(UsualFabric(), GetParam().fabric));
    std::vector<FieldsOfRow> rows;
    rows.reserve(static_cast<std::size_t>(GetParam().defects));
    for (int at = 0; at < GetParam().defects; ++at) {
      rows.push_back(Defect("DEFEITO DE NÚMERO " + std::to_string(at) + " COM ^SINAL~ E NOME"));
    }
    Defects(rows);
  }
};

}  // namespace test
