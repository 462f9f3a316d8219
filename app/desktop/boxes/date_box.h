// Asks for a date.
#pragma once

#include <QString>
#include <QWidget>

namespace app::desktop {

/// A line for "DD/MM/AAAA" with a calendar behind F4 and a button. What is no date is not taken: the box says so and
/// stays. The text as typed, without blanks around it; empty when the person gave up.
QString AskDateText(QWidget* parent, const QString& title, const QString& prompt);

}  // namespace app::desktop
