// Two stations at the same orders.
#include <atomic>
#include <chrono>
#include <set>
#include <thread>

#include "order_mill.h"

namespace test {
namespace {

class Stations : public OrderTest {
 protected:
  void SetUp() override {
    OrderTest::SetUp();
    Mill::Options options;
    options.database = mill_.Path();
    other_ = std::make_unique<Mill>(options);
    elsewhere_ = &other_->Open("TfmCadLoteTec");
  }

  // The other station holds the order and has deleted its items; the thread inserts the new one and ends the save.
  std::thread HalfASave(const std::string& number) {
    app::firebird::Database& saving = other_->Db();
    saving.BeginAction();
    saving.LockRow("TECEL", "NUMERO", number);
    saving.Execute("DELETE FROM " + saving.PhysicalName("TECEL_ITEN") + " WHERE NUMERO = ?", {number});
    return std::thread([&saving, number] {
      std::this_thread::sleep_for(std::chrono::milliseconds(400));
      saving.Execute(
          "INSERT INTO " + saving.PhysicalName("TECEL_ITEN") + " (NUMERO, CODIGO, COR, QTDE) VALUES (?, 'F2', '02', 7)",
          {number});
      saving.EndAction(app::firebird::Database::Outcome::kOk);
    });
  }

  static std::string SaveNew(Mill& mill, host::Screen& screen, const char* quantity) {
    EXPECT_EQ(mill.Click(screen, "BtnIncluir"), ActResult::kDone);
    const std::string number = mill.Text(screen, "EdtNumero");
    EXPECT_EQ(mill.Type(screen, "EdtMalharia", "M00001"), ActResult::kDone);
    EXPECT_EQ(mill.Append(screen, "TbItens", {{"Codigo", "F1"}, {"Cor", "01"}, {"Qtde", quantity}}), ActResult::kDone);
    EXPECT_EQ(mill.Click(screen, "BtnGravar"), ActResult::kDone);
    EXPECT_EQ(mill.Messages(), Lines());
    return number;
  }

  std::unique_ptr<Mill> other_;
  host::Screen* elsewhere_ = nullptr;
};

TEST_F(Stations, SaveNewOrdersAtOnce) {
  constexpr int kOrders = 15;
  std::vector<std::string> numbers[2];
  std::thread station([&] {
    for (int i = 0; i < kOrders; ++i) numbers[1].push_back(SaveNew(*other_, *elsewhere_, "7"));
  });
  for (int i = 0; i < kOrders; ++i) numbers[0].push_back(SaveNew(mill_, Screen(), "5"));
  station.join();
  std::set<std::string> distinct(numbers[0].begin(), numbers[0].end());
  distinct.insert(numbers[1].begin(), numbers[1].end());
  EXPECT_EQ(distinct.size(), 2u * kOrders);
  for (const auto& number : numbers[0]) EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 5 | 5 |  | 0 | 0 | "});
  for (const auto& number : numbers[1]) EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 5 | 7 |  | 0 | 0 | "});
}

TEST_F(Stations, SaveOneOrderAtOnce) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F2", "01", "100"}});
  const auto save = [&number](Mill& mill, host::Screen& screen, const char* sheet, const char* quantity) {
    for (int saved = 0, tries = 0; saved < 15; ++tries) {
      ASSERT_LT(tries, 1000);
      EXPECT_EQ(mill.Type(screen, "EdtNumero", number), ActResult::kDone);
      EXPECT_EQ(mill.Type(screen, "EdtFicha", sheet), ActResult::kDone);
      host::Grid& grid = mill.GridOf(screen, "TbItens");
      for (std::size_t row = 1; row <= 2; ++row) {
        EXPECT_EQ(mill.Desk().SelectRow(grid, row), ActResult::kDone);
        EXPECT_EQ(mill.Set(screen, "TbItens", {{"Qtde", quantity}}), ActResult::kDone);
      }
      // The other station may have saved since: then nothing is written, and it is loaded again.
      const bool stored = mill.Click(screen, "BtnGravar") == ActResult::kDone;
      EXPECT_EQ(mill.Messages().size(), stored ? 0u : 1u);
      if (stored) ++saved;
    }
  };
  std::thread station([&] { save(*other_, *elsewhere_, "segunda", "222"); });
  save(mill_, Screen(), "primeira", "111");
  station.join();
  const auto sheet = mill_.Scalar("SELECT FICHA FROM {TECEL} WHERE NUMERO = '" + number + "'").AsText();
  const std::string quantity = sheet == "primeira" ? "111" : "222";
  EXPECT_EQ(Items(number), (Lines{"F1 | 01 |  | 5 | " + quantity + " |  | 0 | 0 | ",
                                  "F2 | 01 |  | 4 | " + quantity + " |  | 0 | 0 | "}));
}

TEST_F(Stations, ASaveWaitsForARollAndCountsIt) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  app::firebird::Database& weighing = other_->Db();
  weighing.BeginAction();
  weighing.LockRow("TECEL", "NUMERO", number);
  weighing.Execute("INSERT INTO " + weighing.PhysicalName("TECELB") +
                       " (NUMERO, CODIGO, COR, ORDEM, QTDE) VALUES (?, 'F1', '01', 1, 12.5)",
                   {number});
  std::atomic<bool> ended = false;
  std::thread roll([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    ended = true;
    weighing.EndAction(app::firebird::Database::Outcome::kOk);
  });
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_TRUE(ended);
  roll.join();
  EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 5 | 100 |  | 12.5 | 0 | "});
}

TEST_F(Stations, ALoadWaitsForASaveAndSeesItWhole) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  std::thread save = HalfASave(number);
  EXPECT_EQ(Type("EdtNumero", number), ActResult::kDone);
  save.join();
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Cor", "Qtde"}), Lines{"F2 | 02 | 7"});
}

TEST_F(Stations, APrintoutWaitsForASaveAndSeesItWhole) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  std::thread save = HalfASave(number);
  EXPECT_EQ(Click("BtnImprimir"), ActResult::kDone);
  save.join();
  const auto prints = mill_.Equipment().TakePrints();
  ASSERT_EQ(prints.size(), 1u);
  ASSERT_EQ(prints[0].data.at("QryRelatorio").size(), 1u);
  EXPECT_EQ(prints[0].data.at("QryRelatorio")[0].at("CODIGO").AsText(), "F2");
  EXPECT_TRUE(prints[0].data.at("TbFios").empty());
}

// Who looks at the paper does not hold up who saves.
TEST_F(Stations, APrintoutLetsGoOfTheOrderBeforeItIsShown) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  class AtThePreview : public FakeEquipment {
   public:
    std::optional<app::PrintJob> Print(const app::PrintRequest& request) override {
      auto job = FakeEquipment::Print(request);
      meanwhile();
      return job;
    }
    std::function<void()> meanwhile;
  } preview;
  EXPECT_EQ(other_->Type(*elsewhere_, "EdtNumero", number), ActResult::kDone);
  EXPECT_EQ(other_->Type(*elsewhere_, "EdtFicha", "nova"), ActResult::kDone);
  preview.meanwhile = [&] { EXPECT_EQ(other_->Click(*elsewhere_, "BtnGravar"), ActResult::kDone); };
  Mill::Options options;
  options.database = mill_.Path();
  options.equipment = &preview;
  Mill station(options);
  host::Screen& screen = station.Open("TfmCadLoteTec");
  EXPECT_EQ(station.Type(screen, "EdtNumero", number), ActResult::kDone);
  EXPECT_EQ(station.Click(screen, "BtnImprimir"), ActResult::kDone);
  EXPECT_EQ(mill_.Scalar("SELECT FICHA FROM {TECEL}").AsText(), "nova");
}

TEST_F(Stations, LabelsWaitForARollAndAreRefused) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  mill_.Exec("UPDATE {TECEL} SET DEPOSITO = 'DF'");
  Load(number);
  app::firebird::Database& weighing = other_->Db();
  std::thread roll;
  mill_.Person().Answer("Quantidade:", "3");
  weighing.BeginAction();
  weighing.LockRow("TECEL", "NUMERO", number);
  weighing.Execute("INSERT INTO " + weighing.PhysicalName("TECELB") +
                       " (NUMERO, CODIGO, COR, ORDEM, QTDE) VALUES (?, 'F1', '01', 1, 12.5)",
                   {number});
  weighing.Execute("UPDATE " + weighing.PhysicalName("TECEL_ITEN") + " SET QTDE_B = 12.5 WHERE NUMERO = ?", {number});
  roll = std::thread([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    weighing.EndAction(app::firebird::Database::Outcome::kOk);
  });
  EXPECT_EQ(mill_.Desk().PickMenu(Screen(), "Gerar Etiqueta(s)"), ActResult::kRefused);
  roll.join();
  EXPECT_EQ(mill_.Messages(), Lines{"Não é possível gerar etiquetas de itens com baixas."});
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {MAT_ITEN} WHERE UDF_LEN(LOTE) = 9").AsInteger(), 0);
}

// The save holds the order before it touches the reservations; otherwise each would wait for the other.
TEST_F(Stations, ASaveAndARollTakeTheirLocksInOneOrder) {
  const std::string number = SavedOrder({{"FP", "01", "50"}});
  mill_.Insert("MAT_RESERVA", {{"NUMERO", number},
                               {"CODIGO", "Y1"},
                               {"COR", "CR"},
                               {"DEPOSITO", "D1"},
                               {"LOTE", "L1"},
                               {"QTDE", 10},
                               {"TIPO", "T"}});
  Load(number);
  app::firebird::Database& weighing = other_->Db();
  weighing.BeginAction();
  weighing.LockRow("TECEL", "NUMERO", number);
  std::string said;
  std::thread roll([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    const auto before = weighing.Stats().retries;
    try {
      weighing.Execute("UPDATE " + weighing.PhysicalName("MAT_RESERVA") +
                           " SET QTDE = QTDE - 4, QTDE_B = QTDE_B + 4 WHERE NUMERO = ?",
                       {number});
      weighing.EndAction(app::firebird::Database::Outcome::kOk);
    } catch (const std::exception& error) {
      said = error.what();
      weighing.EndAction(app::firebird::Database::Outcome::kFailed);
    }
    if (weighing.Stats().retries != before) said += " (tried again)";
  });
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  roll.join();
  EXPECT_EQ(said, "");
  // What the roll consumed stays consumed: the save saw the roll that it had waited for.
  EXPECT_EQ(mill_.Messages().size(), 1u);
  EXPECT_EQ(Reservations(number), Lines{"Y1 | CR | D1 | L1 | 6 | 4 | T |  | "});
}

// --- rolls written since the order was loaded ---------------------------------------------------------------------

TEST_F(Stations, AnOrderWithARollWrittenSinceIsNotDeleted) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  Roll(number, "F1", "01", 1, 12.5);
  const Lines before = Everything();
  mill_.Person().Answer("Deseja excluir totalmente", "yes");
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kRefused);
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(shown[1].text, "Lote com baixas. Impossível excluir.");
  EXPECT_EQ(shown[1].icon, host::Icon::kInformation);
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Cor"}), Lines{"F1 | 01"});
}

TEST_F(Stations, ADeleteWaitsForARollAndIsRefused) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  app::firebird::Database& weighing = other_->Db();
  weighing.BeginAction();
  weighing.LockRow("TECEL", "NUMERO", number);
  weighing.Execute("INSERT INTO " + weighing.PhysicalName("TECELB") +
                       " (NUMERO, CODIGO, COR, ORDEM, QTDE) VALUES (?, 'F1', '01', 1, 12.5)",
                   {number});
  std::thread roll([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    weighing.EndAction(app::firebird::Database::Outcome::kOk);
  });
  mill_.Person().Answer("Deseja excluir totalmente", "yes");
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kRefused);
  roll.join();
  EXPECT_EQ(Items(number).size(), 1u);
}

TEST_F(Stations, AnOrderWhoseRollsWereAllTakenBackIsDeleted) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  Roll(number, "F1", "01", 1, 12.5);
  Roll(number, "F1", "01", 2, -12.5);
  mill_.Person().Answer("Deseja excluir totalmente", "yes");
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines());
}

TEST_F(Stations, AnItemWithARollWrittenSinceStaysInTheOrder) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F1", "02", "50"}, {"F2", "01", "10"}});
  Load(number);
  Stand("TbItens", {{"Codigo", "F1"}, {"Cor", "02"}});
  EXPECT_EQ(mill_.Desk().DeleteRow(Screen().DBGrid6), ActResult::kDone);
  Stand("TbItens", {{"Codigo", "F2"}, {"Cor", "01"}});
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Cor", "02"}}), ActResult::kDone);
  for (const char* item : {"F1 02", "F2 01"}) {
    const std::string code(item, 2);
    const std::string colour(item + 3);
    mill_.Exec("DELETE FROM {TECELB}");
    Roll(number, code, colour, 1, 3);
    const Lines before = Everything();
    EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
    EXPECT_EQ(mill_.Messages(), Lines{"Produto já possui quantidade baixada. Impossível Continuar.\nMaterial " + code +
                                      " cor " + colour + "."});
    EXPECT_EQ(Everything(), before);
    EXPECT_EQ(Screen().TbItens.RecordCount(), 2u);
  }
  // The person loads the order again and goes on.
  Load(number);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number).size(), 3u);
}

TEST_F(Stations, RollsOfAnItemThatTheOrderNeverHadDoNotHinderASave) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Roll(number, "F2", "01", 1, 3);
  Load(number);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 5 | 100 |  | 0 | 0 | "});
}

}  // namespace
}  // namespace test
