#include "app/admin/list_screen.h"

#include <utility>

#include "host/restored.h"

namespace app::admin {

void ListScreen::Wire(const Parts& parts) {
  parts_ = std::make_unique<Parts>(parts);
  parts.list.AfterScroll = [this] {
    if (!filling_ && !new_) Show();
  };
  parts.include.OnClick = [this] { BtnIncluirClick(); };
  parts.save.OnClick = [this] { BtnGravarClick(); };
  parts.remove.OnClick = [this] { BtnExcluirClick(); };
  parts.cancel.OnClick = [this] { BtnCancelarClick(); };
  parts.close.OnClick = [this] { Close(); };
}

void ListScreen::FormShow() {
  Reload();
  if (!new_) parts_->grid.SetFocus();
}

void ListScreen::BtnIncluirClick() {
  NeedAdministrator();
  ShowBlank();
}

void ListScreen::BtnGravarClick() {
  NeedAdministrator();
  Save();
  new_ = changed_ = false;
  AllowParts();
  Reload();
}

void ListScreen::BtnExcluirClick() {
  NeedAdministrator();
  if (!Confirm("Deseja excluir " + TheRecord() + "?")) return;
  Delete();
  Reload();
}

void ListScreen::BtnCancelarClick() {
  new_ = changed_ = false;
  Reload();
}

void ListScreen::Changed() {
  if (filling_ || changed_) return;
  changed_ = true;
  AllowParts();
}

void ListScreen::Reload() {
  std::unique_ptr<host::TTIQuery> rows = ReadList();
  {
    const host::Restored<bool> filling(filling_, true);
    parts_->list.LoadFrom(std::move(rows));
    LocateRecord();
  }
  Show();
}

void ListScreen::Show() {
  if (parts_->list.IsEmpty()) {
    ShowBlank();
    return;
  }
  bool there = false;
  {
    const host::Restored<bool> filling(filling_, true);
    there = ShowRecord();
  }
  AllowParts();
  if (there) return;
  Reload();
  Inform("O registro foi excluído em outra estação.");
}

void ListScreen::ShowBlank() {
  {
    const host::Restored<bool> filling(filling_, true);
    ShowNew();
  }
  new_ = true;
  AllowParts();
}

void ListScreen::AllowParts() {
  const bool busy = new_ || changed_;
  parts_->grid.SetEnabled(!busy);
  parts_->include.SetEnabled(!busy);
  parts_->remove.SetEnabled(!busy);
  parts_->save.SetEnabled(busy);
  parts_->cancel.SetEnabled(busy);
  parts_->hint.SetText(!busy ? "" : new_ ? "Registro novo: grave ou cancele." : "Alterado: grave ou cancele.");
  AllowInputs();
}

}  // namespace app::admin
