// A statement that fails, at every place of every action: told once, nothing half done, the screen as it was.
#include <functional>

#include "order_mill.h"

namespace test {
namespace {

class Failures : public OrderTest {
 protected:
  // An order with two items and reservations to write, update and drop, changed on the screen but not saved.
  std::string PreparedOrder() {
    const std::string number = SavedOrder({{"F1", "01", "100"}, {"F2", "01", "40"}});
    Roll(number, "F1", "01", 1, 10);
    const auto reserve = [&](const char* lot, double consumed, const char* kind) {
      mill_.Insert("MAT_RESERVA", {{"NUMERO", number},
                                   {"CODIGO", "Y1"},
                                   {"COR", "CR"},
                                   {"DEPOSITO", "D1"},
                                   {"LOTE", lot},
                                   {"QTDE", 10},
                                   {"QTDE_B", consumed},
                                   {"TIPO", kind}});
    };
    reserve("L1", 2, "T");
    reserve("L2", 0, "T");
    reserve("L2", 0, "F");
    mill_.Insert("PROG_OF", {{"NUM_DOC", number}, {"TIPO", "M"}});
    Load(number);
    Type("EdtFicha", "nova");
    Type("EdtObs", "mudou");
    Type("EdtRPM", "30");
    Stand("TbItens", {{"Codigo", "F2"}});
    EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Qtde", "41"}}), ActResult::kDone);
    Stand("TbEstoque", {{"Lote", "L2"}, {"Deposito", "D1"}});
    EXPECT_EQ(mill_.Set(Screen(), "TbEstoque", {{"Sel", "N"}}), ActResult::kDone);
    Stand("TbEstoque", {{"Lote", "L1"}, {"Deposito", "D2"}});
    EXPECT_EQ(mill_.Set(Screen(), "TbEstoque", {{"Sel", "S"}, {"Qtde_Res", "7"}}), ActResult::kDone);
    Type("EdtFilDeposito", "D1");
    Type("EdtFilLote", "L");
    EXPECT_EQ(mill_.Messages(), Lines());
    return number;
  }

  /// All that the person sees.
  Lines OnScreen() {
    Lines seen;
    for (const host::Component* component : Screen().Components()) {
      const auto* edit = dynamic_cast<const host::Edit*>(component);
      const auto* label = dynamic_cast<const host::Label*>(component);
      if (edit != nullptr) seen.push_back(edit->Name() + ": " + edit->Text());
      if (label != nullptr) seen.push_back(label->Name() + ": " + label->Text());
    }
    for (const char* name : {"TbItens", "TbFios", "TbEstoque"}) {
      const host::Dataset& rows = mill_.Data(Screen(), name);
      Lines fields;
      for (std::size_t at = 0; at < rows.FieldCount(); ++at) fields.push_back(rows.FieldAt(at).Name());
      for (const auto& line : Shown(name, fields)) seen.push_back(std::string(name) + ": " + line);
    }
    // (An item row goes into edit whenever one of its cells is left.)
    seen.push_back(Screen().TbEstoque.InEdit() ? "lot in edit" : "lots at rest");
    seen.push_back(Screen().DBGrid6.Enabled() ? "open" : "locked");
    return seen;
  }

  /// The rules of the grids are still in force.
  void ExpectRulesInForce() {
    const std::string code = Screen().TbItens["Codigo"].AsText();
    EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Codigo", ""}}), ActResult::kDone);
    EXPECT_EQ(Screen().TbItens["Codigo"].AsText(), code);
    EXPECT_EQ(mill_.Append(Screen(), "TbEstoque", {{"Qtde_Res", "5"}}), ActResult::kRefused);
  }

  /// Makes statement 1, 2, 3 ... of the act fail until none is left; the number of statements that could fail.
  int FailEach(const std::function<ActResult()>& act) {
    const Lines stored = Everything();
    const Lines seen = OnScreen();
    for (int n = 1;; ++n) {
      mill_.FailStatement(n);
      const ActResult result = act();
      if (!mill_.StopFailing()) {
        EXPECT_EQ(result, ActResult::kDone);
        return n - 1;
      }
      EXPECT_EQ(result, ActResult::kFailed) << n;
      EXPECT_EQ(Errors(), Lines{"falha provocada"}) << n;
      EXPECT_EQ(Everything(), stored) << n;
      EXPECT_EQ(OnScreen(), seen) << n;
      if (HasFailure()) return n;
      mill_.Messages();
      ExpectRulesInForce();
      EXPECT_EQ(OnScreen(), seen) << n;
    }
  }
};

TEST_F(Failures, AtEachStatementOfASave) {
  const std::string number = PreparedOrder();
  EXPECT_GT(FailEach([this] { return Click("BtnGravar"); }), 20);
  EXPECT_EQ(Reservations(number), (Lines{"Y1 | CR | D1 | L1 | 10 | 2 | T |  | ", "Y1 | CR | D1 | L2 | 10 | 0 | F |  | ",
                                         "Y1 | CR | D2 | L1 | 7 | 0 | T |  | "}));
  EXPECT_EQ(Items(number), (Lines{"F1 | 01 |  | 5 | 100 |  | 10 | 0 | ", "F2 | 01 |  | 4 | 41 |  | 0 | 0 | "}));
  EXPECT_EQ(Text("EdtFicha"), "");
}

TEST_F(Failures, AtEachStatementOfADelete) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F2", "01", "40"}});
  Load(number);
  const auto remove = [this] {
    mill_.Person().Answer("Deseja excluir totalmente", "yes");
    const ActResult result = Click("BtnExcluir");
    mill_.Messages();
    return result;
  };
  EXPECT_GT(FailEach(remove), 5);
  EXPECT_EQ(Items(number), Lines());
}

TEST_F(Failures, AtEachStatementOfADuplication) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F2", "01", "40"}});
  Load(number);
  const auto duplicate = [this] {
    mill_.Person().Answer("Deseja duplicar esta ordem?", "yes");
    return Click("BtnDuplicar");
  };
  EXPECT_GT(FailEach(duplicate), 4);
  EXPECT_EQ(Items(Text("EdtNumero")).size(), 2u);
}

TEST_F(Failures, AtEachStatementOfANewOrder) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  const Lines stored = Everything();
  int failed = 0;
  for (int n = 1;; ++n) {
    Load(number);
    const Lines seen = OnScreen();
    mill_.FailStatement(n);
    const ActResult result = Click("BtnIncluir");
    if (!mill_.StopFailing()) {
      EXPECT_EQ(result, ActResult::kDone);
      break;
    }
    ++failed;
    EXPECT_EQ(result, ActResult::kFailed) << n;
    EXPECT_EQ(Errors(), Lines{"falha provocada"}) << n;
    mill_.Messages();
    // The former order, or the new one: never the empty screen under the number of the former.
    if (Text("EdtNumero") == number) {
      EXPECT_EQ(OnScreen(), seen) << n;
    } else {
      EXPECT_EQ(Text("EdtMalharia"), "") << n;
      EXPECT_TRUE(Screen().TbItens.IsEmpty()) << n;
    }
    EXPECT_EQ(Everything(), stored) << n;
  }
  EXPECT_GT(failed, 1);
  EXPECT_NE(Text("EdtNumero"), number);
}

TEST_F(Failures, AtEachStatementOfALoad) {
  const std::string number = PreparedOrder();
  const Lines stored = Everything();
  int failed = 0;
  for (int n = 1;; ++n) {
    mill_.FailStatement(n);
    const ActResult result = Type("EdtNumero", number);
    if (!mill_.StopFailing()) {
      EXPECT_EQ(result, ActResult::kDone);
      break;
    }
    ++failed;
    EXPECT_EQ(result, ActResult::kFailed) << n;
    EXPECT_EQ(Errors(), Lines{"falha provocada"}) << n;
    mill_.Messages();
    EXPECT_EQ(Text("EdtNumero"), number);
    EXPECT_EQ(FocusedName(), "EdtNumero");
    // Either the order as it was, untouched (the very first question failed), or nothing at all.
    const std::size_t rows = Screen().TbItens.RecordCount();
    EXPECT_TRUE(rows == 0 || rows == 2) << n;
    // Going on leaves the number once more and loads the order: nobody saves half of it.
    mill_.FailStatement(n);
    EXPECT_EQ(Click("BtnGravar"), ActResult::kFailed) << n;
    EXPECT_TRUE(mill_.StopFailing());
    Errors();
    mill_.Messages();
    EXPECT_EQ(Everything(), stored) << n;
  }
  EXPECT_GT(failed, 15);
  EXPECT_EQ(Shown("TbItens", {"Codigo"}).size(), 2u);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number).size(), 2u);
}

TEST_F(Failures, AtEachStatementOfAnItem) {
  NewOrder();
  for (const char* field : {"Codigo", "Cor"}) {
    const char* text = field == std::string("Codigo") ? "F1" : "02";
    int failed = 0;
    for (int n = 1;; ++n) {
      host::Grid& grid = Screen().DBGrid6;
      ASSERT_EQ(mill_.Desk().SelectCell(grid, field), ActResult::kDone);
      ASSERT_EQ(mill_.Desk().TypeCell(grid, text), ActResult::kDone);
      mill_.FailStatement(n);
      const ActResult left = mill_.Desk().GridKey(grid, host::Key::kTab);
      if (!mill_.StopFailing()) {
        EXPECT_EQ(left, ActResult::kDone);
        break;
      }
      ++failed;
      EXPECT_EQ(left, ActResult::kFailed) << field << n;
      EXPECT_EQ(Errors(), Lines{"falha provocada"});
      EXPECT_EQ(Screen().TbItens["Codigo"].AsText(), "F1");
    }
    EXPECT_GT(failed, 1) << field;
  }
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Qtde", "5"}}), ActResult::kDone);
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Cor", "Custo"}), Lines{"F1 | 02 | 6.5"});
}

TEST_F(Failures, WhileACodeIsTypedOrLeft) {
  const Cells inputs = {
      {"EdtMalharia", "M00001"}, {"EdtPrazo", "30"}, {"EdtMaquina", "MQ1"}, {"EdtFluxo", "FL1"}, {"EdtDeposito", "DF"}};
  NewOrder();
  for (const auto& [input, text] : inputs) {
    Type(input, "");
    for (int n = 1;; ++n) {
      ASSERT_LT(n, 10);
      Type(input, "");
      mill_.FailStatement(n);
      const ActResult result = Type(input, text);
      if (!mill_.StopFailing()) {
        EXPECT_EQ(result, ActResult::kDone);
        break;
      }
      EXPECT_EQ(result, ActResult::kFailed);
      EXPECT_EQ(Errors(), Lines{"falha provocada"});
    }
    EXPECT_EQ(Text(input), text);
  }
}

}  // namespace
}  // namespace test
