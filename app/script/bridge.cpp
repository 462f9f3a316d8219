#include "app/script/bridge.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <algorithm>
#include <cmath>
#include <exception>
#include <ostream>

#include "app/books/check.h"
#include "app/script/screen_parts.h"
#include "app/script/values.h"
#include "host/decimal.h"
#include "host/errors.h"
#include "host/kit/desk.h"
#include "host/text.h"

namespace app::script {
namespace {

constexpr int kLongestWait = 600;  // seconds
constexpr qint64 kGlance = 5;      // milliseconds between two looks at what arrived

std::string IconName(host::Icon icon) {
  switch (icon) {
    case host::Icon::kInformation:
      return "information";
    case host::Icon::kExclamation:
      return "exclamation";
    case host::Icon::kQuestion:
      return "question";
    case host::Icon::kError:
      return "error";
  }
  return {};
}

std::vector<host::Value> Parameters(const QJSValue& list) {
  if (!list.isArray()) throw host::InputError("os parâmetros do comando vêm em uma lista");
  std::vector<host::Value> values;
  const auto count = list.property("length").toUInt();
  for (quint32 at = 0; at < count; ++at) values.push_back(ToParameter(list.property(at)));
  return values;
}

}  // namespace

Bridge::Bridge(QJSEngine& engine, Application& application, ScriptedPerson& person, const RunOptions& options)
    : engine_(engine),
      application_(application),
      person_(person),
      output_(options.output),
      notes_(options.notes),
      self_(std::make_shared<Bridge*>(this)) {}

// --- between the two sides ---------------------------------------------------------------------------------------

QJSValue Bridge::Guard(const std::function<QJSValue()>& work) {
  QJSValue result;
  std::optional<std::string> failure;
  try {
    result = work();
  } catch (const std::exception& error) {
    failure = error.what();
  }
  TellUnexpected();
  if (thrown_in_modal_) {
    const QJSValue thrown = *thrown_in_modal_;
    thrown_in_modal_.reset();
    engine_.throwError(thrown);
    return {};
  }
  if (failure) {
    engine_.throwError(QJSValue::GenericError, QString::fromStdString(*failure));
    return {};
  }
  return result;
}

QJSValue Bridge::Act(const std::function<host::ActResult()>& act) {
  return Guard([&] { return Verdict(act()); });
}

QJSValue Bridge::Verdict(host::ActResult result) {
  std::string text;
  for (const std::string& error : person_.TakeErrors()) text += (text.empty() ? "" : " ") + error;
  if (result == host::ActResult::kFailed || !text.empty()) {
    throw host::InputError(text.empty() ? "a ação falhou" : text);
  }
  return QJSValue(result == host::ActResult::kDone);
}

void Bridge::TellUnexpected() {
  for (const std::string& text : person_.TakeUnexpected()) notes_ << "sem resposta preparada: " << text << std::endl;
}

int Bridge::Register(host::Screen& screen) {
  for (std::size_t at = 0; at < open_.size(); ++at) {
    if (open_[at].screen == &screen && open_[at].screen_class == screen.ClassName()) return static_cast<int>(at);
  }
  open_.push_back({&screen, screen.ClassName()});
  return static_cast<int>(open_.size() - 1);
}

host::Screen& Bridge::At(int id) {
  const OpenScreen& known = open_.at(static_cast<std::size_t>(id));
  for (const auto& screen : Desk().Screens()) {
    if (screen.get() == known.screen && screen->ClassName() == known.screen_class) return *screen;
  }
  throw host::InputError("a tela " + known.screen_class + " já foi fechada");
}

host::Grid& Bridge::GridAt(int id, const QString& dataset) { return FindGrid(At(id), Utf8(dataset)); }

// --- screens -----------------------------------------------------------------------------------------------------

int Bridge::open(const QString& screen_class) {
  int id = -1;
  Guard([&] {
    host::Screen* opened = Desk().Open(Utf8(screen_class));
    Verdict(opened == nullptr ? host::ActResult::kFailed : host::ActResult::kDone);
    id = Register(*opened);
    return QJSValue();
  });
  return id;
}

int Bridge::screen(const QString& name) {
  host::Screen* found = Desk().Find(Utf8(name));
  return found == nullptr ? -1 : Register(*found);
}

QJSValue Bridge::screenName(int id) {
  return Guard([&] { return ToScript(At(id).Name()); });
}

QJSValue Bridge::close(int id) {
  return Act([&] { return Desk().CloseScreen(At(id)); });
}

// --- the person --------------------------------------------------------------------------------------------------

void Bridge::answer(const QString& containing, const QJSValue& reply) {
  Guard([&] {
    const std::string text = reply.isBool() ? (reply.toBool() ? "yes" : "no") : TypedText(reply, false);
    person_.Answer(Utf8(containing), text);
    return QJSValue();
  });
}

void Bridge::lookup(const QString& name, const QJSValue& key) {
  Guard([&] {
    person_.Pick(Utf8(name), TypedText(key, false));
    return QJSValue();
  });
}

void Bridge::lookupRow(const QString& name, const QJSValue& columns) {
  Guard([&] {
    host::LookupRow wanted;
    const auto count = columns.property("length").toUInt();
    for (quint32 at = 0; at < count; ++at) {
      const QJSValue pair = columns.property(at);
      wanted[host::UpperAscii(Utf8(pair.property(0).toString()))] = ToParameter(pair.property(1));
    }
    if (wanted.empty()) throw host::InputError("lookup quer ao menos uma coluna: lookup(pesquisa, {COLUNA: valor})");
    person_.PickWhere(Utf8(name), wanted);
    return QJSValue();
  });
}

void Bridge::chooseFile(const QString& title, const QJSValue& path) {
  Guard([&] {
    if (!path.isString() && !path.isNull()) {
      throw host::InputError("chooseFile quer o caminho de um arquivo, ou null para desistir");
    }
    person_.Choose(Utf8(title), path.isNull() ? std::nullopt : std::optional(Utf8(path.toString())));
    return QJSValue();
  });
}

void Bridge::modal(const QString& name, const QJSValue& act) {
  std::weak_ptr<Bridge*> self = self_;
  person_.OnModal(Utf8(name), [self, act](host::Screen& screen, host::Desk&) {
    if (const auto bridge = self.lock()) (*bridge)->ActOnModal(act, screen);
  });
}

void Bridge::ActOnModal(const QJSValue& act, host::Screen& screen) {
  // What the callback throws must not travel through the screen that waits: it is kept for the act that began it.
  const QJSValue result = act.call({QJSValue(Register(screen))});
  if (thrown_in_modal_) return;
  if (result.isError()) {
    thrown_in_modal_ = result;
  } else if (result.isObject()) {
    thrown_in_modal_ = result.property("thrown");
  }
}

QJSValue Bridge::messages() {
  const auto shown = person_.TakeMessages();
  QJSValue list = engine_.newArray(static_cast<uint>(shown.size()));
  quint32 at = 0;
  for (const auto& box : shown) {
    QJSValue entry = engine_.newObject();
    entry.setProperty("title", ToScript(box.title));
    entry.setProperty("text", ToScript(box.text));
    entry.setProperty("icon", ToScript(IconName(box.icon)));
    list.setProperty(at++, entry);
  }
  return list;
}

QJSValue Bridge::wait(double seconds) {
  return Act([&] {
    if (!(seconds >= 0 && seconds <= kLongestWait)) {
      throw host::InputError("wait quer de 0 a " + std::to_string(kLongestWait) + " segundos");
    }
    QElapsedTimer time;
    time.start();
    const auto limit = static_cast<qint64>(std::llround(seconds * 1000));
    do {
      QCoreApplication::processEvents();
      const qint64 left = limit - time.elapsed();
      if (left > 0) QThread::msleep(static_cast<unsigned long>(std::min(left, kGlance)));
    } while (time.elapsed() < limit && !engine_.isInterrupted());
    QCoreApplication::processEvents();
    return host::ActResult::kDone;
  });
}

// --- the program -------------------------------------------------------------------------------------------------

QJSValue Bridge::jobs() {
  const std::vector<PrintJob> printed = application_.TakeJobs();
  QJSValue list = engine_.newArray(static_cast<uint>(printed.size()));
  quint32 at = 0;
  for (const PrintJob& job : printed) {
    QJSValue entry = engine_.newObject();
    entry.setProperty("report", ToScript(job.report));
    entry.setProperty("kind", ToScript(std::string(1, job.kind)));
    entry.setProperty("file", ToScript(job.file));
    entry.setProperty("destination", ToScript(job.destination));
    list.setProperty(at++, entry);
  }
  return list;
}

QJSValue Bridge::clock(const QJSValue& moment) {
  return Guard([&] {
    ProgramClock& program_clock = application_.GetProgramClock();
    if (moment.isNull()) program_clock.Reset();
    if (!moment.isNull() && !moment.isUndefined()) {
      const std::string text = Utf8(moment.toString());
      const auto parsed = host::DateTime::FromIso(text);
      if (!parsed) throw host::InputError("clock quer \"AAAA-MM-DD HH:MM:SS\", veio \"" + text + "\"");
      program_clock.Set(*parsed);
    }
    return ToScript(program_clock.Now().ToIso());
  });
}

QJSValue Bridge::query(const QString& sql, const QJSValue& parameters) {
  return Guard([&] {
    const auto query = application_.GetDatabase().Query(Utf8(sql), Parameters(parameters));
    QJSValue list = engine_.newArray(static_cast<uint>(query->RecordCount()));
    for (quint32 at = 0; !query->Eof(); query->Next(), ++at) {
      QJSValue row = engine_.newObject();
      for (std::size_t field = 0; field < query->FieldCount(); ++field) {
        const std::string name = query->FieldName(field);
        row.setProperty(QString::fromStdString(name), ToScript(query->FieldByName(name)));
      }
      list.setProperty(at, row);
    }
    if (!Desk().InAction()) application_.GetDatabase().MakeDurable();
    return list;
  });
}

QJSValue Bridge::exec(const QString& sql, const QJSValue& parameters) {
  return Guard([&] {
    application_.GetDatabase().Execute(Utf8(sql), Parameters(parameters));
    application_.GetDatabase().MakeDurable();
    return QJSValue();
  });
}

QJSValue Bridge::checkBooks() {
  return Guard([&] {
    const std::vector<std::string> off = books::CheckBooks(application_.GetDatabase());
    QJSValue list = engine_.newArray(static_cast<uint>(off.size()));
    for (quint32 at = 0; at < off.size(); ++at) list.setProperty(at, ToScript(off[at]));
    if (!Desk().InAction()) application_.GetDatabase().MakeDurable();
    return list;
  });
}

QJSValue Bridge::format(double number, const QString& pattern) {
  return Guard([&] {
    if (!std::isfinite(number)) throw host::InputError("format quer um número");
    return ToScript(host::FormatNumber(Utf8(pattern), number, ','));
  });
}

void Bridge::print(const QString& line) { output_ << Utf8(line) << std::endl; }

void Bridge::failAssertion(const QString& text) {
  failed_assertions_.push_back(Utf8(text));
  engine_.throwError(QJSValue::GenericError, text);
}

void Bridge::refuse(const QString& text) { engine_.throwError(QJSValue::TypeError, text); }

}  // namespace app::script
