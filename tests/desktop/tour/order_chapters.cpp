// Signing in, an order, its yarn, and how an order is found again.
#include "app/desktop/look/theme.h"
#include "app/desktop/shell/sign_in_dialog.h"
#include "desktop/tour/chapters.h"

namespace tour {
namespace {

constexpr const char* kOrders = "TfmCadLoteTec";
constexpr const char* kOrdersTitle = "Ordens de Tecelagem";

// From the first cell of an empty row: the code, the colour and how much.
void TypeItem(Walker& walker, const char* code, const char* colour, const char* quantity) {
  walker.Type(code);
  walker.ToCell("Cor");
  walker.Type(colour);
  walker.ToCell("Qtde");
  walker.Type(quantity);
  walker.Press(Qt::Key_Down);
  walker.Press(Qt::Key_Home);
}

// In the list of yarns: to its lots, as much of the first one as the order needs, ticked, and back. Ticked first it
// would propose what is left of the whole order.
void Reserve(Walker& walker, const char* quantity) {
  walker.At("GrdFios");
  walker.ToControl("GrdEstoque");
  walker.ToCell("Qtde_Res");
  walker.Type(quantity);
  walker.Press(Qt::Key_Return);
  walker.Press(Qt::Key_Home);
  walker.Press(Qt::Key_Space);
  walker.Press(Qt::Key_Return, Qt::ControlModifier | Qt::ShiftModifier);
  walker.Press(Qt::Key_Backtab, Qt::ShiftModifier, 3);
  walker.At("GrdFios");
}

}  // namespace

void SignIn(Walker& walker) {
  app::desktop::SignInDialog dialog(QStringLiteral("demo.fdb"), [](const QString&, const QString&) {});
  dialog.Propose(QStringLiteral("ADMIN"), QStringLiteral("demo"));
  dialog.show();
  test::Settle();
  walker.GetCamera().Take(dialog, QStringLiteral("entrar"));
  dialog.close();
  walker.Mill().Window().activateWindow();
  walker.Take("janela");
}

void TypeOrder(Walker& walker) {
  walker.OpenByMenu(Qt::Key_O, Qt::Key_O, kOrders);
  walker.At("EdtNumero");
  walker.Press(Qt::Key_Return);
  walker.At("EdtMalharia");
  walker.Type("99999");
  walker.Box(kOrdersTitle, "recusa", [&] { walker.Press(Qt::Key_Return); });
  walker.At("EdtMalharia");
  walker.Press(Qt::Key_Delete);
  walker.Lookup("Malharia", "bento", "pesquisa");
  walker.Press(Qt::Key_Return);
  walker.At("EdtData");
  walker.Press(Qt::Key_Return);
  walker.At("EdtFicha");
  walker.TypeAndEnter("FL-118");
  walker.At("EdtPrazo");
  walker.TypeAndEnter("15");
  walker.At("EdtMaquina");
  walker.TypeAndEnter("T02");
  walker.ToControl("EdtDeposito");
  walker.TypeAndEnter("02");
  walker.At("DBGrid6");
  TypeItem(walker, "M0102", "0", "120");
  TypeItem(walker, "M0103", "0", "60,5");
  walker.Press(Qt::Key_Escape);
  walker.Take("ordem-itens");
  walker.Alt(Qt::Key_G);
  walker.At("EdtNumero");
}

void ReserveYarn(Walker& walker) {
  walker.TypeAndEnter("000001");
  walker.At("EdtMalharia");
  walker.ToControl("GrdFios");
  const struct {
    const char* yarn;
    const char* needed;
  } yarns[] = {{"F0003", "55,055"}, {"F0006", "111,84"}, {"F0021", "8,16"}, {"F0022", "5,445"}};
  for (const auto& row : yarns) {
    walker.CellShows("Codigo", row.yarn);
    walker.CellShows("Consumo", row.needed);
    Reserve(walker, row.needed);
    if (row.yarn == yarns[1].yarn) walker.Take("ordem-reserva");
    walker.Press(Qt::Key_Down);
  }
  walker.Alt(Qt::Key_G);
  walker.At("EdtNumero");
  walker.CloseScreen();
}

void SearchOrders(Walker& walker) {
  walker.OpenByMenu(Qt::Key_O, Qt::Key_O, kOrders);
  walker.At("EdtNumero");
  walker.Press(Qt::Key_PageUp, Qt::ControlModifier);
  walker.At("EdtADe");
  walker.Press(Qt::Key_F3);
  walker.ToControl("DBGrid1");
  walker.Take("ordem-pesquisa");
  walker.Press(Qt::Key_Return);
  walker.At("EdtNumero");
  walker.Shows("EdtNumero", "000001");
  walker.Press(Qt::Key_Return);
  walker.At("EdtMalharia");
  app::desktop::ApplyTheme(app::desktop::Theme::kDark);
  walker.Take("tema-escuro");
  app::desktop::ApplyTheme(app::desktop::Theme::kLight);
  walker.ToControl("EdtFicha");
  walker.Type("FL-119");
  const std::size_t open = walker.Mill().Desk().Screens().size();
  walker.Box(kOrdersTitle, "pergunta", [&] { walker.Press(Qt::Key_W, Qt::ControlModifier); });
  if (walker.Mill().Desk().Screens().size() != open) throw std::runtime_error("Não closed the screen");
  walker.At("EdtFicha");
  walker.Yes("dados não gravados", [&] { walker.Press(Qt::Key_W, Qt::ControlModifier); });
}

}  // namespace tour
