#include "app/desktop/screens/modal_window.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QVBoxLayout>

#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/message_boxes.h"
#include "app/desktop/screens/screen_window.h"

namespace app::desktop {
namespace {

// A plain window of the dialog kind: a QDialog would take Esc and Enter for itself.
class ModalWindow : public QWidget {
 public:
  ModalWindow(Station& station, host::Screen& screen, QWidget* parent)
      : QWidget(parent, Qt::Dialog), station_(station), screen_(screen), window_(new ScreenWindow(station, screen)) {
    setObjectName(QStringLiteral("ModalWindow"));
    setWindowModality(Qt::WindowModal);
    setWindowTitle(ToQt(screen.Caption()));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(window_);
    connect(&station_, &Station::Settled, this, [this] { LeaveWhenAsked(); });
  }

  void Run() {
    adjustSize();
    const QRect over = parentWidget() != nullptr ? parentWidget()->window()->geometry() : QRect();
    // Its lists want room; what it is about stands behind it.
    if (over.isValid()) resize(size().expandedTo(over.size() * 17 / 20));
    if (over.isValid()) move(over.center() - rect().center());
    show();
    activateWindow();
    window_->TakeFocus();
    if (!screen_.CloseRequested()) loop_.exec();
    hide();
  }

 protected:
  void closeEvent(QCloseEvent* event) override {
    event->ignore();
    station_.Do([this] { return station_.Desk().CloseScreen(screen_); });
    // It was left before it refused; the person goes on in it.
    if (!screen_.CloseRequested()) window_->TakeFocus();
  }

 private:
  void LeaveWhenAsked() {
    if (screen_.CloseRequested() && station_.Desk().Modal() == &screen_) loop_.quit();
  }

  Station& station_;
  host::Screen& screen_;
  ScreenWindow* window_;
  QEventLoop loop_;
};

}  // namespace

void RunModalScreen(Station& station, host::Screen& screen, QWidget* parent) {
  station.WhileWaiting([&] {
    ModalWindow window(station, screen, parent);
    window.Run();
  });
  ActivateAgain(parent);
}

}  // namespace app::desktop
