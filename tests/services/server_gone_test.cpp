// Screens whose server goes away and comes back: what they show stays, what was told holds, the next act goes on.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/mill/mill.h"
#include "app/services/database_offer.h"
#include "host/errors.h"
#include "host/kit/screen.h"
#include "support/mill.h"
#include "support/road.h"
#include "tests/firebird/private_server.h"

namespace test {
namespace {

using host::ActResult;

constexpr unsigned kLongestTest = 120;  // seconds, after which the test dies and the server with it
constexpr const char* kLost = "A conexão com o banco de dados caiu.";
constexpr const char* kUnknown = "Não se sabe se ela foi gravada";
constexpr const char* kDown = "não responde";

/// The small mill behind a server.
class ServerGone : public testing::Test {
 protected:
  static void SetUpTestSuite() { server_ = std::make_unique<PrivateServer>(); }
  static void TearDownTestSuite() { server_.reset(); }

  ServerGone() {
    alarm(kLongestTest);
    static int number = 0;
    const auto options = server_->Options("malharia" + std::to_string(++number) + ".fdb");
    app::mill::InitDatabase(options, "demo");
    settings_ = std::filesystem::temp_directory_path() / ("tecelagem-" + std::to_string(getpid()) + ".settings");
    Mill::Options station;
    station.database = options.database;
    station.password = options.password;
    station.settings_file = settings_.string();
    mill_ = std::make_unique<Mill>(station);
    FillSmallMill(*mill_);
  }
  ~ServerGone() override {
    mill_.reset();
    std::error_code ignored;
    std::filesystem::remove(settings_, ignored);
    alarm(0);
  }

  static PrivateServer& TheServer() { return *server_; }
  static void PowerCut() {
    server_->Kill();
    server_->Start();
  }
  Mill& TheMill() { return *mill_; }
  /// The one box shown since the last call.
  std::string Box() {
    const auto boxes = mill_->Messages();
    EXPECT_EQ(boxes.size(), 1u);
    return boxes.empty() ? "" : boxes.back();
  }
  host::Screen& TypeOrder() {
    host::Screen& screen = mill_->Open("TfmCadLoteTec");
    mill_->Click(screen, "BtnIncluir");
    mill_->Type(screen, "EdtMalharia", "M00001");
    mill_->Type(screen, "EdtDeposito", "DF");
    mill_->Append(screen, "TbItens", {{"Codigo", "F1"}, {"Cor", "01"}, {"Qtde", "100"}});
    mill_->Messages();
    return screen;
  }
  std::int64_t Count(std::string_view table) {
    return mill_->Scalar("SELECT COUNT(*) FROM {" + std::string(table) + "}").AsInteger();
  }

 private:
  static std::unique_ptr<PrivateServer> server_;

  std::filesystem::path settings_;
  std::unique_ptr<Mill> mill_;
};

std::unique_ptr<PrivateServer> ServerGone::server_;

TEST_F(ServerGone, AnOrderThatWasTypedIsStillThereAndIsSavedOnce) {
  host::Screen& screen = TypeOrder();
  const std::string number = TheMill().Text(screen, "EdtNumero");
  PowerCut();
  EXPECT_NE(TheMill().Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_NE(Box().find(kLost), std::string::npos);
  EXPECT_EQ(TheMill().Text(screen, "EdtNumero"), number);
  EXPECT_EQ(TheMill().Data(screen, "TbItens").RecordCount(), 1u);
  EXPECT_EQ(Count("TECEL"), 0);

  EXPECT_EQ(TheMill().Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Count("TECEL"), 1);
  EXPECT_EQ(TheMill().Scalar("SELECT QTDE FROM {TECEL_ITEN}").AsFloat(), 100);
}

TEST_F(ServerGone, WhileItIsDownEveryActSaysSoAndThenTheScreenGoesOn) {
  host::Screen& screen = TypeOrder();
  TheServer().Kill();
  EXPECT_NE(TheMill().Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_NE(Box().find(kLost), std::string::npos);
  EXPECT_NE(TheMill().Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_NE(Box().find(kDown), std::string::npos);
  EXPECT_FALSE(TheMill().Db().Connected());
  TheServer().Start();
  EXPECT_EQ(TheMill().Click(screen, "BtnGravar"), ActResult::kDone);
  EXPECT_TRUE(TheMill().Db().Connected());
  EXPECT_EQ(Count("TECEL_ITEN"), 1);
}

TEST_F(ServerGone, TheNumbersOfOrdersGoOn) {
  const std::string first = SaveBareOrder(TheMill(), SmallMillOrder(100));
  PowerCut();
  host::Screen& screen = TheMill().Open("TfmCadLoteTec");
  EXPECT_NE(TheMill().Click(screen, "BtnIncluir"), ActResult::kDone);
  TheMill().Messages();
  const std::string second = SaveBareOrder(TheMill(), SmallMillOrder(50));
  EXPECT_GT(second, first);
  EXPECT_EQ(Count("TECEL"), 2);
}

TEST_F(ServerGone, ARollIsThereWholeOrNotAtAll) {
  const std::string order = SaveOrder(TheMill(), SmallMillOrder(100));
  host::Screen& screen = OpenWriteOff(TheMill(), order, "DF");
  EXPECT_EQ(ConfirmRoll(TheMill(), screen, 20), ActResult::kDone);
  TheMill().Messages();
  TypeRoll(TheMill(), screen, 21);
  const std::int64_t movements = Count("MAT_MOV");
  bool killed = false;
  TheMill().Db().BeforeStatement = [&](std::string_view sql) {
    // In the middle of the roll: its yarn is written off, and it is not yet among the order's rolls.
    if (killed || sql.find("INSERT INTO TECELB") == std::string_view::npos) return;
    killed = true;
    PowerCut();
  };
  EXPECT_NE(TheMill().Click(screen, "BtnConfirma"), ActResult::kDone);
  TheMill().Db().BeforeStatement = nullptr;
  EXPECT_TRUE(killed);
  std::string told;
  for (const std::string& box : TheMill().Messages()) told += box;
  EXPECT_NE(told.find(kLost), std::string::npos) << told;
  EXPECT_EQ(Count("TECELB"), 1);
  EXPECT_EQ(Count("MAT_MOV"), movements);

  EXPECT_EQ(ConfirmRoll(TheMill(), screen, 21), ActResult::kDone);
  EXPECT_EQ(Count("TECELB"), 2);
}

TEST_F(ServerGone, ARollWhoseCommitIsCutIsToldAsUnknown) {
  const std::string order = SaveOrder(TheMill(), SmallMillOrder(100));
  host::Screen& screen = OpenWriteOff(TheMill(), order, "DF");
  TypeRoll(TheMill(), screen, 20);
  TheMill().Db().BeforeStatement = [&](std::string_view sql) {
    if (sql == "COMMIT") PowerCut();
  };
  EXPECT_NE(TheMill().Click(screen, "BtnConfirma"), ActResult::kDone);
  TheMill().Db().BeforeStatement = nullptr;
  std::string told;
  for (const std::string& box : TheMill().Messages()) told += box;
  EXPECT_NE(told.find(kUnknown), std::string::npos) << told;
  EXPECT_EQ(Count("TECELB"), 0);
  EXPECT_EQ(ConfirmRoll(TheMill(), screen, 20), ActResult::kDone);
  EXPECT_EQ(Count("TECELB"), 1);
}

TEST_F(ServerGone, SharedDatasetsGoOn) {
  const host::Screen screen(TheMill().App(), "TfmTeste", "fmTeste", "Teste");
  auto& tables = TheMill().App().GetTabela();
  tables.AbreTabela("tbDeposito", screen);
  ASSERT_TRUE(tables.Dataset("tbDeposito", screen).Locate("CODIGO", {"D1"}));
  const std::string text = tables.Dataset("tbDeposito", screen).FieldByName("DESCRICAO").AsText();
  PowerCut();
  EXPECT_THROW(tables.Dataset("tbDeposito", screen).Locate("CODIGO", {"D2"}), host::DatabaseError);
  EXPECT_TRUE(tables.Dataset("tbDeposito", screen).Locate("CODIGO", {"D1"}));
  EXPECT_EQ(tables.Dataset("tbDeposito", screen).FieldByName("DESCRICAO").AsText(), text);
  tables.FechaTabela("tbDeposito", screen);
}

TEST_F(ServerGone, ALookupThatWasOpenGoesOn) {
  host::Screen screen(TheMill().App(), "TfmTeste", "fmTeste", "Teste");
  const host::TPesquisa lookup(screen, "PqCor", "CADCOR", "COR");
  const auto offer = app::services::NewLookupOffer(TheMill().Db(), lookup);
  EXPECT_EQ(offer->Search("azul", 0, 10).size(), 1u);
  PowerCut();
  EXPECT_THROW(offer->Search("azul", 0, 10), host::DatabaseError);
  EXPECT_EQ(offer->Search("azul", 0, 10).size(), 1u);
}

}  // namespace
}  // namespace test
