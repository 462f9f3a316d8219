// The focus and what a person does with inputs.
#include <gtest/gtest.h>

#include "toy.h"

namespace {

using host::ActError;
using host::ActResult;
using host::Button;
using host::Edit;
using host::EditKind;
using host::Key;
using test::Toy;
using test::ToyScreen;

class FocusTest : public ::testing::Test {
 protected:
  FocusTest() {
    screen = &toy.Open("TfmOrdem", [this](ToyScreen& s) {
      number = &s.Add<Edit>("EdtNumero", "&Número", EditKind::kText, 6u);
      mill = &s.Add<Edit>("EdtMalharia", "Malharia", EditKind::kText, 6u);
      weight = &s.Add<Edit>("EdtPeso", "Peso", EditKind::kNumber, 0u, "0.000");
      rpm = &s.Add<Edit>("EdtRPM", "RPM", EditKind::kInteger);
      day = &s.Add<Edit>("EdtData", "Data", EditKind::kDate);
      remarks = &s.Add<Edit>("EdtObs", "Observações", EditKind::kMemo);
      save = &s.Add<Button>("BtnGravar", "&Gravar", [this] { toy.notes.emplace_back("saved"); });
      for (host::Control* control :
           std::initializer_list<host::Control*>{number, mill, weight, rpm, day, remarks, save}) {
        s.Watch(*control);
      }
      number->OnChange = [this] { toy.notes.push_back("change " + number->Text()); };
    });
  }

  Toy toy;
  ToyScreen* screen = nullptr;
  Edit* number = nullptr;
  Edit* mill = nullptr;
  Edit* weight = nullptr;
  Edit* rpm = nullptr;
  Edit* day = nullptr;
  Edit* remarks = nullptr;
  Button* save = nullptr;
};

TEST_F(FocusTest, TypingEntersChangesAndLeaves) {
  EXPECT_EQ(toy.desk.Type(*number, "000100"), ActResult::kDone);
  EXPECT_EQ(toy.Take(), "begin | enter EdtNumero | end | begin | change 000100 | end | begin | exit EdtNumero | end");
  EXPECT_EQ(number->Text(), "000100");
  EXPECT_EQ(toy.desk.Focused(), nullptr);
}

TEST_F(FocusTest, TypingTheSameTextChangesNothing) {
  toy.desk.Type(*number, "1");
  toy.Take();
  toy.desk.Type(*number, "1");
  EXPECT_EQ(toy.TakeEvents(), "enter EdtNumero | exit EdtNumero");
}

TEST_F(FocusTest, EnteringLeavesTheOtherFirst) {
  toy.desk.Enter(*number);
  toy.desk.Enter(*number);
  toy.desk.Enter(*mill);
  EXPECT_EQ(toy.TakeEvents(), "enter EdtNumero | exit EdtNumero | enter EdtMalharia");
  EXPECT_EQ(toy.desk.Leave(*number), ActResult::kDone);
  EXPECT_EQ(toy.desk.Focused(), mill);
}

TEST_F(FocusTest, ARefusedExitKeepsTheFocusAndTheButtonUnclicked) {
  mill->OnExit = [this] { screen->Refuse("Cliente não encontrado."); };
  EXPECT_EQ(toy.desk.Type(*mill, "999"), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), mill);
  EXPECT_EQ(mill->Text(), "999");
  toy.notes.clear();
  EXPECT_EQ(toy.desk.Click(*save), ActResult::kRefused);
  EXPECT_EQ(toy.Take(), "begin | box Ordem: Cliente não encontrado. | end aborted");
  EXPECT_EQ(toy.desk.Enter(*number), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), mill);
}

TEST_F(FocusTest, AskingForTheFocusBackRefusesTheExit) {
  mill->OnExit = [this] {
    screen->Inform("Cliente não encontrado.");
    mill->SetFocus();
  };
  EXPECT_EQ(toy.desk.Type(*mill, "999"), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), mill);
  EXPECT_EQ(toy.TakeEvents(), "enter EdtMalharia | box Ordem: Cliente não encontrado.");
  mill->OnExit = [this] { screen->Refuse("Cliente não encontrado.", *mill); };
  EXPECT_EQ(toy.desk.Leave(), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), mill);
  EXPECT_EQ(toy.TakeEvents(), "box Ordem: Cliente não encontrado. | end aborted");
}

TEST_F(FocusTest, AFailedExitKeepsTheFocus) {
  mill->OnExit = [] { throw host::DatabaseError("falhou", 0, ""); };
  toy.desk.Enter(*mill);
  EXPECT_EQ(toy.desk.Click(*save), ActResult::kFailed);
  EXPECT_EQ(toy.desk.Focused(), mill);
  EXPECT_EQ(toy.notes.back(), "error Ordem: falhou");
}

TEST_F(FocusTest, AnExitMaySendThePersonElsewhere) {
  number->OnExit = [this] { weight->SetFocus(); };
  EXPECT_EQ(toy.desk.Type(*number, "1"), ActResult::kDone);
  EXPECT_EQ(toy.desk.Focused(), weight);
  toy.desk.Enter(*number);
  toy.Take();
  EXPECT_EQ(toy.desk.Click(*save), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), weight);
  EXPECT_EQ(toy.TakeEvents(), "enter EdtPeso");
}

TEST_F(FocusTest, ARefusedExitThatNamesAnotherInputIsNotAskedTwice) {
  mill->OnExit = [this] { screen->Refuse("Primeiro o número.", *number); };
  toy.desk.Enter(*mill);
  toy.notes.clear();
  EXPECT_EQ(toy.desk.Leave(), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), number);
  EXPECT_EQ(toy.Take(), "begin | box Ordem: Primeiro o número. | end aborted | begin | enter EdtNumero | end");
}

TEST_F(FocusTest, AClickMovesTheFocusAfterItsHandler) {
  save->OnClick = [this] {
    mill->SetFocus();
    toy.notes.emplace_back("saving");
  };
  EXPECT_EQ(toy.desk.Click(*save), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "enter BtnGravar | saving | exit BtnGravar | enter EdtMalharia");
  EXPECT_EQ(toy.desk.Focused(), mill);
}

TEST_F(FocusTest, ARefusedClickStillSendsTheFocusBack) {
  save->OnClick = [this] { screen->Refuse("Informe a malharia.", *mill); };
  EXPECT_EQ(toy.desk.Click(*save), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), mill);
  save->OnClick = [this] {
    number->SetFocus();
    throw host::DatabaseError("falhou", 0, "");
  };
  EXPECT_EQ(toy.desk.Click(*save), ActResult::kFailed);
  EXPECT_EQ(toy.desk.Focused(), save);
}

TEST_F(FocusTest, AskingForTheFocusOneHasDoesNothing) {
  toy.desk.Enter(*number);
  toy.Take();
  toy.desk.Run("t", [this] { number->SetFocus(); });
  EXPECT_EQ(toy.TakeEvents(), "");
  number->SetFocus();
  EXPECT_EQ(toy.TakeEvents(), "");
  mill->SetFocus();
  EXPECT_EQ(toy.TakeEvents(), "exit EdtNumero | enter EdtMalharia");
}

TEST_F(FocusTest, TheFocusNeverGoesToWhatCannotHaveIt) {
  mill->SetEnabled(false);
  mill->SetFocus();
  EXPECT_EQ(toy.desk.Focused(), nullptr);
  EXPECT_THROW(toy.desk.Enter(*mill), ActError);
  mill->SetEnabled(true);
  mill->SetVisible(false);
  EXPECT_THROW(toy.desk.Type(*mill, "1"), ActError);
  auto& label = screen->Add<host::Label>("LblMalharia");
  EXPECT_THROW(toy.desk.Enter(label), ActError);
  toy.desk.Enter(*number);
  number->SetEnabled(false);
  toy.Take();
  EXPECT_EQ(toy.desk.Enter(*save), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "enter BtnGravar");
}

TEST_F(FocusTest, HandlersThatSendTheFocusToAndFroDoNotHang) {
  number->OnEnter = [this] { mill->SetFocus(); };
  mill->OnEnter = [this] { number->SetFocus(); };
  EXPECT_EQ(toy.desk.Enter(*number), ActResult::kDone);
  EXPECT_FALSE(toy.desk.InAction());
}

TEST_F(FocusTest, AnExitThatDisablesTheButtonStopsTheClick) {
  number->OnExit = [this] { save->SetEnabled(false); };
  toy.desk.Enter(*number);
  toy.Take();
  EXPECT_EQ(toy.desk.Click(*save), ActResult::kRefused);
  EXPECT_EQ(toy.TakeEvents(), "");
  EXPECT_THROW(toy.desk.Click(*save), ActError);
}

TEST_F(FocusTest, AnExitThatClosesTheScreenStopsTheAct) {
  number->OnExit = [this] { screen->Close(); };
  toy.desk.Enter(*number);
  toy.Take();
  EXPECT_EQ(toy.desk.Click(*save), ActResult::kRefused);
  EXPECT_EQ(toy.TakeEvents(), "close Ordem | gone Ordem");
}

TEST_F(FocusTest, TextsTooLongAreRefusedByCharacters) {
  toy.desk.Type(*number, "ação12");
  toy.notes.clear();
  EXPECT_EQ(toy.desk.Type(*number, "1234567"), ActResult::kRefused);
  EXPECT_EQ(number->Text(), "ação12");
  EXPECT_EQ(toy.desk.Focused(), number);
  EXPECT_EQ(toy.TakeEvents(),
            "enter EdtNumero | box Ordem: O campo \"Número\" aceita no máximo 6 caracteres. | end aborted");
}

TEST_F(FocusTest, CharactersThatCannotBeStoredAreRefused) {
  EXPECT_EQ(toy.desk.Type(*mill, "☃"), ActResult::kRefused);
  EXPECT_EQ(mill->Text(), "");
  EXPECT_NE(toy.TakeEvents().find("O caractere \"☃\" não pode ser gravado."), std::string::npos);
}

TEST_F(FocusTest, NumbersShowTheirFormatAndKeepWhatWasTyped) {
  EXPECT_EQ(toy.desk.Type(*weight, "1.234,56789"), ActResult::kDone);
  EXPECT_EQ(weight->Text(), "1234,568");
  EXPECT_EQ(weight->Number(), 1234.56789);
  toy.TakeEvents();
  EXPECT_EQ(toy.desk.Type(*weight, "1e400"), ActResult::kRefused);
  EXPECT_EQ(toy.TakeEvents(), "enter EdtPeso | box Ordem: O campo \"Peso\" aceita somente números. | end aborted");
  EXPECT_EQ(toy.desk.TypeInto(*weight, "abc"), ActResult::kRefused);
  EXPECT_EQ(weight->Number(), 1234.56789);
  EXPECT_EQ(toy.desk.TypeInto(*weight, ""), ActResult::kDone);
  EXPECT_EQ(weight->Text(), "");
  EXPECT_EQ(weight->Number(), 0);
}

TEST_F(FocusTest, ANumberThatLooksTheSameIsStillAChange) {
  int changes = 0;
  weight->OnChange = [&changes] { ++changes; };
  toy.desk.Type(*weight, "10,0001");
  toy.desk.Type(*weight, "10,0002");
  EXPECT_EQ(changes, 2);
  EXPECT_EQ(weight->Text(), "10,000");
  EXPECT_EQ(weight->Number(), 10.0002);
  weight->Clear();
  weight->SetText("10,000");
  EXPECT_EQ(weight->Number(), 10);
}

TEST_F(FocusTest, IntegersAndDatesAreCheckedAndNormalised) {
  EXPECT_EQ(toy.desk.Type(*rpm, "12,0"), ActResult::kDone);
  EXPECT_EQ(rpm->Text(), "12");
  EXPECT_EQ(rpm->Integer(), 12);
  EXPECT_EQ(toy.desk.Type(*rpm, "12,5"), ActResult::kRefused);
  EXPECT_EQ(rpm->Text(), "12");
  EXPECT_EQ(toy.desk.Type(*day, "1/3/26"), ActResult::kDone);
  EXPECT_EQ(day->Text(), "01/03/2026");
  EXPECT_EQ(day->GetDate(), host::Date::FromParts(2026, 3, 1));
  EXPECT_EQ(toy.desk.Type(*day, "31/02/2026"), ActResult::kRefused);
  EXPECT_EQ(day->Text(), "01/03/2026");
  EXPECT_EQ(toy.desk.TypeInto(*day, ""), ActResult::kDone);
  EXPECT_TRUE(day->GetDate().IsZero());
}

TEST_F(FocusTest, TheProgramMayPutAnythingInAndFiresOnlyTheChange) {
  number->SetText("123456789");
  EXPECT_EQ(toy.Take(), "change 123456789");
  number->SetText("123456789");
  EXPECT_EQ(toy.Take(), "");
  weight->SetNumber(2.5);
  EXPECT_EQ(weight->Text(), "2,500");
  rpm->SetNumber(1200.5);
  EXPECT_EQ(rpm->Text(), "1200,5");
  EXPECT_EQ(rpm->Integer(), 1201);
}

TEST_F(FocusTest, TypingNeedsTheFocusAndAWritableInput) {
  EXPECT_THROW(toy.desk.TypeInto(*number, "1"), ActError);
  number->SetReadOnly(true);
  EXPECT_THROW(toy.desk.Type(*number, "1"), ActError);
  EXPECT_EQ(number->Text(), "");
}

TEST_F(FocusTest, EnterAndTabGoOnInTheOrderOfCreation) {
  mill->SetEnabled(false);
  toy.desk.Enter(*number);
  toy.desk.PressKey(*screen, Key::kTab);
  EXPECT_EQ(toy.desk.Focused(), weight);
  toy.desk.PressKey(*screen, Key::kEnter);
  EXPECT_EQ(toy.desk.Focused(), rpm);
  toy.desk.MoveFocus(*screen, true);
  EXPECT_EQ(toy.desk.Focused(), weight);
  toy.desk.Enter(*remarks);
  toy.desk.PressKey(*screen, Key::kEnter);  // a line break of its own
  EXPECT_EQ(toy.desk.Focused(), remarks);
  toy.desk.PressKey(*screen, Key::kTab);
  EXPECT_EQ(toy.desk.Focused(), save);
  toy.Take();
  toy.desk.PressKey(*screen, Key::kEnter);
  EXPECT_EQ(toy.TakeEvents(), "saved");
  toy.desk.PressKey(*screen, Key::kTab);
  EXPECT_EQ(toy.desk.Focused(), number);
}

TEST_F(FocusTest, AScreenMayUseAKeyItself) {
  screen->on_key = [this](Key key) {
    if (key != Key::kEnter) return false;
    toy.desk.MoveFocus(*screen, false);
    return true;
  };
  mill->OnKeyDown = [this](Key key) {
    if (key == Key::kF4) toy.notes.emplace_back("lookup");
  };
  toy.desk.Enter(*number);
  EXPECT_EQ(toy.desk.PressKey(*screen, Key::kEnter), ActResult::kDone);
  EXPECT_EQ(toy.desk.Focused(), mill);
  toy.Take();
  toy.desk.PressKey(*screen, Key::kF4);
  EXPECT_EQ(toy.TakeEvents(), "lookup");
}

TEST_F(FocusTest, BoxesChoicesAndPages) {
  auto& box = screen->Add<host::CheckBox>("CbTodos", "Todos");
  auto& choice = screen->Add<host::RadioGroup>("RgTipo", "Tipo", std::vector<std::string>{"&Todas", "Pendentes"});
  auto& pages = screen->Add<host::PageControl>("Paginas", std::vector<std::string>{"Itens", "Observações"});
  box.OnClick = [this] { toy.notes.emplace_back("ticked"); };
  choice.OnClick = [this, &choice] { toy.notes.push_back("chosen " + choice.SelectedText()); };
  pages.OnClick = [this] { toy.notes.emplace_back("page"); };
  toy.desk.Enter(*number);
  toy.Take();
  EXPECT_EQ(toy.desk.Check(box, true), ActResult::kDone);
  toy.desk.Check(box, true);
  EXPECT_EQ(toy.TakeEvents(), "exit EdtNumero | ticked");
  EXPECT_EQ(toy.desk.Choose(choice, "Pendentes"), ActResult::kDone);
  EXPECT_EQ(toy.desk.Choose(choice, "Todas"), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "chosen Pendentes | chosen &Todas");
  EXPECT_THROW(toy.desk.Choose(choice, "Nenhuma"), ActError);
  toy.desk.Enter(*number);
  toy.Take();
  EXPECT_EQ(toy.desk.ChoosePage(pages, "Observações"), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "exit EdtNumero | page");
  EXPECT_EQ(pages.ActivePage(), 1);
  EXPECT_THROW(toy.desk.ChoosePage(pages, "Nada"), ActError);
  choice.SetSelected(7);
  EXPECT_EQ(choice.Selected(), -1);
  EXPECT_EQ(choice.SelectedText(), "");
}

TEST_F(FocusTest, MenusOfferWhatIsVisible) {
  auto& menu = screen->Add<host::PopupMenu>("Popup");
  menu.Add("Metros", "Calcular &Metros", [this] { toy.notes.emplace_back("metres"); });
  menu.Add("Etiquetas", "Gerar Etiqueta(s)", [this] { toy.notes.emplace_back("labels"); });
  menu.OnPopup = [this, &menu] { menu.Find("Metros")->visible = !number->Text().empty(); };
  EXPECT_THROW(toy.desk.PickMenu(*screen, "Calcular Metros"), ActError);
  EXPECT_EQ(toy.desk.PickMenu(*screen, "Gerar Etiqueta(s)"), ActResult::kDone);
  number->SetText("1");
  toy.Take();
  EXPECT_EQ(toy.desk.PickMenu(*screen, "Calcular Metros"), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "metres");
  menu.OnPopup = [] { throw host::Abort(); };
  EXPECT_EQ(toy.desk.PickMenu(*screen, "Metros"), ActResult::kRefused);
  EXPECT_THROW(toy.desk.PickMenu(*screen, "Nada"), ActError);
}

TEST_F(FocusTest, ALookupHandsBackTheRowPicked) {
  auto& lookup = screen->Add<host::TPesquisa>("PqMalharia", "ENTIDADE", "CODCLI");
  lookup.OnFechaPesquisa = [this, &lookup] { mill->SetText(lookup.RetornoPesquisa("codcli").AsText()); };
  EXPECT_EQ(toy.desk.OpenLookup(lookup), ActResult::kDone);
  EXPECT_EQ(mill->Text(), "");
  EXPECT_EQ(toy.Take(), "begin | wait | end");
  toy.environment.lookup_answer = host::LookupRow{{"CODCLI", "000100"}, {"NOME", "Malhas Sul"}};
  toy.desk.OpenLookup(lookup);
  EXPECT_EQ(mill->Text(), "000100");
  EXPECT_EQ(lookup.RetornoPesquisa("Nome").AsText(), "Malhas Sul");
  EXPECT_TRUE(lookup.RetornoPesquisa("Nada").IsNull());
}

TEST_F(FocusTest, TheProgramPressesAButtonInsideItsAction) {
  number->OnExit = [this] { screen->Site()->Press(*save); };
  toy.desk.Type(*number, "1");
  EXPECT_EQ(toy.TakeEvents(), "enter EdtNumero | change 1 | saved");
  save->SetEnabled(false);
  toy.desk.Type(*number, "2");
  EXPECT_EQ(toy.TakeEvents(), "enter EdtNumero | change 2");
}

TEST_F(FocusTest, TwoComponentsOfOneNameAreAMistake) {
  EXPECT_THROW(screen->Add<Edit>("edtnumero", "x"), std::logic_error);
  EXPECT_EQ(screen->FindComponent("EDTNUMERO"), number);
}

}  // namespace
