// Which database? At the first start there is none yet.
#pragma once

#include <QDialog>
#include <QGridLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QString>
#include <string>

#include "app/desktop/boxes/objection.h"

namespace app::desktop {

/// An empty mill, the demonstration mill, or a database that exists, on this computer or at a server. A new one is made
/// when the person accepts; what goes wrong stands in the dialog.
class DatabaseDialog : public QDialog {
  Q_OBJECT

 public:
  /// `folder` is where the program keeps its databases; `wanted` is a database that was asked for and is not there.
  DatabaseDialog(const QString& folder, const QString& wanted, QWidget* parent = nullptr);

  /// After it was accepted.
  const std::string& Database() const { return database_; }
  /// What to propose at sign-in: the demonstration mill's user and password are known to everyone.
  const std::string& User() const { return user_; }
  const std::string& Password() const { return password_; }

  void accept() override;

  /// The file of the mill in that folder, and that of the demonstration.
  static QString MillFile(const QString& folder);
  static QString DemoFile(const QString& folder);

 private:
  QRadioButton* AddChoice(QGridLayout& grid, const QString& text, const char* name);
  QLineEdit* AddInput(QGridLayout& grid, QRadioButton& choice, const QString& caption, const char* name);
  void AddOpening(QGridLayout& grid);
  void MakeEmpty();
  void MakeDemo();
  void OpenExisting();

  QRadioButton* empty_ = nullptr;
  QRadioButton* demo_ = nullptr;
  QRadioButton* existing_ = nullptr;
  QLineEdit* empty_file_ = nullptr;
  QLineEdit* first_password_ = nullptr;
  QLineEdit* second_password_ = nullptr;
  QLineEdit* demo_file_ = nullptr;
  QLineEdit* existing_name_ = nullptr;
  ObjectionLabel* objection_ = nullptr;
  std::string database_;
  std::string user_;
  std::string password_;
};

}  // namespace app::desktop
