// One column of the record on the screen: an input, a check box or a code with its lookup and description.
#pragma once

#include <memory>
#include <string>

#include "app/mill/cell.h"
#include "app/registers/register_store.h"
#include "host/kit/component.h"
#include "host/kit/lookup.h"
#include "host/kit/screen.h"

namespace app::registers {

/// "EdtCustoImp" for column CUSTO_IMP and prefix "Edt".
std::string ComponentName(std::string_view prefix, std::string_view column);

class RegisterInput {
 public:
  /// All outlive the input.
  RegisterInput(host::Screen& screen, const RegisterStore& store, const tables::ColumnDescription& description);

  const tables::ColumnDescription& Description() const { return description_; }
  host::Control& Control() const;
  /// What the record that it refers to is called; null when it refers to none.
  const host::Label* Label() const { return label_.get(); }

  /// Shows a stored value, with what the record that it refers to is called now.
  void Show(const host::Value& value);
  /// What stood here was stored, as this value. Asks the database nothing.
  void Stored(const host::Value& value);
  /// What stands here is to be stored as a new record's.
  void BecomeNew() { new_ = true; }
  /// Shows what a new record begins with.
  void ShowInitial();
  /// The person has put something else in.
  bool Changed() const;
  /// What to store, checked: types, widths, limits, what must be given, references. What was not changed is the stored
  /// value as it was. Throws host::DatabaseError.
  mill::Cell Read() const;
  void SetReadOnly(bool read_only);

 private:
  std::string Caption() const { return std::string(description_.caption); }
  std::string Typed() const;
  void Put(const host::Value& value);
  void ShowText();

  const RegisterStore& store_;
  const tables::ColumnDescription& description_;
  const tables::Column& column_;
  const tables::Reference* reference_;
  host::Value stored_;
  bool new_ = true;
  std::string shown_;
  std::string described_;  // the code that the label tells

  // One of these; a reference has the lookup and the label besides.
  std::unique_ptr<host::CheckBox> box_;
  std::unique_ptr<host::Edit> edit_;
  std::unique_ptr<host::Label> label_;
  std::unique_ptr<host::TPesquisa> lookup_;
};

}  // namespace app::registers
