// Whatever somebody presses: no error comes up, the keyboard is where the screen says, and the books balance.
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <random>
#include <utility>

#include "desktop/scenario/hands.h"
#include "support/road.h"

namespace test {
namespace {

constexpr int kKeysPerScreen = 200;
constexpr int kKeysInModalScreen = 25;

struct Stroke {
  Qt::Key key;
  Qt::KeyboardModifiers modifiers = Qt::NoModifier;
};

const std::vector<Stroke>& Strokes() {
  static const std::vector<Stroke> kAll = {
      {Qt::Key_Tab},
      {Qt::Key_Return},
      {Qt::Key_Return},
      {Qt::Key_Return},
      {Qt::Key_Backtab, Qt::ShiftModifier},
      {Qt::Key_Escape},
      {Qt::Key_Up},
      {Qt::Key_Down},
      {Qt::Key_Down},
      {Qt::Key_Left},
      {Qt::Key_Right},
      {Qt::Key_Home},
      {Qt::Key_End},
      {Qt::Key_PageDown},
      {Qt::Key_Delete},
      {Qt::Key_Insert},
      {Qt::Key_Backspace},
      {Qt::Key_Space},
      {Qt::Key_F2},
      {Qt::Key_F3},
      {Qt::Key_F4},
      {Qt::Key_F6},
      {Qt::Key_F8},
      {Qt::Key_Return, Qt::ControlModifier},
      {Qt::Key_Delete, Qt::ControlModifier},
      {Qt::Key_PageDown, Qt::ControlModifier},
      {Qt::Key_PageUp, Qt::ControlModifier},
      {Qt::Key_Down, Qt::ShiftModifier},
      {Qt::Key_G, Qt::AltModifier},
      {Qt::Key_E, Qt::AltModifier},
      {Qt::Key_D, Qt::AltModifier},
      {Qt::Key_F, Qt::AltModifier},
  };
  return kAll;
}

// What is right in one place or another, and what is right nowhere.
const std::vector<QString>& Texts() {
  static const std::vector<QString> kAll = {
      QStringLiteral("M00001"), QStringLiteral("F1"), QStringLiteral("01"),     QStringLiteral("Y1"),
      QStringLiteral("CR"),     QStringLiteral("DF"), QStringLiteral("000001"), QStringLiteral("10"),
      QStringLiteral("2,5"),    QStringLiteral("ç'"), QStringLiteral("-"),      QStringLiteral("01/03/2026")};
  return kAll;
}

class AnyKeys : public ::testing::TestWithParam<unsigned> {
 protected:
  AnyKeys() : random_(GetParam()) {
    mill_.SetClock(kAfternoon);
    FillSmallMill(mill_);
    mill_.SetParameter("MAL", 70, "N");  // a roll without reservation opens the yarn screen
    SaveOrder(mill_, SmallMillOrder(100));
    SaveBareOrder(mill_, SmallMillOrder(50));
    Mill::Options options;
    options.database = mill_.Path();
    options.person = &person_;
    station_ = std::make_unique<Mill>(options);
    station_->SetClock(kAfternoon);
    window_ = std::make_unique<app::desktop::MainWindow>(station_->App(), person_);
    window_->resize(1280, 720);
    window_->show();
    window_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { LookForModal(); });
    timer_.start(2);
  }
  ~AnyKeys() override {
    timer_.stop();
    window_.reset();
    station_.reset();
    Settle();
  }

  std::size_t Below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_); }

  void AnyKey() {
    if (Below(4) == 0) {
      TypeText(Texts()[Below(Texts().size())]);
      return;
    }
    const Stroke& stroke = Strokes()[Below(Strokes().size())];
    pressed_ += QStringLiteral(" ") + QKeySequence(stroke.key | stroke.modifiers).toString();
    Press(stroke.key, stroke.modifiers);
    // Menus only open and go: what stands in them opens other screens, or ends the program.
    while (QWidget* menu = QApplication::activePopupWidget()) {
      QTest::keyClick(menu, Qt::Key_Escape);
      Settle();
    }
    if (qobject_cast<QMenuBar*>(QApplication::focusWidget()) != nullptr) Press(Qt::Key_Escape);
  }

  /// Boxes are answered one way or the other; a modal screen gets keys of its own and is then closed. Not from within
  /// the timer itself, which would not tick while an answer leads to another box.
  void LookForModal() {
    if (std::exchange(looking_, true)) return;
    QMetaObject::invokeMethod(
        &timer_,
        [this] {
          looking_ = false;
          QWidget* modal = QApplication::activeModalWidget();
          if (modal != nullptr && modal->isVisible()) AtModal(*modal);
        },
        Qt::QueuedConnection);
  }

  void AtModal(QWidget& modal) {
    if (modal.objectName() == QStringLiteral("ErrorBox")) {
      ADD_FAILURE() << "an error that nobody caught: " << modal.windowTitle().toStdString();
    }
    if (auto* files = qobject_cast<QFileDialog*>(&modal)) return files->reject();
    if (auto* box = qobject_cast<QMessageBox*>(&modal)) {
      QAbstractButton* yes = box->button(QMessageBox::Yes);
      if (yes != nullptr && Below(2) == 0) return yes->click();
      QTest::keyClick(box, Qt::Key_Escape);
      return;
    }
    if (qobject_cast<QDialog*>(&modal) != nullptr) {
      QTest::keyClick(&modal, Below(2) == 0 ? Qt::Key_Return : Qt::Key_Escape);
      return;
    }
    if (++modal_keys_ % kKeysInModalScreen == 0) {
      modal.close();
    } else {
      AnyKey();
    }
  }

  void ExpectKeyboardFollows() {
    const host::Control* focused = station_->Desk().Focused();
    if (focused == nullptr || QApplication::activeModalWidget() != nullptr) return;
    const app::desktop::ScreenWindow* window = window_->WindowOf(focused->Owner().ClassName());
    ASSERT_NE(window, nullptr);
    const auto* widget = window->findChild<QWidget*>(QString::fromStdString(focused->Name()));
    ASSERT_NE(widget, nullptr);
    const auto there = [&] {
      const QWidget* keyboard = QApplication::focusWidget();
      return keyboard != nullptr && (keyboard == widget || widget->isAncestorOf(keyboard));
    };
    const QWidget* keyboard = QApplication::focusWidget();
    EXPECT_TRUE(WaitFor(there, 500)) << focused->Owner().ClassName() << "." << focused->Name()
                                     << ", but the keyboard is at "
                                     << (keyboard != nullptr ? keyboard->objectName().toStdString() : "nothing");
  }

  /// Begins with this in the first input, whenever the screen opens.
  void Walk(const char* screen_class, const char* begin) {
    for (int key = 0; key < kKeysPerScreen; ++key) {
      if (station_->Desk().Find(screen_class) == nullptr) {
        station_->Open(screen_class);
        Settle();
        TypeText(QString::fromUtf8(begin));
        Press(Qt::Key_Return);
      }
      AnyKey();
      ASSERT_TRUE(WaitFor([] { return QApplication::activeModalWidget() == nullptr; })) << "a box does not go";
      ExpectKeyboardFollows();
      if (HasFailure()) {
        ADD_FAILURE() << screen_class << ", after " << pressed_.toStdString();
        return;
      }
    }
  }

  void ExpectBooksBalance() {
    // A balance is the sum of its movements, a written-off quantity that of its rolls, a roll has its order.
    for (const char* wrong :
         {"SELECT COUNT(*) FROM {MAT_ITEN} I WHERE ABS(I.QTDE - COALESCE((SELECT SUM(CASE WHEN M.SAIDA = 'S' THEN "
          "-M.QTDE ELSE M.QTDE END) FROM {MAT_MOV} M WHERE M.CODIGO = I.CODIGO AND M.COR = I.COR AND M.LOTE = I.LOTE "
          "AND M.DEPOSITO = I.DEPOSITO), 0)) > 0.00001",
          "SELECT COUNT(*) FROM {TECEL_ITEN} I WHERE ABS(I.QTDE_B - COALESCE((SELECT SUM(B.QTDE) FROM {TECELB} B WHERE "
          "B.NUMERO = I.NUMERO AND B.CODIGO = I.CODIGO AND B.COR = I.COR), 0)) > 0.00001",
          "SELECT COUNT(*) FROM {TECELB} B WHERE NOT EXISTS (SELECT 1 FROM {TECEL_ITEN} I WHERE I.NUMERO = B.NUMERO "
          "AND I.CODIGO = B.CODIGO AND I.COR = B.COR)",
          "SELECT COUNT(*) FROM {TECEL_ITEN} I WHERE NOT EXISTS (SELECT 1 FROM {TECEL} T WHERE T.NUMERO = I.NUMERO)"}) {
      EXPECT_EQ(mill_.Scalar(wrong).AsInteger(), 0) << wrong;
    }
  }

  Mill mill_;
  std::mt19937 random_;
  app::desktop::WindowPerson person_;
  std::unique_ptr<Mill> station_;
  std::unique_ptr<app::desktop::MainWindow> window_;
  QTimer timer_;
  bool looking_ = false;
  int modal_keys_ = 0;
  QString pressed_;
};

TEST_P(AnyKeys, DoNoHarm) {
  const std::pair<const char*, const char*> screens[] = {{"TfmCadLoteTec", "000001"}, {"TfmMovBaiTec", "000001"},
                                                         {"TfmMovBaiTec", "000002"},  {"TFmCadComposi", "F1"},
                                                         {"TfmMateriais", ""},        {"TfmTurnos", ""}};
  for (const auto& [screen, begin] : screens) {
    Walk(screen, begin);
    if (HasFailure()) return;
  }
  ExpectBooksBalance();
}

INSTANTIATE_TEST_SUITE_P(Seeds, AnyKeys, ::testing::Range(1U, 7U));

}  // namespace
}  // namespace test
