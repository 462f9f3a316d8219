// The installation's parameters, with what they mean and the values they take beside them.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "app/admin/admin_screen.h"

namespace app::admin {

/// What is stored here counts for the screens that are opened afterwards.
class TfmParametros : public AdminScreen {
 public:
  explicit TfmParametros(Application& application);

  void FormShow() override { Load(); }
  bool HasUnsavedWork() const override;

  void BtnGravarClick();
  void BtnCancelarClick();
  /// The value under the cursor in the list of allowed ones becomes the parameter's.
  void GrdValoresDblClick();

 private:
  using Key = std::pair<std::string, int>;

  void Load();
  std::map<Key, std::string> Stored() const;
  void AddRow(const Key& key, const std::string& value);
  void ShowAllowed();
  void CheckValue(const host::Field& value) const;
  void Store(const Key& key, const std::string& value);

 public:
  // In tab order.
  host::Dataset TbParametros;
  host::Grid GrdParametros;
  host::Label LblValores;
  host::Dataset TbValores;
  host::Grid GrdValores;
  host::Button BtnGravar;
  host::Button BtnCancelar;
  host::Button BtnFechar;

 private:
  std::map<Key, std::string> loaded_;
  bool filling_ = false;
};

}  // namespace app::admin
