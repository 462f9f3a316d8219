#include "app/operator/scripted_person.h"

#include <algorithm>
#include <utility>

#include "host/kit/desk.h"
#include "host/kit/screen.h"
#include "host/text.h"

namespace app {
namespace {

bool IsYes(std::string_view reply) { return host::SameName(reply, "yes") || host::SameName(reply, "sim"); }

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

bool IsNo(std::string_view reply) {
  return host::SameName(reply, "no") || host::SameName(reply, "não") || host::SameName(reply, "nao");
}

}  // namespace

void ScriptedPerson::Answer(std::string_view containing, std::string_view reply) {
  answers_.push_back({std::string(containing), std::string(reply)});
}

void ScriptedPerson::Pick(std::string_view lookup, std::string_view key) {
  picks_.push_back({std::string(lookup), Quoted(key), std::string(key), {}});
}

void ScriptedPerson::PickWhere(std::string_view lookup, const host::LookupRow& wanted) {
  std::string shown;
  for (const auto& [column, value] : wanted) {
    shown += (shown.empty() ? "" : ", ") + column + ": " + (value.IsText() ? Quoted(value.AsText()) : value.AsText());
  }
  picks_.push_back({std::string(lookup), "{" + shown + "}", std::nullopt, wanted});
}

void ScriptedPerson::Choose(std::string_view title, std::optional<std::string> path) {
  files_.push_back({std::string(title), std::move(path)});
}

void ScriptedPerson::OnModal(std::string_view screen, std::function<void(host::Screen&, host::Desk&)> act) {
  modals_.push_back({std::string(screen), std::move(act)});
}

std::vector<ScriptedPerson::Shown> ScriptedPerson::TakeMessages() { return std::exchange(messages_, {}); }

std::vector<std::string> ScriptedPerson::TakeErrors() { return std::exchange(errors_, {}); }

std::vector<std::string> ScriptedPerson::TakeUnexpected() { return std::exchange(unexpected_, {}); }

std::vector<std::string> ScriptedPerson::Unused() const {
  std::vector<std::string> lines;
  for (const Prepared& answer : answers_)
    lines.push_back("resposta \"" + answer.reply + "\" a \"" + answer.what + "\"");
  for (const PreparedPick& pick : picks_) lines.push_back("escolha " + pick.shown + " em " + pick.lookup);
  for (const PreparedFile& file : files_) {
    lines.push_back("arquivo " + Quoted(file.path.value_or("")) + " a " + Quoted(file.title));
  }
  for (const ModalPlan& plan : modals_) lines.push_back("tela " + plan.screen);
  for (const scale::ScaleSettings& scale : scales_) lines.push_back("configuração da balança em " + scale.port.port);
  return lines;
}

void ScriptedPerson::Show(std::string_view title, std::string_view text, host::Icon icon) {
  messages_.push_back({std::string(title), std::string(text), icon});
  if (OnShown) OnShown(messages_.back());
}

std::optional<std::string> ScriptedPerson::TakeAnswer(std::string_view text) {
  const auto fits = [text](const Prepared& answer) { return text.find(answer.what) != std::string_view::npos; };
  const auto found = std::find_if(answers_.begin(), answers_.end(), fits);
  if (found == answers_.end()) return std::nullopt;
  std::string reply = std::move(found->reply);
  answers_.erase(found);
  return reply;
}

void ScriptedPerson::Message(std::string_view title, std::string_view text, host::Icon icon) {
  Show(title, text, icon);
}

bool ScriptedPerson::Question(std::string_view title, std::string_view text) {
  Show(title, text, host::Icon::kQuestion);
  const auto reply = TakeAnswer(text);
  if (!reply) unexpected_.push_back("pergunta \"" + std::string(text) + "\"");
  if (reply && !IsYes(*reply) && !IsNo(*reply)) {
    unexpected_.push_back("pergunta \"" + std::string(text) + "\" com a resposta \"" + *reply + "\"");
  }
  return reply && IsYes(*reply);
}

std::optional<std::string> ScriptedPerson::InputBox(std::string_view /*title*/, std::string_view prompt,
                                                    std::string_view /*proposed*/, std::size_t longest) {
  auto reply = TakeAnswer(prompt);
  if (!reply) {
    unexpected_.push_back("entrada " + Quoted(prompt));
  } else if (const auto objection = AnswerObjection(longest, *reply)) {
    errors_.push_back(*objection);
    return std::nullopt;
  }
  return reply;
}

std::string ScriptedPerson::AskDate(std::string_view /*caption*/, std::string_view prompt) {
  auto reply = TakeAnswer(prompt);
  if (!reply) unexpected_.push_back("data \"" + std::string(prompt) + "\"");
  return reply.value_or("");
}

std::optional<std::string> ScriptedPerson::AskFile(const FileQuestion& question) {
  const auto fits = [&question](const PreparedFile& file) {
    return question.title.find(file.title) != std::string::npos;
  };
  const auto chosen = std::find_if(files_.begin(), files_.end(), fits);
  if (chosen != files_.end()) {
    auto path = std::move(chosen->path);
    files_.erase(chosen);
    return path;
  }
  auto reply = TakeAnswer(question.title);
  if (!reply) unexpected_.push_back("arquivo " + Quoted(question.title));
  return reply;
}

bool ScriptedPerson::SetUpScale(scale::ScaleSettings& settings) {
  if (scales_.empty()) {
    unexpected_.emplace_back("configuração da balança");
    return false;
  }
  settings = std::move(scales_.front());
  scales_.pop_front();
  return true;
}

void ScriptedPerson::TellError(std::string_view title, const std::exception& error) {
  errors_.emplace_back(error.what());
  Show(title, error.what(), host::Icon::kError);
}

std::optional<host::LookupRow> ScriptedPerson::PickRow(host::TPesquisa& lookup, LookupOffer& offer) {
  const auto fits = [&lookup](const PreparedPick& pick) { return host::SameName(pick.lookup, lookup.Name()); };
  const auto found = std::find_if(picks_.begin(), picks_.end(), fits);
  if (found == picks_.end()) {
    unexpected_.push_back("pesquisa " + lookup.Name());
    return std::nullopt;
  }
  const PreparedPick pick = std::move(*found);
  picks_.erase(found);
  std::optional<host::LookupRow> picked = pick.key ? offer.Find(*pick.key) : offer.FindRow(pick.wanted);
  if (!picked) unexpected_.push_back("pesquisa " + lookup.Name() + " sem " + pick.shown);
  return picked;
}

void ScriptedPerson::ActOnModal(host::Screen& screen, host::Desk& desk) {
  const auto fits = [&screen](const ModalPlan& plan) {
    return host::SameName(plan.screen, screen.ClassName()) || host::SameName(plan.screen, screen.Name());
  };
  const auto found = std::find_if(modals_.begin(), modals_.end(), fits);
  if (found == modals_.end()) {
    unexpected_.push_back("tela " + screen.ClassName());
  } else {
    const auto act = std::move(found->act);
    modals_.erase(found);
    if (act) act(screen, desk);
  }
  if (screen.CloseRequested()) return;
  desk.CloseScreen(screen);
  // An input that will not be left must not hold a person who has nothing more to do.
  if (!screen.CloseRequested()) screen.Close();
}

}  // namespace app
