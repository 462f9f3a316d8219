// The one screen of all shared registers, over a description of the table.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/application.h"
#include "app/registers/register_detail.h"
#include "app/registers/register_input.h"
#include "app/registers/register_store.h"
#include "app/tables/descriptions.h"
#include "host/kit/screen.h"

namespace app::registers {

/// Where nothing else is said, an operation throws Abort when a check refuses it (the message was shown) and
/// DatabaseError when a statement fails; what the person typed is then still on the screen.
class TfmRegister : public host::Screen {
  Application& application_;
  const tables::RegisterDescription& description_;
  RegisterStore store_;

 public:
  /// Both outlive the screen.
  TfmRegister(Application& application, const tables::RegisterDescription& description);

  const tables::RegisterDescription& Description() const { return description_; }

  void FormCreate() override;
  void FormShow() override;
  bool FormKeyDown(host::Key key) override;
  bool HasUnsavedWork() const override;
  std::vector<host::KeyHint> KeyHints() const override;

  // --- the list ---------------------------------------------------------------------------------------------------
  /// Lists the records that contain what was typed in the search line and shows the first one.
  void BuscaLista();
  void EdtBuscaExit();
  void TbListaAfterScroll();
  void GrdListaClick();

  // --- the record -------------------------------------------------------------------------------------------------
  /// Shows a stored record; an empty new one when it is gone.
  void BuscaDados(std::string_view key);
  /// An empty record with what a new one begins with.
  void LimpaTela();
  void BtnIncluirClick();
  void BtnGravarClick();
  /// Checks the record, stores it durably and logs it.
  void GravaDados();
  void BtnExcluirClick();
  void BtnFecharClick() { Close(); }

  // --- files: register_files.cpp ----------------------------------------------------------------------------------
  void BtnImportarClick();
  void BtnExportarClick();

  // --- components, in tab order: the inputs follow the description ------------------------------------------------
  host::Edit EdtBusca{*this, "EdtBusca", "&Busca", host::EditKind::kText, 80};
  host::Label LblBusca{*this, "LblBusca"};
  host::Dataset TbLista;
  host::Grid GrdLista;

  /// The inputs of the record in the order of the description, for whoever lays them out.
  const std::vector<std::unique_ptr<RegisterInput>>& Inputs() const { return inputs_; }
  /// Null when the register has no detail.
  RegisterDetail* Detail() const { return detail_.get(); }

 private:
  std::vector<std::unique_ptr<RegisterInput>> MakeInputs();
  void RequireRight(std::string_view operation) const;
  void SetNew(bool is_new);
  bool Changed() const;
  /// False when the person wants to go on with what is not stored yet.
  bool MayLeaveRecord() const;
  void FillList(host::TTIQuery& rows);
  void PutRow(const host::TTIQuery& row);
  /// Brings the list's row of a record up to date, putting it in when it is missing, and stands on it.
  void RefreshRow(std::string_view key, const host::TTIQuery& row);
  void DropRow(std::string_view key);
  void TellCount();
  void ShowCurrent();
  std::string ListKey() const;

  Record ReadInputs();
  void RefuseChanged(std::string_view key);
  void RefuseGone(std::string_view key);
  bool ChangedElsewhere(const Record& now, const Record& typed) const;
  void Log(std::string_view what, host::LogOperation operation, std::string_view key) const;

  void ImportFile(const std::string& path);
  std::string_view TableOf(std::string_view csv_text) const;
  std::optional<std::size_t> ExportTable(std::string_view table, std::string_view caption);

  bool new_ = true;
  Record stored_;           // as read, when not new
  host::DateTime read_at_;  // when that was
  std::string searched_;
  bool more_ = false;         // records than the list has rows
  std::size_t list_row_ = 0;  // where the list stood when the record came on the screen
  bool filling_ = false;

  std::vector<std::unique_ptr<RegisterInput>> inputs_;
  std::unique_ptr<RegisterDetail> detail_;

 public:
  host::Button BtnIncluir{*this, "BtnIncluir", "Incluir", [this] { BtnIncluirClick(); }};
  host::Button BtnGravar{*this, "BtnGravar", "&Gravar", [this] { BtnGravarClick(); }};
  host::Button BtnExcluir{*this, "BtnExcluir", "&Excluir", [this] { BtnExcluirClick(); }};
  host::Button BtnImportar{*this, "BtnImportar", "I&mportar...", [this] { BtnImportarClick(); }};
  host::Button BtnExportar{*this, "BtnExportar", "Ex&portar...", [this] { BtnExportarClick(); }};
  host::Button BtnFechar{*this, "BtnFechar", "&Fechar", [this] { BtnFecharClick(); }};
};

}  // namespace app::registers
