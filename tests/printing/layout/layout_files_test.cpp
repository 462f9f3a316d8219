// Which layout is taken: the installation's, or the program's own.
#include "app/printing/layout/layout_files.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "app/embedded.h"
#include "tests/printing/layout_fixture.h"

namespace {

using app::printing::FindLayout;
using testing::HasSubstr;

class LayoutFiles : public test::LayoutTest {
 protected:
  std::string Failure(const std::string& report, char kind, const std::string& folder) {
    try {
      FindLayout(report, kind, folder);
    } catch (const host::InputError& error) {
      return error.what();
    }
    return {};
  }
};

TEST_F(LayoutFiles, TheProgramsOwnIsTakenWithoutAnother) {
  const auto own = app::LayoutFiles();
  ASSERT_FALSE(own.empty());
  for (const auto& file : own) {
    const std::string name(file.name);
    const bool text = name.ends_with(".text.js");
    const std::string report = name.substr(0, name.size() - (text ? 8 : 3));
    EXPECT_EQ(FindLayout(report, text ? 'T' : 'W', Folder()).text.toStdString(), file.text) << name;
    EXPECT_EQ(FindLayout(report, text ? 'T' : 'W', "").name, name);
    EXPECT_EQ(FindLayout(report, text ? 'T' : 'W', Folder() + "/nowhere").name, name);
  }
}

TEST_F(LayoutFiles, TheInstallationsWinsFileByFile) {
  WriteLayout("WEtqTecRolo.js", "// própria");
  EXPECT_EQ(FindLayout("WEtqTecRolo", 'W', Folder()).text, QStringLiteral("// própria"));
  EXPECT_EQ(FindLayout("WEtqTecRolo", 'T', Folder()).name, "WEtqTecRolo.text.js");
  EXPECT_EQ(FindLayout("WTecLoteCad", 'W', Folder()).name, "WTecLoteCad.js");
}

TEST_F(LayoutFiles, AMistakeInTheInstallationsIsToldWithFileAndLine) {
  WriteLayout("WTecLoteCad.js", "report({\n  body: [paragraf('a')] });");
  try {
    screen_.Print("WTecLoteCad", 'W', Folder());
    ADD_FAILURE() << "printed";
  } catch (const host::InputError& error) {
    EXPECT_EQ(error.what(),
              "Erro no leiaute " + LayoutPath("WTecLoteCad.js") + ", linha 2: a função \"paragraf\" não existe.");
  }
}

TEST_F(LayoutFiles, WithoutALayoutTheReportIsNamed) {
  EXPECT_EQ(Failure("WNada", 'W', Folder()), "Não há leiaute WNada.js para o relatório \"WNada\".");
  EXPECT_EQ(Failure("WNada", 'T', ""), "Não há leiaute WNada.text.js para o relatório \"WNada\".");
}

TEST_F(LayoutFiles, AReportsNameLeadsNowhereElse) {
  EXPECT_EQ(Failure("../WTecLoteCad", 'W', Folder()), "O nome de relatório \"../WTecLoteCad\" não é válido.");
  EXPECT_EQ(Failure("", 'W', Folder()), "O nome de relatório \"\" não é válido.");
}

TEST_F(LayoutFiles, AFolderOfThatNameCannotBeRead) {
  std::filesystem::create_directory(LayoutPath("Teste.js"));
  EXPECT_THAT(Failure("Teste", 'W', Folder()), HasSubstr("Não foi possível ler o leiaute "));
}

}  // namespace
