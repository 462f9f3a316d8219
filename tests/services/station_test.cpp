// What belongs to one station: its user's settings, its clock.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/application.h"
#include "app/services/user_settings.h"
#include "host/errors.h"

namespace {

using app::services::FileUserSettings;

class Settings : public testing::Test {
 protected:
  Settings() { std::filesystem::remove_all(folder_); }
  ~Settings() override { std::filesystem::remove_all(folder_); }
  std::filesystem::path folder_ = std::filesystem::path(TECELAGEM_BINARY_DIR) / "settings-test";
  std::string path_ = (folder_ / "deep" / "settings").string();
};

TEST_F(Settings, NeverWrittenIsNothing) {
  FileUserSettings settings(path_);
  EXPECT_EQ(settings.Read("Venda", "Parametros", "Decimal"), std::nullopt);
}

TEST_F(Settings, LastAcrossRuns) {
  const std::string odd = "a=b\\n\nc\\\r;'\"é";
  {
    FileUserSettings settings(path_);
    settings.Write("Venda", "Parametros", "Decimal", "2");
    settings.Write("Venda", "Parametros", "ProtocoloBal", "3");
    settings.Write("Venda", "Parametros", "Decimal", "1");
    settings.Write("k=1", "s\\e", "n", odd);
    settings.Write("Venda", "Parametros", "Vazio", "");
  }
  FileUserSettings again(path_);
  EXPECT_EQ(again.Read("Venda", "Parametros", "Decimal"), "1");
  EXPECT_EQ(again.Read("Venda", "Parametros", "ProtocoloBal"), "3");
  EXPECT_EQ(again.Read("k=1", "s\\e", "n"), odd);
  EXPECT_EQ(again.Read("Venda", "Parametros", "Vazio"), "");
  EXPECT_EQ(again.Read("Venda", "Outros", "Decimal"), std::nullopt);
}

TEST_F(Settings, ABrokenFileLosesOnlyItsBrokenLines) {
  std::filesystem::create_directories(std::filesystem::path(path_).parent_path());
  std::ofstream(path_) << "lixo\nVenda/Parametros/Decimal=2\n=\n";
  FileUserSettings settings(path_);
  EXPECT_EQ(settings.Read("Venda", "Parametros", "Decimal"), "2");
}

TEST_F(Settings, AFolderThatCannotBeIsTold) {
  std::filesystem::create_directories(folder_);
  std::ofstream(folder_ / "file") << "x";
  FileUserSettings settings((folder_ / "file" / "settings").string());
  EXPECT_THROW(settings.Write("Venda", "Parametros", "Decimal", "2"), host::InputError);
  EXPECT_EQ(settings.Read("Venda", "Parametros", "Decimal"), "2");
}

// --- clock
// --------------------------------------------------------------------------------------------------------------

TEST(Clock, StandsStillWhenSetAndRunsElse) {
  app::ProgramClock clock;
  const host::DateTime now = clock.Now();
  EXPECT_GE(now.date.Year(), 2020);
  EXPECT_LT(now.second_of_day, 86400);
  clock.Set(host::DateTime::FromIso("2026-03-10 22:15:00").value());
  EXPECT_EQ(clock.Now().ToIso(), "2026-03-10 22:15:00");
  EXPECT_EQ(clock.Today().ToIso(), "2026-03-10");
  clock.Reset();
  EXPECT_GE(clock.Now(), now);
}

}  // namespace
