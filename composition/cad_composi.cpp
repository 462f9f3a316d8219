// Life of the composition screen: its parts put together, loading and storing, and the inputs above the grid.
#include "composition/cad_composi.h"

#include <array>

#include "composition/consumption.h"
#include "host/decimal.h"
#include "host/errors.h"
#include "host/kit/busy.h"
#include "host/kit/described_code.h"
#include "host/text.h"
#include "weaving/audit.h"
#include "weaving/yarn_colour.h"

namespace composition {
namespace {

constexpr const char* kClassName = "TFmCadComposi";
constexpr const char* kUnknownFabric = "Material não encontrado.";

void ShowNumber(host::Edit& edit, const host::Value& value) {
  if (value.IsNull()) {
    edit.Clear();
  } else {
    edit.SetNumber(value.AsFloat());
  }
}

}  // namespace

TFmCadComposi::TFmCadComposi(host::Host& host)
    : Screen(host, kClassName, "fmCadComposi", "Cadastro de Composição"),
      PcComposi(*this, "PcComposi", {"Manutenção"}),
      EdtCodMat(*this, "EdtCodMat", "Material", host::EditKind::kText, 15),
      LblCodMat(*this, "LblCodMat"),
      edtCodCliente(*this, "edtCodCliente", "Cliente", host::EditKind::kText, 6),
      LblCodCliente(*this, "LblCodCliente"),
      EdtLargura(*this, "EdtLargura", "Largura", host::EditKind::kNumber),
      EdtGramatura(*this, "EdtGramatura", "Gramatura", host::EditKind::kNumber),
      EdtDiametro(*this, "EdtDiametro", "Diâmetro", host::EditKind::kNumber),
      EdtFinura(*this, "EdtFinura", "Finura", host::EditKind::kNumber),
      EdtKgRolo(*this, "EdtKgRolo", "KG Rolo", host::EditKind::kNumber),
      EdtAgulhas(*this, "EdtAgulhas", "Nr de Agulhas", host::EditKind::kNumber),
      EdtDesperdicio(*this, "EdtDesperdicio", "Fator Malharia", host::EditKind::kNumber),
      EdtRPM(*this, "EdtRPM", "RPM", host::EditKind::kNumber),
      LblConsumo(*this, "LblConsumo", "Consumo = ( ( LFA * 0.59 * ROCA ) / ( NE Malha * 100 ) )"),
      TbComposi(*this, "TbComposi"),
      GrdComposi(*this, "GrdComposi", TbComposi, {}),
      btnGravar(*this, "btnGravar", "&Gravar"),
      BtnFechar(*this, "BtnFechar", "Fechar"),
      ppManutencao(*this, "ppManutencao"),
      PqCodMat(*this, "PqCodMat", "MATERIAL", "CODIGO"),
      PqCliente(*this, "PqCliente", "ENTIDADE", "CODCLI"),
      pqMat(*this, "pqMat", "MATERIAL", "CODIGO"),
      PqRegra(*this, "PqRegra", "TNG_REGRA", "CODIGO"),
      PqCor(*this, "PqCor", "CADCOR", "COR"),
      pqMatLocaliza(*this, "pqMatLocaliza", "CADCOR", "COR"),
      store_(host) {
  PcComposi.Place(0, {&EdtCodMat, &LblCodMat, &edtCodCliente, &LblCodCliente, &EdtLargura, &EdtGramatura, &EdtDiametro,
                      &EdtFinura, &EdtKgRolo, &EdtAgulhas, &EdtDesperdicio, &EdtRPM, &LblConsumo, &GrdComposi});
  WireInputs();
  WireGrid();
}

void TFmCadComposi::WireInputs() {
  EdtCodMat.OnExit = [this] { EdtCodMatExit(); };
  EdtCodMat.OnChange = [this] { EdtCodMatChange(); };
  EdtCodMat.Lookup = &PqCodMat;
  PqCodMat.OnFechaPesquisa = [this] {
    EdtCodMat.SetText(PqCodMat.RetornoPesquisa("CODIGO").AsText());
    // The fabric is loaded when the person leaves its code, wherever the lookup was opened from.
    EdtCodMat.SetFocus();
  };

  edtCodCliente.OnExit = [this] { edtCodClienteExit(); };
  edtCodCliente.OnChange = [this] { edtCodClienteChange(); };
  host::ServeInput(edtCodCliente, PqCliente);

  const std::array<host::Edit*, 8> header = {&EdtLargura, &EdtGramatura, &EdtDiametro,    &EdtFinura,
                                             &EdtKgRolo,  &EdtAgulhas,   &EdtDesperdicio, &EdtRPM};
  for (host::Edit* edit : header) edit->OnChange = [this] { changed_ = true; };

  btnGravar.OnClick = [this] { btnGravarClick(); };
  BtnFechar.OnClick = [this] { Close(); };
}

void TFmCadComposi::WireGrid() {
  GrdComposi.OnKeyDown = [this](host::Key key) { DBGridKeyDown(key); };
  GrdComposi.Popup = &ppManutencao;
  ppManutencao.OnPopup = [this] { ppManutencaoPopup(); };
  ppManutencao.Add("LocalizarCor1", "Localizar Cor", [this] { LocalizarCor1Click(); });
  pqMat.OnFechaPesquisa = [this] { pqMatFechaPesquisa(); };
  PqRegra.OnFechaPesquisa = [this] { PqRegraFechaPesquisa(); };
  PqCor.OnFechaPesquisa = [this] { PqCorFechaPesquisa(); };
  pqMatLocaliza.OnFechaPesquisa = [this] { pqMatLocalizaFechaPesquisa(); };
  // A yarn added by hand goes below the others until it is given another place.
  TbComposi.AfterInsert = [this] { TbComposi["Ordem"].Set(static_cast<int>(TbComposi.RecordCount()) + 1); };
  TbComposi.AfterPost = [this] { changed_ = true; };
  TbComposi.BeforeDelete = [this] { changed_ = true; };
}

void TFmCadComposi::FormCreate() { GetHost().GetTabela().AbreTabela("tbMateriais", *this); }

void TFmCadComposi::FormClose() { GetHost().GetTabela().FechaTabela("tbMateriais", *this); }

bool TFmCadComposi::HasUnsavedWork() const { return changed_ || TbComposi.InEdit(); }

// --- loading ------------------------------------------------------------------------------------------------------

std::vector<FabricColour> TFmCadComposi::BuscaCores() { return ReadColours(*store_.Colours(EdtCodMat.Text())); }

void TFmCadComposi::CriaTabela(const std::vector<FabricColour>& colours) {
  TbComposi.Close();
  colours_ = colours;
  TbComposi.CreateFields(GridFields(colours_));
  GrdComposi.SetColumns(GridColumns(colours_));
}

void TFmCadComposi::BuscaDados(std::string_view fabric) {
  const host::Busy busy(*this);
  // Another person's save deletes the rows and inserts them anew: read just then, some would be missing here and, once
  // stored, everywhere.
  store_.Hold(fabric);
  const std::vector<FabricColour> colours = BuscaCores();
  const auto rows = store_.Load(fabric);

  CriaTabela(colours);
  ShowHeader(*rows);
  for (; !rows->Eof(); rows->Next()) AddStoredRow(*rows);
  TbComposi.SetIndex("Ordem;Codigo");
  TbComposi.First();
  changed_ = false;
}

void TFmCadComposi::ShowHeader(const host::TTIQuery& first_row) {
  const bool stored = !first_row.Eof();
  const auto show = [&](host::Edit& edit, std::string_view column) {
    ShowNumber(edit, stored ? first_row.FieldByName(column) : host::Value());
  };
  show(EdtLargura, "LARGURA");
  show(EdtGramatura, "GRAMATURA");
  show(EdtDiametro, "DIAMETRO");
  show(EdtFinura, "FINURA");
  show(EdtKgRolo, "KG_ROLO");
  // A fabric without composition is mostly knitted on the machine of the one before.
  if (stored) show(EdtAgulhas, "ALIMENTADORES");
  show(EdtDesperdicio, "DESPERDICIO");
  show(EdtRPM, "RPM");
}

void TFmCadComposi::AddStoredRow(const host::TTIQuery& row) {
  const host::Value& yarn = row.FieldByName("CODIGO");
  const host::Value& position = row.FieldByName("ORDEM");
  if (TbComposi.Locate("Codigo;Ordem", {yarn, position})) {
    TbComposi.Edit();
  } else {
    TbComposi.Append();
  }
  TbComposi["Ordem"].Set(position);
  TbComposi["Codigo"].Set(yarn);
  TbComposi["Descricao"].Set(row.FieldByName("DESCRICAO"));
  TbComposi["Custo"].Set(row.FieldByName("CUSTO"));
  TbComposi["LFA"].Set(row.FieldByName("LFA"));
  TbComposi["ROCA"].Set(row.FieldByName("ROCA"));
  TbComposi["Perc"].Set(row.FieldByName("PERC"));
  TbComposi["NE"].Set(row.FieldByName("NE"));
  SetConsumption(TbComposi);
  TbComposi["Milimetros"].Set(row.FieldByName("COMP_PONTO"));
  TbComposi["Tensao"].Set(row.FieldByName("TENSAO"));
  TbComposi["Regra"].Set(row.FieldByName("REGRA"));
  TbComposi["Desc_Regra"].Set(row.FieldByName("DESC_REGRA"));

  std::string code = row.FieldByName("COR").AsText();
  if (code.empty()) code = "0";
  if (const FabricColour* colour = FindColour(colours_, code)) {
    TbComposi[colour->field].Set(row.FieldByName("COR_I"));
  }
  TbComposi.Post();
}

// --- storing ------------------------------------------------------------------------------------------------------

void TFmCadComposi::Calcula_Comp(std::string_view /*fabric*/) {
  if (!IsNearlyWhole(Recalculate(TbComposi))) Inform("Composição dos Materiais <> 100%.");
}

void TFmCadComposi::AskToRecalculate() {
  if (!HasKnittingData(TbComposi)) {
    Inform("Composição dos Materiais <> 100%. Verifique.");
    return;
  }
  if (!Confirm("Composição incorreta. Deseja recalcular?")) return;
  try {
    Calcula_Comp(EdtCodMat.Text());
  } catch (const host::Abort&) {
    throw;
  } catch (const std::exception&) {
    if (TbComposi.InEdit()) TbComposi.Cancel();
    Inform("Problemas no cálculo, verifique os dados.");
  }
}

void TFmCadComposi::btnGravarClick() {
  if (!Services().Acessa(kClassName, "A", "0")) return;
  if (!grid_is_of_fabric_) {
    EdtCodMatExit();
    if (EdtCodMat.Text().empty()) Inform(kUnknownFabric);
    if (!grid_is_of_fabric_) return;
  }
  TbComposi.Post();
  DropBlankRows();
  if (!IsWhole(SumOfPercentages(TbComposi))) AskToRecalculate();
  GravaDados();
  EdtCodMat.SetFocus();
  try {
    BuscaDados(EdtCodMat.Text());
  } catch (const std::exception& error) {
    Inform(std::string("A composição foi gravada, mas não pôde ser carregada novamente.\n") + error.what());
  }
  for (host::Edit* edit :
       {&EdtLargura, &EdtGramatura, &EdtDiametro, &EdtFinura, &EdtKgRolo, &EdtDesperdicio, &EdtRPM}) {
    edit->Clear();
  }
  TbComposi.Empty();
  // The empty grid is nobody's composition: the fabric has to be loaded again before it may be stored again.
  grid_is_of_fabric_ = false;
  changed_ = false;
}

// A row that was appended by going down from the last one and never typed into is no yarn.
void TFmCadComposi::DropBlankRows() {
  for (TbComposi.First(); !TbComposi.Eof();) {
    if (IsBlank(TbComposi)) {
      TbComposi.Delete();
    } else {
      TbComposi.Next();
    }
  }
}

void TFmCadComposi::GravaDados() {
  const std::string fabric = EdtCodMat.Text();
  // Two people storing the same fabric take turns, or both would delete the old rows and both sets would stay.
  store_.Hold(fabric);

  const bool stored = store_.Exists(fabric);
  Services().GeraLog(weaving::kCompositionSubject,
                     std::string(stored ? "ALTERACAO" : "INCLUSAO") + " DA COMPOSICAO DO MATERIAL " + fabric +
                         " DO CLIENTE " + edtCodCliente.Text(),
                     stored ? host::LogOperation::kAlteration : host::LogOperation::kInclusion, fabric, nullptr);

  store_.Delete(fabric);
  const auto insert = store_.NewRows();
  std::size_t elements = 0;
  for (TbComposi.First(); !TbComposi.Eof(); TbComposi.Next()) {
    for (const FabricColour& colour : colours_) SetBatchElement(*insert, elements++, colour);
  }
  if (elements > 0) insert->ExecBatch(elements);
  // The screen empties itself next: what a failing commit undoes must still be on it.
  Connection().MakeDurable();
}

void TFmCadComposi::SetBatchElement(host::TTIQuery& insert, std::size_t element, const FabricColour& colour) {
  const auto set = [&](std::string_view name, const host::Value& value) { insert.SetParam(element, name, value); };
  // Numbers that nobody typed are stored as 0.
  const auto number = [&](std::string_view field) { return TbComposi[field].AsFloat(); };
  set("MATERIAL", EdtCodMat.Text());
  set("CODIGO", TbComposi["Codigo"].AsText());
  set("ORDEM", static_cast<int>(TbComposi.RecNo()));
  set("LFA", number("LFA"));
  set("ROCA", number("ROCA"));
  set("COMP_PONTO", number("Milimetros"));
  set("TENSAO", number("Tensao"));
  set("LARGURA", EdtLargura.Number());
  set("GRAMATURA", EdtGramatura.Number());
  set("DIAMETRO", EdtDiametro.Number());
  set("FINURA", EdtFinura.Number());
  set("KG_ROLO", EdtKgRolo.Number());
  set("ALIMENTADORES", EdtAgulhas.Number());
  set("PERC", number("Perc"));
  set("COR", colour.code);
  const std::string yarn_colour = TbComposi[colour.field].AsText();
  set("COR_I", host::Trim(yarn_colour).empty() ? std::string(weaving::kNoYarnColour) : yarn_colour);
  set("DESPERDICIO", EdtDesperdicio.Number());
  set("RPM", host::RoundTo(EdtRPM.Number(), 0));
  set("REGRA", TbComposi["Regra"].AsText());
}

// --- header inputs ------------------------------------------------------------------------------------------------

void TFmCadComposi::EdtCodMatExit() {
  grid_is_of_fabric_ = false;
  const std::string fabric = EdtCodMat.Text();
  if (fabric.empty()) return;
  host::Funcoes& funcoes = Services();
  if (!funcoes.Existe("MATERIAL", "CODIGO", funcoes.Aspas(fabric), Connection())) {
    Inform(kUnknownFabric);
    return;
  }
  BuscaDados(fabric);
  grid_is_of_fabric_ = true;
}

void TFmCadComposi::EdtCodMatChange() {
  grid_is_of_fabric_ = false;
  host::ShowDescription(EdtCodMat, LblCodMat, {"MATERIAL", "CODIGO", "DESCRICAO"});
}

void TFmCadComposi::edtCodClienteChange() {
  host::ShowDescription(edtCodCliente, LblCodCliente, {"ENTIDADE", "CODCLI", "NOME"});
}

void TFmCadComposi::edtCodClienteExit() {
  const std::string& client = edtCodCliente.Text();
  host::Funcoes& funcoes = Services();
  if (!client.empty() && !funcoes.Existe("ENTIDADE", "CODCLI", funcoes.Aspas(client), Connection())) {
    Inform("Cliente não Existe.");
    return;
  }
  const std::string filter = client.empty() ? std::string() : "CODCLI = " + funcoes.Aspas(client);
  PqCodMat.SetFilter(filter);
  pqMat.SetFilter(filter);
}

}  // namespace composition
