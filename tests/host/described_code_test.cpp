// A code in an input, its lookup, and the description that stands beside it.
#include "host/kit/described_code.h"

#include <gtest/gtest.h>

#include "toy.h"

namespace {

using host::Edit;
using host::Label;
using test::Notes;

/// Services that know two colours and note what they are asked.
class Colours : public host::Funcoes {
 public:
  explicit Colours(Notes& notes) : notes_(notes) {}

  std::string Aspas(std::string_view text) const override { return "'" + std::string(text) + "'"; }
  host::Value Busca_Valor(std::string_view table, std::string_view columns, std::string_view result,
                          std::string_view quoted, bool company, bool trim) override {
    notes_.push_back(std::string(table) + "." + std::string(result) + " of " + std::string(columns) + " " +
                     std::string(quoted));
    EXPECT_TRUE(company && trim);
    if (fails) throw host::DatabaseError("a conexão caiu", 0, "");
    if (quoted == "'01'") return "Branco";
    return quoted == "'02'" ? host::Value("Azul") : host::Value();
  }
  bool fails = false;

  std::string vUsuario() const override { return {}; }
  std::string vUsuarioCodigo() const override { return {}; }
  std::string PermanecePonto(double) const override { return {}; }
  std::string DBLocal(std::string_view table, bool) const override { return std::string(table); }
  std::string DBLocal_SQL(std::string_view statement) const override { return std::string(statement); }
  bool Existe(std::string_view, std::string_view, std::string_view, host::Database&) override { return false; }
  std::string Proximo(std::string_view, std::string_view, int, bool) override { return {}; }
  std::string ProximaOrdemTecelB(std::string_view) override { return {}; }
  std::string BuscaParametro(std::string_view, int) override { return {}; }
  bool Acessa(std::string_view, std::string_view, std::string_view) override { return true; }
  void GeraLog(std::string_view, std::string_view, host::LogOperation, std::string_view,
               const host::Component*) override {}
  std::optional<host::LogMark> UltimoLog(std::string_view, std::string_view) override { return std::nullopt; }
  double CalculaPercRegra(std::string_view, std::string_view) override { return 0; }
  std::string InputBoxData(std::string_view, std::string_view) override { return {}; }
  void Ocupado(bool, const host::Screen&, std::string_view) override {}
  void pSetFocus(host::Screen&, bool) override {}
  host::Screen& Carrega_Form(std::string_view) override { throw std::logic_error("not here"); }
  void Chama_Relatorio(host::Report*, host::Report*, std::string_view, host::Screen&, std::string_view,
                       const host::ReportFlags&) override {}
  double PegaPesoBalanca(std::string_view, char) override { return 0; }

 private:
  Notes& notes_;
};

class HostOfColours : public test::ToyHost {
 public:
  explicit HostOfColours(Notes& notes) : ToyHost(notes), colours(notes) {}
  host::Funcoes& GetFuncoes() override { return colours; }
  Colours colours;
};

class DescribedCode : public ::testing::Test {
 protected:
  DescribedCode() {
    toy_host.desk = &desk;
    environment.setups["TfmCores"] = [this](test::ToyScreen& s) {
      code = &s.Add<Edit>("EdtCor", "Cor");
      label = &s.Add<Label>("LblCor");
      lookup = &s.Add<host::TPesquisa>("PqCor", "CADCOR", "COR");
    };
    screen = desk.Open("TfmCores");
    notes.clear();
  }
  std::string Asked() {
    std::string all;
    for (const auto& note : notes) {
      if (note.find(" of ") != std::string::npos) all += (all.empty() ? "" : " | ") + note;
    }
    notes.clear();
    return all;
  }

  static constexpr host::CodeTable kColours = {"CADCOR", "COR", "DESCRICAO"};
  Notes notes;
  HostOfColours toy_host{notes};
  test::ToyEnvironment environment{toy_host, notes};
  host::Desk desk{environment};
  host::Screen* screen = nullptr;
  Edit* code = nullptr;
  Label* label = nullptr;
  host::TPesquisa* lookup = nullptr;
};

TEST_F(DescribedCode, IsAskedForByItsKeyOnce) {
  EXPECT_EQ(host::DescriptionOf(toy_host.colours, kColours, "02"), "Azul");
  EXPECT_EQ(Asked(), "CADCOR.DESCRICAO of COR '02'");
  EXPECT_EQ(host::DescriptionOf(toy_host.colours, kColours, "99"), "");
  EXPECT_EQ(Asked(), "CADCOR.DESCRICAO of COR '99'");
}

TEST_F(DescribedCode, AnEmptyCodeAsksNobody) {
  EXPECT_EQ(host::DescriptionOf(toy_host.colours, kColours, ""), "");
  EXPECT_EQ(Asked(), "");
  EXPECT_EQ(host::DescriptionOf(toy_host.colours, kColours, " "), "");
  EXPECT_EQ(Asked(), "CADCOR.DESCRICAO of COR ' '");
}

TEST_F(DescribedCode, FollowsTheInput) {
  host::DescribeOnChange(*code, *label, kColours);
  desk.Type(*code, "01");
  EXPECT_EQ(label->Text(), "Branco");
  desk.Type(*code, "01");
  EXPECT_EQ(Asked(), "CADCOR.DESCRICAO of COR '01'");
  desk.Type(*code, "77");
  EXPECT_EQ(label->Text(), "");
  desk.Type(*code, "02");
  code->Clear();
  EXPECT_EQ(label->Text(), "");
}

TEST_F(DescribedCode, IsLeftAsItWasWhenItCannotBeAsked) {
  code->SetText("01");
  host::ShowDescription(*code, *label, kColours);
  toy_host.colours.fails = true;
  code->SetText("02");
  EXPECT_THROW(host::ShowDescription(*code, *label, kColours), host::DatabaseError);
  EXPECT_EQ(label->Text(), "Branco");
}

TEST_F(DescribedCode, ComesFromTheLookupOfTheInput) {
  host::DescribeOnChange(*code, *label, kColours);
  host::ServeInput(*code, *lookup);
  environment.lookup_answer = host::LookupRow{{"COR", "02"}, {"DESCRICAO", "not looked at"}};
  desk.Enter(*code);
  EXPECT_EQ(desk.PressKey(*screen, host::Key::kF4), host::ActResult::kDone);
  EXPECT_EQ(code->Text(), "02");
  EXPECT_EQ(label->Text(), "Azul");
  environment.lookup_answer.reset();
  desk.PressKey(*screen, host::Key::kF4);
  EXPECT_EQ(code->Text(), "02");
}

TEST_F(DescribedCode, OfSeveralKeysTheFirstGoesIntoTheInput) {
  auto& prices =
      dynamic_cast<test::ToyScreen&>(*screen).Add<host::TPesquisa>("PqPreco", "CADCORTI", "CODIGO; CODCLI;COR");
  EXPECT_EQ(prices.KeyColumn(), "CODIGO");
  EXPECT_EQ(prices.KeyColumns(), (std::vector<std::string>{"CODIGO", "CODCLI", "COR"}));
  EXPECT_EQ(lookup->KeyColumns(), std::vector<std::string>{"COR"});
  host::ServeInput(*code, prices);
  environment.lookup_answer = host::LookupRow{{"CODIGO", "M1"}, {"CODCLI", "00101"}, {"COR", "0"}};
  desk.Enter(*code);
  desk.PressKey(*screen, host::Key::kF4);
  EXPECT_EQ(code->Text(), "M1");
  EXPECT_EQ(prices.RetornoPesquisa("CODCLI").AsText(), "00101");
}

}  // namespace
