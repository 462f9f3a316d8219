// The general services of the reference host.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"
#include "app/services/numbering.h"
#include "app/services/parameters.h"
#include "app/services/users.h"
#include "app/tables/primary_key.h"
#include "host/funcoes.h"
#include "host/host.h"

namespace app::services {

/// Who is asked for functions that a layout calls and the engine does not know; null for nobody.
struct AskedOfScreen {
  host::Report* graphic;
  host::Report* text;
};

/// What the general services need of the program's windows.
class Windows {
 public:
  virtual ~Windows() = default;
  /// See the operations of host::Funcoes that these serve: Carrega_Form, pSetFocus, InputBoxData, Ocupado.
  virtual host::Screen& LoadScreen(std::string_view screen_class) = 0;
  virtual void MoveFocus(host::Screen& screen, bool back) = 0;
  virtual std::string AskDate(std::string_view caption, std::string_view prompt) = 0;
  virtual void ShowBusy(bool on, std::string_view text) = 0;
  /// See Chama_Relatorio; `kind` is 'W' or 'T'.
  virtual void Print(std::string_view report, char kind, AskedOfScreen functions, host::Screen& owner,
                     const host::ReportFlags& flags) = 0;
};

class GeneralServices : public host::Funcoes {
 public:
  /// What is lent here outlives the object.
  struct Parts {
    firebird::Database& database;
    Parameters& parameters;
    const host::Clock& clock;
    Windows& windows;
  };
  GeneralServices(Parts parts, User user)
      : parts_(parts), user_(std::move(user)), numbering_(parts.database), keys_(parts.database) {}

  std::string vUsuario() const override { return user_.name; }
  std::string vUsuarioCodigo() const override { return user_.code; }

  std::string Aspas(std::string_view text) const override;
  std::string PermanecePonto(double number) const override;
  std::string DBLocal(std::string_view table, bool company) const override;
  std::string DBLocal_SQL(std::string_view statement) const override;

  bool Existe(std::string_view table, std::string_view columns, std::string_view quoted,
              host::Database& database) override;
  host::Value Busca_Valor(std::string_view table, std::string_view columns, std::string_view result,
                          std::string_view quoted, bool company, bool trim) override;
  std::string Proximo(std::string_view table, std::string_view column, int width, bool company) override;
  std::string ProximaOrdemTecelB(std::string_view order) override;
  std::string BuscaParametro(std::string_view group, int number) override;

  bool Acessa(std::string_view screen_class, std::string_view operation, std::string_view option) override;
  void GeraLog(std::string_view subject, std::string_view text, host::LogOperation operation, std::string_view key,
               const host::Component* object) override;
  std::optional<host::LogMark> UltimoLog(std::string_view subject, std::string_view key) override;
  std::vector<host::LogRow> UltimosLogs(std::string_view subject, std::string_view key, std::size_t count) override;
  std::vector<host::LedgerRow> MovimentosDaPeca(std::string_view order, int roll) override;
  double CalculaPercRegra(std::string_view rule, std::string_view fabric) override;

  std::string InputBoxData(std::string_view caption, std::string_view prompt) override;
  void Ocupado(bool on, const host::Screen& screen, std::string_view text) override;
  void pSetFocus(host::Screen& screen, bool back) override;
  host::Screen& Carrega_Form(std::string_view screen_class) override;

  void Chama_Relatorio(host::Report* graphic, host::Report* text, std::string_view report, host::Screen& owner,
                       std::string_view print_type, const host::ReportFlags& flags) override;
  double PegaPesoBalanca(std::string_view received, char terminator) override;

 private:
  std::string FirstRowOrder(const std::string& table, std::string_view columns);

  Parts parts_;
  User user_;
  Numbering numbering_;
  tables::PrimaryKeys keys_;
};

}  // namespace app::services
