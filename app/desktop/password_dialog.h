// The person changes the own password.
#pragma once

#include <QWidget>
#include <string>

#include "app/firebird/database.h"

namespace app::desktop {

/// Asks for the present password and twice for the new one; objections stand in the dialog. For a database opened
/// without a server.
void ChangePassword(QWidget* parent, firebird::Database& database, const std::string& user);

}  // namespace app::desktop
