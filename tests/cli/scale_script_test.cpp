// A script at the weighing station, with a simulated scale on its port.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "program.h"

namespace {

namespace fs = std::filesystem;
using test::Ended;
using test::Folder;
using test::Start;

class ScaleInScript : public ::testing::Test {
 protected:
  ScaleInScript() {
    EXPECT_EQ(Start({"demo", "--database", Database()}).code, 0);
    EXPECT_EQ(
        Start({"script", std::string(TECELAGEM_SOURCE_DIR) + "/demo/road-of-one-roll.js", "--database", Database()})
            .code,
        0);
  }
  std::string Database() const { return folder_ / "mill.fdb"; }
  /// What the script prints while a scale of that protocol has 20.5 kg on it.
  std::string Weighed(const std::string& protocol, const std::string& source) const {
    const std::string port = folder_ / "balanca";
    std::thread scale([&] {
      Start({"scale-simulator", "--protocol", protocol, "--weight", "20.5", "--link", port, "--seconds", "5"});
    });
    for (int i = 0; i < 200 && !fs::is_symlink(port); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    fs::create_directories(folder_ / "tecelagem");
    folder_.Write("tecelagem/settings", "Venda/Parametros/Port=" + port + "\nVenda/Parametros/ProtocoloBal=" +
                                            protocol + "\nVenda/Parametros/Decimal=2\n");
    const Ended ended = Start({"script", folder_.Write("work.js", source), "--database", Database()},
                              {"TECELAGEM_CONFIG=" + (folder_ / "")});
    scale.join();
    EXPECT_EQ(ended.code, 0) << ended.errors;
    EXPECT_EQ(ended.errors, "");
    return ended.output;
  }

  Folder folder_;
};

TEST_F(ScaleInScript, AWeightThatTheScaleSendsArrivesWhileTheScriptWaits) {
  EXPECT_EQ(Weighed("2",
                    "const s = open('TfmMovBaiTec'); s.type('EdtLote', '000001'); s.enter('EdtQtde');\n"
                    "print(s.value('EdtQtde'));\n"
                    "for (let i = 0; i < 20 && s.value('EdtQtde') === 0; i++) wait(0.1);\n"
                    "print(s.value('EdtQtde'));\n"),
            "0\n20.5\n");
}

}  // namespace
