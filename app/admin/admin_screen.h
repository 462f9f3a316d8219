// What the screens of the administration share.
#pragma once

#include <string>
#include <string_view>

#include "app/application.h"
#include "host/kit/screen.h"

namespace app::admin {

/// For administrators only: anybody else is refused when it opens and again at every action, in case the right was
/// taken away meanwhile.
class AdminScreen : public host::Screen {
 public:
  AdminScreen(Application& application, std::string class_name, std::string name, std::string caption);

  /// Throws host::InputError for whoever is no administrator.
  void FormCreate() override;

 protected:
  Application& App() const { return application_; }
  firebird::Database& Db() const { return application_.GetDatabase(); }
  host::Funcoes& Services() const { return application_.GetFuncoes(); }
  /// Throws host::InputError, one sentence, unless the user is an administrator.
  void NeedAdministrator() const;

 private:
  Application& application_;
};

/// Holds a subject for this station until the action ends, so that a check and what is stored after it cannot fall
/// apart because of another station. host::Database::LockRow holds a record of one company; users, parameters and
/// periods belong to all of them. Waits for the other station; throws host::DatabaseError when it takes too long.
void TakeTurn(firebird::Database& database, std::string_view subject);

/// The sentence for a record that another station changed since it was read: what it is, and who did it.
std::string ChangedElsewhere(host::Funcoes& services, std::string_view what, std::string_view log_subject,
                             std::string_view key);

}  // namespace app::admin
