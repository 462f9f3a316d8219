#include "app/desktop/bindings/mismatches.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include "app/desktop/bindings/screen_bindings.h"

namespace app::desktop {
namespace {

QString NameOf(const QWidget& widget) {
  const QString name = widget.objectName();
  return QStringLiteral("%1 \"%2\"").arg(QString::fromLatin1(widget.metaObject()->className()), name);
}

// Parts that Qt or a grid puts into a widget of its own.
bool IsPart(const QWidget& widget) {
  return IsInside<GridPanel>(widget) || IsInside<QComboBox>(widget) || IsInside<QLineEdit>(widget) ||
         IsInside<QTabBar>(widget) || IsInside<QAbstractSpinBox>(widget) || IsInside<QPlainTextEdit>(widget);
}

bool OughtToBeBound(const QWidget& widget) {
  if (qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QPlainTextEdit*>(&widget) ||
      qobject_cast<const QCheckBox*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
      qobject_cast<const QPushButton*>(&widget) || qobject_cast<const QToolButton*>(&widget) ||
      qobject_cast<const QTabWidget*>(&widget) || qobject_cast<const GridPanel*>(&widget)) {
    return true;
  }
  if (qobject_cast<const QGroupBox*>(&widget)) return !widget.objectName().startsWith(QLatin1String("qt_"));
  const auto* label = qobject_cast<const QLabel*>(&widget);
  return label != nullptr && label->buddy() == nullptr && label->objectName().startsWith(QLatin1String("Lbl"));
}

QStringList Components(const ScreenBindings& bindings, const QWidget& form) {
  QStringList lines;
  for (host::Component* component : bindings.GetScreen().Components()) {
    const auto* control = dynamic_cast<host::Control*>(component);
    if (control == nullptr) continue;
    const QString name = QString::fromStdString(control->Name());
    const QList<QWidget*> widgets = form.findChildren<QWidget*>(name);
    if (widgets.isEmpty()) {
      lines.append(QStringLiteral("%1 has no widget").arg(name));
    } else if (bindings.Of(control) == nullptr) {
      lines.append(QStringLiteral("%1 cannot be shown by %2").arg(name, NameOf(*widgets.front())));
    }
    if (widgets.size() > 1) lines.append(QStringLiteral("%1 has %2 widgets").arg(name).arg(widgets.size()));
  }
  return lines;
}

QStringList Widgets(const ScreenBindings& bindings, const QWidget& form) {
  QStringList lines;
  for (const QWidget* widget : form.findChildren<QWidget*>()) {
    if (!OughtToBeBound(*widget) || IsPart(*widget)) continue;
    bool bound = false;
    for (const auto& binding : bindings.Bindings()) bound = bound || &binding->Widget() == widget;
    if (!bound) lines.append(QStringLiteral("%1 shows no component").arg(NameOf(*widget)));
  }
  return lines;
}

struct Place {
  const QWidget* tabs = nullptr;
  int page = 0;
};

// The innermost page that the widget stands on in the form.
Place PlaceOf(const QWidget& widget) {
  const QWidget* inside = &widget;
  for (const QWidget* around = widget.parentWidget(); around != nullptr; around = around->parentWidget()) {
    if (const auto* tabs = qobject_cast<const QTabWidget*>(around)) {
      for (int page = 0; page < tabs->count(); ++page) {
        if (tabs->widget(page)->isAncestorOf(inside)) return {tabs, page};
      }
    }
  }
  return {};
}

QStringList Pages(const ScreenBindings& bindings) {
  QStringList lines;
  for (const auto& binding : bindings.Bindings()) {
    const host::Control& control = binding->GetControl();
    const bool only_shows = dynamic_cast<const host::Label*>(&control) != nullptr;
    // A label that the screen places nowhere goes with the form.
    if (only_shows && control.Pages() == nullptr) continue;
    const Binding* pages = bindings.Of(control.Pages());
    const Place place = PlaceOf(binding->Widget());
    const QWidget* wanted = pages == nullptr ? nullptr : &pages->Widget();
    if (place.tabs == wanted && (wanted == nullptr || place.page == control.Page())) continue;
    lines.append(QStringLiteral("%1 stands on page %2 of %3 in the form, on page %4 of %5 in the screen")
                     .arg(QString::fromStdString(control.Name()))
                     .arg(place.page)
                     .arg(place.tabs == nullptr ? QStringLiteral("none") : place.tabs->objectName())
                     .arg(control.Page())
                     .arg(control.Pages() == nullptr ? QStringLiteral("none")
                                                     : QString::fromStdString(control.Pages()->Name())));
  }
  return lines;
}

QStringList Mnemonics(const QWidget& form) {
  QMap<QString, QStringList> users;
  const auto note = [&users](const QString& text, const QString& who) {
    const QString letter = QKeySequence::mnemonic(text).toString(QKeySequence::PortableText);
    if (!letter.isEmpty()) users[letter].append(who);
  };
  for (const QWidget* widget : form.findChildren<QWidget*>()) {
    if (IsPart(*widget)) continue;
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) note(button->text(), button->text());
    if (const auto* group = qobject_cast<const QGroupBox*>(widget)) note(group->title(), group->title());
    const auto* label = qobject_cast<const QLabel*>(widget);
    if (label != nullptr && label->buddy() != nullptr) note(label->text(), label->text());
    if (const auto* tabs = qobject_cast<const QTabWidget*>(widget)) {
      for (int page = 0; page < tabs->count(); ++page) note(tabs->tabText(page), tabs->tabText(page));
    }
  }
  QStringList lines;
  for (auto at = users.constBegin(); at != users.constEnd(); ++at) {
    if (at.value().size() < 2) continue;
    lines.append(QStringLiteral("%1 belongs to %2").arg(at.key(), at.value().join(QStringLiteral(", "))));
  }
  return lines;
}

}  // namespace

QStringList PageCaptionsThatDiffer(const host::Screen& screen, const QWidget& form) {
  QStringList lines;
  for (const host::Component* component : screen.Components()) {
    const auto* pages = dynamic_cast<const host::PageControl*>(component);
    if (pages == nullptr) continue;
    const QString name = QString::fromStdString(pages->Name());
    const auto* tabs = form.findChild<QTabWidget*>(name);
    if (tabs == nullptr) continue;
    const int count = static_cast<int>(pages->Pages().size());
    if (tabs->count() != count) {
      lines.append(
          QStringLiteral("%1 has %2 pages in the form, %3 in the screen").arg(name).arg(tabs->count()).arg(count));
    }
    for (int page = 0; page < count && page < tabs->count(); ++page) {
      const QString wanted = QString::fromStdString(pages->Pages()[static_cast<std::size_t>(page)]);
      if (tabs->tabText(page) == wanted) continue;
      lines.append(QStringLiteral("%1: page %2 is \"%3\" in the form, \"%4\" in the screen")
                       .arg(name)
                       .arg(page)
                       .arg(tabs->tabText(page), wanted));
    }
  }
  return lines;
}

QStringList MismatchesOf(const ScreenBindings& bindings, const QWidget& form) {
  return Components(bindings, form) + Widgets(bindings, form) + Pages(bindings) + Mnemonics(form);
}

}  // namespace app::desktop
