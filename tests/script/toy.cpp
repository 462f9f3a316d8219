#include "toy.h"

#include <stdexcept>

#include "host/errors.h"
#include "support/row_offer.h"

namespace test {

using host::FieldType;

ToyScreen::ToyScreen(host::Host& host) : host::Screen(host, "TfmBrinquedo", "fmBrinquedo", "Brinquedo") {
  TbItens.CreateFields({{"Codigo", FieldType::kText, 6},
                        {"Qtde", FieldType::kFloat, 0, "0.00"},
                        {"Entrega", FieldType::kDate},
                        {"100", FieldType::kText, 6},
                        {"Escondido", FieldType::kText, 6}});
  GrdItens.SetColumns({{"Codigo"}, {"Qtde"}, {"Entrega"}, {"100"}});
  GrdItens.Popup = &Menu;
  GrdItens.OnDblClick = [this] { Inform("duplo em " + TbItens["Codigo"].AsText()); };
  GrdItens.OnClick = [this] { Inform("clique em " + TbItens["Codigo"].AsText()); };
  GrdItens.OnColExit = [this] {
    if (GrdItens.SelectedField() == "Codigo" && TbItens["Codigo"].AsText() == "X") Refuse("Código X não existe.");
  };
  Menu.Add("MnConta", "Contar &Linhas", [this] { Inform(std::to_string(TbItens.RecordCount()) + " linhas"); });
  EdtNome.OnChange = [this] { LblNome.SetText("nome: " + EdtNome.Text()); };
  EdtNome.OnExit = [this] {
    if (EdtNome.Text() == "ruim") Refuse("Nome inválido.", EdtNome);
  };
  EdtNome.OnKeyDown = [this](host::Key key) {
    if (key == host::Key::kF4) PqNome.Open();
  };
  PqNome.OnFechaPesquisa = [this] { EdtNome.SetText(PqNome.RetornoPesquisa("CODIGO").AsText()); };
  BtnDobra.OnClick = [this] { EdtPeso.SetNumber(EdtPeso.Number() * 2); };
  BtnRecusa.OnClick = [this] { Refuse("Não pode."); };
  BtnFalha.OnClick = [] { throw std::runtime_error("o disco\ncaiu"); };
  BtnPergunta.OnClick = [this] { Inform(Confirm("Deseja excluir tudo?") ? "sim" : "não"); };
  BtnAjuda.OnClick = [this] {
    host::Screen& help = static_cast<host::Desk&>(*Site()).Load("TfmAjuda");
    GetHost().ShowModal(help);
    EdtNome.SetText(static_cast<ToyHelp&>(help).EdtResposta.Text());
    GetHost().Free(help);
  };
  BtnFechado.SetEnabled(false);
  PqPreco.OnFechaPesquisa = [this] {
    EdtNome.SetText(PqPreco.RetornoPesquisa("CODCLI").AsText() + "/" + PqPreco.RetornoPesquisa("COR").AsText());
  };
  BtnNota.OnClick = [this] {
    const auto note = GetHost().GetDialogs().InputBox("Pagamento", "Número da nota:", "", 4);
    Inform(note ? "nota " + *note : "sem nota");
  };
  BtnArquivo.OnClick = [this] {
    const auto file = GetHost().GetDialogs().ChooseFile("Importar preços", "Arquivos CSV (*.csv)", 20);
    Inform(file ? file->name + ": " + file->content : "sem arquivo");
  };
  EdtObs.GoesOnTo = &BtnConfirma;
}

ToyHelp::ToyHelp(host::Host& host) : host::Screen(host, "TfmAjuda", "fmAjuda", "Ajuda") {
  BtnOk.OnClick = [this] { Close(); };
}

ToyApplication::ToyApplication(app::Person& person)
    : person_(person), desk_(std::make_unique<host::Desk>(static_cast<host::DeskEnvironment&>(*this))) {}

ToyApplication::~ToyApplication() = default;

std::unique_ptr<host::Screen> ToyApplication::CreateScreen(std::string_view screen_class) {
  if (screen_class == "TfmBrinquedo") return std::make_unique<ToyScreen>(*this);
  if (screen_class == "TfmAjuda") return std::make_unique<ToyHelp>(*this);
  throw host::InputError("Tela desconhecida: " + std::string(screen_class) + ".");
}

std::optional<host::LookupRow> ToyApplication::ShowLookup(host::TPesquisa& lookup) {
  if (lookup.Name() == "PqPreco") {
    test::RowOffer prices{"CODIGO",
                          {{{"CODIGO", "M1"}, {"CODCLI", "00101"}, {"COR", "0"}},
                           {{"CODIGO", "M1"}, {"CODCLI", "00101"}, {"COR", "02"}},
                           {{"CODIGO", "M1"}, {"CODCLI", "00102"}, {"COR", "0"}}}};
    return person_.PickRow(lookup, prices);
  }
  test::RowOffer offered{"CODIGO", {{{"CODIGO", "0001"}}, {{"CODIGO", "0002"}}}};
  return person_.PickRow(lookup, offered);
}

app::firebird::Database& ToyApplication::GetDatabase() { throw std::logic_error("the toy has no database"); }
void ToyApplication::WriteParameter(std::string_view, int, std::string_view) {
  throw std::logic_error("the toy has no parameters");
}
host::Funcoes& ToyApplication::GetFuncoes() { throw std::logic_error("the toy has no services"); }
host::Tabela& ToyApplication::GetTabela() { throw std::logic_error("the toy has no tables"); }
host::Contabil& ToyApplication::GetContabil() { throw std::logic_error("the toy has no periods"); }
host::UserSettings& ToyApplication::GetUserSettings() { throw std::logic_error("the toy has no settings"); }
std::unique_ptr<host::TEstoque> ToyApplication::NewEstoque() { throw std::logic_error("the toy has no stock"); }
std::unique_ptr<host::SerialPort> ToyApplication::NewSerialPort(host::Screen& /*owner*/) {
  throw std::logic_error("the toy has no scale");
}

app::script::RunResult ToyDesk::Run(std::string_view source, std::chrono::milliseconds timeout) {
  output.str({});
  notes.str({});
  return app::script::Run(application, person, source, {"teste.js", timeout, output, notes});
}

}  // namespace test
