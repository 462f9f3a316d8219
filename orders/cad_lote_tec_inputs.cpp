// The inputs of the order screen: what happens while a code is typed, when an input is left, and in its lookup.
#include "host/errors.h"
#include "host/kit/busy.h"
#include "host/kit/described_code.h"
#include "orders/cad_lote_tec.h"
#include "weaving/hold.h"

namespace orders {
void TfmCadLoteTec::WireInputs() {
  EdtNumero.OnExit = [this] { EdtNumeroExit(); };
  EdtMalharia.OnExit = [this] { EdtMalhariaExit(); };
  EdtPrazo.OnExit = [this] { EdtPrazoExit(); };
  EdtMaquina.OnExit = [this] { EdtMaquinaExit(); };
  EdtFluxo.OnExit = [this] { EdtFluxoExit(); };
  EdtDeposito.OnExit = [this] { EdtDepositoExit(); };

  EdtMalharia.OnChange = [this] { ShowDescription(EdtMalharia, LblMalharia, "ENTIDADE", "CODCLI", "NOME"); };
  EdtPrazo.OnChange = [this] { ShowDescription(EdtPrazo, LblPrazo, "TABPRZ", "PRAZO", "DESCRICAO"); };
  EdtMaquina.OnChange = [this] { ShowDescription(EdtMaquina, LblMaquina, "MAQUINA", "MAQUINA", "DESCRICAO"); };
  EdtFluxo.OnChange = [this] { ShowDescription(EdtFluxo, LblFluxo, "FLUXOTIN", "CODIGO", "DESCRICAO"); };
  EdtDeposito.OnChange = [this] { ShowDescription(EdtDeposito, LblDeposito, "DEPOSITO", "CODIGO", "DESCRICAO"); };
  for (host::Edit* filter : {&EdtFilDeposito, &EdtFilLote, &EdtFilLocal}) {
    filter->OnChange = [this] {
      if (quiet_ == 0) FiltraEstoqueFios();
    };
  }

  host::ServeInput(EdtNumero, PqNumero);
  host::ServeInput(EdtMalharia, PqMalharia);
  host::ServeInput(EdtPrazo, PqPrazo);
  host::ServeInput(EdtMaquina, PqMaquina);
  host::ServeInput(EdtFluxo, PqFluxo);
  host::ServeInput(EdtDeposito, PqDeposito);
  PqNumero.OnFechaPesquisa = [this] {
    EdtNumero.SetText(PqNumero.RetornoPesquisa("NUMERO").AsText());
    // The order is loaded when the person leaves the number. Without the focus there, a save would put the items of
    // the order on the screen under the number just picked.
    EdtNumero.SetFocus();
  };
  PqMaterial.OnFechaPesquisa = [this] {
    TbItens.Edit();
    TbItens["Codigo"].Set(PqMaterial.RetornoPesquisa("CODIGO"));
  };
  PqCor.OnFechaPesquisa = [this] {
    TbItens.Edit();
    TbItens["Cor"].Set(PqCor.RetornoPesquisa("COR"));
  };
}

void TfmCadLoteTec::ShowDescription(const host::Edit& code, host::Label& label, std::string_view table,
                                    std::string_view key, std::string_view column) {
  if (quiet_ == 0) host::ShowDescription(code, label, {table, key, column});
}

void TfmCadLoteTec::EdtNumeroExit() {
  const host::Busy busy(*this);
  if (EdtNumero.Text().empty()) {
    RequireRight("A");
    StartOrder();
    return;
  }
  ShowStored();
}

// Another station's save deletes the order and inserts it anew. Read just then without a hold on it, the order may not
// be found and be taken for a new one, or come without some of its items.
void TfmCadLoteTec::ShowStored() {
  weaving::HoldOrder(database_, EdtNumero.Text());
  if (store_.Exists(EdtNumero.Text())) {
    BuscaDados();
    return;
  }
  LimpaTela();
  DBGrid6.SetEnabled(true);
  try {
    RequireRight("A");
  } catch (const host::Abort&) {
    EdtNumero.Clear();
    throw;
  }
  watch_.New(EdtNumero.Text());
}

void TfmCadLoteTec::EdtMalhariaExit() {
  if (EdtMalharia.Text().empty()) return;
  switch (fabrics_.StateOf(EdtMalharia.Text())) {
    case MillState::kUnknown:
      Refuse("Cliente não encontrado.", EdtMalharia);
    case MillState::kBarred:
      Refuse("Malharia inativa ou bloqueada. Impossível continuar.", EdtMalharia);
    case MillState::kFree:
      break;
  }
}

void TfmCadLoteTec::RequireKnown(host::Edit& code, std::string_view table, std::string_view key,
                                 std::string_view message) {
  if (code.Text().empty()) return;
  if (!funcoes_.Existe(table, key, funcoes_.Aspas(code.Text()), database_)) Refuse(message, code);
}

void TfmCadLoteTec::EdtPrazoExit() { RequireKnown(EdtPrazo, "TABPRZ", "PRAZO", "Prazo não encontrado."); }

void TfmCadLoteTec::EdtMaquinaExit() { RequireKnown(EdtMaquina, "MAQUINA", "MAQUINA", "Máquina não encontrada."); }

void TfmCadLoteTec::EdtFluxoExit() { RequireKnown(EdtFluxo, "FLUXOTIN", "CODIGO", "Fluxo Inválido."); }

void TfmCadLoteTec::EdtDepositoExit() { RequireKnown(EdtDeposito, "DEPOSITO", "CODIGO", "Depósito não encontrado."); }

void TfmCadLoteTec::BtnConsultarClick() { PqNumero.Open(); }

void TfmCadLoteTec::BtnFecharClick() { Close(); }

}  // namespace orders
