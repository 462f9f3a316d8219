// A station with a plain window, a screen with rows to print, and what this station remembers.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QMainWindow>
#include <QTemporaryDir>
#include <map>
#include <optional>
#include <string>

#include "app/desktop/printing/desktop_equipment.h"
#include "desktop/support/boxes.h"
#include "desktop/support/keys.h"
#include "tests/printing/paper_screen.h"

namespace test {

/// Values kept as long as the object lives.
class KeptSettings : public host::UserSettings {
 public:
  std::optional<std::string> Read(std::string_view key, std::string_view section, std::string_view name) override;
  void Write(std::string_view key, std::string_view section, std::string_view name, std::string_view value) override;
  /// From now on nothing can be written.
  void Lock() { locked_ = true; }

 private:
  std::map<std::string, std::string> values_;
  bool locked_ = false;
};

class PaperStation : public ::testing::Test {
 protected:
  PaperStation();

  QString In(const QString& name) const { return folder_.filePath(name); }
  void WriteLayout(const QString& file, const QByteArray& text);
  /// As a screen asks for it.
  std::optional<app::PrintJob> Print(const std::string& report, char kind, const host::ReportFlags& flags = {});
  /// What Print threw; empty when it did not.
  std::string WhyRefused(const std::string& report, char kind, const host::ReportFlags& flags = {});
  static QByteArray Whole(const QString& file);
  static std::string OutputOf(const QString& program, const QStringList& arguments);

  QTemporaryDir folder_;
  QMainWindow window_;
  KeptSettings settings_;
  PaperScreen screen_;
  app::desktop::DesktopEquipment equipment_;
  Boxes boxes_;
};

/// The child of that name; a test that asks for one which is not there ends.
template <typename T>
T& Part(const QWidget& window, const char* name) {
  auto* part = window.findChild<T*>(QString::fromUtf8(name));
  if (part == nullptr) throw std::runtime_error(std::string("there is no ") + name);
  return *part;
}

}  // namespace test
