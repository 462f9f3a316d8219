#include "app/desktop/shell/window_person.h"

#include <QFileDialog>
#include <string>

#include "app/desktop/basics/text.h"
#include "app/desktop/boxes/date_box.h"
#include "app/desktop/boxes/error_box.h"
#include "app/desktop/boxes/message_boxes.h"
#include "app/desktop/lookup/lookup_dialog.h"
#include "app/desktop/scale/scale_setup.h"
#include "host/kit/desk.h"

namespace app::desktop {
namespace {

QString PlainCaption(std::string_view caption) {
  QString text = ToQt(caption).remove(u'&').trimmed();
  while (text.endsWith(u':')) text.chop(1);
  return text;
}

/// What a lookup is opened for: the input, or the cell, that its key will go to.
struct Served {
  QString caption;
  std::string text;
};

Served ServedBy(const host::TPesquisa& lookup) {
  const host::Screen& screen = lookup.Owner();
  const host::Control* focused = screen.Site() != nullptr ? screen.Site()->Focused() : nullptr;
  const host::Edit* served = nullptr;
  for (const host::Component* component : screen.Components()) {
    const auto* edit = dynamic_cast<const host::Edit*>(component);
    if (edit == nullptr || edit->Lookup != &lookup) continue;
    if (served == nullptr || edit == focused) served = edit;  // one lookup may serve several inputs
  }
  if (served != nullptr) return {PlainCaption(served->Caption()), served->Text()};

  const auto* grid = dynamic_cast<const host::Grid*>(focused);
  if (grid == nullptr || &grid->Owner() != &screen || grid->SelectedColumn() < 0) return {};
  const host::GridColumn& column = grid->Columns()[static_cast<std::size_t>(grid->SelectedColumn())];
  const host::Dataset& rows = grid->GetDataset();
  const host::Field* field = rows.FindField(column.field);
  if (!column.lookup || field == nullptr) return {};
  const std::string& caption = column.caption.empty() ? field->Def().caption : column.caption;
  return {PlainCaption(caption.empty() ? column.field : caption),
          rows.Active() && !rows.IsEmpty() ? field->DisplayText() : std::string()};
}

}  // namespace

void WindowPerson::Message(std::string_view title, std::string_view text, host::Icon icon) {
  ShowMessage(BoxParent(), ToQt(title), ToQt(text), icon);
}

bool WindowPerson::Question(std::string_view title, std::string_view text) {
  return AskYesNo(BoxParent(), ToQt(title), ToQt(text));
}

std::optional<std::string> WindowPerson::InputBox(std::string_view title, std::string_view prompt,
                                                  std::string_view proposed, std::size_t longest) {
  const TextObjection objection = [longest](const QString& text) -> std::optional<QString> {
    const auto sentence = AnswerObjection(longest, FromQt(text));
    if (!sentence) return std::nullopt;
    return ToQt(*sentence);
  };
  const auto typed = AskText(BoxParent(), ToQt(title), ToQt(prompt), ToQt(proposed), objection);
  if (!typed) return std::nullopt;
  return FromQt(*typed);
}

std::string WindowPerson::AskDate(std::string_view caption, std::string_view prompt) {
  return FromQt(AskDateText(BoxParent(), ToQt(caption), ToQt(prompt)));
}

std::optional<std::string> WindowPerson::AskFile(const FileQuestion& question) {
  const UsualCursor usual;
  const QString title = ToQt(question.title);
  const QString proposed = ToQt(question.proposed);
  const QString kind = ToQt(question.kind);
  const QString chosen = question.save ? QFileDialog::getSaveFileName(BoxParent(), title, proposed, kind)
                                       : QFileDialog::getOpenFileName(BoxParent(), title, proposed, kind);
  if (chosen.isEmpty()) return std::nullopt;
  return FromQt(chosen);
}

bool WindowPerson::SetUpScale(scale::ScaleSettings& settings) { return AskScaleSetup(BoxParent(), settings); }

void WindowPerson::TellError(std::string_view title, const std::exception& error) {
  ShowError(BoxParent(), ToQt(title), error);
}

std::optional<host::LookupRow> WindowPerson::PickRow(host::TPesquisa& lookup, LookupOffer& offer) {
  const Served served = ServedBy(lookup);
  const QString title =
      served.caption.isEmpty() ? QStringLiteral("Pesquisa") : QStringLiteral("Pesquisa: %1").arg(served.caption);
  const UsualCursor usual;
  QWidget* const parent = BoxParent();
  auto picked = AskLookup(parent, title, offer, lookup, served.text);
  ActivateAgain(parent);
  return picked;
}

void WindowPerson::ActOnModal(host::Screen& screen, host::Desk& /*desk*/) {
  const UsualCursor usual;
  if (shell_.run_modal) shell_.run_modal(screen);
}

void WindowPerson::ActForDevice(const std::function<void()>& act) {
  if (shell_.device) shell_.device(act);
}

void WindowPerson::ScreenShown(host::Screen& screen) {
  if (shell_.show) shell_.show(screen);
}

void WindowPerson::ScreenGone(host::Screen& screen) {
  if (shell_.let_go) shell_.let_go(screen);
}

bool WindowPerson::MayClose(host::Screen& screen) {
  if (!screen.HasUnsavedWork()) return true;
  ScreenShown(screen);  // the person sees what the question is about
  return Question(screen.Caption(),
                  "Há dados não gravados em \"" + screen.Caption() + "\". Deseja fechar mesmo assim?");
}

void WindowPerson::Settled() {
  if (shell_.settled) shell_.settled();
}

void WindowPerson::ShowBusy(bool on, std::string_view text) {
  if (shell_.busy) shell_.busy(on, ToQt(text));
}

}  // namespace app::desktop
