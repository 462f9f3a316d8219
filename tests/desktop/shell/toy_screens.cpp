#include "desktop/shell/toy_screens.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <iterator>
#include <memory>

#include "app/desktop/basics/text.h"
#include "app/desktop/forms/forms.h"
#include "host/errors.h"
#include "host/module.h"
#include "support/module_under_test.h"

namespace test {
namespace {

template <int kNumber>
std::unique_ptr<host::Screen> Create(host::Host& host) {
  constexpr const char* kNames[] = {"Um", "Dois", "Tres", "Modal"};
  constexpr const char* kCaptions[] = {"Tela um", "Tela dois", "Tela três", "Tela modal"};
  return std::make_unique<ToyScreen>(host, kNames[kNumber], kCaptions[kNumber], kNumber == 1);
}

constexpr host::ScreenClass kScreens[] = {
    {"TfmToyUm", "Ordens", "Tela um", &Create<0>},
    {"TfmToyDois", "Baixas", "Tela dois", &Create<1>},
    {"TfmToyTres", "Ordens", "Tela três", &Create<2>},
    {"TfmToyModal", "", "Tela modal", &Create<3>},
};
constexpr host::Module kModule = {host::kContractVersion, kScreens, std::size(kScreens)};

}  // namespace

const host::Module& ModuleUnderTest() { return kModule; }

ToyActs& Toys() {
  static ToyActs acts;
  return acts;
}

ToyScreen::ToyScreen(host::Host& host, const std::string& name, const std::string& caption, bool maximised)
    : Screen(host, "TfmToy" + name, "fmToy" + name, caption),
      EdtNome(*this, "EdtNome", "&Nome"),
      BtnUm(*this, "BtnUm", "&Um",
            [this] {
              if (Toys().first) Toys().first(*this);
            }),
      BtnDois(*this, "BtnDois", "&Dois",
              [this] {
                if (Toys().second) Toys().second(*this);
              }),
      BtnFechar(*this, "BtnFechar", "&Fechar", [this] { Close(); }),
      maximised_(maximised) {
  EdtNome.OnExit = [this] {
    if (EdtNome.Text() == "x") Refuse("Nome inválido.");
  };
}

void ToyScreen::FormClose() {
  if (Toys().close) Toys().close(*this);
}

}  // namespace test

namespace app::desktop {

// The toys' form instead of the program's.
std::unique_ptr<QWidget> NewForm(const host::Screen& screen) {
  auto form = std::make_unique<QWidget>();
  auto* layout = new QVBoxLayout(form.get());
  auto* inputs = new QHBoxLayout;
  auto* buttons = new QHBoxLayout;
  layout->addLayout(inputs);
  layout->addStretch();
  layout->addLayout(buttons);
  for (const host::Component* component : screen.Components()) {
    const QString name = ToQt(component->Name());
    if (dynamic_cast<const host::Edit*>(component) != nullptr) {
      auto* input = new QLineEdit;
      input->setObjectName(name);
      auto* label = new QLabel;
      label->setBuddy(input);
      inputs->addWidget(label);
      inputs->addWidget(input);
    } else if (dynamic_cast<const host::Button*>(component) != nullptr) {
      auto* button = new QPushButton;
      button->setObjectName(name);
      buttons->addWidget(button);
    }
  }
  return form;
}

}  // namespace app::desktop
