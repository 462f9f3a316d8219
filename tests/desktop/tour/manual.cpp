#include <QDialog>
#include <QString>
#include <stdexcept>
#include <string>

#include "app/desktop/sign_in_dialog.h"
#include "app/desktop/text.h"
#include "desktop/tour/walks.h"

namespace tour {
namespace {

using test::Press;
using test::Settle;
using test::TypeText;

/// The hands on the keyboard, and the camera.
class Walker {
 public:
  Walker(test::DesktopMill& mill, const Camera& camera) : mill_(mill), camera_(camera) {}

  void SignIn();
  void TypeOrder();
  void ReserveYarn();
  void WriteOff();
  void Search();

 private:
  void Take(const char* name) {
    Settle();
    camera_.Take(mill_.Window(), QString::fromUtf8(name));
  }
  void Type(const char* text) { TypeText(QString::fromUtf8(text)); }
  void TypeAndEnter(const char* text) {
    Type(text);
    Press(Qt::Key_Return);
  }
  /// Goes on, at most a few dozen steps, until `there` holds.
  template <typename There, typename Step>
  void Until(const There& there, const Step& step) const {
    for (int steps = 0; !there(); ++steps) {
      if (steps == 40) throw std::runtime_error("the way does not lead there; the keyboard is in " + Here());
      step();
    }
  }
  void ToCell(const std::string& field) const {
    Until([&] { return Cell() == field; }, [] { Press(Qt::Key_Tab); });
  }
  void ToControl(const std::string& name) {
    Until([&] { return Here() == name; }, [this] { LeaveControl(); });
  }
  std::string Here() const {
    const host::Control* focused = mill_.Desk().Focused();
    return focused == nullptr ? "nowhere" : focused->Name();
  }
  /// Insists that the keyboard is where the manual says.
  void At(const char* component) const {
    if (Here() != component) throw std::runtime_error("the keyboard is in " + Here() + ", not in " + component);
  }
  /// The column of the grid that has the keyboard.
  std::string Cell() const {
    const auto* grid = dynamic_cast<const host::Grid*>(mill_.Desk().Focused());
    return grid == nullptr ? std::string() : grid->SelectedField();
  }
  /// To the next control: Enter in an input, Ctrl+Enter in a grid.
  void LeaveControl() {
    const bool in_grid = dynamic_cast<const host::Grid*>(mill_.Desk().Focused()) != nullptr;
    Press(Qt::Key_Return, in_grid ? Qt::ControlModifier : Qt::NoModifier);
  }
  /// A new item, from a cell of the first column: its code, its colour and how much.
  void TypeItem(const char* code, const char* colour, const char* quantity);
  /// The lot under the cursor is ticked; the quantity is the proposed one.
  void Reserve();
  /// F4, what is typed into the search line, a picture, Enter.
  void TakeLookup(const char* title, const char* typed, const char* name);

  test::DesktopMill& mill_;
  const Camera& camera_;
  host::Screen* order_ = nullptr;
};

void Walker::SignIn() {
  app::desktop::SignInDialog dialog(QStringLiteral("demo.fdb"), [](const QString&, const QString&) {});
  dialog.Propose(QStringLiteral("ADMIN"), QStringLiteral("demo"));
  dialog.show();
  Settle();
  camera_.Take(dialog, QStringLiteral("entrar"));
  dialog.close();
  mill_.Window().activateWindow();
  Settle();
  Take("janela");
}

void Walker::TakeLookup(const char* title, const char* typed, const char* name) {
  mill_.GetBoxes().ExpectDialog(QString::fromUtf8(title), [this, typed, name](QWidget& dialog) {
    Type(typed);
    test::WaitFor([] { return false; }, 300);
    camera_.Take(dialog, QString::fromUtf8(name));
    Press(Qt::Key_Return);
  });
  Press(Qt::Key_F4);
  Settle();
}

void Walker::TypeItem(const char* code, const char* colour, const char* quantity) {
  Type(code);
  Press(Qt::Key_Tab);
  ToCell("Cor");
  Type(colour);
  Press(Qt::Key_Tab);
  ToCell("Qtde");
  Type(quantity);
  Press(Qt::Key_Down);
  Press(Qt::Key_Home);
}

void Walker::TypeOrder() {
  order_ = &mill_.Open("TfmCadLoteTec");
  At("EdtNumero");
  Press(Qt::Key_Return);
  At("EdtMalharia");
  TakeLookup("Malharia", "bento", "pesquisa-malharia");
  Press(Qt::Key_Return);
  At("EdtData");
  Press(Qt::Key_Return);
  TypeAndEnter("FL-118");
  At("EdtPrazo");
  Press(Qt::Key_Return);
  At("EdtMaquina");
  TypeAndEnter("T02");
  ToControl("EdtDeposito");
  TypeAndEnter("02");
  Take("ordem-cabecalho");
  At("DBGrid6");
  TypeItem("M0102", "0", "120");
  TypeItem("M0103", "0", "60,5");
  Press(Qt::Key_Escape);
  Take("ordem-itens");
  Press(Qt::Key_G, Qt::AltModifier);
  At("EdtNumero");
}

void Walker::ReserveYarn() {
  TypeAndEnter("000001");
  Take("ordem-carregada");
  ToControl("GrdEstoque");
  Reserve();
  Take("ordem-reserva");
  Press(Qt::Key_G, Qt::AltModifier);
  At("EdtNumero");
}

void Walker::Reserve() { Press(Qt::Key_Space); }

void Walker::WriteOff() {}

void Walker::Search() {}

}  // namespace

void Manual(test::DesktopMill& mill, const Camera& camera) {
  Walker walker(mill, camera);
  walker.SignIn();
  walker.TypeOrder();
  walker.ReserveYarn();
  walker.WriteOff();
  walker.Search();
}

}  // namespace tour
