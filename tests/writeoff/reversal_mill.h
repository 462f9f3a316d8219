// Rolls taken back: the fixture of the tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"
#include "writeoff/write_off_mill.h"

namespace test {

inline constexpr const char* kReversalQuestion = "Deseja estornar este Movimento?";

class ReversalMill : public WriteOffMill {
 protected:
  /// Stands on a roll of the list.
  void StandOnRoll(int number) {
    host::Grid& rolls = mill_.GridOf(Screen(), "TbRolos");
    const host::Dataset& rows = rolls.GetDataset();
    for (std::size_t row = 1; row <= rows.RecordCount(); ++row) {
      if (rows.ValueAt(row, 1).AsInteger() != number) continue;
      ASSERT_EQ(mill_.Desk().SelectRow(rolls, row), host::ActResult::kDone);
      return;
    }
    FAIL() << "no roll " << number << " in the list";
  }
  /// Presses "Estornar" on a roll; the question is answered.
  host::ActResult Reverse(int number, std::string_view reply = "yes") {
    StandOnRoll(number);
    mill_.Person().Answer(kReversalQuestion, reply);
    return Press();
  }
  host::ActResult Press() { return mill_.Click(Screen(), "BtnExtorna"); }
  /// Boxes without the question of a reversal.
  std::vector<Box> Told() {
    std::vector<Box> boxes = Boxes();
    std::erase_if(boxes, [](const Box& box) { return box.text == kReversalQuestion; });
    return boxes;
  }
  /// A reserved order with these rolls on the screen.
  void RollsOf(const std::vector<std::string>& quantities) {
    ReservedOrder();
    Load();
    for (const auto& quantity : quantities) ASSERT_EQ(Roll(quantity), host::ActResult::kDone) << quantity;
    ASSERT_EQ(Boxes(), std::vector<Box>());
  }
  std::vector<Row> Movements() { return mill_.Rows("SELECT * FROM {MAT_MOV} WHERE TIPO_DOC = 'BT' ORDER BY ID"); }
  void Conciliate(std::string_view from, std::string_view to) {
    mill_.Exec("INSERT INTO TEC_PERIODO (AREA, DT_INICIO, DT_FIM, CONCILIADO) VALUES ('IV', '" + std::string(from) +
               "', '" + std::string(to) + "', 'S')");
  }
  /// What every step of the road writes, as text; log and ledger rows aside.
  std::string Books() {
    std::string all;
    for (const std::string& sql :
         {std::string("SELECT * FROM {TECEL_ITEN} ORDER BY 1, 2, 3"),
          std::string("SELECT * FROM {TECELB} ORDER BY 1, 3"),
          std::string("SELECT * FROM {BAIXA_FIO} ORDER BY NUMERO, ORDEM, CODIGO, DEPOSITO, LOTE"),
          std::string("SELECT * FROM {MAT_RESERVA} ORDER BY NUMERO, CODIGO, COR, DEPOSITO, LOTE"),
          std::string("SELECT * FROM {DEF_MOV} ORDER BY MOV"),
          std::string("SELECT CODIGO, COR, DEPOSITO, LOTE, QTDE FROM {MAT_ITEN} ORDER BY 1, 2, 3, 4")}) {
      for (const Row& row : mill_.Rows(sql)) {
        for (const auto& [name, value] : row) all += name + "=" + value.AsText() + ";";
        all += '\n';
      }
    }
    return all;
  }
};

/// A second program on the same database, as at another desk.
class OtherStation {
 public:
  explicit OtherStation(Mill& mill) : mill_(Options(mill)) { mill_.SetClock("2026-03-10 10:00:00"); }
  Mill& Get() { return mill_; }
  host::Screen& Load(std::string_view order) {
    host::Screen& screen = mill_.Open("TfmMovBaiTec");
    mill_.Type(screen, "EdtLote", order);
    return screen;
  }
  /// Reverses the roll that the list begins with.
  host::ActResult ReverseNewest(host::Screen& screen) {
    mill_.Person().Answer(kReversalQuestion, "yes");
    return mill_.Click(screen, "BtnExtorna");
  }

 private:
  static Mill::Options Options(Mill& mill) {
    mill.Db().MakeDurable();
    Mill::Options options;
    options.database = mill.Path();
    return options;
  }
  Mill mill_;
};

}  // namespace test
