// A grid in a real window over a toy screen, driven by keys and mouse.
#pragma once

#include <gtest/gtest.h>

#include <QTableView>
#include <QWidget>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "app/application.h"
#include "app/desktop/basics/station.h"
#include "app/desktop/grid/grid_panel.h"
#include "app/desktop/grid/grid_view.h"
#include "app/desktop/grid/totals_row.h"
#include "desktop/support/keys.h"
#include "tests/host/toy.h"

namespace test {

/// Only the desk is there.
class GridApplication : public app::Application {
 public:
  explicit GridApplication(Toy& toy) : toy_(toy) {}

  host::Funcoes& GetFuncoes() override { throw std::logic_error("not in the toy"); }
  host::Tabela& GetTabela() override { throw std::logic_error("not in the toy"); }
  host::Contabil& GetContabil() override { throw std::logic_error("not in the toy"); }
  host::Dialogs& GetDialogs() override { return toy_.host; }
  host::Clock& GetClock() override { throw std::logic_error("not in the toy"); }
  host::UserSettings& GetUserSettings() override { throw std::logic_error("not in the toy"); }
  std::unique_ptr<host::TEstoque> NewEstoque() override { return nullptr; }
  std::unique_ptr<host::SerialPort> NewSerialPort(host::Screen& owner) override {
    return toy_.host.NewSerialPort(owner);
  }
  void ShowModal(host::Screen& screen) override { toy_.desk.ShowModal(screen); }
  void Free(host::Screen& screen) override { toy_.desk.Free(screen); }
  host::Desk& GetDesk() override { return toy_.desk; }
  app::firebird::Database& GetDatabase() override { throw std::logic_error("not in the toy"); }
  app::ProgramClock& GetProgramClock() override { throw std::logic_error("not in the toy"); }
  std::vector<app::MenuScreen> MenuScreens() override { return {}; }
  void WriteParameter(std::string_view /*group*/, int /*number*/, std::string_view /*value*/) override {}
  std::vector<app::PrintJob> TakeJobs() override { return {}; }
  std::optional<std::string> AskFile(const app::FileQuestion& /*question*/) override { return std::nullopt; }

 private:
  Toy& toy_;
};

class MemorySettings : public host::UserSettings {
 public:
  std::optional<std::string> Read(std::string_view key, std::string_view section, std::string_view name) override;
  void Write(std::string_view key, std::string_view section, std::string_view name, std::string_view value) override;
  std::map<std::string, std::string> values;
};

/// The screen "Ordem": EdtNumero, the grid GrdItens over TbItens, BtnGravar. Columns Codigo (F4 notes "F4"), Descricao
/// (read only), Cor, Qtde ("0.00", summed), Ciclos (whole numbers, summed), Data, Sel (check box). The code "X" is
/// refused at the exit of its cell; a row without a colour gives itself up.
class GridTest : public testing::Test {
 protected:
  GridTest();
  ~GridTest() override;

  /// A row as the program adds it.
  void Add(const std::string& code, const std::string& colour, double quantity, int cycles = 0,
           const std::string& date = {});
  /// A, B and C with quantities 30, 10 and 20 and colours Verde, azul and Âmbar.
  void Three();
  /// Shows the panel and turns to it; the cursor is in the first cell.
  void Show();
  /// A new panel over the same grid, as when the screen is opened again.
  void Rebuild();

  app::desktop::GridView& View() const;
  app::desktop::TotalsRow& Totals() const;
  app::desktop::CellEditor* Editor() const { return View().Editor(); }
  /// The codes as the list shows them: "ABC".
  std::string Codes() const;
  /// What a cell of the list shows.
  std::string Cell(int row, std::string_view field) const;
  /// Code of the row and field of the cell under the cursor, as the view shows it; "-" when it shows none.
  std::string Cursor() const;
  /// The same as the screen knows it.
  std::string Stands() const;
  int Column(std::string_view field) const { return grid_->ColumnOf(field); }

  QPoint Middle(int row, std::string_view field) const;
  void Click(int row, std::string_view field, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void DoubleClick(int row, std::string_view field);
  void ClickHeader(std::string_view field);
  /// Opens the panel's menu and picks this entry; the entries shown, joined by "|".
  std::string Menu(const QString& pick = {});

  std::string Events() { return toy_.TakeEvents(); }

  Toy toy_;
  GridApplication application_{toy_};
  MemorySettings settings_;
  app::desktop::Station station_{application_};
  ToyScreen* screen_ = nullptr;
  host::Edit* number_ = nullptr;
  host::Dataset* items_ = nullptr;
  host::Grid* grid_ = nullptr;
  host::Button* save_ = nullptr;
  host::PopupMenu* popup_ = nullptr;
  std::unique_ptr<QWidget> window_;
  app::desktop::GridPanel* panel_ = nullptr;
};

}  // namespace test
