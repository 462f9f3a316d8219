// What the help menu shows.
#pragma once

#include <QString>
#include <QWidget>

namespace app::desktop {

/// Program, version and database.
void ShowAbout(QWidget* parent, const QString& database);
/// The keys that every screen understands.
void ShowKeysOfAllScreens(QWidget* parent);

}  // namespace app::desktop
