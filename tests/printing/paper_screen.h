// A screen that has nothing but datasets to print.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/equipment.h"
#include "app/printing/layout/make_printout.h"
#include "app/printing/page/printout.h"
#include "host/errors.h"
#include "host/kit/dataset.h"
#include "host/kit/report.h"
#include "host/kit/screen.h"

namespace test {

/// The screen asks its host for nothing.
class NoHost : public host::Host {
 public:
  host::Funcoes& GetFuncoes() override { Refuse(); }
  host::Tabela& GetTabela() override { Refuse(); }
  host::Contabil& GetContabil() override { Refuse(); }
  host::Dialogs& GetDialogs() override { Refuse(); }
  host::Clock& GetClock() override { Refuse(); }
  host::UserSettings& GetUserSettings() override { Refuse(); }
  std::unique_ptr<host::TEstoque> NewEstoque() override { return nullptr; }
  std::unique_ptr<host::SerialPort> NewSerialPort(host::Screen&) override { return nullptr; }
  void ShowModal(host::Screen&) override {}
  void Free(host::Screen&) override {}

 private:
  [[noreturn]] static void Refuse() { throw std::logic_error("no service is there"); }
};

class ForgottenSettings : public host::UserSettings {
 public:
  std::optional<std::string> Read(std::string_view, std::string_view, std::string_view) override { return {}; }
  void Write(std::string_view, std::string_view, std::string_view, std::string_view) override {}
};

using FieldsOfRow = std::vector<std::pair<std::string, host::Value>>;

/// Datasets by name, and the program's own layouts over them.
class PaperScreen {
 public:
  PaperScreen() : screen_(host_, "TfmPapel", "fmPapel", "Papel"), functions_(screen_, "prTxReport") {}

  /// A dataset of that name, or an empty one anew, with one field per name, of the type that its values have (`text`
  /// where there is none); the cursor stands on the first row.
  host::Dataset& Add(const std::string& name, const std::vector<std::string>& fields,
                     const std::vector<FieldsOfRow>& rows = {});
  host::Report& Functions() { return functions_; }
  host::Screen& Screen() { return screen_; }

  /// With the clock at 10/03/2026 22:15, user "ADMIN" of "TECELAGEM SÃO JOSÉ LTDA".
  app::printing::Printout Print(const std::string& report, char kind = 'W', const std::string& layouts_folder = {},
                                std::chrono::milliseconds limit = app::printing::kLayoutTimeLimit);

 private:
  NoHost host_;
  host::Screen screen_;
  host::Report functions_;
  ForgottenSettings settings_;
  std::map<std::string, std::unique_ptr<host::Dataset>> datasets_;
};

/// All texts of a page, or of all pages, each on a line of its own.
std::string TextOf(const app::printing::Printout& printout, std::size_t page);
std::string TextOf(const app::printing::Printout& printout);

/// The page as a printer of that resolution sees it, into a PNG file. The test fails when it cannot be written.
void WritePage(const app::printing::Printout& printout, std::size_t page, int dpi, const std::string& file);

/// Texts of the page that lie outside the paper or cover each other, one line each; empty when there are none.
std::string Collisions(const app::printing::Printout& printout, std::size_t page);

}  // namespace test
