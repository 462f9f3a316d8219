// How the scale is connected, as a person sets it up and tries it.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <chrono>
#include <thread>

#include "app/desktop/basics/mnemonics.h"
#include "app/desktop/basics/text.h"
#include "app/scale/simulator.h"
#include "desktop/shell/toy_screens.h"
#include "desktop/support/desktop_mill.h"

namespace {

using app::desktop::ToQt;
using app::scale::Behaviour;
using app::scale::ScaleSettings;

constexpr const char* kTitle = "Configuração da balança";

class SetUpOfTheScale : public ::testing::Test {
 protected:
  SetUpOfTheScale() { test::Toys() = {}; }

  bool SetUp(ScaleSettings& settings, std::function<void(QWidget&)> act) {
    mill_.GetBoxes().ExpectDialog(QString::fromUtf8(kTitle), std::move(act));
    return mill_.Person().SetUpScale(settings);
  }
  template <typename T>
  static T& Find(QWidget& box, const char* name) {
    T* found = box.findChild<T*>(QLatin1String(name));
    if (found == nullptr) throw std::runtime_error(std::string("no ") + name);
    return *found;
  }
  static void Press(QWidget& box, Qt::Key key) {
    QWidget* where = box.focusWidget() != nullptr ? box.focusWidget() : &box;
    QTest::keyClick(where, key);
  }
  static QString Heard(QWidget& box) { return Find<QLabel>(box, "Heard").text(); }

  test::DesktopMill mill_;
};

// A scale beside the test.
class Scale {
 public:
  explicit Scale(app::scale::SimulatorOptions options)
      : simulator_(std::move(options)), thread_([this] { simulator_.Serve(std::chrono::hours(1)); }) {}
  ~Scale() {
    simulator_.Stop();
    thread_.join();
  }
  Scale(const Scale&) = delete;
  Scale& operator=(const Scale&) = delete;

  ScaleSettings Settings(int protocol, int decimals = 2) const {
    ScaleSettings settings;
    settings.port.port = simulator_.PortName();
    settings.protocol = static_cast<host::ScaleProtocol>(protocol);
    settings.decimals = decimals;
    return settings;
  }
  app::scale::Simulator& operator*() { return simulator_; }

 private:
  app::scale::Simulator simulator_;
  std::thread thread_;
};

app::scale::SimulatorOptions Options(int protocol, Behaviour behaviour = Behaviour::kSteady) {
  app::scale::SimulatorOptions options;
  options.protocol = static_cast<host::ScaleProtocol>(protocol);
  options.behaviour = behaviour;
  return options;
}

TEST_F(SetUpOfTheScale, ShowsWhatIsSetAndEnterTakesIt) {
  ScaleSettings settings;
  settings.port = {"/dev/ttyUSB7", 4800, app::scale::Parity::kEven, 7, 2, app::scale::FlowControl::kSoftware,
                   true,           true};
  settings.protocol = host::ScaleProtocol::kContinuous;
  settings.decimals = 3;
  const ScaleSettings before = settings;
  EXPECT_TRUE(SetUp(settings, [](QWidget& box) {
    EXPECT_EQ(Find<QComboBox>(box, "Port").currentText(), "/dev/ttyUSB7");
    EXPECT_EQ(Find<QComboBox>(box, "BaudRate").currentText(), "4800");
    EXPECT_EQ(Find<QComboBox>(box, "Parity").currentText(), "Par");
    EXPECT_EQ(Find<QComboBox>(box, "DataBits").currentText(), "7");
    EXPECT_EQ(Find<QComboBox>(box, "StopBits").currentText(), "2");
    EXPECT_EQ(Find<QComboBox>(box, "FlowControl").currentText(), "XON/XOFF");
    EXPECT_TRUE(Find<QCheckBox>(box, "DTR").isChecked());
    EXPECT_TRUE(Find<QCheckBox>(box, "RTS").isChecked());
    EXPECT_EQ(Find<QComboBox>(box, "Protocol").currentIndex(), 2);
    EXPECT_EQ(Find<QSpinBox>(box, "Decimals").value(), 3);
    Press(box, Qt::Key_Return);
  }));
  EXPECT_EQ(settings, before);
}

TEST_F(SetUpOfTheScale, EscapeChangesNothing) {
  ScaleSettings settings;
  const ScaleSettings before = settings;
  EXPECT_FALSE(SetUp(settings, [](QWidget& box) {
    Find<QComboBox>(box, "Port").setCurrentText("COM9");
    Press(box, Qt::Key_Escape);
  }));
  EXPECT_EQ(settings, before);
}

TEST_F(SetUpOfTheScale, EverythingCanBeChanged) {
  ScaleSettings settings;
  EXPECT_TRUE(SetUp(settings, [](QWidget& box) {
    QTest::keyClicks(box.focusWidget(), "/dev/ttyS3");  // the port has the focus, its text selected
    Find<QComboBox>(box, "BaudRate").setCurrentText("2400");
    Find<QComboBox>(box, "Parity").setCurrentIndex(1);
    Find<QComboBox>(box, "DataBits").setCurrentText("7");
    Find<QComboBox>(box, "StopBits").setCurrentIndex(2);
    Find<QComboBox>(box, "FlowControl").setCurrentIndex(1);
    Find<QCheckBox>(box, "DTR").click();
    Find<QCheckBox>(box, "RTS").click();
    Find<QComboBox>(box, "Protocol").setCurrentIndex(1);
    Press(box, Qt::Key_Return);
  }));
  EXPECT_EQ(settings.port.port, "/dev/ttyS3");
  EXPECT_EQ(settings.port.baud_rate, 2400);
  EXPECT_EQ(settings.port.parity, app::scale::Parity::kOdd);
  EXPECT_EQ(settings.port.data_bits, 7);
  EXPECT_EQ(settings.port.stop_bits, 2);
  EXPECT_EQ(settings.port.flow, app::scale::FlowControl::kHardware);
  EXPECT_TRUE(settings.port.dtr);
  EXPECT_TRUE(settings.port.rts);
  EXPECT_EQ(settings.protocol, host::ScaleProtocol::kAsked);
}

TEST_F(SetUpOfTheScale, WhatCannotBeIsToldInTheDialog) {
  ScaleSettings settings;
  EXPECT_FALSE(SetUp(settings, [](QWidget& box) {
    auto& objection = Find<QLabel>(box, "Objection");
    Find<QComboBox>(box, "Port").setCurrentText("  ");
    Press(box, Qt::Key_Return);
    EXPECT_EQ(objection.text(), QString::fromUtf8("Diga qual é a porta da balança."));
    Find<QComboBox>(box, "Port").setCurrentText("COM1");
    Find<QComboBox>(box, "BaudRate").setCurrentText("depressa");
    Press(box, Qt::Key_Return);
    EXPECT_TRUE(objection.text().contains(QString::fromUtf8("A velocidade é um número")));
    EXPECT_TRUE(Find<QComboBox>(box, "BaudRate").lineEdit()->hasFocus());
    EXPECT_TRUE(box.isVisible());
    Press(box, Qt::Key_Escape);
  }));
}

TEST_F(SetUpOfTheScale, DecimalsAreShownByAnExample) {
  ScaleSettings settings;
  settings.decimals = 2;
  EXPECT_FALSE(SetUp(settings, [](QWidget& box) {
    auto& protocol = Find<QComboBox>(box, "Protocol");
    auto& decimals = Find<QSpinBox>(box, "Decimals");
    const auto& example = Find<QLabel>(box, "Example");
    EXPECT_FALSE(decimals.isEnabled());
    protocol.setCurrentIndex(2);
    EXPECT_TRUE(decimals.isEnabled());
    EXPECT_EQ(example.text(), "012345 -> 012,345");
    decimals.setValue(0);
    EXPECT_EQ(example.text(), "012345 -> 01234,5");
    decimals.setValue(9);
    EXPECT_EQ(example.text(), "00000012345 -> 0,0000012345");
    EXPECT_NE(Find<QLabel>(box, "Meaning").text(), "");
    Press(box, Qt::Key_Escape);
  }));
}

TEST_F(SetUpOfTheScale, EveryLetterIsTakenOnce) {
  ScaleSettings settings;
  EXPECT_FALSE(SetUp(settings, [](QWidget& box) {
    QString letters;
    for (const QLabel* label : box.findChildren<QLabel*>()) {
      if (label->buddy() != nullptr) letters += app::desktop::MnemonicOf(label->text());
    }
    for (const QAbstractButton* button : box.findChildren<QAbstractButton*>()) {
      const QChar letter = app::desktop::MnemonicOf(button->text());
      if (!letter.isNull()) letters += letter;
    }
    for (const QChar letter : letters) EXPECT_EQ(letters.count(letter), 1) << QString(letter).toStdString();
    EXPECT_GE(letters.size(), 11);
    EXPECT_LE(box.height(), 600);
    Press(box, Qt::Key_Escape);
  }));
}

// --- trying --------------------------------------------------------------------------------------------------------

TEST_F(SetUpOfTheScale, TryingShowsBytesAndWeight) {
  for (const int protocol : {0, 1, 2}) {
    Scale scale(Options(protocol));
    ScaleSettings settings = scale.Settings(protocol);
    EXPECT_FALSE(SetUp(settings, [protocol](QWidget& box) {
      auto& button = Find<QPushButton>(box, "Try");
      button.click();
      EXPECT_TRUE(button.text().startsWith("Parar"));
      EXPECT_TRUE(test::WaitFor([&box] { return Heard(box).startsWith("Peso lido: 20,500 kg"); })) << protocol;
      const QString raw = Find<QPlainTextEdit>(box, "Raw").toPlainText();
      EXPECT_TRUE(raw.contains(protocol == 2 ? "<02>020500<0D>" : "ST,GS,+  20.500kg<0D><0A>")) << raw.toStdString();
      button.click();
      EXPECT_FALSE(button.text().startsWith("Parar"));
      Press(box, Qt::Key_Escape);
    }));
  }
}

TEST_F(SetUpOfTheScale, TryingTellsWhyThereIsNoWeight) {
  Scale scale(Options(0, Behaviour::kUnstable));
  ScaleSettings settings = scale.Settings(0);
  EXPECT_FALSE(SetUp(settings, [&scale](QWidget& box) {
    Find<QPushButton>(box, "Try").click();
    EXPECT_TRUE(test::WaitFor([&box] { return Heard(box).contains(QString::fromUtf8("não está estável")); }));
    (*scale).SetBehaviour(Behaviour::kSilent);
    EXPECT_TRUE(test::WaitFor([&box] { return Heard(box).contains(QString::fromUtf8("não respondeu")); }));
    (*scale).Unplug();
    EXPECT_TRUE(test::WaitFor([&box] { return Heard(box).contains("foi desligada"); }));
    EXPECT_FALSE(Find<QPushButton>(box, "Try").text().startsWith("Parar"));
    Press(box, Qt::Key_Escape);
  }));
}

TEST_F(SetUpOfTheScale, TryingAPortThatIsNotThere) {
  ScaleSettings settings;
  settings.port.port = "COM77";
  EXPECT_FALSE(SetUp(settings, [](QWidget& box) {
    Find<QPushButton>(box, "Try").click();
    EXPECT_TRUE(Heard(box).contains(QString::fromUtf8("COM77 não existe"))) << Heard(box).toStdString();
    EXPECT_FALSE(Find<QPushButton>(box, "Try").text().startsWith("Parar"));
    Press(box, Qt::Key_Escape);
  }));
}

// The dialog may be left while it listens; the port is free again.
TEST_F(SetUpOfTheScale, LeavingEndsTheTrial) {
  Scale scale(Options(0));
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Return}) {
    ScaleSettings settings = scale.Settings(0);
    SetUp(settings, [key](QWidget& box) {
      Find<QPushButton>(box, "Try").click();
      EXPECT_TRUE(test::WaitFor([&box] { return Heard(box).startsWith("Peso lido"); })) << Heard(box).toStdString();
      Press(box, key);
    });
  }
}

}  // namespace
