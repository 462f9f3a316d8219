// How the scale is connected, as it is kept for each user of the computer.
#include "app/scale/scale_settings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "app/services/user_settings.h"

namespace {

namespace fs = std::filesystem;
using app::scale::FlowControl;
using app::scale::LoadScaleSettings;
using app::scale::Parity;
using app::scale::ScaleSettings;
using app::services::FileUserSettings;

class ScaleSettingsFile : public ::testing::Test {
 protected:
  ScaleSettingsFile() { fs::remove(path_); }
  ~ScaleSettingsFile() override { fs::remove(path_); }

  void WriteByHand(const std::string& lines) const { std::ofstream(path_, std::ios::binary) << lines; }
  ScaleSettings Load() const {
    FileUserSettings settings(path_);
    return LoadScaleSettings(settings, "Venda", "Parametros");
  }
  void Store(const ScaleSettings& values) const {
    FileUserSettings settings(path_);
    app::scale::StoreScaleSettings(settings, "Venda", "Parametros", values);
  }

  std::string path_ = (fs::temp_directory_path() / "tecelagem-test-scale-settings").string();
};

TEST_F(ScaleSettingsFile, NeverStored) {
  const ScaleSettings values = Load();
  EXPECT_EQ(values.port.port, "COM1");
  EXPECT_EQ(values.port.baud_rate, 9600);
  EXPECT_EQ(values.port.parity, Parity::kNone);
  EXPECT_EQ(values.port.data_bits, 8);
  EXPECT_EQ(values.port.stop_bits, 1);
  EXPECT_EQ(values.port.flow, FlowControl::kNone);
  EXPECT_FALSE(values.port.dtr);
  EXPECT_FALSE(values.port.rts);
  EXPECT_EQ(values.protocol, host::ScaleProtocol::kPrinted);
  EXPECT_EQ(values.decimals, 0);
}

TEST_F(ScaleSettingsFile, EveryValueComesBack) {
  for (const Parity parity : {Parity::kNone, Parity::kOdd, Parity::kEven, Parity::kMark, Parity::kSpace}) {
    for (const FlowControl flow : {FlowControl::kNone, FlowControl::kHardware, FlowControl::kSoftware}) {
      for (const double stop : {1.0, 1.5, 2.0}) {
        ScaleSettings values;
        values.port = {"/dev/ttyUSB0", 4800, parity, 7, stop, flow, true, true};
        values.protocol = host::ScaleProtocol::kContinuous;
        values.decimals = 3;
        Store(values);
        EXPECT_EQ(Load(), values);
      }
    }
  }
}

TEST_F(ScaleSettingsFile, IsPlainLines) {
  ScaleSettings values;
  values.port.port = "COM3";
  values.protocol = host::ScaleProtocol::kAsked;
  Store(values);
  std::ifstream file(path_);
  std::string all((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  for (const char* line :
       {"Venda/Parametros/Port=COM3\n", "Venda/Parametros/BaudRate=9600\n", "Venda/Parametros/Parity=None\n",
        "Venda/Parametros/DataBits=8\n", "Venda/Parametros/StopBits=1\n", "Venda/Parametros/FlowControl=None\n",
        "Venda/Parametros/DTR=0\n", "Venda/Parametros/RTS=0\n", "Venda/Parametros/ProtocoloBal=1\n",
        "Venda/Parametros/Decimal=0\n"}) {
    EXPECT_NE(all.find(line), std::string::npos) << line << all;
  }
}

TEST_F(ScaleSettingsFile, WrittenByHand) {
  WriteByHand(
      "Venda/Parametros/Port=/dev/serial/by-id/balança, número=2\r\n"
      "\n"
      "# a note\n"
      "Venda/Parametros/BaudRate=2400\n"
      "Venda/Parametros/StopBits=1.5\n"
      "Outra/Coisa/Port=COM9\n");
  const ScaleSettings values = Load();
  EXPECT_EQ(values.port.baud_rate, 2400);
  EXPECT_EQ(values.port.stop_bits, 1.5);
  EXPECT_EQ(values.port.port, "/dev/serial/by-id/balança, número=2");
}

TEST_F(ScaleSettingsFile, WrongValuesHaveTheirDefaults) {
  const std::vector<std::string> lines = {
      "Port=",          "BaudRate=fast",   "BaudRate=-1",     "BaudRate=99999999999",
      "BaudRate=96OO",  "Parity=none",     "Parity=",         "DataBits=9",
      "DataBits=4",     "DataBits=8.0",    "StopBits=3",      "StopBits=1,5",
      "FlowControl=No", "DTR=yes",         "DTR=2",           "RTS=-1",
      "ProtocoloBal=3", "ProtocoloBal=-1", "ProtocoloBal=um", "Decimal=10",
      "Decimal=2x",     "Decimal="};
  for (const std::string& line : lines) {
    WriteByHand("Venda/Parametros/" + line + "\n");
    EXPECT_EQ(Load(), ScaleSettings()) << line;
  }
}

}  // namespace
