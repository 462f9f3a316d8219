#include "desktop/support/boxes.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDateTime>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <exception>
#include <utility>

#include "desktop/support/keys.h"

namespace test {
namespace {

constexpr int kLookEvery = 2;       // milliseconds
constexpr qint64 kPatience = 3000;  // milliseconds that an answered box may take to go
constexpr int kMostGivenUp = 3;
constexpr int kMostSteps = 50;  // of the keyboard within a box or menu

QString Plain(QString text) { return text.remove(u'&'); }

std::optional<host::Icon> IconOf(QMessageBox::Icon icon) {
  switch (icon) {
    case QMessageBox::Information:
      return host::Icon::kInformation;
    case QMessageBox::Warning:
      return host::Icon::kExclamation;
    case QMessageBox::Question:
      return host::Icon::kQuestion;
    case QMessageBox::Critical:
      return host::Icon::kError;
    case QMessageBox::NoIcon:
      break;
  }
  return std::nullopt;
}

QString TextOf(const QWidget& box, const char* name) {
  const auto* label = name != nullptr ? box.findChild<QLabel*>(QLatin1String(name)) : box.findChild<QLabel*>();
  return label != nullptr ? label->text() : QString();
}

ShownBox Describe(const QWidget& box) {
  ShownBox shown;
  shown.name = box.objectName();
  shown.title = box.windowTitle();
  if (const auto* message = qobject_cast<const QMessageBox*>(&box)) {
    shown.name = QStringLiteral("MessageBox");
    shown.text = message->text();
    shown.icon = IconOf(message->icon());
  } else if (shown.name == QStringLiteral("ErrorBox")) {
    shown.text = TextOf(box, "Sentence");
    shown.icon = host::Icon::kError;
  } else {
    shown.text = TextOf(box, nullptr);
  }
  for (const QPushButton* button : box.findChildren<QPushButton*>()) {
    if (button->isDefault()) shown.default_button = Plain(button->text());
  }
  return shown;
}

bool IsInput(const ShownBox& shown) {
  return shown.name == QStringLiteral("InputBox") || shown.name == QStringLiteral("DateBox");
}

bool IsBox(const ShownBox& shown) {
  return shown.name == QStringLiteral("MessageBox") || shown.name == QStringLiteral("ErrorBox");
}

std::string Say(const ShownBox& shown) {
  return (shown.name + QStringLiteral(" \"") + shown.title + QStringLiteral("\": ") + shown.text).toStdString();
}

// By keys alone: Tab to the button, then Enter.
void PressButton(const QWidget& box, const QString& caption) {
  for (int step = 0; step < kMostSteps; ++step) {
    const auto* button = qobject_cast<const QPushButton*>(box.focusWidget());
    if (button != nullptr && Plain(button->text()) == caption) {
      QTest::keyClick(&Keyboard(), Qt::Key_Return);
      return;
    }
    QTest::keyClick(&Keyboard(), Qt::Key_Tab);
  }
  ADD_FAILURE() << "the box has no button \"" << caption.toStdString() << "\"";
}

}  // namespace

Boxes::Boxes() {
  // Looking may open an event loop of its own, in which a timer that is still at work would not tick.
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (std::exchange(looking_, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
          looking_ = false;
          Look();
        },
        Qt::QueuedConnection);
  });
  timer_.start(kLookEvery);
}

Boxes::~Boxes() {
  for (const Expected& expected : expected_) {
    ADD_FAILURE() << "never shown: \"" << expected.part.toStdString() << "\"";
  }
}

void Boxes::Expect(const QString& part, Reply reply) { expected_.push_back({Kind::kBox, part, reply}); }

void Boxes::ExpectInput(const QString& part, const std::optional<QString>& text) {
  expected_.push_back({Kind::kInput, part, Reply::kOk, text});
}

void Boxes::ExpectDialog(const QString& title_part, std::function<void(QWidget&)> act) {
  expected_.push_back({Kind::kDialog, title_part, Reply::kOk, {}, std::move(act)});
}

void Boxes::ExpectMenu(const QString& entry) { expected_.push_back({Kind::kMenu, entry}); }

std::vector<ShownBox> Boxes::Take() { return std::exchange(shown_, {}); }

Boxes::Seen* Boxes::SeenBefore(const QWidget* box) {
  std::erase_if(seen_, [](const Seen& seen) { return seen.box.isNull() && !seen.acting; });
  for (Seen& seen : seen_) {
    if (seen.box == box) return &seen;
  }
  return nullptr;
}

void Boxes::Look() {
  LookAtMenu();
  QWidget* const box = QApplication::activeModalWidget();
  if (box == nullptr || !box->isVisible()) return;
  const qint64 now = QDateTime::currentMSecsSinceEpoch();
  if (Seen* seen = SeenBefore(box)) {
    if (seen->acting || now - seen->since < kPatience) return;
    ADD_FAILURE() << "does not go: " << Say(Describe(*box));
    seen->since = now;
    // Nothing of the test would run any more: better to stop here than to hang.
    if (++seen->given_up > kMostGivenUp) GTEST_LOG_(FATAL) << "a window cannot be closed";
    GiveUp(*box);
    return;
  }
  // The keys go to the box only when the window system has given it the keyboard.
  if (QApplication::activeWindow() != box || QApplication::focusWidget() == nullptr) {
    box->activateWindow();
    if (std::exchange(coming_, box) != box) coming_since_ = now;
    if (now - coming_since_ < kPatience) return;
    ADD_FAILURE() << "gets no keyboard: " << Say(Describe(*box));
  }
  coming_ = nullptr;  // the next box may come to lie at the same address
  seen_.push_back({box, false, now});
  Meet(*box);
}

void Boxes::LookAtMenu() {
  if (expected_.empty() || expected_.front().kind != Kind::kMenu) return;
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  if (menu == nullptr || !menu->isVisible()) return;
  const QString entry = expected_.front().part;
  expected_.pop_front();
  for (int step = 0; step < kMostSteps; ++step) {
    if (menu->activeAction() != nullptr && Plain(menu->activeAction()->text()) == entry) {
      QTest::keyClick(menu, Qt::Key_Return);
      return;
    }
    QTest::keyClick(menu, Qt::Key_Down);
  }
  ADD_FAILURE() << "the menu has no entry \"" << entry.toStdString() << "\"";
  QTest::keyClick(menu, Qt::Key_Escape);
}

bool Boxes::Fits(const Expected& expected, const ShownBox& shown) {
  switch (expected.kind) {
    case Kind::kBox:
      return IsBox(shown) && shown.text.contains(expected.part);
    case Kind::kInput:
      return IsInput(shown) && shown.text.contains(expected.part);
    case Kind::kDialog:
      return shown.title.contains(expected.part) || shown.text.contains(expected.part);
    case Kind::kMenu:
      break;
  }
  return false;
}

void Boxes::Meet(QWidget& box) {
  const ShownBox shown = Describe(box);
  shown_.push_back(shown);
  if (expected_.empty() || !Fits(expected_.front(), shown)) {
    ADD_FAILURE() << "not expected: " << Say(shown)
                  << "\nexpected: " << (expected_.empty() ? "nothing" : expected_.front().part.toStdString());
    GiveUp(box);
    return;
  }
  const Expected expected = expected_.front();
  expected_.pop_front();
  Answer(box, expected);
}

void Boxes::Answer(QWidget& box, const Expected& expected) {
  const QPointer<QWidget> still(&box);
  if (expected.kind == Kind::kDialog) {
    SeenBefore(&box)->acting = true;
    try {
      expected.act(box);
    } catch (const std::exception& error) {
      ADD_FAILURE() << "in " << expected.part.toStdString() << ": " << error.what();
    }
    Seen* const seen = still.isNull() ? nullptr : SeenBefore(&box);
    if (seen == nullptr) return;
    // It goes when this returns; what is still there after a while was left open.
    seen->acting = false;
    seen->since = QDateTime::currentMSecsSinceEpoch();
  } else if (expected.kind == Kind::kInput) {
    if (!expected.text) {
      QTest::keyClick(&Keyboard(), Qt::Key_Escape);
      return;
    }
    // What is proposed is selected: typing replaces it. Nothing to type empties it.
    if (expected.text->isEmpty()) QTest::keyClick(&Keyboard(), Qt::Key_Delete);
    TypeText(*expected.text);
    QTest::keyClick(&Keyboard(), Qt::Key_Return);
  } else if (expected.reply == Reply::kYes || expected.reply == Reply::kNo) {
    PressButton(box, expected.reply == Reply::kYes ? QStringLiteral("Sim") : QStringLiteral("Não"));
  } else {
    QTest::keyClick(&Keyboard(), expected.reply == Reply::kOk ? Qt::Key_Return : Qt::Key_Escape);
  }
}

// Esc where a box understands it; otherwise by force, so that the test ends.
void Boxes::GiveUp(QWidget& box) {
  const QPointer<QWidget> still(&box);
  QTest::keyClick(&box, Qt::Key_Escape);
  if (still.isNull() || !still->isVisible()) return;
  if (auto* dialog = qobject_cast<QDialog*>(&box)) {
    dialog->done(QDialog::Rejected);
  } else {
    box.close();
  }
}

}  // namespace test
