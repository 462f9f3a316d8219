// A station with a plain window, a screen with rows to print, and what this station remembers.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QMainWindow>
#include <QTemporaryDir>
#include <optional>
#include <string>

#include "app/desktop/printing/desktop_equipment.h"
#include "desktop/support/boxes.h"
#include "desktop/support/keys.h"
#include "support/kept_settings.h"
#include "tests/printing/paper_screen.h"

namespace test {

class PaperStation : public ::testing::Test {
 protected:
  PaperStation();

  QString In(const QString& name) const { return folder_.filePath(name); }
  void WriteLayout(const QString& file, const QByteArray& text);
  /// As a screen asks for it.
  std::optional<app::PrintJob> Print(const std::string& report, char kind, const host::ReportFlags& flags = {},
                                     const host::ListedReport* listed = nullptr);
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
