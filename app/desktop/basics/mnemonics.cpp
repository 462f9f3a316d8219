#include "app/desktop/basics/mnemonics.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QTabBar>

namespace app::desktop {
namespace {

bool Fits(QChar character) {
  const char16_t letter = character.toLower().unicode();
  return letter >= u'a' && letter <= u'z';
}

}  // namespace

QString WithMnemonic(const QString& text, QSet<QChar>& taken) {
  const auto try_at = [&](qsizetype at) {
    const QChar letter = text[at].toLower();
    if (!Fits(letter) || taken.contains(letter)) return false;
    taken.insert(letter);
    return true;
  };
  for (const bool only_beginnings : {true, false}) {
    for (qsizetype at = 0; at < text.size(); ++at) {
      const bool beginning = at == 0 || text[at - 1].isSpace();
      if (only_beginnings && !beginning) continue;
      if (try_at(at)) return text.left(at) + u'&' + text.mid(at);
    }
  }
  return text;
}

QChar MnemonicOf(const QString& text) {
  for (qsizetype at = text.indexOf(u'&'); at >= 0 && at + 1 < text.size(); at = text.indexOf(u'&', at + 2)) {
    if (text[at + 1] != u'&') return text[at + 1].toLower();
  }
  return {};
}

QSet<QChar> MnemonicsIn(const QWidget& window) {
  QSet<QChar> letters;
  const auto add = [&letters](const QString& text) {
    const QChar letter = MnemonicOf(text);
    if (!letter.isNull()) letters.insert(letter);
  };
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) add(button->text());
  for (const QGroupBox* group : window.findChildren<QGroupBox*>()) add(group->title());
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) add(label->text());
  }
  for (const QTabBar* tabs : window.findChildren<QTabBar*>()) {
    for (int i = 0; i < tabs->count(); ++i) add(tabs->tabText(i));
  }
  return letters;
}

}  // namespace app::desktop
