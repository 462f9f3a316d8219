// Labels, buttons, pages, and the place of a grid.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QTabWidget>

#include "app/desktop/bindings/binding.h"
#include "app/desktop/grid/grid_panel.h"

namespace app::desktop {

class LabelBinding : public Binding {
 public:
  LabelBinding(ScreenBindings& window, host::Label& label, QLabel& shown);
  void Show() override;

 private:
  host::Label& label_;
  QLabel& shown_;
};

class ButtonBinding : public Binding {
 public:
  ButtonBinding(ScreenBindings& window, host::Button& button, QAbstractButton& shown);
  void Show() override;

 protected:
  bool EntersByPress() const override { return false; }
  void Mnemonic(QObject* part) override;

 private:
  void Click();
  void ShowLack();

  host::Button& button_;
  QAbstractButton& shown_;
  QString lack_;  // what the person lacks to use it, as a sentence; empty for nothing
};

class PageBinding : public Binding {
 public:
  PageBinding(ScreenBindings& window, host::PageControl& pages, QTabWidget& tabs);
  void Show() override;
  void LetGo() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Turned(int index);

  host::PageControl& pages_;
  QTabWidget& tabs_;
  bool showing_ = false;
};

class GridBinding : public Binding {
 public:
  GridBinding(ScreenBindings& window, host::Grid& grid, GridPanel& panel);
  void TakeKeyboard() override { panel_.TakeFocus(); }
  bool HasKeyboard() const override { return panel_.HasKeyboard(); }
  bool HasLookup() const override;
  void LetGo() override;

 protected:
  bool Greys() const override { return false; }

 private:
  host::Grid& grid_;
  GridPanel& panel_;
};

}  // namespace app::desktop
