#include "app/desktop/screens/screen_area.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QKeySequence>
#include <QMenu>
#include <QTabBar>
#include <QTimer>
#include <utility>

#include "app/desktop/basics/text.h"
#include "app/desktop/screens/screen_window.h"
#include "host/text.h"

namespace app::desktop {
namespace {

constexpr double kFreeShare = 0.85;  // of the area, each way

}  // namespace

ScreenFrame::ScreenFrame(ScreenWindow* window, const QString& title) : window_(window) {
  setWidget(window);
  setWindowTitle(title);
  setWindowIcon(QApplication::windowIcon());
  // Ctrl+W is in the menu of the program; twice the same key would do nothing.
  for (QAction* action : systemMenu()->actions()) action->setShortcuts(QList<QKeySequence>());
}

void ScreenFrame::closeEvent(QCloseEvent* event) {
  event->ignore();
  emit CloseWanted();
}

ScreenArea::ScreenArea(Station& station, QWidget* parent) : QMdiArea(parent), station_(station) {
  setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setDocumentMode(true);
  setTabsClosable(true);
  setTabsMovable(true);
  setViewMode(QMdiArea::TabbedView);
  NarrowTabs();
  connect(this, &QMdiArea::subWindowActivated, this, [this](const QMdiSubWindow* frame) {
    emit ActiveChanged();
    if (frame != nullptr) FollowLater();
  });
  connect(&station_, &Station::Settled, this, &ScreenArea::FollowLater);
}

ScreenArea::~ScreenArea() {
  disconnect(this, nullptr, this, nullptr);
  for (ScreenFrame* frame : std::exchange(frames_, {})) delete frame;
}

void ScreenArea::SetMode(Mode mode) {
  if (mode == mode_) return;
  mode_ = mode;
  QMdiSubWindow* const active = activeSubWindow();
  setViewMode(mode == Mode::kTabs ? QMdiArea::TabbedView : QMdiArea::SubWindowView);
  if (mode == Mode::kTabs) {
    setDocumentMode(true);
    setTabsClosable(true);
    setTabsMovable(true);
    NarrowTabs();
  }
  if (mode == Mode::kFree) {
    for (ScreenFrame* frame : std::as_const(frames_)) {
      frame->showNormal();
      frame->resize(FreeSize(*frame));
    }
    cascadeSubWindows();
    for (ScreenFrame* frame : std::as_const(frames_)) frame->resize(FreeSize(*frame));
  }
  for (ScreenFrame* frame : std::as_const(frames_)) ShowFrame(*frame);
  setActiveSubWindow(active);
}

// A tab is as wide as its title, also where it is the only one.
void ScreenArea::NarrowTabs() {
  if (auto* tabs = findChild<QTabBar*>(QString(), Qt::FindDirectChildrenOnly)) tabs->setExpanding(false);
}

// --- what the person does ----------------------------------------------------------------------------------------

void ScreenArea::Open(std::string_view screen_class) {
  station_.Do([&] {
    return station_.Desk().Open(screen_class) != nullptr ? host::ActResult::kDone : host::ActResult::kFailed;
  });
}

void ScreenArea::Close(host::Screen& screen) {
  station_.Do([&] { return station_.Desk().CloseScreen(screen); });
  // It was left before it refused; the person goes on in it.
  if (const ScreenFrame* frame = FrameOf(screen)) frame->Window()->TakeFocus();
}

bool ScreenArea::CloseAll() {
  const auto& open = station_.Desk().Screens();
  while (!open.empty()) {
    const std::size_t before = open.size();
    Close(*open.back());
    if (open.size() >= before) return false;
  }
  return true;
}

// --- what the program does ---------------------------------------------------------------------------------------

void ScreenArea::Show(host::Screen& screen) {
  if (station_.Desk().Modal() == &screen) return;
  ScreenFrame* frame = FrameOf(screen);
  if (frame == nullptr) {
    frame = new ScreenFrame(new ScreenWindow(station_, screen), ToQt(screen.Caption()));
    connect(frame, &ScreenFrame::CloseWanted, this, [this, &screen] { Close(screen); });
    frames_.append(frame);
    addSubWindow(frame);
    frame->resize(FreeSize(*frame));
    ShowFrame(*frame);
  } else if (frame->isMinimized()) {
    ShowFrame(*frame);
  }
  setActiveSubWindow(frame);
  // Within the act, so that the screen left behind does not take the keyboard back when it ends.
  entered_ = frame->Window();
  entered_->TakeFocus();
  emit ActiveChanged();
}

void ScreenArea::LetGo(host::Screen& screen) {
  ScreenFrame* frame = FrameOf(screen);
  if (frame == nullptr) return;
  frames_.removeOne(frame);
  if (entered_ == frame->Window()) entered_ = nullptr;
  frame->disconnect(this);
  frame->Window()->LetGo();
  // One of its widgets may be in the middle of the click that closed it.
  frame->hide();
  removeSubWindow(frame);
  frame->deleteLater();
  emit ActiveChanged();
}

// Most of the area: lists are there to be seen.
QSize ScreenArea::FreeSize(const ScreenFrame& frame) const {
  const QSize area = viewport()->size();
  return (area * kFreeShare).expandedTo(frame.sizeHint()).boundedTo(area.expandedTo(frame.minimumSizeHint()));
}

void ScreenArea::ShowFrame(ScreenFrame& frame) {
  if (mode_ == Mode::kTabs || frame.Window()->GetScreen().Maximised()) {
    frame.showMaximized();
  } else {
    frame.showNormal();
  }
}

// --- looking things up -------------------------------------------------------------------------------------------

ScreenFrame* ScreenArea::FrameOf(const host::Screen& screen) const {
  for (ScreenFrame* frame : frames_) {
    if (&frame->Window()->GetScreen() == &screen) return frame;
  }
  return nullptr;
}

ScreenWindow* ScreenArea::WindowOf(std::string_view name) const {
  for (const ScreenFrame* frame : frames_) {
    const host::Screen& screen = frame->Window()->GetScreen();
    if (host::SameName(screen.Name(), name) || host::SameName(screen.ClassName(), name)) return frame->Window();
  }
  return nullptr;
}

ScreenWindow* ScreenArea::Active() const {
  // The active one of this area, also while another window of the program or of the computer is the active one.
  const auto* frame = qobject_cast<ScreenFrame*>(currentSubWindow());
  return frame != nullptr && frames_.contains(frame) ? frame->Window() : nullptr;
}

QList<ScreenFrame*> ScreenArea::Frames() const { return frames_; }

// --- window and focus --------------------------------------------------------------------------------------------

// Not in the middle of what Qt or the desk is doing just now.
void ScreenArea::FollowLater() {
  if (std::exchange(follow_pending_, true)) return;
  QTimer::singleShot(0, this, [this] {
    follow_pending_ = false;
    Follow();
  });
}

// Window in front and focus of the desk belong together. A window that the person turned to gets the focus; where the
// input left behind refuses, or the program sent the focus to another screen, that screen's window comes forward.
void ScreenArea::Follow() {
  host::Desk& desk = station_.Desk();
  ScreenWindow* const active = Active();
  if (station_.Busy() || desk.Modal() != nullptr || active == nullptr) return;
  const bool turned_to = std::exchange(entered_, active) != active;
  const host::Control* focused = desk.Focused();
  const bool elsewhere = focused != nullptr && &focused->Owner() != &active->GetScreen();
  if (turned_to) {
    active->TakeFocus();
  } else if (ScreenFrame* frame = elsewhere ? FrameOf(focused->Owner()) : nullptr) {
    setActiveSubWindow(frame);
    entered_ = frame->Window();
    entered_->TakeFocus();
  }
}

}  // namespace app::desktop
