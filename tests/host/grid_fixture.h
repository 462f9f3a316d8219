// A toy screen with a grid, driven through the desk.
#pragma once

#include <gtest/gtest.h>

#include <utility>

#include "toy.h"

namespace test {

using host::ActError;
using host::ActResult;
using host::Dataset;
using host::DatasetState;
using host::Edit;
using host::FieldType;
using host::Grid;
using host::Key;

class GridTest : public ::testing::Test {
 protected:
  GridTest() {
    screen = &toy.Open("TfmOrdem", [this](ToyScreen& s) {
      edit = &s.Add<Edit>("EdtNumero", "Número");
      items = &s.Add<Dataset>("TbItens", std::vector<host::FieldDef>{{"Sel", FieldType::kText, 1},
                                                                     {"Codigo", FieldType::kText, 5, "", "Código"},
                                                                     {"Descricao", FieldType::kText, 20},
                                                                     {"Cor", FieldType::kText, 6},
                                                                     {"Qtde", FieldType::kFloat, 0, "0.00"},
                                                                     {"Ciclos", FieldType::kInteger},
                                                                     {"Data", FieldType::kDate}});
      grid = &s.Add<Grid>("GrdItens", *items,
                          std::vector<host::GridColumn>{{"Codigo"},
                                                        {"Descricao", "", 0, true},
                                                        {"Cor"},
                                                        {"Qtde"},
                                                        {"Ciclos"},
                                                        {"Data"},
                                                        {"Sel", "", 0, false, true}});
      s.Watch(*edit);
      s.Watch(*grid);
    });
    items->BeforePost = [this] {
      if ((*items)["Cor"].AsText().empty()) items->Cancel();
    };
    items->AfterPost = [this] { toy.notes.push_back("post " + (*items)["Codigo"].AsText()); };
    items->AfterScroll = [this] { toy.notes.push_back("scroll " + (*items)["Codigo"].AsText()); };
    grid->OnColExit = [this] {
      toy.notes.push_back("colexit " + grid->SelectedField());
      if (grid->SelectedField() == "Codigo" && (*items)["Codigo"].AsText() == "X")
        screen->Refuse("Material não cadastrado.");
    };
    grid->OnKeyDown = [this](Key key) {
      if (key == Key::kTab) toy.notes.push_back("tab " + grid->SelectedField());
      if (key == Key::kF4) toy.notes.push_back("F4 " + grid->SelectedField());
    };
  }
  void Three() {
    for (const char* code : {"A", "B", "C"}) {
      items->Append();
      (*items)["Codigo"].Set(code);
      (*items)["Cor"].Set("01");
      (*items)["Qtde"].Set(10);
      items->Post();
    }
    items->First();
    toy.notes.clear();
  }
  std::string Codes() {
    std::string codes;
    for (std::size_t row = 1; row <= items->RecordCount(); ++row) codes += items->ValueAt(row, 1).AsText();
    return codes;
  }

  Toy toy;
  ToyScreen* screen = nullptr;
  Edit* edit = nullptr;
  Dataset* items = nullptr;
  Grid* grid = nullptr;
};

}  // namespace test
