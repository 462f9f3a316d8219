// Compositions, registers, and what an administrator does.
#include "desktop/tour/chapters.h"

namespace tour {

void ShowComposition(Walker& walker) {
  walker.OpenByMenu(Qt::Key_C, Qt::Key_C, "TFmCadComposi");
  walker.At("EdtCodMat");
  walker.TypeAndEnter("M0111");
  walker.Shows("LblCodMat", "MEIA MALHA LISTRADA FIO TINTO");
  walker.ToControl("GrdComposi");
  walker.Take("composicao");
  walker.CloseScreen();
}

void ShowRegisters(Walker& walker) {
  walker.OpenByMenu(Qt::Key_D, Qt::Key_M, "TfmMateriais");
  walker.At("EdtBusca");
  walker.TypeAndEnter("penteado");
  walker.At("GrdLista");
  walker.Press(Qt::Key_Down);
  walker.Take("cadastro");
  walker.CloseScreen();
}

void Administrate(Walker& walker) {
  walker.OpenByMenu(Qt::Key_M, Qt::Key_U, "TfmUsuarios");
  walker.Alt(Qt::Key_I);
  walker.At("EdtCodigo");
  walker.TypeAndEnter("MARIA");
  walker.At("EdtNome");
  walker.TypeAndEnter("MARIA DAS DORES");
  walker.ToControl("EdtSenha");
  walker.TypeAndEnter("lançadeira 42");
  walker.TypeAndEnter("lançadeira 42");
  walker.ToControl("GrdDireitos");
  walker.ToCell("ALTERAR");
  walker.Press(Qt::Key_Space);
  walker.Press(Qt::Key_Down);
  walker.Press(Qt::Key_Space);
  walker.Take("usuarios");
  walker.Alt(Qt::Key_G);
  walker.CloseScreen();

  walker.OpenByMenu(Qt::Key_M, Qt::Key_P, "TfmParametros");
  walker.At("GrdParametros");
  walker.Press(Qt::Key_Down, Qt::NoModifier, 4);
  walker.CellShows("NUMERO", "70");
  walker.ToCell("VALOR");
  walker.Type("N");
  walker.Press(Qt::Key_Return);
  walker.Take("parametros");
  walker.Alt(Qt::Key_G);
  walker.CloseScreen();

  walker.OpenByMenu(Qt::Key_M, Qt::Key_R, "TfmLog");
  walker.Press(Qt::Key_F5);
  walker.Take("registro");
  walker.CloseScreen();
}

}  // namespace tour
