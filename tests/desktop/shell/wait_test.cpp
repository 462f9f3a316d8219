// The windows while a screen waits for the scale.
#include <gtest/gtest.h>

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/desktop/bindings/keys.h"
#include "app/serial/port.h"
#include "host/host.h"

namespace {

using std::chrono::milliseconds;

class NoSettings : public host::UserSettings {
 public:
  std::optional<std::string> Read(std::string_view /*key*/, std::string_view /*section*/,
                                  std::string_view /*name*/) override {
    return std::nullopt;
  }
  void Write(std::string_view /*key*/, std::string_view /*section*/, std::string_view /*name*/,
             std::string_view /*value*/) override {}
};

class CountingWindow : public QWidget {
 public:
  int keys = 0;
  int paints = 0;
  int closes = 0;
  int clicks = 0;
  QPushButton* button = new QPushButton(QStringLiteral("Confirmar"));

  CountingWindow() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this] { ++clicks; });
  }

 protected:
  void keyPressEvent(QKeyEvent* /*event*/) override { ++keys; }
  void paintEvent(QPaintEvent* /*event*/) override { ++paints; }
  void closeEvent(QCloseEvent* event) override {
    ++closes;
    event->accept();
  }
};

class WindowsDuringWait : public ::testing::Test {
 protected:
  WindowsDuringWait() {
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window_));
  }

  // What the person does in the middle of a wait.
  void While(milliseconds time, const std::function<void()>& act) {
    bool done = false;
    QTimer::singleShot(time / 3, [&] {
      act();
      done = true;
    });
    port_->Wait(time, {});
    EXPECT_TRUE(done);
  }

  NoSettings settings_;
  std::unique_ptr<host::SerialPort> port_ = app::serial::NewPort({settings_, {}, {}});
  CountingWindow window_;
};

TEST_F(WindowsDuringWait, AKeyPressedMeanwhileIsDropped) {
  While(milliseconds(120), [this] { QTest::keyClick(&window_, Qt::Key_F5); });
  QCoreApplication::processEvents();
  EXPECT_EQ(window_.keys, 0);
  QTest::keyClick(&window_, Qt::Key_F5);
  EXPECT_EQ(window_.keys, 1);
}

// It came while the program did not look at its events at all.
TEST_F(WindowsDuringWait, AKeyThatIsStillQueuedIsDropped) {
  While(milliseconds(60), [this] {
    QTest::qSleep(60);
    QCoreApplication::postEvent(&window_, new QKeyEvent(QEvent::KeyPress, Qt::Key_F5, Qt::NoModifier));
  });
  QCoreApplication::processEvents();
  EXPECT_EQ(window_.keys, 0);
}

TEST_F(WindowsDuringWait, AClickIsDropped) {
  While(milliseconds(120), [this] { QTest::mouseClick(window_.button, Qt::LeftButton); });
  EXPECT_EQ(window_.clicks, 0);
  QTest::mouseClick(window_.button, Qt::LeftButton);
  EXPECT_EQ(window_.clicks, 1);
}

TEST_F(WindowsDuringWait, TheWindowStaysOpenAndIsPainted) {
  const int before = window_.paints;
  While(milliseconds(120), [this] {
    window_.close();
    window_.update();
  });
  EXPECT_EQ(window_.closes, 0);
  EXPECT_TRUE(window_.isVisible());
  EXPECT_GT(window_.paints, before);
  window_.close();
  EXPECT_EQ(window_.closes, 1);
}

// What the keyboard repeats after the wait is the same press.
TEST(HeldKey, ActsOnce) {
  using app::desktop::ScreenKey;
  for (const int key : {Qt::Key_F5, Qt::Key_F8}) {
    EXPECT_NE(ScreenKey(QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier)), host::Key::kNone);
    EXPECT_EQ(ScreenKey(QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, QString(), true)), host::Key::kNone);
  }
  EXPECT_EQ(ScreenKey(QKeyEvent(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QString(), true)), host::Key::kTab);
}

}  // namespace
