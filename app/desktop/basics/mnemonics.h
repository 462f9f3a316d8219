// Letters that Alt reaches.
#pragma once

#include <QSet>
#include <QString>
#include <QWidget>

namespace app::desktop {

/// The text with an "&" before the first letter that `taken` does not hold yet, beginnings of words first; the letter
/// is then taken. The plain text when none is left. Letters are small ones without accents.
QString WithMnemonic(const QString& text, QSet<QChar>& taken);

/// The letter after the "&" of a text, as a small one; null when it has none.
QChar MnemonicOf(const QString& text);

/// Letters that buttons, captions, tabs and groups in this window answer to.
QSet<QChar> MnemonicsIn(const QWidget& window);

}  // namespace app::desktop
