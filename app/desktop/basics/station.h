// The desk as the windows use it: what a person does in a window reaches the screens through here, one act at a time.
#pragma once

#include <QObject>
#include <functional>

#include "app/application.h"
#include "host/kit/desk.h"

namespace app::desktop {

/// Text that stands in a widget and was not handed to the screen yet: a number or a date half typed, a cell whose
/// editor is open. There is at most one at a time.
class Typing {
 public:
  /// `hand_over` gives the text to the screen, false when it was refused (the message was shown; it goes on being
  /// typed). `give_up` shows again what stood there. Another text still being typed must have been settled before.
  void Begin(QObject* where, std::function<bool()> hand_over, std::function<void()> give_up);
  /// Nothing is being typed there any more; without effect when another widget is typed into.
  void End(QObject* where);
  bool IsIn(const QObject* where) const { return where_ == where; }
  bool Open() const { return where_ != nullptr; }
  /// True when nothing is being typed or it was taken.
  bool Settle();
  void GiveUp();

 private:
  QObject* where_ = nullptr;
  std::function<bool()> hand_over_;
  std::function<void()> give_up_;
  bool settling_ = false;
};

class Station : public QObject {
  Q_OBJECT

 public:
  explicit Station(Application& application, QObject* parent = nullptr);

  Application& App() { return application_; }
  host::Desk& Desk() { return application_.GetDesk(); }
  Typing& GetTyping() { return typing_; }

  /// One act of the person. What is being typed is settled first (refused: no act). While another act runs nothing
  /// happens: a window that repaints must not start a second one. An act that is not possible (host::ActError) is told
  /// by NotPossible. Emits Settled afterwards in every case. True for kDone.
  bool Do(const std::function<host::ActResult()>& act);
  /// The same without settling what is being typed: the act is the typing itself.
  bool DoTyping(const std::function<host::ActResult()>& act);
  /// An act of the person, or its end, is running now; what widgets tell meanwhile is the program's doing.
  bool Busy() const { return running_ > 0; }
  /// Runs `loop`, the event loop of a modal screen that was opened inside an act: acts of the person are possible again
  /// until it ends.
  void WhileWaiting(const std::function<void()>& loop);

 signals:
  /// An act ended: every window shows again what its screen holds, and the focus follows the desk.
  void Settled();
  void NotPossible(const QString& reason);

 private:
  bool Run(const std::function<host::ActResult()>& act);

  Application& application_;
  Typing typing_;
  int running_ = 0;
};

}  // namespace app::desktop
