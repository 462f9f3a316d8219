// A mill with an administrator before the screens of the administration.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/mill.h"

namespace test {

using Lines = std::vector<std::string>;

class AdminMill : public testing::Test {
 protected:
  AdminMill() { mill_.SetClock("2026-03-10 14:30:00"); }

  template <typename T>
  static T& Part(host::Screen& screen, std::string_view name) {
    return dynamic_cast<T&>(*screen.FindComponent(name));
  }
  host::ActResult Tick(host::Screen& screen, std::string_view box, bool checked) {
    return mill_.Desk().Check(Part<host::CheckBox>(screen, box), checked);
  }
  bool Ticked(host::Screen& screen, std::string_view box) { return Part<host::CheckBox>(screen, box).Checked(); }
  bool Enabled(host::Screen& screen, std::string_view control) {
    return Part<host::Control>(screen, control).Enabled();
  }
  /// Stands on the first row whose field has this value.
  void Stand(host::Screen& screen, std::string_view dataset, std::string_view field, const host::Value& value) {
    StandAt(mill_, screen, dataset, field, value);
  }
  static void StandAt(Mill& mill, host::Screen& screen, std::string_view dataset, std::string_view field,
                      const host::Value& value) {
    host::Dataset& rows = mill.Data(screen, dataset);
    for (std::size_t row = 1; row <= rows.RecordCount(); ++row) {
      for (std::size_t i = 0; i < rows.FieldCount(); ++i) {
        if (rows.FieldAt(i).Name() != field || !(rows.ValueAt(row, i) == value)) continue;
        ASSERT_EQ(mill.Desk().SelectRow(mill.GridOf(screen, dataset), row), host::ActResult::kDone);
        return;
      }
    }
    FAIL() << "no row " << field << " = " << value.AsText();
  }
  Lines Log(std::string_view subject) {
    Lines lines;
    for (auto& row : mill_.Rows("SELECT * FROM TEC_LOG WHERE ASSUNTO = '" + std::string(subject) + "' ORDER BY ID")) {
      lines.push_back(row["OPERACAO"].AsText() + "|" + row["CHAVE"].AsText() + "|" + row["TEXTO"].AsText());
    }
    return lines;
  }
  std::int64_t Count(std::string_view from) {
    return mill_.Scalar("SELECT COUNT(*) FROM " + std::string(from)).AsInteger();
  }
  /// Everything that the administration stores, but the turns that were taken.
  Lines Everything() {
    Lines lines;
    for (const char* table : {"TEC_USUARIO", "TEC_DIREITO", "TEC_PARAMETRO", "TEC_PERIODO", "TEC_LOG"}) {
      for (const auto& row : mill_.Rows("SELECT * FROM " + std::string(table) + " ORDER BY 1, 2, 3")) {
        std::string line = table;
        for (const auto& [column, value] : row) line += "|" + value.AsText();
        lines.push_back(line);
      }
    }
    return lines;
  }
  /// Does it again and again, each time with the next statement failing, until everything is stored. After each failure
  /// before that everything is as it was, one message tells it, and what was typed is still to be stored; a failure
  /// afterwards changes nothing about it.
  void FailOnceAtEach(host::Screen& screen, int at_least, const std::function<host::ActResult()>& act) {
    const Lines before = Everything();
    int failures = 0;
    for (bool failed = true; failed && screen.HasUnsavedWork(); ++failures) {
      mill_.Messages();
      mill_.FailStatement(failures + 1);
      const host::ActResult result = act();
      failed = mill_.StopFailing();
      ASSERT_EQ(result, failed ? host::ActResult::kFailed : host::ActResult::kDone) << "statement " << failures + 1;
      ASSERT_EQ(mill_.Messages(), failed ? Lines{"falha provocada"} : Lines()) << "statement " << failures + 1;
      ASSERT_EQ(Everything() == before, screen.HasUnsavedWork()) << "statement " << failures + 1;
    }
    EXPECT_GT(failures, at_least);
    EXPECT_FALSE(screen.HasUnsavedWork());
  }

  Mill mill_;
};

}  // namespace test
