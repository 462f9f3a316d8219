// A screen with one dataset of items, whose hooks are noted.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "host/kit/dataset.h"
#include "toy.h"

namespace test {

class DatasetTest : public ::testing::Test {
 protected:
  DatasetTest() {
    data.BeforePost = [this] { notes.emplace_back("before"); };
    data.AfterPost = [this] { notes.emplace_back("after"); };
    data.BeforeDelete = [this] { notes.emplace_back("delete"); };
    data.AfterInsert = [this] { notes.emplace_back("insert"); };
    data.AfterScroll = [this] { notes.push_back("scroll " + data["Codigo"].AsText()); };
  }

  void Add(const char* code, const char* colour, double quantity) {
    data.Append();
    data["Codigo"].Set(code);
    data["Cor"].Set(colour);
    data["Qtde"].Set(quantity);
    data.Post();
  }
  void Three() {
    Add("B", "01", 1);
    Add("A", "02", 2);
    Add("C", "03", 3);
    notes.clear();
  }
  std::string Codes() {
    std::string codes;
    for (std::size_t row = 1; row <= data.RecordCount(); ++row) codes += data.ValueAt(row, 0).AsText();
    return codes;
  }
  std::string Take() {
    std::string text;
    for (const std::string& note : notes) text += (text.empty() ? "" : "|") + note;
    notes.clear();
    return text;
  }

  test::Notes notes;
  test::ToyHost toy{notes};
  test::ToyScreen screen{toy, "Toy", notes};
  host::Dataset data{screen,
                     "TbItens",
                     {{"Codigo", host::FieldType::kText, 5},
                      {"Cor", host::FieldType::kText, 6},
                      {"Qtde", host::FieldType::kFloat, 0, "0.00"},
                      {"Ordem", host::FieldType::kInteger},
                      {"Data", host::FieldType::kDate},
                      {"Obs", host::FieldType::kMemo}}};
};

}  // namespace test
