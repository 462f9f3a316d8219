// The defects register: the fixture of its tests.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/errors.h"
#include "reversal_mill.h"

namespace test {

inline Box DefectNotice(std::string text) {
  return {"Cadastro de Defeitos", std::move(text), host::Icon::kInformation};
}

class DefectsMill : public ReversalMill {
 protected:
  using Cells = std::vector<std::pair<std::string, std::string>>;

  DefectsMill() {
    for (const auto& [code, text] : {std::pair{"FURO", "Furo"}, {"MANCHA", "Mancha de óleo"}, {"RISCO", "Risco"}}) {
      mill_.Insert("DEFEITO", {{"CODIGO", code}, {"DESCRICAO", text}});
    }
    mill_.Insert("TABQUL", {{"CODIGO", "A"}, {"DESCRICAO", "Primeira"}});
    mill_.Insert("TABQUL", {{"CODIGO", "B"}, {"DESCRICAO", "Segunda"}});
  }

  /// What the person does in the register when it opens next.
  void AtRegister(std::function<void(host::Screen&)> act) {
    mill_.Person().OnModal("TfmCadDefTec", [act = std::move(act)](host::Screen& screen, host::Desk&) { act(screen); });
  }
  /// Opens the register for a roll of the list and acts there.
  host::ActResult Register(int roll, std::function<void(host::Screen&)> act) {
    StandOnRoll(roll);
    AtRegister(std::move(act));
    return mill_.Click(Screen(), "BtnDefeitos");
  }
  host::ActResult Add(host::Screen& screen, const Cells& cells) { return mill_.Append(screen, "TbDef", cells); }
  host::ActResult Save(host::Screen& screen) { return mill_.Click(screen, "BitBtn1"); }
  /// Stores one defect for a roll.
  void Store(int roll, const Cells& cells) {
    ASSERT_EQ(Register(roll,
                       [&](host::Screen& screen) {
                         ASSERT_EQ(Add(screen, cells), host::ActResult::kDone);
                         ASSERT_EQ(Save(screen), host::ActResult::kDone);
                       }),
              host::ActResult::kDone);
  }
  std::vector<Row> Stored() { return mill_.Rows("SELECT * FROM {DEF_MOV} ORDER BY MOV"); }
  /// "FURO 1: 2.5" of each stored row.
  std::vector<std::string> Brief() {
    std::vector<std::string> rows;
    for (const Row& row : Stored()) {
      rows.push_back(row.at("CODIGO").AsText() + " " + row.at("ROLO").AsText() + ": " + row.at("QUANT").AsText());
    }
    return rows;
  }
  host::Dataset& List(host::Screen& screen) { return mill_.Data(screen, "TbDef"); }
  /// Leaves what is typed in the register.
  void GiveUp(host::Screen& screen) { mill_.Click(screen, "BitBtn2"); }
};

}  // namespace test
