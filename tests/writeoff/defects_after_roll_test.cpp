// The defects register after each roll, where the installation wants it.
#include "defects_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

class RegisterAfterRoll : public DefectsMill {
 protected:
  RegisterAfterRoll() { mill_.SetParameter("MAL", 60, "S"); }
  std::string opened_for_ = "never";
  void PlanRegister() {
    opened_for_ = "never";
    AtRegister([this](host::Screen& screen) { opened_for_ = mill_.Text(screen, "EdtOrdem"); });
  }
};

TEST_F(RegisterAfterRoll, OpensForTheRollJustWritten) {
  ReservedOrder();
  Load();
  PlanRegister();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(opened_for_, "1");
  StandOnRoll(1);
  PlanRegister();
  ASSERT_EQ(Roll("11"), ActResult::kDone);
  EXPECT_EQ(opened_for_, "2");
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_EQ(Text("EdtQtde"), " 0,000");
}

TEST_F(RegisterAfterRoll, OpensWithoutAWeightToo) {
  ReservedOrder();
  Load();
  PlanRegister();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  PlanRegister();
  ASSERT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(opened_for_, "1");
  EXPECT_EQ(Rolls().size(), 1u);
}

TEST_F(RegisterAfterRoll, OpensAfterARollThatCouldNotBeWritten) {
  ReservedOrder();
  Load();
  PlanRegister();
  const auto heard = mill_.Db().BeforeStatement;
  mill_.Db().BeforeStatement = [heard](std::string_view sql) {
    heard(sql);
    if (sql.find("INSERT INTO TECELB") != std::string_view::npos) throw host::DatabaseError("falha provocada", 0, "");
  };
  EXPECT_EQ(Roll("10"), ActResult::kDone);
  mill_.Db().BeforeStatement = heard;
  EXPECT_EQ(Boxes(), BoxList{Refusal("Erro na Gravação da Baixa\nfalha provocada")});
  EXPECT_EQ(opened_for_, "");
  EXPECT_TRUE(Rolls().empty());
}

TEST_F(RegisterAfterRoll, DoesNotOpenWhenTheRollWasRefused) {
  ReservedOrder();
  Load();
  PlanRegister();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Roll("10"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa já Realizada.")});
  Type("EdtMaquina", "MQ9");
  EXPECT_EQ(Roll("11"), ActResult::kRefused);
}

}  // namespace
}  // namespace test
