// The write-off screen: its components and lists, the order that it loads, what the grid of items does.
#include "writeoff/mov_bai_tec.h"

#include <utility>
#include <vector>

#include "host/decimal.h"
#include "host/errors.h"
#include "host/kit/columns.h"
#include "host/kit/described_code.h"
#include "host/restored.h"
#include "host/text.h"
#include "weaving/expected_rolls.h"
#include "weaving/parameters.h"
#include "weaving/stock_lot.h"
#include "writeoff/employee.h"
#include "writeoff/order_queries.h"

namespace writeoff {
namespace {

using host::EditKind;
using host::FieldDef;
using host::FieldType;

std::vector<FieldDef> ItemFields() {
  return {{"Codigo", FieldType::kText, 15, {}, "Código"},
          {"Descricao", FieldType::kText, 50, {}, "Descrição"},
          {"Unidade", FieldType::kText, 3},
          {"Pedido", FieldType::kText, 12},
          {"Cor", FieldType::kText, 6},
          {"Qtde", FieldType::kFloat, 0, "0.000"},
          {"Qtde_B", FieldType::kFloat, 0, "0.000"},
          {"Baixada", FieldType::kText, 1},
          {"Peso_Uni", FieldType::kFloat, 0, "0.000"},
          {"KgRolo", FieldType::kFloat, 0, "0.000"},
          {"Qtde_Rolo", FieldType::kInteger},
          {"Desc_Cor", FieldType::kText, 80},
          {"Qtde_Rolo_B", FieldType::kInteger},
          {"Tara", FieldType::kFloat, 0, "0.00"}};
}

std::vector<FieldDef> RollFields() {
  return {{"Ordem", FieldType::kInteger},
          {"Dt_Lan", FieldType::kDate},
          {"Codigo"},
          {"Descricao"},
          {"Cor"},
          {"Qtde", FieldType::kFloat, 0, "0.000"},
          {"Qtde_R", FieldType::kFloat, 0, "0"},
          {"NF_Ret"},
          {"NF_Cob"},
          {"Deposito"},
          {"Turno"},
          {"Lote"},
          {"Local"},
          {"Funcionario"},
          {"Nome"},
          {"Pedido"},
          {"Maquina"},
          {"Desc_Maquina"},
          {"Observacao"},
          {"Ficha"}};
}

std::vector<FieldDef> RememberedFields() {
  return {{"Codigo", FieldType::kText, 15},
          {"Cor", FieldType::kText, 6},
          {"Lote", FieldType::kText, weaving::kLotWidth},
          {"Deposito", FieldType::kText, 6}};
}

std::vector<host::GridColumn> ItemColumns() {
  return {host::ShownColumn("Codigo", "Código", 15),
          host::ShownColumn("Descricao", "Descrição", 32),
          host::ShownColumn("Cor", "Cor", 6),
          host::ShownColumn("Desc_Cor", "Desc. Cor", 18),
          host::ShownColumn("Unidade", "Un.", 4),
          host::QuantityColumn("Qtde", "Qtde", 11),
          host::QuantityColumn("Qtde_B", "Qtde Baixada", 13),
          host::TickedColumn("Baixada", "Encerrado", 10),
          host::QuantityColumn("Qtde_Rolo", "Rolos", 7),
          host::QuantityColumn("Qtde_Rolo_B", "Rolos Baixados", 14),
          host::NumberColumn("KgRolo", "Kg Rolo", 9),
          host::NumberColumn("Tara", "Tara", 7),
          host::ShownColumn("Pedido", "Pedido", 12)};
}

std::vector<host::GridColumn> RollColumns() {
  return {host::NumberColumn("Ordem", "Ord.", 5),
          host::ShownColumn("Dt_Lan", "Data", 11),
          host::ShownColumn("Codigo", "Codigo", 15),
          host::ShownColumn("Descricao", "Descrição do Material", 32),
          host::ShownColumn("Cor", "Cor", 6),
          host::QuantityColumn("Qtde", "Qtde", 11),
          host::QuantityColumn("Qtde_R", "Qtde_Rolo", 10),
          host::ShownColumn("NF_Ret", "Nota Retorno", 13),
          host::ShownColumn("NF_Cob", "Nota Cobrança", 14),
          host::ShownColumn("Deposito", "Deposito", 9),
          host::ShownColumn("Turno", "Turno", 6),
          host::ShownColumn("Lote", "Lote", 15),
          host::ShownColumn("Local", "Local", 16),
          host::ShownColumn("Nome", "Responsável", 22),
          host::ShownColumn("Pedido", "Pedido", 12),
          host::ShownColumn("Maquina", "Máquina", 8),
          host::ShownColumn("Desc_Maquina", "Desc. Máquina", 22)};
}

}  // namespace

TfmMovBaiTec::TfmMovBaiTec(host::Host& host)
    : Screen(host, "TfmMovBaiTec", "fmMovBaiTec", "Baixa de Ordem de Tecelagem"),
      TbItens(*this, "TbItens", ItemFields()),
      TbRolos(*this, "TbRolos", RollFields()),
      TbBaixas(*this, "TbBaixas", RememberedFields()),
      QryDefeitos(*this, "QryDefeitos"),
      QryEtiqueta(*this, "QryEtiqueta"),
      EdtLote(*this, "EdtLote", "Lote", EditKind::kText, 6),
      PqLote(*this, "PqLote", "TECEL", "NUMERO"),
      EdtFornecedor(*this, "EdtFornecedor", "Fornecedor", EditKind::kText, 6),
      LblFornecedor(*this, "LblFornecedor"),
      EdtData(*this, "EdtData", "Data Baixa", EditKind::kDate),
      EdtDeposito(*this, "EdtDeposito", "Depósito Entrada", EditKind::kText, 6),
      LblDeposito(*this, "LblDeposito"),
      PqDeposito(*this, "PqDeposito", "DEPOSITO", "CODIGO"),
      EdtNFRet(*this, "EdtNFRet", "NF Retorno", EditKind::kText, 6),
      EdtNFCob(*this, "EdtNFCob", "NF Cobrança", EditKind::kText, 6),
      EdtLocal(*this, "EdtLocal", "Local", EditKind::kText, 100),
      EdtTurno(*this, "EdtTurno", "Turno", EditKind::kText, 2),
      EdtFunc(*this, "EdtFunc", "Responsável", EditKind::kText, 5),
      LblFunc(*this, "LblFunc"),
      PqFunc(*this, "PqFunc", "PESSOAL", "CODIGO"),
      EdtMaquina(*this, "EdtMaquina", "Máquina", EditKind::kText, 6),
      LblMaquina(*this, "LblMaquina"),
      PqMaquina(*this, "PqMaquina", "MAQUINA", "MAQUINA"),
      EdtCodigo(*this, "EdtCodigo", "Código", EditKind::kText, 15),
      LblCodigo(*this, "LblCodigo"),
      EdtCor(*this, "EdtCor", "Cor", EditKind::kText, 6),
      CbBarra(*this, "CbBarra", "Código de Barras"),
      EdtBarra(*this, "EdtBarra", "Código de Barras", EditKind::kText, 30),
      EdtQtde(*this, "EdtQtde", "Quantidade", EditKind::kNumber, 0, " 0.000"),
      EdtPecas(*this, "EdtPecas", "Peças", EditKind::kNumber, 0, "0"),
      EdtTara(*this, "EdtTara", "Tara", EditKind::kNumber, 0, "0.00"),
      LblCaptura(*this, "LblCaptura", "F5 - Captura Peso"),
      BtnConfirma(*this, "BtnConfirma", "Confirmar", [this] { BtnConfirmaClick(); }),
      BtnDefeitos(*this, "BtnDefeitos", "&Defeitos", [this] { BtnDefeitosClick(); }),
      BtnExtorna(*this, "BtnExtorna", "&Estornar", [this] { BtnExtornaClick(); }),
      CbImpressao(*this, "CbImpressao", "Impressão", {"Windows", "Texto"}),
      BtnFechar(*this, "BtnFechar", "&Fechar", [this] { Close(); }),
      GrdItens(*this, "GrdItens", TbItens, ItemColumns()),
      GrdRolos(*this, "GrdRolos", TbRolos, RollColumns()),
      PopItens(*this, "PopItens"),
      PopQtde(*this, "PopQtde"),
      PopRolos(*this, "PopRolos"),
      RvEtiqueta(*this, "RvEtiqueta"),
      prTxReport(*this, "prTxReport"),
      closing_(host),
      record_(host),
      scale_(*this) {
  for (host::Edit* shown : {&EdtFornecedor, &EdtCodigo, &EdtCor}) shown->SetReadOnly(true);
  EdtBarra.SetVisible(false);
  GrdRolos.SetReadOnly(true);
  GrdItens.Popup = &PopItens;
  EdtQtde.Popup = &PopQtde;
  GrdRolos.Popup = &PopRolos;
  // The caption has no letter to press, and whoever stands at the scale wears gloves.
  BtnConfirma.Shortcut = host::Key::kF8;
  WireEvents();
  WireLookups();
}

void TfmMovBaiTec::WireEvents() {
  EdtLote.OnExit = [this] { BuscaDados(false); };
  EdtFunc.OnExit = [this] { EdtFuncExit(); };
  EdtDeposito.OnExit = [this] { LblDeposito.SetText(DescriptionOf("DEPOSITO", "CODIGO", EdtDeposito.Text())); };
  EdtMaquina.OnExit = [this] { LblMaquina.SetText(DescriptionOf("MAQUINA", "MAQUINA", EdtMaquina.Text())); };
  CbBarra.OnClick = [this] { CbBarraClick(); };
  EdtBarra.OnExit = [this] { EdtBarraExit(); };
  scale_.OnWeight = [this](const Weighing& weighing) { TakeWeight(weighing); };
  scale_.OnTrouble = [this](const std::string& text) { Reject(text, nullptr); };

  TbItens.AfterScroll = [this] {
    if (!loading_) TbItensAfterScroll();
  };
  TbItens["Baixada"].OnChange = [this](host::Field&) {
    if (!loading_) TbItensBaixadaChange();
  };
  // Items come and go in the order, not here.
  TbItens.AfterInsert = [this] {
    if (loading_) return;
    TbItens.Cancel();
    throw host::Abort();
  };
  TbItens.BeforeDelete = [] { throw host::Abort(); };
  GrdItens.OnClick = [this] { ShowItem(); };
  GrdItens.OnDblClick = [this] { wwDBGrid1DblClick(); };
  PopItens.Add("ConsiderarReserva", "Considerar Reserva como baixada", [this] { ConsiderarReservaComoBaixadaClick(); });
  PopQtde.Add("CalcularMetros1", "Conversão de unidade", [this] { CalcularMetros1Click(); });
  PopRolos.Add("ImprimirEtiqueta1", "Imprimir Etiqueta", [this] { ImprimirEtiqueta1Click(); });
  for (host::Report* report : {&RvEtiqueta, &prTxReport}) report->OnUnknownFunction = &prTxReportUnknownFunction;
}

void TfmMovBaiTec::WireLookups() {
  EdtLote.Lookup = &PqLote;
  EdtDeposito.Lookup = &PqDeposito;
  EdtFunc.Lookup = &PqFunc;
  EdtMaquina.Lookup = &PqMaquina;
  PqLote.OnFechaPesquisa = [this] {
    EdtLote.SetText(PqLote.RetornoPesquisa("NUMERO").AsText());
    BuscaDados(false);
  };
  PqDeposito.OnFechaPesquisa = [this] {
    EdtDeposito.SetText(PqDeposito.RetornoPesquisa("CODIGO").AsText());
    LblDeposito.SetText(PqDeposito.RetornoPesquisa("DESCRICAO").AsText());
  };
  PqFunc.OnFechaPesquisa = [this] {
    EdtFunc.SetText(PqFunc.RetornoPesquisa("CODIGO").AsText());
    EdtFuncExit();
  };
  PqMaquina.OnFechaPesquisa = [this] {
    EdtMaquina.SetText(PqMaquina.RetornoPesquisa("MAQUINA").AsText());
    LblMaquina.SetText(PqMaquina.RetornoPesquisa("DESCRICAO").AsText());
  };
}

void TfmMovBaiTec::FormCreate() {
  const weaving::Parameters parameters(Services());
  lot_scheme_ = parameters.LotScheme();
  EdtData.SetDate(GetHost().GetClock().Today());
  CbImpressao.SetSelected(parameters.PrintsText() ? kPlainText : kWindows);
  scale_.Start();
  ShowCapture();
}

bool TfmMovBaiTec::FormKeyDown(host::Key key) {
  if (Site() == nullptr) return false;
  if (key == host::Key::kF5) CapturaPeso();
  if (key == host::Key::kF10) SetUpScale();
  if (key == host::Key::kF5 || key == host::Key::kF10) return true;
  if (key != host::Key::kF6) return false;
  if (Site()->Focused() == &GrdItens) {
    EdtQtde.SetFocus();
  } else {
    GrdItens.SetFocus();
  }
  return true;
}

std::vector<host::KeyHint> TfmMovBaiTec::KeyHints() const {
  std::vector<host::KeyHint> hints = {{host::Key::kF6, "Itens"}, {host::Key::kF10, "Balança"}};
  if (LblCaptura.Enabled()) hints.insert(hints.begin(), {host::Key::kF5, "Captura Peso"});
  return hints;
}

bool TfmMovBaiTec::HasUnsavedWork() const { return Quantity() > 0; }

// --- loading -----------------------------------------------------------------------------------------------------

void TfmMovBaiTec::BuscaDados(bool reload) {
  const std::string order = Order();
  const auto items = ItemsOfOrder(GetHost(), order);
  auto rolls = RollsOfOrder(GetHost(), order);

  if (order != loaded_order_) TbBaixas.Empty();
  loaded_order_ = order;
  if (!reload) ShowHeader(*items);
  ShowItems(*items, reload);
  ShowRolls(std::move(rolls));
}

void TfmMovBaiTec::ShowHeader(host::TTIQuery& order) {
  EdtFornecedor.SetText(order.FieldByName("MALHARIA").AsText());
  LblFornecedor.SetText(order.FieldByName("NOME").AsText());
  if (order.IsEmpty()) return;
  EdtDeposito.SetText(order.FieldByName("DEPOSITO").AsText());
  LblDeposito.SetText(order.FieldByName("DESC_DEP_ENT").AsText());
  EdtMaquina.SetText(order.FieldByName("MAQUINA").AsText());
  LblMaquina.SetText(DescriptionOf("MAQUINA", "MAQUINA", EdtMaquina.Text()));
}

void TfmMovBaiTec::ShowItems(host::TTIQuery& order, bool reload) {
  const std::vector<host::Value> stood_on = {TbItens["Codigo"].Get(), TbItens["Cor"].Get()};
  bool stays = false;
  {
    const host::Restored<bool> loading(loading_, true);
    TbItens.Empty();
    for (; !order.Eof(); order.Next()) AppendItem(order);
    TbItens.First();
    stays = reload && TbItens.Locate("Codigo;Cor", stood_on);
  }
  if (!stays) TbItensAfterScroll();
}

void TfmMovBaiTec::AppendItem(host::TTIQuery& order) {
  if (order.FieldByName("CODIGO").IsNull()) return;
  TbItens.Append();
  for (const char* field : {"Codigo", "Descricao", "Unidade", "Pedido", "Cor", "Qtde", "Qtde_B", "Baixada", "Peso_Uni",
                            "Desc_Cor", "Tara"}) {
    TbItens[field].Set(order.FieldByName(field));
  }
  const double quantity = order.FieldByName("QTDE").AsFloat();
  const double per_roll = order.FieldByName("KG_ROLO").AsFloat();
  TbItens["KgRolo"].Set(per_roll);
  TbItens["Qtde_Rolo"].Set(weaving::ExpectedRolls(quantity, per_roll));
  TbItens["Qtde_Rolo_B"].Set(order.FieldByName("QTDE_R_B").AsFloat());
  TbItens.Post();
}

void TfmMovBaiTec::ShowRolls(std::unique_ptr<host::TTIQuery> rolls) {
  TbRolos.LoadFrom(std::move(rolls));
  TbRolos["QTDE"].SetFormat("0.000");
  TbRolos["QTDE_R"].SetFormat("0");
  GrdRolos.SetColumns(RollColumns());
}

std::string TfmMovBaiTec::DescriptionOf(std::string_view table, std::string_view key, std::string_view code) const {
  return host::DescriptionOf(Services(), {table, key, "DESCRICAO"}, host::Trim(code));
}

void TfmMovBaiTec::EdtFuncExit() {
  const std::string code = host::Trim(EdtFunc.Text());
  LblFunc.SetText("");
  if (code.empty()) return;
  const auto person = EmployeeOf(GetHost(), code);
  if (!person) return;
  LblFunc.SetText(person->name);
  EdtTurno.SetText(person->shift);
}

// --- the item grid -----------------------------------------------------------------------------------------------

void TfmMovBaiTec::ShowItem() {
  EdtCodigo.SetText(TbItens["Codigo"].AsText());
  LblCodigo.SetText(TbItens["Descricao"].AsText());
  EdtCor.SetText(TbItens["Cor"].AsText());
}

void TfmMovBaiTec::TbItensAfterScroll() {
  ShowItem();
  EdtTara.SetNumber(TbItens["Tara"].AsFloat());
}

void TfmMovBaiTec::TbItensBaixadaChange() {
  const std::string flag = TbItens["Baixada"].AsText();
  bool give_up = false;
  try {
    closing_.SetClosed(loaded_order_, TbItens["Codigo"].AsText(), flag);
    give_up =
        flag == "S" && closing_.HasReservations(loaded_order_) && Confirm("Deseja remover as reservas deste lote?");
    Db().MakeDurable();
  } catch (...) {
    TbItens.Cancel();  // the tick must not show what was not written
    throw;
  }
  TbItens.Post();
  if (give_up) closing_.ClearReservations(loaded_order_, true);
}

void TfmMovBaiTec::ConsiderarReservaComoBaixadaClick() {
  if (TbItens.IsEmpty()) return;
  if (!Confirm("Este procedimento irá zerar o saldo da reserva desse item. Deseja continuar?")) return;
  closing_.ClearReservations(loaded_order_, false);
}

void TfmMovBaiTec::wwDBGrid1DblClick() {
  last_net_ = 0;
  EdtQtde.SetNumber(host::WithoutNoise(TbItens["Qtde"].AsFloat() - TbItens["Qtde_B"].AsFloat()));
}

void TfmMovBaiTec::CalcularMetros1Click() {
  const auto typed = GetHost().GetDialogs().InputBox("Conversão de unidade", "Informe a quantidade:", "");
  if (!typed) return;
  const auto number = host::ParseTyped(*typed);
  if (!number || !(*number > 0)) return;
  const double weight =
      Services().Busca_Valor("MATERIAL", "CODIGO", "PESO", Services().Aspas(EdtCodigo.Text()), true, true).AsFloat();
  EdtQtde.SetNumber(host::WithoutNoise(weight * *number));
}

void TfmMovBaiTec::CbBarraClick() {
  EdtBarra.SetVisible(CbBarra.Checked());
  if (!CbBarra.Checked()) EdtBarra.Clear();
  ShowCapture();
}

}  // namespace writeoff
