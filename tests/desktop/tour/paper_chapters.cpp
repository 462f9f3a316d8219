// An order on paper, a quantity in metres, labels for the rolls to come, and where a station prints.
#include <QApplication>

#include "desktop/tour/chapters.h"

namespace tour {
namespace {

constexpr const char* kOrders = "TfmCadLoteTec";

void LoadOrder(Walker& walker) {
  walker.OpenByMenu(Qt::Key_O, Qt::Key_O, kOrders);
  walker.TypeAndEnter("000001");
  walker.At("EdtMalharia");
}

// The first kind of printer that there is for the report.
void ToPrinter(Walker& walker, const char* place) {
  walker.Inside(
      "Alterar impressora",
      [&](QWidget&) {
        walker.Alt(Qt::Key_M);
        walker.Press(Qt::Key_Home);
        walker.Alt(Qt::Key_D);
        walker.Press(Qt::Key_A, Qt::ControlModifier);
        walker.Type(place);
        walker.Press(Qt::Key_Return);
      },
      [&] { walker.Alt(Qt::Key_A); });
}

}  // namespace

void PrintOrder(Walker& walker) {
  LoadOrder(walker);
  walker.Inside(
      "Visualizar: ",
      [&](QWidget& dialog) {
        test::Settle();
        walker.GetCamera().Take(dialog, QStringLiteral("ordem-impressa"));
        walker.Press(Qt::Key_2, Qt::ControlModifier);
        walker.Press(Qt::Key_Escape);
      },
      [&] { walker.Alt(Qt::Key_I); });
  walker.CloseScreen();
}

void MeasureItem(Walker& walker) {
  LoadOrder(walker);
  walker.ToControl("DBGrid6");
  walker.ToCell("Qtde");
  walker.Pick("Calcular Metros", [&] {
    walker.Await("Quantidade em Metros", [&](QWidget& box) {
      walker.Type("400");
      walker.GetCamera().Take(box, QStringLiteral("metros"));
      walker.Press(Qt::Key_Return);
    });
  });
  walker.CellShows("Qtde", "129,600");
  walker.Yes("dados não gravados", [&] { walker.Press(Qt::Key_W, Qt::ControlModifier); });
}

void LabelRollsToCome(Walker& walker) {
  LoadOrder(walker);
  walker.ToControl("DBGrid6");
  walker.Press(Qt::Key_Down);
  walker.CellShows("Codigo", "M0103");
  walker.Pick("Gerar Etiqueta(s)", [&] {
    walker.Await("Gerar Etiqueta(s)", [&](QWidget& box) {
      walker.GetCamera().Take(box, QStringLiteral("etiquetas"));
      walker.Press(Qt::Key_Return);
    });
    walker.Await("Ordens de Tecelagem", [&](QWidget&) { walker.Press(Qt::Key_Return); });
  });
  walker.CloseScreen();
}

void ShowPrinters(Walker& walker) {
  walker.Inside(
      "Impressoras desta estação",
      [&](QWidget& dialog) {
        for (const char* printer : {"Etiquetas", "10.0.0.7:9100", "Escritorio"}) {
          ToPrinter(walker, printer);
          walker.Press(Qt::Key_Down);
        }
        walker.Press(Qt::Key_Up, Qt::NoModifier, 2);
        test::Settle();
        walker.GetCamera().Take(dialog, QStringLiteral("impressoras"));
        walker.Alt(Qt::Key_F);
      },
      [&] {
        walker.Alt(Qt::Key_A);
        walker.Press(Qt::Key_I);
      });
}

}  // namespace tour
