// A mill with a register's screen open, and a person before it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/registers/register_screen.h"
#include "app/tables/descriptions.h"
#include "support/mill.h"

namespace test {

using Inputs = std::vector<std::pair<std::string, std::string>>;

class RegisterMill : public ::testing::Test {
 protected:
  RegisterMill() { FillSmallMill(mill); }

  app::registers::TfmRegister& Open(std::string_view screen_class) {
    auto& screen = dynamic_cast<app::registers::TfmRegister&>(mill.Open(screen_class));
    mill.TakeStatements();
    return screen;
  }
  /// Shows the record of that key by way of the search line.
  void Load(host::Screen& screen, std::string_view key) {
    EXPECT_EQ(mill.Type(screen, "EdtBusca", key), host::ActResult::kDone);
    auto& list = mill.GridOf(screen, "TbLista");
    for (std::size_t row = 1; row <= list.GetDataset().RecordCount(); ++row) {
      if (list.GetDataset().ValueAt(row, 0).AsText() != key) continue;
      EXPECT_EQ(mill.Desk().SelectRow(list, row), host::ActResult::kDone);
      return;
    }
    ADD_FAILURE() << "not listed: " << key;
  }
  void Type(host::Screen& screen, const Inputs& inputs) {
    for (const auto& [name, text] : inputs) {
      EXPECT_EQ(mill.Type(screen, name, text), host::ActResult::kDone) << name;
    }
  }
  void Check(host::Screen& screen, std::string_view box, bool checked) {
    EXPECT_EQ(mill.Desk().Check(dynamic_cast<host::CheckBox&>(*screen.FindComponent(box)), checked),
              host::ActResult::kDone);
  }
  /// The boxes since the last call, one after another.
  std::string Said() {
    std::string all;
    for (const auto& text : mill.Messages()) all += (all.empty() ? "" : "\n") + text;
    return all;
  }
  std::string Focused() { return mill.Desk().Focused() == nullptr ? "" : mill.Desk().Focused()->Name(); }
  std::string Text(std::string_view sql) { return mill.Scalar(sql).AsText(); }
  std::vector<std::string> ListKeys(host::Screen& screen) {
    std::vector<std::string> keys;
    const host::Dataset& list = mill.Data(screen, "TbLista");
    for (std::size_t row = 1; row <= list.RecordCount(); ++row) keys.push_back(list.ValueAt(row, 0).AsText());
    return keys;
  }
  /// The newest log row as "subject|text|operation|key|user".
  std::string LastLog() {
    const auto rows = mill.Rows("SELECT FIRST 1 * FROM TEC_LOG ORDER BY ID DESC");
    if (rows.empty()) return "";
    const Row& row = rows.front();
    return row.at("ASSUNTO").AsText() + "|" + row.at("TEXTO").AsText() + "|" + row.at("OPERACAO").AsText() + "|" +
           row.at("CHAVE").AsText() + "|" + row.at("USUARIO").AsText();
  }

  Mill mill;
};

}  // namespace test
