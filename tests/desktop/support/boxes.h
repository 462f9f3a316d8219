// Answers the boxes that come up while a test acts, and insists on which boxes they are.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "host/dialogs.h"

namespace test {

/// A box as the person saw it.
struct ShownBox {
  QString name;  // "MessageBox", "ErrorBox", "InputBox", "DateBox", or the dialog's own object name
  QString title;
  QString text;
  std::optional<host::Icon> icon;  // of a message or question
  QString default_button;          // its text without "&"; empty when there is none
};

enum class Reply { kOk, kYes, kNo, kEscape };

/// Expectations are met in the order in which they were made. A box that nobody expected, or another one than expected,
/// fails the test and is given up with Esc; an expectation that nothing met fails it when the object goes.
class Boxes : public QObject {
  Q_OBJECT

 public:
  Boxes();
  ~Boxes() override;

  /// A message or question whose text contains this, answered by keys: Enter, Tab to "Sim" or "Não" and Enter, or Esc.
  void Expect(const QString& part, Reply reply = Reply::kOk);
  /// An input or date box whose prompt contains this; the text is typed over what it proposes and Enter pressed, or Esc
  /// for nothing.
  void ExpectInput(const QString& part, const std::optional<QString>& text);
  /// Any modal window (a lookup, a modal screen, a dialog, a box) whose title or text contains this; the test acts in
  /// it itself. What `act` leaves open is closed, and the test fails.
  void ExpectDialog(const QString& title_part, std::function<void(QWidget&)> act);
  /// A context menu that is open; its entry with this text is picked by keys.
  void ExpectMenu(const QString& entry);

  /// Every box since the last call.
  std::vector<ShownBox> Take();
  /// All expectations so far were met.
  bool Met() const { return expected_.empty(); }

 private:
  enum class Kind { kBox, kInput, kDialog, kMenu };
  struct Expected {
    Kind kind;
    QString part;
    Reply reply = Reply::kOk;
    std::optional<QString> text = {};
    std::function<void(QWidget&)> act = {};
  };
  struct Seen {
    QPointer<QWidget> box;
    bool acting = false;
    qint64 since = 0;
    int given_up = 0;
  };

  static bool Fits(const Expected& expected, const ShownBox& shown);
  void Look();
  void LookAtMenu();
  void Meet(QWidget& box);
  void Answer(QWidget& box, const Expected& expected);
  void GiveUp(QWidget& box);
  Seen* SeenBefore(const QWidget* box);

  QTimer timer_;
  bool looking_ = false;
  std::deque<Expected> expected_;
  std::vector<ShownBox> shown_;
  std::deque<Seen> seen_;
  const QWidget* coming_ = nullptr;  // shown and not yet active, since then
  qint64 coming_since_ = 0;
};

}  // namespace test
