// A list of records, and beside it the one under the cursor to be worked on.
#pragma once

#include <memory>
#include <string>

#include "app/admin/admin_screen.h"

namespace app::admin {

/// The list moves on only while nothing is changed: what is typed belongs to the record that was under the cursor when
/// the typing began. It is stored or given up first.
class ListScreen : public AdminScreen {
 public:
  using AdminScreen::AdminScreen;

  void FormShow() override;
  bool HasUnsavedWork() const override { return changed_; }

  void BtnIncluirClick();
  void BtnGravarClick();
  void BtnExcluirClick();
  void BtnCancelarClick();

 protected:
  /// The components of the derived screen that this class drives; they live as long as the screen.
  struct Parts {
    host::Dataset& list;
    host::Grid& grid;
    host::Label& hint;
    host::Button& include;
    host::Button& save;
    host::Button& remove;
    host::Button& cancel;
    host::Button& close;
  };
  void Wire(const Parts& parts);

  virtual std::unique_ptr<host::TTIQuery> ReadList() = 0;
  /// Stands on the row of the record that the inputs hold; false when it is not in the list.
  virtual bool LocateRecord() = 0;
  /// Fills the inputs with the record under the cursor as it is now; false, and nothing happened, when it is gone.
  /// Nothing is shown half when this throws.
  virtual bool ShowRecord() = 0;
  /// Empties the inputs for a new record.
  virtual void ShowNew() = 0;
  /// Stores what the inputs hold and makes it durable: when the list cannot be read again afterwards, nothing is left
  /// to be stored. Refuses by host::Abort before anything is written, by host::InputError afterwards.
  virtual void Save() = 0;
  /// "o usuário \"ANA\"", for the question.
  virtual std::string TheRecord() const = 0;
  virtual void Delete() = 0;
  /// What may be typed into, after each change of what is shown.
  virtual void AllowInputs() {}

  /// An input was changed by the person.
  void Changed();
  bool IsNew() const { return new_; }
  bool Filling() const { return filling_; }

 private:
  void Reload();
  void Show();
  void ShowBlank();
  void AllowParts();

  std::unique_ptr<Parts> parts_;
  bool new_ = false;
  bool changed_ = false;
  bool filling_ = false;  // the program fills the inputs
};

}  // namespace app::admin
