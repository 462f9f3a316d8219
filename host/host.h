// Everything the module asks of the application that loads it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/database.h"
#include "host/date.h"
#include "host/dialogs.h"
#include "host/estoque.h"
#include "host/funcoes.h"
#include "host/serial_port.h"
#include "host/tabela.h"

namespace host {

class Screen;

/// Accounting periods.
class Contabil {
 public:
  virtual ~Contabil() = default;
  /// True when the period of that area ("IV") which holds the date is reconciled; the caller then refuses the change.
  virtual bool PeriodoConciliado(Date date, std::string_view area) = 0;
};

/// The program's clock; tests and scripts set it.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;
  Date Today() const { return Now().date; }
};

/// Values kept per user on this computer, as text.
class UserSettings {
 public:
  virtual ~UserSettings() = default;
  /// Nothing when it was never written.
  virtual std::optional<std::string> Read(std::string_view key, std::string_view section, std::string_view name) = 0;
  virtual void Write(std::string_view key, std::string_view section, std::string_view name, std::string_view value) = 0;
};

/// Lent to every screen for as long as the screen lives; all calls on the user-interface thread.
class Host {
 public:
  virtual ~Host() = default;

  virtual Funcoes& GetFuncoes() = 0;
  virtual Tabela& GetTabela() = 0;
  virtual Contabil& GetContabil() = 0;
  virtual Dialogs& GetDialogs() = 0;
  virtual Clock& GetClock() = 0;
  virtual UserSettings& GetUserSettings() = 0;
  virtual std::unique_ptr<TEstoque> NewEstoque() = 0;
  /// A serial port for this screen, closed at first. It must not outlive the screen.
  virtual std::unique_ptr<SerialPort> NewSerialPort(Screen& owner) = 0;

  /// Shows a screen and returns when it asked to be closed. The screen lives on; Free ends it.
  virtual void ShowModal(Screen& screen) = 0;
  /// Closes and destroys a screen that Carrega_Form returned. Safe while one of its own methods is running: it then
  /// goes when the action ends.
  virtual void Free(Screen& screen) = 0;
};

}  // namespace host
