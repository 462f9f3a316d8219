// The program put together: waits, errors, lookups, modal screens, the start.
#include "app/application.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "host/errors.h"
#include "host/kit/screen.h"
#include "support/mill.h"
#include "support/module_under_test.h"
#include "support/template_database.h"

namespace {

class Program : public testing::Test {
 protected:
  Program() { test::FillSmallMill(mill_); }
  host::Screen& Tiny() { return mill_.Open("TfmTiny"); }
  static host::Button& Act(host::Screen& screen) {
    return dynamic_cast<host::Button&>(*screen.FindComponent("BtnAgir"));
  }
  static host::TPesquisa& Lookup(host::Screen& screen) {
    return dynamic_cast<host::TPesquisa&>(*screen.FindComponent("PqCor"));
  }
  void Write(const char* colour) {
    const auto query = mill_.App().GetTabela().IBDatabase().NewQuery();
    query->SQL.Add("INSERT INTO CADCOR_001 (COR) VALUES (" + mill_.App().GetFuncoes().Aspas(colour) + ")");
    query->ExecSQL();
  }
  // What another station sees.
  std::int64_t Durable(const char* colour) {
    app::firebird::ConnectOptions options;
    options.database = mill_.Path();
    const auto other = app::firebird::Database::Open(options);
    return other->Query("SELECT COUNT(*) AS N FROM {CADCOR} WHERE COR = ?", {colour})->FieldByName("N").AsInteger();
  }

  test::Mill mill_;
};

TEST_F(Program, WorkIsDurableBeforeEachWaitAndAtTheEnd) {
  host::Screen& screen = Tiny();
  std::vector<std::int64_t> seen;
  mill_.Person().OnShown = [&](const auto&) { seen.push_back(Durable("A")); };
  Act(screen).OnClick = [&] {
    Write("A");
    seen.push_back(Durable("A"));
    screen.GetHost().GetDialogs().Message("t", "aviso", host::Icon::kInformation);
    Write("B");
  };
  EXPECT_EQ(mill_.Click(screen, "BtnAgir"), host::ActResult::kDone);
  EXPECT_EQ(seen, (std::vector<std::int64_t>{0, 1}));
  EXPECT_EQ(Durable("B"), 1);
}

TEST_F(Program, QuestionsAndBoxesAreWaitsToo) {
  host::Screen& screen = Tiny();
  std::vector<std::int64_t> seen;
  mill_.Person().OnShown = [&](const auto&) { seen.push_back(Durable("Q")); };
  mill_.Person().Answer("certeza", "yes");
  mill_.Person().Answer("Quantos", "25");
  Act(screen).OnClick = [&] {
    Write("Q");
    EXPECT_TRUE(screen.GetHost().GetDialogs().Question("t", "Tem certeza?"));
    Write("I");
    EXPECT_EQ(screen.GetHost().GetDialogs().InputBox("t", "Quantos metros?", "0"), "25");
    seen.push_back(Durable("I"));
    Write("D");
    screen.GetHost().GetFuncoes().InputBoxData("t", "Data?");
    seen.push_back(Durable("D"));
  };
  EXPECT_EQ(mill_.Click(screen, "BtnAgir"), host::ActResult::kDone);
  EXPECT_EQ(seen, (std::vector<std::int64_t>{1, 1, 1}));
}

// --- files ----------------------------------------------------------------------------------------------------------

class Files : public Program {
 protected:
  Files() : folder_(std::filesystem::temp_directory_path() / ("arquivos " + std::to_string(::getpid()))) {
    std::filesystem::create_directories(folder_);
  }
  ~Files() override { std::filesystem::remove_all(folder_); }

  std::string Write(const std::string& name, const std::string& content) {
    const std::filesystem::path path = folder_ / name;
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
  }
  /// What a button that asks for a file gets.
  host::ActResult Ask(std::size_t most_bytes) {
    host::Screen& screen = Tiny();
    chosen_.reset();
    Act(screen).OnClick = [this, &screen, most_bytes] {
      chosen_ = screen.GetHost().GetDialogs().ChooseFile("Importar preços", "Arquivos CSV (*.csv)", most_bytes);
    };
    return mill_.Click(screen, "BtnAgir");
  }

  std::filesystem::path folder_;
  std::optional<host::ChosenFile> chosen_;
};

TEST_F(Files, AreHandedBackByteForByte) {
  const std::string content = std::string("CODIGO;CUSTO\r\nM1;5,1") + '\0' + "\xff\n";
  mill_.Person().Choose("Importar", Write("preços de março.csv", content));
  EXPECT_EQ(Ask(content.size()), host::ActResult::kDone);
  ASSERT_TRUE(chosen_.has_value());
  EXPECT_EQ(chosen_->name, "preços de março.csv");
  EXPECT_EQ(chosen_->content, content);
  mill_.Person().Choose("Importar", Write("vazio.csv", ""));
  Ask(10);
  EXPECT_EQ(chosen_->content, "");
}

TEST_F(Files, AreNoneWhenThePersonGivesUp) {
  mill_.Person().Choose("Importar", std::nullopt);
  EXPECT_EQ(Ask(10), host::ActResult::kDone);
  EXPECT_FALSE(chosen_.has_value());
}

TEST_F(Files, TooLargeOrUnreadableAreRefusedInOneSentence) {
  const std::string path = Write("grande.csv", std::string(2 * 1024 * 1024, 'x'));
  mill_.Person().Choose("Importar", path);
  EXPECT_EQ(Ask(1536 * 1024), host::ActResult::kFailed);
  mill_.Person().Choose("Importar", path);
  EXPECT_EQ(Ask(100), host::ActResult::kFailed);
  const std::string missing = (folder_ / "nada.csv").string();
  mill_.Person().Choose("Importar", missing);
  EXPECT_EQ(Ask(100), host::ActResult::kFailed);
  mill_.Person().Choose("Importar", folder_.string());
  EXPECT_EQ(Ask(100), host::ActResult::kFailed);
  EXPECT_FALSE(chosen_.has_value());
  EXPECT_EQ(mill_.Person().TakeErrors(),
            (std::vector<std::string>{"O arquivo \"" + path + "\" tem mais de 1,5 MB, o máximo aqui.",
                                      "O arquivo \"" + path + "\" tem mais de 100 bytes, o máximo aqui.",
                                      "O arquivo \"" + missing + "\" não pôde ser lido.",
                                      "O arquivo \"" + folder_.string() + "\" não pôde ser lido."}));
}

TEST_F(Files, ArePickedWithNothingPending) {
  class Watching : public app::ScriptedPerson {
   public:
    std::optional<std::string> AskFile(const app::FileQuestion& question) override {
      asked = question.title + "|" + question.kind + (question.save ? "|save" : "|open");
      if (meanwhile) meanwhile();
      return std::nullopt;
    }
    std::string asked;
    std::function<void()> meanwhile;
  } person;
  test::Mill::Options options;
  options.database = mill_.Path();
  options.person = &person;
  test::Mill station(options);
  host::Screen& screen = station.Open("TfmTiny");
  std::int64_t seen = -1;
  person.meanwhile = [&] { seen = Durable("F"); };
  Act(screen).OnClick = [&] {
    const auto query = station.App().GetTabela().IBDatabase().NewQuery();
    query->SQL.Add("INSERT INTO CADCOR_001 (COR) VALUES ('F')");
    query->ExecSQL();
    screen.GetHost().GetDialogs().ChooseFile("Importar preços", "CSV (*.csv)", 10);
  };
  EXPECT_EQ(station.Click(screen, "BtnAgir"), host::ActResult::kDone);
  EXPECT_EQ(person.asked, "Importar preços|CSV (*.csv)|open");
  EXPECT_EQ(seen, 1);
}

// --- rights ---------------------------------------------------------------------------------------------------------

TEST_F(Program, TellsQuietlyWhichRightAButtonLacks) {
  host::Screen& screen = Tiny();
  host::Button& button = Act(screen);
  EXPECT_FALSE(mill_.App().Lacks(button));
  button.Right = host::NeededRight{"E"};
  EXPECT_FALSE(mill_.App().Lacks(button));  // the administrator

  mill_.Exec("INSERT INTO TEC_USUARIO (CODIGO, NOME, ATIVO, ADMINISTRADOR) VALUES ('ANA', 'Ana', 'S', 'N')");
  test::Mill::Options options;
  options.database = mill_.Path();
  options.user = "ANA";
  test::Mill station(options);
  host::Button& hers = Act(station.Open("TfmTiny"));
  EXPECT_FALSE(station.App().Lacks(hers));
  hers.Right = host::NeededRight{"E"};
  EXPECT_TRUE(station.App().Lacks(hers));
  EXPECT_TRUE(hers.Enabled());
  EXPECT_TRUE(station.Messages().empty());
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM TEC_LOG").AsInteger(), 0);
  mill_.Exec("INSERT INTO TEC_DIREITO (USUARIO, TELA, OPERACAO) VALUES ('ANA', 'TfmTiny', 'A')");
  EXPECT_TRUE(station.App().Lacks(hers));
  mill_.Exec("INSERT INTO TEC_DIREITO (USUARIO, TELA, OPERACAO) VALUES ('ANA', 'TfmTiny', 'E')");
  EXPECT_FALSE(station.App().Lacks(hers));
}

TEST_F(Program, AnErrorUndoesTheActionAndIsTold) {
  host::Screen& screen = Tiny();
  Act(screen).OnClick = [&] {
    Write("E");
    throw host::InputError("Não deu certo.");
  };
  EXPECT_EQ(mill_.Click(screen, "BtnAgir"), host::ActResult::kFailed);
  EXPECT_EQ(mill_.Person().TakeErrors(), std::vector<std::string>{"Não deu certo."});
  EXPECT_EQ(Durable("E"), 0);
}

TEST_F(Program, EveryKindOfErrorIsOneSentence) {
  host::Screen& screen = Tiny();
  Act(screen).OnClick = [] { throw std::runtime_error("stack of cards"); };
  mill_.Click(screen, "BtnAgir");
  Act(screen).OnClick = [&] { Write("01"); };
  mill_.Click(screen, "BtnAgir");
  const auto errors = mill_.Person().TakeErrors();
  ASSERT_EQ(errors.size(), 2u);
  EXPECT_EQ(errors[0], "Erro inesperado do programa: stack of cards");
  for (const auto& error : errors) EXPECT_EQ(error.find('\n'), std::string::npos) << error;
}

TEST_F(Program, AnAbortIsSilentAndUndoesWhatWasNotAskedFor) {
  host::Screen& screen = Tiny();
  Act(screen).OnClick = [&] {
    Write("K");
    screen.GetHost().GetTabela().IBDatabase().CommitRetaining();
    Write("L");
    throw host::Abort();
  };
  EXPECT_EQ(mill_.Click(screen, "BtnAgir"), host::ActResult::kRefused);
  EXPECT_TRUE(mill_.Messages().empty());
  EXPECT_EQ(Durable("K"), 1);
  EXPECT_EQ(Durable("L"), 0);
}

// --- lookups
// ------------------------------------------------------------------------------------------------------------

TEST_F(Program, ALookupOffersTheTable) {
  host::Screen& screen = Tiny();
  mill_.Person().Pick("PqCor", "02");
  EXPECT_EQ(mill_.Desk().OpenLookup(Lookup(screen)), host::ActResult::kDone);
  EXPECT_EQ(Lookup(screen).RetornoPesquisa("descricao").AsText(), "Azul-marinho");
}

TEST_F(Program, ALookupKeepsToItsFilter) {
  host::Screen& screen = Tiny();
  Lookup(screen).SetFilter("COR = '01' OR COR = '03'");
  mill_.Person().Pick("PqCor", "02");
  mill_.Desk().OpenLookup(Lookup(screen));
  EXPECT_TRUE(Lookup(screen).RetornoPesquisa("COR").IsNull());
  mill_.Person().Pick("PqCor", "03");
  mill_.Desk().OpenLookup(Lookup(screen));
  EXPECT_EQ(Lookup(screen).RetornoPesquisa("COR").AsText(), "03");
}

TEST_F(Program, ALookupTakesAWholeStatement) {
  host::Screen& screen = Tiny();
  Lookup(screen).SetStatement("SELECT CODIGO AS COR, DESCRICAO FROM MATERIAL_001 WHERE CODIGO LIKE 'Y%'");
  mill_.Person().Pick("PqCor", "Y2");
  mill_.Desk().OpenLookup(Lookup(screen));
  EXPECT_EQ(Lookup(screen).RetornoPesquisa("DESCRICAO").AsText(), "Fio 24/1 poliéster");
}

TEST_F(Program, AWrongLookupIsToldAndNothingIsPicked) {
  host::Screen& screen = Tiny();
  Lookup(screen).SetFilter("NADA = 1");
  mill_.Person().Pick("PqCor", "01");
  EXPECT_EQ(mill_.Desk().OpenLookup(Lookup(screen)), host::ActResult::kFailed);
  EXPECT_EQ(mill_.Person().TakeErrors().size(), 1u);
  EXPECT_TRUE(Lookup(screen).RetornoPesquisa("COR").IsNull());
}

// --- screens
// ------------------------------------------------------------------------------------------------------------

TEST_F(Program, TextsThatCannotBeStoredAreRefusedAsTheyAreTyped) {
  host::Screen& screen = Tiny();
  EXPECT_EQ(mill_.Type(screen, "EdtTexto", "Ω"), host::ActResult::kRefused);
  const auto messages = mill_.Messages();
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_NE(messages[0].find("U+03A9"), std::string::npos);
  EXPECT_EQ(mill_.Text(screen, "EdtTexto"), "");
}

TEST_F(Program, UnknownScreensAreTold) {
  EXPECT_EQ(mill_.Desk().Open("TfmNada"), nullptr);
  EXPECT_EQ(mill_.Person().TakeErrors().size(), 1u);
}

// --- the start
// ----------------------------------------------------------------------------------------------------------

class Start : public testing::Test {
 protected:
  std::string Refusal(const std::string& database, const std::string& user = "ADMIN") {
    app::ApplicationOptions options;
    options.connect.database = database;
    options.user = user;
    options.settings_file = (folder_ / "settings").string();
    try {
      app::Application::Start(options, test::ModuleUnderTest(), person_);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "";
  }
  std::filesystem::path folder_ = TECELAGEM_BINARY_DIR;
  app::ScriptedPerson person_;
};

TEST_F(Start, NeedsAKnownActiveUser) {
  const std::string path = test::FreshDatabase();
  EXPECT_EQ(Refusal(path), "");
  EXPECT_EQ(Refusal(path, "NINGUEM"), "Usuário \"NINGUEM\" não cadastrado.");
  {
    test::Mill::Options options;
    options.database = path;
    test::Mill mill(options);
    mill.Insert("TEC_USUARIO", {{"CODIGO", "ANA"}, {"NOME", "Ana"}, {"ATIVO", "N"}});
  }
  EXPECT_EQ(Refusal(path, "ANA"), "Usuário \"ANA\" inativo.");
  test::RemoveDatabase(path);
}

TEST_F(Start, NeedsADatabase) {
  EXPECT_NE(Refusal((folder_ / "missing.fdb").string()), "");
  const auto text = folder_ / "text.fdb";
  std::ofstream(text) << "not a database";
  EXPECT_NE(Refusal(text.string()), "");
  std::filesystem::remove(text);
}

}  // namespace
