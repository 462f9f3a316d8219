// What the script's names do: the script engine on one side, the Desk on the other.
#pragma once

#include <QJSEngine>
#include <QJSValue>
#include <QObject>
#include <QString>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/application.h"
#include "app/operator/scripted_person.h"
#include "app/script/driver.h"

namespace app::script {

/// Lives as long as its engine. Every invokable is called by the prelude; what goes wrong in one becomes an exception
/// of the script. Screens are handed to the script as numbers, which stay valid while the screen is open.
class Bridge : public QObject {
  Q_OBJECT

 public:
  Bridge(QJSEngine& engine, Application& application, ScriptedPerson& person, const RunOptions& options);

  /// Assertions that did not hold, caught by the script or not.
  const std::vector<std::string>& FailedAssertions() const { return failed_assertions_; }
  /// Tells the questions and lookups that nothing was prepared for on the notes stream.
  void TellUnexpected();

  // --- screens
  Q_INVOKABLE int open(const QString& screen_class);
  Q_INVOKABLE int screen(const QString& name);
  Q_INVOKABLE QJSValue screenName(int id);
  Q_INVOKABLE QJSValue close(int id);

  // --- inputs
  Q_INVOKABLE QJSValue type(int id, const QString& name, const QJSValue& value);
  Q_INVOKABLE QJSValue enter(int id, const QString& name);
  Q_INVOKABLE QJSValue leave(int id, const QString& name);
  Q_INVOKABLE QJSValue key(int id, const QString& name);
  Q_INVOKABLE QJSValue check(int id, const QString& name, bool on);
  Q_INVOKABLE QJSValue choose(int id, const QString& name, const QString& caption);
  Q_INVOKABLE QJSValue click(int id, const QString& name);
  Q_INVOKABLE QJSValue menu(int id, const QString& caption);
  Q_INVOKABLE QJSValue search(int id, const QString& name);
  Q_INVOKABLE QJSValue text(int id, const QString& name);
  Q_INVOKABLE QJSValue value(int id, const QString& name);
  Q_INVOKABLE QJSValue checked(int id, const QString& name);
  Q_INVOKABLE QJSValue enabled(int id, const QString& name);
  Q_INVOKABLE QJSValue visible(int id, const QString& name);
  Q_INVOKABLE QJSValue focused(int id);

  // --- grids
  Q_INVOKABLE QJSValue rows(int id, const QString& dataset);
  Q_INVOKABLE QJSValue selectRow(int id, const QString& dataset, double row);
  Q_INVOKABLE QJSValue clickRow(int id, const QString& dataset, double row);
  Q_INVOKABLE QJSValue selectWhere(int id, const QString& dataset, const QJSValue& wanted);
  Q_INVOKABLE QJSValue cell(int id, const QString& dataset, const QString& field, const QJSValue& typed);
  Q_INVOKABLE QJSValue append(int id, const QString& dataset, const QJSValue& row);
  Q_INVOKABLE QJSValue set(int id, const QString& dataset, const QJSValue& row);
  Q_INVOKABLE QJSValue remove(int id, const QString& dataset);
  Q_INVOKABLE QJSValue dblclick(int id, const QString& dataset);

  // --- the person
  Q_INVOKABLE void answer(const QString& containing, const QJSValue& reply);
  Q_INVOKABLE void lookup(const QString& name, const QJSValue& key);
  Q_INVOKABLE void lookupRow(const QString& name, const QJSValue& columns);
  Q_INVOKABLE void chooseFile(const QString& title, const QJSValue& path);
  Q_INVOKABLE void modal(const QString& name, const QJSValue& act);
  Q_INVOKABLE QJSValue messages();
  Q_INVOKABLE QJSValue wait(double seconds);

  // --- the program
  Q_INVOKABLE QJSValue jobs();
  Q_INVOKABLE QJSValue clock(const QJSValue& moment);
  Q_INVOKABLE QJSValue query(const QString& sql, const QJSValue& parameters);
  Q_INVOKABLE QJSValue exec(const QString& sql, const QJSValue& parameters);
  Q_INVOKABLE QJSValue checkBooks();
  Q_INVOKABLE QJSValue format(double number, const QString& pattern);
  Q_INVOKABLE void print(const QString& line);
  Q_INVOKABLE void failAssertion(const QString& text);
  Q_INVOKABLE void refuse(const QString& text);

 private:
  struct OpenScreen {
    host::Screen* screen;
    std::string screen_class;
  };
  using Cells = std::vector<std::pair<std::string, std::string>>;

  /// Runs `work`, turns what it throws into an exception of the script, and throws on what a modal callback threw
  /// meanwhile.
  QJSValue Guard(const std::function<QJSValue()>& work);
  /// The same for an act of the person: true when done, false when refused.
  QJSValue Act(const std::function<host::ActResult()>& act);
  QJSValue Verdict(host::ActResult result);
  int Register(host::Screen& screen);
  host::Screen& At(int id);
  host::Grid& GridAt(int id, const QString& dataset);
  Cells CellsOf(const host::Grid& grid, const QJSValue& row) const;
  void ActOnModal(const QJSValue& act, host::Screen& screen);
  host::Desk& Desk() { return application_.GetDesk(); }

  QJSEngine& engine_;
  Application& application_;
  ScriptedPerson& person_;
  std::ostream& output_;
  std::ostream& notes_;
  std::vector<OpenScreen> open_;
  std::vector<std::string> failed_assertions_;
  std::optional<QJSValue> thrown_in_modal_;
  std::shared_ptr<Bridge*> self_;  // plans of the person that outlive the run find it empty
};

}  // namespace app::script
