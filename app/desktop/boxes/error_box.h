// Tells an error: one sentence, and what a technician wants to know behind a button.
#pragma once

#include <QString>
#include <QWidget>
#include <exception>

namespace app::desktop {

/// The sentence stands in the box; "Detalhes" shows, and "Copiar" copies with the sentence, the engine's code and the
/// statement of a host::DatabaseError, the kind and the text of any other error.
void ShowError(QWidget* parent, const QString& title, const std::exception& error);

/// What stands behind the button.
QString ErrorDetails(const std::exception& error);

}  // namespace app::desktop
