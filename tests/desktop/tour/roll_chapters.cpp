// Rolls: with the yarn that was reserved, and with lots chosen by hand.
#include "desktop/tour/chapters.h"

namespace tour {
namespace {

constexpr const char* kRolls = "TfmMovBaiTec";
constexpr const char* kRollsTitle = "Baixa de Ordem de Tecelagem";

void LoadOrder(Walker& walker, const char* number) {
  walker.OpenByMenu(Qt::Key_B, Qt::Key_B, kRolls);
  walker.At("EdtLote");
  walker.TypeAndEnter(number);
  walker.Shows("LblFornecedor", "MALHARIA SÃO BENTO LTDA");
  walker.ToControl("EdtQtde");
}

// From the quantity to the button, which Enter presses.
void TypeRoll(Walker& walker, const char* weight) {
  walker.At("EdtQtde");
  walker.TypeAndEnter(weight);
  walker.At("EdtPecas");
  walker.TypeAndEnter("1");
  walker.At("EdtTara");
  walker.Press(Qt::Key_Return);
  walker.At("BtnConfirma");
}

// F6 leads to the items and from there to the quantity.
void GiveUpRoll(Walker& walker) {
  walker.Press(Qt::Key_F6);
  walker.At("GrdItens");
  walker.Press(Qt::Key_F6);
  walker.At("EdtQtde");
  walker.Type("0");
  walker.CloseScreen();
}

}  // namespace

void WriteOffRolls(Walker& walker) {
  LoadOrder(walker, "000001");
  walker.Pick("Conversão de unidade",
              [&] { walker.Await("Conversão de unidade", [&](QWidget&) { walker.TypeAndEnter("25"); }); });
  walker.Shows("EdtQtde", " 8,100");
  walker.Press(Qt::Key_A, Qt::ControlModifier);
  TypeRoll(walker, "20,8");
  walker.Press(Qt::Key_Return);
  walker.At("EdtQtde");
  walker.TypeAndEnter("20,3");
  walker.Type("1");
  walker.Press(Qt::Key_F8);
  walker.At("EdtQtde");
  walker.Take("baixa");
  walker.Type("20,3");
  walker.Box(kRollsTitle, "aviso", [&] { walker.Press(Qt::Key_F8); });
  GiveUpRoll(walker);
}

void ChooseYarn(Walker& walker) {
  walker.OpenByMenu(Qt::Key_O, Qt::Key_O, "TfmCadLoteTec");
  walker.TypeAndEnter("000001");
  walker.Yes("Deseja duplicar esta ordem?", [&] { walker.Alt(Qt::Key_D); });
  walker.At("EdtNumero");
  walker.Shows("EdtNumero", "000003");
  walker.CloseScreen();
  LoadOrder(walker, "000003");
  walker.Type("20,8");
  walker.Inside(
      "Selecione os consumos",
      [&](QWidget& dialog) {
        walker.At("GrdConsumos");
        walker.CellShows("Codigo", "F0006");
        walker.ToControl("EdtDeposito");
        walker.TypeAndEnter("11");
        walker.ToControl("GrdEstoque");
        walker.CellShows("Lote", "0020126013");
        walker.GetCamera().Take(dialog, QStringLiteral("fios-a-mao"));
        walker.Press(Qt::Key_F8);
        walker.At("GrdConsumos");
        walker.CellShows("Codigo", "F0021");
        walker.Press(Qt::Key_F6);
        walker.At("GrdEstoque");
        walker.Press(Qt::Key_F8);
      },
      [&] { walker.Press(Qt::Key_F8); });
  walker.At("EdtQtde");
  walker.CloseScreen();
}

}  // namespace tour
