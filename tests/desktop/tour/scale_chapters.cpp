// A shift at the weighing station: scanner, scale and labels; the defects of a roll, and a roll taken back.
#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>

#include "desktop/tour/chapters.h"

namespace tour {
namespace {

constexpr const char* kRolls = "TfmMovBaiTec";
constexpr const char* kPrint = "Imprimir";
constexpr int kAnswersShown = 3;
constexpr int kPatience = 5000;  // milliseconds that the scale may take for them

// In the column of the values, and on to the next one.
void SetParameter(Walker& walker, const char* number, const char* value) {
  walker.CellShows("NUMERO", number);
  walker.Type(value);
  walker.Press(Qt::Key_Down);
}

// What comes up for a report that has no printer on this station yet: the picture shows the first kind of printer, and
// the last one, a folder, takes what a printer would get.
void ChoosePrinter(Walker& walker, QWidget& dialog, const Devices& devices, const char* picture) {
  const auto choose = [&](Qt::Key kind, const char* place) {
    walker.Alt(Qt::Key_M);
    walker.Press(kind);
    walker.Alt(Qt::Key_D);
    walker.Press(Qt::Key_A, Qt::ControlModifier);
    walker.Type(place);
  };
  if (picture != nullptr) {
    choose(Qt::Key_Home, "10.0.0.7:9100");
    walker.GetCamera().Take(dialog, QString::fromUtf8(picture));
  }
  choose(Qt::Key_End, devices.Paper().c_str());
  walker.Press(Qt::Key_Return);
}

void TryScale(Walker& walker, QWidget& dialog, const Devices& devices) {
  walker.Type(devices.ScalePort().c_str());
  walker.Alt(Qt::Key_C);
  walker.Type("1");
  walker.Alt(Qt::Key_E);
  const auto& heard = *dialog.findChild<QPlainTextEdit*>(QStringLiteral("Raw"));
  if (!test::WaitFor([&] { return heard.blockCount() >= kAnswersShown; }, kPatience)) {
    throw std::runtime_error("the scale does not answer");
  }
  walker.Alt(Qt::Key_E);
  const auto& button = *dialog.findChild<QPushButton*>(QStringLiteral("Try"));
  if (!test::WaitFor([&] { return button.text() == QStringLiteral("T&estar") && !button.isDown(); })) {
    throw std::runtime_error("the test of the scale does not end");
  }
  // The picture is to show the port of a real station.
  auto& port = *dialog.findChild<QComboBox*>(QStringLiteral("Port"));
  port.setEditText(QStringLiteral("/dev/ttyUSB0"));
  walker.GetCamera().Take(dialog, QStringLiteral("balanca"));
  port.setEditText(QString::fromStdString(devices.ScalePort()));
  walker.Await("Baixa de Ordem de Tecelagem", [&](QWidget&) { walker.Press(Qt::Key_Return); });
  walker.Press(Qt::Key_Return);
}

// As a scanner types it. The label says which item it is, the scale how much.
void ScanAndWeigh(Walker& walker, Devices& devices, const char* label, double weight) {
  walker.At("EdtBarra");
  walker.TypeAndEnter(label);
  walker.At("EdtQtde");
  walker.Shows("EdtCodigo", "M0103");
  devices.LayOnScale(weight);
  walker.Press(Qt::Key_F5);
}

void StationReady(Walker& walker) {
  walker.OpenByMenu(Qt::Key_B, Qt::Key_B, kRolls);
  walker.TypeAndEnter("000001");
  walker.ToControl("EdtFunc");
  walker.TypeAndEnter("00011");
  walker.Shows("LblFunc", "JOÃO BATISTA DA SILVA");
  walker.ToControl("CbBarra");
  walker.Press(Qt::Key_Space);
  walker.Press(Qt::Key_Return);
}

}  // namespace

void PrepareStation(Walker& walker) {
  walker.OpenByMenu(Qt::Key_M, Qt::Key_P, "TfmParametros");
  walker.Press(Qt::Key_Down);
  walker.ToCell("VALOR");
  SetParameter(walker, "40", "4");
  SetParameter(walker, "50", "S");
  walker.Alt(Qt::Key_G);
  walker.CloseScreen();
}

void ConnectScale(Walker& walker, const Devices& devices) {
  walker.OpenByMenu(Qt::Key_B, Qt::Key_B, kRolls);
  walker.Inside(
      "Configuração da balança", [&](QWidget& dialog) { TryScale(walker, dialog, devices); },
      [&] { walker.Press(Qt::Key_F10); });
  walker.CloseScreen();
}

void WeighRolls(Walker& walker, Devices& devices) {
  StationReady(walker);
  walker.Inside(
      kPrint, [&](QWidget& dialog) { ChoosePrinter(walker, dialog, devices, "impressora"); },
      [&] { ScanAndWeigh(walker, devices, "000001001", 22.3); });
  ScanAndWeigh(walker, devices, "000001002", 21.85);
  walker.At("EdtBarra");
  walker.Type("000001003");
  walker.Take("balanca-baixa");
  walker.Press(Qt::Key_Escape);
}

void RegisterDefects(Walker& walker) {
  walker.Inside(
      "Cadastro de Defeitos",
      [&](QWidget& dialog) {
        walker.At("DBGrid1");
        walker.Type("BUR");
        walker.ToCell("Peso");
        walker.Type("0,8");
        walker.ToCell("Qualidade");
        walker.Type("2");
        walker.Press(Qt::Key_Down);
        walker.ToCell("Defeito");
        walker.Type("FPU");
        walker.ToCell("Peso");
        walker.Type("0,3");
        walker.Press(Qt::Key_Return);
        walker.GetCamera().Take(dialog, QStringLiteral("defeitos"));
        walker.Press(Qt::Key_F8);
      },
      [&] { walker.Alt(Qt::Key_D); });
}

void PrintLabel(Walker& walker, const Devices& devices) {
  walker.Press(Qt::Key_F6);
  walker.At("GrdItens");
  walker.ToControl("GrdRolos");
  walker.Pick("Imprimir Etiqueta", [] {});
  walker.ToControl("CbImpressao");
  walker.Press(Qt::Key_Up);
  walker.Press(Qt::Key_F6);
  walker.At("GrdItens");
  walker.ToControl("GrdRolos");
  walker.Pick("Imprimir Etiqueta",
              [&] { walker.Await(kPrint, [&](QWidget& dialog) { ChoosePrinter(walker, dialog, devices, nullptr); }); });
}

void ReverseRoll(Walker& walker) {
  walker.At("GrdRolos");
  walker.Press(Qt::Key_Down);
  walker.CellShows("ORDEM", "3");
  walker.Inside(
      "Baixa de Ordem de Tecelagem",
      [&](QWidget& box) {
        walker.GetCamera().Take(box, QStringLiteral("estorno"));
        walker.Alt(Qt::Key_S);
      },
      [&] { walker.Alt(Qt::Key_E); });
  walker.Press(Qt::Key_F6);
  walker.At("GrdItens");
  walker.Press(Qt::Key_Down);
  walker.CellShows("Codigo", "M0103");
  walker.CellShows("Qtde_B", "21,450");
  walker.CloseScreen();
}

}  // namespace tour
