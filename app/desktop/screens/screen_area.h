// The windows of the open screens, in tabs or free, and which of them the person is in.
#pragma once

#include <QList>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <string_view>

#include "app/desktop/basics/station.h"
#include "host/kit/screen.h"

namespace app::desktop {

class ScreenWindow;

/// The child window around a ScreenWindow. Closing it is asked of the screen; it goes when the screen does.
class ScreenFrame : public QMdiSubWindow {
  Q_OBJECT

 public:
  ScreenFrame(ScreenWindow* window, const QString& title);
  ScreenWindow* Window() const { return window_; }

 signals:
  void CloseWanted();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  ScreenWindow* window_;
};

class ScreenArea : public QMdiArea {
  Q_OBJECT

 public:
  enum class Mode { kTabs, kFree };

  ScreenArea(Station& station, QWidget* parent);
  ~ScreenArea() override;

  Mode GetMode() const { return mode_; }
  void SetMode(Mode mode);

  /// The person opens a screen or turns to it; it gets the focus.
  void Open(std::string_view screen_class);
  /// The person closes a screen. What is being typed is settled first; a screen that refuses stays.
  void Close(host::Screen& screen);
  /// The same for all of them; false when one stayed.
  bool CloseAll();

  /// The program shows a screen: its window opens or comes forward.
  void Show(host::Screen& screen);
  /// The screen goes: its window lets go of it.
  void LetGo(host::Screen& screen);

  /// By component or class name; null when it is not open.
  ScreenWindow* WindowOf(std::string_view name) const;
  ScreenWindow* Active() const;
  /// In the order of their opening.
  QList<ScreenFrame*> Frames() const;

 signals:
  /// Another window came to the front, or the last one went.
  void ActiveChanged();

 private:
  void NarrowTabs();
  ScreenFrame* FrameOf(const host::Screen& screen) const;
  QSize FreeSize(const ScreenFrame& frame) const;
  void ShowFrame(ScreenFrame& frame);
  void FollowLater();
  void Follow();

  Station& station_;
  Mode mode_ = Mode::kTabs;
  QList<ScreenFrame*> frames_;
  ScreenWindow* entered_ = nullptr;  // the window whose turn has been taken account of
  bool follow_pending_ = false;
};

}  // namespace app::desktop
