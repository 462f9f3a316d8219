// Roll labels on the order screen: the fixture of the tests.
#pragma once

#include <functional>
#include <optional>

#include "app/books/check.h"
#include "order_mill.h"

namespace test {

inline constexpr const char* kEntry = "Gerar Etiqueta(s)";
inline constexpr const char* kAgain = "Etiqueta já gerada para este código e lote.\nDeseja gerar novamente?";
inline constexpr const char* kDone = "Etiquetas Geradas.";

// Remembers what was asked for and lets something happen before the answer.
class AtTheBox : public app::ScriptedPerson {
 public:
  std::optional<std::string> InputBox(std::string_view title, std::string_view prompt, std::string_view proposed,
                                      std::size_t /*longest*/) override {
    asked = std::string(title) + "|" + std::string(prompt) + "|" + std::string(proposed);
    if (meanwhile) meanwhile();
    return reply;
  }
  std::string asked;
  std::function<void()> meanwhile;
  std::optional<std::string> reply;
};

class RollLabels : public OrderTest {
 protected:
  /// An order of these items for warehouse DF, on the screen, which stands on the first.
  void Order(const std::vector<std::vector<std::string>>& items, const char* warehouse = "DF") {
    NewOrder();
    Type("EdtDeposito", warehouse);
    for (const auto& item : items) ASSERT_EQ(AddItem(item[0], item[1], item[2]), ActResult::kDone);
    number_ = Text("EdtNumero");
    ASSERT_EQ(Click("BtnGravar"), ActResult::kDone);
    Load(number_);
    mill_.TakeStatements();
  }

  ActResult Labels(const char* count) {
    mill_.Person().Answer("Quantidade:", count);
    return mill_.Desk().PickMenu(Screen(), kEntry);
  }

  /// Labels are made, after the question when there are some already; what was shown.
  Lines Made(const char* count, bool again = false) {
    if (again) mill_.Person().Answer("Deseja gerar novamente?", "yes");
    EXPECT_EQ(Labels(count), ActResult::kDone);
    EXPECT_EQ(mill_.Person().Unused(), Lines());
    return mill_.Messages();
  }

  /// That person asks for labels of the order's first item at another station.
  void AskElsewhere(AtTheBox& person) {
    Mill::Options options;
    options.database = mill_.Path();
    options.person = &person;
    Mill station(options);
    host::Screen& screen = station.Open("TfmCadLoteTec");
    ASSERT_EQ(station.Type(screen, "EdtNumero", number_), ActResult::kDone);
    station.Desk().PickMenu(screen, kEntry);
  }

  void StandOnItem(const char* code, const char* colour) { Stand("TbItens", {{"Codigo", code}, {"Cor", colour}}); }

  /// Nothing is written and one box says this, after a count was asked for or before.
  void Refused(const char* count, const std::string& sentence) {
    const Lines before = Books();
    if (count != nullptr) mill_.Person().Answer("Quantidade:", count);
    EXPECT_EQ(mill_.Desk().PickMenu(Screen(), kEntry), ActResult::kRefused);
    EXPECT_EQ(mill_.Person().Unused(), Lines());
    const auto shown = mill_.Person().TakeMessages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown.back().text, sentence);
    EXPECT_EQ(shown.back().title, "Ordens de Tecelagem");
    EXPECT_EQ(shown.back().icon, host::Icon::kInformation);
    EXPECT_EQ(Books(), before);
  }

  Lines Rows() {
    return Stored("SELECT * FROM {MAT_ITEN} WHERE LOTE STARTING WITH '" + number_ + "' ORDER BY LOTE, CODIGO, COR",
                  {"LOTE", "CODIGO", "COR", "DEPOSITO", "QTDE"});
  }
  /// Item and sequence of each label.
  Lines Sequences() {
    return Stored("SELECT M.*, UDF_COPY(LOTE,7,30) AS SEQ FROM {MAT_ITEN} M WHERE LOTE STARTING WITH '" + number_ +
                      "' ORDER BY LOTE, CODIGO, COR",
                  {"SEQ", "CODIGO", "COR"});
  }

  void Lot(const std::string& sequence, const char* code, const char* colour, double quantity = 0) {
    mill_.Insert(
        "MAT_ITEN",
        {{"CODIGO", code}, {"COR", colour}, {"DEPOSITO", "DF"}, {"LOTE", number_ + sequence}, {"QTDE", quantity}});
    if (quantity == 0) return;
    mill_.Insert("MAT_MOV", {{"CODIGO", code},
                             {"COR", colour},
                             {"DEPOSITO", "DF"},
                             {"LOTE", number_ + sequence},
                             {"QTDE", quantity},
                             {"SAIDA", "N"}});
  }

  /// All that could be written.
  Lines Books() {
    Lines all = Everything();
    for (const auto& line : Rows()) all.push_back(line);
    return all;
  }

  std::string number_;
};

}  // namespace test
